#include "support/CountingRelay.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace tolvan::test {
namespace {

constexpr const char* socketName = ".s.PGSQL.5432";

int Socket() {
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (socket < 0) throw std::runtime_error("socket failed");
  return socket;
}

sockaddr_un AddressOf(const std::filesystem::path& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.native().size() >= sizeof address.sun_path) throw std::runtime_error("the folder's name is too long");
  path.native().copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

/// What has come from one side goes to the other. False at its end.
bool Pass(int from, int to) {
  std::array<char, 65536> buffer;
  const ssize_t count = ::read(from, buffer.data(), buffer.size());
  if (count <= 0) return false;
  for (ssize_t sent = 0; sent < count;) {
    const auto left = static_cast<std::size_t>(count - sent);
    const ssize_t part = ::send(to, buffer.data() + sent, left, MSG_NOSIGNAL);
    if (part <= 0) return false;
    sent += part;
  }
  return true;
}

}  // namespace

CountingRelay::CountingRelay(const std::filesystem::path& serverFolder)
    : target_(serverFolder / socketName), listener_(Socket()) {
  const sockaddr_un address = AddressOf(folder_.Path() / socketName);
  if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener_, 8) != 0) {
    throw std::runtime_error("the relay cannot listen");
  }
  thread_ = std::thread([this] { Serve(); });
}

CountingRelay::~CountingRelay() {
  stopping_ = true;
  thread_.join();
  ::close(listener_);
}

void CountingRelay::Serve() {
  while (!stopping_) {
    std::vector<pollfd> watched{{listener_, POLLIN, 0}};
    for (const Pair& pair : pairs_) watched.insert(watched.end(), {{pair.client, POLLIN, 0}, {pair.server, POLLIN, 0}});
    constexpr int pause = 20;  // milliseconds
    if (::poll(watched.data(), watched.size(), pause) <= 0) continue;
    for (std::size_t index = pairs_.size(); index-- > 0;) {
      const bool fromClient = watched[2 * index + 1].revents != 0;
      const bool fromServer = watched[2 * index + 2].revents != 0;
      if (!Relay(pairs_[index], fromClient, fromServer)) Drop(index);
    }
    if (watched[0].revents != 0) Accept();
  }
  while (!pairs_.empty()) Drop(pairs_.size() - 1);
}

void CountingRelay::Accept() {
  const sockaddr_un address = AddressOf(target_);
  pairs_.push_back({::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC), Socket()});
  const int server = pairs_.back().server;
  if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) Drop(pairs_.size() - 1);
}

bool CountingRelay::Relay(Pair& pair, bool fromClient, bool fromServer) {
  if (fromServer) {
    pair.clientSpoke = false;
    return Pass(pair.server, pair.client);
  }
  if (!fromClient) return true;
  if (!pair.clientSpoke) ++roundTrips_;
  pair.clientSpoke = true;
  return Pass(pair.client, pair.server);
}

void CountingRelay::Drop(std::size_t index) {
  ::close(pairs_[index].client);
  ::close(pairs_[index].server);
  pairs_.erase(pairs_.begin() + static_cast<std::ptrdiff_t>(index));
}

}  // namespace tolvan::test
