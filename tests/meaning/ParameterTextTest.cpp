// Texts of stored values by view, and typed texts as stored values.
#include "meaning/ParameterText.h"

#include <gtest/gtest.h>

#include "core/Text.h"
#include "operation/Formula.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

class ParameterTexts : public ::testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }
  static ParamNumRecord& Record(std::string_view section, int item, std::string_view tag) {
    ParamNumRecord* record = FindNumRecord(section, item, tag);
    if (record == nullptr) {
      throw std::logic_error("no " + std::string(tag));
    }
    return *record;
  }
  static void Set(std::string_view section, int item, std::string_view tag, int value) {
    Record(section, item, tag).Value = static_cast<std::int16_t>(value);
  }
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
    Set(row.section, 1, row.tag, row.value);
    EXPECT_EQ(row.table, Table(row.section, 1, row.tag));
    EXPECT_EQ(row.sheet, Sheet(row.section, 1, row.tag));
  }
}

TEST_F(ParameterTexts, ReadAValueThatIsNoRowAsItsNumber) {
  Set("H", 0, "MSMP", 20);
  EXPECT_EQ("20", Table("H", 0, "MSMP"));
  Set("H", 0, "MSMP", -1);
  EXPECT_EQ("-1", Table("H", 0, "MSMP"));
}

TEST_F(ParameterTexts, SayNothingOfAParameterThatDoesNotExist) {
  EXPECT_EQ("", Table("C", 99, "MMAX"));
  EXPECT_EQ("", Table("C", 0, "NEWT"));
  EXPECT_EQ("", Table("Q", 0, "TAG"));
  EXPECT_EQ(std::nullopt, ParameterText(MeaningOf("C", "MMAX"), View::Table, 99, "MMAX"));
}

TEST_F(ParameterTexts, ReadTimesAndMasks) {
  Set("E", 0, "TSBA", 485);
  EXPECT_EQ("8:05", Table("E", 0, "TSBA"));
  Set("E", 0, "TSBA", 1439);
  EXPECT_EQ("23:59", Table("E", 0, "TSBA"));
  Set("X", 0, "EADD", 0b10000101);
  EXPECT_EQ("1 3 8", Table("X", 0, "EADD"));
  Set("X", 0, "EADD", 0);
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
    Set("X", 0, "ETRG", row.timing);
    Set("X", 0, "ETG1", row.value);
    Set("X", 0, "ETG2", row.value);
    EXPECT_EQ(row.source, Table("X", 0, "ETG1")) << row.timing;
    EXPECT_EQ(row.detail, Table("X", 0, "ETG2")) << row.timing;
  }
}

// --- Positions and limits

TEST_F(ParameterTexts, OfAnAlarmStandAtPoinInATableAndAtTheKindsPositionOnAScreen) {
  Set("C", 0, "TYPE", 32); // 1-5 V: three digits
  Set("C", 0, "SCAL", 0);
  Set("C", 0, "POIN", 1);
  Set("A", 0, "A1VL", 4500);
  const ChannelRow channel = LookUpChannelRow(0, false);
  const MeaningRow& alarm = MeaningOf("A", "A1VL");
  EXPECT_EQ(u"450.0", ParameterText(alarm, View::Table, 0, "A1VL", &channel));
  EXPECT_EQ(u"4.500", ParameterText(alarm, View::Screen, 0, "A1VL", &channel));
}

TEST_F(ParameterTexts, OfTheMeasuringRangeAreLimitedByTheTerminalsOnAScreen) {
  const ChannelRow channel = LookUpChannelRow(0, false);
  const ParamNumRecord& record = Record("C", 0, "MMAX");
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
  Set("C", 0, "TYPE", 32);
  Set("C", 0, "SCAL", 1);
  Set("C", 0, "TAIS", 1);
  Set("C", 0, "POIN", 2);
  Set("C", 0, "RMAX", 3);
  const ChannelRow channel = LookUpChannelRow(0, false);
  EXPECT_EQ(u"1.00E3", ParameterText(MeaningOf("C", "RMAX"), View::Table, 0, "RMAX", &channel));
  EXPECT_EQ(u"3", ParameterText(MeaningOf("C", "RMAX"), View::Screen, 0, "RMAX", &channel));
}

// A file or a recorder may hold any number; as digits of a cell it would fill the memory.
TEST_F(ParameterTexts, ReadAPositionThatDoesNotExistAsPositionZero) {
  for (const int position : {-32768, -1, 5, 31000, 32767}) {
    Set("C", 0, "POIN", position);
    Set("C", 0, "PVSI", 125);
    EXPECT_EQ("125", Table("C", 0, "PVSI")) << position;
    Set("C", 0, "POIN", 2);
    Set("C", 0, "FTIO", 1);
    Set("H", 0, "FPOI", position);
    Set("C", 0, "SECU", 125);
    EXPECT_EQ("125", Table("C", 0, "SECU")) << position;
    Set("N", 0, "CONP", position);
    Set("N", 0, "CONS", 125);
    EXPECT_EQ("125", Table("N", 0, "CONS")) << position;
    // The reference of another channel's reference.
    Set("C", 17, "TYPE", 40);
    Set("C", 20, "TYPE", 40);
    Set("C", 20, "OTCH", 17);
    Set("C", 17, "POIN", position);
    Set("C", 17, "SMIN", 0);
    Set("C", 17, "SMAX", 500);
    EXPECT_EQ(0, LookUpChannelRow(20, false).measuring.Point) << position;
  }
  EXPECT_EQ(4, PositionOf(4));
}

TEST_F(ParameterTexts, OfFormulasDoNotTouchTheOnesThatAreBeingEdited) {
  FormulaWork = {};
  FormulaWork[1][0].Input1No = 7;
  const FormulaTable edited = FormulaWork;
  Set("O", 0, "OP21", FormulaCompose(1, 1));
  Set("O", 0, "S121", FormulaCompose(4, 11));
  EXPECT_EQ("ABS(K12)", Sheet("O", 0, "OP21"));
  EXPECT_EQ(edited, FormulaWork);

  EXPECT_EQ("1035", Table("O", 0, "S121"));
}

// --- Typed texts

TEST_F(ParameterTexts, TypedAreStoredOrSayWhyNot) {
  const MeaningRow& filter = MeaningOf("C", "FILT");
  const ParamNumRecord& record = Record("C", 0, "FILT");
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
  Set("C", 0, "POIN", 2);
  const ChannelRow channel = LookUpChannelRow(0, false);
  const NumberReading shift =
      ReadTyped(MeaningOf("C", "PVSI"), View::Screen, u"-1.259", Record("C", 0, "PVSI"), 0, &channel);
  EXPECT_EQ(-125, shift.stored);
  EXPECT_EQ(u"-1.25", shift.text);
}

TEST_F(ParameterTexts, TypedAsAnOctetAreDigitsWithinItsLimits) {
  const MeaningRow& octet = MeaningOf("J", "IPA1");
  const ParamNumRecord& record = Record("J", 0, "IPA1");
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
