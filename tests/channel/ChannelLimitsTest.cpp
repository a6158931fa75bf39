// Which limits and which position a channel's values have.
#include "channel/InputTypeRules.h"
#include "core/modMain.h"
#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

using ChannelLimits = ChannelRules;

const ParamNumRecord OwnRecord{.Tag = "SMIN", .MinValue = -123, .MaxValue = 456};
constexpr Limits OwnLimits{-123, 456};
constexpr Limits Exponents{-9, 9};

TEST_F(ChannelLimits, TheKindLimitsTemperatureKindsAlwaysAndOthersWithoutScaling) {
  for (int kind = -1; kind <= InputKinds; ++kind) {
    const bool temperature = kind >= 1 && kind <= 29;
    EXPECT_EQ(kind != 40, KindLimited(kind, false)) << kind;
    EXPECT_EQ(temperature, KindLimited(kind, true)) << kind;
  }
}

TEST_F(ChannelLimits, TheEngineeringLimitsOfAThermocoupleFollowItsUnit) {
  EXPECT_EQ((Limits{-2300, 14000}), EngineeringLimits({.kind = 1, .unit = 0}, OwnRecord));
  EXPECT_EQ((Limits{-3820, 25520}), EngineeringLimits({.kind = 1, .unit = 1}, OwnRecord));
  EXPECT_EQ((Limits{-3820, 25520}), EngineeringLimits({.kind = 1, .unit = 114}, OwnRecord));
}

TEST_F(ChannelLimits, ASkippedChannelWithoutScalingHasLimitsOfZero) {
  EXPECT_EQ((Limits{0, 0}), EngineeringLimits({.kind = 0}, OwnRecord));
  EXPECT_EQ((Limits{0, 0}), AlarmLimits({.kind = 0}, OwnRecord));
}

TEST_F(ChannelLimits, AVoltageTakesTheRecordsLimitsUnderScalingOnly) {
  EXPECT_EQ((Limits{500, 5500}), EngineeringLimits({.kind = 32, .unit = 115}, OwnRecord));
  EXPECT_EQ(OwnLimits, EngineeringLimits({.kind = 32, .unit = 115, .scalingOn = true}, OwnRecord));
}

TEST_F(ChannelLimits, AnotherChannelTakesTheRecordsLimitsAlways) {
  EXPECT_EQ(OwnLimits, EngineeringLimits({.kind = 40, .unit = 4}, OwnRecord));
  EXPECT_EQ(OwnLimits, EngineeringLimits({.kind = 40, .unit = 4, .scalingOn = true}, OwnRecord));
  EXPECT_EQ(OwnLimits, AlarmLimits({.kind = 40, .unit = 4}, OwnRecord));
}

TEST_F(ChannelLimits, TheLogarithmLimitsTheEngineeringValueToExponents) {
  EXPECT_EQ(Exponents,
            EngineeringLimits({.kind = 32, .unit = 115, .scalingOn = true, .logOn = true}, OwnRecord));
  EXPECT_EQ(Exponents, EngineeringLimits({.kind = 40, .unit = 4, .logOn = true}, OwnRecord));
}

TEST_F(ChannelLimits, TheLogarithmReplacesTheRecordsLimitsAndNotTheKinds) {
  EXPECT_EQ((Limits{-2300, 14000}),
            EngineeringLimits({.kind = 1, .unit = 0, .scalingOn = true, .logOn = true}, OwnRecord));
  EXPECT_EQ((Limits{500, 5500}), EngineeringLimits({.kind = 32, .unit = 115, .logOn = true}, OwnRecord));
}

TEST_F(ChannelLimits, AlarmsAndTheLowCutKeepTheirLimitsUnderLogarithm) {
  EXPECT_EQ(OwnLimits, AlarmLimits({.kind = 32, .unit = 115, .scalingOn = true, .logOn = true}, OwnRecord));
  EXPECT_EQ((Limits{-3820, 25520}), AlarmLimits({.kind = 1, .unit = 1}, OwnRecord));
}

