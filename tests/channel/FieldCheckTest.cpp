// The checks of a field that is left: numbers, tags, the channel number, and the guard between them.
#include <string>

#include "core/modMain.h"
#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

class FieldCheck : public ChannelRules {
protected:
  bool Check(int position = 2, int minimum = -1000, int maximum = 1000) {
    return CheckValueField(position, minimum, maximum, screen.field);
  }
  void ExpectUntouched(const TextField& field) {
    EXPECT_EQ(nullptr, field.screen.focusRequest);
    EXPECT_FALSE(field.selectionPending);
  }
  void ExpectSelected(const TextField& field, int start, int length) {
    EXPECT_EQ(&field, field.screen.focusRequest);
    EXPECT_TRUE(field.selectionPending);
    EXPECT_EQ(start, field.selStart);
    EXPECT_EQ(length, field.selLength);
  }
  FieldScreen screen;
};

TEST_F(FieldCheck, AGoodNumberTakesItsCanonicalForm) {
  screen.field.text = u"5";
  EXPECT_TRUE(Check());
  EXPECT_EQ(u"5.00", screen.field.text);
  ExpectUntouched(screen.field);
}

TEST_F(FieldCheck, AtPositionZeroTheDigitsBehindThePointAreGoneAfterwards) {
  screen.field.text = u"12.9";
  EXPECT_TRUE(Check(0));
  EXPECT_EQ(u"12", screen.field.text);
}

TEST_F(FieldCheck, TheYearKeepsWhatWasTyped) {
  FieldScreen clock("txtYear");
  clock.field.text = u" 07";
  EXPECT_TRUE(CheckValueField(0, 0, 99, clock.field));
  EXPECT_EQ(u" 07", clock.field.text);
}

TEST_F(FieldCheck, TheYearIsCheckedLikeAnyOther) {
  FieldScreen clock("txtYear");
  clock.field.text = u"100";
  ExpectRangeMessage(u"0", u"99");
  EXPECT_FALSE(CheckValueField(0, 0, 99, clock.field));
}

TEST_F(FieldCheck, AFailedFieldTakesTheFocusBackWithItsWholeTextSelected) {
  screen.field.text = u"12.345";
  ExpectRangeMessage(u"-10.00", u"10.00");
  EXPECT_FALSE(Check());
  EXPECT_EQ(u"12.345", screen.field.text);
  ExpectSelected(screen.field, 0, 6);
}

TEST_F(FieldCheck, ADisabledFieldThatFailsLeavesTheFocusWhereItIs) {
  screen.field.text = u"12.345";
  screen.field.enabled = false;
  ExpectRangeMessage(u"-10.00", u"10.00");
  EXPECT_FALSE(Check());
  ExpectUntouched(screen.field);
}

TEST_F(FieldCheck, AnEmptyFieldIsRefusedAsNotNumeric) {
  ExpectNotNumeric();
  EXPECT_FALSE(Check());
  ExpectSelected(screen.field, 0, 0);
}

TEST_F(FieldCheck, ANumberThatCannotBeComputedTakesTheFocusBackWithoutAWord) {
  screen.field.text = u"1e999";
  EXPECT_FALSE(Check());
  ExpectSelected(screen.field, 0, 5);
}

TEST_F(FieldCheck, AFailureAloneDoesNotStartTheGuard) {
  screen.field.text = u"x";
  ExpectNotNumeric();
  EXPECT_FALSE(Check());
  EXPECT_FALSE(WaitTimer2.Enabled);
}

TEST_F(FieldCheck, WhileTheGuardIsOnNothingIsCheckedNorSaid) {
  screen.field.text = u"x";
  WaitChk();
  EXPECT_FALSE(Check());
  EXPECT_EQ(u"x", screen.field.text);
  ExpectUntouched(screen.field);
}

TEST_F(FieldCheck, WhileTheGuardIsOnAGoodFieldIsRefusedToo) {
  screen.field.text = u"5";
  WaitChk();
  EXPECT_FALSE(Check());
  EXPECT_EQ(u"5", screen.field.text);
}

TEST_F(FieldCheck, TheGuardEndsAfterAHundredMilliseconds) {
  WaitChk();
  EXPECT_EQ(100, WaitTimer2.Interval);
  platform.time.Advance(99);
  EXPECT_TRUE(WaitTimer2.Enabled);
  EXPECT_EQ(0, WaitTimer2Count);
  platform.time.Advance(1);
  EXPECT_FALSE(WaitTimer2.Enabled);
  EXPECT_EQ(2, WaitTimer2Count);
}

