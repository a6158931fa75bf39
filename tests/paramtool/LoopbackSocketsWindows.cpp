#include <winsock2.h>

#include "tests/paramtool/LoopbackSockets.h"

namespace loader::test {

namespace {

// A handle has no more than 32 bits that count.
SOCKET Of(LoopbackSocket socket) {
  return static_cast<SOCKET>(socket);
}

LoopbackSocket NewSocket() {
  static const int started = [] {
    WSADATA data{};
    return ::WSAStartup(MAKEWORD(2, 2), &data);
  }();
  const SOCKET made = started == 0 ? ::socket(AF_INET, SOCK_STREAM, 0) : INVALID_SOCKET;
  // Or a program that the test starts would keep the connection open.
  ::SetHandleInformation(reinterpret_cast<HANDLE>(made), HANDLE_FLAG_INHERIT, 0);
  return static_cast<LoopbackSocket>(made);
}

sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = ::htons(static_cast<u_short>(port));
  address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  return address;
}

LoopbackSocket WithoutDelay(LoopbackSocket socket) {
  const BOOL on = TRUE;
  ::setsockopt(Of(socket), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
  return socket;
}

} // namespace

LoopbackSocket BindToFreePort(int& port) {
  const LoopbackSocket bound = NewSocket();
  sockaddr_in address = Loopback(0);
  int size = sizeof address;
  if (::bind(Of(bound), reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
      ::getsockname(Of(bound), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    CloseSocket(bound);
    return -1;
  }
  port = ::ntohs(address.sin_port);
  return bound;
}

bool ListenOn(LoopbackSocket listener) {
  return ::listen(Of(listener), 8) == 0;
}

LoopbackSocket AcceptOn(LoopbackSocket listener) {
  return WithoutDelay(static_cast<LoopbackSocket>(::accept(Of(listener), nullptr, nullptr)));
}

LoopbackSocket ConnectTo(int port) {
  const LoopbackSocket socket = NewSocket();
  const sockaddr_in address = Loopback(port);
  if (::connect(Of(socket), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    CloseSocket(socket);
    return -1;
  }
  return WithoutDelay(socket);
}

std::ptrdiff_t ReceiveFrom(LoopbackSocket socket, std::uint8_t* room, std::size_t size) {
  return ::recv(Of(socket), reinterpret_cast<char*>(room), static_cast<int>(size), 0);
}

bool SendTo(LoopbackSocket socket, const std::uint8_t* bytes, std::size_t count) {
  const auto length = static_cast<int>(count);
  return ::send(Of(socket), reinterpret_cast<const char*>(bytes), length, 0) == length;
}

bool WaitForNews(LoopbackSocket socket, int milliseconds) {
  fd_set reading;
  FD_ZERO(&reading);
  reading.fd_array[0] = Of(socket);
  reading.fd_count = 1;
  timeval wait{milliseconds / 1000, milliseconds % 1000 * 1000};
  return ::select(0, &reading, nullptr, nullptr, &wait) == 1;
}

void WaitForEither(LoopbackSocket one, LoopbackSocket other) {
  fd_set reading;
  FD_ZERO(&reading);
  reading.fd_array[0] = Of(one);
  reading.fd_array[1] = Of(other);
  reading.fd_count = 2;
  ::select(0, &reading, nullptr, nullptr, nullptr);
}

void EndConnection(LoopbackSocket socket) {
  ::shutdown(Of(socket), SD_BOTH);
}

void CloseSocket(LoopbackSocket socket) {
  ::closesocket(Of(socket));
}

} // namespace loader::test
