// The cells of the e-mail triggers.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

constexpr const char* Left = nullptr; // the cell stays as it was
std::string Expected(const char* text) {
  return text == Left ? "as it was" : text;
}

struct TriggerRow {
  const char* name;
  int timing;
  int first;  // ETG1
  int second; // ETG2
  const char* timingText;
  const char* firstText;
  const char* secondText;
};
void PrintTo(const TriggerRow& row, std::ostream* out) {
  *out << row.name;
}
class TriggerTest : public MainWindow, public testing::WithParamInterface<TriggerRow> {
protected:
  void ExpectCells() {
    Put("X", 7, "ETRG", GetParam().timing);
    Put("X", 7, "ETG1", GetParam().first);
    Put("X", 7, "ETG2", GetParam().second);
    Grid& grid = Window().flxEMailTriggerSetting;
    for (const int column : {4, 5, 6}) {
      Mark(grid, 8, column);
    }
    FillMailTriggerTable();
    EXPECT_EQ(Expected(GetParam().timingText), CellText(grid, 8, 4));
    EXPECT_EQ(Expected(GetParam().firstText), CellText(grid, 8, 5));
    EXPECT_EQ(Expected(GetParam().secondText), CellText(grid, 8, 6));
  }
};
const auto NameOfTrigger = [](const auto& tested) { return std::string(tested.param.name); };

using TriggerCell = TriggerTest;
TEST_P(TriggerCell, FollowsTheTimingOnKov) {
  Open("KOV");
  ExpectCells();
}
TEST_P(TriggerCell, FollowsTheTimingOnRug) {
  Open("RUG");
  ExpectCells();
}
INSTANTIATE_TEST_SUITE_P(
    Timings, TriggerCell,
    testing::Values(TriggerRow{"NoneWhateverTheRestHolds", 0, 3, 3, "無し", "", ""},
                    TriggerRow{"DIOnFirst", 1, 0, 0, "DI ON", "DI1", ""},
                    TriggerRow{"DIOnTenth", 1, 9, 3, "DI ON", "DI10", ""},
                    TriggerRow{"DIOff", 2, 4, 3, "DI OFF", "DI5", ""},
                    TriggerRow{"AlarmFirst", 3, 0, 0, "警報発生", "ﾁｬﾈﾙ1", "1"},
                    TriggerRow{"AlarmThirtieth", 3, 29, 3, "警報発生", "ﾁｬﾈﾙ30", "4"},
                    TriggerRow{"AlarmCleared", 4, 17, 2, "警報解除", "ﾁｬﾈﾙ18", "3"},
                    TriggerRow{"RecorderAllAlarms", 5, 0, 2, "本体異常警報", "全Ch警報論理和出力", ""},
                    TriggerRow{"RecorderAllStates", 5, 1, 2, "本体異常警報", "全状態異常論理和出力", ""},
                    TriggerRow{"RecorderBattery", 5, 2, 2, "本体異常警報", "バッテリー無し", ""},
                    TriggerRow{"RecorderCard", 5, 3, 2, "本体異常警報", "メモリカードフル", ""},
                    TriggerRow{"EveryHour", 6, 0, 0, "定周期", "1時間", "0"},
                    TriggerRow{"EveryTwoHours", 6, 1, 1, "定周期", "2時間", "1"},
                    TriggerRow{"EveryThreeHours", 6, 2, 5, "定周期", "3時間", "5"},
                    TriggerRow{"EveryFourHours", 6, 3, 12, "定周期", "4時間", "12"},
                    TriggerRow{"EverySixHours", 6, 4, 18, "定周期", "6時間", "18"},
                    TriggerRow{"EveryTwelveHours", 6, 5, 22, "定周期", "12時間", "22"},
                    TriggerRow{"EveryDay", 6, 6, 23, "定周期", "1日", "23"}),
    NameOfTrigger);

