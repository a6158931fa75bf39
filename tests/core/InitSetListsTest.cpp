// Where a number of the shipped initial settings chooses from a list, its largest value is the list's last
// entry: a value within the limits can always be shown.
#include <gtest/gtest.h>

#include <string>

#include "core/ModelProfile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

struct ListTag {
  const char* section;
  const char* tag;
  const Catalogue* list;
};

void PrintTo(const ListTag& row, std::ostream* out) {
  *out << row.section << " " << row.tag;
}

// Lists that are as long for either model.
const ListTag ListTags[] = {
    {"C", "UNIT", &UnitNames},
    {"C", "SEUN", &UnitNames},
    {"C", "SCAL", &ScaleList},
    {"C", "POIN", &DecimalPointList},
    {"C", "TAIS", &TaisList},
    {"C", "COLR", &ColorNames},
    {"C", "ROOT", &RootList},
    {"C", "RECO", &RecordDisplayList},
    {"C", "RECM", &RecordModeList},
    {"C", "FTIO", &FValueSwitchList},
    {"C", "SBAS", &PerUnitTimeList},
    {"C", "SRES", &ResetSwitchList},
    {"A", "A1TY", &AlarmTypeList},
    {"A", "A2TY", &AlarmTypeList},
    {"A", "A3TY", &AlarmTypeList},
    {"A", "A4TY", &AlarmTypeList},
    {"T", "THOU", &BarDirectionList},
    {"T", "TBUN", &DivisionList},
    {"T", "TPVD", &ColorBarList},
    {"T", "TMEM", &TrendScaleList},
    {"B", "BHOU", &BarDirectionList},
    {"B", "BBRM", &BarMeterList},
    {"H", "KLOC", &KeyLockList},
    {"H", "BETU", &DailyFileList},
    {"H", "MSMP", &SampleCycleList},
    {"H", "SSMP", &SampleCycleList},
    {"H", "ALML", &AlarmLatchList},
    {"H", "ASBY", &CommCodeList},
    {"H", "FPOI", &DecimalPointList},
    {"H", "COMB", &BaudList},
    {"H", "COMP", &ParityList},
    {"H", "TIMF", &DateFormatList},
    {"H", "CMPL", &CompressionList},
    {"H", "FIFO", &OverwriteList},
    {"H", "LANG", &LanguageList},
    {"H", "LOGO", &LoginModeList},
    {"H", "TBKC", &TrendBackgroundList},
    {"H", "HBKC", &HistoryBackgroundList},
    {"H", "HOUR", &HourList},
    {"H", "MINT", &MinuteList},
    {"M", "MCOR", &ColorNames},
    {"M", "MTM1", &MessageTimingList},
    {"D", "DIKI", &DIFunctionList},
    {"E", "TCYC", &TotalCycleList},
    {"E", "TWDY", &WeekdayList},
    {"E", "TDAY", &DayList},
    {"E", "TTSH", &HourList},
    {"E", "TTSM", &MinuteList},
    {"E", "TTEH", &HourList},
    {"E", "TTEM", &MinuteList},
    {"N", "CONP", &DecimalPointList},
    {"J", "ETHE", &EthernetSwitchLists[0]},
    {"J", "MAIL", &EthernetSwitchLists[1]},
    {"J", "FTPF", &EthernetSwitchLists[2]},
    {"J", "FTPA", &EthernetSwitchLists[3]},
    {"J", "WEBF", &EthernetSwitchLists[4]},
    {"J", "WEBA", &EthernetSwitchLists[5]},
    {"J", "WEBM", &EthernetSwitchLists[6]},
    {"J", "MOTC", &EthernetSwitchLists[7]},
    {"K", "LVEL", &UserLevelList},
    {"X", "ETRG", &MailTriggerList},
    {"X", "ETG2", &HourList},
    {"X", "EPVA", &YesNoList},
    {"L", "MODF", &MasterSlaveList},
    {"L", "RETN", &RetryIntervalList},
    {"I", "DCOL", &ColorNames},
    {"I", "DREM", &RecordModeList2},
    {"I", "DREO", &RecordPresenceList},
    {"Z", "TOTA", &TotalSwitchList},
    {"Z", "TSTM", &TotalUnitTimeList},
    {"Z", "TSIG", &OperationKindList},
};

class InitSetLists : public testing::TestWithParam<std::tuple<const char*, ListTag>> {
protected:
  void SetUp() override { StartWithModel(platform, std::get<0>(GetParam())); }
  ScriptedPlatform platform;
};

TEST_P(InitSetLists, EndWithTheLargestValue) {
  const ListTag& row = std::get<1>(GetParam());
  const ParamNumRecord* record = FindNumRecord(row.section, 0, row.tag);
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(static_cast<int>(row.list->size()) - 1, record->MaxValue);
  EXPECT_LE(0, record->MinValue);
}

