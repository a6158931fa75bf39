// The alarm value of a logarithmic channel: what the dialog shows, takes, refuses and hands back.
#include "tests/dialogs/AlarmFixture.h"

namespace loader::test {
namespace {

TEST_F(AlarmSetting, HasItsCaptionsAndItsExponents) {
  EXPECT_FALSE(Show([](AlarmSettingScreen& screen) {
    EXPECT_EQ(u"警報設定", screen.caption);
    EXPECT_EQ(u"警報設定値", screen.lblAlarmSet1.caption);
    EXPECT_EQ(u"E", screen.lblE.caption);
    EXPECT_EQ(u"適用", screen.btnOk.caption);
    EXPECT_EQ(u"キャンセル", screen.btnCancel.caption);
    ExpectRows(screen.cmbAlarmSet, Numbered("", 19, -9), -9);
  }));
}

TEST_F(AlarmSetting, ShowsTheLabelOfItsAlarmInItsTwoFields) {
  struct Row {
    std::u16string_view label;
    std::u16string_view mantissa;
    int exponentRow;
  };
  for (const Row& row : {Row{u"3.16E2", u"3.16", 11},
                         {u"9.99E-9", u"9.99", 0},
                         {u"1.00E9", u"1.00", 18},
                         {u"1.00E0", u"1.00", 9},
                         {u"", u"", -1},
                         {u"3.16", u"3.16", -1},
                         {u"3.16E", u"3.16", -1},
                         {u"3.16E10", u"3.16", -1},
                         {u"3.16E-10", u"3.16", -1},
                         {u"3.16Ex", u"3.16", -1},
                         {u"3.16E2147483647", u"3.16", -1},
                         {u"3.16E-2147483648", u"3.16", -1},
                         {u"3.16E99999999999", u"3.16", -1}}) {
    for (int alarm = 1; alarm <= 4; ++alarm) {
      caller.alarmNumber = alarm;
      Stands(alarm, row.label, u"");
      Show([&](AlarmSettingScreen& screen) {
        EXPECT_EQ(row.mantissa, screen.txtAlarmSet.text) << ToUtf8(row.label);
        EXPECT_EQ(row.exponentRow, screen.cmbAlarmSet.index) << ToUtf8(row.label);
      });
      Stands(alarm, u"1.00E0", u"");
    }
  }
}

// On the scale of the measuring range, whatever POIN is: 3000 at position 3.
TEST_F(AlarmSetting, StoresOnTheScaleOfTheMeasuringRange) {
  EXPECT_TRUE(Enter(u"1.00", 1));
  EXPECT_EQ("1.00E1", Label());
  EXPECT_EQ("3.000", Value());
  Show([](AlarmSettingScreen& screen) { // shown again as it was entered
    EXPECT_EQ(u"1.00", screen.txtAlarmSet.text);
    EXPECT_EQ(10, screen.cmbAlarmSet.index);
  });
}

TEST_F(AlarmSetting, HandsBackTheTwoTextsOfItsAlarmAndNothingElse) {
  for (int alarm = 1; alarm <= 4; ++alarm) {
    caller.alarmNumber = alarm;
    Texts expected = All();
    expected.at(static_cast<std::size_t>(10 + 2 * (alarm - 1))) = "1.00E-1";
    expected.at(static_cast<std::size_t>(11 + 2 * (alarm - 1))) = "-1.000";
    const StoreWatch store;
    EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) {
      EXPECT_TRUE(Enter(screen, u"1", -1));
      EXPECT_FALSE(platform.screens.Reachable(screen)); // closed
    }));
    EXPECT_EQ(expected, All());
    EXPECT_TRUE(store.Untouched());
  }
}

TEST_F(AlarmSetting, CancelAndClosingHandNothingBack) {
  const Texts before = All();
  using Close = std::function<void(AlarmSettingScreen&)>;
  for (const Close& close :
       {Close([&](AlarmSettingScreen& screen) { EXPECT_TRUE(user.Click(screen.btnCancel)); }),
        Close([&](AlarmSettingScreen& screen) { EXPECT_TRUE(user.Escape(screen)); }),
        Close([&](AlarmSettingScreen& screen) { EXPECT_TRUE(user.CloseWindow(screen)); })}) {
    EXPECT_FALSE(Show([&](AlarmSettingScreen& screen) {
      user.Choose(screen.cmbAlarmSet, 12);
      user.Type(screen.txtAlarmSet, u"2.50");
      close(screen);
      EXPECT_FALSE(platform.screens.Reachable(screen));
    }));
    EXPECT_EQ(before, All());
  }
}

