// What a firmware keeps of the plant, value by value. The expectations are written out, from the plant's
// tables.
#include <gmock/gmock.h>

#include "tests/simulator/TestRecorder.h"

namespace loader::simulator {
namespace {

using testing::ElementsAre;

std::vector<int> Kinds(const TestRecorder& recorder, int channels) {
  std::vector<int> kinds;
  for (int item = 0; item < channels; ++item) {
    kinds.push_back(recorder.Number("C", item, "TYPE"));
  }
  return kinds;
}

TEST(CommissioningToday, KeepsEveryValueAsItIs) {
  for (const Model model : {Model::Kov, Model::Rug}) {
    const TestRecorder recorder(model, NewestTag(model));
    for (const ParamSection& section : PlantSetup(recorder.shape, model)) {
      const std::string code(Trim(section.Code));
      for (int item = 0; item < section.ItemCount; ++item) {
        for (const ParamNumRecord& record : section.Items[static_cast<std::size_t>(item)].NumRecords) {
          const std::string tag(Trim(record.Tag));
          if (recorder.Has(code, item, tag)) {
            EXPECT_EQ(recorder.Number(code, item, tag), record.Value) << code << item << tag;
          }
        }
        for (const ParamTextRecord& record : section.Items[static_cast<std::size_t>(item)].TextRecords) {
          const std::string tag(Trim(record.Tag));
          if (recorder.Has(code, item, tag) && code != "P") {
            EXPECT_EQ(recorder.Text(code, item, tag), ToUtf8(TrimRight(std::u16string_view(record.Value))))
                << code << item << tag;
          }
        }
      }
    }
  }
}

TEST(CommissioningInputKinds, HaveTheirNumbersOfTheFirmware) {
  EXPECT_THAT(Kinds(TestRecorder(Model::Kov, "V40A"), 18),
              ElementsAre(1, 1, 1, 8, 5, 30, 32, 33, 20, 20, 21, 4, 4, 31, 31, 32, 0, 40));
  EXPECT_THAT(Kinds(TestRecorder(Model::Kov, "V18A"), 18),
              ElementsAre(1, 1, 1, 8, 5, 30, 32, 33, 20, 20, 21, 4, 4, 31, 31, 32, 0, 40));
  EXPECT_THAT(Kinds(TestRecorder(Model::Kov, "V14A"), 18),
              ElementsAre(1, 1, 1, 8, 5, 15, 17, 18, 13, 13, 14, 4, 4, 16, 16, 17, 0, 0))
      << "another channel is no input of generation 2";
  EXPECT_THAT(Kinds(TestRecorder(Model::Kov, "V06A"), 9), ElementsAre(1, 1, 1, 8, 5, 15, 17, 18, 13));
  EXPECT_THAT(Kinds(TestRecorder(Model::Kov, "V00A"), 9), ElementsAre(1, 1, 1, 8, 5, 15, 17, 17, 13))
      << "the first firmware has one 5 V range";
}

TEST(CommissioningRelays, AboveTenAreNoneUpToGeneration2) {
  const auto relays = [](const char* tag) {
    const TestRecorder recorder(Model::Kov, tag);
    return std::vector<int>{recorder.Number("A", 6, "A1RL"), recorder.Number("A", 8, "A1RL")};
  };
  EXPECT_THAT(relays("V06A"), ElementsAre(7, 10));
  const TestRecorder second(Model::Kov, "V14A");
  EXPECT_EQ(second.Number("A", 9, "A1RL"), 10);
  EXPECT_EQ(second.Number("A", 9, "A2RL"), 0) << "relay 11";
  EXPECT_EQ(TestRecorder(Model::Kov, "V18A").Number("A", 9, "A2RL"), 11);
}

TEST(CommissioningGroups, NameNoChannelThatTheFirmwareLacks) {
  // Group 1 holds channels 1, 2, 3, 4, 19, 20 and 18.
  const auto group = [](const char* tag) {
    const TestRecorder recorder(Model::Kov, tag);
    std::vector<int> slots;
    for (const char* slot : {"GC01", "GC04", "GC05", "GC06", "GC07", "GC08"}) {
      slots.push_back(recorder.Number("G", 0, slot));
    }
    return slots;
  };
  EXPECT_THAT(group("V40A"), ElementsAre(1, 4, 19, 20, 18, 0));
  EXPECT_THAT(group("V27A"), ElementsAre(1, 4, 0, 0, 18, 0));
  EXPECT_THAT(group("V14A"), ElementsAre(1, 4, 0, 0, 18, 0));
  EXPECT_THAT(group("V06A"), ElementsAre(1, 4, 0, 0, 0, 0));
  EXPECT_THAT(group("V00A"), ElementsAre(1, 4, 0, 0, 0, 0));
}

TEST(CommissioningMessages, NameNoInputAndNoChannelThatTheFirmwareLacks) {
  // Message 7 comes with an alarm of channel 20 (19 from 0), message 8 with DI9 (8 from 0).
  const auto triggers = [](const char* tag) {
    const TestRecorder recorder(Model::Kov, tag);
    return std::vector<int>{recorder.Number("M", 4, "MTM2"), recorder.Number("M", 5, "MTM2"),
                            recorder.Number("M", 6, "MTM2"), recorder.Number("M", 7, "MTM2")};
  };
  EXPECT_THAT(triggers("V40A"), ElementsAre(7, 3, 19, 8));
  EXPECT_THAT(triggers("V27A"), ElementsAre(7, 3, 0, 8));
  EXPECT_THAT(triggers("V14A"), ElementsAre(7, 3, 0, 0));
  EXPECT_THAT(triggers("V00A"), ElementsAre(7, 3, 0, 0));
}

TEST(CommissioningDigitalInputs, HaveTheFunctionsOfTheFirmware) {
  const auto functions = [](const char* tag) {
    const TestRecorder recorder(Model::Kov, tag);
    std::vector<int> values;
    for (int item = 0; item < 5; ++item) {
      values.push_back(recorder.Number("D", item, "DIKI"));
    }
    return values;
  };
  EXPECT_THAT(functions("V40A"), ElementsAre(1, 3, 4, 2, 1));
  EXPECT_THAT(functions("V14A"), ElementsAre(1, 3, 0, 2, 1)) << "functions 0 to 3";
  EXPECT_THAT(functions("V06A"), ElementsAre(1, 0, 0, 0, 1)) << "functions 0 and 1";
}

TEST(CommissioningTotalizer, OfGeneration2KeepsHoursAndMinutes) {
  const TestRecorder recorder(Model::Kov, "V14A");

  EXPECT_EQ(recorder.Number("E", 0, "TOTA"), 1);
  EXPECT_EQ(recorder.Number("E", 0, "TSTM"), 2);
  EXPECT_EQ(recorder.Number("E", 0, "TCYC"), 3);
  EXPECT_EQ(recorder.Number("E", 0, "TSIG"), 3);
  EXPECT_EQ(recorder.Number("E", 0, "TTSH"), 8) << "495 minutes";
  EXPECT_EQ(recorder.Number("E", 0, "TTSM"), 15);
  EXPECT_EQ(recorder.Number("E", 0, "TTEH"), 17) << "1035 minutes";
  EXPECT_EQ(recorder.Number("E", 0, "TTEM"), 15);
}

TEST(CommissioningTotals, OfGeneration2AreASwitch) {
  const TestRecorder recorder(Model::Kov, "V14A");

  EXPECT_EQ(recorder.Number("C", 6, "SEKI"), 1) << "totals by day";
  EXPECT_EQ(recorder.Number("C", 15, "SEKI"), 0) << "by month: unknown then";
  EXPECT_EQ(recorder.Number("C", 0, "SEKI"), 0) << "off";
  EXPECT_EQ(recorder.Number("C", 6, "SEUN"), 156);
  EXPECT_EQ(recorder.Number("C", 6, "SECU"), 20);
  EXPECT_EQ(recorder.Number("C", 4, "FTIO"), 1);
}

TEST(CommissioningExternalInputs, OfGenerations3And4EndWithTheMeasuringChannels) {
  // Channel 27 counts at the alarm input 10, which all have.
  EXPECT_EQ(TestRecorder(Model::Kov, "V18A").Number("C", 26, "SDIG"), 10);
  EXPECT_EQ(TestRecorder(Model::Kov, "V27A").Number("E", 0, "TEXT"), 1);

  TestRecorder recorder(Model::Kov, "V27A");
  ParamStoreTable setup = PlantSetup(recorder.shape, Model::Kov);
  for (ParamSection& section : setup) {
    for (ParamNumRecord& record : section.Items.front().NumRecords) {
      if (record.Tag == "SDIG" || record.Tag == "TEXT") {
        record.Value = section.Code == "C  " ? 81 : 82;
      }
    }
  }
  Commission(setup, recorder.firmware, recorder.map, recorder.memory);
  EXPECT_EQ(recorder.Number("C", 0, "SDIG"), 81);
  EXPECT_EQ(recorder.Number("E", 0, "TEXT"), 0);
}

TEST(CommissioningMail, OfGeneration4NamesNoOperationChannel) {
  TestRecorder recorder(Model::Kov, "V27A");
  ParamStoreTable setup = PlantSetup(recorder.shape, Model::Kov);
  for (ParamSection& section : setup) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        if (record.Tag == "ETG1") {
          record.Value = 18;
        }
      }
    }
  }
  Commission(setup, recorder.firmware, recorder.map, recorder.memory);
  EXPECT_EQ(recorder.Number("X", 0, "ETG1"), 0) << "an alarm of channel 19";
  EXPECT_EQ(recorder.Number("X", 2, "ETG1"), 18) << "a digital input";
}

