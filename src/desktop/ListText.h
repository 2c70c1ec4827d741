// Texts of a list that are longer than their column: they end in an ellipsis, and the whole text is in the tool tip.
#pragma once

#include <wx/dataview.h>

namespace tolvan {

/// Appends a column of texts that shows an ellipsis where its text does not fit. `width` is in pixels.
wxDataViewColumn& AppendTexts(wxDataViewCtrl& list, const wxString& title, unsigned modelColumn, int width,
                              wxAlignment alignment = wxALIGN_LEFT);

/// Gives a column what the others leave of the list's width.
void TakeSpareWidth(wxDataViewColumn& column);

/// Shows the whole text of a cell under the mouse where it does not fit; for the keyboard, that of the line's cell
/// in the column of that number. The list has a virtual model.
void ShowWholeTexts(wxDataViewCtrl& list, unsigned keyboardColumn);

}  // namespace tolvan
