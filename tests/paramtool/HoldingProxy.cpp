#include "tests/paramtool/HoldingProxy.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <vector>

#include "tests/paramtool/LoopbackSockets.h"

namespace loader::test {

namespace {

bool Receive(LoopbackSocket socket, std::uint8_t* bytes, std::size_t count) {
  while (count > 0) {
    const std::ptrdiff_t got = ReceiveFrom(socket, bytes, count);
    if (got <= 0) {
      return false;
    }
    bytes += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

// One whole frame; empty at the end of the connection.
std::vector<std::uint8_t> ReceiveFrame(LoopbackSocket socket) {
  constexpr std::size_t Header = 6;
  std::vector<std::uint8_t> frame(Header);
  if (!Receive(socket, frame.data(), Header)) {
    return {};
  }
  const std::size_t rest = frame[4] * 256U + frame[5];
  frame.resize(Header + rest);
  return Receive(socket, frame.data() + Header, rest) ? frame : std::vector<std::uint8_t>{};
}

bool SendFrame(LoopbackSocket socket, const std::vector<std::uint8_t>& frame) {
  return SendTo(socket, frame.data(), frame.size());
}

// Of the client, or until the next one comes: Wine may keep the connection of a killed program open.
void WaitForEnd(LoopbackSocket client, LoopbackSocket listener) {
  std::array<std::uint8_t, 256> ignored{};
  do {
    WaitForEither(client, listener);
  } while (!WaitForNews(listener, 0) && ReceiveFrom(client, ignored.data(), ignored.size()) > 0);
}

} // namespace

HoldingProxy::HoldingProxy(int recorderPort, int hold, Held held)
    : recorderPort_(recorderPort), hold_(hold), held_(held), listener_(BindToFreePort(port_)) {
  if (ListenOn(listener_)) {
    thread_ = std::thread([this] { Run(); });
  }
}

HoldingProxy::~HoldingProxy() {
  ending_ = true;
  if (const int open = open_; open >= 0) {
    EndConnection(open);
  }
  if (thread_.joinable()) {
    const LoopbackSocket last = ConnectTo(port_); // or it would wait for one
    thread_.join();
    CloseSocket(last);
  }
  CloseSocket(listener_);
}

bool HoldingProxy::WaitUntilHeld() {
  constexpr std::chrono::seconds LongEnough{60};
  return whenHeld_.wait_for(LongEnough) == std::future_status::ready;
}

void HoldingProxy::Run() {
  for (LoopbackSocket client = AcceptOn(listener_); client >= 0; client = AcceptOn(listener_)) {
    if (ending_) {
      CloseSocket(client);
      return;
    }
    open_ = client;
    Serve(client);
    open_ = -1;
    CloseSocket(client);
  }
}

void HoldingProxy::Serve(int client) {
  const LoopbackSocket recorder = ConnectTo(recorderPort_);
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
      WaitForEnd(client, listener_);
      break;
    }
  }
  CloseSocket(recorder);
}

} // namespace loader::test
