#include "services/ServerAddress.h"

#include "base/Text.h"

namespace tolvan {

std::optional<ServerAddress> ServerAddress::Parse(std::string_view text) {
  ServerAddress server;
  const bool bracketed = text.starts_with('[');
  const std::size_t hostEnd = bracketed ? text.find(']') + 1 : text.find(':');
  if (bracketed && hostEnd == 0) return std::nullopt;
  server.host = text.substr(0, hostEnd);
  if (server.host.empty() || server.host.find_first_of("/ ") != std::string::npos) return std::nullopt;
  if (hostEnd >= text.size()) return server;
  const auto port = ParseInteger(text.substr(hostEnd + 1));
  if (text[hostEnd] != ':' || !port || *port < 1 || *port > 65535) return std::nullopt;
  server.port = static_cast<std::uint16_t>(*port);
  return server;
}

}  // namespace tolvan
