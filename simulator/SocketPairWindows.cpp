#include <winsock2.h>
#include <ws2tcpip.h>

#include <array>
#include <string>

#include "platform/RunTimeFailure.h"
#include "simulator/SocketPair.h"
#include "simulator/Wait.h"

namespace loader::simulator {

const bool RtuTakesSockets = false;

namespace {

[[noreturn]] void Fail() {
  throw RunTimeFailure("no socket pair: Windows error " + std::to_string(::WSAGetLastError()));
}

SOCKET SocketOf(const Descriptor& descriptor) {
  return static_cast<SOCKET>(descriptor.Number());
}

void WaitForBytes(const Descriptor& end) {
  std::vector<Wait> waits{{end.Number()}};
  WaitForAny(waits, std::nullopt);
}

// Connected to the listener, and the name that it bears there.
TcpClient Connect(const TcpListener& listener) {
  sockaddr_in address{};
  int length = sizeof address;
  TcpClient client;
  const SOCKET socket = ::WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                                     WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
  if (socket == INVALID_SOCKET) {
    Fail();
  }
  client.socket = Descriptor(static_cast<int>(socket));
  const BOOL on = TRUE;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
  if (::getsockname(SocketOf(listener.socket), reinterpret_cast<sockaddr*>(&address), &length) != 0 ||
      ::connect(socket, reinterpret_cast<const sockaddr*>(&address), length) != 0 ||
      ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    Fail();
  }
  client.name = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
  return client;
}

} // namespace

// Windows has no such pair of its own: a connection over the loopback address.
SocketPair::SocketPair() {
  const TcpListener listener = Listen({"127.0.0.1", 0});
  TcpClient outer = Connect(listener);
  outer_ = std::move(outer.socket);
  // Another program may have come first; it is sent away.
  TcpClient inner;
  while (inner.name != outer.name) {
    WaitForBytes(listener.socket);
    inner = Accept(listener);
  }
  inner_ = std::move(inner.socket);
}

void SocketPair::GiveInner(std::span<const std::uint8_t> bytes) {
  if (Write(outer_, bytes) != static_cast<Passed>(bytes.size())) {
    Fail();
  }
  // What was sent in one go, and is shorter than a packet of the loopback address, arrives in one go.
  WaitForBytes(inner_);
}

void SocketPair::EmptyInner() {
  std::array<std::uint8_t, 512> part{};
  while (Read(inner_, part) > 0) { // it does not block
  }
}

std::vector<std::uint8_t> SocketPair::TakeOuter(std::size_t count) {
  std::vector<std::uint8_t> bytes(count);
  std::size_t taken = 0;
  while (taken < count) { // it blocks until there are some
    const Passed got = Read(outer_, std::span(bytes).subspan(taken));
    if (got <= 0) {
      Fail();
    }
    taken += static_cast<std::size_t>(got);
  }
  return bytes;
}

} // namespace loader::simulator
