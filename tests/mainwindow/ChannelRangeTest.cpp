// The range values and the alarm values of a channel row: limits and positions, the logarithm.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

// Columns of fgrCh.
constexpr int MeasuringMin = 9;
constexpr int MeasuringMax = 10;
constexpr int EngineeringMin = 11;
constexpr int EngineeringMax = 12;
constexpr int RecordMin = 16;
constexpr int RecordMax = 17;

struct RangeValue {
  const char* name;
  // Of the channel.
  int type;
  int unit;
  int scaling;
  int point;
  int value;
  const char* measuring;
  const char* engineering;
  const char* record;
};
void PrintTo(const RangeValue& row, std::ostream* out) {
  *out << row.name << " " << row.value;
}
class RangeCell : public MainWindow, public testing::WithParamInterface<RangeValue> {
protected:
  void SetUp() override {
    Open("KOV");
    Put("C", 4, "TYPE", GetParam().type);
    Put("C", 4, "UNIT", GetParam().unit);
    Put("C", 4, "SCAL", GetParam().scaling);
    Put("C", 4, "POIN", GetParam().point);
    for (const char* tag : {"MMIN", "MMAX", "SMIN", "SMAX", "RMIN", "RMAX"}) {
      PutLimits("C", 4, tag, -20000, 20000);
      Put("C", 4, tag, GetParam().value);
    }
    FillChannelRow(5);
  }
};
TEST_P(RangeCell, OfTheMeasuringRangeHasTheLimitsAndThePositionOfTheKind) {
  EXPECT_EQ(GetParam().measuring, ChannelCell(5, MeasuringMin));
  EXPECT_EQ(GetParam().measuring, ChannelCell(5, MeasuringMax));
}
TEST_P(RangeCell, OfTheEngineeringValueFollowsTheScaling) {
  EXPECT_EQ(GetParam().engineering, ChannelCell(5, EngineeringMin));
  EXPECT_EQ(GetParam().engineering, ChannelCell(5, EngineeringMax));
}
TEST_P(RangeCell, OfTheRecordRangeFollowsTheScaling) {
  EXPECT_EQ(GetParam().record, ChannelCell(5, RecordMin));
  EXPECT_EQ(GetParam().record, ChannelCell(5, RecordMax));
}
const auto NameOfRange = [](const auto& tested) { return std::string(tested.param.name); };

// Every kind without scaling shows the value at its own position within its own limits.
INSTANTIATE_TEST_SUITE_P(
    KindsAtTheirUpperLimit, RangeCell,
    testing::Values(RangeValue{"Skipped", 0, 0, 0, 2, 0, "0", "0", "0"},
                    RangeValue{"K", 1, 0, 0, 2, 14000, "1400.0", "1400.0", "1400.0"},
                    RangeValue{"E", 2, 0, 0, 2, 8300, "830.0", "830.0", "830.0"},
                    RangeValue{"J", 3, 0, 0, 2, 11300, "1130.0", "1130.0", "1130.0"},
                    RangeValue{"T", 4, 0, 0, 2, 4300, "430.0", "430.0", "430.0"},
                    RangeValue{"R", 5, 0, 0, 2, 17900, "1790.0", "1790.0", "1790.0"},
                    RangeValue{"S", 6, 0, 0, 2, 17900, "1790.0", "1790.0", "1790.0"},
                    RangeValue{"B", 7, 0, 0, 2, 17900, "1790.0", "1790.0", "1790.0"},
                    RangeValue{"N", 8, 0, 0, 2, 13300, "1330.0", "1330.0", "1330.0"},
                    RangeValue{"W", 9, 0, 0, 2, 17900, "1790.0", "1790.0", "1790.0"},
                    RangeValue{"L", 10, 0, 0, 2, 9300, "930.0", "930.0", "930.0"},
                    RangeValue{"U", 11, 0, 0, 2, 4300, "430.0", "430.0", "430.0"},
                    RangeValue{"PN", 12, 0, 0, 2, 13300, "1330.0", "1330.0", "1330.0"},
                    RangeValue{"Pt100", 20, 0, 0, 2, 6300, "630.0", "630.0", "630.0"},
                    RangeValue{"JPt100", 21, 0, 0, 2, 6300, "630.0", "630.0", "630.0"},
                    RangeValue{"Nameless22", 22, 0, 0, 2, 2100, "210.0", "210.0", "210.0"},
                    RangeValue{"Nameless23", 23, 0, 0, 2, 6300, "630.0", "630.0", "630.0"},
                    RangeValue{"Nameless24", 24, 0, 0, 2, 2300, "230.0", "230.0", "230.0"},
                    RangeValue{"Millivolt50", 30, 114, 0, 1, 5500, "55.00", "55.00", "55.00"},
                    RangeValue{"Millivolt500", 31, 114, 0, 2, 5500, "550.0", "550.0", "550.0"},
                    RangeValue{"Volt1To5", 32, 115, 0, 2, 5500, "5.500", "5.500", "5.500"},
                    RangeValue{"Volt0To5", 33, 115, 0, 2, 5500, "5.500", "5.500", "5.500"},
                    RangeValue{"Nameless34", 34, 115, 0, 3, 5500, "55.00", "55.00", "55.00"},
                    RangeValue{"Nameless35", 35, 0, 0, 3, 32767, "3276.7", "3276.7", "3276.7"}),
    NameOfRange);

