// The scientific text of a channel with a logarithmic scale.
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

using LogValue = ChannelRules;

// The text of the exponent r = hundredths / 100: a measuring range of 0 to 1800 over -9 to 9.
std::u16string AtExponent(int hundredths) {
  return LogValueText(hundredths + 900, 0, 1800, -9, 9);
}

TEST_F(LogValue, TheExponentIsRoundedDownAndTheMantissaHasThreeDigits) {
  EXPECT_EQ(u"3.16E2", AtExponent(250));
  EXPECT_EQ(u"3.16E-3", AtExponent(-250));
  EXPECT_EQ(u"1.00E0", AtExponent(0));
}

TEST_F(LogValue, TheMantissaIsCutAndNotRounded) {
  EXPECT_EQ(u"1.99E0", AtExponent(30)); // 1.9953
  EXPECT_EQ(u"9.77E0", AtExponent(99)); // 9.7724
}

TEST_F(LogValue, TheValueIsInterpolatedBetweenTheMeasuringLimits) {
  EXPECT_EQ(u"1.00E-2", LogValueText(1000, 1000, 5000, -2, 2));
  EXPECT_EQ(u"1.00E0", LogValueText(3000, 1000, 5000, -2, 2));
  EXPECT_EQ(u"1.00E2", LogValueText(5000, 1000, 5000, -2, 2));
  EXPECT_EQ(u"1.00E2", LogValueText(1000, 5000, 1000, -2, 2)); // limits the other way round
}

TEST_F(LogValue, EqualMeasuringLimitsGiveTheExponentMinimum) {
  EXPECT_EQ(u"1.00E-4", LogValueText(123, 500, 500, -4, 7));
  EXPECT_EQ(u"1.00E3", LogValueText(500, 500, 500, 3, 7));
}

TEST_F(LogValue, TheExponentIsNeverAboveNineNorBelowMinusNine) {
  EXPECT_EQ(u"1.00E9", LogValueText(5000, 0, 100, 0, 1));
  EXPECT_EQ(u"1.00E-9", LogValueText(-5000, 0, 100, 0, 1));
  EXPECT_EQ(u"1.00E9", LogValueText(0, 5, 5, 5000, 5000));
  EXPECT_EQ(u"1.00E-9", LogValueText(0, 5, 5, -5000, 5000));
}

TEST_F(LogValue, WholeExponentsAreExact) {
  for (int exponent = -9; exponent <= 9; ++exponent) {
    EXPECT_EQ("1.00E" + std::to_string(exponent), Narrow(AtExponent(exponent * 100)));
    // The same over a span that does not divide evenly.
    EXPECT_EQ("1.00E" + std::to_string(exponent), Narrow(LogValueText(exponent * 777, -6993, 6993, -9, 9)));
  }
}

bool HasTheForm(std::string_view text) {
  const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
  if (text.size() < 6 || text[0] < '1' || text[0] > '9' || text[1] != '.' || !isDigit(text[2]) ||
      !isDigit(text[3]) || text[4] != 'E') {
    return false;
  }
  const std::string_view exponent = text.substr(5);
  return (exponent.size() == 1 && isDigit(exponent[0])) ||
         (exponent.size() == 2 && exponent[0] == '-' && isDigit(exponent[1]) && exponent[1] != '0');
}

// One step below a whole exponent has to stay below it, and no mantissa may leave 1.00 to 9.99.
TEST_F(LogValue, NoRoundingNoiseLeavesTheForm) {
  for (const int span : {1, 3, 7, 10, 333, 5500, 32767, 65534}) {
    for (int exponents = 1; exponents <= 18; ++exponents) {
      for (int step = 0; step <= 2000; ++step) {
        const int value = static_cast<int>(static_cast<long>(span) * step / 2000);
        const std::string text = Narrow(LogValueText(value, 0, span, -9, exponents - 9));
        ASSERT_TRUE(HasTheForm(text)) << text;
      }
    }
  }
}

TEST_F(LogValue, GrowsWithTheValue) {
  double before = 0.0;
  for (int value = -32767; value <= 32767; ++value) {
    const double shown = std::stod(Narrow(LogValueText(value, -32767, 32767, -9, 9)));
    ASSERT_GE(shown, before) << value;
    before = shown;
  }
}

TEST_F(LogValue, ExtremeInputsStayInTheForm) {
  constexpr int Min = std::numeric_limits<int>::min();
  constexpr int Max = std::numeric_limits<int>::max();
  EXPECT_EQ(u"1.00E9", LogValueText(Max, Min, Max, Min, Max));
  EXPECT_EQ(u"1.00E-9", LogValueText(Min, Min, Max, Min, Max));
  EXPECT_EQ(u"1.00E9", LogValueText(Max, 0, 1, 0, Max));
}

} // namespace
} // namespace loader::test