TEST_F(AlarmSetting, EscapeAndTheCrossAskNoQuestionOfAWrongMantissa) {
  const Texts before = All();
  for (const bool byEscape : {true, false}) {
    Show([&](AlarmSettingScreen& screen) {
      user.Type(screen.txtAlarmSet, u"x");
      EXPECT_TRUE(byEscape ? user.Escape(screen) : user.CloseWindow(screen));
    });
  }
  EXPECT_EQ(before, All());
}

// --- The mantissa

TEST_F(AlarmSetting, TheMantissaTakesItsForm) {
  struct Row {
    std::u16string_view typed;
    std::u16string_view shown;
  };
  for (const Row& row : {Row{u"1", u"1.00"}, {u"9.99", u"9.99"}, {u"9.999", u"9.99"}, {u" 2.5 ", u"2.50"}}) {
    Show([&](AlarmSettingScreen& screen) {
      user.Type(screen.txtAlarmSet, row.typed);
      EXPECT_TRUE(user.Leave(screen.txtAlarmSet));
      EXPECT_EQ(row.shown, screen.txtAlarmSet.text);
    });
  }
}

TEST_F(AlarmSetting, AMantissaOutsideItsRangeIsRefusedWithOneMessageAndTheGuard) {
  const Texts before = All();
  for (const std::u16string_view typed : {u"0.99", u"10", u"0", u"-1.00", u"10.00"}) {
    EXPECT_FALSE(Show([&](AlarmSettingScreen& screen) {
      user.Type(screen.txtAlarmSet, typed);
      ExpectRangeMessage(u"1.00", u"9.99");
      EXPECT_FALSE(user.Click(screen.btnOk)); // nothing but that message
      EXPECT_EQ(typed, screen.txtAlarmSet.text);
      ExpectAllSelected(screen.txtAlarmSet);
      EXPECT_TRUE(WaitTimer2.Enabled);
      screen.btnOk.onClick(); // while it is on nothing is said, checked or handed back
      EXPECT_TRUE(platform.screens.Reachable(screen));
      platform.time.Advance(100);
      ExpectRangeMessage(u"1.00", u"9.99");
      EXPECT_FALSE(user.Click(screen.btnCancel)); // every click is held up
    }));
    platform.time.Advance(100);
  }
  EXPECT_EQ(before, All());
}

TEST_F(AlarmSetting, AMantissaThatIsNoNumberIsRefused) {
  Stands(1, u"", u""); // of a label without a value
  const Texts before = All();
  EXPECT_FALSE(Show([&](AlarmSettingScreen& screen) {
    ExpectMessage(u"数字ではありません。");
    EXPECT_TRUE(user.Click(screen.btnOk));
    ExpectSelected(screen.txtAlarmSet, 0, 0);
    EXPECT_TRUE(platform.screens.Reachable(screen));
  }));
  EXPECT_EQ(before, All());
}

// --- The exponent

TEST_F(AlarmSetting, TheLargestExponentBringsTheMantissaToOne) {
  Show([&](AlarmSettingScreen& screen) {
    user.Type(screen.txtAlarmSet, u"5.00");
    user.Choose(screen.cmbAlarmSet, 17);
    EXPECT_EQ(u"5.00", screen.txtAlarmSet.text);
    user.Choose(screen.cmbAlarmSet, 18);
    EXPECT_EQ(u"1.00", screen.txtAlarmSet.text);
    user.Type(screen.txtAlarmSet, u"5.00");
    user.Choose(screen.cmbAlarmSet, 18); // stands there already
    EXPECT_EQ(u"5.00", screen.txtAlarmSet.text);
    user.Choose(screen.cmbAlarmSet, 0);
    EXPECT_EQ(u"5.00", screen.txtAlarmSet.text);
  });
}

TEST_F(AlarmSetting, ALabelAtTheLargestExponentKeepsItsMantissa) {
  Stands(1, u"5.00E9", u"");
  Show([](AlarmSettingScreen& screen) { EXPECT_EQ(u"5.00", screen.txtAlarmSet.text); });
}

TEST_F(AlarmSetting, WithoutAnExponentTheRangeIsTold) {
  Stands(1, u"3.16", u"");
  const Texts before = All();
  EXPECT_FALSE(Show([&](AlarmSettingScreen& screen) {
    ExpectRangeMessage(u"1.00E-9", u"1.00E9");
    user.Click(screen.btnOk);
    ExpectAllSelected(screen.txtAlarmSet);
  }));
  EXPECT_EQ(before, All());
}

