// The screens of measuring and operation channels as a user works them, by mouse and by keyboard alone: kind,
// unit, alarm under the logarithm, "適用"; refused values; and what is behind a screen that closes.
#include <QScrollBar>

#include "core/ModelProfile.h"
#include "core/TextTable.h"
#include "tests/display/ChannelFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

constexpr int Percent = 82; // in the unit list, six in a row
constexpr int UnitColumns = 6;
// 316 % on a scale of 1 to 1000 % that 1 to 5 V stand for.
constexpr int AlarmStored = 4333;

void ExpectLogarithmicChannelStored() {
  EXPECT_EQ(32, Stored("C", 0, "TYPE"));
  EXPECT_EQ(1, Stored("C", 0, "SCAL"));
  EXPECT_EQ(Percent, Stored("C", 0, "UNIT"));
  EXPECT_EQ(1, Stored("C", 0, "TAIS"));
  EXPECT_EQ(0, Stored("C", 0, "SMIN"));
  EXPECT_EQ(3, Stored("C", 0, "SMAX"));
  EXPECT_EQ(AlarmStored, Stored("A", 0, "A1VL"));
  EXPECT_EQ(32, Stored("C", 1, "TYPE")); // shares the terminals, and becomes what they can be
}

TEST_F(ChannelOnTheDisplay, KindUnitAndAnAlarmUnderTheLogarithmByTheMouse) {
  OpenProgram();
  OpenedByDoubleClick(KovChannel, 0, [&](QWidget& screen) {
    ChooseText(screen, "cmbInputType", "1-5V");
    Choose(In<QComboBox>(screen, "cmbScale"), 1);
    auto& chooseUnit = In<QPushButton>(screen, "cmdUnitSelect");
    InTheScreen(
        "frmSelectUnit", [&] { hands.Click(chooseUnit); },
        [&](QWidget& units) {
          DoubleClickCell(In<GridView>(units, "fgrUnit"), Percent / UnitColumns, Percent % UnitColumns);
        });
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&chooseUnit, QApplication::focusWidget());
    EXPECT_EQ("%", Caption(screen, "lblSelUnit"));
    Choose(In<QComboBox>(screen, "cmbTaisu"), 1);
    hands.TypeOver(Field(screen, "txtStMin"), "1");
    hands.TypeOver(Field(screen, "txtIndMin"), "0");
    hands.TypeOver(Field(screen, "txtIndMax"), "3");
    hands.TypeOver(Field(screen, "txtRecRangeMin"), "0");
    hands.TypeOver(Field(screen, "txtRecRangeMax"), "3");
    InTheScreen(
        "frmAlarmSetting", [&] { hands.Click(In<QLabel>(screen, "lblAlarmSetInput1")); },
        [&](QWidget& alarm) {
          hands.TypeOver(Field(alarm, "txtAlarmSet"), "3.16");
          ChooseText(alarm, "cmbAlarmSet", "2");
          hands.Click(In<QPushButton>(alarm, "btnOk"));
          EXPECT_FALSE(alarm.isVisible());
        });
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ("3.16E2", Caption(screen, "lblAlarmSetInput1"));
    EXPECT_EQ("4.333", Field(screen, "txtAlarmSet1").text().toStdString());
    EXPECT_EQ(0, boxes.Shown());
    ExpectBox(std::u16string(LoadText(62106)));
    ClickApply(screen);
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(1, boxes.Shown());
    ExpectLogarithmicChannelStored();
    ClickClose(screen);
  });
  for (const char* text : {"1-5V", "%", "3.16E2"}) {
    EXPECT_TRUE(RowShows("fgrCh", 0, text)) << text;
  }
  EXPECT_TRUE(RowShows("fgrCh", 1, "1-5V"));
}

