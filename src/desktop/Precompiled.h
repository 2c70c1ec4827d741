// What most files of this room include, compiled once (target_precompile_headers); never included by name.
#pragma once

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <memory>
#include <string>
#include <vector>
