// The work that is running, as windows and providers know it: lets window events through while it lasts, knows whether
// the user wants it stopped, and shows for whom it waits. One object per process, used on the user-interface thread.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "host/UserInterface.h"
#include "services/clsCallBackProgreso.h"

namespace tolvan {

class WaitDialog;

class DesktopWork final : public Interruption, public MessagePump {
 public:
  DesktopWork();
  ~DesktopWork() override;
  DesktopWork(const DesktopWork&) = delete;
  DesktopWork& operator=(const DesktopWork&) = delete;

  /// Work begins and an earlier wish to stop is forgotten. Every Begin has its End; they may nest.
  void Begin();
  void End() noexcept { --depth_; }
  bool IsRunning() const { return depth_ > 0; }

  void Stop() { stopRequested_ = true; }

  /// `shows` is called with false while running work stands still because the user is asked something, and with true
  /// once it goes on. An empty function ends the watch.
  void WatchStandstill(std::function<void(bool running)> shows) { shows_ = std::move(shows); }

  /// The session ends: whatever runs is to stop, and nobody answers questions any more.
  void EndSession() { sessionEnds_ = true; }
  bool SessionEnds() const { return sessionEnds_; }

  /// Lets events through first, so that a click on a stop button is seen wherever work asks.
  bool Requested() const noexcept override;

  /// A wait is shown in the status display that is open, and in one of its own when none is: with a button that stops
  /// it, also where no work was begun.
  void WaitBegins(std::string_view text) const noexcept override;
  void WaitEnds() const noexcept override;
  bool AnswerFor(std::chrono::milliseconds time) const noexcept override;

  /// The status display that is open, and null when it closes.
  void SetStatus(WaitDialog* status) { status_ = status; }

  /// Events are let through at most every few hundredths of a second, and only while work runs.
  void ProcessPending() override { LetEventsThrough(); }

 private:
  void LetEventsThrough() const;
  void PassEvents() const;

  friend class StandstillScope;
  void ShowRunning(bool running) const {
    if (shows_ && IsRunning()) shows_(running);
  }

  std::function<void(bool)> shows_;
  mutable int standstills_ = 0;
  mutable int depth_ = 0;
  mutable bool stopRequested_ = false;
  bool sessionEnds_ = false;
  mutable bool letsThrough_ = false;
  mutable std::chrono::steady_clock::time_point lastPass_;
  mutable WaitDialog* status_ = nullptr;
  std::function<std::unique_ptr<WaitDialog>()> openStatus_;
  mutable std::unique_ptr<WaitDialog> wait_;  // the display that a wait has of its own
};

/// A stretch of work.
class WorkScope {
 public:
  explicit WorkScope(DesktopWork& work) : work_(work) { work.Begin(); }
  ~WorkScope() { work_.End(); }
  WorkScope(const WorkScope&) = delete;
  WorkScope& operator=(const WorkScope&) = delete;

 private:
  DesktopWork& work_;
};

/// A stretch in which running work, if there is any, waits for the user. They may nest.
class StandstillScope {
 public:
  explicit StandstillScope(const DesktopWork& work) : work_(work) {
    if (work_.standstills_++ == 0) work_.ShowRunning(false);
  }
  ~StandstillScope() {
    if (--work_.standstills_ == 0) work_.ShowRunning(true);
  }
  StandstillScope(const StandstillScope&) = delete;
  StandstillScope& operator=(const StandstillScope&) = delete;

 private:
  const DesktopWork& work_;
};

}  // namespace tolvan
