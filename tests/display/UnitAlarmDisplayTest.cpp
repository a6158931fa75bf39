// The choice of a unit and the value of an alarm under the logarithm as a user works them, over the screen of
// the channel that opens them.
#include <QLabel>

#include "channel/modUtil.h"
#include "tests/display/DisplayFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

// --- A unit

struct UnitOnTheDisplay : OnTheDisplay {
  static constexpr int Volt = 115; // in the list, six in a row
  static constexpr int Columns = 6;

  // The units of a scaled channel, over its screen; behind them the keyboard is on the button that opens
  // them. What the label of the unit then shows.
  std::string UnitAfter(const std::function<void(QWidget&, GridView&)>& act) {
    OpenProgram();
    Put("C", 0, "TYPE", 32);
    Put("C", 0, "SCAL", 1);
    Put("C", 0, "UNIT", Volt);
    std::string unit;
    InTheScreen(
        "frmChSetting", [&] { DoubleClickCell(Find<GridView>("fgrCh"), 0); },
        [&](QWidget& screen) {
          auto& choose = In<QPushButton>(screen, "cmdUnitSelect");
          InTheScreen(
              "frmSelectUnit", [&] { hands.Click(choose); },
              [&](QWidget& units) {
                auto& table = In<GridView>(units, "fgrUnit");
                EXPECT_EQ(&table, QApplication::focusWidget());
                EXPECT_EQ(table.model()->index(Volt / Columns, Volt % Columns), table.currentIndex());
                EXPECT_TRUE(table.viewport()->rect().contains(table.visualRect(table.currentIndex())));
                act(units, table);
                EXPECT_FALSE(units.isVisible());
              });
          EXPECT_TRUE(hands.BecomesActive(screen));
          EXPECT_EQ(&choose, QApplication::focusWidget());
          unit = In<QLabel>(screen, "lblSelUnit").text().toStdString();
        });
    EXPECT_EQ(Volt, Stored("C", 0, "UNIT")); // not applied
    EXPECT_EQ(0, boxes.Shown());
    return unit;
  }
};

TEST_F(UnitOnTheDisplay, TheArrowKeysGoThroughTheTableAndEnterTakesTheCell) {
  EXPECT_EQ("dB", UnitAfter([&](QWidget&, GridView&) {
              hands.Press(Key::Down);
              hands.Press(Key::Return);
            }));
}

TEST_F(UnitOnTheDisplay, ADoubleClickTakesTheCell) {
  EXPECT_EQ("ppb", UnitAfter([&](QWidget&, GridView& table) { DoubleClickCell(table, 13, 1); }));
}

TEST_F(UnitOnTheDisplay, AClickAndOkTakeTheCell) {
  EXPECT_EQ("mol", UnitAfter([&](QWidget& units, GridView& table) {
              ClickCell(table, 13, 3);
              hands.Click(In<QPushButton>(units, "btnOk"));
            }));
}

TEST_F(UnitOnTheDisplay, AnEmptyCellIsNoUnitAndKeepsTheKeyboard) {
  EXPECT_EQ("kPa", UnitAfter([&](QWidget& units, GridView& table) {
              DoubleClickCell(table, 5, 4);
              EXPECT_TRUE(units.isVisible());
              hands.Press(Key::Return);
              EXPECT_TRUE(units.isVisible());
              EXPECT_EQ(&table, QApplication::focusWidget());
              hands.Press(Key::Down);
              hands.Press(Key::Left);
              hands.Press(Key::Left);
              hands.Press(Key::Return);
            }));
}

TEST_F(UnitOnTheDisplay, EscAndCancelKeepTheUnit) {
  EXPECT_EQ("V", UnitAfter([&](QWidget&, GridView&) {
              hands.Press(Key::Up);
              hands.Press(Key::Escape);
            }));
}

// --- An alarm

struct AlarmOnTheDisplay : OnTheDisplay {
  int decades = 3;
  // 1 to 5 V on a logarithmic scale; the first alarm is 1.00E0.
  void OverTheChannel(const std::function<void(QWidget&)>& act) {
    OpenProgram();
    for (const auto& [tag, value] : {std::pair{"TYPE", 32},
                                     {"SCAL", 1},
                                     {"POIN", 3},
                                     {"TAIS", 1},
                                     {"MMIN", 1000},
                                     {"MMAX", 5000},
                                     {"SMIN", 0},
                                     {"SMAX", decades}}) {
      Put("C", 0, tag, value);
    }
    Put("A", 0, "A1VL", 1000);
    InTheScreen(
        "frmChSetting", [&] { DoubleClickCell(Find<GridView>("fgrCh"), 0); },
        [&](QWidget& screen) {
          InTheScreen(
              "frmAlarmSetting", [&] { hands.Click(Power(screen)); }, act);
          EXPECT_TRUE(hands.BecomesActive(screen));
          after = Power(screen).text().toStdString();
        });
    EXPECT_EQ(1000, Stored("A", 0, "A1VL")); // not applied
  }
  static QLabel& Power(QWidget& screen) { return In<QLabel>(screen, "lblAlarmSetInput1"); }
  std::string after; // what the channel's screen shows behind the dialog
};

TEST_F(AlarmOnTheDisplay, ARefusedMantissaIsOneMessageAndTheKeyboardIsBackInIt) {
  OverTheChannel([&](QWidget& alarm) {
    QLineEdit& mantissa = Field(alarm, "txtAlarmSet");
    EXPECT_EQ(&mantissa, QApplication::focusWidget());
    hands.TypeOver(mantissa, "10");
    ExpectBox(RangeMessage(62201, u"1.00", u"9.99"));
    hands.Click(In<QPushButton>(alarm, "btnOk"));
    ExpectKeyboardBackIn(mantissa, "10");
    EXPECT_EQ(1, boxes.Shown());
    WaitForTheGuard();
    hands.Type("2.5");
    hands.Click(In<QPushButton>(alarm, "btnOk"));
    EXPECT_FALSE(alarm.isVisible());
  });
  EXPECT_EQ("2.50E0", after);
}

// On a scale of one decade 1.00E9 is no stored number.
TEST_F(AlarmOnTheDisplay, AValueThatDoesNotFitIsToldWithThoseThatDo) {
  decades = 1;
  OverTheChannel([&](QWidget& alarm) {
    auto& exponent = In<QComboBox>(alarm, "cmbAlarmSet");
    TabTo(exponent);
    while (exponent.currentIndex() < exponent.count() - 1) {
      hands.Press(Key::Down);
    }
    TabTo(In<QPushButton>(alarm, "btnOk"));
    ExpectBox(RangeMessage(62201, u"3.62E-9", u"8.74E7"));
    hands.Press(Key::Return);
    ExpectKeyboardBackIn(Field(alarm, "txtAlarmSet"), "1.00");
    EXPECT_TRUE(alarm.isVisible());
    hands.Press(Key::Escape);
    EXPECT_FALSE(alarm.isVisible());
  });
  EXPECT_EQ("1.00E0", after);
}

TEST_F(AlarmOnTheDisplay, EscKeepsTheAlarmAndChecksNothing) {
  OverTheChannel([&](QWidget& alarm) {
    hands.SelectAll();
    hands.Type("99");
    hands.Press(Key::Escape);
    EXPECT_FALSE(alarm.isVisible());
  });
  EXPECT_EQ("1.00E0", after);
  EXPECT_EQ(0, boxes.Shown());
}

} // namespace
} // namespace loader::test
