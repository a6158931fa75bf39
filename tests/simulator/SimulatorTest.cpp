// The recorder behind its lines: request in, plan out.
#include "simulator/Simulator.h"

#include <gmock/gmock.h>

#include "simulator/Trace.h"
#include "tests/simulator/TestRecorder.h"

namespace loader::simulator {
namespace {

using testing::ElementsAre;

const Bytes ReadType = {0, 1, 0, 0, 0, 6, 1, 3, 0x0F, 0xA8, 0, 1};            // 44009
const Bytes WriteType = {0, 2, 0, 0, 0, 9, 1, 16, 0x0F, 0xA8, 0, 1, 2, 0, 5}; // 44009 = 5
const Bytes StoreCommand = {0, 3, 0, 0, 0, 9, 1, 16, 0, 0, 0, 1, 2, 0, 1};

class Simulators : public testing::Test {
protected:
  TestRecorder start{Model::Kov, "V40A"};
  SimulatorSettings settings;

  Simulator Make() { return {start.On(), settings}; }
};

TEST_F(Simulators, SendTheReplyOfLibmodbusAsItIs) {
  Simulator simulator = Make();

  EXPECT_EQ(simulator.Handle(Line::Tcp, "x", ReadType),
            (ReplyPlan{{Nanoseconds{0}, {0, 1, 0, 0, 0, 5, 1, 3, 2, 0, 1}, Ending::None}}));
}

TEST_F(Simulators, KeepAWriteInTheWorkingMemory) {
  Simulator simulator = Make();

  (void)simulator.Handle(Line::Tcp, "x", WriteType);

  EXPECT_EQ(simulator.TheRecorder().memory.At(44009), 5);
  EXPECT_EQ(simulator.TheRecorder().kept.At(44009), 1);
}

TEST_F(Simulators, TellWhenSettingsWereStored) {
  int stored = 0;
  settings.whenStored = [&](const Recorder& recorder) {
    ++stored;
    EXPECT_EQ(recorder.kept.At(44009), 5);
  };
  Simulator simulator = Make();

  (void)simulator.Handle(Line::Tcp, "x", WriteType);
  EXPECT_EQ(stored, 0);
  (void)simulator.Handle(Line::Tcp, "x", StoreCommand);
  EXPECT_EQ(stored, 1);
}

TEST_F(Simulators, ObeyThoughTheReplyIsLost) {
  settings.faults = {{FaultKind::NoReply, 1, 0}};
  Simulator simulator = Make();

  EXPECT_TRUE(simulator.Handle(Line::Tcp, "x", WriteType).empty());
  EXPECT_EQ(simulator.TheRecorder().memory.At(44009), 5);
}

TEST_F(Simulators, DoNothingWhenTheyAnswerWithAnError) {
  settings.faults = {{FaultKind::Error, 1, 0}, {FaultKind::Error, 2, 0}};
  Simulator simulator = Make();

  EXPECT_EQ(simulator.Handle(Line::Tcp, "x", WriteType).front().bytes, (Bytes{0, 2, 0, 0, 0, 3, 1, 0x90, 4}));
  EXPECT_EQ(simulator.TheRecorder().memory.At(44009), 1);
  (void)simulator.Handle(Line::Tcp, "x", StoreCommand);
  EXPECT_EQ(simulator.TheRecorder().memory.At(40001), 0);
}

TEST_F(Simulators, DoNotStoreForARefusedWrite) {
  settings.whenStored = [](const Recorder&) { ADD_FAILURE(); };
  Simulator simulator = Make();
  // 40001 to 40001 with a byte count that does not fit: damaged, hence refused.
  const ReplyPlan plan =
      simulator.Handle(Line::Tcp, "x", Bytes{0, 3, 0, 0, 0, 9, 1, 16, 0, 0, 0, 0, 2, 0, 1});

  EXPECT_EQ(plan.front().bytes.at(7), 0x90);
}

TEST_F(Simulators, ObeyABroadcastCommand) {
  int stored = 0;
  settings.whenStored = [&](const Recorder&) { ++stored; };
  Simulator simulator = Make();

  EXPECT_TRUE(simulator.Handle(Line::Rtu, "x", Bytes{0, 16, 0, 0, 0, 1, 2, 0, 1, 0x6A, 0x00}).empty());
  EXPECT_EQ(stored, 1);
}

TEST_F(Simulators, TraceEveryRequestWithItsNumber) {
  std::vector<std::string> lines;
  settings.trace = [&](const std::string& line) { lines.push_back(line); };
  settings.faults = {{FaultKind::Late, 2, 0}};
  Simulator simulator = Make();

  (void)simulator.Handle(Line::Tcp, "client", ReadType);
  (void)simulator.Handle(Line::Tcp, "client", StoreCommand);
  (void)simulator.Handle(Line::Rtu, "line", Bytes{1, 3, 0, 0, 0, 1, 0, 0});

  EXPECT_THAT(lines,
              ElementsAre("1 client: read 1 holding register 44009 (C 1: TYPE) -> 11 bytes",
                          "2 client: write 1 holding register 40001 (F 1: FIX) settings stored; fault late; "
                          "-> 12 bytes",
                          "3 line: damaged request -> no reply: Invalid CRC"));
}

TEST_F(Simulators, ShowTheFramesAsTheyPass) {
  std::vector<std::string> lines;
  settings.frames = [&](const std::string& line) { lines.push_back(line); };
  settings.faults = {{FaultKind::Truncated, 2, 0}, {FaultKind::NoReply, 3, 0}};
  Simulator simulator = Make();

  for (int request = 1; request <= 3; ++request) {
    (void)simulator.Handle(Line::Tcp, "client", ReadType);
  }

  const std::string request = "client: > " + HexOf(ReadType);
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0], "1 " + request);
  EXPECT_TRUE(lines[1].starts_with("1 client: < ")) << lines[1];
  EXPECT_EQ(lines[2], "2 " + request);
  EXPECT_EQ(lines[3], "2" + lines[1].substr(1, lines[1].size() - 1 - std::string(" 00 00").size()))
      << "damaged";
  EXPECT_EQ(lines[4], "3 " + request) << "no reply, no line";
}

} // namespace
} // namespace loader::simulator
