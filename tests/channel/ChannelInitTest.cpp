// A channel that is brought in line with a new kind.
#include <map>
#include <set>
#include <string>
#include <vector>

#include "channel/InputTypeRules.h"
#include "core/ModelProfile.h"
#include "core/modMain.h"
#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

constexpr int Channel = 4;

class ChannelInitialised : public ChannelRules {
protected:
  void SetUp() override {
    StartWithModel(platform, "KOV");
    // A set-up of its own, so that what stays can be told from what is set.
    for (const char* section : {"C", "A"}) {
      for (ParamNumRecord& record : RecordsOf(section, Channel)) {
        record.Value = 4321;
        record.ReadValue = 1234;
      }
    }
  }
  static std::vector<ParamNumRecord>& RecordsOf(std::string_view section, int item) {
    return ParamStore[gFFindSection(section)].Items[static_cast<std::size_t>(item)].NumRecords;
  }
  static ParamNumRecord& Record(std::string_view section, std::string_view tag) {
    return NumRecord(section, Channel, tag);
  }
  static int Of(std::string_view tag) { return NumValue("C", Channel, tag); }
  static int OfAlarm(std::string_view tag) { return NumValue("A", Channel, tag); }
};

TEST_F(ChannelInitialised, TakesTheKindAndItsUnit) {
  const std::map<int, int> units{{0, 0},    {1, 0},    {21, 0},   {30, 114}, {31, 114},
                                 {32, 115}, {33, 115}, {34, 115}, {35, 0},   {40, 4}};
  for (const auto& [kind, unit] : units) {
    ChannelInit(Channel, kind);
    EXPECT_EQ(kind, Of("TYPE"));
    EXPECT_EQ(unit, Of("UNIT")) << kind;
  }
}

TEST_F(ChannelInitialised, OnlyTheVoltKindsBringTheirOwnPosition) {
  Record("C", "POIN").DefaultValue = 4;
  for (int kind = 0; kind < InputKinds; ++kind) {
    Record("C", "POIN").Value = 0;
    ChannelInit(Channel, kind);
    const int expected = kind == 32 || kind == 33 ? 3 : kind == 34 ? 2 : 4;
    EXPECT_EQ(expected, Of("POIN")) << kind;
  }
}

TEST_F(ChannelInitialised, ValuesTakeTheirDefaultsWhereTheKindAdmitsThem) {
  // K thermocouple: -230.0 to 1400.0 admits every default of the range values.
  ChannelInit(Channel, 1);
  for (const char* tag :
       {"FILT", "SCAL", "MMIN", "MMAX", "SMIN", "SMAX", "PVSI", "RMIN", "RMAX", "SSCL", "SECU"}) {
    EXPECT_EQ(Record("C", tag).DefaultValue, Of(tag)) << tag;
  }
  for (const char* tag : {"A1VL", "A2VL", "A3VL", "A4VL"}) {
    EXPECT_EQ(Record("A", tag).DefaultValue, OfAlarm(tag)) << tag;
  }
}

TEST_F(ChannelInitialised, ADefaultAtALimitOfTheKindIsAdmitted) {
  for (const std::int16_t limit : {std::int16_t{-2300}, std::int16_t{14000}}) {
    Record("C", "SMIN").DefaultValue = limit;
    Record("C", "MMAX").DefaultValue = limit;
    ChannelInit(Channel, 1);
    EXPECT_EQ(limit, Of("SMIN"));
    EXPECT_EQ(limit, Of("MMAX"));
  }
}

TEST_F(ChannelInitialised, TheMeasuringRangeFallsBackToTheKindsDefaults) {
  // B thermocouple: 370.0 to 1790.0, by default 600.0 to 1700.0.
  Record("C", "MMIN").DefaultValue = 0;
  Record("C", "MMAX").DefaultValue = 20000;
  ChannelInit(Channel, 7);
  EXPECT_EQ(6000, Of("MMIN"));
  EXPECT_EQ(17000, Of("MMAX"));
  // Also where the default lies on the other side.
  Record("C", "MMIN").DefaultValue = 20000;
  Record("C", "MMAX").DefaultValue = 0;
  ChannelInit(Channel, 7);
  EXPECT_EQ(6000, Of("MMIN"));
  EXPECT_EQ(17000, Of("MMAX"));
}

TEST_F(ChannelInitialised, TheOtherRangesFallBackToTheLimitOfTheirRecordEvenIfTheKindRefusesIt) {
  // T thermocouple: -230.0 to 430.0. The limit is the same on whichever side the default lies.
  for (const std::int16_t defaultValue : {std::int16_t{5000}, std::int16_t{-2301}}) {
    for (const char* tag : {"SMIN", "SMAX", "RMIN", "RMAX"}) {
      Record("C", tag).DefaultValue = defaultValue;
      Record("C", tag).MinValue = -32000;
      Record("C", tag).MaxValue = 32000;
    }
    ChannelInit(Channel, 4);
    EXPECT_EQ(-32000, Of("SMIN"));
    EXPECT_EQ(32000, Of("SMAX"));
    EXPECT_EQ(-32000, Of("RMIN"));
    EXPECT_EQ(32000, Of("RMAX"));
  }
}

