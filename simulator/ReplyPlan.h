// When the bytes of a reply leave, and what becomes of the connection.
//
// A plan is pure arithmetic: it tells times relative to the first byte of the request, and waits for nothing.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "simulator/Faults.h"
#include "simulator/ModbusSlave.h"

namespace loader::simulator {

using Nanoseconds = std::chrono::nanoseconds;
using Milliseconds = std::chrono::milliseconds;

// What happens to the connection when a step's bytes have left.
enum class Ending { None, Close, Reset };

struct ReplyStep {
  Nanoseconds after{0}; // since the first byte of the request arrived
  Bytes bytes;
  Ending ending = Ending::None;

  bool operator==(const ReplyStep&) const = default;
};
using ReplyPlan = std::vector<ReplyStep>;

struct Timing {
  int pace = 0;               // bits a second of an RTU line; 0: as fast as it goes
  Milliseconds turnaround{0}; // from the end of a request to the start of its reply
  Milliseconds late{6000};    // added by the fault `late`
};

constexpr int BitsOfCharacter = 11; // start, eight data bits, parity, stop
// A serial port hands its bytes to the program in groups, when its receive buffer has filled up to a mark or
// the line falls silent. On a paced line bytes leave in such groups, each when its last character would have
// passed.
constexpr std::size_t ReceiveGroup = 8;
constexpr Milliseconds TrickleGap{20};
constexpr Milliseconds SplitGap{200};

// The time that so many characters take on a line of `pace` bits a second; 0 without a pace.
[[nodiscard]] Nanoseconds WireTime(int pace, std::size_t characters);

// `reply` empty: the recorder says nothing, whatever the fault.
[[nodiscard]] ReplyPlan PlanReply(Line line, std::size_t requestBytes, Bytes reply,
                                  std::optional<FaultKind> fault, const Timing& timing);

} // namespace loader::simulator