TEST_F(FieldCheck, TheGuardFiresOnce) {
  WaitChk();
  platform.time.Advance(1000);
  EXPECT_EQ(1, platform.time.eventsRun);
}

TEST_F(FieldCheck, StartedAfterItHasFiredTheGuardCountsFromZero) {
  WaitChk();
  platform.time.Advance(100);
  WaitChk();
  EXPECT_EQ(0, WaitTimer2Count);
}

TEST_F(FieldCheck, StartedAgainTheGuardRunsItsWholeTimeAnew) {
  WaitChk();
  platform.time.Advance(60);
  WaitChk();
  platform.time.Advance(99);
  EXPECT_TRUE(WaitTimer2.Enabled);
  platform.time.Advance(1);
  EXPECT_FALSE(WaitTimer2.Enabled);
}

TEST_F(FieldCheck, AfterTheGuardFieldsAreCheckedAgain) {
  screen.field.text = u"5";
  WaitChk();
  platform.time.Advance(100);
  EXPECT_TRUE(Check());
  EXPECT_EQ(u"5.00", screen.field.text);
}

// Two wrong fields, left one after the other as the focus moves back: the user sees one message.
TEST_F(FieldCheck, OfTwoWrongFieldsOnlyTheFirstReports) {
  struct TwoFields : Screen {
    TwoFields() : Screen("frmSample") {}
    TextField txtStMin{*this, "txtStMin"};
    TextField txtStMax{*this, "txtStMax"};
  } two;
  for (TextField* field : {&two.txtStMin, &two.txtStMax}) {
    field->text = u"wrong";
    field->onLostFocus = [field] {
      if (!CheckValueField(1, 0, 100, *field)) {
        WaitChk();
      }
    };
  }
  ExpectNotNumeric();
  two.txtStMin.onLostFocus();
  two.txtStMax.onLostFocus();
  ExpectSelected(two.txtStMin, 0, 5);
  platform.time.Advance(100);
  ExpectNotNumeric();
  two.txtStMax.onLostFocus();
  ExpectSelected(two.txtStMax, 0, 5);
}

// --- Tags

constexpr int TagBytes = 16;

bool CheckTag(FieldScreen& screen) {
  return CheckTagField(screen.field, TagBytes, 62100, 62101);
}

TEST_F(FieldCheck, ATagMayFillItsLimit) {
  screen.field.text = u"0123456789ABCDEF";
  EXPECT_TRUE(CheckTag(screen));
  screen.field.text = u"温度温度温度温度"; // 8 full-width characters: 16 bytes
  EXPECT_TRUE(CheckTag(screen));
  screen.field.text = u"ﾁｬﾈﾙﾁｬﾈﾙﾁｬﾈﾙﾁｬﾈﾙ"; // half-width katakana: 1 byte each
  EXPECT_TRUE(CheckTag(screen));
  ExpectUntouched(screen.field);
}

TEST_F(FieldCheck, ATagBeyondItsLimitIsRefusedAndSelectedWhole) {
  screen.field.text = u"0123456789ABCDEFG";
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  EXPECT_FALSE(CheckTag(screen));
  ExpectSelected(screen.field, 0, 17);
}

TEST_F(FieldCheck, AFullWidthCharacterOfATagCountsTwice) {
  screen.field.text = u"温度温度温度温度1";
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  EXPECT_FALSE(CheckTag(screen));
  ExpectSelected(screen.field, 0, 9);
}

TEST_F(FieldCheck, ABlankAtTheEndOfATagIsMeasured) {
  screen.field.text = u"0123456789ABCDEF ";
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  EXPECT_FALSE(CheckTag(screen));
}

TEST_F(FieldCheck, ACommaInATagIsRefusedAndSelectedAlone) {
  screen.field.text = u"  温度,A,B ";
  platform.boxes.Expect(u"「,」は入力できません");
  EXPECT_FALSE(CheckTag(screen));
  ExpectSelected(screen.field, 4, 1);
}

TEST_F(FieldCheck, TheLengthOfATagIsTestedBeforeItsComma) {
  screen.field.text = u"0123456789ABCDEF,";
  platform.boxes.Expect(u"半角16文字以下で入力してください");
  EXPECT_FALSE(CheckTag(screen));
}

