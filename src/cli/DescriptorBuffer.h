// The buffer of standard output, which knows why a write failed. A reader that goes away ("| head") is no failure:
// nobody wants the rest, so it is dropped and the job goes on.
#pragma once

#include <array>
#include <streambuf>

namespace tolvan {

class DescriptorBuffer final : public std::streambuf {
 public:
  /// The descriptor stays its owner's. SIGPIPE must be ignored. What is left at the end is not written: flush before.
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) { setp(bytes_.begin(), bytes_.end()); }

  /// The error number of the write that failed, after which nothing is written; 0 when none did.
  int ErrorNumber() const { return errorNumber_; }

 private:
  int_type overflow(int_type character) override;
  int sync() override;

  void TakeError(int errorNumber);

  int descriptor_;
  int errorNumber_ = 0;
  bool readerIsGone_ = false;
  std::array<char, 1 << 16> bytes_{};
};

}  // namespace tolvan