INSTANTIATE_TEST_SUITE_P(All, InitSetLists,
                         testing::Combine(testing::Values("KOV", "RUG"), testing::ValuesIn(ListTags)),
                         [](const auto& test) {
                           const ListTag& row = std::get<1>(test.param);
                           return std::string(std::get<0>(test.param)) + "_" + row.section + "_" + row.tag;
                         });

// Lists of which a model shows the first entries only.
class InitSetModelLists : public testing::TestWithParam<const char*> {
protected:
  void SetUp() override { StartWithModel(platform, GetParam()); }
  [[nodiscard]] static int Max(std::string_view section, std::string_view tag) {
    const ParamNumRecord* record = FindNumRecord(section, 0, tag);
    EXPECT_NE(nullptr, record) << section << tag;
    return record == nullptr ? -1 : record->MaxValue;
  }
  ScriptedPlatform platform;
};

INSTANTIATE_TEST_SUITE_P(Models, InitSetModelLists, testing::Values("KOV", "RUG"),
                         [](const testing::TestParamInfo<const char*>& model) { return model.param; });

TEST_P(InitSetModelLists, EndWithTheLastInputKind) {
  EXPECT_EQ(40, Max("C", "TYPE"));
  EXPECT_FALSE(InputTypeNames.at(40).empty());
}

TEST_P(InitSetModelLists, OfChannelsEndWithTheLastChannelOfTheModel) {
  const int channels = Profile.OtherChannelListSize;
  EXPECT_EQ(channels, Max("C", "SUBC"));     // 0 is none
  EXPECT_EQ(channels - 1, Max("C", "OTCH")); // 0 is the first channel
  EXPECT_EQ(channels, Max("T", "TMCH"));
  EXPECT_EQ(channels, Max("M", "MTM2"));
  EXPECT_EQ(channels - 1, Max("X", "ETG1"));
  for (int slot = 1; slot <= 10; ++slot) {
    EXPECT_EQ(channels, Max("G", "GC" + std::string(slot < 10 ? "0" : "") + std::to_string(slot))) << slot;
  }
  for (const char* tag : {"A1HC", "A2HC", "A3HC", "A4HC"}) {
    EXPECT_EQ(channels, Max("A", tag)) << tag;
  }
}

TEST_P(InitSetModelLists, OfRelaysEndWithTheLastRelayOfTheModel) {
  const int relays = Profile.AlarmOutputListSize - 1;
  for (const char* tag : {"A1RL", "A2RL", "A3RL", "A4RL"}) {
    EXPECT_EQ(relays, Max("A", tag)) << tag;
  }
  EXPECT_EQ(relays, Max("H", "CFFL"));
  EXPECT_EQ(relays, Max("H", "BAAL"));
  EXPECT_LT(relays, static_cast<int>(RelayList.size()));
}

TEST_P(InitSetModelLists, OfInputsAndAlarmsEndWithTheLastAlarmOfTheModel) {
  const int last = Profile.DigitalInputCount + Profile.OtherChannelListSize * 4 - 1;
  EXPECT_EQ(last, Max("C", "SDIG"));
  EXPECT_EQ(last, Max("E", "TEXT"));
  EXPECT_EQ(last + 1, Max("C", "SRIN"));
  EXPECT_LT(last, static_cast<int>(AlarmSourceList.size()));
  if (ModelCode == "KOV") {
    EXPECT_EQ(last, static_cast<int>(DIAndAlarmList30.size()) - 1);
  }
}

TEST_P(InitSetModelLists, OfAlarmNumbersAndTotalizerKindsHaveTheirEnds) {
  EXPECT_EQ(static_cast<int>(AlarmNumberList.size()) - 1, Max("M", "MTM3"));
  EXPECT_EQ(static_cast<int>(TotalKindList.size()),
            Max("C", "SEKI"));      // the list may be counted from 0 or from 1
  EXPECT_EQ(15, Max("C", "STYP"));  // 15 is OFF
  EXPECT_EQ(255, Max("X", "EADD")); // one bit for each of eight addresses
}

TEST_P(InitSetModelLists, OfAddressesAreBytes) {
  for (const char* stem : {"IPA", "SUB", "DEF", "SIP"}) {
    for (int part = 1; part <= 4; ++part) {
      EXPECT_EQ(255, Max("J", stem + std::to_string(part))) << stem << part;
    }
  }
}

TEST_P(InitSetModelLists, OfClockFieldsEndWithTheCalendar) {
  EXPECT_EQ(99, Max("H", "YEAR"));
  EXPECT_EQ(12, Max("H", "MONT"));
  EXPECT_EQ(31, Max("H", "DAYS"));
}

TEST_P(InitSetModelLists, OfMinutesEndWithTheDay) {
  EXPECT_EQ(1439, Max("E", "TSTR"));
  EXPECT_EQ(1439, Max("E", "TSTO"));
}

} // namespace
} // namespace loader::test
