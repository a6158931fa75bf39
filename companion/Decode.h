// Frames of a trace with the parameters that their registers are.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "companion/DecodeLines.h"
#include "companion/DecodeRegisters.h"

namespace loader {

enum class Wire { Unknown, Rtu, Tcp };

// What is wrong with a frame, or missing to understand it. The first four are damage.
enum class FrameDefect {
  None,
  NotHex,     // something else stands among its bytes
  WrongCheck, // the check value of an RTU frame, or bytes that are no frame at all
  CutShort,   // it announces more bytes than it has
  TooLong,    // or fewer
  UnknownFunction,
  NoRequest,    // a reply to nothing that was asked
  OtherRequest, // a reply that does not fit what was asked
};

// The value of a parameter that a frame carries.
struct DecodedValue {
  RegisterField field;
  std::optional<StoredValue> value; // empty for a part of a text whose rest has not passed (yet)
  std::u16string text;              // TextOfItself
};

struct DecodedFrame {
  std::size_t line = 0;
  Direction direction = Direction::Unknown;
  Wire wire = Wire::Unknown;
  FrameDefect defect = FrameDefect::None;
  int station = 0;
  int function = 0;        // without the mark of an exception
  int exception = 0;       // its code
  int address = 0;         // 3xxxx or 4xxxx; 0 where it is not known
  int count = 0;           // registers
  bool data = false;       // it carries registers
  bool unanswered = false; // a request that no reply came to
  std::vector<DecodedValue> values;
  int nameless = 0; // registers that it carries and that are no parameter
};

// What the trace itself says of the recorder: the texts of section P that were read.
struct TraceIdentity {
  std::u16string model;   // PILC: "KOV"
  std::u16string version; // PVER: "V14A"
};

struct DecodedTrace {
  std::vector<DecodedFrame> frames;
  TraceIdentity identity;
};

// By the layout of a generation, of the model in force.
[[nodiscard]] DecodedTrace DecodeTrace(const std::vector<TraceLine>& lines, int generation,
                                       const Speech& speech);

[[nodiscard]] constexpr bool IsUnderstood(const DecodedFrame& frame) {
  return frame.defect == FrameDefect::None;
}

} // namespace loader
