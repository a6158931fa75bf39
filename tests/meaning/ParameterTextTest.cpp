// Texts of stored values by view, and typed texts as stored values.
#include "meaning/ParameterText.h"

#include <gtest/gtest.h>

#include "core/Text.h"
#include "operation/Formula.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

class ParameterTexts : public ::testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }
  static std::string Table(std::string_view section, int item, std::string_view tag) {
    return ToUtf8(ReportText(section, item, tag, View::Table));
  }
  static std::string Sheet(std::string_view section, int item, std::string_view tag) {
    return ToUtf8(ReportText(section, item, tag, View::Sheet));
  }
  ScriptedPlatform platform;
};

struct TwoViews {
  const char* section;
  const char* tag;
  int value;
  const char* table;
  const char* sheet;
};
TEST_F(ParameterTexts, DifferBetweenTableAndSheetWhereTheListSaysSo) {
  for (const TwoViews& row : {TwoViews{"C", "SUBC", 0, "差演算無し", "無し"},
                              TwoViews{"C", "SUBC", 12, "ﾁｬﾈﾙ１２", "ﾁｬﾈﾙ12"},
                              TwoViews{"C", "POIN", 3, "3", "3"},
                              TwoViews{"C", "OTCH", 4, "チャネル5", "チャネル4"},
                              TwoViews{"C", "OTCH", 0, "チャネル1", "無し"},
                              TwoViews{"C", "SEKI", 0, "入力値の積算", "入力値の積算"},
                              TwoViews{"C", "SEKI", 1, "カウンタ", "入力値の積算"},
                              TwoViews{"C", "SEKI", 2, "時間測定", "カウンタ"},
                              TwoViews{"C", "SEKI", 3, "3", "時間測定"},
                              TwoViews{"C", "STYP", 6, "外部入力", "外部入力"},
                              TwoViews{"C", "STYP", 2, "OFF", "OFF"},
                              TwoViews{"C", "COLR", 2, "青", "青"},
                              TwoViews{"A", "A2RL", 0, "無し", "0"},
                              TwoViews{"A", "A2RL", 7, "7", "7"},
                              TwoViews{"G", "GC03", 0, "ﾁｬﾈﾙ無し", "無し"},
                              TwoViews{"G", "GC03", 5, "ﾁｬﾈﾙ５", "ﾁｬﾈﾙ5"},
                              TwoViews{"T", "THOU", 1, "左右", "左右"},
                              TwoViews{"T", "THOU", 9, "上下", "上下"},
                              TwoViews{"T", "TBUN", 99, "99", "99"},
                              TwoViews{"T", "TMEM", 1, "ON", "有り"},
                              TwoViews{"K", "LVEL", 2, "2", "operator"}}) {
    SCOPED_TRACE(std::string(row.tag) + " " + std::to_string(row.value));
    Put(row.section, 1, row.tag, row.value);
    EXPECT_EQ(row.table, Table(row.section, 1, row.tag));
    EXPECT_EQ(row.sheet, Sheet(row.section, 1, row.tag));
  }
}

TEST_F(ParameterTexts, ReadAValueThatIsNoRowAsItsNumber) {
  Put("H", 0, "MSMP", 20);
  EXPECT_EQ("20", Table("H", 0, "MSMP"));
  Put("H", 0, "MSMP", -1);
  EXPECT_EQ("-1", Table("H", 0, "MSMP"));
}

TEST_F(ParameterTexts, OfNumbersThatNoScreenShowsAreTheNumbersAsTheyStand) {
  for (const int value : {0, -5, 32767, -32768}) {
    Put("C", 0, "NIPO", value);
    Put("A", 0, "A3HC", value);
    EXPECT_EQ(std::to_string(value), Sheet("C", 0, "NIPO"));
    EXPECT_EQ(std::to_string(value), Sheet("A", 0, "A3HC"));
  }
}

TEST_F(ParameterTexts, SayNothingOfAParameterThatDoesNotExist) {
  EXPECT_EQ("", Table("C", 99, "MMAX"));
  EXPECT_EQ("", Table("C", 0, "NEWT"));
  EXPECT_EQ("", Table("Q", 0, "TAG"));
  EXPECT_EQ(std::nullopt, ParameterText(MeaningOf("C", "MMAX"), View::Table, 99, "MMAX"));
}