INSTANTIATE_TEST_SUITE_P(
    LimitsAreInclusive, RangeCell,
    testing::Values(RangeValue{"AboveSkipped", 0, 0, 0, 0, 1, "", "", ""},
                    RangeValue{"BelowSkipped", 0, 0, 0, 0, -1, "", "", ""},
                    RangeValue{"AboveK", 1, 0, 0, 1, 14001, "", "", ""},
                    RangeValue{"LowestK", 1, 0, 0, 1, -2300, "-230.0", "-230.0", "-230.0"},
                    RangeValue{"BelowK", 1, 0, 0, 1, -2301, "", "", ""},
                    RangeValue{"LowestVolt", 32, 115, 0, 1, 500, "0.500", "0.500", "0.500"},
                    RangeValue{"BelowVolt", 32, 115, 0, 1, 499, "", "", ""},
                    RangeValue{"UnknownKind", 41, 0, 0, 1, 1, "", "", ""},
                    RangeValue{"KindAboveTheTable", 42, 0, 0, 1, 1, "", "", ""},
                    RangeValue{"NegativeKind", -1, 0, 0, 1, 1, "", "", ""}),
    NameOfRange);

// Any unit but the first on a temperature kind selects Fahrenheit.
INSTANTIATE_TEST_SUITE_P(
    Fahrenheit, RangeCell,
    testing::Values(RangeValue{"HighestOfUnit1", 1, 1, 0, 2, 25520, "2552.0", "2552.0", "2552.0"},
                    RangeValue{"AboveUnit1", 1, 1, 0, 2, 25521, "", "", ""},
                    RangeValue{"LowestOfUnit1", 1, 1, 0, 2, -3820, "-382.0", "-382.0", "-382.0"},
                    RangeValue{"LowestOfUnit114", 1, 114, 0, 2, -3820, "-382.0", "-382.0", "-382.0"}),
    NameOfRange);

// Scaling: the measuring range stays the kind's. From kind 30 up the record limits the other values.
INSTANTIATE_TEST_SUITE_P(
    Scaling, RangeCell,
    testing::Values(RangeValue{"InBoth", 30, 114, 1, 1, 5500, "55.00", "550.0", "550.0"},
                    RangeValue{"BeyondTheKind", 30, 114, 1, 1, 5501, "", "550.1", "550.1"},
                    RangeValue{"HighestOfTheRecord", 30, 114, 1, 3, 20000, "", "20.000", "20.000"},
                    RangeValue{"AboveTheRecord", 30, 114, 1, 3, 20001, "", "", ""},
                    RangeValue{"LowestOfTheRecord", 30, 114, 1, 4, -20000, "", "-2.0000", "-2.0000"},
                    RangeValue{"BelowTheRecord", 30, 114, 1, 4, -20001, "", "", ""},
                    RangeValue{"ThermocoupleStaysLimitedByItsKind", 1, 0, 1, 2, 14001, "", "", ""},
                    RangeValue{"ThermocoupleTakesTheChosenPosition", 1, 0, 1, 2, 14000, "1400.0", "140.00",
                               "140.00"},
                    RangeValue{"SkippedTakesTheRecord", 0, 0, 1, 1, 77, "", "7.7", "7.7"},
                    RangeValue{"AnyScalingButOff", 30, 114, 2, 1, 5501, "", "550.1", "550.1"}),
    NameOfRange);

// --- A channel that takes its input from another one

