#include "desktop/DialogButtons.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>

#include "desktop/ControlName.h"
#include "desktop/WxText.h"
#include "services/ResourceTexts.h"

namespace tolvan {

wxButton* AddDialogButtons(wxDialog& dialog, wxSizer& content, std::string_view acceptName,
                           std::string_view cancelName) {
  auto* const accept = new wxButton(&dialog, wxID_OK, ToWx(ResourceText(text_id::acceptButton)));
  NameControl(*accept, acceptName);
  auto* const cancel = new wxButton(&dialog, wxID_CANCEL, ToWx(ResourceText(text_id::cancelButton)));
  NameControl(*cancel, cancelName);
  accept->SetDefault();
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(accept, wxSizerFlags().Border(wxRIGHT, dialog.FromDIP(8)));
  row->Add(cancel);
  content.Add(row, wxSizerFlags().Right().Border(wxALL, dialog.FromDIP(12)));
  return accept;
}

}  // namespace tolvan