// The store pads its codes and tags; a report walks the store.
TEST_F(ParameterTexts, AreTheSameByThePaddedNamesOfTheStore) {
  Put("C", 0, "POIN", 2);
  Put("C", 0, "PVSI", 125);
  EXPECT_EQ("1.25", ToUtf8(ReportText("C", 0, "PVSI")));
  EXPECT_EQ("1.25", ToUtf8(ReportText("C  ", 0, "PVSI")));
  EXPECT_EQ("CH 01", ToUtf8(ReportText("C  ", 0, "TAG ")));
  EXPECT_EQ("CH 1 チャネルタグ", ToUtf8(FullName("C  ", 0, "TAG ", Language::Japanese)));
}

TEST_F(ParameterTexts, ReadTimesAndMasks) {
  Put("E", 0, "TSBA", 485);
  EXPECT_EQ("8:05", Table("E", 0, "TSBA"));
  Put("E", 0, "TSBA", 1439);
  EXPECT_EQ("23:59", Table("E", 0, "TSBA"));
  // No time of day: a report tells the number.
  for (const int value : {1440, -1, -32768, 32767}) {
    Put("E", 0, "TSBA", value);
    EXPECT_EQ(std::to_string(value), Table("E", 0, "TSBA"));
  }
  Put("X", 0, "EADD", 0b10000101);
  EXPECT_EQ("1 3 8", Table("X", 0, "EADD"));
  Put("X", 0, "EADD", 0);
  EXPECT_EQ("", Table("X", 0, "EADD"));
}

struct Timed {
  int timing;
  int value;
  const char* source;
  const char* detail;
};
TEST_F(ParameterTexts, OfAMailFollowItsTiming) {
  for (const Timed& row :
       {Timed{0, 3, "", ""}, Timed{1, 3, "DI4", ""}, Timed{2, 9, "DI10", ""}, Timed{3, 3, "ﾁｬﾈﾙ4", "4"},
        Timed{4, 0, "ﾁｬﾈﾙ1", "1"}, Timed{5, 2, "バッテリー無し", ""}, Timed{6, 0, "1時間", "0"},
        Timed{7, 3, "3", "3"}, Timed{-1, 3, "3", "3"}, Timed{1, 10, "10", ""}}) {
    Put("X", 0, "ETRG", row.timing);
    Put("X", 0, "ETG1", row.value);
    Put("X", 0, "ETG2", row.value);
    EXPECT_EQ(row.source, Table("X", 0, "ETG1")) << row.timing;
    EXPECT_EQ(row.detail, Table("X", 0, "ETG2")) << row.timing;
  }
}

// --- Positions and limits

TEST_F(ParameterTexts, OfAnAlarmStandAtPoinInATableAndAtTheKindsPositionOnAScreen) {
  Put("C", 0, "TYPE", 32); // 1-5 V: three digits
  Put("C", 0, "SCAL", 0);
  Put("C", 0, "POIN", 1);
  Put("A", 0, "A1VL", 4500);
  const ChannelRow channel = LookUpChannelRow(0, false);
  const MeaningRow& alarm = MeaningOf("A", "A1VL");
  EXPECT_EQ(u"450.0", ParameterText(alarm, View::Table, 0, "A1VL", &channel));
  EXPECT_EQ(u"4.500", ParameterText(alarm, View::Screen, 0, "A1VL", &channel));
}

TEST_F(ParameterTexts, OfTheMeasuringRangeAreLimitedByTheTerminalsOnAScreen) {
  const ChannelRow channel = LookUpChannelRow(0, false);
  const ParamNumRecord& record = NumRecord("C", 0, "MMAX");
  const NumberInForce table =
      InForce(FormIn(MeaningOf("C", "MMAX"), View::Table).number, record, 0, &channel);
  const NumberInForce screen =
      InForce(FormIn(MeaningOf("C", "MMAX"), View::Screen).number, record, 0, &channel);
  EXPECT_EQ((Limits{-2300, 14000}), table.limits); // K
  EXPECT_EQ((Limits{-1000, 5500}), screen.limits);
  EXPECT_EQ(1, table.position);
  EXPECT_EQ(1, screen.position);
}

TEST_F(ParameterTexts, OfTheRecordRangeArePowersInATableAndExponentsOnAScreenUnderTheLogarithm) {
  Put("C", 0, "TYPE", 32);
  Put("C", 0, "SCAL", 1);
  Put("C", 0, "TAIS", 1);
  Put("C", 0, "POIN", 2);
  Put("C", 0, "RMAX", 3);
  const ChannelRow channel = LookUpChannelRow(0, false);
  EXPECT_EQ(u"1.00E3", ParameterText(MeaningOf("C", "RMAX"), View::Table, 0, "RMAX", &channel));
  EXPECT_EQ(u"3", ParameterText(MeaningOf("C", "RMAX"), View::Screen, 0, "RMAX", &channel));
}

