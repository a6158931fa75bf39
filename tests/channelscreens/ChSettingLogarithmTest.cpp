// The screen of the measuring channels under the logarithm: exponents, and alarms as powers of ten.
#include <gtest/gtest.h>

#include "channelscreens/ChannelScreen.h"
#include "dialogs/frmAlarmSetting.h"
#include "tests/channelscreens/Desk.h"

namespace loader::test {
namespace {

TEST(ChSettingLogarithm, AnAlarmUnderTheLogarithmIsSetInItsDialog) {
  Desk desk;
  desk.OpenWith({{"TYPE", 32},
                 {"SCAL", 1},
                 {"POIN", 1},
                 {"TAIS", 1},
                 {"MMIN", 1000},
                 {"MMAX", 5000},
                 {"SMIN", 0},
                 {"SMAX", 2},
                 {"RMIN", 0},
                 {"RMAX", 2},
                 {"A1VL", 2000},
                 {"A2VL", 1000}});
  Put("C", 1, "TYPE", 32);
  EXPECT_EQ("3.16E0", desk.Caption("lblAlarmSetInput1"));
  EXPECT_EQ("2.000", desk.Shown("txtAlarmSet1"));
  desk.platform.screens.Expect<AlarmSettingScreen>("frmAlarmSetting", [&](AlarmSettingScreen& alarm) {
    EXPECT_EQ("3.16", ToUtf8(alarm.txtAlarmSet.text));
    desk.user.Type(alarm.txtAlarmSet, u"1");
    desk.user.Choose(alarm.cmbAlarmSet, 10); // E1
    desk.user.Click(alarm.btnOk);
  });
  ASSERT_TRUE(desk.user.Click(desk.screen->lblAlarmSetInput[0]));
  EXPECT_EQ("1.00E1", desk.Caption("lblAlarmSetInput1"));
  EXPECT_EQ("1.00E0", desk.Caption("lblAlarmSetInput2"));
  EXPECT_EQ("3.000", desk.Shown("txtAlarmSet1"));
  EXPECT_EQ(2000, Stored("A", 0, "A1VL"));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(3000, Stored("A", 0, "A1VL"));
  EXPECT_EQ(1000, Stored("A", 0, "A2VL"));

  desk.platform.screens.Expect<AlarmSettingScreen>(
      "frmAlarmSetting", [&](AlarmSettingScreen& alarm) { desk.user.Click(alarm.btnCancel); });
  ASSERT_TRUE(desk.user.Click(desk.screen->lblAlarmSetInput[1]));
  EXPECT_EQ("1.00E0", desk.Caption("lblAlarmSetInput2"));
  // Without the logarithm a click does nothing.
  ASSERT_TRUE(desk.Pick("cmbTaisu", 0));
  EXPECT_FALSE(desk.user.Click(desk.screen->lblAlarmSetInput[1]));
}

// A temperature whose logarithm is on, which only a file or a recorder brings in: its exponents stand at the
// position of the kind, and the dialog has to read them as the label does.
TEST(ChSettingLogarithm, AnAlarmOfATemperatureUnderTheLogarithmReadsTheSameInItsDialog) {
  Desk desk;
  desk.OpenWith({{"TYPE", 1}, {"TAIS", 1}, {"MMIN", 0}, {"MMAX", 5000}, {"SMIN", 0}, {"SMAX", 5}});
  Put("A", 0, "A1VL", 2000);
  Put("A", 0, "A2VL", 1001); // between two values that read alike
  desk.Open();
  EXPECT_EQ("0.5", desk.Shown("txtIndMax"));
  EXPECT_EQ("1.00E2", desk.Caption("lblAlarmSetInput1"));
  const std::string label = desk.Caption("lblAlarmSetInput2");
  desk.platform.screens.Expect<AlarmSettingScreen>("frmAlarmSetting", [&](AlarmSettingScreen& alarm) {
    desk.user.Choose(alarm.cmbAlarmSet, 12); // E3
    desk.user.Click(alarm.btnOk);
  });
  ASSERT_TRUE(desk.user.Click(desk.screen->lblAlarmSetInput[0]));
  EXPECT_EQ("1.00E3", desk.Caption("lblAlarmSetInput1"));
  EXPECT_EQ("300.0", desk.Shown("txtAlarmSet1"));
  desk.platform.screens.Expect<AlarmSettingScreen>(
      "frmAlarmSetting", [&](AlarmSettingScreen& alarm) { desk.user.Click(alarm.btnOk); });
  ASSERT_TRUE(desk.user.Click(desk.screen->lblAlarmSetInput[1]));
  EXPECT_EQ(label, desk.Caption("lblAlarmSetInput2"));
  EXPECT_EQ("100.1", desk.Shown("txtAlarmSet2"));
}

TEST(ChSettingLogarithm, AChangeOfTheScaleMovesTheAlarmsAtOnce) {
  Desk desk;
  desk.OpenWith({{"TYPE", 32},
                 {"SCAL", 1},
                 {"TAIS", 1},
                 {"MMIN", 1000},
                 {"MMAX", 5000},
                 {"SMIN", 0},
                 {"SMAX", 2},
                 {"RMIN", 0},
                 {"RMAX", 2},
                 {"A1VL", 3000},
                 {"A2VL", 3000},
                 {"A3VL", 3000},
                 {"A4VL", 3000}});
  EXPECT_EQ("1.00E1", desk.Caption("lblAlarmSetInput4"));
  ASSERT_TRUE(desk.user.Type(desk.Text("txtIndMax"), u"4")); // not left yet
  EXPECT_EQ("1.00E2", desk.Caption("lblAlarmSetInput1"));
  EXPECT_EQ("1.00E2", desk.Caption("lblAlarmSetInput4"));
  ASSERT_TRUE(desk.user.Type(desk.Text("txtIndMin"), u"-2"));
  EXPECT_EQ("1.00E1", desk.Caption("lblAlarmSetInput2"));
  ASSERT_TRUE(desk.user.Type(desk.Text("txtStMax"), u"4"));
  EXPECT_EQ("1.00E2", desk.Caption("lblAlarmSetInput3"));
  ASSERT_TRUE(desk.user.Type(desk.Text("txtStMin"), u"2"));
  EXPECT_EQ("1.00E1", desk.Caption("lblAlarmSetInput3"));
  ASSERT_TRUE(desk.user.Type(desk.Text("txtStMin"), u""));
  EXPECT_EQ("", desk.Caption("lblAlarmSetInput1"));
}

TEST(ChSettingLogarithm, TheLogarithmRefusesWhatIsNoExponent) {
  Desk desk;
  desk.OpenWith({{"TYPE", 40}, {"TAIS", 1}, {"SMIN", 0}, {"SMAX", 5000}, {"RMIN", 0}, {"RMAX", 2}});
  EXPECT_EQ("", desk.Shown("txtIndMax"));
  EXPECT_EQ("", desk.Caption("lblAlarmSetInput1"));
  desk.ExpectMessage("-9から9の値を入力してください");
  EXPECT_FALSE(desk.Type("txtIndMin", "10"));
}

TEST(ChSettingLogarithm, AModelWithoutALogarithmTakesItForOffAndKeepsItsRecord) {
  Desk desk("RUG");
  ASSERT_NE(nullptr, FindNumRecord("C", 0, "TAIS"));
  desk.OpenWith({{"TYPE", 40}, {"TAIS", 1}});
  EXPECT_FALSE(desk.screen->LogOn);
  EXPECT_EQ("500.0", desk.Shown("txtIndMax"));
  EXPECT_TRUE(desk.Enabled("cmbDecimal"));
  ASSERT_TRUE(desk.PickKind(1));
  ASSERT_TRUE(desk.Apply());
  EXPECT_EQ(1, Stored("C", 0, "TYPE"));
  EXPECT_EQ(1, Stored("C", 0, "TAIS"));
}

// Before the filter stands the logarithm, behind it the scaling.
TEST(ChSettingLogarithm, IsStoredBeforeTheFilterAndTheScalingBehindIt) {
  Desk desk;
  Put("C", 8, "TYPE", 32);
  Put("C", 8, "POIN", 3);
  desk.Open(8);
  ASSERT_TRUE(desk.Pick("cmbScale", 1));
  ASSERT_TRUE(desk.Pick("cmbTaisu", 1));
  desk.Text("txtInputFilter").text = u"x";
  desk.ExpectMessage("数字ではありません。");
  desk.screen->browsing.apply.onClick();
  EXPECT_EQ(1, Stored("C", 8, "TAIS"));
  EXPECT_EQ(0, Stored("C", 8, "SCAL"));
  EXPECT_EQ(&desk.Text("txtInputFilter"), desk.screen->focusRequest);
  desk.Text("txtInputFilter").text = u"9";
  desk.Text("txtStMin").text = u"x";
  desk.ExpectMessage("数字ではありません。");
  desk.screen->browsing.apply.onClick();
  EXPECT_EQ(9, Stored("C", 8, "FILT"));
  EXPECT_EQ(1, Stored("C", 8, "SCAL"));
  EXPECT_EQ(&desk.Text("txtStMin"), desk.screen->focusRequest);
}

} // namespace
} // namespace loader::test
