#include "simulator/Faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

#include "simulator/CheckValue.h"

namespace loader::simulator {

namespace {

constexpr FaultKindRow Kinds[] = {
    {FaultKind::NoReply, "no-reply", "the reply is lost", true, true},
    {FaultKind::Late, "late", "the reply comes late (see --late)", true, true},
    {FaultKind::Error, "error", "error reply 4, nothing is read or written", true, true},
    {FaultKind::Truncated, "truncated", "the last two bytes are missing", true, true},
    {FaultKind::TwoMore, "two-more", "two bytes too many", true, true},
    {FaultKind::CrcOne, "crc-one", "one of the two check bytes is wrong", false, true},
    {FaultKind::CrcBoth, "crc-both", "both check bytes are wrong", false, true},
    {FaultKind::WrongStation, "wrong-station", "the reply names the next station", true, true},
    {FaultKind::WrongFunction, "wrong-function", "the reply names the next function", true, true},
    {FaultKind::WrongTransaction, "wrong-transaction", "the reply has the next transaction number", true,
     false},
    {FaultKind::Trickle, "trickle", "the reply comes byte by byte, 20 ms apart", true, true},
    {FaultKind::Split, "split", "the reply comes in two halves, 200 ms apart", true, true},
    {FaultKind::Garbage, "garbage", "three stray bytes in front of the reply", true, true},
    {FaultKind::CloseBefore, "close-before", "the connection ends in place of the reply", true, true},
    {FaultKind::CloseMiddle, "close-middle", "the connection ends after half of the reply", true, true},
    {FaultKind::Reset, "reset", "the connection is reset in place of the reply", true, true},
};

constexpr std::array<std::uint8_t, 3> StrayBytes = {0xFF, 0x00, 0x5A};
constexpr std::size_t StationOnTcp = 6;
constexpr std::size_t CheckBytes = 2;

template <typename Number> std::optional<Number> WholeText(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

// Adds 1 to the byte and, on an RTU line, makes the check value right again.
void Falsify(Line line, Bytes& reply, std::size_t at) {
  if (at >= reply.size()) {
    return;
  }
  ++reply[at];
  if (line == Line::Rtu && reply.size() > CheckBytes) {
    const std::size_t length = reply.size() - CheckBytes;
    const std::uint16_t check = CheckValue({reply.data(), length});
    reply[length] = static_cast<std::uint8_t>(check & 0xFF);
    reply[length + 1] = static_cast<std::uint8_t>(check >> 8);
  }
}

void InvertLast(Bytes& reply, std::size_t count) {
  for (std::size_t i = 0; i < count && i < reply.size(); ++i) {
    reply[reply.size() - 1 - i] ^= 0xFF;
  }
}

} // namespace

std::span<const FaultKindRow> FaultKinds() {
  return Kinds;
}

const FaultKindRow& RowOf(FaultKind kind) {
  for (const FaultKindRow& row : Kinds) {
    if (row.kind == kind) {
      return row;
    }
  }
  throw std::logic_error("a fault kind without a row");
}

bool AppliesTo(FaultKind kind, Line line) {
  return line == Line::Tcp ? RowOf(kind).onTcp : RowOf(kind).onRtu;
}

std::optional<FaultRule> ParseFault(std::string_view text) {
  const std::size_t mark = text.find_first_of("@:");
  if (mark == std::string_view::npos) {
    return std::nullopt;
  }
  FaultRule rule;
  const std::string_view name = text.substr(0, mark);
  std::string_view when = text.substr(mark + 1);
  bool known = false;
  for (const FaultKindRow& row : Kinds) {
    if (row.name == name) {
      rule.kind = row.kind;
      known = true;
    }
  }
  if (!known) {
    return std::nullopt;
  }
  if (text[mark] == '@') {
    const auto number = WholeText<std::int64_t>(when);
    if (!number || *number < 1) {
      return std::nullopt;
    }
    rule.request = *number;
    return rule;
  }
  if (!when.ends_with('%')) {
    return std::nullopt;
  }
  when.remove_suffix(1);
  const auto percent = WholeText<double>(when);
  if (!percent || !(*percent >= 0 && *percent <= 100)) {
    return std::nullopt;
  }
  rule.chance = *percent / 100;
  return rule;
}

std::optional<FaultKind> FaultChooser::Next(Line line) {
  ++requests_;
  std::optional<FaultKind> chosen;
  for (const FaultRule& rule : rules_) {
    bool hit = rule.request == requests_;
    if (rule.request == 0) {
      // Drawn whether or not another rule has hit, so that rules do not disturb one another. 53 bits make a
      // number from 0 up to 1; the standard's own distributions differ from library to library.
      hit = static_cast<double>(random_() >> 11) * 0x1.0p-53 < rule.chance;
    }
    if (hit && !chosen && AppliesTo(rule.kind, line)) {
      chosen = rule.kind;
    }
  }
  return chosen;
}

Bytes Damaged(FaultKind kind, Line line, Bytes reply) {
  const std::size_t station = line == Line::Tcp ? StationOnTcp : 0;
  switch (kind) {
  case FaultKind::Truncated:
    reply.resize(reply.size() - std::min<std::size_t>(reply.size(), 2));
    break;
  case FaultKind::TwoMore:
    reply.insert(reply.end(), {0x55, 0xAA});
    break;
  case FaultKind::CrcOne:
    InvertLast(reply, 1);
    break;
  case FaultKind::CrcBoth:
    InvertLast(reply, CheckBytes);
    break;
  case FaultKind::WrongStation:
    Falsify(line, reply, station);
    break;
  case FaultKind::WrongFunction:
    Falsify(line, reply, station + 1);
    break;
  case FaultKind::WrongTransaction:
    Falsify(line, reply, 1); // the low byte
    break;
  case FaultKind::Garbage:
    reply.insert(reply.begin(), StrayBytes.begin(), StrayBytes.end());
    break;
  case FaultKind::NoReply:
  case FaultKind::Late:
  case FaultKind::Error:
  case FaultKind::Trickle:
  case FaultKind::Split:
  case FaultKind::CloseBefore:
  case FaultKind::CloseMiddle:
  case FaultKind::Reset:
    break; // the bytes are right: it is their time, their number or the line
  }
  return reply;
}

} // namespace loader::simulator
