#include "simulator/Sockets.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>

#include "platform/RunTimeFailure.h"

namespace loader::simulator {

namespace {

constexpr int Backlog = SOMAXCONN;

std::string NameOf(const sockaddr_storage& address, socklen_t length) {
  std::array<char, NI_MAXHOST> host{};
  std::array<char, NI_MAXSERV> port{};
  if (::getnameinfo(reinterpret_cast<const sockaddr*>(&address), length, host.data(), host.size(),
                    port.data(), port.size(), NI_NUMERICHOST | NI_NUMERICSERV) != 0) {
    return "?";
  }
  const bool six = address.ss_family == AF_INET6;
  return (six ? "[" : "") + std::string(host.data()) + (six ? "]:" : ":") + port.data();
}

std::string Reason(int error, int port) {
  std::string reason = std::strerror(error);
  if (error == EACCES && port < 1024) {
    reason += " (ports below 1024 are for the superuser; take a higher one, as with --tcp 1502)";
  } else if (error == EADDRINUSE) {
    reason += " (another program, perhaps another recorder-sim, serves this port)";
  }
  return reason;
}

} // namespace

void Descriptor::Close() {
  if (number_ >= 0) {
    ::close(std::exchange(number_, -1));
  }
}

TcpListener Listen(const TcpAddress& address) {
  const std::string wanted = address.host + ":" + std::to_string(address.port);
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
  addrinfo* found = nullptr;
  const int error = ::getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &hints, &found);
  if (error != 0) {
    throw RunTimeFailure("cannot listen on " + wanted + ": " + ::gai_strerror(error));
  }
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, &::freeaddrinfo);
  TcpListener listener{Descriptor(::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)),
                       {}};
  const int on = 1;
  if (!listener.socket.IsOpen() ||
      ::setsockopt(listener.socket.Number(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
      ::bind(listener.socket.Number(), found->ai_addr, found->ai_addrlen) != 0 ||
      ::listen(listener.socket.Number(), Backlog) != 0) {
    throw RunTimeFailure("cannot listen on " + wanted + ": " + Reason(errno, address.port));
  }
  sockaddr_storage bound{};
  socklen_t length = sizeof bound;
  ::getsockname(listener.socket.Number(), reinterpret_cast<sockaddr*>(&bound), &length);
  listener.name = NameOf(bound, length);
  return listener;
}

TcpClient Accept(const TcpListener& listener) {
  sockaddr_storage peer{};
  socklen_t length = sizeof peer;
  TcpClient client{Descriptor(::accept4(listener.socket.Number(), reinterpret_cast<sockaddr*>(&peer), &length,
                                        SOCK_CLOEXEC | SOCK_NONBLOCK)),
                   {}};
  if (client.socket.IsOpen()) {
    const int on = 1;
    ::setsockopt(client.socket.Number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    client.name = NameOf(peer, length);
  }
  return client;
}

Passed Read(const Descriptor& socket, std::span<std::uint8_t> room) {
  const ssize_t got = ::read(socket.Number(), room.data(), room.size());
  if (got < 0 && (errno == EAGAIN || errno == EINTR)) {
    return 0;
  }
  return got > 0 ? got : LineEnded;
}

Passed Write(const Descriptor& socket, std::span<const std::uint8_t> bytes) {
  const ssize_t sent = ::send(socket.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (sent < 0) {
    return errno == EAGAIN || errno == EINTR ? 0 : LineEnded;
  }
  return sent;
}

void CloseWithReset(Descriptor& socket) {
  const linger now{1, 0};
  ::setsockopt(socket.Number(), SOL_SOCKET, SO_LINGER, &now, sizeof now);
  socket.Close();
}

} // namespace loader::simulator
