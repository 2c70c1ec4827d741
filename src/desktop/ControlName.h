#pragma once

#include <wx/window.h>

#include <string_view>

namespace tolvan {

/// Gives a control its fixed name, by which tests and scripts find it, and tells assistive tools that name as its
/// identifier and `label` as what to read out; an empty label leaves the toolkit's own.
void NameControl(wxWindow& window, std::string_view name, std::string_view label = {});

}  // namespace tolvan
