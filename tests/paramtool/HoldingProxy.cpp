#include "tests/paramtool/HoldingProxy.h"

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <cstdint>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace loader::test {

namespace {

sockaddr_in Local(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int ConnectTo(int port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Local(port);
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    ::close(socket);
    return -1;
  }
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return socket;
}

bool Receive(int socket, std::uint8_t* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t got = ::recv(socket, bytes, count, 0);
    if (got <= 0) {
      return false;
    }
    bytes += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

// One whole frame; empty at the end of the connection.
std::vector<std::uint8_t> ReceiveFrame(int socket) {
  constexpr std::size_t Header = 6;
  std::vector<std::uint8_t> frame(Header);
  if (!Receive(socket, frame.data(), Header)) {
    return {};
  }
  const std::size_t rest = frame[4] * 256U + frame[5];
  frame.resize(Header + rest);
  return Receive(socket, frame.data() + Header, rest) ? frame : std::vector<std::uint8_t>{};
}

bool SendFrame(int socket, const std::vector<std::uint8_t>& frame) {
  return ::send(socket, frame.data(), frame.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(frame.size());
}

void WaitForEnd(int socket) {
  std::array<std::uint8_t, 256> ignored{};
  while (::recv(socket, ignored.data(), ignored.size(), 0) > 0) {
  }
}

} // namespace

HoldingProxy::HoldingProxy(int recorderPort, int hold, Held held)
    : recorderPort_(recorderPort), hold_(hold), held_(held),
      listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = Local(0);
  ::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  ::listen(listener_, 8);
  socklen_t size = sizeof address;
  ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Run(); });
}

HoldingProxy::~HoldingProxy() {
  ::shutdown(listener_, SHUT_RDWR);
  if (const int open = open_; open >= 0) {
    ::shutdown(open, SHUT_RDWR);
  }
  thread_.join();
  ::close(listener_);
}

bool HoldingProxy::WaitUntilHeld() {
  constexpr std::chrono::seconds LongEnough{60};
  return whenHeld_.wait_for(LongEnough) == std::future_status::ready;
}

void HoldingProxy::Run() {
  for (int client = ::accept(listener_, nullptr, nullptr); client >= 0;
       client = ::accept(listener_, nullptr, nullptr)) {
    const int on = 1;
    ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    open_ = client;
    Serve(client);
    open_ = -1;
    ::close(client);
  }
}

void HoldingProxy::Serve(int client) {
  const int recorder = ConnectTo(recorderPort_);
  for (auto request = ReceiveFrame(client); !request.empty(); request = ReceiveFrame(client)) {
    const bool held = ++requests_ == hold_;
    if (!held || held_ == Held::Reply) {
      SendFrame(recorder, request);
      const auto reply = ReceiveFrame(recorder);
      if (!held && !SendFrame(client, reply)) {
        break;
      }
    }
    if (held) {
      holding_.set_value();
      WaitForEnd(client);
      break;
    }
  }
  ::close(recorder);
}

} // namespace loader::test