// A value outside of the list of its timing leaves the cell as it was.
INSTANTIATE_TEST_SUITE_P(
    OutsideTheLists, TriggerCell,
    testing::Values(TriggerRow{"DINegative", 1, -1, 0, "DI ON", Left, ""},
                    TriggerRow{"DISeventeenth", 2, 16, 0, "DI OFF", Left, ""},
                    TriggerRow{"DIFarOutside", 1, 32767, 0, "DI ON", Left, ""},
                    TriggerRow{"ChannelNegative", 3, -1, -1, "警報発生", Left, Left},
                    TriggerRow{"ChannelAboveAll", 3, 72, 4, "警報発生", Left, Left},
                    TriggerRow{"ChannelFarOutside", 4, -32768, 32767, "警報解除", Left, Left},
                    TriggerRow{"RecorderAlarmNegative", 5, -1, 0, "本体異常警報", Left, ""},
                    TriggerRow{"RecorderAlarmFifth", 5, 4, 0, "本体異常警報", Left, ""},
                    TriggerRow{"PeriodEighth", 6, 7, 24, "定周期", Left, Left},
                    TriggerRow{"PeriodNegative", 6, -1, -1, "定周期", Left, Left},
                    TriggerRow{"TimingSeventh", 7, 0, 0, Left, Left, Left},
                    TriggerRow{"TimingNegative", -1, 0, 0, Left, Left, Left},
                    TriggerRow{"TimingFarOutside", 32767, 0, 0, Left, Left, Left}),
    NameOfTrigger);

// The lists are as long as the model's inputs and channels.
using TriggerCellOfKov = TriggerTest;
TEST_P(TriggerCellOfKov, EndsWithTheModel) {
  Open("KOV");
  ExpectCells();
}
INSTANTIATE_TEST_SUITE_P(ModelLists, TriggerCellOfKov,
                         testing::Values(TriggerRow{"DIEleventh", 1, 10, 0, "DI ON", Left, ""},
                                         TriggerRow{"ChannelThirtyFirst", 3, 30, 0, "警報発生", Left, "1"}),
                         NameOfTrigger);
using TriggerCellOfRug = TriggerTest;
TEST_P(TriggerCellOfRug, EndsWithTheModel) {
  Open("RUG");
  ExpectCells();
}
INSTANTIATE_TEST_SUITE_P(ModelLists, TriggerCellOfRug,
                         testing::Values(TriggerRow{"DISixteenth", 1, 15, 0, "DI ON", "DI16", ""},
                                         TriggerRow{"ChannelSeventySecond", 3, 71, 0, "警報発生", "ﾁｬﾈﾙ72",
                                                    "1"}),
                         NameOfTrigger);

// --- The other columns

using Triggers = EitherWindow;
LOADER_FOR_BOTH_MODELS(Triggers);

TEST_P(Triggers, ShowTheirTextsWithoutTrailingBlanks) {
  const Grid& grid = Window().flxEMailTriggerSetting;
  for (int item = 0; item < 8; ++item) {
    PutText("X", item, "ETTL", " 題" + std::to_string(item) + " ");
    PutText("X", item, "ECM1", " 本文" + std::to_string(item) + " ");
    PutText("X", item, "ECM2", " 続き" + std::to_string(item) + " ");
  }
  FillMailTriggerTable();
  for (int item = 0; item < 8; ++item) {
    EXPECT_EQ(" 題" + std::to_string(item), CellText(grid, item + 1, 1));
    EXPECT_EQ(" 本文" + std::to_string(item), CellText(grid, item + 1, 2));
    EXPECT_EQ(" 続き" + std::to_string(item), CellText(grid, item + 1, 3));
  }
  EXPECT_TRUE(grid.Redraw);
}

TEST_P(Triggers, ShowWhetherValuesAreAttached) {
  Grid& grid = Window().flxEMailTriggerSetting;
  Put("X", 0, "EPVA", 0);
  Put("X", 1, "EPVA", 1);
  Put("X", 2, "EPVA", 2);
  Put("X", 3, "EPVA", -1);
  Mark(grid, 3, 7);
  Mark(grid, 4, 7);
  FillMailTriggerTable();
  EXPECT_EQ("無し", CellText(grid, 1, 7));
  EXPECT_EQ("有り", CellText(grid, 2, 7));
  EXPECT_EQ("as it was", CellText(grid, 3, 7));
  EXPECT_EQ("as it was", CellText(grid, 4, 7));
}

TEST_P(Triggers, MarkEachAddressOfTheMask) {
  const Grid& grid = Window().flxEMailTriggerSetting;
  for (const int mask : {0, 1, 2, 4, 8, 16, 32, 64, 128, 255, 0x55, 0xAA, 256, -1, -32768, 32767}) {
    Put("X", 0, "EADD", mask);
    FillMailTriggerTable();
    for (int bit = 0; bit < 8; ++bit) {
      const bool chosen = (static_cast<unsigned>(mask) & (1U << bit)) != 0;
      EXPECT_EQ(chosen ? "○" : "", CellText(grid, 1, 8 + bit)) << mask << " bit " << bit;
    }
  }
}

} // namespace
} // namespace loader::test