TEST_F(ChannelInitialised, SingleValuesFallBackToTheLimitOnTheSideOfTheirDefault) {
  // 1-5 V: 0.500 to 5.500.
  for (const char* tag : {"FILT", "SCAL", "PVSI", "SSCL", "SECU"}) {
    ParamNumRecord& record = Record("C", tag);
    record.MinValue = -11;
    record.MaxValue = 11111;
    record.DefaultValue = 499;
    ChannelInit(Channel, 32);
    EXPECT_EQ(-11, record.Value) << tag;
    record.DefaultValue = 5501;
    ChannelInit(Channel, 32);
    EXPECT_EQ(11111, record.Value) << tag;
  }
  for (const char* tag : {"A1VL", "A2VL", "A3VL", "A4VL"}) {
    ParamNumRecord& record = Record("A", tag);
    record.DefaultValue = 499;
    ChannelInit(Channel, 32);
    EXPECT_EQ(record.MinValue, record.Value) << tag;
    record.DefaultValue = 5501;
    ChannelInit(Channel, 32);
    EXPECT_EQ(record.MaxValue, record.Value) << tag;
  }
}

TEST_F(ChannelInitialised, WithTheShippedDefaultsAllValuesAreThoseOfAPt100) {
  ChannelInit(Channel, 20);
  EXPECT_EQ(20, Of("TYPE"));
  EXPECT_EQ(0, Of("UNIT"));
  EXPECT_EQ(1, Of("POIN"));
  EXPECT_EQ(0, Of("FILT"));
  EXPECT_EQ(0, Of("SCAL"));
  EXPECT_EQ(0, Of("MMIN"));
  EXPECT_EQ(5000, Of("MMAX"));
  EXPECT_EQ(0, Of("SMIN"));
  EXPECT_EQ(5000, Of("SMAX"));
  EXPECT_EQ(0, Of("PVSI"));
  EXPECT_EQ(0, Of("RMIN"));
  EXPECT_EQ(5000, Of("RMAX"));
  EXPECT_EQ(1, Of("SSCL"));
  EXPECT_EQ(0, Of("SECU"));
  EXPECT_EQ(0, OfAlarm("A1VL"));
}

TEST_F(ChannelInitialised, NothingElseChanges) {
  const std::set<std::string> set{"TYPE", "UNIT", "POIN", "FILT", "SCAL", "MMIN", "MMAX", "SMIN", "SMAX",
                                  "PVSI", "RMIN", "RMAX", "SSCL", "SECU", "A1VL", "A2VL", "A3VL", "A4VL"};
  ChannelInit(Channel, 20);
  for (const char* section : {"C", "A"}) {
    for (const ParamNumRecord& record : RecordsOf(section, Channel)) {
      EXPECT_EQ(1234, record.ReadValue) << record.Tag << ": what the recorder said stays";
      if (!set.contains(record.Tag)) {
        EXPECT_EQ(4321, record.Value) << record.Tag;
      }
    }
  }
}

TEST_F(ChannelInitialised, TheNeighboursStayAsTheyAre) {
  const ParamStoreTable before = ParamStore;
  ChannelInit(Channel, 20);
  for (const char* section : {"C", "A"}) {
    for (const int neighbour : {Channel - 1, Channel + 1}) {
      const auto& was = before[gFFindSection(section)].Items[static_cast<std::size_t>(neighbour)].NumRecords;
      for (std::size_t i = 0; i < was.size(); ++i) {
        EXPECT_EQ(was[i].Value, RecordsOf(section, neighbour)[i].Value) << was[i].Tag;
      }
    }
  }
}

TEST_F(ChannelInitialised, AKindOutsideTheTableChangesNothing) {
  for (const int kind : {-1, 42, 32767, -32768, 70000}) {
    ChannelInit(Channel, kind);
    for (const ParamNumRecord& record : RecordsOf("C", Channel)) {
      EXPECT_EQ(4321, record.Value) << record.Tag << " kind " << kind;
    }
  }
}

TEST_F(ChannelInitialised, AChannelOutsideTheStoreIsPassedOver) {
  const ParamStoreTable before = ParamStore;
  ChannelInit(-1, 20);
  ChannelInit(30, 20);
  ChannelInit(2147483647, 20);
  const StoreIndex section = gFFindSection("C");
  for (std::size_t item = 0; item < before[section].Items.size(); ++item) {
    for (std::size_t i = 0; i < before[section].Items[item].NumRecords.size(); ++i) {
      ASSERT_EQ(before[section].Items[item].NumRecords[i].Value,
                ParamStore[section].Items[item].NumRecords[i].Value);
    }
  }
}

TEST_F(ChannelInitialised, TagsThatTheModelDoesNotHaveAreSkipped) {
  std::erase_if(RecordsOf("C", Channel),
                [](const ParamNumRecord& record) { return record.Tag == "POIN" || record.Tag == "SECU"; });
  RecordsOf("A", Channel).clear();
  ChannelInit(Channel, 20);
  EXPECT_EQ(20, Of("TYPE"));
  EXPECT_EQ(5000, Of("RMAX"));
}

} // namespace
} // namespace loader::test
