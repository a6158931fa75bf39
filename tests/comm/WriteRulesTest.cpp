// The single rules of the writes: limits, translations, fixed places.
#include "tests/comm/WriteFixture.h"

namespace loader::test {
namespace {

struct WriteRules : WriteOf {
  template <typename Preparation> void WriteGeneration(int number, Preparation&& prepare) {
    const Generation& generation = *std::find_if(Generations.begin(), Generations.end(),
                                                 [&](const Generation& g) { return g.number == number; });
    Prepare(generation);
    prepare();
    Write();
  }
  int ChannelWord(int item, int word) {
    return static_cast<std::int16_t>(recorder.Register(44001 + 60 * item + word));
  }
};

struct KindRow {
  int generation;
  std::int16_t kind;
  int written;
};
void PrintTo(const KindRow& row, std::ostream* out) {
  *out << "kind " << row.kind << " for generation " << row.generation;
}
struct WrittenKinds : WriteRules, ::testing::WithParamInterface<KindRow> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, WrittenKinds,
    ::testing::Values(KindRow{2, 20, 13}, KindRow{2, 21, 14}, KindRow{2, 30, 15}, KindRow{2, 31, 16},
                      KindRow{2, 32, 17}, KindRow{2, 33, 18}, KindRow{2, 40, 0}, KindRow{2, 1, 1},
                      KindRow{1, 20, 13}, KindRow{1, 21, 14}, KindRow{1, 30, 15}, KindRow{1, 31, 16},
                      KindRow{1, 32, 17}, KindRow{1, 33, 18}, KindRow{1, 40, 0}, KindRow{1, 22, 22},
                      KindRow{0, 20, 13}, KindRow{0, 21, 14}, KindRow{0, 30, 15}, KindRow{0, 31, 16},
                      KindRow{0, 32, 17}, KindRow{0, 33, 17}, KindRow{0, 40, 0}, KindRow{0, 12, 12},
                      KindRow{3, 33, 33}, KindRow{4, 40, 40}, KindRow{5, 33, 33}),
    [](const auto& row) {
      return "Generation" + std::to_string(row.param.generation) + "Kind" + std::to_string(row.param.kind);
    });

TEST_P(WrittenKinds, AreTranslated) {
  WriteGeneration(GetParam().generation, [&] { Put("C", 0, "TYPE", GetParam().kind); });
  EXPECT_EQ(ChannelWord(0, 8), GetParam().written);
}

struct LimitRow {
  int generation;
  const char* section;
  const char* tag;
  int number; // register of item 0
  int limit;
};
void PrintTo(const LimitRow& row, std::ostream* out) {
  *out << row.tag << " for generation " << row.generation;
}
struct WrittenLimits : WriteRules, ::testing::WithParamInterface<LimitRow> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, WrittenLimits,
    ::testing::Values(LimitRow{4, "C", "SUBC", 44010, 19}, LimitRow{4, "C", "OTCH", 44041, 18},
                      LimitRow{4, "C", "SDIG", 44043, 82}, LimitRow{4, "G", "GC01", 40769, 19},
                      LimitRow{4, "G", "GC10", 40778, 19}, LimitRow{4, "E", "TEXT", 40105, 82},
                      LimitRow{3, "C", "SUBC", 44010, 19}, LimitRow{3, "C", "OTCH", 44041, 18},
                      LimitRow{3, "C", "SDIG", 44043, 82}, LimitRow{3, "G", "GC05", 40773, 19},
                      LimitRow{3, "E", "TEXT", 40105, 82}, LimitRow{2, "C", "SUBC", 44010, 19},
                      LimitRow{2, "A", "A1RL", 41004, 11}, LimitRow{2, "A", "A2RL", 41008, 11},
                      LimitRow{2, "A", "A3RL", 41012, 11}, LimitRow{2, "A", "A4RL", 41016, 11},
                      LimitRow{2, "G", "GC01", 40769, 19}, LimitRow{2, "D", "DIKI", 40066, 4},
                      LimitRow{1, "C", "SUBC", 44010, 10}, LimitRow{1, "A", "A4RL", 41016, 11},
                      LimitRow{1, "G", "GC01", 40769, 10}, LimitRow{1, "D", "DIKI", 40066, 2},
                      LimitRow{0, "A", "A1RL", 41004, 11}, LimitRow{0, "G", "GC10", 40778, 10},
                      LimitRow{0, "D", "DIKI", 40066, 2}),
    [](const auto& row) { return "Generation" + std::to_string(row.param.generation) + row.param.tag; });

TEST_P(WrittenLimits, AValueBelowTheLimitGoesAndTheLimitGoesAs0) {
  const LimitRow& row = GetParam();
  WriteGeneration(row.generation,
                  [&] { Put(row.section, 0, row.tag, static_cast<std::int16_t>(row.limit - 1)); });
  EXPECT_EQ(recorder.Register(row.number), row.limit - 1);
  WriteGeneration(row.generation,
                  [&] { Put(row.section, 0, row.tag, static_cast<std::int16_t>(row.limit)); });
  EXPECT_EQ(recorder.Register(row.number), 0);
}

