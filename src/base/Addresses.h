// Addresses as people write them in a setting, of a mailbox and of a server: what is accepted as one is decided here
// for the configuration that takes it and for the action that uses it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvan {

/// One plausible mail address: a local part of at most 64 bytes, "@", and a domain of at least two labels of letters,
/// digits and inner hyphens, or "localhost". No blanks, controls, quotes or angle brackets, so it can stand in a mail
/// header; at most 254 characters. Letters outside ASCII are taken in both halves.
bool IsEmailAddress(std::string_view text);

/// Where a server is reached.
struct ServerAddress {
  std::string host;  ///< a name or an address; an IPv6 address keeps its brackets
  std::uint16_t port = 80;

  /// host[:port], port 80 when not given; an IPv6 address stands in brackets. Nothing when the text is not that: it has
  /// a scheme, a path or a user name, the name is longer than 253 bytes, or the port is not a plain number from 1 to
  /// 65535.
  static std::optional<ServerAddress> Parse(std::string_view text);
};

}  // namespace tolvan
