// Drives the real windows: they run on the main thread, a script runs on another, finds controls by their fixed names
// and acts on them with the mouse and the keyboard of the X server (xdotool). Tests and programs that take pictures for
// documents are scripts. Needs a display with a window manager: see with_display.
//
// A control that does not appear in time ends the script with an exception; Run makes it a failure of the test, with a
// picture of the screen.
#pragma once

#include <wx/gdicmn.h>

#include <atomic>
#include <functional>
#include <string>
#include <vector>

class wxWindow;

namespace tolvan {
class DesktopSession;
}

namespace tolvan::test {

class WindowDriver {
 public:
  using Script = std::function<void(WindowDriver&)>;

  /// Pictures go to `pictureFolder`, which is made when needed.
  explicit WindowDriver(std::string pictureFolder);

  /// Opens the host, runs the script once the window of the name `first` is active, and closes what is left open. The
  /// exit code of the window program, or -1 when the script failed; `Failure` then says why.
  int Run(const std::string& hostPath, const Script& script, const std::string& first = "frmOpciones");
  const std::string& Failure() const { return failure_; }

  // What a person does. Every call waits for the control to be shown and enabled. On a busy machine a window that has
  // just come up may lose what it is sent, so a person looks, and does it again: nothing may hang on a single event.

  /// Acts until `holds`, and again every few seconds. `holds` runs on the windows' thread.
  void ActUntil(const std::string& what, const std::function<void()>& act, const std::function<bool()>& holds);

  void Click(const std::string& name);
  void ClickUntilShown(const std::string& name, const std::string& shown);

  /// Selects a line of a list or a tree, from 0.
  void ClickLine(const std::string& list, unsigned line);

  /// Opens the menu of a list's selected line by "Menu", "shift+F10" or, with no keys, the right mouse button.
  void OpenMenu(const std::string& list, unsigned line, const std::string& keys);

  /// The entry of the open menu, from 0.
  void ChooseEntry(unsigned entry);

  /// The header of a list's column, from 0 at the left.
  void ClickHeader(const std::string& list, unsigned place);

  /// Drags from one point to another, both in pixels from the control's upper left corner.
  void Drag(const std::string& control, wxPoint from, wxPoint to);

  /// Keys as xdotool names them: "Return", "alt+a", "shift+F10".
  void Key(const std::string& keys);
  void KeyUntilShown(const std::string& keys, const std::string& name);
  void KeyUntilGone(const std::string& keys, const std::string& name);
  void KeyUntilFocused(const std::string& keys, const std::string& name);
  void Type(const std::string& text);

  /// Clicks until the toolkit's own picker comes up, whose title begins so.
  void ClickUntilPicker(const std::string& name, const std::string& title);

  /// Answers such a picker with a path.
  void AnswerPicker(const std::string& title, const std::string& path);

  /// Closes a message box with its first button, and returns its text.
  std::string Dismiss();

  // What a person sees.

  /// What a field holds, or the label of another control, or a window's title.
  std::string Text(const std::string& name);

  /// Every text that a window shows: labels, titles of tabs and columns, and the entries of a menu that is open.
  std::vector<std::string> Texts(const std::string& name);
  std::string Focused();
  bool Enabled(const std::string& name);
  bool Shown(const std::string& name);

  /// The texts of a list's line, by the columns of its definition.
  std::vector<std::string> Line(const std::string& list, unsigned line);
  unsigned Lines(const std::string& list);

  /// Waits until a line, from 0, has that text in its first column.
  void UntilLine(const std::string& list, unsigned line, const std::string& text);

  /// Waits until the keys and clicks so far have been dealt with.
  void Settle();

  /// Waits until it holds. `holds` runs on the windows' thread.
  void Until(const std::string& what, const std::function<bool()>& holds);
  void UntilShown(const std::string& name);
  void UntilGone(const std::string& name);

  /// A control, for what has no words here. On the windows' thread only. Throws when it is not shown.
  static wxWindow& Get(const std::string& name);

  /// Runs on the windows' thread and waits for it.
  void OnWindows(const std::function<void()>& work);

  /// Ends the session as the system does.
  void EndSession();

 private:
  static wxWindow* Find(const std::string& name);

  /// What `question` answers on the windows' thread.
  template <class Question>
  auto Ask(Question question) {
    decltype(question()) answer{};
    OnWindows([&] { answer = question(); });
    return answer;
  }

  void UntilReady(const std::string& name);
  void UntilKeysAreTaken();
  void Press(const std::string& name);
  void ClickUntil(const std::string& name, const std::string& what, const std::function<bool()>& holds);
  static void UntilPicker(const std::string& title);
  wxPoint PlaceOfLine(const std::string& list, unsigned line);
  static wxPoint OnScreen(const std::string& name, wxPoint point);
  static void ClickAt(wxPoint place, int button);
  void RunScript(const Script& script, const std::string& first);
  void PictureOfScreen(const std::string& name) const;

  std::string pictureFolder_;
  std::string failure_;
  DesktopSession* session_ = nullptr;
  std::atomic<bool> ended_ = false;
};

}  // namespace tolvan::test
