// The loader's own bulk read and bulk write against the simulated recorder of every firmware.
//
// Both sides know the old register layouts from their own tables and share the shape file only: what the
// loader reads must be what the plant holds, and what it writes must be what the firmware would hold of the
// plant.
#include <gmock/gmock.h>

#include <set>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "comm/RecorderCheck.h"
#include "comm/RecorderCommands.h"
#include "comm/modComunication.h"
#include "core/ModelProfile.h"
#include "core/modFile.h"
#include "simulator/Simulator.h"
#include "tests/simulator/TestRecorder.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::simulator {
namespace {

constexpr std::uint16_t Pattern = 0xA55A;

struct Target {
  Model model;
  const char* tag;
  int generation;
  const char* written; // sections, in no order
};
constexpr Target Targets[] = {
    {Model::Kov, "V05A", 0, "CAGTBHMUD"},        {Model::Kov, "V06A", 1, "CAGTBHMUD"},
    {Model::Kov, "V14A", 2, "CAGTBHMUDE"},       {Model::Kov, "V18A", 3, "CAGTBHMUDE"},
    {Model::Kov, "V27A", 4, "CAGTBHMUDEJKXLY"},  {Model::Kov, "V40A", 5, "CAGTBHMUDEONJKXLY"},
    {Model::Rug, "V09W", 20, "CAGTBEONHMUDJKX"}, {Model::Rug, "V10W", 21, "CAGTBEONHMUDJKX"},
};

class LoaderAndRecorder : public testing::TestWithParam<Target> {
protected:
  test::ScriptedPlatform platform;
  TestRecorder start{GetParam().model, GetParam().tag};
  std::unique_ptr<Simulator> simulator;
  int stored = 0; // times that the recorder has stored its settings

  void SetUp() override {
    test::StartWithModel(platform, ModelName(GetParam().model));
    Settings.ConfiguredLink = LinkEthernet;
    Settings.StationSetting = 1;
    CommLink = CommLinkRecord{};
  }

  void SwitchRecorderOn() {
    SimulatorSettings settings;
    settings.whenStored = [this](const Recorder&) { ++stored; };
    simulator = std::make_unique<Simulator>(start.On(), settings);
    platform.socket.wire.onSend = [this](const Bytes& request) {
      for (ReplyStep& step : simulator->Handle(Line::Tcp, "loader", request)) {
        platform.socket.wire.Reply(std::move(step.bytes));
      }
    };
    ASSERT_TRUE(gFLinkOpen());
  }
  [[nodiscard]] int Generation() const { return GetParam().generation; }
};

INSTANTIATE_TEST_SUITE_P(OfEveryGeneration, LoaderAndRecorder, testing::ValuesIn(Targets),
                         [](const auto& of) { return std::string(of.param.tag); });

// What the loader makes of an input kind that the plant has.
int KindRead(int generation, int kind) {
  if (generation > 2) {
    return kind;
  }
  if (kind == 40) {
    return 0; // such a recorder skips the channel
  }
  return generation == 0 && kind == 33 ? 32 : kind;
}

// Values that the loader does not take although the firmware has them.
bool IsNotTaken(int generation, const MapField& field) {
  const std::string_view identity = "PFSIZ"; // outside of the walk
  if (identity.find(field.section) != std::string_view::npos || (generation == 3 && field.tag == "BETU")) {
    return true;
  }
  return generation == 0 && field.section == "G" && !field.IsText();
}

TEST_P(LoaderAndRecorder, AgreeOnWhatIsRead) {
  SwitchRecorderOn();
  const TestRecorder today(GetParam().model, NewestTag(GetParam().model));

  ASSERT_TRUE(gFReadAll());

  EXPECT_EQ(RecorderGeneration, Generation());
  int compared = 0;
  for (const MapField& field : start.map.fields) {
    if (IsNotTaken(Generation(), field) || (Generation() == 2 && field.section == "E")) {
      continue;
    }
    ++compared;
    const std::string name = field.section + std::to_string(field.item) + field.tag;
    if (field.IsText()) {
      const ParamTextRecord* record = FindTextRecord(field.section, field.item, field.tag);
      ASSERT_NE(record, nullptr) << name;
      EXPECT_EQ(ToUtf8(TrimRight(std::u16string_view(record->Value))),
                start.Text(field.section, field.item, field.tag))
          << name;
      continue;
    }
    int expected = start.Number(field.section, field.item, field.tag);
    if (field.section == "C" && field.tag == "TYPE") {
      expected = KindRead(Generation(), today.Number("C", field.item, "TYPE"));
    }
    if (Generation() == 2 && field.section == "C" && field.tag == "SEKI") {
      EXPECT_EQ(NumValue("C", field.item, "STYP"), expected == 1 ? 0 : 15) << name;
      expected = 1;
    }
    EXPECT_EQ(NumValue(field.section, field.item, field.tag, -32768), expected) << name;
  }
  EXPECT_GT(compared, 400);
}

TEST_P(LoaderAndRecorder, AgreeOnTheTotalizer) {
  SwitchRecorderOn();

  ASSERT_TRUE(gFReadAll());

  if (Generation() == 2) {
    EXPECT_EQ(NumValue("E", 0, "TSTR"), 495);
    EXPECT_EQ(NumValue("E", 0, "TSTO"), 1035);
    EXPECT_EQ(NumValue("E", 0, "TCYC"), 3);
    EXPECT_EQ(NumValue("Z", 0, "TOTA"), 1);
    EXPECT_EQ(NumValue("Z", 0, "TSTM"), 2);
    EXPECT_EQ(NumValue("Z", 0, "TSIG"), 3);
  } else if (Generation() < 2) {
    const ParamNumRecord* record = FindNumRecord("E", 0, "TSTR");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->Value, record->DefaultValue);
  } else {
    EXPECT_EQ(NumValue("E", 0, "TSTR"), Generation() < 20 ? 495 : 0);
    EXPECT_EQ(NumValue("E", 0, "TSTO"), Generation() < 20 ? 1035 : 1439);
  }
}