// The integer of an alarm under the logarithm is one of the measuring range: 3000 of 1.000 to 5.000 V.
TEST_F(ParameterTexts, OfAnAlarmUnderTheLogarithmStandWhereTheMeasuringRangeDoes) {
  Put("C", 0, "TYPE", 32);
  Put("C", 0, "SCAL", 1);
  Put("C", 0, "TAIS", 1);
  Put("C", 0, "POIN", 1);
  Put("C", 0, "FTIO", 1);
  Put("H", 0, "FPOI", 2);
  ChannelRow channel = LookUpChannelRow(0, false);
  const NumberRule& rule = FormIn(MeaningOf("A", "A1VL"), View::Screen).number;
  EXPECT_EQ(3, InForce(rule, NumRecord("A", 0, "A1VL"), 0, &channel).position);
  channel = LookUpChannelRow(20, true);
  Put("C", 20, "POIN", 4);
  Put("C", 20, "TAIS", 1);
  channel = LookUpChannelRow(20, true);
  EXPECT_EQ(4, InForce(rule, NumRecord("A", 20, "A1VL"), 20, &channel).position);
}

// A table goes by the reference's POIN from channel 19 on; a screen by the position of its kind, and by POIN
// where it has none: an operation channel.
TEST_F(ParameterTexts, OfTheMeasuringRangeOfAnotherChannelStandAtTheOthersPositionOnAScreen) {
  StartWithModel(platform, "RUG");
  const NumberRule& rule = FormIn(MeaningOf("C", "MMIN"), View::Screen).number;
  const auto screen = [&](int item, int other) {
    Put("C", item, "TYPE", 40);
    Put("C", item, "OTCH", other);
    const ChannelRow channel = LookUpChannelRow(item, false);
    return InForce(rule, NumRecord("C", item, "MMIN"), item, &channel).position;
  };
  Put("C", 3, "TYPE", 32); // three digits
  Put("C", 3, "POIN", 1);
  Put("C", 36, "TYPE", 32);
  Put("C", 36, "POIN", 2);
  for (const int item : {0, 20}) {
    EXPECT_EQ(3, screen(item, 3)) << item;
    EXPECT_EQ(2, screen(item, 36)) << item;
    EXPECT_EQ(0, screen(item, item)) << item;
    EXPECT_EQ(0, screen(item, -1)) << item;
    EXPECT_EQ(0, screen(item, 72)) << item;
  }
  Put("C", 20, "OTCH", 3);
  EXPECT_EQ(1, LookUpChannelRow(20, false).measuring.Point); // the table's own rule
}

// The kind knows nothing of what the F value computes.
TEST_F(ParameterTexts, UnderTheFValueAreLimitedByTheirRecords) {
  Put("C", 0, "TYPE", 30); // -10.00 to 55.00
  const auto limits = [](std::string_view section, std::string_view tag, View view) {
    const ChannelRow channel = LookUpChannelRow(0, false);
    return InForce(FormIn(MeaningOf(section, tag), view).number, NumRecord(section, 0, tag), 0, &channel)
        .limits;
  };
  constexpr Limits kind{-1000, 5500};
  constexpr Limits record{-32767, 32767};
  for (const View view : {View::Table, View::Screen}) {
    Put("C", 0, "FTIO", 0);
    EXPECT_EQ(kind, limits("C", "RMAX", view));
    EXPECT_EQ(kind, limits("A", "A4VL", view));
    Put("C", 0, "FTIO", 1);
    EXPECT_EQ(record, limits("C", "RMAX", view));
    EXPECT_EQ(record, limits("A", "A4VL", view));
    EXPECT_EQ(kind, limits("C", "SMAX", view)); // stands beside the F value
  }
  EXPECT_EQ(record, limits("C", "SECU", View::Screen));
  // The logarithm goes before it.
  Put("C", 0, "TAIS", 1);
  EXPECT_EQ(kind, limits("C", "RMAX", View::Screen));
  EXPECT_EQ(kind, limits("A", "A1VL", View::Screen));
  Put("C", 0, "SCAL", 1);
  EXPECT_EQ((Limits{-9, 9}), limits("C", "RMAX", View::Screen));
  EXPECT_EQ((Limits{-9, 9}), limits("C", "RMAX", View::Sheet));
  EXPECT_EQ((Limits{-9, 9}), limits("C", "SMAX", View::Sheet));
}

