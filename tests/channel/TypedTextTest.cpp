// Typed texts as stored values: the numeric test, the cut, the limits, and hostile texts.
#include <cmath>
#include <string>

#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

class TypedText : public ChannelRules {
protected:
  static constexpr std::int16_t Before = 4711;
  // What is stored for `typed`; nothing when it was refused.
  std::optional<int> Store(std::u16string_view typed, int position, int minimum = -32767,
                           int maximum = 32767) {
    text = typed;
    std::int16_t stored = Before;
    if (!TextToStored(text, stored, minimum, maximum, position)) {
      EXPECT_EQ(Before, stored) << "a failure has changed the value";
      return std::nullopt;
    }
    return stored;
  }
  std::u16string text; // as Store leaves it
};

TEST_F(TypedText, PlainNumbersAreStoredAtThePosition) {
  EXPECT_EQ(7, Store(u"7", 0));
  EXPECT_EQ(70, Store(u"7", 1));
  EXPECT_EQ(-230, Store(u"-2.30", 2));
  EXPECT_EQ(5, Store(u"0.005", 3));
  EXPECT_EQ(32767, Store(u"3.2767", 4));
  EXPECT_EQ(-32767, Store(u"-3.2767", 4));
}

TEST_F(TypedText, ExcessDigitsAreCutAndNotRounded) {
  EXPECT_EQ(199, Store(u"1.999", 2));
  EXPECT_EQ(u"1.99", text);
  EXPECT_EQ(-199, Store(u"-1.999", 2));
  EXPECT_EQ(u"-1.99", text);
}

TEST_F(TypedText, TheNoiseOfTheProductIsRoundedAway) {
  EXPECT_EQ(11, Store(u"1.1", 1));
  EXPECT_EQ(110, Store(u"1.10", 2));
  EXPECT_EQ(1005, Store(u"1.005", 3));
}

TEST_F(TypedText, AtPositionZeroThePointGoesToo) {
  EXPECT_EQ(12, Store(u"12.9", 0));
  EXPECT_EQ(u"12", text);
}

TEST_F(TypedText, FewerDigitsThanThePositionStayAsTheyAre) {
  EXPECT_EQ(150, Store(u"1.5", 2));
  EXPECT_EQ(u"1.5", text);
}

TEST_F(TypedText, TheCutIsBlindToAnExponent) {
  EXPECT_EQ(15, Store(u"1.5e3", 1));
  EXPECT_EQ(u"1.5", text);
}

TEST_F(TypedText, AnExponentWithoutAPointCounts) {
  EXPECT_EQ(1500, Store(u"15e2", 0));
  EXPECT_EQ(1500, Store(u"15E+2", 0));
  EXPECT_EQ(15, Store(u"150e-1", 0));
}

TEST_F(TypedText, AnExponentThatTheCutLeavesWholeCounts) {
  EXPECT_EQ(15000, Store(u"1.5e1", 3));
  EXPECT_EQ(u"1.5e1", text);
}

TEST_F(TypedText, TiesRoundToTheEvenInteger) {
  EXPECT_EQ(2, Store(u"25e-1", 0));
  EXPECT_EQ(4, Store(u"35e-1", 0));
  EXPECT_EQ(-2, Store(u"-25e-1", 0));
  EXPECT_EQ(0, Store(u"5e-1", 0));
}

TEST_F(TypedText, BlanksAndASignAreAccepted) {
  EXPECT_EQ(15, Store(u"  1.5  ", 1));
  EXPECT_EQ(15, Store(u"+1.5", 1));
  EXPECT_EQ(-15, Store(u"  -1.5", 1));
  EXPECT_EQ(5, Store(u".5", 1));
  EXPECT_EQ(10, Store(u"1.", 1));
}

TEST_F(TypedText, EmptyTextIsRefusedAsNotNumericAndNotForItsRange) {
  ExpectNotNumeric();
  EXPECT_EQ(std::nullopt, Store(u"", 1, 5, 9));
}

