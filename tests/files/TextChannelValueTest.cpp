// What the printed sheet says for the parameters of a channel: the first value of each list, the last and one
// behind it.
#include "tests/files/SheetValues.h"

#include <array>
#include <utility>

namespace loader::test {
namespace {

using ChannelSheetValues = SheetValues;

TEST_F(ChannelSheetValues, OfAChannelAreTheEntriesOfItsLists) {
  Expect("C", 0,
         {{"TYPE", 0, "ｽｷｯﾌﾟ"},
          {"TYPE", 40, "他ﾁｬﾈﾙ"},
          {"TYPE", 13, "13"},
          {"TYPE", 41, "41"},
          {"TYPE", 42, "42"},
          {"TYPE", -1, "-1"},
          {"SUBC", 0, "無し"},
          {"SUBC", 1, "ﾁｬﾈﾙ1"},
          {"SUBC", 72, "ﾁｬﾈﾙ72"},
          {"SUBC", -1, "-1"},
          {"RECM", 0, "最大最小記録"},
          {"RECM", 2, "平均値記録"},
          {"RECM", 3, "3"},
          {"OTCH", 0, "無し"},
          {"OTCH", 1, "チャネル1"},
          {"OTCH", 72, "チャネル72"},
          {"OTCH", 73, "73"},
          {"UNIT", 0, "゜C"},
          {"UNIT", 151, "mPa･s"},
          {"UNIT", 4, ""},
          {"UNIT", 168, "168"},
          {"UNIT", -1, "-1"},
          {"SEUN", 0, "゜C"},
          {"SEUN", 151, "mPa･s"},
          {"SEUN", 168, "168"},
          {"COLR", 1, "赤"},
          {"COLR", 14, "銀鼠"},
          {"COLR", 15, "15"},
          {"COLR", 0, "0"},
          {"POIN", 0, "0"},
          {"POIN", 4, "4"},
          {"POIN", 5, "5"},
          {"SCAL", 0, "OFF"},
          {"SCAL", 1, "ON"},
          {"SCAL", 2, "2"},
          {"TAIS", 0, "OFF"},
          {"TAIS", 1, "ON"},
          {"TAIS", 2, "2"},
          {"ROOT", 0, "OFF"},
          {"ROOT", 1, "ON"},
          {"ROOT", 2, "2"},
          {"RECO", 0, "記録有り"},
          {"RECO", 1, "表示のみ"},
          {"RECO", 2, "2"},
          {"FTIO", 0, "OFF"},
          {"FTIO", 1, "ON"},
          {"FTIO", 2, "2"},
          {"SRES", 0, "OFF"},
          {"SRES", 1, "ON"},
          {"SRES", 2, "2"},
          {"SBAS", 0, "/s"},
          {"SBAS", 3, "/day"},
          {"SBAS", 4, "4"},
          {"SEKI", 0, "入力値の積算"},
          {"SEKI", 1, "入力値の積算"},
          {"SEKI", 2, "カウンタ"},
          {"SEKI", 3, "時間測定"},
          {"SEKI", 4, "4"},
          {"SEKI", -1, "-1"}});
}

TEST_F(ChannelSheetValues, OfTheReportCycleGoByTheFiveStoredNumbers) {
  Expect("C", 0,
         {{"STYP", 15, "OFF"},
          {"STYP", 0, "日報"},
          {"STYP", 1, "月報"},
          {"STYP", 3, "年報"},
          {"STYP", 6, "外部入力"},
          {"STYP", 2, "OFF"},
          {"STYP", -1, "OFF"},
          {"STYP", 16, "OFF"}});
}

// The lists have sixteen digital inputs: a model with ten steps over the last six.
TEST_F(ChannelSheetValues, OfExternalInputsStepOverTheInputsThatTheModelLacks) {
  Expect("C", 0,
         {{"SDIG", 0, "DI1"},
          {"SDIG", 9, "DI10"},
          {"SDIG", 10, "ﾁｬﾈﾙ1 警報1"},
          {"SDIG", 297, "ﾁｬﾈﾙ72 警報4"},
          {"SDIG", 298, "298"},
          {"SDIG", -1, "-1"},
          {"SRIN", 0, "無し"},
          {"SRIN", 1, "DI1"},
          {"SRIN", 10, "DI10"},
          {"SRIN", 11, "ﾁｬﾈﾙ1 警報1"},
          {"SRIN", 298, "ﾁｬﾈﾙ72 警報4"},
          {"SRIN", 299, "299"},
          {"SRIN", -1, "-1"}});
  StartWithModel(platform, "RUG");
  Expect("C", 0,
         {{"SDIG", 0, "DI1"},
          {"SDIG", 15, "DI16"},
          {"SDIG", 16, "ﾁｬﾈﾙ1 警報1"},
          {"SDIG", 303, "ﾁｬﾈﾙ72 警報4"},
          {"SDIG", 304, "304"}});
}

TEST_F(ChannelSheetValues, OfTheResetInputAreEmptyOnRug) {
  StartWithModel(platform, "RUG");
  Expect("C", 0, {{"SRIN", 0, ""}, {"SRIN", 1, ""}, {"SRIN", 304, ""}});
}

TEST_F(ChannelSheetValues, OfNumbersStandAtTheirPositionWithinTheLimitsOfTheRecord) {
  Put("C", 0, "POIN", 2);
  Expect("C", 0, {{"FILT", 0, "0"},          {"FILT", 99, "99"},          {"FILT", 100, ""},
                  {"PVSI", 125, "1.25"},     {"PVSI", -32767, "-327.67"}, {"PVSI", -32768, ""},
                  {"PVKA", 0, "0"},          {"PVKA", 999, "999"},        {"PVKA", 1000, ""},
                  {"SSCL", 1, "1"},          {"SSCL", 32767, "32767"},    {"SSCL", 0, ""},
                  {"SECU", 32767, "327.67"}, {"SECU", -32768, ""},        {"SMIN", -5, "-0.05"},
                  {"SMAX", 32767, "327.67"}, {"SMAX", -32768, ""},        {"RMIN", -32767, "-327.67"},
                  {"RMAX", 100, "1.00"},     {"RMAX", -32768, ""}});
}

TEST_F(ChannelSheetValues, ThatNoRuleNamesAreThePlainNumbers) {
  for (const int value : {0, 7, -32768, 32767}) {
    const std::string plain = std::to_string(value);
    const char* text = plain.c_str();
    Expect("C", 0,
           {{"NIPO", value, text},
            {"DSPM", value, text},
            {"ZMB1", value, text},
            {"ZMB2", value, text},
            {"ZMP1", value, text},
            {"ZMP2", value, text}});
    Expect("A", 0,
           {{"A1HC", value, text}, {"A2HC", value, text}, {"A3HC", value, text}, {"A4HC", value, text}});
    Expect("B", 0, {{"BPVD", value, text}, {"BPVM", value, text}});
    Expect("H", 0, {{"FTIR", value, text}});
    Expect("M", 0, {{"MITI", value, text}});
    Expect("L", 0,
           {{"RECY", value, text}, {"RETR", value, text}, {"TIOU", value, text}, {"DELT", value, text}});
    Expect("Y", 0, {{"SLST", value, text}, {"SLRA", value, text}, {"SLRN", value, text}});
    Expect("J", 0,
           {{"IPA1", value, text},
            {"IPA4", value, text},
            {"SUB1", value, text},
            {"SUB4", value, text},
            {"DEF1", value, text},
            {"DEF4", value, text},
            {"SIP1", value, text},
            {"SIP4", value, text}});
  }
}

struct Range {
  int kind;
  int value;
  const char* text;
};
TEST_F(ChannelSheetValues, OfTheMeasuringRangeGoByTheInputKind) {
  Put("C", 0, "POIN", 0);
  for (const Range& row :
       {Range{1, 8000, "800.0"}, Range{1, -2300, "-230.0"}, Range{1, 14000, "1400.0"}, Range{1, 14001, ""},
        Range{32, 5000, "5.000"}, Range{30, 5500, "55.00"}, Range{30, 5501, ""}, Range{20, 6300, "630.0"},
        Range{0, 0, "0"}, Range{0, 1, ""}}) {
    Put("C", 0, "TYPE", row.kind);
    Put("C", 0, "MMIN", row.value);
    Put("C", 0, "MMAX", row.value);
    EXPECT_EQ(row.text, Text("C", 0, "MMIN")) << row.kind << " " << row.value;
    EXPECT_EQ(row.text, Text("C", 0, "MMAX")) << row.kind << " " << row.value;
    EXPECT_EQ(row.text, ToUtf8(gFChannelRangeText(0, "MMAX"))) << row.kind << " " << row.value;
  }
}

TEST_F(ChannelSheetValues, OfTheMeasuringRangeOfAnotherChannelGoByThatOnesKind) {
  Put("C", 3, "TYPE", 32);
  Put("C", 0, "TYPE", 40);
  Put("C", 0, "OTCH", 3);
  Put("C", 0, "MMAX", 4000);
  EXPECT_EQ("4.000", Text("C", 0, "MMAX"));
}

// An operation channel has no input kind: what its TYPE holds limits nothing.
TEST_F(ChannelSheetValues, OfAnOperationChannelGoByTheRulesOfAReference) {
  Put("C", 20, "TYPE", 30);
  Put("C", 20, "POIN", 1);
  Put("C", 20, "MMAX", 32767);
  Put("C", 20, "SMAX", 32767);
  Put("A", 20, "A1VL", 32767);
  EXPECT_EQ("3276.7", Text("C", 20, "MMAX"));
  EXPECT_EQ("3276.7", Text("C", 20, "SMAX"));
  EXPECT_EQ("3276.7", Text("A", 20, "A1VL"));
}

TEST_F(ChannelSheetValues, UnderTheLogarithmAreExponentsAndPowers) {
  Put("C", 0, "TYPE", 32);
  Put("C", 0, "SCAL", 1);
  Put("C", 0, "TAIS", 1);
  Put("C", 0, "POIN", 2);
  Put("C", 0, "MMIN", 1000);
  Put("C", 0, "MMAX", 5000);
  Put("A", 0, "A1VL", 3000);
  Expect("C", 0,
         {{"SMIN", -9, "-9"},
          {"SMAX", 9, "9"},
          {"SMAX", 10, ""},
          {"RMIN", -2, "1.00E-2"},
          {"RMAX", 3, "1.00E3"},
          {"SMIN", 0, "0"},
          {"SMAX", 4, "4"}});
  EXPECT_EQ("1.00E2", Text("A", 0, "A1VL")); // the middle of 10^0 to 10^4
}

TEST_F(ChannelSheetValues, OfAlarmsAreTypeValueAndRelayNumber) {
  Put("C", 0, "POIN", 1);
  for (const char number : {'1', '2', '3', '4'}) {
    const std::string type = std::string("A") + number + "TY";
    const std::string value = std::string("A") + number + "VL";
    const std::string relay = std::string("A") + number + "RL";
    Expect("A", 0,
           {{type.c_str(), 0, "OFF"},
            {type.c_str(), 2, "L"},
            {type.c_str(), 3, "3"},
            {value.c_str(), 9500, "950.0"},
            {value.c_str(), 14001, ""},
            {relay.c_str(), 0, "0"},
            {relay.c_str(), 28, "28"},
            {relay.c_str(), 29, ""}});
  }
}

TEST_F(ChannelSheetValues, OfAnAlarmUnderTheFValueStandAtItsPoint) {
  Put("C", 0, "FTIO", 1);
  Put("H", 0, "FPOI", 2);
  Put("A", 0, "A1VL", 32767);
  EXPECT_EQ("327.67", Text("A", 0, "A1VL"));
}

TEST_F(ChannelSheetValues, OfTextsAreTrimmed) {
  for (const char* tag : {"TAG", "TAG2", "STAG"}) {
    PutText("C", 0, tag, "  炉 1  ");
    EXPECT_EQ("炉 1", Text("C", 0, tag));
  }
  const std::array<std::pair<const char*, const char*>, 19> others{{{"G", "GNEM"},
                                                                    {"M", "MESS"},
                                                                    {"U", "UNIT"},
                                                                    {"J", "SDAD"},
                                                                    {"J", "SDNM"},
                                                                    {"J", "RAD1"},
                                                                    {"J", "RAD2"},
                                                                    {"J", "RAD3"},
                                                                    {"J", "RAD4"},
                                                                    {"J", "RAD5"},
                                                                    {"J", "RAD6"},
                                                                    {"J", "RAD7"},
                                                                    {"J", "RAD8"},
                                                                    {"K", "UNAM"},
                                                                    {"K", "PASS"},
                                                                    {"X", "ECM1"},
                                                                    {"X", "ECM2"},
                                                                    {"X", "ETTL"},
                                                                    {"P", "SNO."}}};
  for (const auto& [section, tag] : others) {
    PutText(section, 0, tag, " a, b ");
    EXPECT_EQ("a, b", Text(section, 0, tag)) << section << tag;
  }
}

} // namespace
} // namespace loader::test
