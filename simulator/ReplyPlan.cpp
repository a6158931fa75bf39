#include "simulator/ReplyPlan.h"

#include <algorithm>
#include <cstdint>

namespace loader::simulator {

namespace {

Bytes Part(const Bytes& bytes, std::size_t from, std::size_t to) {
  return {bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.begin() + static_cast<std::ptrdiff_t>(to)};
}

// The bytes from `from` up to `to`, the first of them starting at `start`, as they leave at the pace.
void AddPaced(ReplyPlan& plan, const Bytes& bytes, std::size_t from, std::size_t to, Nanoseconds start,
              int pace) {
  if (pace == 0) {
    plan.push_back({start, Part(bytes, from, to), Ending::None});
    return;
  }
  for (std::size_t at = from; at < to; at += ReceiveGroup) {
    const std::size_t end = std::min(at + ReceiveGroup, to);
    plan.push_back({start + WireTime(pace, end - from), Part(bytes, at, end), Ending::None});
  }
}

} // namespace

Nanoseconds WireTime(int pace, std::size_t characters) {
  if (pace <= 0) {
    return Nanoseconds{0};
  }
  const auto bits = static_cast<std::int64_t>(characters) * BitsOfCharacter;
  return Nanoseconds{bits * 1'000'000'000 / pace};
}

ReplyPlan PlanReply(Line line, std::size_t requestBytes, Bytes reply, std::optional<FaultKind> fault,
                    const Timing& timing) {
  if (reply.empty() || fault == FaultKind::NoReply) {
    return {};
  }
  const int pace = line == Line::Rtu ? timing.pace : 0;
  Nanoseconds start = WireTime(pace, requestBytes) + timing.turnaround;
  if (!fault) {
    ReplyPlan plan;
    AddPaced(plan, reply, 0, reply.size(), start, pace);
    return plan;
  }
  const Bytes bytes = Damaged(*fault, line, std::move(reply));
  const std::size_t half = bytes.size() / 2;
  ReplyPlan plan;
  switch (*fault) {
  case FaultKind::CloseBefore:
    return {{start, {}, Ending::Close}};
  case FaultKind::Reset:
    return {{start, {}, Ending::Reset}};
  case FaultKind::CloseMiddle:
    AddPaced(plan, bytes, 0, half, start, pace);
    plan.back().ending = Ending::Close;
    return plan;
  case FaultKind::Split:
    AddPaced(plan, bytes, 0, half, start, pace);
    AddPaced(plan, bytes, half, bytes.size(), plan.back().after + SplitGap, pace);
    return plan;
  case FaultKind::Trickle:
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      AddPaced(plan, bytes, i, i + 1,
               start + static_cast<int>(i) * std::max<Nanoseconds>(TrickleGap, WireTime(pace, 1)), pace);
    }
    return plan;
  case FaultKind::Late:
    start += timing.late;
    break;
  default:
    break;
  }
  AddPaced(plan, bytes, 0, bytes.size(), start, pace);
  return plan;
}

} // namespace loader::simulator