class OtherChannelCell : public RugWindow {
protected:
  void Refer(int item, int other) {
    Put("C", item, "TYPE", 40);
    Put("C", item, "OTCH", other);
    Put("C", item, "SCAL", 0);
    Put("C", item, "POIN", 2);
  }
  std::string MeasuringText(int item, int value) {
    Put("C", item, "MMIN", value);
    Put("C", item, "MMAX", value);
    FillChannelRow(item + 1);
    EXPECT_EQ(ChannelCell(item + 1, MeasuringMin), ChannelCell(item + 1, MeasuringMax));
    return ChannelCell(item + 1, MeasuringMin);
  }
};

TEST_F(OtherChannelCell, MeasuresInTheLimitsOfItsPartnersKind) {
  Refer(2, 5);
  Put("C", 5, "TYPE", 32);
  EXPECT_EQ("0.500", MeasuringText(2, 500));
  EXPECT_EQ("", MeasuringText(2, 499));
  EXPECT_EQ("5.500", MeasuringText(2, 5500));
  EXPECT_EQ("", MeasuringText(2, 5501));
}

TEST_F(OtherChannelCell, MeasuresInTheTemperatureUnitOfItsPartner) {
  Refer(2, 5);
  Put("C", 5, "TYPE", 1);
  Put("C", 5, "UNIT", 1);
  EXPECT_EQ("-382.0", MeasuringText(2, -3820));
  Put("C", 5, "UNIT", 0);
  EXPECT_EQ("", MeasuringText(2, -3820));
}

TEST_F(OtherChannelCell, MeasuresWithoutLimitsOverAnotherReference) {
  Refer(2, 5);
  Put("C", 5, "TYPE", 40);
  EXPECT_EQ("-32767", MeasuringText(2, -32767));
  EXPECT_EQ("32767", MeasuringText(2, 32767));
  EXPECT_EQ("", MeasuringText(2, -32768));
}

TEST_F(OtherChannelCell, IgnoresAReferenceToItself) {
  Refer(2, 2);
  EXPECT_EQ("-32767", MeasuringText(2, -32767));
  EXPECT_EQ("32767", MeasuringText(2, 32767));
}

TEST_F(OtherChannelCell, IgnoresAReferenceToItselfFromTheNineteenthOnToo) {
  Refer(20, 20);
  Put("C", 20, "SMIN", 100);
  Put("C", 20, "SMAX", 2000);
  EXPECT_EQ("-32767", MeasuringText(20, -32767));
  EXPECT_EQ("32767", MeasuringText(20, 32767));
}

TEST_F(OtherChannelCell, SurvivesAReferenceOutsideTheChannels) {
  for (const int other : {-32768, -1, 72, 32767}) {
    Refer(2, other);
    EXPECT_EQ("123", MeasuringText(2, 123)) << other;
  }
}

// From item 18 on the partner's engineering range supplies the limits.
TEST_F(OtherChannelCell, FromTheNineteenthOnMeasuresInThePartnersEngineeringRange) {
  Refer(18, 5);
  Put("C", 5, "TYPE", 32);
  Put("C", 5, "POIN", 2);
  Put("C", 5, "SMIN", 100);
  Put("C", 5, "SMAX", 2000);
  EXPECT_EQ("1.00", MeasuringText(18, 100));
  EXPECT_EQ("", MeasuringText(18, 99));
  EXPECT_EQ("20.00", MeasuringText(18, 2000));
  EXPECT_EQ("", MeasuringText(18, 2001));
}

TEST_F(OtherChannelCell, UpToTheEighteenthMeasuresInThePartnersKind) {
  Refer(17, 5);
  Put("C", 5, "TYPE", 32);
  Put("C", 5, "SMIN", 100);
  Put("C", 5, "SMAX", 2000);
  EXPECT_EQ("", MeasuringText(17, 100));
  EXPECT_EQ("5.500", MeasuringText(17, 5500));
}

TEST_F(OtherChannelCell, HasEngineeringAndRecordRangeInItsRecordsLimitsAtItsPosition) {
  Refer(2, 5);
  Put("C", 5, "TYPE", 32);
  for (const char* tag : {"SMIN", "SMAX", "RMIN", "RMAX"}) {
    PutLimits("C", 2, tag, -300, 300);
    Put("C", 2, tag, 300);
  }
  FillChannelRow(3);
  for (const int column : {EngineeringMin, EngineeringMax, RecordMin, RecordMax}) {
    EXPECT_EQ("3.00", ChannelCell(3, column)) << column;
  }
  for (const char* tag : {"SMIN", "SMAX", "RMIN", "RMAX"}) {
    Put("C", 2, tag, 301);
  }
  FillChannelRow(3);
  for (const int column : {EngineeringMin, EngineeringMax, RecordMin, RecordMax}) {
    EXPECT_EQ("", ChannelCell(3, column)) << column;
  }
}

