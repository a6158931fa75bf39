// The screen of the measuring channels: loading, moving, what is typed, the dialogs that open from it.
#include <array>
#include <gtest/gtest.h>

#include "channel/InputTypeRules.h"
#include "dialogs/frmSelectUnit.h"
#include "tests/channelscreens/Desk.h"

namespace loader::test {
namespace {

constexpr const char* NotANumber = "数字ではありません。";

// --- Loading and moving

TEST(ChSetting, ShowsTheChannelAsTheStoreHoldsIt) {
  Desk desk;
  desk.Open(2);
  EXPECT_EQ("3", ToUtf8(desk.screen->browsing.number.text));
  EXPECT_EQ("CH 03", desk.Shown("txtChannelTag"));
  EXPECT_EQ(1, desk.Row("cmbInputType"));
  EXPECT_EQ("0.0", desk.Shown("txtStMin"));
  EXPECT_EQ("500.0", desk.Shown("txtStMax"));
  EXPECT_EQ("500.0", desk.Shown("txtIndMax"));
  EXPECT_EQ("゜C", desk.Caption("lblSelUnit"));
  EXPECT_EQ("ﾁｬﾈﾙ3 = ﾁｬﾈﾙ3 - 設定ﾁｬﾈﾙ", desk.Caption("lblSUB"));
  EXPECT_EQ("ﾁｬﾈﾙ設定", ToUtf8(desk.screen->caption));
  EXPECT_EQ("適用", ToUtf8(desk.screen->browsing.apply.caption));
  EXPECT_EQ("終了", ToUtf8(desk.screen->browsing.close.caption));
}

TEST(ChSetting, NotesAndLogarithmGoByTheModel) {
  {
    Desk desk("KOV");
    desk.Open();
    EXPECT_EQ(ToUtf8(LoadText(18051)), desk.Caption("lblNote1"));
    EXPECT_EQ(ToUtf8(LoadText(18052)), desk.Caption("lblNote2"));
    for (const char* control : {"lblTaisu", "cmbTaisu", "lblSrin", "cmbSri"}) {
      EXPECT_TRUE(ControlNamed(*desk.screen, control).visible) << control;
    }
  }
  Desk desk("RUG");
  desk.Open();
  EXPECT_EQ(ToUtf8(LoadText(18208)), desk.Caption("lblNote1"));
  EXPECT_EQ(ToUtf8(LoadText(18209)), desk.Caption("lblNote2"));
  for (const char* control : {"lblTaisu", "cmbTaisu", "lblSrin", "cmbSri"}) {
    EXPECT_FALSE(ControlNamed(*desk.screen, control).visible) << control;
  }
}

TEST(ChSetting, MovesBetweenTheChannelsAndDropsWhatWasNotApplied) {
  Desk desk;
  desk.Open(0);
  BrowsingFrame& frame = desk.screen->browsing;
  const auto before = AllNumbers();
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  desk.user.Click(frame.btnPrev); // the first one again
  EXPECT_EQ(0, frame.entry);
  EXPECT_EQ("100", desk.Shown("txtPVSlope"));
  ASSERT_TRUE(desk.user.Type(frame.number, u"18"));
  ASSERT_TRUE(desk.user.Leave(frame.number));
  EXPECT_EQ(17, frame.entry);
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  desk.user.Click(frame.btnNext); // the last one again
  EXPECT_EQ(17, frame.entry);
  EXPECT_EQ("100", desk.Shown("txtPVSlope"));
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  desk.user.Click(frame.btnReset);
  EXPECT_EQ("100", desk.Shown("txtPVSlope"));
  desk.user.Click(frame.btnTop);
  EXPECT_EQ(0, frame.entry);
  EXPECT_EQ(before, AllNumbers());

  desk.ExpectMessage("1～18の範囲で入力してください");
  ASSERT_TRUE(desk.user.Type(frame.number, u"19"));
  EXPECT_FALSE(desk.user.Leave(frame.number));
  desk.ExpectMessage("数字を入力してください");
  ASSERT_TRUE(desk.user.Type(frame.number, u"x"));
  EXPECT_FALSE(desk.user.Leave(frame.number));
  EXPECT_EQ(0, frame.entry);
}

TEST(ChSetting, TheNumberThatNobodyEditedIsPassedThrough) {
  Desk desk;
  desk.Open(3);
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  ASSERT_TRUE(desk.user.MoveTo(desk.screen->browsing.number));
  ASSERT_TRUE(desk.user.MoveTo(desk.Text("txtInputFilter")));
  EXPECT_EQ("7", desk.Shown("txtPVSlope"));
}

TEST(ChSetting, AValueThatIsNoRowSelectsNoneAndStays) {
  Desk desk;
  desk.OpenWith({{"SEKI", 3}, {"STYP", 2}});
  EXPECT_EQ(-1, desk.Row("cmbSeki"));
  EXPECT_EQ(-1, desk.Row("cmbStyp"));
  ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(7, Stored("C", 0, "PVKA"));
  EXPECT_EQ(3, Stored("C", 0, "SEKI"));
  EXPECT_EQ(2, Stored("C", 0, "STYP"));
  ASSERT_TRUE(desk.Pick("cmbStyp", 3)); // yearly
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(3, Stored("C", 0, "STYP"));
}

TEST(ChSetting, AKindThatIsNotOfferedStaysInForce) {
  for (const int kind : {34, 22, 13, 41, -5, 1000, -32768, 32767}) {
    Desk desk;
    Put("C", 1, "TYPE", 20); // of the pair: in conflict with none of these but 34, 22
    desk.OpenWith({{"TYPE", kind}, {"SMIN", 0}, {"SMAX", 0}, {"RMIN", 0}, {"RMAX", 0}, {"POIN", 0}});
    EXPECT_EQ(-1, desk.Row("cmbInputType")) << kind;
    EXPECT_EQ(kind, desk.screen->InputType);
    if (kind == 34) {
      EXPECT_EQ("0.00", desk.Shown("txtIndMin"));
      EXPECT_TRUE(desk.Enabled("cmbScale"));
      // The pair is asked for with the kind in force.
      desk.platform.ExpectBox(62106, BoxAnswer::Cancel);
    }
    if (kind == 13) {
      desk.platform.ExpectBox(62105, BoxAnswer::Cancel);
    }
    if (kind == 22 || kind == 34 || kind == 13) {
      const auto before = AllNumbers();
      desk.Apply();
      EXPECT_EQ(kind == 22, desk.applied == 1);
      EXPECT_EQ(before, AllNumbers());
      continue;
    }
    ASSERT_TRUE(desk.Type("txtPVSlope", "7"));
    desk.Apply();
    EXPECT_EQ(7, Stored("C", 0, "PVKA")) << kind;
    EXPECT_EQ(kind, Stored("C", 0, "TYPE"));
  }
}

TEST(ChSetting, AKindOutOfTheListGivesWayToOneOfIt) {
  Desk desk;
  Put("C", 8, "TYPE", 34);
  desk.Open(8);
  ASSERT_TRUE(desk.PickKind(31));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(31, Stored("C", 8, "TYPE"));
  EXPECT_EQ(1, Stored("C", 8, "POIN"));
}

// --- What is typed

TEST(ChSetting, LimitsOfAThermocoupleGoByItsUnit) {
  Desk desk;
  desk.Open();
  desk.ExpectMessage("-230.0から1400.0の値を入力してください");
  EXPECT_FALSE(desk.Type("txtRecRangeMin", "-230.1"));
  desk.platform.time.Advance(100);
  ASSERT_TRUE(desk.Type("txtRecRangeMin", "-230"));
  EXPECT_EQ("-230.0", desk.Shown("txtRecRangeMin"));
  Put("C", 0, "UNIT", 1);
  desk.Open();
  desk.ExpectMessage("-382.0から2552.0の値を入力してください");
  EXPECT_FALSE(desk.Type("txtRecRangeMax", "2552.1"));
}

TEST(ChSetting, AnotherChannelsRangeStandsAtItsPosition) {
  Desk desk;
  Put("C", 5, "TYPE", 1);
  desk.OpenWith({{"TYPE", 40}, {"OTCH", 5}});
  EXPECT_TRUE(desk.Enabled("cmbInputOtch"));
  ASSERT_TRUE(desk.Type("txtStMin", "-3276.7"));
  ASSERT_TRUE(desk.Type("txtStMax", "3276.7"));
  desk.ExpectMessage("-3276.7から3276.7の値を入力してください");
  EXPECT_FALSE(desk.Type("txtStMax", "3276.8"));
  desk.platform.time.Advance(100);
  ASSERT_TRUE(desk.Type("txtStMax", "3276.7"));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(-32767, Stored("C", 0, "MMIN"));
  EXPECT_EQ(32767, Stored("C", 0, "MMAX"));
}

TEST(ChSetting, AReferenceToAnOperationChannelHasItsPosition) {
  Desk desk;
  Put("C", 20, "POIN", 3);
  Put("C", 20, "TYPE", 1); // means nothing there
  desk.OpenWith({{"TYPE", 40}, {"OTCH", 20}, {"MMIN", 1}, {"MMAX", 1234}});
  EXPECT_EQ("0.001", desk.Shown("txtStMin"));
  EXPECT_EQ("1.234", desk.Shown("txtStMax"));
  ASSERT_TRUE(desk.Pick("cmbInputOtch", 0)); // the channel itself
  EXPECT_EQ("1", desk.Shown("txtStMin"));
  EXPECT_EQ("1234", desk.Shown("txtStMax"));
}

TEST(ChSetting, ATextWithTooManyDigitsIsLeftByAnotherReference) {
  Desk desk;
  Put("C", 5, "TYPE", 32);
  desk.OpenWith({{"TYPE", 40}, {"OTCH", 4}});
  desk.Text("txtStMin").text = u"1.23456";
  desk.Text("txtStMax").text = u"";
  ASSERT_TRUE(desk.Pick("cmbInputOtch", 5));
  EXPECT_EQ("1.23456", desk.Shown("txtStMin"));
  EXPECT_EQ("", desk.Shown("txtStMax"));
  desk.Text("txtStMin").text = u"12.3"; // one digit: 123
  desk.Text("txtStMax").text = u"12";
  ASSERT_TRUE(desk.Pick("cmbInputOtch", 6));
  ASSERT_TRUE(desk.Pick("cmbInputOtch", 5));
  EXPECT_EQ("0.123", desk.Shown("txtStMin"));
  EXPECT_EQ("0.012", desk.Shown("txtStMax"));
}

TEST(ChSetting, ANewPositionMovesThePoint) {
  Desk desk;
  desk.OpenWith({{"TYPE", 40}, {"POIN", 2}, {"SMIN", 1234}});
  EXPECT_EQ("12.34", desk.Shown("txtIndMin"));
  ASSERT_TRUE(desk.Pick("cmbDecimal", 1));
  EXPECT_EQ("123.4", desk.Shown("txtIndMin"));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(1234, Stored("C", 0, "SMIN"));
  EXPECT_EQ(1, Stored("C", 0, "POIN"));
}

TEST(ChSetting, ACascadeStopsAtATextThatItCannotRead) {
  Desk desk;
  desk.OpenWith({{"TYPE", 40}, {"POIN", 2}});
  for (const char* field : {"txtIndMin", "txtIndMax", "txtPVShift", "txtSecu", "txtAlarmSet1"}) {
    desk.Text(field).text = u"12.34";
  }
  desk.Text("txtRecRangeMin").text = u"";
  desk.Text("txtRecRangeMax").text = u"x";
  desk.ExpectMessage(NotANumber);
  ASSERT_TRUE(desk.Pick("cmbDecimal", 1));
  for (const char* field : {"txtIndMin", "txtIndMax", "txtPVShift"}) {
    EXPECT_EQ("123.4", desk.Shown(field)) << field;
  }
  EXPECT_EQ("", desk.Shown("txtRecRangeMin"));
  EXPECT_EQ("x", desk.Shown("txtRecRangeMax"));
  EXPECT_EQ("12.34", desk.Shown("txtSecu"));
  EXPECT_EQ("12.34", desk.Shown("txtAlarmSet1"));
}

TEST(ChSetting, TagsAreMeasuredInBytesAndTakeNoComma) {
  Desk desk;
  desk.Open();
  for (const char* field : {"txtChannelTag", "txtChannelTag2", "txtSekiTag"}) {
    desk.ExpectMessage("半角16文字以下で入力してください");
    EXPECT_FALSE(desk.Type(field, "ＡＢＣＤＥＦＧＨ9"));
    desk.ExpectMessage("「,」は入力できません");
    EXPECT_FALSE(desk.Type(field, "a,b"));
    EXPECT_EQ(1, desk.Text(field).selStart);
    EXPECT_EQ(1, desk.Text(field).selLength);
    EXPECT_TRUE(desk.Type(field, "ＡＢＣＤＥＦＧＨ"));
  }
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ("ＡＢＣＤＥＦＧＨ", TrimmedText("C", 0, "STAG"));
}

TEST(ChSetting, TheLowCutOfTheFValueIsReadWhateverTheKind) {
  Desk desk;
  Put("H", 0, "FPOI", 1);
  Put("C", 8, "TYPE", 1);
  Put("C", 8, "SECU", 2);
  desk.Open(8);
  ASSERT_TRUE(desk.PickKind(32));          // its limits refuse 0.200
  EXPECT_EQ("0.2", desk.Shown("txtSecu")); // a kind leaves its text alone
  ASSERT_TRUE(desk.Pick("cmbFtio", 1));    // no message: nobody typed it
  EXPECT_EQ("20.0", desk.Shown("txtSecu"));
  EXPECT_EQ("100.0", desk.Shown("txtAlarmSet4"));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(200, Stored("C", 8, "SECU"));
  EXPECT_EQ(1000, Stored("A", 8, "A4VL"));
}

TEST(ChSetting, ALowCutThatIsNoStoredValueIsRefusedWithItsOwnLimits) {
  Desk desk;
  desk.OpenWith({{"TYPE", 40}, {"POIN", 2}});
  desk.Text("txtSecu").text = u"999.99";
  desk.ExpectMessage("-327.67から327.67の値を入力してください");
  ASSERT_TRUE(desk.Pick("cmbDecimal", 1));
  EXPECT_EQ("999.99", desk.Shown("txtSecu"));
}

// --- Units

TEST(ChSetting, AThermocoupleTakesOneOfTwoUnits) {
  Desk desk;
  desk.Open();
  desk.platform.screens.Expect<SelectUnitScreen>("frmSelectUnit", [&](SelectUnitScreen& units) {
    EXPECT_EQ(1, units.fgrUnit.Rows());
    EXPECT_EQ(2, units.fgrUnit.Cols());
    desk.user.DoubleClick(units.fgrUnit, 0, 1);
  });
  ASSERT_TRUE(desk.user.Click(desk.screen->cmdUnitSelect));
  EXPECT_EQ("゜F", desk.Caption("lblSelUnit"));
  EXPECT_EQ(0, Stored("C", 0, "UNIT"));
  desk.ExpectMessage("-382.0から2552.0の値を入力してください");
  EXPECT_FALSE(desk.Type("txtRecRangeMax", "2552.1"));
  desk.platform.time.Advance(100);
  ASSERT_TRUE(desk.Type("txtRecRangeMax", "2552"));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(1, Stored("C", 0, "UNIT"));

  desk.platform.screens.Expect<SelectUnitScreen>(
      "frmSelectUnit", [&](SelectUnitScreen& units) { desk.user.Click(units.btnCancel); });
  ASSERT_TRUE(desk.user.Click(desk.screen->cmdUnitSelect));
  EXPECT_EQ("゜F", desk.Caption("lblSelUnit"));
}

TEST(ChSetting, TheSumAlwaysHasAllUnits) {
  Desk desk;
  desk.Open();
  desk.platform.screens.Expect<SelectUnitScreen>("frmSelectUnit", [&](SelectUnitScreen& units) {
    EXPECT_EQ(28, units.fgrUnit.Rows());
    EXPECT_EQ(6, units.fgrUnit.Cols());
    desk.user.DoubleClick(units.fgrUnit, 114 / 6, 114 % 6);
  });
  ASSERT_TRUE(desk.user.Click(desk.screen->cmdSekiUnitSelect));
  EXPECT_EQ("mV", desk.Caption("lblSelSekiUnit"));
  EXPECT_EQ("゜C", desk.Caption("lblSelUnit"));
  EXPECT_EQ(0, Stored("C", 0, "SEUN"));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(114, Stored("C", 0, "SEUN"));
}

TEST(ChSetting, AnotherTemperatureLeavesNoEngineeringValueThatCannotBeApplied) {
  Desk desk;
  Put("C", 8, "SECU", 7000);
  desk.Open(8);
  ASSERT_TRUE(desk.PickKind(7)); // engineering value from 600.0, which B refuses in degrees Fahrenheit
  desk.platform.screens.Expect<SelectUnitScreen>(
      "frmSelectUnit", [&](SelectUnitScreen& units) { desk.user.DoubleClick(units.fgrUnit, 0, 1); });
  ASSERT_TRUE(desk.user.Click(desk.screen->cmdUnitSelect));
  EXPECT_EQ("1112.0", desk.Shown("txtIndMin"));
  EXPECT_TRUE(desk.Text("txtIndMin").marked);
  EXPECT_FALSE(desk.screen->lblSelUnit.marked);
  EXPECT_EQ("600.0", desk.Shown("txtRecRangeMin")); // the user's own field
  EXPECT_FALSE(desk.Text("txtRecRangeMin").marked);
}

// --- Marks

TEST(ChSetting, MarksLastUntilTheNextCascadeOrChannel) {
  Desk desk;
  desk.Open(8);
  ASSERT_TRUE(desk.PickKind(32));
  EXPECT_TRUE(desk.Text("txtRecRangeMax").marked);
  EXPECT_TRUE(desk.List("cmbDecimal").marked);
  EXPECT_FALSE(desk.List("cmbInputType").marked);
  EXPECT_FALSE(desk.List("cmbScale").marked); // stands where it stood
  ASSERT_TRUE(desk.Pick("cmbRecM", 1));       // no cascade
  EXPECT_TRUE(desk.Text("txtRecRangeMax").marked);
  ASSERT_TRUE(desk.Pick("cmbScale", 1)); // rewrites nothing
  EXPECT_FALSE(desk.Text("txtRecRangeMax").marked);
  ASSERT_TRUE(desk.PickKind(31));
  EXPECT_TRUE(desk.Text("txtRecRangeMax").marked);
  LoadEntry(desk.screen->browsing, 8);
  for (const Control* control : desk.screen->controls) {
    EXPECT_FALSE(control->marked) << control->name;
  }
}

TEST(ChSetting, TheSwatchFollowsTheColour) {
  Desk desk;
  desk.OpenWith({{"COLR", 3}});
  EXPECT_TRUE(desk.screen->lblColor.hasBackColour);
  EXPECT_EQ(ColourTable[3], desk.screen->lblColor.backColour);
  ASSERT_TRUE(desk.Pick("cmbDispColor", 13));
  EXPECT_EQ(ColourTable[14], desk.screen->lblColor.backColour);
  ASSERT_TRUE(desk.PickKind(2));
  EXPECT_EQ(ColourTable[1], desk.screen->lblColor.backColour);
  Put("C", 0, "COLR", 99);
  desk.Open();
  EXPECT_FALSE(desk.screen->lblColor.hasBackColour);
}

// --- Opened as the window opens it

TEST(ChSetting, OpensModalAndTellsWhatWasApplied) {
  Desk desk;
  int told = 0;
  desk.platform.screens.Expect<ChSettingScreen>("frmChSetting", [&](ChSettingScreen& screen) {
    EXPECT_EQ(4, screen.browsing.entry);
    desk.user.Click(screen.browsing.apply);
    EXPECT_EQ(1, told);
    desk.user.Click(screen.browsing.close);
  });
  ShowChSetting(4, [&] { ++told; });
  EXPECT_EQ(1, told);
}

} // namespace
} // namespace loader::test
