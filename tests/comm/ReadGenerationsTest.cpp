// A whole read of each generation against a memory that was prepared apart from the program's own writer.
#include <random>

#include "comm/BulkRead.h"
#include "core/modIni.h"
#include "tests/comm/CommFixture.h"
#include "tests/comm/ExpectedStore.h"

namespace loader::test {
namespace {

constexpr std::int16_t Held = 111; // what the store held before the read

struct ReadOf : RecorderFixture {
  void Prepare(const Generation& generation) {
    StartWithModel(platform, generation.model);
    Configure(Line::Ethernet);
    recorder.FillWithPattern();
    recorder.PutIdentity(generation.model, generation.version);
    // The hours and minutes of the old totalizer layout: 8:15 and 17:30.
    recorder.Register(40167) = 8;
    recorder.Register(40168) = 15;
    recorder.Register(40169) = 17;
    recorder.Register(40170) = 30;
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        std::for_each(item.NumRecords.begin(), item.NumRecords.end(),
                      [](ParamNumRecord& record) { SetNumber(record, Held, SlotBoth); });
        std::for_each(item.TextRecords.begin(), item.TextRecords.end(),
                      [](ParamTextRecord& record) { SetText(record, u"held", SlotBoth); });
      }
    }
  }
  void Read() {
    platform.ExpectBox(20104);
    ReadFromRecorder(window);
  }
  std::uint16_t Word(const Place& place, int item, int byte) {
    return recorder.Register(place.base + item * place.words + byte / 2);
  }
  std::u16string TextAt(const Place& place, int item, const ParamTextRecord& record) {
    std::string bytes;
    for (int byte = 0; byte < record.ByteLength; ++byte) {
      const std::uint16_t word = Word(place, item, 2 * record.WordOffset + byte / 2 * 2);
      bytes.push_back(static_cast<char>(byte % 2 == 0 ? word % 256 : word / 256));
    }
    const std::u16string text = FromCodePage(bytes);
    return text.substr(0, text.find(u'\0'));
  }
};

struct WholeRead : ReadOf, ::testing::WithParamInterface<Generation> {};
INSTANTIATE_TEST_SUITE_P(All, WholeRead, ::testing::ValuesIn(Generations),
                         [](const auto& row) { return GenerationName(row.param); });

TEST_P(WholeRead, AsksForTheSectionsInTheirOrderRegisterByRegister) {
  Prepare(GetParam());
  Read();
  EXPECT_EQ(recorder.requests, ReadRequests(GetParam()));
}

TEST_P(WholeRead, TakesEveryNumberFromItsPlaceOrItsDefault) {
  Prepare(GetParam());
  Read();
  for (const ParamSection& section : ParamStore) {
    const char code = section.Code[0];
    for (std::size_t i = 0; i < section.Items.size(); ++i) {
      for (const ParamNumRecord& record : section.Items[i].NumRecords) {
        const std::string tag(Trim(record.Tag));
        if (IsSpecial(GetParam(), code, tag)) {
          continue;
        }
        const int item = static_cast<int>(i);
        const Source source = SourceIn(GetParam(), code, item, tag);
        std::int16_t expected = Held;
        if (source.kind == Source::Default) {
          expected = record.DefaultValue;
        } else if (source.kind != Source::Kept) {
          const int byte = source.kind == Source::Byte ? source.byte : 2 * record.WordOffset;
          expected = static_cast<std::int16_t>(Word(PlaceIn(GetParam(), code), item, byte));
        }
        EXPECT_EQ(record.Value, expected) << code << item << tag;
        EXPECT_EQ(record.ReadValue, expected) << code << item << tag;
      }
    }
  }
}

TEST_P(WholeRead, TakesEveryTextFromItsPlaceOrItsDefault) {
  Prepare(GetParam());
  Read();
  for (const ParamSection& section : ParamStore) {
    const char code = section.Code[0];
    if (code == 'P') {
      continue; // the identity
    }
    for (std::size_t i = 0; i < section.Items.size(); ++i) {
      for (const ParamTextRecord& record : section.Items[i].TextRecords) {
        const int item = static_cast<int>(i);
        const Source source = SourceIn(GetParam(), code, item, Trim(record.Tag));
        const std::u16string expected = source.kind == Source::Kept ? u"held"
                                        : source.kind == Source::Default
                                            ? record.DefaultValue
                                            : TextAt(PlaceIn(GetParam(), code), item, record);
        EXPECT_EQ(ToUtf8(record.Value), ToUtf8(FixedText(expected))) << code << item << record.Tag;
        EXPECT_EQ(ToUtf8(record.ReadValue), ToUtf8(FixedText(expected))) << code << item << record.Tag;
      }
    }
  }
}

TEST_P(WholeRead, EndsWithoutAMessageWithTheLinkClosedAndTheWindowFree) {
  Prepare(GetParam());
  Read();
  EXPECT_EQ(log.steps, (std::vector<std::string>{"disabled", "lamp on", "lamp off", "refresh", "enabled"}));
  EXPECT_EQ(platform.socket.state, 0);
  EXPECT_EQ(RecorderGeneration, GetParam().number);
}

