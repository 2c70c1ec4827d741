// What the headers of a list do and show, as the toolkit below wxWidgets knows it: that one tells of a click as soon as
// the button goes down, which is also how a column begins to be dragged, and never of the keyboard.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

class wxDataViewColumn;
class wxDataViewCtrl;

namespace tolvan {

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
