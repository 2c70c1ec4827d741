#pragma once

namespace tolvan {

/// Whether the user asked that the running work stop. Long loops ask it at every step and stop as after a failure;
/// providers ask it while they wait.
class Interruption {
 public:
  virtual ~Interruption() = default;
  virtual bool Requested() const noexcept = 0;
};

}  // namespace tolvan
