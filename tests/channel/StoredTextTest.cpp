// Stored values as texts.
#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <locale>
#include <string>

#include "tests/channel/Fixture.h"
#include "tests/support/System.h"

namespace loader::test {
namespace {

using StoredText = ChannelRules;

constexpr int Lowest = -32767;
constexpr int Highest = 32767;

TEST_F(StoredText, ThePowerOfTenIsOneOutsidePositionsOneToFour) {
  EXPECT_EQ(1, ValuePow10(0));
  EXPECT_EQ(10, ValuePow10(1));
  EXPECT_EQ(100, ValuePow10(2));
  EXPECT_EQ(1000, ValuePow10(3));
  EXPECT_EQ(10000, ValuePow10(4));
  EXPECT_EQ(1, ValuePow10(5));
  EXPECT_EQ(1, ValuePow10(-1));
  EXPECT_EQ(1, ValuePow10(std::numeric_limits<int>::max()));
  EXPECT_EQ(1, ValuePow10(std::numeric_limits<int>::min()));
}

TEST_F(StoredText, ZerosAreEmptyForACountOfNoneOrLess) {
  EXPECT_EQ(u"", ZeroText(0));
  EXPECT_EQ(u"", ZeroText(-3));
  EXPECT_EQ(u"0", ZeroText(1));
  EXPECT_EQ(u"0000", ZeroText(4));
}

TEST_F(StoredText, TheMaskOfThePositionIsEmptyAtNoneOrLess) {
  EXPECT_EQ(u"", DecimalMask(0));
  EXPECT_EQ(u"", DecimalMask(-1));
  EXPECT_EQ(u".0", DecimalMask(1));
  EXPECT_EQ(u".0000", DecimalMask(4));
}

TEST_F(StoredText, HasExactlyPositionDigitsBehindThePoint) {
  EXPECT_EQ(u"1200.0", StoredToText(12000, 1, Lowest, Highest));
  EXPECT_EQ(u"-2.30", StoredToText(-230, 2, Lowest, Highest));
  EXPECT_EQ(u"0.005", StoredToText(5, 3, Lowest, Highest));
  EXPECT_EQ(u"7", StoredToText(7, 0, Lowest, Highest));
  EXPECT_EQ(u"-0.5", StoredToText(-5, 1, Lowest, Highest));
  EXPECT_EQ(u"0.0000", StoredToText(0, 4, Lowest, Highest));
  EXPECT_EQ(u"3.2767", StoredToText(32767, 4, Lowest, Highest));
}

TEST_F(StoredText, AValueAtALimitIsShownAndOneStepBeyondIsBlank) {
  EXPECT_EQ(u"-230.0", StoredToText(-2300, 1, -2300, 14000));
  EXPECT_EQ(u"", StoredToText(-2301, 1, -2300, 14000));
  EXPECT_EQ(u"1400.0", StoredToText(14000, 1, -2300, 14000));
  EXPECT_EQ(u"", StoredToText(14001, 1, -2300, 14000));
}

TEST_F(StoredText, IsBlankWhereTheLimitsAreTheWrongWayRound) {
  EXPECT_EQ(u"", StoredToText(5, 0, 10, 0));
}

TEST_F(StoredText, APositionAboveFourScalesNothing) {
  EXPECT_EQ(u"12.00000", StoredToText(12, 5, Lowest, Highest));
}

TEST_F(StoredText, ANegativePositionIsNone) {
  EXPECT_EQ(u"12", StoredToText(12, -1, Lowest, Highest));
}

TEST_F(StoredText, HoldsTheWholeRangeOf32BitValues) {
  constexpr int Min = std::numeric_limits<int>::min();
  constexpr int Max = std::numeric_limits<int>::max();
  EXPECT_EQ(u"-2147483648", StoredToText(Min, 0, Min, Max));
  EXPECT_EQ(u"-214748.3648", StoredToText(Min, 4, Min, Max));
  EXPECT_EQ(u"2147483.647", StoredToText(Max, 3, Min, Max));
}

// The rule as it is told: divided in double precision, printed with a fixed count of digits.
TEST_F(StoredText, IsTheQuotientInFixedPointForEveryValueAndPosition) {
  for (int position = 0; position <= 4; ++position) {
    for (int value = Lowest; value <= Highest; ++value) {
      char expected[32];
      std::snprintf(expected, sizeof expected, "%.*f", position, double{1} * value / ValuePow10(position));
      ASSERT_EQ(expected, Narrow(StoredToText(value, position, Lowest, Highest)));
    }
  }
}

TEST_F(StoredText, TypedBackGivesTheSameValueForEveryValueAndPosition) {
  for (int position = 0; position <= 4; ++position) {
    for (int value = Lowest; value <= Highest; ++value) {
      const std::u16string shown = StoredToText(value, position, Lowest, Highest);
      std::u16string text = shown;
      std::int16_t stored = 0;
      ASSERT_TRUE(TextToStored(text, stored, Lowest, Highest, position)) << Narrow(shown);
      ASSERT_EQ(value, stored) << Narrow(shown);
      ASSERT_EQ(shown, text);
    }
  }
}

TEST_F(StoredText, TypedBackGivesTheSameValueWithinNarrowLimits) {
  for (int position = 0; position <= 4; ++position) {
    for (const int minimum : {-2300, -1, 0, 500, 3700}) {
      const int maximum = minimum + 700;
      for (int value = minimum - 3; value <= maximum + 3; ++value) {
        std::u16string text = StoredToText(value, position, minimum, maximum);
        const bool inside = value >= minimum && value <= maximum;
        ASSERT_EQ(inside, !text.empty());
        std::int16_t stored = 0;
        if (inside) {
          ASSERT_TRUE(TextToStored(text, stored, minimum, maximum, position));
          ASSERT_EQ(value, stored);
        }
      }
    }
  }
}

// --- Independence of the locale

struct CommaPoint : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

void ExpectPointForms() {
  EXPECT_EQ(u"1200.0", StoredToText(12000, 1, Lowest, Highest));
  std::u16string text = u"1200.5";
  std::int16_t stored = 0;
  EXPECT_TRUE(TextToStored(text, stored, Lowest, Highest, 1));
  EXPECT_EQ(12005, stored);
  EXPECT_EQ(u"3.16E2", LogValueText(50, 0, 100, 0, 5));
  EXPECT_FALSE(NumericText(u"1,5").has_value());
}

TEST_F(StoredText, AStandardLocaleWithADecimalCommaChangesNothing) {
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
  ExpectPointForms();
  std::locale::global(before);
}

// The name of a locale of the C library with a decimal comma; made for the test where the machine has none.
std::string CommaLocale(const std::filesystem::path& folder) {
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "German_Germany.1252"}) {
    if (std::setlocale(LC_NUMERIC, name) != nullptr) {
      return name;
    }
  }
  const std::filesystem::path made = folder / "locale";
  std::filesystem::create_directories(made);
  const std::string command =
      "localedef -i de_DE -f UTF-8 '" + (made / "de_DE.UTF-8").string() + "' >/dev/null 2>&1";
  if (std::system(command.c_str()) != 0) {
    return {};
  }
  SetEnvironment("LOCPATH", made.string());
  return std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr ? "de_DE.UTF-8" : "";
}

TEST_F(StoredText, ALocaleOfTheSystemWithADecimalCommaChangesNothing) {
  if (CommaLocale(platform.folder).empty()) {
    GTEST_SKIP() << "this machine has no locale with a decimal comma and cannot make one";
  }
  char proof[8];
  std::snprintf(proof, sizeof proof, "%.1f", 1.5);
  EXPECT_STREQ("1,5", proof);
  ExpectPointForms();
  std::setlocale(LC_NUMERIC, "C");
  RemoveEnvironment("LOCPATH");
}

} // namespace
} // namespace loader::test
