#include "tests/comm/ScriptedRecorder.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <ostream>
#include <stdexcept>

namespace loader::test {

namespace {

constexpr int LateMilliseconds = 6000; // behind every time-out
constexpr int IdentityRegister = 30001;
constexpr int VersionRegister = 30013;
constexpr int StateRegister = 30101;

} // namespace

const char* LineName(Line line) {
  switch (line) {
  case Line::Usb:
    return "Usb";
  case Line::Ethernet:
    return "Ethernet";
  default:
    return "Serial";
  }
}

const char* FaultName(Fault fault) {
  constexpr std::array<const char*, AllFaults.size()> names{
      "NoReply",           "LateReply",           "ErrorReply",    "Truncated",     "TwoBytesTooMany",
      "OneCheckByteWrong", "BothCheckBytesWrong", "WrongStation",  "WrongFunction", "WrongTransaction",
      "Trickle",           "SplitInTwo",          "GarbageBefore", "ClosedBefore",  "ClosedInside"};
  return names.at(static_cast<std::size_t>(fault));
}

void PrintTo(Line line, std::ostream* out) {
  *out << LineName(line);
}

void PrintTo(Fault fault, std::ostream* out) {
  *out << FaultName(fault);
}

bool FaultExists(Fault fault, Line line) {
  switch (fault) {
  case Fault::WrongTransaction:
    return line == Line::Ethernet;
  case Fault::OneCheckByteWrong:
  case Fault::BothCheckBytesWrong:
    return line != Line::Ethernet;
  default:
    return true;
  }
}

std::ostream& operator<<(std::ostream& out, const RecordedRequest& request) {
  return out << "function " << request.function << " register " << request.number << " count "
             << request.count;
}

ScriptedRecorder::ScriptedRecorder(ScriptedPlatform& platform) : platform_(platform) {
  platform.usb.wire.onSend = [this](const Bytes& frame) { Send(platform_.usb.wire, Line::Usb, frame); };
  platform.socket.wire.onSend = [this](const Bytes& frame) {
    Send(platform_.socket.wire, Line::Ethernet, frame);
  };
  platform.serial.wire.onSend = [this](const Bytes& frame) {
    Send(platform_.serial.wire, Line::Serial, frame);
  };
}

std::uint16_t& ScriptedRecorder::Register(int number) {
  if (number >= 40001 && number <= 50000) {
    return holding_.at(static_cast<std::size_t>(number - 40001));
  }
  return input_.at(static_cast<std::size_t>(number - 30001));
}

std::uint16_t ScriptedRecorder::Pattern(int number) {
  // Never twice the same nearby, and no text: neither byte is NUL or a letter of the defaults.
  return static_cast<std::uint16_t>(0xA000 + (number * 37) % 0x1000);
}

void ScriptedRecorder::FillWithPattern() {
  for (int number = 30001; number <= 50000; ++number) {
    Register(number) = Pattern(number);
  }
}

void ScriptedRecorder::PutText(int number, std::string_view text, int bytes) {
  for (int at = 0; at < bytes; at += 2, ++number) {
    const auto byte = [&](int index) {
      return index < static_cast<int>(text.size())
                 ? static_cast<unsigned char>(text[static_cast<std::size_t>(index)])
                 : 0U;
    };
    Register(number) = static_cast<std::uint16_t>(byte(at) + 256U * byte(at + 1));
  }
}

void ScriptedRecorder::PutIdentity(std::string_view model, std::string_view version) {
  PutText(IdentityRegister, model, 8);
  PutText(VersionRegister, version, 8);
}

void ScriptedRecorder::PutState(std::uint16_t state) {
  Register(StateRegister) = state;
}

Bytes ScriptedRecorder::Serve(const Bytes& pdu) {
  const int function = pdu.at(0);
  const int address = pdu.at(1) * 256 + pdu.at(2);
  const int count = pdu.at(3) * 256 + pdu.at(4);
  const int number = (function == 4 ? 30001 : 40001) + address;
  requests.push_back({function, number, count});
  written.emplace_back();
  if (onRequest) {
    onRequest(static_cast<int>(requests.size()) - 1);
  }
  if (function == 16) {
    if (pdu.at(5) != 2 * count || static_cast<int>(pdu.size()) != 6 + 2 * count) {
      ADD_FAILURE() << "a write request of the wrong length";
    }
    for (int i = 0; i < count; ++i) {
      const auto at = static_cast<std::size_t>(6 + 2 * i);
      Register(number + i) = static_cast<std::uint16_t>(pdu.at(at) * 256 + pdu.at(at + 1));
      written.back().push_back(Register(number + i));
    }
    return {16, pdu[1], pdu[2], pdu[3], pdu[4]};
  }
  if ((function != 3 && function != 4) || pdu.size() != 5) {
    ADD_FAILURE() << "a request that no recorder knows";
  }
  Bytes reply{pdu[0], static_cast<std::uint8_t>(2 * count)};
  for (int i = 0; i < count; ++i) {
    reply.push_back(static_cast<std::uint8_t>(Register(number + i) / 256));
    reply.push_back(static_cast<std::uint8_t>(Register(number + i) % 256));
  }
  return reply;
}

Bytes ScriptedRecorder::AnswerRtu(const Bytes& frame) {
  EXPECT_EQ(CheckValueOf(frame), 0) << "a request with a wrong check value: " << ToHex(frame);
  if (frame.at(0) != station) {
    return {};
  }
  Bytes reply{frame[0]};
  const Bytes served = Serve(Bytes(frame.begin() + 1, frame.end() - 2));
  reply.insert(reply.end(), served.begin(), served.end());
  return WithCheckValue(reply);
}

Bytes ScriptedRecorder::AnswerTcp(const Bytes& frame) {
  EXPECT_EQ(frame.at(2) * 256 + frame.at(3), 0);
  EXPECT_EQ(static_cast<std::size_t>(frame.at(4) * 256 + frame.at(5)), frame.size() - 6);
  if (frame.at(6) != station) {
    return {};
  }
  const Bytes served = Serve(Bytes(frame.begin() + 7, frame.end()));
  const auto length = static_cast<std::uint8_t>(served.size() + 1);
  Bytes reply{frame[0], frame[1], 0, 0, 0, length, frame[6]};
  reply.insert(reply.end(), served.begin(), served.end());
  return reply;
}

void ScriptedRecorder::CutLine(Line line) {
  if (line == Line::Ethernet) {
    platform_.socket.state = 8; // the peer has closed
  } else if (line == Line::Serial) {
    platform_.serial.lost = true;
  }
}

void ScriptedRecorder::Send(ScriptedWire& wire, Line line, const Bytes& request) {
  const int index = static_cast<int>(requests.size());
  const Bytes reply = line == Line::Ethernet ? AnswerTcp(request) : AnswerRtu(request);
  if (reply.empty()) {
    return;
  }
  replies.push_back(reply);
  const auto fault = faults_.find(index);
  if (fault == faults_.end()) {
    wire.Reply(reply, turnaround);
  } else {
    SendFaulty(wire, line, fault->second, request, reply);
  }
}

void ScriptedRecorder::SendFaulty(ScriptedWire& wire, Line line, Fault fault, const Bytes& request,
                                  Bytes reply) {
  const bool tcp = line == Line::Ethernet;
  const std::size_t stationAt = tcp ? 6 : 0;
  const auto recheck = [&] {
    if (!tcp) {
      reply.resize(reply.size() - 2);
      reply = WithCheckValue(reply);
    }
  };
  const auto half = static_cast<std::ptrdiff_t>(reply.size() / 2);
  switch (fault) {
  case Fault::NoReply:
    return;
  case Fault::LateReply:
    wire.Reply(reply, LateMilliseconds);
    return;
  case Fault::ErrorReply: {
    Bytes error{request[stationAt], static_cast<std::uint8_t>(request[stationAt + 1] + 128), 4};
    if (tcp) {
      error.insert(error.begin(), {request[0], request[1], 0, 0, 0, 3});
      wire.Reply(error, turnaround);
    } else {
      wire.Reply(WithCheckValue(error), turnaround);
    }
    return;
  }
  case Fault::Truncated:
    reply.resize(reply.size() - 3);
    break;
  case Fault::TwoBytesTooMany:
    reply.insert(reply.end(), {0x55, 0xAA});
    break;
  case Fault::OneCheckByteWrong:
    reply.back() ^= 0xFF;
    break;
  case Fault::BothCheckBytesWrong:
    reply.back() ^= 0xFF;
    reply[reply.size() - 2] ^= 0xFF;
    break;
  case Fault::WrongStation:
    reply[stationAt] = 99;
    recheck();
    break;
  case Fault::WrongFunction:
    reply[stationAt + 1] = 6;
    recheck();
    break;
  case Fault::WrongTransaction:
    reply[1] ^= 0x01;
    break;
  case Fault::Trickle:
    for (std::size_t i = 0; i < reply.size(); ++i) {
      wire.Reply({reply[i]}, turnaround + static_cast<int>(i) * 2);
    }
    return;
  case Fault::SplitInTwo:
    wire.Reply(Bytes(reply.begin(), reply.begin() + half), turnaround);
    wire.Reply(Bytes(reply.begin() + half, reply.end()), turnaround + 50);
    return;
  case Fault::GarbageBefore:
    reply.insert(reply.begin(), Garbage.begin(), Garbage.end());
    break;
  case Fault::ClosedBefore:
    CutLine(line);
    return;
  case Fault::ClosedInside:
    wire.Reply(Bytes(reply.begin(), reply.begin() + half), turnaround);
    platform_.time.After(turnaround + 1, [this, line] { CutLine(line); });
    return;
  }
  wire.Reply(reply, turnaround);
}

Bytes WithCheckValue(Bytes bytes) {
  const std::uint16_t check = CheckValueOf(bytes);
  bytes.push_back(static_cast<std::uint8_t>(check % 256));
  bytes.push_back(static_cast<std::uint8_t>(check / 256));
  return bytes;
}

Bytes Hex(std::string_view text) {
  Bytes bytes;
  unsigned value = 0;
  int digits = 0;
  for (const char c : text) {
    if (c == ' ') {
      continue;
    }
    const std::size_t digit = std::string_view("0123456789ABCDEF").find(c);
    if (digit == std::string_view::npos) {
      throw std::logic_error("not hexadecimal");
    }
    value = value * 16 + static_cast<unsigned>(digit);
    if (++digits % 2 == 0) {
      bytes.push_back(static_cast<std::uint8_t>(value));
      value = 0;
    }
  }
  return bytes;
}

std::string ToHex(const Bytes& bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    std::array<char, 4> buffer{};
    std::snprintf(buffer.data(), buffer.size(), text.empty() ? "%02X" : " %02X", byte);
    text += buffer.data();
  }
  return text;
}

} // namespace loader::test
