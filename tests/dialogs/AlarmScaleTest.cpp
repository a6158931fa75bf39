// The scale of an alarm under the logarithm: its position, and the way from label to value and back.
#include <cmath>

#include "tests/dialogs/AlarmFixture.h"

namespace loader::test {
namespace {

using AlarmScale = AlarmSetting;

// The number behind a canonical text, without its point.
int Digits(std::string text, int position) {
  const std::size_t point = text.find('.');
  EXPECT_EQ(position == 0 ? std::string::npos : text.size() - static_cast<std::size_t>(position) - 1, point)
      << text;
  if (point != std::string::npos) {
    text.erase(point, 1);
  }
  return std::stoi(text);
}

TEST_F(AlarmScale, OfAMeasuringChannelStandsAtThePositionOfItsKind) {
  struct Row {
    int kind;
    std::u16string_view stMin, stMax;
    const char* value;
  };
  for (const Row& row : {Row{1, u"0.0", u"400.0", "200.0"},
                         {22, u"-90.0", u"110.0", "10.0"},
                         {30, u"10.00", u"50.00", "30.00"},
                         {31, u"100.0", u"500.0", "300.0"},
                         {32, u"1.000", u"5.000", "3.000"},
                         {33, u"1.000", u"5.000", "3.000"},
                         {34, u"1.00", u"5.00", "3.00"},
                         {0, u"1", u"5", "3"},
                         {13, u"1", u"5", "3"},    // no such kind
                         {99, u"1", u"5", "3"}}) { // nor this
    for (const int poin : {0, 1, 4}) {
      caller.cmbInputType = row.kind;
      caller.cmbDecimal = poin;
      caller.cmbInputOtch = 5; // matters to kind 40 alone
      Put("C", 5, "TYPE", 1);
      Scale(row.stMin, row.stMax, u"0", u"2");
      Stands(1, u"1.00E0", u"");
      EXPECT_TRUE(Enter(u"1.00", 1)) << row.kind;
      EXPECT_EQ(row.value, Value()) << row.kind;
      EXPECT_EQ("1.00E1", Label()) << row.kind;
    }
  }
}

TEST_F(AlarmScale, OfAReferenceStandsAtThePositionOfTheOther) {
  struct Row {
    int other;
    int kind;
    int poin;
    int position;
  };
  Put("C", 3, "TYPE", 40);
  Put("C", 3, "POIN", 2);
  for (const Row& row : {Row{2, 32, 1, 3}, // another channel: its kind
                         {2, 30, 1, 2},
                         {0, 1, 3, 1},
                         {17, 34, 0, 2},    // the last measuring channel
                         {2, 40, 2, 0},     // that refers to a third one
                         {3, 40, 2, 0},     // itself
                         {18, 32, 4, 4},    // an operation channel: its POIN
                         {29, 1, 1, 1},     //
                         {18, 32, 9, 0},    // which does not exist
                         {-1, 32, 1, 0},    // nothing is selected
                         {30, 32, 1, 0}}) { // no such channel
    if (row.other >= 0 && row.other < 30) {
      Put("C", row.other, "TYPE", row.kind);
      Put("C", row.other, "POIN", row.poin);
    }
    ReferTo(row.other);
    caller.cmbDecimal = 3;
    EXPECT_EQ(row.position, AlarmPosition(caller)) << row.other;
  }
}

TEST_F(AlarmScale, OfAReferenceIsStoredOnIt) {
  Put("C", 2, "TYPE", KindVolts);
  ReferTo(2);
  EXPECT_TRUE(Enter(u"1.00", 1));
  EXPECT_EQ("3.000", Value());
  ReferTo(3);
  Scale(u"1", u"5", u"0", u"2");
  EXPECT_TRUE(Enter(u"1.00", 2));
  EXPECT_EQ("5", Value());
  Put("C", 18, "POIN", 2);
  ReferTo(18);
  Scale(u"1.00", u"5.00", u"0", u"2");
  EXPECT_TRUE(Enter(u"1.00", 1));
  EXPECT_EQ("3.00", Value());
}

TEST_F(AlarmScale, OfAnOperationChannelStandsAtItsOwnPosition) {
  caller.measuringChannel = false;
  caller.cmbInputType = 40; // means nothing there
  caller.cmbInputOtch = 2;
  Put("C", 2, "TYPE", KindVolts);
  struct Row {
    int poin;
    std::u16string_view stMin, stMax;
    const char* value;
  };
  for (const Row& row : {Row{0, u"100", u"500", "500"},
                         {1, u"10.0", u"50.0", "50.0"},
                         {2, u"1.00", u"5.00", "5.00"},
                         {3, u"0.100", u"0.500", "0.500"},
                         {4, u"0.0100", u"0.0500", "0.0500"},
                         {-1, u"100", u"500", "500"},
                         {5, u"100", u"500", "500"}}) {
    caller.cmbDecimal = row.poin;
    Scale(row.stMin, row.stMax, u"0", u"2");
    Stands(1, u"1.00E0", u"");
    EXPECT_TRUE(Enter(u"1.00", 2)) << row.poin;
    EXPECT_EQ(row.value, Value()) << row.poin;
  }
}

TEST_F(AlarmScale, OfEqualExponentsHasTheOneValue) {
  Scale(u"1.000", u"5.000", u"2", u"2");
  for (const int exponent : {-9, 0, 1, 9}) {
    Stands(1, u"5.00E5", u"");
    EXPECT_TRUE(Enter(u"1.00", exponent));
    EXPECT_EQ("1.000", Value()) << exponent;
    EXPECT_EQ("1.00E2", Label()) << exponent;
  }
}

TEST_F(AlarmScale, OfEqualLimitsHasTheOneValue) {
  Scale(u"5.000", u"5.000", u"0", u"2");
  EXPECT_TRUE(Enter(u"7.00", 7));
  EXPECT_EQ("5.000", Value());
  EXPECT_EQ("1.00E0", Label());
}

// Every value that can be entered, worked out here by the common logarithm of the library.
TEST_F(AlarmScale, StoresTheNearestNumberOfEveryValueThatCanBeEntered) {
  for (int exponent = -5; exponent <= 7; ++exponent) {
    for (int hundredths = 100; hundredths <= 999; hundredths += 7) {
      const double exact = 1000 + (std::log10(static_cast<double>(hundredths)) - 2 + exponent) * 4000 / 2;
      Stands(1, u"1.00E0", u"");
      EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) {
        Enter(screen, FromUtf8(std::to_string(hundredths / 100.0)), exponent);
      }));
      ASSERT_LE(std::abs(Digits(Value(), 3) - exact), 0.5 + 1e-6) << hundredths << "E" << exponent;
    }
  }
}

