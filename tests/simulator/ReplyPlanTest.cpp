// When bytes leave: arithmetic, no waiting.
#include "simulator/ReplyPlan.h"

#include <gmock/gmock.h>

namespace loader::simulator {
namespace {

using namespace std::chrono_literals;

Bytes Counting(std::size_t length) {
  Bytes bytes(length);
  for (std::size_t i = 0; i < length; ++i) {
    bytes[i] = static_cast<std::uint8_t>(i);
  }
  return bytes;
}

Bytes Joined(const ReplyPlan& plan) {
  Bytes bytes;
  for (const ReplyStep& step : plan) {
    bytes.insert(bytes.end(), step.bytes.begin(), step.bytes.end());
  }
  return bytes;
}

TEST(WireTimes, AreElevenBitsACharacter) {
  EXPECT_EQ(WireTime(19200, 1), 572916ns);
  EXPECT_EQ(WireTime(9600, 1), 1145833ns);
  EXPECT_EQ(WireTime(19200, 19200), 11s);
  EXPECT_EQ(WireTime(11000, 141), 141ms);
  EXPECT_EQ(WireTime(0, 141), 0ns) << "no pace";
}

TEST(ReplyPlans, WithoutPaceAreOneStepAtOnce) {
  EXPECT_EQ(PlanReply(Line::Rtu, 8, Counting(133), {}, {}), (ReplyPlan{{0ns, Counting(133), Ending::None}}));
  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(137), {}, {}), (ReplyPlan{{0ns, Counting(137), Ending::None}}));
}

TEST(ReplyPlans, OfNothingAreSilence) {
  EXPECT_TRUE(PlanReply(Line::Rtu, 8, {}, {}, {}).empty());
  EXPECT_TRUE(PlanReply(Line::Tcp, 8, {}, FaultKind::CloseBefore, {}).empty());
}

TEST(ReplyPlans, OfAPacedLineTakeTheWireTimeOfRequestAndReply) {
  Timing timing;
  timing.pace = 19200;

  const ReplyPlan plan = PlanReply(Line::Rtu, 8, Counting(133), {}, timing);

  EXPECT_EQ(plan.back().after, WireTime(19200, 8) + WireTime(19200, 133));
  EXPECT_EQ(Joined(plan), Counting(133));
}

TEST(ReplyPlans, OfAPacedLineLeaveInGroupsWhenTheirLastCharacterHasPassed) {
  Timing timing;
  timing.pace = 11000; // a character a millisecond

  EXPECT_EQ(PlanReply(Line::Rtu, 8, Counting(19), {}, timing),
            (ReplyPlan{{16ms, {0, 1, 2, 3, 4, 5, 6, 7}, Ending::None},
                       {24ms, {8, 9, 10, 11, 12, 13, 14, 15}, Ending::None},
                       {27ms, {16, 17, 18}, Ending::None}}));
}

TEST(ReplyPlans, HavePaceOnRtuLinesOnly) {
  Timing timing;
  timing.pace = 19200;
  timing.turnaround = 5ms;

  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(20), {}, timing),
            (ReplyPlan{{5ms, Counting(20), Ending::None}}));
}

TEST(ReplyPlans, WaitOutTheTurnaround) {
  Timing timing;
  timing.pace = 11000;
  timing.turnaround = 30ms;

  EXPECT_EQ(PlanReply(Line::Rtu, 8, Counting(5), {}, timing).front().after, 8ms + 30ms + 5ms);
}

TEST(FaultPlans, NoReplyIsSilence) {
  EXPECT_TRUE(PlanReply(Line::Tcp, 12, Counting(20), FaultKind::NoReply, {}).empty());
}

TEST(FaultPlans, LateComesThatMuchLater) {
  Timing timing;
  timing.late = 750ms;
  timing.turnaround = 10ms;

  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(20), FaultKind::Late, timing),
            (ReplyPlan{{760ms, Counting(20), Ending::None}}));
}

TEST(FaultPlans, LateOutlastsTheWatchdogOfALoaderUnlessToldOtherwise) {
  EXPECT_GT(Timing{}.late, 5000ms);
}

TEST(FaultPlans, TrickleIsByteByByte) {
  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(3), FaultKind::Trickle, {}),
            (ReplyPlan{{0ms, {0}, Ending::None}, {20ms, {1}, Ending::None}, {40ms, {2}, Ending::None}}));
}

TEST(FaultPlans, TrickleIsNeverFasterThanTheWire) {
  Timing timing;
  timing.pace = 110; // a character takes 100 ms

  EXPECT_EQ(PlanReply(Line::Rtu, 1, Counting(3), FaultKind::Trickle, timing),
            (ReplyPlan{{200ms, {0}, Ending::None}, {300ms, {1}, Ending::None}, {400ms, {2}, Ending::None}}));
}

TEST(FaultPlans, SplitIsTwoHalves) {
  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(5), FaultKind::Split, {}),
            (ReplyPlan{{0ms, {0, 1}, Ending::None}, {200ms, {2, 3, 4}, Ending::None}}));
}

TEST(FaultPlans, CloseBeforeAndResetSendNothing) {
  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(5), FaultKind::CloseBefore, {}),
            (ReplyPlan{{0ms, {}, Ending::Close}}));
  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(5), FaultKind::Reset, {}),
            (ReplyPlan{{0ms, {}, Ending::Reset}}));
}

TEST(FaultPlans, CloseMiddleSendsHalf) {
  EXPECT_EQ(PlanReply(Line::Tcp, 12, Counting(5), FaultKind::CloseMiddle, {}),
            (ReplyPlan{{0ms, {0, 1}, Ending::Close}}));
}

TEST(FaultPlans, OfAPacedLineKeepThePace) {
  Timing timing;
  timing.pace = 11000;

  EXPECT_EQ(PlanReply(Line::Rtu, 8, Counting(20), FaultKind::Split, timing),
            (ReplyPlan{{16ms, {0, 1, 2, 3, 4, 5, 6, 7}, Ending::None},
                       {18ms, {8, 9}, Ending::None},
                       {226ms, {10, 11, 12, 13, 14, 15, 16, 17}, Ending::None},
                       {228ms, {18, 19}, Ending::None}}));
  EXPECT_EQ(PlanReply(Line::Rtu, 8, Counting(20), FaultKind::CloseMiddle, timing).back(),
            (ReplyStep{18ms, {8, 9}, Ending::Close}));
}

TEST(FaultPlans, SendTheDamagedBytes) {
  EXPECT_EQ(Joined(PlanReply(Line::Tcp, 12, Counting(20), FaultKind::Truncated, {})), Counting(18));
}

TEST(FaultPlans, OfAOneByteReplyStayInsideOfIt) {
  for (const FaultKindRow& row : FaultKinds()) {
    for (const Line line : {Line::Tcp, Line::Rtu}) {
      EXPECT_LE(Joined(PlanReply(line, 8, Counting(1), row.kind, {})).size(), 4U) << row.name;
    }
  }
}

} // namespace
} // namespace loader::simulator
