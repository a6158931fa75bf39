// The commands of a recorder: storing its settings, setting its clock.
#include "tests/simulator/TestRecorder.h"

namespace loader::simulator {
namespace {

class Recorders : public testing::Test {
protected:
  TestRecorder start{Model::Kov, "V40A"};
  Recorder recorder = start.On();

  WriteEffects Write(int address, std::initializer_list<int> values) {
    int at = address;
    for (const int value : values) {
      recorder.memory.At(at++) = static_cast<std::uint16_t>(value);
    }
    return AfterWrite(recorder, address, static_cast<int>(values.size()));
  }
};

TEST_F(Recorders, ForgetAWriteThatWasNotStored) {
  Write(44009, {5});

  EXPECT_EQ(recorder.memory.At(44009), 5);
  EXPECT_EQ(recorder.kept.At(44009), 1);
}

TEST_F(Recorders, KeepWhatWasWrittenBeforeTheStoreCommand) {
  Write(44009, {5});

  const WriteEffects effects = Write(40001, {1});
  Write(44009, {6});

  EXPECT_TRUE(effects.stored);
  EXPECT_EQ(recorder.kept.At(44009), 5);
  EXPECT_EQ(recorder.kept.At(40001), 0) << "the command is no setting";
}

TEST_F(Recorders, StoreAgainForTheSameCommand) {
  Write(40001, {1});
  Write(44009, {7});

  EXPECT_TRUE(Write(40001, {1}).stored);
  EXPECT_EQ(recorder.kept.At(44009), 7);
}

TEST_F(Recorders, DoNotStoreForZeroOrForAnotherRegister) {
  EXPECT_FALSE(Write(40001, {0}).stored);
  recorder.memory.At(40001) = 1;
  EXPECT_FALSE(Write(40002, {1}).stored);
}

TEST_F(Recorders, SetTheClockByItsSixRegisters) {
  const WriteEffects effects = Write(40011, {1, 25, 7, 4, 13, 5});

  EXPECT_TRUE(effects.clockSet);
  EXPECT_EQ(recorder.clock, (ClockSetting{25, 7, 4, 13, 5}));
  EXPECT_EQ(recorder.memory.At(40012), 25) << "kept as written";
}

TEST_F(Recorders, DoNotSetTheClockWithoutTheCommand) {
  EXPECT_FALSE(Write(40011, {0, 25, 7, 4, 13, 5}).clockSet);
  EXPECT_FALSE(Write(40012, {25, 7, 4, 13, 5}).clockSet);
  EXPECT_EQ(recorder.clock, std::nullopt);
}

TEST_F(Recorders, RefuseATimeThatThereIsNot) {
  for (const auto& wrong : {std::initializer_list<int>{1, 25, 2, 29, 0, 0},
                            {1, 24, 2, 30, 0, 0},
                            {1, 25, 0, 1, 0, 0},
                            {1, 25, 13, 1, 0, 0},
                            {1, 25, 4, 31, 0, 0},
                            {1, 25, 4, 0, 0, 0},
                            {1, 25, 4, 1, 24, 0},
                            {1, 25, 4, 1, 0, 60},
                            {1, 100, 4, 1, 0, 0},
                            {1, -1, 4, 1, 0, 0}}) {
    const WriteEffects effects = Write(40011, wrong);
    EXPECT_TRUE(effects.clockRefused);
    EXPECT_FALSE(effects.clockSet);
  }
  EXPECT_EQ(recorder.clock, std::nullopt);
  EXPECT_TRUE(Write(40011, {1, 24, 2, 29, 23, 59}).clockSet) << "2024 is a leap year";
}

TEST(RecorderOfTheFirstFirmware, HasNoClockCommand) {
  const TestRecorder start(Model::Kov, "V00A");
  Recorder recorder = start.On();
  for (int i = 0; i < 6; ++i) {
    recorder.memory.At(40011 + i) = 1;
  }
  EXPECT_FALSE(AfterWrite(recorder, 40011, 6).clockSet);
}

TEST(RecorderStation, IsThatOfItsSettings) {
  TestRecorder start(Model::Kov, "V40A");
  start.memory.At(start.Address("H", 0, "COMS")) = 17;
  EXPECT_EQ(start.On().station, 17);
}

TEST(RecorderStation, IsOneWhereTheSettingsNameNone) {
  TestRecorder start(Model::Kov, "V40A");
  for (const int wrong : {0, 248, 0xFFFF}) {
    start.memory.At(start.Address("H", 0, "COMS")) = static_cast<std::uint16_t>(wrong);
    EXPECT_EQ(start.On().station, 1) << wrong;
  }
  EXPECT_EQ(TestRecorder(Model::Kov, "V06A").On().station, 1) << "firmware without a station setting";
}

TEST(RecorderStatus, IsNoSetting) {
  const TestRecorder start(Model::Kov, "V40A");
  const Recorder recorder = start.On({true, true});

  EXPECT_EQ(recorder.memory.At(30101), 0x0081);
  EXPECT_EQ(recorder.kept.At(30101), 0);
}

} // namespace
} // namespace loader::simulator