// A label cuts the mantissa behind two digits, so it stands for all values from its own up to the next one's,
// a hundredth further: at most log10(1.01) of a decade, and half a number of the scale by the rounding.
TEST_F(AlarmScale, WhatALabelGivesBackIsNoFurtherThanItsDigits) {
  struct Row {
    int kind, position;
    int stMin, stMax, indMin, indMax;
  };
  for (const Row& row : {Row{32, 3, 1000, 5000, 0, 2},
                         {32, 3, 5000, 1000, 0, 2},
                         {32, 3, 1000, 5000, 2, 0},
                         {31, 1, 0, 5000, -9, 9},
                         {30, 2, -1000, 5500, -3, 4},
                         {1, 1, -2300, 14000, 1, 9},
                         {40, 0, -32767, 32767, -9, 9},
                         {40, 0, 0, 10, 0, 1}}) {
    SCOPED_TRACE(row.stMax);
    ReferTo(3);
    caller.cmbInputType = row.kind;
    const auto text = [&](int stored) { return StoredToText(stored, row.position, -32768, 32767); };
    Scale(text(row.stMin), text(row.stMax), DecimalText(row.indMin), DecimalText(row.indMax));
    const int span = row.stMax - row.stMin;
    const int exponents = row.indMax - row.indMin;
    const double perDecade = static_cast<double>(span) / exponents;
    for (int stored = -32767; stored <= 32767; stored += 53) {
      const double power = (stored - row.stMin) / perDecade + row.indMin;
      if (power < -9 || power > 9) {
        continue; // the label says no more than that
      }
      const std::u16string label = LogValueText(stored, row.stMin, row.stMax, row.indMin, row.indMax);
      Stands(1, label, u"");
      EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) { EXPECT_TRUE(user.Click(screen.btnOk)); }));
      const int back = Digits(Value(), row.position);
      const double lost = (stored - back) / perDecade; // in decades
      const double rounding = 0.5 / std::abs(perDecade) + 1e-9;
      ASSERT_GE(lost, -rounding) << stored;
      ASSERT_LE(lost, std::log10(1.01) + rounding) << stored;
      EXPECT_EQ(ToUtf8(LogValueText(back, row.stMin, row.stMax, row.indMin, row.indMax)), Label());
      // And with its value beside it, the label stands for that value and no other.
      const Texts before = All();
      EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) { EXPECT_TRUE(user.Click(screen.btnOk)); }));
      ASSERT_EQ(before, All()) << stored;
    }
  }
}

} // namespace
} // namespace loader::test