TEST_F(ChannelOnTheDisplay, TheSameByTheKeyboardAlone) {
  OpenProgram();
  OpenedByEnter(KovChannel, 0, [&](QWidget& screen) {
    auto& kinds = In<QComboBox>(screen, "cmbInputType");
    ArrowTo(kinds, kinds.findText(QStringLiteral("1-5V")));
    ArrowTo(In<QComboBox>(screen, "cmbScale"), 1);
    ArrowTo(In<QComboBox>(screen, "cmbTaisu"), 1);
    auto& chooseUnit = In<QPushButton>(screen, "cmdUnitSelect");
    TabTo(chooseUnit);
    InTheScreen(
        "frmSelectUnit", [&] { hands.Press(Key::Return); },
        [&](QWidget& units) {
          auto& table = In<GridView>(units, "fgrUnit");
          EXPECT_EQ(&table, QApplication::focusWidget());
          while (table.currentIndex().row() != Percent / UnitColumns) {
            hands.Press(table.currentIndex().row() > Percent / UnitColumns ? Key::Up : Key::Down);
          }
          while (table.currentIndex().column() != Percent % UnitColumns) {
            hands.Press(table.currentIndex().column() < Percent % UnitColumns ? Key::Right : Key::Left);
          }
          hands.Press(Key::Return);
          EXPECT_FALSE(units.isVisible());
        });
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&chooseUnit, QApplication::focusWidget());
    EXPECT_EQ("%", Caption(screen, "lblSelUnit"));
    TypeInto(screen, "txtStMin", "1");
    TypeInto(screen, "txtIndMin", "0");
    TypeInto(screen, "txtIndMax", "3");
    TypeInto(screen, "txtRecRangeMin", "0");
    TypeInto(screen, "txtRecRangeMax", "3");
    auto& power = In<QLabel>(screen, "lblAlarmSetInput1");
    TabTo(power);
    InTheScreen(
        "frmAlarmSetting", [&] { hands.Press(Key::Return); },
        [&](QWidget& alarm) {
          TypeInto(alarm, "txtAlarmSet", "3.16");
          auto& exponent = In<QComboBox>(alarm, "cmbAlarmSet");
          ArrowTo(exponent, exponent.findText(QStringLiteral("2")));
          TabTo(In<QPushButton>(alarm, "btnOk"));
          hands.Press(Key::Return);
          EXPECT_FALSE(alarm.isVisible());
        });
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&power, QApplication::focusWidget());
    EXPECT_EQ("3.16E2", power.text().toStdString());
    auto& apply = In<QPushButton>(screen, "OKButton");
    TabTo(apply);
    ExpectBox(std::u16string(LoadText(62106)));
    hands.Press(Key::Return);
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&apply, QApplication::focusWidget());
    ExpectLogarithmicChannelStored();
    hands.Press(Key::Escape);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_TRUE(RowShows("fgrCh", 0, "3.16E2"));
}

// Cancel at the question about the neighbour: nothing is stored, and the keyboard stays on the button.
TEST_F(ChannelOnTheDisplay, ANeighbourThatIsKeptStopsTheApply) {
  OpenProgram();
  const std::vector<std::int16_t> before = AllNumbers();
  OpenedByDoubleClick(KovChannel, 0, [&](QWidget& screen) {
    ChooseText(screen, "cmbInputType", "1-5V");
    boxes.Expect(std::u16string(LoadText(62106)), BoxAnswer::Cancel, [this](QMessageBox& box) {
      EXPECT_TRUE(hands.BecomesActive(box));
      hands.Press(Key::Escape);
    });
    ClickApply(screen);
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&In<QPushButton>(screen, "OKButton"), QApplication::focusWidget());
    EXPECT_EQ("1-5V", In<QComboBox>(screen, "cmbInputType").currentText().toStdString());
    ClickClose(screen);
  });
  EXPECT_EQ(before, AllNumbers());
}

// --- Both screens, on the models that have them

