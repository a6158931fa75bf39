#include "companion/Decode.h"

#include <algorithm>
#include <span>

#include "comm/modComunication.h"
#include "core/Text.h"

namespace loader {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr int ReadHolding = 3;
constexpr int ReadInput = 4;
constexpr int WriteOne = 6;
constexpr int WriteMany = 16;
constexpr int ExceptionMark = 0x80;
constexpr int InputTable = 30001;
constexpr int HoldingTable = 40001;
constexpr std::size_t TcpHeader = 6; // in front of the station number
constexpr std::size_t CheckBytes = 2;
constexpr std::size_t LongestRtu = 255;
constexpr std::size_t ModelWidth = 3; // "KOV-1000" is a KOV
constexpr std::size_t VersionTagWidth = 4;

int WordAt(Bytes bytes, std::size_t at) {
  return bytes[at] * 256 + bytes[at + 1];
}

// --- Envelopes

bool HasCheckValue(Bytes frame) {
  if (frame.size() < 4 || frame.size() > LongestRtu) {
    return false;
  }
  TakeReply(frame);
  CommLink.RecvLen = static_cast<std::uint8_t>(frame.size());
  const std::int32_t check = gFCrc16(0);
  return frame[frame.size() - 2] == (check & 0xFF) && frame.back() == (check >> 8 & 0xFF);
}

bool LooksLikeTcp(Bytes frame) {
  return frame.size() >= TcpHeader + 2 && WordAt(frame, 2) == 0;
}

// Station, function and what is behind them, without check value and header.
struct Envelope {
  Wire wire = Wire::Unknown;
  FrameDefect defect = FrameDefect::None;
  int transaction = 0;
  Bytes body; // empty where nothing can be told
};

// A good check value is no accident; a header may be one: "01 03 00 00 00 02" begins an RTU request.
Envelope Open(Bytes frame, Wire before) {
  if (HasCheckValue(frame)) {
    return {Wire::Rtu, FrameDefect::None, 0, frame.first(frame.size() - CheckBytes)};
  }
  if (before != Wire::Rtu && LooksLikeTcp(frame)) {
    const auto announced = static_cast<std::size_t>(WordAt(frame, 4)) + TcpHeader;
    Envelope tcp{Wire::Tcp, FrameDefect::None, WordAt(frame, 0), frame.subspan(TcpHeader)};
    if (announced != frame.size()) {
      tcp.defect = announced > frame.size() ? FrameDefect::CutShort : FrameDefect::TooLong;
      tcp.body = {};
    }
    return tcp;
  }
  return {before == Wire::Tcp ? Wire::Tcp : Wire::Rtu, FrameDefect::WrongCheck, 0, {}};
}

// Frames of one trace are of one kind; what most good ones are decides where a damaged one could be either.
Wire WireOf(const std::vector<TraceLine>& lines) {
  int rtu = 0;
  int tcp = 0;
  for (const TraceLine& line : lines) {
    if (!line.broken && HasCheckValue(line.bytes)) {
      ++rtu;
    } else if (!line.broken && LooksLikeTcp(line.bytes) &&
               static_cast<std::size_t>(WordAt(line.bytes, 4)) + TcpHeader == line.bytes.size()) {
      ++tcp;
    }
  }
  return rtu == 0 && tcp == 0 ? Wire::Unknown : rtu > tcp ? Wire::Rtu : Wire::Tcp;
}

// --- Bodies

// The length of what is behind the function, by which a request is told from a reply; nothing for a function
// that is none of these, or too few bytes to tell.
std::optional<std::size_t> RequestLength(int function, Bytes data) {
  switch (function) {
  case ReadHolding:
  case ReadInput:
  case WriteOne:
    return 4;
  case WriteMany:
    return data.size() < 5 ? std::optional<std::size_t>(5) : std::optional<std::size_t>(5U + data[4]);
  default:
    return std::nullopt;
  }
}
std::optional<std::size_t> ReplyLength(int function, Bytes data) {
  if ((function & ExceptionMark) != 0) {
    return 1;
  }
  switch (function) {
  case ReadHolding:
  case ReadInput:
    return data.empty() ? std::optional<std::size_t>(1) : std::optional<std::size_t>(1U + data[0]);
  case WriteOne:
  case WriteMany:
    return 4;
  default:
    return std::nullopt;
  }
}

FrameDefect LengthDefect(std::size_t wanted, std::size_t found) {
  return wanted == found ? FrameDefect::None : wanted > found ? FrameDefect::CutShort : FrameDefect::TooLong;
}

struct Pending {
  std::size_t frame; // of the result
  int transaction;
};

class Decoder {
public:
  Decoder(int generation, const Speech& speech) : speech_(speech), fields_(FieldsOfGeneration(generation)) {}

