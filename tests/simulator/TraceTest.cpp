// The trace: what a newcomer reads.
#include "simulator/Trace.h"

#include <gtest/gtest.h>

#include "tests/simulator/TestRecorder.h"

namespace loader::simulator {
namespace {

class Traces : public testing::Test {
protected:
  TestRecorder start{Model::Kov, "V40A"};

  std::string Words(int function, int address, int count) {
    return Describe({1, function, address, count}, start.map);
  }
};

TEST_F(Traces, NameSectionItemAndTag) {
  EXPECT_EQ(Words(4, 30001, 16), "read 16 input registers 30001-30016 (P 1: all)");
  EXPECT_EQ(Words(3, 44001, 64), "read 64 holding registers 44001-44064 (C 1: all; C 2: TAG)");
  EXPECT_EQ(Words(16, 40011, 6),
            "write 6 holding registers 40011-40016 (H 1: TIMS, YEAR, MONT, DAYS, HOUR, MINT)");
}

TEST_F(Traces, NameASingleRegister) {
  EXPECT_EQ(Words(16, 40001, 1), "write 1 holding register 40001 (F 1: FIX)");
  EXPECT_EQ(Words(6, 44009, 1), "write 1 holding register 44009 (C 1: TYPE)");
  EXPECT_EQ(Words(3, 40099, 1), "read 1 holding register 40099 (no value)");
}

TEST_F(Traces, NameATextOfWhichOnlyAPartIsTouched) {
  EXPECT_EQ(Words(3, 44004, 1), "read 1 holding register 44004 (C 1: TAG)");
}

TEST_F(Traces, NameRegistersOfSeveralSections) {
  EXPECT_EQ(Words(3, 40074, 30), "read 30 holding registers 40074-40103 (D 14: DIKI; D 15: DIKI; D 16: DIKI; "
                                 "E 1: TSBA, TCYC, TWDY)");
}

TEST_F(Traces, NameTheTagsOfTheFirmware) {
  const TestRecorder old(Model::Kov, "V14A");
  EXPECT_EQ(Describe({1, 3, 40161, 5}, old.map),
            "read 5 holding registers 40161-40165 (E 1: TOTA, TSTM, TCYC, TSIG)");
}

TEST_F(Traces, NameAnotherFunctionByItsNumber) {
  EXPECT_EQ(Words(43, 0, 0), "function 43");
}

TEST_F(Traces, TellTheAnswer) {
  const Recorder recorder = start.On();
  EXPECT_EQ(Describe({Bytes(133), 0, "", false, false}, {}, recorder, {}), "-> 133 bytes");
  EXPECT_EQ(Describe({Bytes(9), 2, "", false, false}, {}, recorder, {}),
            "-> exception 2 (illegal data address)");
  EXPECT_EQ(Describe({Bytes(9), 77, "", false, false}, {}, recorder, {}), "-> exception 77 (unknown)");
  EXPECT_EQ(Describe({{}, 0, "it is a broadcast", false, true}, {}, recorder, {}),
            "-> no reply: it is a broadcast");
  EXPECT_EQ(Describe({Bytes(8), 0, "", false, false}, {}, recorder, FaultKind::CrcBoth),
            "fault crc-both; -> 8 bytes");
}

TEST_F(Traces, ShowBytes) {
  EXPECT_EQ(HexOf(Bytes{}), "");
  EXPECT_EQ(HexOf(Bytes{0x00, 0x0A, 0xF0, 0xFF}), "00 0A F0 FF");
}

TEST_F(Traces, TellWhatAWriteSetOff) {
  Recorder recorder = start.On();
  recorder.clock = ClockSetting{25, 7, 4, 13, 5};
  const ModbusAnswer answer{Bytes(8), 0, "", false, false};
  EXPECT_EQ(Describe(answer, {true, false, false}, recorder, {}), "settings stored; -> 8 bytes");
  EXPECT_EQ(Describe(answer, {false, true, false}, recorder, {}),
            "clock set to 2025-07-04 13:05; -> 8 bytes");
  EXPECT_EQ(Describe(answer, {false, false, true}, recorder, {}),
            "clock not set: no such date and time; -> 8 bytes");
}

} // namespace
} // namespace loader::simulator