// --- What does not fit

TEST_F(AlarmSetting, AValueThatDoesNotFitTellsTheSmallestAndTheLargestThatDoes) {
  ReferTo(3); // itself: position 0
  struct Row {
    std::u16string_view stMin, stMax, indMin, indMax, from, to;
    int exponent;
  };
  for (const Row& row : {Row{u"0", u"5000", u"-9", u"-8", u"1.00E-9", u"3.57E-3", 9},
                         {u"0", u"5000", u"0", u"1", u"2.80E-7", u"3.57E6", 7},
                         {u"0", u"5000", u"0", u"1", u"2.80E-7", u"3.57E6", -7},
                         {u"5000", u"0", u"0", u"1", u"2.80E-6", u"3.57E7", 8},
                         {u"0", u"5000", u"1", u"0", u"2.80E-6", u"3.57E7", -6},
                         {u"0", u"5000", u"8", u"9", u"2.80E1", u"1.00E9", -9}}) {
    Scale(row.stMin, row.stMax, row.indMin, row.indMax);
    const Texts before = All();
    EXPECT_FALSE(Show([&](AlarmSettingScreen& screen) {
      ExpectRangeMessage(row.from, row.to);
      EXPECT_TRUE(Enter(screen, u"1.00", row.exponent));
      EXPECT_TRUE(platform.screens.Reachable(screen));
      EXPECT_EQ(u"1.00", screen.txtAlarmSet.text);
      EXPECT_EQ(row.exponent + 9, screen.cmbAlarmSet.index);
      ExpectAllSelected(screen.txtAlarmSet);
      EXPECT_FALSE(WaitTimer2.Enabled); // the mantissa itself is good
    }));
    EXPECT_EQ(before, All());
  }
}

// Both of its ends can be entered, and the next one beyond cannot.
TEST_F(AlarmSetting, TheEndsThatAreToldFit) {
  ReferTo(3);
  Scale(u"0", u"5000", u"0", u"1");
  EXPECT_TRUE(Enter(u"3.57", 6));
  EXPECT_EQ("32763", Value());
  EXPECT_TRUE(Enter(u"2.80", -7));
  EXPECT_EQ("-32764", Value());
  const Texts before = All();
  ExpectRangeMessage(u"2.80E-7", u"3.57E6");
  EXPECT_FALSE(Enter(u"3.58", 6));
  ExpectRangeMessage(u"2.80E-7", u"3.57E6");
  EXPECT_FALSE(Enter(u"2.79", -7));
  EXPECT_EQ(before, All());
}

TEST_F(AlarmSetting, AfterAValueThatDoesNotFitAnotherOneIsTaken) {
  ReferTo(3);
  Scale(u"0", u"5000", u"0", u"1");
  EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) {
    ExpectRangeMessage(u"2.80E-7", u"3.57E6");
    Enter(screen, u"1.00", 8);
    Enter(screen, u"1.00", 1);
  }));
  EXPECT_EQ("5000", Value());
}

TEST_F(AlarmSetting, ABlankFieldOfTheCallerIsAnsweredWithTheWholeRange) {
  const AlarmContract whole = caller;
  for (std::u16string AlarmContract::*field : {&AlarmContract::txtIndMin, &AlarmContract::txtIndMax,
                                               &AlarmContract::txtStMin, &AlarmContract::txtStMax}) {
    for (const std::u16string_view bad : {u"", u"  ", u"-", u"1e999", u"1e10"}) {
      caller.*field = bad;
      const Texts before = All();
      EXPECT_FALSE(Show([&](AlarmSettingScreen& screen) {
        ExpectRangeMessage(u"1.00E-9", u"1.00E9");
        Enter(screen, u"2.00", 1);
        EXPECT_TRUE(platform.screens.Reachable(screen));
        ExpectAllSelected(screen.txtAlarmSet);
      }));
      EXPECT_EQ(before, All());
      caller.*field = whole.*field;
    }
  }
}

// No screen lets such exponents stand.
TEST_F(AlarmSetting, WhereNothingFitsTheMessageHasNoHoles) {
  ReferTo(3);
  Scale(u"0", u"5000", u"20", u"21");
  ExpectRangeMessage(u"1.00E-9", u"1.00E9");
  EXPECT_FALSE(Enter(u"2.00", 1));
}