TEST_P(WholeRead, GoesTheSameOverSerialAndUsb) {
  for (const Line line : {Line::Serial, Line::Usb}) {
    Prepare(GetParam());
    Configure(line);
    recorder.requests.clear();
    Read();
    EXPECT_EQ(recorder.requests, ReadRequests(GetParam())) << LineName(line);
    const ParamNumRecord* record = FindNumRecord("C", 0, "MMAX");
    EXPECT_EQ(record->Value,
              static_cast<std::int16_t>(Word(PlaceIn(GetParam(), 'C'), 0, 2 * record->WordOffset)));
  }
}

TEST_P(WholeRead, TakesWhateverTheRegistersHold) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Prepare(GetParam());
    std::mt19937 random(seed);
    for (int number = 40001; number <= 50000; ++number) {
      recorder.Register(number) = static_cast<std::uint16_t>(random());
    }
    // The one value that can be too large for a number: an old time in hours and minutes.
    const auto fits = [&](int number) {
      const int minutes = 60 * static_cast<std::int16_t>(recorder.Register(number)) +
                          static_cast<std::int16_t>(recorder.Register(number + 1));
      return minutes >= -32768 && minutes <= 32767;
    };
    platform.ExpectBox(20104);
    if (GetParam().number == 2 && !(fits(40167) && fits(40169))) {
      platform.ExpectBox(11013);
    }
    ReadFromRecorder(window);
    platform.boxes.ExpectNoneLeft();
  }
}

// --- Single rules

struct ReadRules : ReadOf {
  // A read of generation `number`, after `prepare` has laid its registers.
  template <typename Preparation> void ReadGeneration(int number, Preparation&& prepare) {
    const Generation& generation = *std::find_if(Generations.begin(), Generations.end(),
                                                 [&](const Generation& g) { return g.number == number; });
    Prepare(generation);
    prepare();
    Read();
  }
  std::uint16_t& ChannelWord(int item, int word) { return recorder.Register(44001 + 60 * item + word); }
};

struct KindRow {
  int generation;
  int read;
  int stored;
};
void PrintTo(const KindRow& row, std::ostream* out) {
  *out << "kind " << row.read << " of generation " << row.generation;
}
struct InputKinds : ReadRules, ::testing::WithParamInterface<KindRow> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, InputKinds,
    ::testing::Values(KindRow{2, 13, 20}, KindRow{2, 14, 21}, KindRow{2, 15, 30}, KindRow{2, 16, 31},
                      KindRow{2, 17, 32}, KindRow{2, 18, 33}, KindRow{2, 12, 12}, KindRow{2, 19, 19},
                      KindRow{2, 0, 0}, KindRow{2, 65535, -1}, KindRow{2, 32768, -32768}, KindRow{1, 13, 20},
                      KindRow{1, 14, 21}, KindRow{1, 15, 30}, KindRow{1, 16, 31}, KindRow{1, 17, 32},
                      KindRow{1, 18, 33}, KindRow{1, 12, 12}, KindRow{1, 19, 19}, KindRow{0, 13, 20},
                      KindRow{0, 14, 21}, KindRow{0, 15, 30}, KindRow{0, 16, 31}, KindRow{0, 17, 32},
                      KindRow{0, 18, 18}, KindRow{0, 12, 12}, KindRow{3, 13, 13}, KindRow{5, 18, 18}),
    [](const auto& row) {
      return "Generation" + std::to_string(row.param.generation) + "Kind" + std::to_string(row.param.read);
    });

TEST_P(InputKinds, AreTranslated) {
  ReadGeneration(GetParam().generation,
                 [&] { ChannelWord(3, 8) = static_cast<std::uint16_t>(GetParam().read); });
  EXPECT_EQ(Stored("C", 3, "TYPE"), GetParam().stored);
  EXPECT_EQ(NumRecord("C", 3, "TYPE").ReadValue, GetParam().stored);
}

TEST_F(ReadRules, InGeneration2TotalizingIsAlwaysOnAndItsWordGivesTheReportCycle) {
  ReadGeneration(2, [&] {
    ChannelWord(0, 35) = 0;
    ChannelWord(1, 35) = 1;
    ChannelWord(2, 35) = 2;
  });
  for (int item = 0; item < 3; ++item) {
    EXPECT_EQ(Stored("C", item, "SEKI"), 1);
    EXPECT_EQ(Stored("C", item, "STYP"), item == 1 ? 0 : 15);
    EXPECT_EQ(NumRecord("C", item, "STYP").ReadValue, item == 1 ? 0 : 15);
  }
}

TEST_F(ReadRules, InGeneration2TheTotalizerTimesAreMinutes) {
  ReadGeneration(2, [] {});
  EXPECT_EQ(Stored("E", 0, "TSTR"), 8 * 60 + 15);
  EXPECT_EQ(Stored("E", 0, "TSTO"), 17 * 60 + 30);
}

