// A server as people write it in a setting.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvan {

struct ServerAddress {
  std::string host;  ///< a name or an address; an IPv6 address keeps its brackets
  std::uint16_t port = 80;

  /// host[:port], port 80 when not given; an IPv6 address stands in brackets. Nothing when the text is not that.
  static std::optional<ServerAddress> Parse(std::string_view text);
};

}  // namespace tolvan
