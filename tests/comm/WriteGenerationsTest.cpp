// A whole write of each generation, followed by a look into the recorder's memory: what the firmware knows
// has the prescribed value, and every other register keeps its pattern.
#include "tests/comm/ExpectedMemory.h"
#include "tests/comm/WriteFixture.h"

namespace loader::test {
namespace {

struct WholeWrite : WriteOf, ::testing::WithParamInterface<Generation> {
  Memory ExpectedMemory() {
    Memory memory;
    for (int number = 40001; number <= 50000; ++number) {
      memory.push_back(ScriptedRecorder::Pattern(number));
    }
    for (const char section : Sections(GetParam().writeOrder)) {
      LaySection(memory, GetParam(), section);
    }
    return memory;
  }
};
INSTANTIATE_TEST_SUITE_P(All, WholeWrite, ::testing::ValuesIn(Generations),
                         [](const auto& row) { return GenerationName(row.param); });

TEST_P(WholeWrite, ReadsAndWritesTheSectionsInTheirOrderRegisterByRegister) {
  Prepare(GetParam());
  Write();
  EXPECT_EQ(recorder.requests, WriteRequests(GetParam()));
}

TEST_P(WholeWrite, LeavesTheMemoryAsPrescribedDownToTheLastRegister) {
  Prepare(GetParam());
  for (unsigned seed = 1; seed <= 25; ++seed) {
    recorder.FillWithPattern();
    recorder.PutIdentity(GetParam().model, GetParam().version);
    recorder.PutState(0);
    FillStore(seed);
    const Memory expected = ExpectedMemory();
    Write();
    for (int number = 40001; number <= 50000; ++number) {
      ASSERT_EQ(recorder.Register(number), expected[static_cast<std::size_t>(number - 40001)])
          << "register " << number << " seed " << seed;
    }
  }
}

TEST_P(WholeWrite, LeavesTheInputRegistersAlone) {
  Prepare(GetParam());
  FillStore(1);
  Write();
  for (int number = 30017; number <= 40000; ++number) {
    if (number != 30101) {
      ASSERT_EQ(recorder.Register(number), ScriptedRecorder::Pattern(number)) << number;
    }
  }
}

TEST_P(WholeWrite, LeavesTheStoresReadValuesAndValuesAlone) {
  Prepare(GetParam());
  FillStore(3);
  const ParamStoreTable before = ParamStore;
  Write();
  for (std::size_t s = 0; s < before.size(); ++s) {
    if (before[s].Code == "P  " || before[s].Code == "S  ") {
      continue; // the recorder's own
    }
    for (std::size_t i = 0; i < before[s].Items.size(); ++i) {
      const ParamItem& was = before[s].Items[i];
      const ParamItem& is = ParamStore[s].Items[i];
      for (std::size_t n = 0; n < was.NumRecords.size(); ++n) {
        ASSERT_EQ(is.NumRecords[n].Value, was.NumRecords[n].Value);
        ASSERT_EQ(is.NumRecords[n].ReadValue, was.NumRecords[n].ReadValue);
      }
      for (std::size_t n = 0; n < was.TextRecords.size(); ++n) {
        ASSERT_EQ(is.TextRecords[n].Value, was.TextRecords[n].Value);
        ASSERT_EQ(is.TextRecords[n].ReadValue, was.TextRecords[n].ReadValue);
      }
    }
  }
}

TEST_P(WholeWrite, GoesTheSameOverSerialAndUsb) {
  for (const Line line : {Line::Serial, Line::Usb}) {
    Prepare(GetParam());
    Configure(line);
    FillStore(7);
    const Memory expected = ExpectedMemory();
    recorder.requests.clear();
    Write();
    EXPECT_EQ(recorder.requests, WriteRequests(GetParam())) << LineName(line);
    for (int number = 40001; number <= 50000; ++number) {
      ASSERT_EQ(recorder.Register(number), expected[static_cast<std::size_t>(number - 40001)]) << number;
    }
  }
}

TEST_P(WholeWrite, EndsWithItsMessageTheLinkClosedAndTheWindowFree) {
  Prepare(GetParam());
  Write();
  EXPECT_EQ(platform.boxes.shown.size(), 2U);
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "enabled"}));
  EXPECT_EQ(platform.socket.state, 0);
}

} // namespace
} // namespace loader::test
