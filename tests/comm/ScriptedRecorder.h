// A recorder for the link tests: a register memory behind the scripted wires. It answers Modbus RTU on the
// serial port and on USB, Modbus/TCP on the socket, and can answer any one request with a fault.
//
// Its frames are put together and taken apart here, by other code than the program's own.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "tests/support/CheckValue.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {

enum class Line { Usb, Ethernet, Serial };
constexpr std::array<Line, 3> AllLines{Line::Usb, Line::Ethernet, Line::Serial};
const char* LineName(Line line);
void PrintTo(Line line, std::ostream* out);

enum class Fault {
  NoReply,
  LateReply,
  ErrorReply,
  Truncated,
  TwoBytesTooMany,
  OneCheckByteWrong,
  BothCheckBytesWrong,
  WrongStation,
  WrongFunction,
  WrongTransaction,
  Trickle,
  SplitInTwo,
  GarbageBefore,
  ClosedBefore,
  ClosedInside,
};
constexpr std::array<Fault, 15> AllFaults{Fault::NoReply,
                                          Fault::LateReply,
                                          Fault::ErrorReply,
                                          Fault::Truncated,
                                          Fault::TwoBytesTooMany,
                                          Fault::OneCheckByteWrong,
                                          Fault::BothCheckBytesWrong,
                                          Fault::WrongStation,
                                          Fault::WrongFunction,
                                          Fault::WrongTransaction,
                                          Fault::Trickle,
                                          Fault::SplitInTwo,
                                          Fault::GarbageBefore,
                                          Fault::ClosedBefore,
                                          Fault::ClosedInside};
const char* FaultName(Fault fault);
void PrintTo(Fault fault, std::ostream* out);
// What Fault::GarbageBefore puts in front of a reply.
inline const Bytes Garbage{0x00, 0xFF, 0x13};
// A transaction number is Ethernet's, a check value that of the other two.
bool FaultExists(Fault fault, Line line);

struct RecordedRequest {
  int function = 0; // 3, 4 or 16
  int number = 0;   // of the first register: 30001 up for function 4, else 40001 up
  int count = 0;
  bool operator==(const RecordedRequest&) const = default;
};
std::ostream& operator<<(std::ostream& out, const RecordedRequest& request);

class ScriptedRecorder {
public:
  // Takes its place on all three wires.
  explicit ScriptedRecorder(ScriptedPlatform& platform);
  ScriptedRecorder(const ScriptedRecorder&) = delete;
  ScriptedRecorder& operator=(const ScriptedRecorder&) = delete;

  // By register number, 30001 to 40000 and 40001 to 50000.
  std::uint16_t& Register(int number);
  // Every register of both tables takes the pattern of its number.
  void FillWithPattern();
  [[nodiscard]] static std::uint16_t Pattern(int number);
  // The identity: model and version tag where the identity section lies, two characters swapped in each
  // register.
  void PutIdentity(std::string_view model, std::string_view version);
  void PutState(std::uint16_t state);
  // `text` from a register on, NULs up to `bytes`.
  void PutText(int number, std::string_view text, int bytes);

  // The request of that index (from 0, all requests count) is answered with the fault.
  void FaultAt(Fault fault, int request) { faults_[request] = fault; }

  void ClearFaults() { faults_.clear(); }

  std::vector<RecordedRequest> requests;
  // What each request wrote, by its index; empty for a read.
  std::vector<std::vector<std::uint16_t>> written;
  // The good reply to each request, also where a fault went out instead.
  std::vector<Bytes> replies;
  int station = 1;
  // Runs for each request before it is answered, with its index.
  std::function<void(int)> onRequest;
  // Milliseconds until a reply.
  int turnaround = 1;

private:
  Bytes AnswerRtu(const Bytes& frame);
  Bytes AnswerTcp(const Bytes& frame);
  // The protocol data unit: function and what follows.
  Bytes Serve(const Bytes& pdu);
  void Send(ScriptedWire& wire, Line line, const Bytes& request);
  void SendFaulty(ScriptedWire& wire, Line line, Fault fault, const Bytes& request, Bytes reply);
  void CutLine(Line line);

  ScriptedPlatform& platform_;
  std::array<std::uint16_t, 10000> input_{};
  std::array<std::uint16_t, 10000> holding_{};
  std::map<int, Fault> faults_;
};

// The check value behind it, low byte first as on the wire.
Bytes WithCheckValue(Bytes bytes);
// "01 04 00 00"
Bytes Hex(std::string_view text);
std::string ToHex(const Bytes& bytes);

} // namespace loader::test