TEST_F(ChannelLimits, AKindFromADamagedFileIsLimitedToZeroWithoutScaling) {
  EXPECT_EQ((Limits{0, 0}), EngineeringLimits({.kind = 99}, OwnRecord));
  EXPECT_EQ((Limits{0, 0}), EngineeringLimits({.kind = -5}, OwnRecord));
}

TEST_F(ChannelLimits, TheMeasuringRangeIsTheSameForEveryKindButAnotherChannel) {
  for (int kind = 0; kind < InputKinds; ++kind) {
    EXPECT_EQ(kind == 40 ? (Limits{-32767, 32767}) : (Limits{-1000, 5500}), MeasuringLimits(kind)) << kind;
  }
}

TEST_F(ChannelLimits, TheMeasuringPositionIsTheKindsOrThatOfTheChannelReferredTo) {
  EXPECT_EQ(1, MeasuringPoint(1, 32));
  EXPECT_EQ(2, MeasuringPoint(30, 32));
  EXPECT_EQ(3, MeasuringPoint(33, 1));
  EXPECT_EQ(3, MeasuringPoint(40, 32));
  EXPECT_EQ(1, MeasuringPoint(40, 1));
  EXPECT_EQ(0, MeasuringPoint(40, 40));
  EXPECT_EQ(0, MeasuringPoint(40, 99));
}

TEST_F(ChannelLimits, TheEngineeringPositionIsChosenUnderScalingAndForAnotherChannel) {
  EXPECT_EQ(1, EngineeringPoint(1, false, 4));
  EXPECT_EQ(3, EngineeringPoint(32, false, 4));
  EXPECT_EQ(4, EngineeringPoint(32, true, 4));
  EXPECT_EQ(4, EngineeringPoint(40, false, 4));
}

TEST_F(ChannelLimits, AKind40ChannelAcceptsWhatItsReferenceCanShow) {
  FieldScreen screen;
  const Limits limits = MeasuringLimits(KindOtherChannel);
  const int position = MeasuringPoint(KindOtherChannel, 1);
  screen.field.text = u"-3276.7";
  EXPECT_TRUE(CheckValueField(position, limits.minimum, limits.maximum, screen.field));
  screen.field.text = u"3276.8";
  ExpectRangeMessage(u"-3276.7", u"3276.7");
  EXPECT_FALSE(CheckValueField(position, limits.minimum, limits.maximum, screen.field));
}

TEST_F(ChannelLimits, UnderLogarithmTenIsRefusedAsAnExponent) {
  FieldScreen screen("txtIndMin");
  const Limits limits =
      EngineeringLimits({.kind = 33, .unit = 115, .scalingOn = true, .logOn = true}, OwnRecord);
  screen.field.text = u"10";
  ExpectRangeMessage(u"-9", u"9");
  EXPECT_FALSE(CheckValueField(0, limits.minimum, limits.maximum, screen.field));
}

TEST_F(ChannelLimits, TheStoredStateIsTakenFromTheStore) {
  StartWithModel(platform, "KOV");
  Put("C", 3, "TYPE", 33);
  Put("C", 3, "UNIT", 115);
  Put("C", 3, "SCAL", 1);
  Put("C", 3, "TAIS", 1);
  const ChannelState state = StoredChannelState(3);
  EXPECT_EQ(33, state.kind);
  EXPECT_EQ(115, state.unit);
  EXPECT_TRUE(state.scalingOn);
  EXPECT_TRUE(state.logOn);
}

TEST_F(ChannelLimits, AChannelOutsideTheStoreHasAStateOfZeros) {
  const ChannelState state = StoredChannelState(500);
  EXPECT_EQ(0, state.kind);
  EXPECT_EQ(0, state.unit);
  EXPECT_FALSE(state.scalingOn);
  EXPECT_FALSE(state.logOn);
}

} // namespace
} // namespace loader::test