TEST(CommissioningIdentity, IsModelAndFirmwareTag) {
  const TestRecorder kov(Model::Kov, "V06A");
  EXPECT_EQ(kov.Text("P", 0, "PILC"), "KOV-100");
  EXPECT_EQ(kov.Text("P", 0, "PVER"), "V06A");
  EXPECT_EQ(kov.Text("P", 0, "SNO."), "K4A260413-0187");
  EXPECT_EQ(TestRecorder(Model::Rug, "V12W").Text("P", 0, "PILC"), "RUG-100");
}

TEST(CommissioningUnusedRegisters, TakeThePatternAndNoOthersDo) {
  TestRecorder recorder(Model::Kov, "V14A");
  const RegisterMemory before = recorder.memory;

  FillUnused(recorder.map, 0xA55A, recorder.memory);

  EXPECT_EQ(recorder.memory.At(40099), 0xA55A) << "outside of all sections";
  EXPECT_EQ(recorder.memory.At(49999), 0xA55A);
  EXPECT_EQ(recorder.memory.At(39999), 0xA55A);
  EXPECT_EQ(recorder.memory.At(44001 + 59), 0xA55A) << "behind the values of a channel";
  EXPECT_EQ(recorder.memory.At(44001 + 18 * 60), 0xA55A) << "a channel that this firmware lacks";
  for (const MapField& field : recorder.map.fields) {
    for (int word = 0; word < field.words; ++word) {
      EXPECT_EQ(recorder.memory.At(field.address + word), before.At(field.address + word));
    }
  }
}

TEST(CommissioningStatus, IsBit0RecordingAndBit7Computing) {
  TestRecorder recorder(Model::Kov, "V40A");
  const auto word = [&](const Status& status) {
    PutStatus(status, recorder.map, recorder.memory);
    return recorder.memory.At(30101);
  };
  EXPECT_EQ(word({true, false}), 0x0001);
  EXPECT_EQ(word({false, true}), 0x0080);
  EXPECT_EQ(word({true, true}), 0x0081);
  EXPECT_EQ(word({false, false}), 0x0000);
}

} // namespace
} // namespace loader::simulator