TEST_F(ReadRules, InGeneration2TheReadValuesOfTheTotalizerTimesKeepTheDefault) {
  ReadGeneration(2, [] {});
  EXPECT_EQ(NumRecord("E", 0, "TSTR").ReadValue, NumRecord("E", 0, "TSTR").DefaultValue);
  EXPECT_EQ(NumRecord("E", 0, "TSTO").ReadValue, NumRecord("E", 0, "TSTO").DefaultValue);
}

TEST_F(ReadRules, InGeneration2TheOldHourAndMinuteTagsReadTheSameWords) {
  ReadGeneration(2, [] {});
  EXPECT_EQ(Stored("E", 0, "TTSH"), 8);
  EXPECT_EQ(Stored("E", 0, "TTSM"), 15);
}

TEST_F(ReadRules, InGeneration2TheTotalizerSwitchesGoToTheirOwnSection) {
  ReadGeneration(2, [&] {
    recorder.Register(40161) = 1;
    recorder.Register(40162) = 3;
    recorder.Register(40165) = 2;
  });
  EXPECT_EQ(Stored("Z", 0, "TOTA"), 1);
  EXPECT_EQ(Stored("Z", 0, "TSTM"), 3);
  EXPECT_EQ(Stored("Z", 0, "TSIG"), 2);
  EXPECT_EQ(NumRecord("Z", 0, "TSIG").ReadValue, 2);
}

TEST_F(ReadRules, InGeneration2ATimeBeyondANumberIsAFailedRead) {
  const Generation& generation = Generations[2];
  Prepare(generation);
  recorder.Register(40167) = 600;
  platform.ExpectBox(20104);
  platform.ExpectBox(11013);
  ReadFromRecorder(window);
  EXPECT_EQ(recorder.requests.back(), (RecordedRequest{3, 40161, 20}));
}

TEST_F(ReadRules, InGenerations0To2TheDigitalInputsFromTheSixthKeepWhatTheyHeld) {
  for (const int generation : {0, 1, 2}) {
    ReadGeneration(generation, [] {});
    EXPECT_EQ(Stored("D", 4, "DIKI"), static_cast<std::int16_t>(ScriptedRecorder::Pattern(40070)));
    for (int item = 5; item < 16; ++item) {
      EXPECT_EQ(Stored("D", item, "DIKI"), Held) << item;
    }
  }
}

TEST_F(ReadRules, InGenerations0To2TheLogarithmAndTheResetInputAreReadAsPlain) {
  for (const int generation : {0, 1, 2}) {
    ReadGeneration(generation, [&] {
      ChannelWord(0, 29) = 1;
      ChannelWord(0, 32) = 77;
    });
    EXPECT_EQ(Stored("C", 0, "TAIS"), 1);
    EXPECT_EQ(Stored("C", 0, "SRIN"), 77);
  }
}

TEST_F(ReadRules, AGeneration0ReadLeavesChannelsFromTheTenthAndTheClockAtTheirDefaults) {
  ReadGeneration(0, [] {});
  EXPECT_EQ(TrimmedText("C", 9, "TAG"), "CH 10");
  EXPECT_EQ(Stored("C", 9, "MMAX"), 5000);
  EXPECT_EQ(Stored("C", 29, "MMAX"), 5000);
  EXPECT_EQ(Stored("H", 0, "MONT"), 1);
  EXPECT_EQ(Stored("H", 0, "YEAR"), 0);
}

TEST_F(ReadRules, ARegisterOfFFFEReachesTheStoreAsMinusTwo) {
  ReadGeneration(5, [&] { ChannelWord(0, 13) = 0xFFFE; });
  EXPECT_EQ(Stored("C", 0, "MMIN"), -2);
}

TEST_F(ReadRules, TheUserUnitsFollowTheReadSection) {
  ReadGeneration(5, [&] {
    recorder.PutText(40321, "m3/h", 8);
    recorder.PutText(40321 + 44, "kg ", 8);
  });
  EXPECT_EQ(UnitNames.at(156), u"m3/h");
  EXPECT_EQ(UnitNames.at(167), u"kg");
}

TEST_F(ReadRules, SectionReadersOfUnknownSectionsFail) {
  StartWithModel(platform, "KOV");
  OpenLink(Line::Ethernet);
  EXPECT_FALSE(gFReadSectionG0("Q"));
  EXPECT_FALSE(gFReadSectionG1("Q"));
  EXPECT_FALSE(gFReadSectionG2("Q"));
  EXPECT_FALSE(gFReadSectionG3("Q"));
  EXPECT_FALSE(gFReadSectionPlain("Q"));
  EXPECT_TRUE(recorder.requests.empty());
}

TEST_F(ReadRules, ATagThatTheStoreLacksIsPassedOver) {
  ReadGeneration(2, [&] {
    for (ParamItem& item : ParamStore[gFFindSection("C")].Items) {
      std::erase_if(item.NumRecords, [](const ParamNumRecord& record) { return record.Tag == "STYP"; });
    }
    std::erase_if(ParamStore, [](const ParamSection& section) { return section.Code == "Z  "; });
  });
  EXPECT_EQ(Stored("C", 0, "SEKI"), 1);
}

} // namespace
} // namespace loader::test