  DecodedTrace Run(const std::vector<TraceLine>& lines) {
    const Wire wire = WireOf(lines);
    for (const TraceLine& line : lines) {
      DecodedFrame frame{.line = line.line, .direction = line.direction, .values = {}};
      if (line.broken) {
        frame.defect = FrameDefect::NotHex;
      } else {
        Take(frame, Open(line.bytes, wire), line.direction);
      }
      trace_.frames.push_back(std::move(frame));
    }
    for (const Pending& pending : pending_) {
      trace_.frames[pending.frame].unanswered = true;
    }
    return std::move(trace_);
  }

private:
  void Take(DecodedFrame& frame, const Envelope& envelope, Direction told) {
    frame.wire = envelope.wire;
    frame.defect = envelope.defect;
    if (envelope.body.size() < 2) {
      frame.defect = frame.defect == FrameDefect::None ? FrameDefect::CutShort : frame.defect;
      return;
    }
    const int function = envelope.body[1];
    const Bytes data = envelope.body.subspan(2);
    frame.station = envelope.body[0];
    frame.function = function & ~ExceptionMark;
    frame.direction = told == Direction::Unknown ? DirectionOf(frame, function, data) : told;
    const bool reply = frame.direction == Direction::Reply;
    const auto length = reply ? ReplyLength(function, data) : RequestLength(function, data);
    if (!length) {
      frame.defect = FrameDefect::UnknownFunction;
      return;
    }
    frame.defect = LengthDefect(*length, data.size());
    if (frame.defect != FrameDefect::None) {
      return;
    }
    if (reply) {
      TakeReplyFrame(frame, envelope, function, data);
    } else {
      TakeRequest(frame, envelope, data);
    }
  }

  // Where the trace does not say it: a request and a reply of one function differ in length, but for the
  // write of one register, whose reply repeats it.
  [[nodiscard]] Direction DirectionOf(const DecodedFrame& frame, int function, Bytes data) const {
    if ((function & ExceptionMark) != 0) {
      return Direction::Reply;
    }
    const bool asked = !pending_.empty() && trace_.frames[pending_.back().frame].function == frame.function;
    const bool request = RequestLength(function, data) == data.size();
    const bool reply = ReplyLength(function, data) == data.size();
    if (request != reply) {
      return request ? Direction::Request : Direction::Reply;
    }
    return asked ? Direction::Reply : Direction::Request;
  }

  static int TableOf(int function) { return function == ReadInput ? InputTable : HoldingTable; }

  void TakeRequest(DecodedFrame& frame, const Envelope& envelope, Bytes data) {
    frame.address = TableOf(frame.function) + WordAt(data, 0);
    frame.count = frame.function == WriteOne ? 1 : WordAt(data, 2);
    if (frame.function == WriteOne) {
      Carry(frame, data.subspan(2));
    } else if (frame.function == WriteMany) {
      if (data[4] != 2 * frame.count) {
        frame.defect = FrameDefect::OtherRequest;
        return;
      }
      Carry(frame, data.subspan(5));
    }
    if (envelope.wire == Wire::Rtu) { // one exchange at a time
      DropPending();
    }
    pending_.push_back({trace_.frames.size(), envelope.transaction});
  }

