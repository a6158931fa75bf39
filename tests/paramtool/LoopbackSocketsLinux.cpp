#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "tests/paramtool/LoopbackSockets.h"

namespace loader::test {

namespace {

sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

LoopbackSocket WithoutDelay(LoopbackSocket socket) {
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return socket;
}

} // namespace

LoopbackSocket BindToFreePort(int& port) {
  const int bound = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof address;
  if (::bind(bound, reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
      ::getsockname(bound, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    ::close(bound);
    return -1;
  }
  port = ntohs(address.sin_port);
  return bound;
}

bool ListenOn(LoopbackSocket listener) {
  return ::listen(listener, 8) == 0;
}

LoopbackSocket AcceptOn(LoopbackSocket listener) {
  return WithoutDelay(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
}

LoopbackSocket ConnectTo(int port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Loopback(port);
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    ::close(socket);
    return -1;
  }
  return WithoutDelay(socket);
}

std::ptrdiff_t ReceiveFrom(LoopbackSocket socket, std::uint8_t* room, std::size_t size) {
  return ::recv(socket, room, size, 0);
}

bool SendTo(LoopbackSocket socket, const std::uint8_t* bytes, std::size_t count) {
  return ::send(socket, bytes, count, MSG_NOSIGNAL) == static_cast<ssize_t>(count);
}

bool WaitForNews(LoopbackSocket socket, int milliseconds) {
  pollfd wait{socket, POLLIN, 0};
  return ::poll(&wait, 1, milliseconds) == 1;
}

void WaitForEither(LoopbackSocket one, LoopbackSocket other) {
  std::array<pollfd, 2> wait{{{one, POLLIN, 0}, {other, POLLIN, 0}}};
  while (::poll(wait.data(), wait.size(), -1) < 0 && errno == EINTR) {
  }
}

void EndConnection(LoopbackSocket socket) {
  ::shutdown(socket, SHUT_RDWR);
}

void CloseSocket(LoopbackSocket socket) {
  ::close(socket);
}

} // namespace loader::test
