// The work that is running, as windows and providers know it: lets window events through while it lasts, and knows
// whether the user wants it stopped. One object per process, used on the user-interface thread.
#pragma once

#include <chrono>

#include "host/Interruption.h"
#include "services/ProgressControls.h"

namespace tolvan {

class DesktopWork final : public Interruption, public MessagePump {
 public:
  /// Work begins and an earlier wish to stop is forgotten. Every Begin has its End; they may nest.
  void Begin();
  void End() noexcept { --depth_; }
  bool IsRunning() const { return depth_ > 0; }

  void Stop() { stopRequested_ = true; }

  /// The session ends: whatever runs is to stop, and nobody answers questions any more.
  void EndSession() { sessionEnds_ = true; }
  bool SessionEnds() const { return sessionEnds_; }

  /// Lets events through first, so that a click on a stop button is seen wherever work asks.
  bool Requested() const noexcept override;

  /// Events are let through at most every few hundredths of a second, and only while work runs.
  void ProcessPending() override { LetEventsThrough(); }

 private:
  void LetEventsThrough() const;

  int depth_ = 0;
  bool stopRequested_ = false;
  bool sessionEnds_ = false;
  mutable bool letsThrough_ = false;
  mutable std::chrono::steady_clock::time_point lastPass_;
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

}  // namespace tolvan
