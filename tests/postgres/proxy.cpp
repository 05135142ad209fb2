#include "postgres/proxy.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>
#include <vector>

namespace QuorHost::Testing {
namespace {

constexpr const char* kServer = ".s.PGSQL.5432";
constexpr const char* kHere = ".s.PGSQL.6000";
constexpr int kRowsToAMessage = 16;

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  return address;
}

int newSocket() { return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0); }

bool sendAll(int to, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

}  // namespace

Proxy::Proxy(const std::filesystem::path& folder) : server_(folder / kServer) {
  const std::string here = folder / kHere;
  ::unlink(here.c_str());
  listening_ = newSocket();
  const sockaddr_un address = addressOf(here);
  if (::bind(listening_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listening_, 16) != 0 || ::pipe(stop_) != 0) {
    throw std::runtime_error("no proxy");
  }
  thread_ = std::thread([this] { serve(); });
}

Proxy::~Proxy() {
  ::close(stop_[1]);
  thread_.join();
  while (!sides_.empty()) close(sides_.begin()->first);
  ::close(stop_[0]);
  ::close(listening_);
}

std::string Proxy::through(const std::string& company) { return company + "&port=6000"; }

void Proxy::serve() {
  for (;;) {
    std::vector<pollfd> waiting{{.fd = stop_[0], .events = POLLIN, .revents = 0},
                                {.fd = listening_, .events = POLLIN, .revents = 0}};
    for (const auto& [side, state] : sides_) {
      waiting.push_back({.fd = side, .events = POLLIN, .revents = 0});
    }
    if (::poll(waiting.data(), waiting.size(), -1) <= 0) continue;
    if (waiting[0].revents != 0) return;
    for (std::size_t i = 2; i < waiting.size(); ++i) {
      const int side = waiting[i].fd;
      if (waiting[i].revents != 0 && sides_.contains(side) && !handOn(side)) close(side);
    }
    if (waiting[1].revents != 0) connect();
  }
}

void Proxy::connect() {
  const int client = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
  const int server = newSocket();
  const sockaddr_un address = addressOf(server_);
  if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    ::close(client);
    ::close(server);
    return;
  }
  sides_[client] = {.other = server, .startup = true, .rows = 0, .waiting = {}};
  sides_[server] = {.other = client, .startup = false, .rows = 0, .waiting = {}};
}

bool Proxy::handOn(int from) {
  Side& side = sides_[from];
  std::string bytes(1U << 16U, '\0');
  const ssize_t size = ::recv(from, bytes.data(), bytes.size(), 0);
  if (size <= 0) return false;
  side.waiting.append(bytes, 0, static_cast<std::size_t>(size));
  for (;;) {
    const std::size_t kind = side.startup ? 0 : 1;
    std::uint32_t length = 0;
    if (side.waiting.size() < kind + sizeof length) return true;
    std::memcpy(&length, side.waiting.data() + kind, sizeof length);
    length = ntohl(length);
    if (side.waiting.size() < kind + length) return true;
    const bool row =
        !side.startup && side.waiting.front() == 'D' && ++side.rows % kRowsToAMessage != 0;
    if (!row && passed_ == cutAt_) {
      cutAt_ = -1;
      return false;
    }
    if (!row) ++passed_;
    side.startup = false;
    if (!sendAll(side.other, std::string_view(side.waiting).substr(0, kind + length))) return false;
    side.waiting.erase(0, kind + length);
  }
}

void Proxy::close(int either) {
  const int other = sides_[either].other;
  for (const int side : {either, other}) {
    ::close(side);
    sides_.erase(side);
  }
}

}  // namespace QuorHost::Testing
