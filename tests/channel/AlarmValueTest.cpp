// Alarm values under the logarithm, and the field check with its guard.
#include <cmath>
#include <limits>

#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

using AlarmValue = ChannelRules;

TEST_F(AlarmValue, Log10IsTheCommonLogarithm) {
  EXPECT_DOUBLE_EQ(0.0, Log10(1.0));
  EXPECT_DOUBLE_EQ(1.0, Log10(10.0));
  EXPECT_DOUBLE_EQ(3.0, Log10(1000.0));
  EXPECT_DOUBLE_EQ(-9.0, Log10(1e-9));
  EXPECT_DOUBLE_EQ(0.5, Log10(std::sqrt(10.0)));
  EXPECT_DOUBLE_EQ(std::log10(9.99), Log10(9.99));
}

TEST_F(AlarmValue, IsInterpolatedBetweenTheExponents) {
  EXPECT_EQ(500, AlarmValueToStored(1.0, 1, 0, 1000, 0, 2));
  EXPECT_EQ(0, AlarmValueToStored(1.0, 0, 0, 1000, 0, 2));
  EXPECT_EQ(1000, AlarmValueToStored(1.0, 2, 0, 1000, 0, 2));
  EXPECT_EQ(3000, AlarmValueToStored(1.0, 1, 1000, 5000, 0, 2));
  EXPECT_EQ(3000, AlarmValueToStored(1.0, 1, 5000, 1000, 0, 2)); // limits the other way round
  EXPECT_EQ(2000, AlarmValueToStored(1.0, 1, 0, 3000, 3, 0));    // exponents the other way round
  EXPECT_EQ(250, AlarmValueToStored(std::sqrt(10.0), 0, 0, 1000, 0, 2));
}

TEST_F(AlarmValue, GoesOnBeyondItsScale) {
  EXPECT_EQ(-500, AlarmValueToStored(1.0, -1, 0, 1000, 0, 2));
  EXPECT_EQ(4500, AlarmValueToStored(1.0, 9, 0, 1000, 0, 2));
}

TEST_F(AlarmValue, IsRoundedToTheNearestAndOfTwoToTheEven) {
  EXPECT_EQ(0, AlarmValueToStored(1.0, 1, 0, 1, 0, 2));   // 0.5
  EXPECT_EQ(2, AlarmValueToStored(1.0, 1, 0, 3, 0, 2));   // 1.5
  EXPECT_EQ(2, AlarmValueToStored(1.0, 1, 0, 5, 0, 2));   // 2.5
  EXPECT_EQ(-2, AlarmValueToStored(1.0, 1, 0, -3, 0, 2)); // -1.5
  EXPECT_EQ(301, AlarmValueToStored(2.0, 0, 0, 1000, 0, 1));
  EXPECT_EQ(699, AlarmValueToStored(5.0, 0, 0, 1000, 0, 1));
}

TEST_F(AlarmValue, OfEqualExponentsIsTheStoredMinimum) {
  for (const int exponent : {-9, 0, 9}) {
    EXPECT_EQ(123, AlarmValueToStored(5.0, exponent, 123, 4000, 2, 2));
    EXPECT_EQ(-32767, AlarmValueToStored(5.0, exponent, -32768, 4000, 2, 2));
    EXPECT_EQ(std::nullopt, AlarmValueToStored(5.0, exponent, 32768, 4000, 2, 2));
  }
}

TEST_F(AlarmValue, SixteenBitsAreTheEnd) {
  EXPECT_EQ(32767, AlarmValueToStored(1.0, 1, 0, 32767, 0, 1));
  EXPECT_EQ(std::nullopt, AlarmValueToStored(1.0, 1, 0, 32768, 0, 1));
  EXPECT_EQ(-32767, AlarmValueToStored(1.0, 1, 0, -32767, 0, 1));
  EXPECT_EQ(-32767, AlarmValueToStored(1.0, 1, 0, -32768, 0, 1)); // -32768 is no value
  EXPECT_EQ(std::nullopt, AlarmValueToStored(1.0, 1, 0, -32769, 0, 1));
}

TEST_F(AlarmValue, OfNoNumberIsNone) {
  EXPECT_EQ(std::nullopt, AlarmValueToStored(0.0, 1, 0, 1000, 0, 1));
  EXPECT_EQ(std::nullopt, AlarmValueToStored(-1.0, 1, 0, 1000, 0, 1));
  EXPECT_EQ(std::nullopt, AlarmValueToStored(0.0, 1, 500, 500, 0, 1));
  EXPECT_EQ(std::nullopt, AlarmValueToStored(std::numeric_limits<double>::quiet_NaN(), 1, 0, 1000, 0, 1));
}

TEST_F(AlarmValue, ExtremeScalesAreNumbersStill) {
  constexpr int Min = std::numeric_limits<int>::min();
  constexpr int Max = std::numeric_limits<int>::max();
  EXPECT_EQ(2500, AlarmValueToStored(1.0, 0, 0, 5000, -2000000000, 2000000000));
  EXPECT_EQ(-32767, AlarmValueToStored(1.0, 0, -32768, 32767, 0, Max));
  EXPECT_EQ(-1, AlarmValueToStored(1.0, 0, Min, Max, Max, Min));
}

// --- The field check with its guard

class GuardedField : public ChannelRules {
protected:
  bool Check() {
    return CheckGuardedField(2, -1000, 1000, screen.field, [this](TextField& field) {
      EXPECT_EQ(&screen.field, &field);
      EXPECT_FALSE(WaitTimer2.Enabled); // before the guard starts
      ++refused;
    });
  }
  FieldScreen screen;
  int refused = 0;
};

TEST_F(GuardedField, AGoodFieldStartsNoGuard) {
  screen.field.text = u"5";
  EXPECT_TRUE(Check());
  EXPECT_EQ(u"5.00", screen.field.text);
  EXPECT_EQ(0, refused);
  EXPECT_FALSE(WaitTimer2.Enabled);
}

TEST_F(GuardedField, ARefusedFieldStartsTheGuard) {
  screen.field.text = u"10.01";
  ExpectRangeMessage(u"-10.00", u"10.00");
  EXPECT_FALSE(Check());
  EXPECT_EQ(1, refused);
  EXPECT_TRUE(WaitTimer2.Enabled);
  EXPECT_EQ(100, WaitTimer2.Interval);
  EXPECT_EQ(&screen.field, screen.focusRequest);
}

TEST_F(GuardedField, WhileTheGuardIsOnNothingIsSaidNorMovedAndItIsNotStartedAnew) {
  screen.field.text = u"x";
  WaitChk();
  platform.time.Advance(60);
  EXPECT_FALSE(Check());
  EXPECT_EQ(0, refused);
  EXPECT_EQ(nullptr, screen.focusRequest);
  platform.time.Advance(40);
  EXPECT_FALSE(WaitTimer2.Enabled);
}

TEST_F(GuardedField, NeedsNobodyToTell) {
  screen.field.text = u"x";
  ExpectNotNumeric();
  EXPECT_FALSE(CheckGuardedField(2, -1000, 1000, screen.field));
  EXPECT_TRUE(WaitTimer2.Enabled);
}

} // namespace
} // namespace loader::test