TEST_F(TypedText, TextsThatAreNoNumberAreRefused) {
  for (const char16_t* typed :
       {u" ",        u"-",      u"+",   u".",   u"-.",  u"e5",  u".e5", u"1e",  u"1e+",
        u"1e5.5",    u"1.2.3",  u"--1", u"+-1", u"- 1", u"1 2", u"1-",  u"1,5", u"1,000",
        u"0x10",     u"&H10",   u"1d3", u"1f",  u"abc", u"nan", u"NaN", u"inf", u"-inf",
        u"Infinity", u"１２ｍ", u"1\t", u"\t1", u"　1", u"¥1",  u"ー1"}) {
    SCOPED_TRACE(ToUtf8(typed));
    ExpectNotNumeric();
    EXPECT_EQ(std::nullopt, Store(typed, 1));
    platform.boxes.ExpectNoneLeft();
  }
}

TEST_F(TypedText, ATextWithANulIsRefused) {
  ExpectNotNumeric();
  EXPECT_EQ(std::nullopt, Store(std::u16string_view(u"1\0", 2), 0));
}

TEST_F(TypedText, BothLimitsAreInclusive) {
  EXPECT_EQ(-2300, Store(u"-230.0", 1, -2300, 14000));
  EXPECT_EQ(14000, Store(u"1400.0", 1, -2300, 14000));
}

TEST_F(TypedText, TheRangeMessageNamesTheLimitsInTheFieldsOwnPosition) {
  ExpectRangeMessage(u"-230.0", u"1400.0");
  EXPECT_EQ(std::nullopt, Store(u"1400.1", 1, -2300, 14000));
  ExpectRangeMessage(u"-230.0", u"1400.0");
  EXPECT_EQ(std::nullopt, Store(u"-230.1", 1, -2300, 14000));
  ExpectRangeMessage(u"0.50", u"55.00");
  EXPECT_EQ(std::nullopt, Store(u"0.49", 2, 50, 5500));
  ExpectRangeMessage(u"-9", u"9");
  EXPECT_EQ(std::nullopt, Store(u"10", 0, -9, 9));
}

TEST_F(TypedText, TheMessageIsAPlainBoxWithAnOkButtonAndTheDefaultTitle) {
  ExpectNotNumeric();
  ExpectRangeMessage(u"0", u"9");
  Store(u"x", 0);
  Store(u"10", 0, 0, 9);
  for (const ScriptedBoxes::Shown& box : platform.boxes.shown) {
    EXPECT_EQ(BoxButtons::Ok, box.buttons);
    EXPECT_EQ(BoxIcon::None, box.icon);
    EXPECT_EQ(u"", box.title);
  }
}

TEST_F(TypedText, TheTextIsCutEvenWhenTheRangeIsMissed) {
  ExpectRangeMessage(u"0.0", u"1.0");
  EXPECT_EQ(std::nullopt, Store(u"12.345", 1, 0, 10));
  EXPECT_EQ(u"12.3", text);
}

TEST_F(TypedText, DigitsThatTheCutDropsCannotMissTheRange) {
  EXPECT_EQ(14000, Store(u"1400.09", 1, -2300, 14000));
}

// A number that cannot be computed fails without a message.
TEST_F(TypedText, AProductBeyond32BitsFailsWithoutAWord) {
  EXPECT_EQ(std::nullopt, Store(u"2147483648", 0));
  EXPECT_EQ(std::nullopt, Store(u"-2147483649", 0));
  EXPECT_EQ(std::nullopt, Store(u"214749", 4));
  EXPECT_EQ(std::nullopt, Store(u"1e10", 0));
}

TEST_F(TypedText, TheLargestProductOf32BitsStillGetsTheRangeMessage) {
  ExpectRangeMessage(u"-32767", u"32767");
  EXPECT_EQ(std::nullopt, Store(u"2147483647", 0));
  ExpectRangeMessage(u"-32767", u"32767");
  EXPECT_EQ(std::nullopt, Store(u"-2147483648", 0));
}

TEST_F(TypedText, NumbersBeyondDoubleFailWithoutAWord) {
  EXPECT_EQ(std::nullopt, Store(u"1e999", 0));
  EXPECT_EQ(std::nullopt, Store(u"-1e999", 0));
  EXPECT_EQ(std::nullopt, Store(u"1e99999999999999999999999", 0));
  EXPECT_EQ(std::nullopt, Store(std::u16string(10000, u'9'), 0));
  EXPECT_EQ(std::nullopt, Store(u"1" + std::u16string(10000, u'0'), 4));
}