TEST_F(ParameterTexts, OfTheLowCutStandAtTheChannelsPositionInTableAndScreenAlike) {
  Put("C", 0, "TYPE", 32); // three digits
  Put("C", 0, "POIN", 1);
  Put("C", 0, "SECU", 1234);
  const ChannelRow channel = LookUpChannelRow(0, false);
  EXPECT_EQ(u"123.4", ParameterText(MeaningOf("C", "SECU"), View::Table, 0, "SECU", &channel));
  EXPECT_EQ(u"123.4", ParameterText(MeaningOf("C", "SECU"), View::Screen, 0, "SECU", &channel));
}

// A file or a recorder may hold any number; as digits of a cell it would fill the memory.
TEST_F(ParameterTexts, ReadAPositionThatDoesNotExistAsPositionZero) {
  for (const int position : {-32768, -1, 5, 31000, 32767}) {
    Put("C", 0, "POIN", position);
    Put("C", 0, "PVSI", 125);
    EXPECT_EQ("125", Table("C", 0, "PVSI")) << position;
    Put("C", 0, "POIN", 2);
    Put("C", 0, "FTIO", 1);
    Put("H", 0, "FPOI", position);
    Put("C", 0, "SECU", 125);
    EXPECT_EQ("125", Table("C", 0, "SECU")) << position;
    Put("N", 0, "CONP", position);
    Put("N", 0, "CONS", 125);
    EXPECT_EQ("125", Table("N", 0, "CONS")) << position;
    // The reference of another channel's reference.
    Put("C", 17, "TYPE", 40);
    Put("C", 20, "TYPE", 40);
    Put("C", 20, "OTCH", 17);
    Put("C", 17, "POIN", position);
    Put("C", 17, "SMIN", 0);
    Put("C", 17, "SMAX", 500);
    EXPECT_EQ(0, LookUpChannelRow(20, false).measuring.Point) << position;
  }
  EXPECT_EQ(4, PositionOf(4));
}

TEST_F(ParameterTexts, OfFormulasAreThoseOfTheStore) {
  Put("O", 0, "OP21", FormulaCompose(1, 1));
  Put("O", 0, "S121", FormulaCompose(4, 11));
  EXPECT_EQ("ABS(K12)", Sheet("O", 0, "OP21"));
  EXPECT_EQ("1035", Table("O", 0, "S121"));
}

// --- Typed texts

TEST_F(ParameterTexts, TypedAreStoredOrSayWhyNot) {
  const MeaningRow& filter = MeaningOf("C", "FILT");
  const ParamNumRecord& record = NumRecord("C", 0, "FILT");
  EXPECT_EQ(25, ReadTyped(filter, View::Screen, u"25", record, 0).stored);
  const NumberReading tooLarge = ReadTyped(filter, View::Screen, u"100", record, 0);
  EXPECT_EQ(std::nullopt, tooLarge.stored);
  EXPECT_EQ(u"0から99の値を入力してください", tooLarge.message);
  const NumberReading word = ReadTyped(filter, View::Screen, u"x", record, 0);
  EXPECT_EQ(std::nullopt, word.stored);
  EXPECT_EQ(u"数字ではありません。", word.message);
  platform.boxes.ExpectNoneLeft(); // a reading shows no box
}

TEST_F(ParameterTexts, TypedAtTheChannelsPositionAreReadThere) {
  Put("C", 0, "POIN", 2);
  const ChannelRow channel = LookUpChannelRow(0, false);
  const NumberReading shift =
      ReadTyped(MeaningOf("C", "PVSI"), View::Screen, u"-1.259", NumRecord("C", 0, "PVSI"), 0, &channel);
  EXPECT_EQ(-125, shift.stored);
  EXPECT_EQ(u"-1.25", shift.text);
}

TEST_F(ParameterTexts, TypedAsAnOctetAreDigitsWithinItsLimits) {
  const MeaningRow& octet = MeaningOf("J", "IPA1");
  const ParamNumRecord& record = NumRecord("J", 0, "IPA1");
  EXPECT_EQ(7, ReadTyped(octet, View::Screen, u"007", record, 0).stored);
  EXPECT_EQ(u"7", ReadTyped(octet, View::Screen, u"007", record, 0).text);
  for (const char16_t* typed : {u"", u"256", u"-1", u"1 ", u"+1", u"1.0", u"99999"}) {
    const NumberReading reading = ReadTyped(octet, View::Screen, typed, record, 0);
    EXPECT_EQ(std::nullopt, reading.stored) << ToUtf8(typed);
    EXPECT_EQ(u"0から255の値を入力してください", reading.message);
    EXPECT_EQ(typed, reading.text);
  }
}

} // namespace
} // namespace loader::test
