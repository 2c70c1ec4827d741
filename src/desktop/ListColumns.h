// Columns of lists, as the toolkit under wxWidgets knows them: texts longer than their column end in an ellipsis and
// stand whole in a tool tip; headers are clicked and show an arrow. wxWidgets reports a click as soon as the button
// goes down, which is also how a column begins to be dragged, and never one of the keyboard.
#pragma once

#include <wx/dataview.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace tolvan {

/// Appends a column of texts that shows an ellipsis where its text does not fit. `width` is in pixels.
wxDataViewColumn& AppendTexts(wxDataViewCtrl& list, const wxString& title, unsigned modelColumn, int width,
                              wxAlignment alignment = wxALIGN_LEFT);

/// Gives a column what the others leave of the list's width.
void TakeSpareWidth(wxDataViewColumn& column);

/// Shows the whole text of a cell under the mouse where it does not fit; for the keyboard, that of the line's cell
/// in the column of that number. The list has a virtual model.
void ShowWholeTexts(wxDataViewCtrl& list, unsigned keyboardColumn);

/// Calls `clicked` with the column's model number when its header is clicked, or pressed by the keyboard. For all
/// columns that the list has now; `clicked` lives as long as the list.
void WatchHeaders(wxDataViewCtrl& list, const std::function<void(std::int32_t)>& clicked);

enum class SortArrow { None, Ascending, Descending };
void ShowArrow(wxDataViewColumn& column, SortArrow arrow);

/// The model numbers of the columns as they stand on the screen, from left to right.
std::vector<std::int32_t> ColumnsOnScreen(const wxDataViewCtrl& list);

/// The width in pixels that the column was given, without what the last one takes of an empty rest.
int WidthOf(const wxDataViewColumn& column);

}  // namespace tolvan