TEST_F(AlarmSetting, ABoundThatRecordersReadAsSomethingElseIsSteppedOver) {
  ReferTo(3);
  Scale(u"-32768", u"0", u"0", u"1");
  EXPECT_TRUE(Enter(u"1.00", 0));
  EXPECT_EQ("-32767", Value());
}

// --- Nothing changed

// The label has three digits and the value five: what is shown stands for many values.
TEST_F(AlarmSetting, AnApplyWithoutAChangeKeepsTheValueThatStands) {
  Stands(1, u"1.00E1", u"3.001");
  const Texts before = All();
  for (int time = 0; time < 3; ++time) {
    EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) { user.Click(screen.btnOk); }));
    EXPECT_EQ(before, All());
  }
  EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) {
    user.Choose(screen.cmbAlarmSet, 10); // stands there already
    user.MoveTo(screen.txtAlarmSet);
    user.Click(screen.btnOk);
  }));
  EXPECT_EQ(before, All());
}

// Entered, a text is the number nearest to it, also where the one that stands reads the same.
TEST_F(AlarmSetting, WhatIsEnteredAnewIsComputedAnew) {
  Stands(1, u"1.00E1", u"3.001");
  EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) {
    user.Type(screen.txtAlarmSet, u"1.00");
    user.Click(screen.btnOk);
  }));
  EXPECT_EQ("3.000", Value());
  Stands(1, u"1.00E1", u"3.001");
  EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) {
    user.Choose(screen.cmbAlarmSet, 3);
    user.Choose(screen.cmbAlarmSet, 10);
    user.Click(screen.btnOk);
  }));
  EXPECT_EQ("3.000", Value());
  // A label ends at the largest value, whatever lies beyond.
  Stands(1, u"1.00E9", u"30.000");
  EXPECT_TRUE(Enter(u"1.00", 9));
  EXPECT_EQ("19.000", Value());
}

TEST_F(AlarmSetting, AValueThatReadsOtherwiseIsComputedAnew) {
  Stands(1, u"1.00E1", u"4.000"); // reads 3.16E1
  EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) { user.Click(screen.btnOk); }));
  EXPECT_EQ("3.000", Value());
  for (const std::u16string_view unreadable : {u"", u"x", u"99999"}) {
    Stands(1, u"1.00E1", unreadable);
    EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) { user.Click(screen.btnOk); }));
    EXPECT_EQ("3.000", Value());
  }
}

// It reads as the label does, and no recorder can hold it.
TEST_F(AlarmSetting, AValueBeyondSixteenBitsIsComputedAnew) {
  for (const std::u16string_view value : {u"70.000", u"98.304"}) {
    Stands(1, u"1.00E9", value);
    EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) { user.Click(screen.btnOk); }));
    EXPECT_EQ("19.000", Value());
  }
}

// It would be stored, and its label would end at 1.00E9.
TEST_F(AlarmSetting, AValueAboveTheLargestOneIsRefused) {
  Scale(u"1.000", u"5.000", u"8", u"9"); // on which 1.01E9 would fit
  Stands(1, u"1.00E9", u"5.000");
  const Texts before = All();
  EXPECT_FALSE(Show([&](AlarmSettingScreen& screen) {
    user.Choose(screen.cmbAlarmSet, 17);
    user.Choose(screen.cmbAlarmSet, 18);
    user.Type(screen.txtAlarmSet, u"1.01");
    ExpectRangeMessage(u"3.62E-1", u"1.00E9");
    user.Click(screen.btnOk);
    ExpectAllSelected(screen.txtAlarmSet);
  }));
  EXPECT_EQ(before, All());
}

// 2.00E1 is stored as 3602, which reads 1.99E1, which would be stored as 3598: opened and applied again and
// again, the alarm stays where it is.
TEST_F(AlarmSetting, RepeatedAppliesDoNotMoveTheAlarm) {
  EXPECT_TRUE(Enter(u"2.00", 1));
  for (int time = 0; time < 3; ++time) {
    EXPECT_EQ("3.602", Value());
    EXPECT_EQ("1.99E1", Label());
    EXPECT_TRUE(Show([&](AlarmSettingScreen& screen) { user.Click(screen.btnOk); }));
  }
}

TEST_F(AlarmSetting, AMantissaInFullWidthIsThatNumber) {
  Scale(u"1.000", u"5.000", u"0", u"4");
  EXPECT_TRUE(Enter(u"３．１６", 2));
  EXPECT_EQ("3.16E2", Label());
}

} // namespace
} // namespace loader::test
