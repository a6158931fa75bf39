#include "core/Text.h"
#include "core/modIni.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace loader {
namespace {

std::vector<std::string> Utf8Of(const Catalogue& list) {
  std::vector<std::string> texts;
  std::ranges::transform(list, std::back_inserter(texts),
                         [](const std::u16string& text) { return ToUtf8(text); });
  return texts;
}

using Texts = std::vector<std::string>;

class Catalogues : public testing::Test {
protected:
  void SetUp() override { gFInitCatalogues(); }
};

// --- every catalogue

struct Expected {
  const char* name;
  const Catalogue* list;
  std::size_t size;
  std::u16string_view first;
  std::u16string_view last;
};

// Test lists show what is tested in place of raw bytes.
void PrintTo(const Expected& expected, std::ostream* out) {
  *out << expected.size << " entries";
}

class EveryCatalogue : public testing::TestWithParam<Expected> {
protected:
  void SetUp() override { gFInitCatalogues(); }
};

TEST_P(EveryCatalogue, HasItsSizeFirstAndLastText) {
  const Catalogue& list = *GetParam().list;
  ASSERT_EQ(list.size(), GetParam().size);
  EXPECT_EQ(ToUtf8(list.front()), ToUtf8(GetParam().first));
  EXPECT_EQ(ToUtf8(list.back()), ToUtf8(GetParam().last));
}

INSTANTIATE_TEST_SUITE_P(
    All, EveryCatalogue,
    testing::Values(
        Expected{"ColorNames", &ColorNames, 15, u"", u"銀鼠"},
        Expected{"InputTypeNames", &InputTypeNames, 42, u"ｽｷｯﾌﾟ", u""},
        Expected{"ScaleList", &ScaleList, 2, u"OFF", u"ON"},
        Expected{"DecimalPointList", &DecimalPointList, 5, u"0", u"4"},
        Expected{"TaisList", &TaisList, 2, u"OFF", u"ON"}, Expected{"RootList", &RootList, 2, u"OFF", u"ON"},
        Expected{"RecordDisplayList", &RecordDisplayList, 2, u"記録有り", u"表示のみ"},
        Expected{"RecordModeList", &RecordModeList, 3, u"最大最小記録", u"平均値記録"},
        Expected{"SubtractList", &SubtractList, 73, u"差演算無し", u"ﾁｬﾈﾙ７２"},
        Expected{"TotalKindList", &TotalKindList, 3, u"入力値の積算", u"時間測定"},
        Expected{"ReportCycleList", &ReportCycleList, 5, u"OFF", u"外部入力"},
        Expected{"AlarmSourceList", &AlarmSourceList, 304, u"DI1", u"ﾁｬﾈﾙ72 警報4"},
        Expected{"MessageAlarmSourceList", &MessageAlarmSourceList, 304, u"DI1", u"ﾁｬﾈﾙ72 警報4"},
        Expected{"PerUnitTimeList", &PerUnitTimeList, 4, u"/s", u"/day"},
        Expected{"ResetSwitchList", &ResetSwitchList, 2, u"OFF", u"ON"},
        Expected{"FValueSwitchList", &FValueSwitchList, 2, u"OFF", u"ON"},
        Expected{"AlarmTypeList", &AlarmTypeList, 3, u"OFF", u"L"},
        Expected{"AlarmNumberList", &AlarmNumberList, 4, u"1", u"4"},
        Expected{"RelayList", &RelayList, 37, u"無し", u"36"},
        Expected{"NoneChannelList", &NoneChannelList, 73, u"無し", u"チャネル72"},
        Expected{"ScreenOffList", &ScreenOffList, 9, u"常時消灯", u"１時間"},
        Expected{"BacklightList", &BacklightList, 9, u"常時点灯", u"１時間"},
        Expected{"KeyLockList", &KeyLockList, 3, u"OFF", u"記録キーロック"},
        Expected{"DailyFileList", &DailyFileList, 9, u"作成しない", u"８日"},
        Expected{"FileSplitList", &FileSplitList, 5, u"分割しない", u"1ヶ月"},
        Expected{"SampleCycleList", &SampleCycleList, 20, u"1秒", u"12時間"},
        Expected{"CommCodeList", &CommCodeList, 2, u"アスキー", u"バイナリ"},
        Expected{"AlarmLatchList", &AlarmLatchList, 2, u"OFF", u"ON"},
        Expected{"CompressionList", &CompressionList, 4, u"1/1", u"1/60"},
        Expected{"OverwriteList", &OverwriteList, 2, u"OFF", u"ON"},
        Expected{"LanguageList", &LanguageList, 2, u"English", u"French"},
        Expected{"LoginModeList", &LoginModeList, 2, u"Password", u"Logon"},
        Expected{"TrendBackgroundList", &TrendBackgroundList, 2, u"白", u"黒"},
        Expected{"HistoryBackgroundList", &HistoryBackgroundList, 2, u"白", u"黒"},
        Expected{"BaudList", &BaudList, 2, u"9600", u"19200"},
        Expected{"ParityList", &ParityList, 3, u"無し", u"偶数"},
        Expected{"DateFormatList", &DateFormatList, 5, u"2004/09/27", u" Sep-27-04"},
        Expected{"DIFunctionList", &DIFunctionList, 6, u"機能無し", u"画面点灯"},
        Expected{"DINames", &DINames, 16, u"DI1", u"DI16"},
        Expected{"TotalCycleList", &TotalCycleList, 10, u"10分", u"24時間"},
        Expected{"WeekdayList", &WeekdayList, 7, u"日曜日", u"土曜日"},
        Expected{"TotalSwitchList", &TotalSwitchList, 2, u"OFF", u"ON"},
        Expected{"TotalUnitTimeList", &TotalUnitTimeList, 4, u"/s", u"/day"},
        Expected{"OperationKindList", &OperationKindList, 4, u"常時動作", u"時間"},
        Expected{"DIAndAlarmList30", &DIAndAlarmList30, 130, u"DI1", u"ﾁｬﾈﾙ30 警報4"},
        Expected{"RecordPresenceList", &RecordPresenceList, 2, u"記録無し", u"記録有り"},
        Expected{"RecordModeList2", &RecordModeList2, 3, u"最大最小記録", u"平均値記録"},
        Expected{"MoveSwitchList", &MoveSwitchList, 2, u"OFF", u"ON"},
        Expected{"HourList", &HourList, 24, u"0", u"23"},
        Expected{"MinuteList", &MinuteList, 60, u"0", u"59"}, Expected{"DayList", &DayList, 31, u"1", u"31"},
        Expected{"GroupChannelList", &GroupChannelList, 73, u"ﾁｬﾈﾙ無し", u"ﾁｬﾈﾙ７２"},
        Expected{"BarMeterList", &BarMeterList, 2, u"バーグラフ", u"アナログメータ"},
        Expected{"ColorBarList", &ColorBarList, 3, u"ﾁｬﾈﾙNo.表示", u"単位表示"},
        Expected{"BarDirectionList", &BarDirectionList, 2, u"上下", u"左右"},
        Expected{"TrendScaleList", &TrendScaleList, 2, u"OFF", u"ON"},
        Expected{"DivisionList", &DivisionList, 21, u"", u"20"},
        Expected{"MessageTimingList", &MessageTimingList, 5, u"無し", u"警報解除"},
        Expected{"OperatorList", &OperatorList, 5, u"無し", u"/"},
        Expected{"FunctionList", &FunctionList, 14, u"無し", u"SUM(A,B)"},
        Expected{"TermPrefixList", &TermPrefixList, 6, u"C", u"B"},
        Expected{"TermNameList", &TermNameList, 6, u"ﾁｬﾈﾙ", u"演算結果"},
        Expected{"UserLevelList", &UserLevelList, 4, u"管理者", u"ゲスト"},
        Expected{"MailTriggerList", &MailTriggerList, 7, u"無し", u"定周期"},
        Expected{"RecorderAlarmList", &RecorderAlarmList, 4, u"全Ch警報論理和出力", u"メモリカードフル"},
        Expected{"MailPeriodList", &MailPeriodList, 7, u"1時間", u"1日"},
        Expected{"YesNoList", &YesNoList, 2, u"無し", u"有り"},
        Expected{"MasterSlaveList", &MasterSlaveList, 2, u"slave", u"master"},
        Expected{"RetryIntervalList", &RetryIntervalList, 6, u"200ms", u"10s"},
        Expected{"LinkDateFormatList", &LinkDateFormatList, 5, u"2004/04/27", u"Sep-27-04"},
        Expected{"LinkSwitchList", &LinkSwitchList, 2, u"OFF", u"ON"},
        Expected{"LinkBaudList", &LinkBaudList, 2, u"9600", u"19200"},
        Expected{"LinkParityList", &LinkParityList, 3, u"none", u"even"}),
    [](const auto& tested) { return std::string(tested.param.name); });

// --- lists whose order matters

TEST_F(Catalogues, ColoursAreNumberedFrom1) {
  EXPECT_EQ(Utf8Of(ColorNames), (Texts{"", "赤", "青", "紫", "緑", "水色", "黄", "灰色", "藍色", "檜皮",
                                       "菖蒲", "常盤", "浅葱", "鶯", "銀鼠"}));
}

TEST_F(Catalogues, InputTypesStandAtTheirNumbers) {
  Texts expected(42);
  const Texts first = {"ｽｷｯﾌﾟ",   "K熱電対", "E熱電対", "J熱電対", "T熱電対", "R熱電対", "S熱電対",
                       "B熱電対", "N熱電対", "W熱電対", "L熱電対", "U熱電対", "PN熱電対"};
  std::ranges::copy(first, expected.begin());
  expected[20] = "Pt100";
  expected[21] = "JPt100";
  expected[30] = "50mV";
  expected[31] = "500mV";
  expected[32] = "1-5V";
  expected[33] = "0-5V";
  expected[40] = "他ﾁｬﾈﾙ";
  EXPECT_EQ(Utf8Of(InputTypeNames), expected);
}

TEST_F(Catalogues, SubtractionPassesOverTheWordsOfTheTextOutput) {
  EXPECT_EQ(ToUtf8(SubtractList[1]), "ﾁｬﾈﾙ１");
  EXPECT_EQ(ToUtf8(SubtractList[30]), "ﾁｬﾈﾙ３０");
  EXPECT_EQ(ToUtf8(SubtractList[31]), "ﾁｬﾈﾙ３１");
  EXPECT_EQ(ToUtf8(SubtractList[32]), "ﾁｬﾈﾙ３２");
}

TEST_F(Catalogues, SubtractionAndGroupChannelsCountAlike) {
  for (std::size_t channel = 1; channel <= 72; ++channel) {
    EXPECT_EQ(SubtractList[channel], GroupChannelList[channel]) << channel;
  }
}

TEST_F(Catalogues, ChannelListNumbersItsChannels) {
  for (std::size_t channel = 1; channel <= 72; ++channel) {
    EXPECT_EQ(ToUtf8(NoneChannelList[channel]), "チャネル" + std::to_string(channel));
  }
}

TEST_F(Catalogues, AlarmSourcesAreSixteenInputsThenFourAlarmsAChannel) {
  for (std::size_t input = 0; input < 16; ++input) {
    EXPECT_EQ(ToUtf8(AlarmSourceList[input]), "DI" + std::to_string(input + 1));
  }
  for (std::size_t channel = 0; channel < 72; ++channel) {
    for (std::size_t alarm = 0; alarm < 4; ++alarm) {
      EXPECT_EQ(ToUtf8(AlarmSourceList[16 + 4 * channel + alarm]),
                "ﾁｬﾈﾙ" + std::to_string(channel + 1) + " 警報" + std::to_string(alarm + 1));
    }
  }
}

TEST_F(Catalogues, MessageScreenHasTheSameAlarmSources) {
  EXPECT_EQ(MessageAlarmSourceList, AlarmSourceList);
}

TEST_F(Catalogues, ThirtyChannelListCountsTenInputs) {
  EXPECT_EQ(ToUtf8(DIAndAlarmList30[9]), "DI10");
  EXPECT_EQ(ToUtf8(DIAndAlarmList30[10]), "ﾁｬﾈﾙ1 警報1");
  EXPECT_EQ(ToUtf8(DIAndAlarmList30[14]), "ﾁｬﾈﾙ2 警報1");
}

TEST_F(Catalogues, ReportCycleStartsWithOff) {
  EXPECT_EQ(Utf8Of(ReportCycleList), (Texts{"OFF", "日報", "月報", "年報", "外部入力"}));
}

TEST_F(Catalogues, ChannelChoicesReadInTheOrderOfTheirValues) {
  EXPECT_EQ(Utf8Of(RecordModeList), (Texts{"最大最小記録", "瞬時値記録", "平均値記録"}));
  EXPECT_EQ(Utf8Of(RecordModeList2), Utf8Of(RecordModeList));
  EXPECT_EQ(Utf8Of(TotalKindList), (Texts{"入力値の積算", "カウンタ", "時間測定"}));
  EXPECT_EQ(Utf8Of(PerUnitTimeList), (Texts{"/s", "/min", "/h", "/day"}));
  EXPECT_EQ(Utf8Of(TotalUnitTimeList), Utf8Of(PerUnitTimeList));
  EXPECT_EQ(Utf8Of(AlarmTypeList), (Texts{"OFF", "H", "L"}));
  EXPECT_EQ(Utf8Of(AlarmNumberList), (Texts{"1", "2", "3", "4"}));
  EXPECT_EQ(Utf8Of(DecimalPointList), (Texts{"0", "1", "2", "3", "4"}));
}

TEST_F(Catalogues, RecorderChoicesReadInTheOrderOfTheirValues) {
  const Texts times = {"１分", "２分", "３分", "５分", "１０分", "２０分", "３０分", "１時間"};
  const auto after = [&](const char* head) {
    Texts texts = {head};
    texts.insert(texts.end(), times.begin(), times.end());
    return texts;
  };
  EXPECT_EQ(Utf8Of(ScreenOffList), after("常時消灯"));
  EXPECT_EQ(Utf8Of(BacklightList), after("常時点灯"));
  EXPECT_EQ(Utf8Of(KeyLockList), (Texts{"OFF", "パラメータロック", "記録キーロック"}));
  EXPECT_EQ(Utf8Of(DailyFileList),
            (Texts{"作成しない", "１日", "２日", "３日", "４日", "５日", "６日", "７日", "８日"}));
  EXPECT_EQ(Utf8Of(FileSplitList), (Texts{"分割しない", "1時間", "1日", "1週間", "1ヶ月"}));
  EXPECT_EQ(Utf8Of(SampleCycleList),
            (Texts{"1秒", "2秒", "3秒",  "5秒",  "10秒", "15秒", "20秒",  "30秒",  "1分",   "2分",
                   "3分", "5分", "10分", "15分", "20分", "30分", "1時間", "2時間", "6時間", "12時間"}));
  EXPECT_EQ(Utf8Of(TotalCycleList),
            (Texts{"10分", "20分", "30分", "1時間", "2時間", "3時間", "6時間", "8時間", "12時間", "24時間"}));
  EXPECT_EQ(Utf8Of(WeekdayList),
            (Texts{"日曜日", "月曜日", "火曜日", "水曜日", "木曜日", "金曜日", "土曜日"}));
  EXPECT_EQ(Utf8Of(DateFormatList),
            (Texts{"2004/09/27", "27/09/2004", "27- Sep-04", "09/27/2004", " Sep-27-04"}));
  EXPECT_EQ(Utf8Of(CompressionList), (Texts{"1/1", "1/10", "1/30", "1/60"}));
  EXPECT_EQ(Utf8Of(ParityList), (Texts{"無し", "奇数", "偶数"}));
  EXPECT_EQ(Utf8Of(OperationKindList), (Texts{"常時動作", "記録状態", "DI", "時間"}));
  EXPECT_EQ(Utf8Of(DIFunctionList), (Texts{"機能無し", "記録開始／停止", "Ｆ値演算リセット", "積算開始／停止",
                                           "積算リセット", "画面点灯"}));
}

TEST_F(Catalogues, FormulaListsReadInTheOrderOfTheirValues) {
  EXPECT_EQ(Utf8Of(OperatorList), (Texts{"無し", "+", "-", "*", "/"}));
  EXPECT_EQ(Utf8Of(FunctionList),
            (Texts{"無し", "ABS(A)", "POW(A,B)", "SQR(A)", "LOG(A)", "LN(A)", "EXP(A)", "RH(A,B)", "MAX(A,B)",
                   "MIN(A,B)", "H-P(A)", "L-P(A)", "AVG(A)", "SUM(A,B)"}));
  EXPECT_EQ(Utf8Of(TermPrefixList), (Texts{"C", "T", "D", "M", "K", "B"}));
  EXPECT_EQ(Utf8Of(TermNameList), (Texts{"ﾁｬﾈﾙ", "積算", "DI", "通信", "定数", "演算結果"}));
}

TEST_F(Catalogues, MailAndMessageListsReadInTheOrderOfTheirValues) {
  EXPECT_EQ(Utf8Of(MessageTimingList), (Texts{"無し", "DI ON", "DI OFF", "警報発生", "警報解除"}));
  EXPECT_EQ(Utf8Of(MailTriggerList),
            (Texts{"無し", "DI ON", "DI OFF", "警報発生", "警報解除", "本体異常警報", "定周期"}));
  EXPECT_EQ(Utf8Of(RecorderAlarmList),
            (Texts{"全Ch警報論理和出力", "全状態異常論理和出力", "バッテリー無し", "メモリカードフル"}));
  EXPECT_EQ(Utf8Of(MailPeriodList), (Texts{"1時間", "2時間", "3時間", "4時間", "6時間", "12時間", "1日"}));
  EXPECT_EQ(Utf8Of(UserLevelList), (Texts{"管理者", "ゲスト", "operator", "ゲスト"}));
  EXPECT_EQ(Utf8Of(ColorBarList), (Texts{"ﾁｬﾈﾙNo.表示", "ﾀｸﾞNo.表示", "単位表示"}));
}

TEST_F(Catalogues, LinkListsReadInTheOrderOfTheirValues) {
  EXPECT_EQ(Utf8Of(MasterSlaveList), (Texts{"slave", "master"}));
  EXPECT_EQ(Utf8Of(RetryIntervalList), (Texts{"200ms", "500ms", "1s", "2s", "5s", "10s"}));
  EXPECT_EQ(Utf8Of(LinkDateFormatList),
            (Texts{"2004/04/27", "27/09/2004", "27-Sep-04", "09/27/2004", "Sep-27-04"}));
  EXPECT_EQ(Utf8Of(LinkSwitchList), (Texts{"OFF", "ON"}));
  EXPECT_EQ(Utf8Of(LinkBaudList), (Texts{"9600", "19200"}));
  EXPECT_EQ(Utf8Of(LinkParityList), (Texts{"none", "odd", "even"}));
}

TEST_F(Catalogues, EthernetSwitchesAreEightListsOfOffAndOn) {
  ASSERT_EQ(EthernetSwitchLists.size(), 8U);
  for (const Catalogue& list : EthernetSwitchLists) {
    EXPECT_EQ(Utf8Of(list), (Texts{"OFF", "ON"}));
  }
}

TEST_F(Catalogues, NumberListsCountUp) {
  for (std::size_t relay = 1; relay <= 36; ++relay) {
    EXPECT_EQ(ToUtf8(RelayList[relay]), std::to_string(relay));
  }
  for (std::size_t division = 1; division <= 20; ++division) {
    EXPECT_EQ(ToUtf8(DivisionList[division]), std::to_string(division));
  }
  for (std::size_t minute = 0; minute < 60; ++minute) {
    EXPECT_EQ(ToUtf8(MinuteList[minute]), std::to_string(minute));
  }
  for (std::size_t hour = 0; hour < 24; ++hour) {
    EXPECT_EQ(ToUtf8(HourList[hour]), std::to_string(hour));
  }
  for (std::size_t day = 0; day < 31; ++day) { // the stored day counts from 0
    EXPECT_EQ(ToUtf8(DayList[day]), std::to_string(day + 1));
  }
}

// --- units

const std::map<std::size_t, std::string>& FixedUnitNames() {
  // clang-format off
  static const std::map<std::size_t, std::string> names = {
      {0, "゜C"}, {1, "゜F"}, {2, "%RH"}, {3, "vol%"}, {6, "t/d"}, {7, "kg/d"}, {8, "g/d"},
      {9, "m3/d"}, {10, "l/d"}, {12, "t/h"}, {13, "kg/h"}, {14, "g/h"}, {15, "m3/h"}, {16, "l/h"},
      {18, "t/min"}, {19, "kg/min"}, {20, "g/min"}, {21, "m3/min"}, {22, "l/min"}, {24, "t/s"},
      {25, "kg/s"}, {26, "g/s"}, {27, "m3/s"}, {28, "l/s"}, {30, "mbar"}, {31, "bar"},
      {32, "N/mm2"}, {33, "N/m2"}, {36, "mPa"}, {37, "Pa"}, {38, "kPa"}, {39, "MPa"}, {42, "mm"},
      {43, "cm"}, {44, "m"}, {48, "ml"}, {49, "L"}, {50, "kl"}, {51, "mm3"}, {52, "cm3"},
      {53, "m3"}, {54, "mm2"}, {55, "cm2"}, {56, "m2"}, {57, "g"}, {58, "kg"}, {59, "t"},
      {60, "g/cm3"}, {61, "kg/cm3"}, {62, "g/m3"}, {63, "kg/m3"}, {66, "g/l"}, {67, "kg/l"},
      {68, "g/ml"}, {72, "ppm"}, {73, "ppmNH3"}, {74, "ppmSO2"}, {75, "ppmH2S"}, {76, "ppmCO"},
      {77, "ppmO2"}, {78, "ppmNOx"}, {79, "ppb"}, {80, "pH"}, {81, "mol"}, {82, "%"}, {83, "%H2"},
      {84, "%CO2"}, {85, "%He"}, {86, "%Ar"}, {87, "%O2"}, {88, "%NaCl"}, {89, "%CO"}, {90, "mN"},
      {91, "N"}, {92, "N･m"}, {93, "J"}, {94, "kJ"}, {96, "mm/s"}, {97, "mm/min"}, {98, "mm/h"},
      {99, "m/s"}, {100, "m/min"}, {101, "m/h"}, {102, "rps"}, {103, "rpm"}, {104, "rph"},
      {105, "m/s2"}, {106, "rad/s"}, {107, "km/h"}, {108, "us"}, {109, "ms"}, {110, "s"},
      {111, "min"}, {112, "h"}, {113, "day"}, {114, "mV"}, {115, "V"}, {116, "kV"}, {117, "uA"},
      {118, "mA"}, {119, "A"}, {120, "Hz"}, {121, "dB"}, {122, "W"}, {123, "kW"}, {124, "VA"},
      {125, "kVA"}, {126, "Var"}, {127, "kVar"}, {128, "uS/cm"}, {129, "uF"}, {130, "F"},
      {131, "C"}, {132, "mH"}, {133, "H"}, {134, "m ohm"}, {135, "ohm"}, {136, "k ohm"},
      {137, "M ohm"}, {138, "lx"}, {139, "cd"}, {140, "lm"}, {141, "cd/m2"}, {144, "uSv/h"},
      {145, "mSv/h"}, {146, "nGy/h"}, {147, "uGy/h"}, {148, "um"}, {150, "Pa･s"}, {151, "mPa･s"},
  };
  // clang-format on
  return names;
}

TEST_F(Catalogues, EveryFixedUnitHasItsId) {
  for (const auto& [id, name] : FixedUnitNames()) {
    EXPECT_EQ(ToUtf8(UnitNames[id]), name) << id;
  }
}

TEST_F(Catalogues, ReservedAndUserUnitsStartEmpty) {
  std::set<std::size_t> reserved = {4,  5,  11, 17, 23, 29, 34, 35, 40,  41,  45,
                                    46, 47, 64, 65, 69, 70, 71, 95, 142, 143, 149};
  for (std::size_t id = 152; id <= 167; ++id) {
    reserved.insert(id);
  }
  ASSERT_EQ(UnitNames.size(), 168U);
  for (std::size_t id = 0; id < UnitNames.size(); ++id) {
    EXPECT_EQ(UnitNames[id].empty(), reserved.contains(id)) << id;
  }
}

TEST(UserUnits, TakeTheLastEntries) {
  for (int number = 1; number <= 12; ++number) {
    EXPECT_EQ(UserUnitIndex(number, 12), static_cast<std::size_t>(155 + number));
  }
}

TEST(UserUnits, NumberOutsideOfTheCountIsRefused) {
  EXPECT_THROW((void)UserUnitIndex(0, 12), std::out_of_range);
  EXPECT_THROW((void)UserUnitIndex(13, 12), std::out_of_range);
  EXPECT_THROW((void)UserUnitIndex(1, 169), std::out_of_range);
}

TEST_F(Catalogues, UserUnitReadsBackUnderItsId) {
  UnitNames[UserUnitIndex(1, 12)] = u"m/s";
  EXPECT_EQ(UnitNames[156], u"m/s");
}

TEST_F(Catalogues, SecondFillGivesTheSameContent) {
  const Catalogue subtract = SubtractList;
  const Catalogue types = InputTypeNames;
  const Catalogue units = UnitNames;
  UnitNames[156] = u"m/s";
  ColorNames.push_back(u"too many");
  RelayList.clear();

  gFInitCatalogues();

  EXPECT_EQ(SubtractList, subtract);
  EXPECT_EQ(InputTypeNames, types);
  EXPECT_EQ(UnitNames, units);
  EXPECT_EQ(ColorNames.size(), 15U);
  EXPECT_EQ(RelayList.size(), 37U);
}

TEST_F(Catalogues, EntryOutsideOfTheListIsNone) {
  EXPECT_EQ(CatalogueEntry(ScaleList, -1), nullptr);
  EXPECT_EQ(CatalogueEntry(ScaleList, 2), nullptr);
  EXPECT_EQ(CatalogueEntry(ScaleList, 65535), nullptr);
  EXPECT_EQ(CatalogueEntry(Catalogue{}, 0), nullptr);
}

TEST_F(Catalogues, EntryInsideTheListIsItsText) {
  ASSERT_NE(CatalogueEntry(ScaleList, 1), nullptr);
  EXPECT_EQ(*CatalogueEntry(ScaleList, 0), u"OFF");
  EXPECT_EQ(*CatalogueEntry(ScaleList, 1), u"ON");
}

// --- number tables

TEST(ColourOrders, RepeatTheirPeriodOfTen) {
  const std::vector<std::int16_t> a = {1, 2, 3, 4, 11, 10, 5, 6, 8, 9};
  const std::vector<std::int16_t> b = {5, 6, 8, 9, 1, 2, 3, 4, 11, 10};
  ASSERT_EQ(ColourOrderA.size(), 36U);
  ASSERT_EQ(ColourOrderB.size(), 36U);
  for (std::size_t i = 0; i < 36; ++i) {
    EXPECT_EQ(ColourOrderA[i], a[i % 10]) << i;
    EXPECT_EQ(ColourOrderB[i], b[i % 10]) << i;
  }
}

TEST(ColourOrders, EleventhChannelHasColourOneAgain) {
  EXPECT_EQ(ColourOrderA[10], 1);
}

TEST(ColourOrders, NameColoursThatExist) {
  gFInitCatalogues();
  for (std::size_t i = 0; i < 36; ++i) {
    EXPECT_FALSE(ColorNames.at(static_cast<std::size_t>(ColourOrderA[i])).empty());
    EXPECT_FALSE(ColorNames.at(static_cast<std::size_t>(ColourOrderB[i])).empty());
  }
}

TEST(ColourTableValues, AreThoseOfTheNamedColours) {
  const std::vector<std::uint32_t> expected = {0xFFFFFF, 0xFF0000, 0x0000FF, 0x800080, 0x008000,
                                               0x00FFFF, 0xFFFF00, 0x808080, 0x000080, 0x965036,
                                               0x674196, 0x007B43, 0x00A3AF, 0x928C36, 0xAFAFB0};
  EXPECT_TRUE(std::ranges::equal(ColourTable, expected));
}

TEST(Crc, TableFollowsTheBitwiseRule) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    unsigned remainder = byte;
    for (int bit = 0; bit < 8; ++bit) {
      remainder = (remainder % 2 == 1) ? (remainder / 2) ^ 0xA001U : remainder / 2;
    }
    EXPECT_EQ(CrcTable[byte], remainder) << byte;
  }
}

TEST(Crc, KnownFrameGetsItsCheckValue) {
  const std::vector<std::uint8_t> frame = {0x01, 0x04, 0x00, 0x00, 0x00, 0x10};
  const unsigned crc =
      std::accumulate(frame.begin(), frame.end(), 0xFFFFU, [](unsigned sum, std::uint8_t byte) {
        return (sum >> 8U) ^ CrcTable[(sum ^ byte) & 0xFFU];
      });
  EXPECT_EQ(crc & 0xFFU, 0xF1U); // the low byte goes first on the wire
  EXPECT_EQ(crc >> 8U, 0xC6U);
}

} // namespace
} // namespace loader
