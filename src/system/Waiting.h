// One wait for somebody else - another program's lock, a server's answer - in slices. Between them the user can stop
// it, and a wait that lasts is shown with its cause.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "host/UserInterface.h"

namespace tolvan {

/// A wait shorter than this is not shown. That another program holds a lock is worth knowing; that a server takes a
/// moment is not.
inline constexpr std::chrono::milliseconds lockPatience{400};
inline constexpr std::chrono::milliseconds serverPatience{2'000};

enum class WaitEnd { Ready, Stopped, TimedOut };

class Waiting {
 public:
  /// `interruption` may be null: nobody stops the wait, and it is shown to nobody. `text` is a sentence for people that
  /// says who waits for what. Both must outlive the object.
  Waiting(const Interruption* interruption, std::string_view text, std::chrono::milliseconds patience);
  ~Waiting();
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

  /// Lets that much time pass. False when the user wants the wait to end.
  bool Rest(std::chrono::milliseconds time) noexcept;

  /// Asks `ready`, which is given the time that it may wait itself, again and again. Without a limit only one of the
  /// other two ends it.
  template <class Ready>
  WaitEnd Until(const Ready& ready, std::optional<std::chrono::milliseconds> limit) {
    for (;;) {
      if (ready(shown_ ? std::chrono::milliseconds::zero() : slice)) return WaitEnd::Ready;
      if (limit && Clock::now() - began_ >= *limit) return WaitEnd::TimedOut;
      if (!Rest(shown_ ? slice : std::chrono::milliseconds::zero())) return WaitEnd::Stopped;
    }
  }

 private:
  using Clock = std::chrono::steady_clock;

  static constexpr std::chrono::milliseconds slice{20};

  const Interruption* interruption_;
  std::string_view text_;
  std::chrono::milliseconds patience_;
  Clock::time_point began_ = Clock::now();
  bool shown_ = false;
};

}  // namespace tolvan