// --- The F value

TEST_F(KovWindow, RecordRangeStandsAtTheFValuesPosition) {
  Put("C", 0, "TYPE", 30);
  Put("C", 0, "FTIO", 1);
  Put("H", 0, "FPOI", 3);
  for (const char* tag : {"MMIN", "SMIN", "SMAX", "RMIN", "RMAX"}) {
    Put("C", 0, tag, 1234);
  }
  FillChannelRow(1);
  EXPECT_EQ("1.234", ChannelCell(1, RecordMin));
  EXPECT_EQ("1.234", ChannelCell(1, RecordMax));
  EXPECT_EQ("12.34", ChannelCell(1, MeasuringMin));
  EXPECT_EQ("12.34", ChannelCell(1, EngineeringMin));
  EXPECT_EQ("12.34", ChannelCell(1, EngineeringMax));
}

// --- The logarithm

class LogCell : public KovWindow {
protected:
  void SetUp() override {
    KovWindow::SetUp();
    Put("C", 0, "TYPE", 30);
    Put("C", 0, "SCAL", 1);
    Put("C", 0, "TAIS", 1);
    Put("C", 0, "POIN", 2);
  }
  void PutRanges(int value) {
    for (const char* tag : {"SMIN", "SMAX", "RMIN", "RMAX"}) {
      Put("C", 0, tag, value);
    }
    FillChannelRow(1);
  }
};

TEST_F(LogCell, ShowsTheEngineeringRangeAsWholeExponents) {
  for (const int exponent : {-9, -1, 0, 3, 9}) {
    PutRanges(exponent);
    EXPECT_EQ(std::to_string(exponent), ChannelCell(1, EngineeringMin));
    EXPECT_EQ(std::to_string(exponent), ChannelCell(1, EngineeringMax));
  }
}

TEST_F(LogCell, ShowsTheRecordRangeAsPowersOfTen) {
  for (const int exponent : {-9, -1, 0, 3, 9}) {
    PutRanges(exponent);
    EXPECT_EQ("1.00E" + std::to_string(exponent), ChannelCell(1, RecordMin));
    EXPECT_EQ("1.00E" + std::to_string(exponent), ChannelCell(1, RecordMax));
  }
}

TEST_F(LogCell, ShowsNoExponentOutsideMinusNineToNine) {
  for (const int exponent : {-10, 10, 5000}) {
    PutRanges(exponent);
    for (const int column : {EngineeringMin, EngineeringMax, RecordMin, RecordMax}) {
      EXPECT_EQ("", ChannelCell(1, column)) << exponent << " " << column;
    }
  }
}

TEST_F(LogCell, HoldsForAnotherChannelsInputToo) {
  Put("C", 0, "TYPE", 40);
  Put("C", 0, "SCAL", 0);
  PutRanges(4);
  EXPECT_EQ("4", ChannelCell(1, EngineeringMin));
  EXPECT_EQ("1.00E4", ChannelCell(1, RecordMax));
}

// Only a file of hand or a recorder brings the two together.
TEST_F(LogCell, IsTakenByTheRecordRangeAloneWhereTheKindLimitsTheChannel) {
  Put("C", 0, "TYPE", 1); // K thermocouple, position 1
  Put("C", 0, "SCAL", 0);
  PutRanges(5);
  EXPECT_EQ("0.5", ChannelCell(1, EngineeringMax));
  EXPECT_EQ("1.00E5", ChannelCell(1, RecordMax));
}

TEST_F(LogCell, IsNoMatterOfTheFValuesPosition) {
  Put("C", 0, "FTIO", 1);
  Put("H", 0, "FPOI", 4);
  PutRanges(4);
  EXPECT_EQ("4", ChannelCell(1, EngineeringMin));
  EXPECT_EQ("1.00E4", ChannelCell(1, RecordMin));
}