// Values that a write leaves as they were in the recorder, though the firmware has them.
bool IsNotWritten(const Target& target, const MapField& field) {
  const std::string_view written = target.written;
  if (written.find(field.section) == std::string_view::npos) {
    return true;
  }
  const bool channel = field.section == "C" || field.section == "A";
  if ((target.generation == 3 || target.generation == 4) && channel && field.item >= 18) {
    return true;
  }
  constexpr std::string_view Unwritten = "TIMF CMPL FIFO LANG LOGO TBKC HBKC";
  if (target.generation <= 2 && field.section == "H" && Unwritten.find(field.tag) != std::string_view::npos) {
    return true;
  }
  return target.generation == 0 && field.section == "H" &&
         field.tag == "ALML"; // deliberate: never written there
}

// Values that a write replaces by another one than the firmware would hold of the plant.
std::optional<int> Replaced(const Target& target, const MapField& field) {
  const bool password = field.tag == "PAS1" || field.tag == "PAS2" || field.tag == "RPAS";
  if ((target.generation == 3 || target.generation == 4) && field.section == "H" && password) {
    return 0;
  }
  if (target.generation == 0 && field.section == "C" && field.tag == "COLR") {
    return FindNumRecord("C", field.item, "COLR")->DefaultValue;
  }
  return std::nullopt;
}

// Registers without a value of the firmware that a write sets all the same.
std::set<int> SetBeside(const TestRecorder& recorder, int generation) {
  std::set<int> registers;
  const TestRecorder today(recorder.firmware.model, NewestTag(recorder.firmware.model));
  const auto add = [&](std::string_view section, int items, std::initializer_list<const char*> tags,
                       int shift = 0) {
    for (int item = 0; item < items; ++item) {
      for (const char* tag : tags) {
        registers.insert(today.Address(section, item, tag) + shift);
      }
    }
  };
  switch (generation) {
  case 0:
    add("C", 9, {"TAIS", "SUBC"});
    add("H", 1, {"BETU"}, 6);
    break;
  case 1:
    add("C", 9, {"TAIS"});
    add("H", 1, {"BETU"});
    break;
  case 2:
    add("C", 18, {"TAIS"});
    add("H", 1, {"BETU"});
    break;
  case 3:
    add("C", 18, {"TAIS", "SRIN"});
    add("H", 1, {"BETU"});
    break;
  case 4:
    add("C", 18, {"TAIS", "SRIN"});
    break;
  case 20:
    add("C", 72, {"TAIS"});
    break;
  default:
    break;
  }
  if (generation == 0) { // the groups behind the first one
    for (const auto& [first, last] : {std::pair{40781, 40840}, {40269, 40292}, {40305, 40316}}) {
      for (int address = first; address <= last; ++address) {
        registers.insert(address);
      }
    }
  }
  return registers;
}

TEST_P(LoaderAndRecorder, AgreeOnWhatIsWritten) {
  // A recorder that has never been set up: nothing but a pattern, and its identity.
  const RegisterMemory plant = start.memory;
  start.memory.input.fill(Pattern);
  start.memory.holding.fill(Pattern);
  PutIdentity(start.firmware, start.map, start.memory);
  ParamStore = PlantSetup(start.shape, GetParam().model);
  SwitchRecorderOn();
  platform.ExpectBox(62701);

  ASSERT_TRUE(gFWriteAll());

  const RegisterMemory& memory = simulator->TheRecorder().memory;
  for (const MapField& field : start.map.fields) {
    const std::string name = field.section + std::to_string(field.item) + field.tag;
    if (field.section == "P" || field.section == "S") {
      continue;
    }
    const std::optional<int> replaced = Replaced(GetParam(), field);
    for (int word = 0; word < field.words; ++word) {
      const int address = field.address + word;
      int expected = replaced.value_or(plant.At(address));
      if (IsNotWritten(GetParam(), field)) {
        expected = Pattern;
      }
      EXPECT_EQ(memory.At(address), expected) << name << ' ' << address;
    }
  }
  const std::set<int> beside = SetBeside(start, Generation());
  for (int address = FirstHolding; address < FirstHolding + TableRegisters; ++address) {
    if (start.map.FieldAt(address) == nullptr && !beside.contains(address)) {
      EXPECT_EQ(memory.At(address), Pattern) << address;
    }
  }
}

// Older firmware does not take everything that it gives.
class LoaderAndNewRecorder : public LoaderAndRecorder {};

INSTANTIATE_TEST_SUITE_P(OfTheNewGenerations, LoaderAndNewRecorder,
                         testing::Values(Targets[5], Targets[6], Targets[7]),
                         [](const auto& of) { return std::string(of.param.tag); });

TEST_P(LoaderAndNewRecorder, LoseNothingWhenWhatWasReadIsWrittenBack) {
  SwitchRecorderOn();
  const RegisterMemory before = simulator->TheRecorder().memory;
  platform.ExpectBox(62701);

  ASSERT_TRUE(gFReadAll());
  ASSERT_TRUE(gFWriteAll());

  EXPECT_TRUE(simulator->TheRecorder().memory == before);
}

TEST_P(LoaderAndRecorder, AgreeOnStoringTheSettings) {
  SwitchRecorderOn();
  platform.ExpectBox(62702);

  EXPECT_TRUE(gFFixSettings());

  EXPECT_EQ(simulator->TheRecorder().memory.At(40001), 1);
  EXPECT_EQ(stored, 1);
}

} // namespace
} // namespace loader::simulator
