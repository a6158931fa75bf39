#include <winsock2.h>
#include <ws2tcpip.h>

#include <array>
#include <memory>

#include "platform/RunTimeFailure.h"
#include "simulator/Sockets.h"

namespace loader::simulator {

namespace {

std::string NameOf(const sockaddr_storage& address, int length) {
  std::array<char, NI_MAXHOST> host{};
  std::array<char, NI_MAXSERV> port{};
  if (::getnameinfo(reinterpret_cast<const sockaddr*>(&address), length, host.data(), host.size(),
                    port.data(), port.size(), NI_NUMERICHOST | NI_NUMERICSERV) != 0) {
    return "?";
  }
  const bool six = address.ss_family == AF_INET6;
  return (six ? "[" : "") + std::string(host.data()) + (six ? "]:" : ":") + port.data();
}

struct ReasonRow {
  int error;
  const char* text;
};
// In the words of the other system; Windows' own are in the language of the machine and in its code page.
constexpr ReasonRow Reasons[] = {
    {WSAEADDRINUSE,
     "Address already in use (another program, perhaps another recorder-sim, serves this port)"},
    {WSAEACCES, "Permission denied (another program has this port to itself, or Windows keeps it back)"},
    {WSAEADDRNOTAVAIL, "Cannot assign requested address"},
    {WSAHOST_NOT_FOUND, "Name or service not known"},
    {WSANO_DATA, "Name or service not known"},
};

std::string Reason(int error) {
  for (const ReasonRow& row : Reasons) {
    if (row.error == error) {
      return row.text;
    }
  }
  return "Windows error " + std::to_string(error);
}

SOCKET SocketOf(const Descriptor& descriptor) {
  return static_cast<SOCKET>(descriptor.Number());
}

Descriptor Owned(SOCKET socket) {
  return socket == INVALID_SOCKET ? Descriptor() : Descriptor(static_cast<int>(socket));
}

void DoNotBlock(const Descriptor& descriptor) {
  u_long on = 1;
  ::ioctlsocket(SocketOf(descriptor), FIONBIO, &on);
}

void SetOption(const Descriptor& descriptor, int level, int option) {
  const BOOL on = TRUE;
  ::setsockopt(SocketOf(descriptor), level, option, reinterpret_cast<const char*>(&on), sizeof on);
}

// Once a program, before its first socket.
void StartSockets() {
  static const int error = [] {
    WSADATA data{};
    return ::WSAStartup(MAKEWORD(2, 2), &data);
  }();
  if (error != 0) {
    throw RunTimeFailure("no sockets: " + Reason(error));
  }
}

} // namespace

void Descriptor::Close() {
  if (number_ >= 0) {
    ::closesocket(static_cast<SOCKET>(std::exchange(number_, -1)));
  }
}

TcpListener Listen(const TcpAddress& address) {
  StartSockets();
  const std::string wanted = address.host + ":" + std::to_string(address.port);
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
  addrinfo* found = nullptr;
  const int error = ::getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &hints, &found);
  if (error != 0) {
    throw RunTimeFailure("cannot listen on " + wanted + ": " + Reason(error));
  }
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, &::freeaddrinfo);
  TcpListener listener{Owned(::WSASocketW(found->ai_family, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                                          WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)),
                       {}};
  // Without this a second program could take the port of the first one away from it.
  SetOption(listener.socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE);
  if (!listener.socket.IsOpen() ||
      ::bind(SocketOf(listener.socket), found->ai_addr, static_cast<int>(found->ai_addrlen)) != 0 ||
      ::listen(SocketOf(listener.socket), SOMAXCONN) != 0) {
    throw RunTimeFailure("cannot listen on " + wanted + ": " + Reason(::WSAGetLastError()));
  }
  DoNotBlock(listener.socket);
  sockaddr_storage bound{};
  int length = sizeof bound;
  ::getsockname(SocketOf(listener.socket), reinterpret_cast<sockaddr*>(&bound), &length);
  listener.name = NameOf(bound, length);
  return listener;
}

TcpClient Accept(const TcpListener& listener) {
  sockaddr_storage peer{};
  int length = sizeof peer;
  TcpClient client{Owned(::accept(SocketOf(listener.socket), reinterpret_cast<sockaddr*>(&peer), &length)),
                   {}};
  if (client.socket.IsOpen()) {
    DoNotBlock(client.socket);
    SetOption(client.socket, IPPROTO_TCP, TCP_NODELAY);
    client.name = NameOf(peer, length);
  }
  return client;
}

Passed Read(const Descriptor& socket, std::span<std::uint8_t> room) {
  const int got =
      ::recv(SocketOf(socket), reinterpret_cast<char*>(room.data()), static_cast<int>(room.size()), 0);
  if (got == SOCKET_ERROR && ::WSAGetLastError() == WSAEWOULDBLOCK) {
    return 0;
  }
  return got > 0 ? got : LineEnded;
}

Passed Write(const Descriptor& socket, std::span<const std::uint8_t> bytes) {
  const int sent = ::send(SocketOf(socket), reinterpret_cast<const char*>(bytes.data()),
                          static_cast<int>(bytes.size()), 0);
  if (sent == SOCKET_ERROR) {
    return ::WSAGetLastError() == WSAEWOULDBLOCK ? 0 : LineEnded;
  }
  return sent;
}

void CloseWithReset(Descriptor& socket) {
  const linger now{1, 0};
  ::setsockopt(SocketOf(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&now), sizeof now);
  socket.Close();
}

} // namespace loader::simulator
