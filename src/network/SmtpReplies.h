#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// What a mail server answers in the course of one delivery, line by line.
class SmtpReplies {
 public:
  void Add(std::string_view line);

  /// The last reply that refused something (a number from 400 up), its lines joined, for people: valid UTF-8 without
  /// controls. Empty when there was none.
  const std::string& Refusal() const { return refusal_; }

 private:
  std::string current_;
  bool complete_ = true;
  std::string refusal_;
};

}  // namespace tolvan