struct TriggerRow {
  int generation;
  std::int16_t timing;
  int limit; // 0: none
};
void PrintTo(const TriggerRow& row, std::ostream* out) {
  *out << "timing " << row.timing << " for generation " << row.generation;
}
struct WrittenTriggers : WriteRules, ::testing::WithParamInterface<TriggerRow> {};
INSTANTIATE_TEST_SUITE_P(Rows, WrittenTriggers,
                         ::testing::Values(TriggerRow{4, 1, 0}, TriggerRow{4, 2, 0}, TriggerRow{4, 3, 18},
                                           TriggerRow{4, 4, 18}, TriggerRow{3, 1, 0}, TriggerRow{3, 3, 18},
                                           TriggerRow{3, 4, 18}, TriggerRow{2, 0, 0}, TriggerRow{2, 1, 5},
                                           TriggerRow{2, 2, 5}, TriggerRow{2, 3, 18}, TriggerRow{2, 4, 18},
                                           TriggerRow{1, 1, 5}, TriggerRow{1, 2, 5}, TriggerRow{1, 3, 9},
                                           TriggerRow{1, 4, 9}, TriggerRow{0, 0, 0}, TriggerRow{0, 1, 5},
                                           TriggerRow{0, 2, 5}, TriggerRow{0, 3, 9}, TriggerRow{0, 4, 9},
                                           TriggerRow{5, 3, 0}),
                         [](const auto& row) {
                           return "Generation" + std::to_string(row.param.generation) + "Timing" +
                                  std::to_string(row.param.timing);
                         });

TEST_P(WrittenTriggers, TheLimitOfAMessagesChannelFollowsItsTiming) {
  const auto write = [&](int value) {
    WriteGeneration(GetParam().generation, [&] {
      Put("M", 0, "MTM1", GetParam().timing);
      Put("M", 0, "MTM2", static_cast<std::int16_t>(value));
    });
    const int base = GetParam().generation <= 2 ? 40509 : 40531;
    return recorder.Register(base + 19);
  };
  if (GetParam().limit == 0) {
    EXPECT_EQ(write(30), 30);
    return;
  }
  EXPECT_EQ(write(GetParam().limit - 1), GetParam().limit - 1);
  EXPECT_EQ(write(GetParam().limit), 0);
}

TEST_F(WriteRules, InGeneration4TheChannelOfAMailTriggerFollowsTheSameRule) {
  WriteGeneration(4, [&] {
    Put("X", 0, "ETRG", 3);
    Put("X", 0, "ETG1", 18);
    Put("X", 1, "ETRG", 3);
    Put("X", 1, "ETG1", 17);
    Put("X", 2, "ETRG", 5);
    Put("X", 2, "ETG1", 18);
  });
  EXPECT_EQ(recorder.Register(42001 + 81), 0);
  EXPECT_EQ(recorder.Register(42001 + 88 + 81), 17);
  EXPECT_EQ(recorder.Register(42001 + 2 * 88 + 81), 18);
}

TEST_F(WriteRules, ATriggerWithoutARecordInFrontOfItGoesWithItsValue) {
  WriteGeneration(4, [&] {
    std::vector<ParamNumRecord>& records = ParamStore[gFFindSection("M")].Items[0].NumRecords;
    std::erase_if(records, [](const ParamNumRecord& record) { return record.Tag != "MTM2"; });
    records.at(0).Value = 30;
  });
  EXPECT_EQ(recorder.Register(40531 + 19), 30);
}

TEST_F(WriteRules, InGeneration2ATimeGoesAsHoursAndMinutes) {
  WriteGeneration(2, [&] {
    Put("E", 0, "TSTR", 125);
    Put("E", 0, "TSTO", 1439);
  });
  EXPECT_EQ(recorder.Register(40161 + 6), 2);
  EXPECT_EQ(recorder.Register(40161 + 7), 5);
  EXPECT_EQ(recorder.Register(40161 + 8), 23);
  EXPECT_EQ(recorder.Register(40161 + 9), 59);
}

TEST_F(WriteRules, InGeneration2ANegativeTimeDropsItsFraction) {
  WriteGeneration(2, [&] { Put("E", 0, "TSTR", -61); });
  EXPECT_EQ(static_cast<std::int16_t>(recorder.Register(40161 + 6)), -1);
  EXPECT_EQ(static_cast<std::int16_t>(recorder.Register(40161 + 7)), -1);
}

