#include "tests/fuzz/FuzzRecorder.h"

#include "comm/RecorderCheck.h"
#include "comm/modComunication.h"
#include "comm/modUsb.h"
#include "core/ModelProfile.h"
#include "tests/support/CheckValue.h"

namespace loader::fuzz {

namespace {

constexpr std::size_t TcpStationAt = 6;
constexpr std::size_t CheckBytes = 2;

// Station and what follows it, framed as a reply to `request`.
Bytes Framed(const Bytes& request, Bytes body, bool tcp) {
  if (!tcp) {
    body.resize(body.size() + CheckBytes);
    PutCheck(body);
    return body;
  }
  Bytes frame{request[0], request[1], 0, 0, 0, static_cast<std::uint8_t>(body.size())};
  frame.insert(frame.end(), body.begin(), body.end());
  return frame;
}

} // namespace

void PutCheck(Bytes& frame) {
  if (frame.size() < CheckBytes) {
    return;
  }
  const std::size_t end = frame.size() - CheckBytes;
  const unsigned check = test::CheckValueOf(std::span<const std::uint8_t>(frame).first(end));
  frame[end] = static_cast<std::uint8_t>(check % 256);
  frame[end + 1] = static_cast<std::uint8_t>(check / 256);
}

// `request`: station, function, and what follows, without a check value.
Bytes FuzzRecorder::Serve(std::span<const std::uint8_t> request) {
  const std::uint8_t function = request[1];
  const std::size_t first = request[2] * 256U + request[3];
  const std::size_t count = request[4] * 256U + request[5];
  Bytes reply{request[0], function};
  if (function == 16) {
    Require(request.size() == 7 + 2 * count && request[6] == 2 * count, "a write is as long as it says");
    for (std::size_t i = 0; i < count; ++i) {
      holding[(first + i) % TableRegisters] =
          static_cast<std::uint16_t>(request[7 + 2 * i] * 256 + request[8 + 2 * i]);
    }
    reply.insert(reply.end(), request.begin() + 2, request.begin() + 6);
    return reply;
  }
  Require(function == 3 || function == 4, "a request is a read or a write of registers");
  Require(request.size() == 6, "a read is as long as it has to be");
  reply.push_back(static_cast<std::uint8_t>(2 * count));
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint16_t value = (function == 4 ? input : holding)[(first + i) % TableRegisters];
    reply.push_back(static_cast<std::uint8_t>(value / 256));
    reply.push_back(static_cast<std::uint8_t>(value % 256));
  }
  return reply;
}

Bytes FuzzRecorder::Answer(const Bytes& frame, bool tcp) {
  const std::span<const std::uint8_t> all(frame);
  if (!tcp) {
    Require(test::CheckValueOf(all) == 0, "a request carries its check value");
    return Framed(frame, Serve(all.first(all.size() - CheckBytes)), tcp);
  }
  Require(frame[2] == 0 && frame[3] == 0 && frame[4] * 256U + frame[5] == frame.size() - TcpStationAt,
          "a request tells its protocol and its length");
  return Framed(frame, Serve(all.subspan(TcpStationAt)), tcp);
}

void FuzzRecorder::PutText(std::size_t at, std::string_view text, std::size_t registers) {
  const auto character = [&](std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
  };
  for (std::size_t i = 0; i < registers; ++i) {
    input[at + i] = static_cast<std::uint16_t>(character(2 * i) + 256U * character(2 * i + 1));
  }
}

Bytes ErrorReplyTo(const Bytes& frame, bool tcp) {
  const std::size_t station = tcp ? TcpStationAt : 0;
  const auto function = static_cast<std::uint8_t>(frame[station + 1] + 128);
  return Framed(frame, {frame[station], function, 4}, tcp);
}

void ResetLink() {
  CommLink = CommLinkRecord{};
  WaitTimer.Enabled = false;
  RecorderGeneration = 0;
  UsbHandle = NoUsbHandle;
  UsbSendWords.fill(0);
  UsbRecvWords.fill(0);
  Settings = CommSettings{};
}

} // namespace loader::fuzz
