#pragma once

#include <string>
#include <string_view>

namespace tolvan {

/// Digests of bytes, as lower-case hexadecimal text.
class HashService {
 public:
  virtual ~HashService() = default;

  /// 32 characters.
  virtual std::string Md5(std::string_view bytes) const = 0;
};

}  // namespace tolvan