TEST_F(WriteRules, InGeneration2TotalizingNeedsItsSwitchAndTheDailyReport) {
  WriteGeneration(2, [&] {
    const std::array<std::pair<std::int16_t, std::int16_t>, 4> rows{{{1, 0}, {1, 15}, {0, 0}, {2, 0}}};
    for (int item = 0; item < 4; ++item) {
      Put("C", item, "SEKI", rows[static_cast<std::size_t>(item)].first);
      Put("C", item, "STYP", rows[static_cast<std::size_t>(item)].second);
    }
  });
  EXPECT_EQ(ChannelWord(0, 35), 1);
  EXPECT_EQ(ChannelWord(1, 35), 0);
  EXPECT_EQ(ChannelWord(2, 35), 0);
  EXPECT_EQ(ChannelWord(3, 35), 0);
}

TEST_F(WriteRules, InGeneration0TheAlarmLatchIsNeverWritten) {
  WriteGeneration(0, [&] {
    Put("H", 0, "ALML", 1);
    Put("H", 0, "ALMH", 50);
  });
  EXPECT_EQ(recorder.Register(40017 + 18), 50);
  EXPECT_EQ(recorder.Register(40017 + 19), ScriptedRecorder::Pattern(40017 + 19)); // byte 38
  EXPECT_EQ(recorder.Register(40017 + 25), ScriptedRecorder::Pattern(40017 + 25)); // its own place
}

TEST_F(WriteRules, InGeneration0ColourAndLogarithmGoWithTheirDefaults) {
  WriteGeneration(0, [&] {
    Put("C", 1, "COLR", 14);
    Put("C", 1, "TAIS", 1);
    Put("C", 1, "SUBC", 5);
  });
  EXPECT_EQ(ChannelWord(1, 30), 2); // the second colour of the order
  EXPECT_EQ(ChannelWord(1, 29), 0);
  EXPECT_EQ(ChannelWord(1, 9), 0);
}

TEST_F(WriteRules, InGeneration20TheLogarithmGoesWithItsDefault) {
  WriteGeneration(20, [&] { Put("C", 0, "TAIS", 1); });
  EXPECT_EQ(recorder.Register(45201 + 29), 0);
  WriteGeneration(21, [&] { Put("C", 0, "TAIS", 1); });
  EXPECT_EQ(recorder.Register(45201 + 29), 1);
}

TEST_F(WriteRules, ChannelsThatTheFirmwareLacksAreNeverWritten) {
  const std::array<std::pair<int, int>, 5> channels{{{0, 9}, {1, 9}, {2, 18}, {3, 18}, {4, 18}}};
  for (const auto& [generation, count] : channels) {
    WriteGeneration(generation, [] {});
    EXPECT_EQ(ChannelWord(count - 1, 14), 5000) << generation;
    for (int word = 0; word < 60; ++word) {
      const int number = 44001 + 60 * count + word;
      EXPECT_EQ(recorder.Register(number), ScriptedRecorder::Pattern(number)) << generation;
    }
  }
}

TEST_F(WriteRules, ATextIsFollowedByNulsAndNotByBlanks) {
  WriteGeneration(5, [] { gFParamValue("C", 0, "TAG", u"AB  ", SlotValue); });
  EXPECT_EQ(recorder.Register(44001), 0x4241);
  for (int word = 1; word < 8; ++word) {
    EXPECT_EQ(recorder.Register(44001 + word), 0);
  }
}

TEST_F(WriteRules, ATextThatIsTooLongIsCutWithoutAWord) {
  WriteGeneration(5, [] { gFParamValue("U", 0, "UNIT", u"123456789", SlotValue); });
  EXPECT_EQ(recorder.Register(40321 + 3), 0x3837);
}

TEST_F(WriteRules, AJapaneseTagGoesAsCodePage932) {
  WriteGeneration(5, [] { gFParamValue("C", 0, "TAG", u"温度ｱ", SlotValue); });
  EXPECT_EQ(recorder.Register(44001), 0xB789);
  EXPECT_EQ(recorder.Register(44002), 0x7893);
  EXPECT_EQ(recorder.Register(44003), 0x00B1);
}

TEST_F(WriteRules, ANegativeValueGoesAsTwosComplement) {
  WriteGeneration(5, [] { Put("C", 0, "MMIN", -1); });
  EXPECT_EQ(recorder.Register(44001 + 13), 0xFFFF);
}

TEST_F(WriteRules, SectionWritersOfUnknownSectionsFail) {
  StartWithModel(platform, "KOV");
  OpenLink(Line::Ethernet);
  EXPECT_FALSE(gFWriteSectionG0("Q"));
  EXPECT_FALSE(gFWriteSectionG1("Q"));
  EXPECT_FALSE(gFWriteSectionG2("Q"));
  EXPECT_FALSE(gFWriteSectionG3("Q"));
  EXPECT_FALSE(gFWriteSectionG4("Q"));
  EXPECT_FALSE(gFWriteSectionG20("Q"));
  EXPECT_FALSE(gFWriteSectionPlain("Q"));
  EXPECT_TRUE(recorder.requests.empty());
}

} // namespace
} // namespace loader::test