TEST_F(FieldCheck, AFullWidthCommaIsText) {
  screen.field.text = u"温度，A";
  EXPECT_TRUE(CheckTag(screen));
}

TEST_F(FieldCheck, AnEmptyTagIsGood) {
  EXPECT_TRUE(CheckTag(screen));
}

TEST_F(FieldCheck, AFailedTagDoesNotStartTheGuard) {
  screen.field.text = u",";
  platform.boxes.Expect(u"「,」は入力できません");
  EXPECT_FALSE(CheckTag(screen));
  EXPECT_FALSE(WaitTimer2.Enabled);
}

TEST_F(FieldCheck, EachTagFieldHasItsOwnTexts) {
  struct Texts {
    TextId tooLong;
    TextId forbidden;
  };
  for (const Texts& texts :
       {Texts{62100, 62101}, Texts{62107, 62108}, Texts{62400, 62401}, Texts{62408, 62409}}) {
    screen.field.text = u"123456789";
    platform.boxes.Expect(u"半角8文字以下で入力してください");
    EXPECT_FALSE(CheckTagField(screen.field, 8, texts.tooLong, texts.forbidden));
    screen.field.text = u"a,b";
    platform.boxes.Expect(u"「,」は入力できません");
    EXPECT_FALSE(CheckTagField(screen.field, 8, texts.tooLong, texts.forbidden));
    platform.boxes.ExpectNoneLeft();
  }
}

TEST_F(FieldCheck, TheLimitOfATagIsTheOneOfItsRecord) {
  StartWithModel(platform, "KOV");
  const ParamTextRecord* tag = FindTextRecord("C", 0, "TAG ");
  ASSERT_NE(nullptr, tag);
  screen.field.text = std::u16string(static_cast<std::size_t>(tag->ByteLength), u'x');
  EXPECT_TRUE(CheckTagField(screen.field, tag->ByteLength, 62100, 62101));
}

// --- The channel number

TEST_F(FieldCheck, AChannelNumberInRangeIsTaken) {
  for (const int number : {1, 9, 18}) {
    screen.field.text = DecimalText(number);
    EXPECT_EQ(number, CheckChannelNumber(screen.field, 18));
  }
  screen.field.text = u" 7 ";
  EXPECT_EQ(7, CheckChannelNumber(screen.field, 18));
  ExpectUntouched(screen.field);
}

TEST_F(FieldCheck, AChannelNumberThatIsNoNumberIsRefusedWithoutTheFocus) {
  for (const char16_t* typed : {u"", u"abc", u"1a", u"--1", u"nan"}) {
    screen.field.text = typed;
    platform.boxes.Expect(u"数字を入力してください");
    EXPECT_EQ(std::nullopt, CheckChannelNumber(screen.field, 18));
    ExpectUntouched(screen.field);
    platform.boxes.ExpectNoneLeft();
  }
}

TEST_F(FieldCheck, AChannelNumberOutOfRangeTakesTheFocusWithItsTextSelected) {
  for (const char16_t* typed : {u"0", u"19", u"-1", u"0.9", u"18.1", u"1e999", u"99999999999"}) {
    SCOPED_TRACE(ToUtf8(typed));
    screen.field.text = typed;
    platform.boxes.Expect(u"1～18の範囲で入力してください");
    EXPECT_EQ(std::nullopt, CheckChannelNumber(screen.field, 18));
    ExpectSelected(screen.field, 0, static_cast<int>(screen.field.text.size()));
    platform.boxes.ExpectNoneLeft();
  }
}

TEST_F(FieldCheck, TheChannelNumbersMessageNamesTheModelsCount) {
  screen.field.text = u"37";
  platform.boxes.Expect(u"1～36の範囲で入力してください");
  EXPECT_EQ(std::nullopt, CheckChannelNumber(screen.field, 36));
}

TEST_F(FieldCheck, AFractionalChannelNumberIsRoundedToAChannelThatExists) {
  screen.field.text = u"1.5";
  EXPECT_EQ(2, CheckChannelNumber(screen.field, 18));
  screen.field.text = u"17.6";
  EXPECT_EQ(18, CheckChannelNumber(screen.field, 18));
}

} // namespace
} // namespace loader::test
