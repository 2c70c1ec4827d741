#pragma once

class wxWindow;

namespace tolvan {

/// The window that a new modal box stands over: the modal dialog shown last, or the main window. Null when there is
/// none yet.
wxWindow* DialogParent();

}  // namespace tolvan