struct EachChannelScreen : ChannelOnTheDisplay, testing::WithParamInterface<ScreenOfAModel> {
  static constexpr int Row = 2;
  void SetUp() override {
    OpenProgram(GetParam().model);
    if (GetParam().page != ChannelPage) {
      ClickTab(GetParam().page);
    }
  }
  static int Item() { return Row + (GetParam().page == ChannelPage ? 0 : Profile.FirstOperationChannel - 1); }
};
INSTANTIATE_TEST_SUITE_P(Screens, EachChannelScreen, testing::ValuesIn(Screens),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(EachChannelScreen, AClickOnApplyWithARefusedValueIsOneMessageAndTheKeyboardIsBackInTheField) {
  const std::vector<std::int16_t> before = AllNumbers();
  OpenedByDoubleClick(GetParam(), Row, [&](QWidget& screen) {
    for (const char* name : {"txtRecRangeMax", "txtSekiScale", "txtAlarmSet2"}) {
      const int shown = boxes.Shown();
      QLineEdit& field = Field(screen, name);
      const std::string good = field.text().toStdString();
      hands.TypeOver(field, "bad");
      ExpectBox(std::u16string(LoadText(62200)));
      ClickApply(screen);
      ExpectKeyboardBackIn(field, "bad");
      EXPECT_EQ(shown + 1, boxes.Shown());
      EXPECT_FALSE(In<QPushButton>(screen, "OKButton").isDown());
      EXPECT_EQ(before, AllNumbers()) << name;
      WaitForTheGuard();
      hands.Type(good);
    }
    ClickApply(screen);
    EXPECT_EQ(3, boxes.Shown());
    ClickClose(screen);
  });
}

TEST_P(EachChannelScreen, ReturnInAFieldChecksItAndClosesNothing) {
  OpenedByDoubleClick(GetParam(), Row, [&](QWidget& screen) {
    QLineEdit& field = Field(screen, "txtRecRangeMax");
    hands.TypeOver(field, "bad");
    ExpectBox(std::u16string(LoadText(62200)));
    hands.Press(Key::Return);
    ExpectKeyboardBackIn(field, "bad");
    WaitForTheGuard();
    hands.Type("5");
    hands.Press(Key::Return);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(&field, QApplication::focusWidget());
    EXPECT_EQ(1, boxes.Shown());
    hands.Press(Key::Escape);
    EXPECT_FALSE(screen.isVisible());
  });
}

// Whatever the click was for: it is one message, and nothing else happens.
TEST_P(EachChannelScreen, AClickWithAWrongValueIsHeldUpWhereverItGoes) {
  OpenedByDoubleClick(GetParam(), Row, [&](QWidget& screen) {
    QLineEdit& field = Field(screen, "txtPVSlope");
    const std::string channel = Field(screen, "txtChannel").text().toStdString();
    int clicks = 0;
    for (const char* name : {"btnNext", "btnPrev", "btnTop", "btnReset", "CancelButton", "cmdUnitSelect",
                             "cmdSekiUnitSelect", "cmbRecMode", "txtChannelTag", "txtChannel"}) {
      SCOPED_TRACE(name);
      hands.TypeOver(field, "bad");
      ExpectBox(std::u16string(LoadText(62200)));
      hands.Click(In<QWidget>(screen, name));
      ExpectKeyboardBackIn(field, "bad");
      EXPECT_EQ(++clicks, boxes.Shown());
      EXPECT_EQ(nullptr, QApplication::activePopupWidget());
      WaitForTheGuard();
    }
    EXPECT_EQ(channel, Field(screen, "txtChannel").text().toStdString());
    hands.Press(Key::Escape);
    EXPECT_FALSE(screen.isVisible());
  });
}

// Neither a look nor an "適用" moves the table under the user.
TEST_P(EachChannelScreen, TheTableKeepsItsPlace) {
  auto& table = Find<GridView>(GetParam().table);
  for (QScrollBar* bar : {table.horizontalScrollBar(), table.verticalScrollBar()}) {
    bar->setValue(bar->maximum() / 2);
  }
  const auto place = [&] {
    return std::pair(table.horizontalScrollBar()->value(), table.verticalScrollBar()->value());
  };
  const QModelIndex cell = table.indexAt(table.viewport()->rect().center());
  ClickCell(table, cell.row(), cell.column()); // one that is cut is scrolled to
  const auto before = place();
  ASSERT_GT(before.first, 0);
  for (const bool apply : {false, true}) {
    Opened(
        GetParam(), cell.row(), [&] { DoubleClickCell(table, cell.row(), cell.column()); },
        [&](QWidget& screen) {
          if (apply) {
            hands.TypeOver(Field(screen, "txtChannelTag"), "pump");
            ClickApply(screen);
          }
          ClickClose(screen);
        });
    EXPECT_EQ(before, place());
    EXPECT_EQ(cell.column(), table.currentIndex().column());
  }
  EXPECT_TRUE(RowShows(GetParam().table, cell.row(), "pump"));
}

// A Tab through the number of the channel throws nothing away; another number loads that channel.
TEST_P(EachChannelScreen, TheChannelsNumberIsPassedThroughAndGoesToAnotherOne) {
  const std::string before = TrimmedText("C", Item(), "TAG");
  OpenedByDoubleClick(GetParam(), Row, [&](QWidget& screen) {
    QLineEdit& tag = Field(screen, "txtChannelTag");
    QLineEdit& number = Field(screen, "txtChannel");
    hands.TypeOver(tag, "pump");
    hands.Click(number);
    hands.Press(Key::Tab);
    EXPECT_EQ("pump", tag.text().toStdString());
    const int other = Item() + 2;
    hands.TypeOver(number, std::to_string(other));
    hands.Press(Key::Tab);
    EXPECT_EQ(TrimmedText("C", other - 1, "TAG"), tag.text().trimmed().toStdString());
    hands.TypeOver(tag, "motor");
    ClickApply(screen);
    EXPECT_EQ("motor", TrimmedText("C", other - 1, "TAG"));
    ClickClose(screen);
  });
  EXPECT_EQ(before, TrimmedText("C", Item(), "TAG"));
  EXPECT_TRUE(RowShows(GetParam().table, Row + 1, "motor"));
  EXPECT_EQ(0, boxes.Shown());
}

} // namespace
} // namespace loader::test