  void DropPending() {
    for (const Pending& pending : pending_) {
      trace_.frames[pending.frame].unanswered = true;
    }
    pending_.clear();
  }

  void TakeReplyFrame(DecodedFrame& frame, const Envelope& envelope, int function, Bytes data) {
    const auto asked = std::ranges::find_if(pending_.rbegin(), pending_.rend(), [&](const Pending& pending) {
      return pending.transaction == envelope.transaction;
    });
    if ((function & ExceptionMark) != 0) {
      frame.exception = data[0];
    }
    if (asked == pending_.rend()) {
      frame.defect = FrameDefect::NoRequest;
      return;
    }
    const DecodedFrame request = trace_.frames[asked->frame];
    const bool fits = request.station == frame.station && request.function == frame.function;
    if (fits) {
      pending_.erase(std::next(asked).base());
    }
    frame.address = request.address;
    frame.count = request.count;
    if (!fits || !AnswersExactly(frame, request, data)) {
      frame.defect = FrameDefect::OtherRequest;
      frame.address = 0;
    } else if (frame.exception == 0 && IsRead(frame.function)) {
      Carry(frame, data.subspan(1));
    }
  }

  static bool IsRead(int function) { return function == ReadHolding || function == ReadInput; }

  static bool AnswersExactly(const DecodedFrame& frame, const DecodedFrame& request, Bytes data) {
    if (frame.exception != 0) {
      return true;
    }
    if (IsRead(frame.function)) {
      return data[0] == 2 * request.count;
    }
    return TableOf(frame.function) + WordAt(data, 0) == request.address &&
           (frame.function == WriteOne || WordAt(data, 2) == request.count);
  }

  // The registers of a frame: what they are, and what their parameters are worth.
  void Carry(DecodedFrame& frame, Bytes registers) {
    frame.data = true;
    ++exchange_;
    for (int i = 0; i < frame.count; ++i) {
      image_.Put(frame.address + i,
                 static_cast<std::uint16_t>(WordAt(registers, 2 * static_cast<std::size_t>(i))), exchange_);
    }
    std::vector<bool> named(static_cast<std::size_t>(frame.count));
    for (const RegisterField& field : fields_) {
      const int first = std::max(field.address, frame.address);
      const int last = std::min(field.address + field.words, frame.address + frame.count); // behind it
      if (first >= last) {
        continue;
      }
      for (int at = first; at < last; ++at) {
        named[static_cast<std::size_t>(at - frame.address)] = true;
      }
      frame.values.push_back(ValueOf(field));
    }
    frame.nameless = static_cast<int>(std::ranges::count(named, false));
  }

  DecodedValue ValueOf(const RegisterField& field) {
    DecodedValue decoded{field, std::nullopt, {}};
    if (const auto registers = image_.Of(field)) {
      decoded.value = ValueOfRegisters(field, *registers);
      if (field.sense != RegisterSense::TotalKind) { // a switch, where today's list has kinds
        decoded.text = TextOfItself(field.ref, *decoded.value, speech_);
      }
      NoteIdentity(field.ref, *decoded.value);
    }
    return decoded;
  }

  void NoteIdentity(const ParameterRef& ref, const StoredValue& value) {
    if (const auto* text = std::get_if<std::u16string>(&value); text != nullptr && ref.section == "P") {
      if (ref.tag == "PILC") {
        trace_.identity.model = Trim(*text).substr(0, ModelWidth);
      } else if (ref.tag == "PVER") {
        trace_.identity.version = Trim(*text).substr(0, VersionTagWidth);
      }
    }
  }

  Speech speech_;
  std::vector<RegisterField> fields_;
  RegisterImage image_;
  int exchange_ = 0;
  std::vector<Pending> pending_;
  DecodedTrace trace_;
};

} // namespace

DecodedTrace DecodeTrace(const std::vector<TraceLine>& lines, int generation, const Speech& speech) {
  return Decoder(generation, speech).Run(lines);
}

} // namespace loader
