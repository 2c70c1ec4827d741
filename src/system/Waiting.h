// One wait for somebody else - another program's lock, a server's answer - in slices. Between them the user can stop
// it, and a wait that lasts is told to him with its cause.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "host/UserInterface.h"

namespace tolvan {

/// A wait shorter than this is not told. Another program's lock is something to know of; that a server takes a moment
/// is not.
inline constexpr std::chrono::milliseconds lockPatience{400};
inline constexpr std::chrono::milliseconds serverPatience{2'000};

enum class WaitEnd { Ready, Stopped, TimedOut };

class Waiting {
 public:
  /// `interruption` may be null: nobody stops the wait, and nobody is told. `text` is a sentence for people that says
  /// who waits for what. Both must outlive the object.
  Waiting(const Interruption* interruption, std::string_view text, std::chrono::milliseconds patience);
  ~Waiting();
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

  /// Lets that time pass. False when the user wants the wait to end.
  bool Rest(std::chrono::milliseconds time) noexcept;

  /// Asks `ready`, which gets the time that it may wait by itself, again and again. Without a limit it ends only by one
  /// of the other two.
  template <class Ready>
  WaitEnd Until(const Ready& ready, std::optional<std::chrono::milliseconds> limit) {
    for (;;) {
      if (ready(told_ ? std::chrono::milliseconds::zero() : slice)) return WaitEnd::Ready;
      if (limit && Clock::now() - began_ >= *limit) return WaitEnd::TimedOut;
      if (!Rest(told_ ? slice : std::chrono::milliseconds::zero())) return WaitEnd::Stopped;
    }
  }

 private:
  using Clock = std::chrono::steady_clock;

  static constexpr std::chrono::milliseconds slice{20};

  const Interruption* interruption_;
  std::string_view text_;
  std::chrono::milliseconds patience_;
  Clock::time_point began_ = Clock::now();
  bool told_ = false;
};

}  // namespace tolvan