TEST_F(LogCell, LeavesTheMeasuringRangeAsItIs) {
  Put("C", 0, "MMIN", 0);
  Put("C", 0, "MMAX", 5000);
  FillChannelRow(1);
  EXPECT_EQ("0.00", ChannelCell(1, MeasuringMin));
  EXPECT_EQ("50.00", ChannelCell(1, MeasuringMax));
}

TEST_F(LogCell, IsOnAtOneOnly) {
  for (const int other : {0, 2, -1}) {
    Put("C", 0, "TAIS", other);
    PutRanges(123);
    EXPECT_EQ("1.23", ChannelCell(1, EngineeringMin)) << other;
    EXPECT_EQ("1.23", ChannelCell(1, RecordMin)) << other;
  }
}

// --- Alarm values

struct AlarmColumn {
  const char* tag;
  int column;
};
void PrintTo(const AlarmColumn& row, std::ostream* out) {
  *out << row.tag;
}
class AlarmCell : public MainWindow, public testing::WithParamInterface<AlarmColumn> {
protected:
  void SetUp() override { Open("KOV"); }
  std::string Shown(int value) {
    Put("A", 0, GetParam().tag, value);
    FillChannelRow(1);
    return ChannelCell(1, GetParam().column);
  }
};
INSTANTIATE_TEST_SUITE_P(All, AlarmCell,
                         testing::Values(AlarmColumn{"A1VL", 40}, AlarmColumn{"A2VL", 44},
                                         AlarmColumn{"A3VL", 48}, AlarmColumn{"A4VL", 52}),
                         [](const auto& tested) { return std::string(tested.param.tag); });

TEST_P(AlarmCell, StandsAtTheRowsPositionAndNotAtTheKinds) {
  Put("C", 0, "TYPE", 30); // position 2
  Put("C", 0, "POIN", 1);
  EXPECT_EQ("10.0", Shown(100));
  Put("C", 0, "POIN", 3);
  EXPECT_EQ("0.100", Shown(100));
}

TEST_P(AlarmCell, StandsAtTheFValuesPosition) {
  Put("C", 0, "FTIO", 1);
  Put("C", 0, "POIN", 1);
  Put("H", 0, "FPOI", 3);
  EXPECT_EQ("0.100", Shown(100));
}

TEST_P(AlarmCell, HasTheLimitsOfTheKind) {
  Put("C", 0, "TYPE", 1);
  Put("C", 0, "POIN", 1);
  EXPECT_EQ("1400.0", Shown(14000));
  EXPECT_EQ("", Shown(14001));
  EXPECT_EQ("-230.0", Shown(-2300));
  EXPECT_EQ("", Shown(-2301));
  Put("C", 0, "UNIT", 1);
  EXPECT_EQ("2552.0", Shown(25520));
}

TEST_P(AlarmCell, HasTheLimitsOfItsRecordUnderScaling) {
  Put("C", 0, "TYPE", 30);
  Put("C", 0, "SCAL", 1);
  Put("C", 0, "POIN", 0);
  PutLimits("A", 0, GetParam().tag, -6000, 6000);
  EXPECT_EQ("6000", Shown(6000));
  EXPECT_EQ("", Shown(6001));
  EXPECT_EQ("-6000", Shown(-6000));
  EXPECT_EQ("", Shown(-6001));
}

TEST_P(AlarmCell, IsAPowerOfTenUnderTheLogarithm) {
  Put("C", 0, "TYPE", 30);
  Put("C", 0, "SCAL", 1);
  Put("C", 0, "TAIS", 1);
  Put("C", 0, "MMIN", 0);
  Put("C", 0, "MMAX", 5000);
  Put("C", 0, "SMIN", 0);
  Put("C", 0, "SMAX", 5);
  EXPECT_EQ("3.16E2", Shown(2500));
  EXPECT_EQ("1.00E0", Shown(0));
  EXPECT_EQ("1.00E5", Shown(5000));
  Put("C", 0, "SMIN", -5);
  EXPECT_EQ("3.16E-3", Shown(1250));
}

TEST_P(AlarmCell, IsTheLowerExponentOverAMeasuringRangeOfNoWidth) {
  Put("C", 0, "TAIS", 1);
  Put("C", 0, "MMIN", 700);
  Put("C", 0, "MMAX", 700);
  Put("C", 0, "SMIN", -4);
  Put("C", 0, "SMAX", 5);
  EXPECT_EQ("1.00E-4", Shown(9999));
}

} // namespace
} // namespace loader::test