TEST_F(TypedText, NumbersTooSmallForDoubleAreZero) {
  EXPECT_EQ(0, Store(u"1e-999", 0));
  EXPECT_EQ(0, Store(u"1e-99999999999999999999999", 0));
  EXPECT_EQ(0, Store(u"0e999", 0));
  EXPECT_EQ(0, Store(std::u16string(10000, u'0'), 0));
  EXPECT_EQ(0, Store(u"0." + std::u16string(10000, u'0') + u"1", 4));
  EXPECT_EQ(1, Store(std::u16string(10000, u'0') + u"1", 0));
}

TEST_F(TypedText, WhatTheCutLeavesUnreadableFailsWithoutAWord) {
  EXPECT_EQ(std::nullopt, Store(u".5", 0));
  EXPECT_EQ(u"", text);
  EXPECT_EQ(std::nullopt, Store(u"-.5", 0));
  EXPECT_EQ(u"-", text);
  EXPECT_EQ(std::nullopt, Store(u"1.5e3", 2));
  EXPECT_EQ(u"1.5e", text);
}

TEST_F(TypedText, AValueWiderThan16BitsIsNeverStoredWhateverTheLimits) {
  EXPECT_EQ(32767, Store(u"32767", 0, -100000, 100000));
  EXPECT_EQ(std::nullopt, Store(u"32768", 0, -100000, 100000));
  EXPECT_EQ(-32768, Store(u"-32768", 0, -100000, 100000));
  EXPECT_EQ(std::nullopt, Store(u"-32769", 0, -100000, 100000));
}

TEST_F(TypedText, APositionAboveFourScalesNothing) {
  EXPECT_EQ(12, Store(u"12", 5));
}

TEST_F(TypedText, TheNumericTestTellsTooLargeFromTooSmall) {
  EXPECT_TRUE(std::isinf(NumericText(u"1e400").value()));
  EXPECT_LT(NumericText(u"-1e400").value(), 0.0);
  EXPECT_EQ(0.0, NumericText(u"1e-400").value());
  // A long row of digits against an exponent that takes it back.
  EXPECT_EQ(0.0, NumericText(std::u16string(500, u'1') + u"e-2000").value());
  EXPECT_TRUE(std::isinf(NumericText(u"0." + std::u16string(500, u'0') + u"1e2000").value()));
  EXPECT_EQ(1.0, NumericText(u"1" + std::u16string(500, u'0') + u"e-500").value());
}

// --- as typed under a Japanese input method

TEST_F(TypedText, FullWidthDigitsSignsAndPointAreThoseOfANumber) {
  EXPECT_EQ(125, Store(u"１２．５", 1));
  EXPECT_EQ(u"12.5", text);
  EXPECT_EQ(-125, Store(u"－１２．５", 1));
  EXPECT_EQ(-125, Store(u"\u2212１２．５", 1)); // the minus of other input methods
  EXPECT_EQ(u"-12.5", text);
  EXPECT_EQ(7, Store(u"＋７", 0));
  EXPECT_EQ(1234567890, NumericText(u"１２３４５６７８９０"));
  EXPECT_EQ(125, Store(u" １2．5 ", 1)) << "half-width among them, and blanks around";
}

TEST_F(TypedText, AFullWidthNumberIsCutBehindItsPosition) {
  EXPECT_EQ(199, Store(u"１．９９９", 2));
  EXPECT_EQ(u"1.99", text);
}

TEST_F(TypedText, WhatIsNoNumberInFullWidthIsRefusedAndKept) {
  for (const std::u16string_view typed : {u"ー１２", u"１２。５", u"１，０", u"１２ｍ", u"一", u"②", u"－",
                                          u"．", u"１Ｅ２", u"１\u3000", u"\uFF0F", u"\uFF1A"}) {
    platform.ExpectBox(62200);
    EXPECT_EQ(std::nullopt, Store(typed, 1));
    EXPECT_EQ(typed, text);
    EXPECT_EQ(typed, HalfWidthNumber(typed));
  }
}

TEST_F(TypedText, OutOfItsLimitsAFullWidthNumberHasTheSameMessage) {
  platform.boxes.Expect(u"0から10の値を入力してください");
  EXPECT_EQ(std::nullopt, Store(u"１１", 0, 0, 10));
}

TEST_F(TypedText, HalfWidthNumberKeepsTheDigitsThatWereTyped) {
  EXPECT_EQ(u"007", HalfWidthNumber(u"００７"));
  EXPECT_EQ(u"-0.50", HalfWidthNumber(u"－０．５０"));
  EXPECT_EQ(u"１号機", HalfWidthNumber(u"１号機"));
}

} // namespace
} // namespace loader::test
