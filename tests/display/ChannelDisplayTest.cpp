// The screens of measuring and operation channels as a user works them, by mouse and by keyboard alone: kind,
// unit, alarm under the logarithm, formulas, "適用"; refused values; and what is behind a screen that closes.
#include <QLabel>
#include <QScrollBar>
#include <cstdlib>

#include "core/ModelProfile.h"
#include "core/TextTable.h"
#include "tests/display/DisplayFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

struct ScreenOfAModel {
  const char* name;
  const char* model; // TYPE of LOADER.INI
  const char* screen;
  const char* table;
  int page;
};
void PrintTo(const ScreenOfAModel& screen, std::ostream* out) {
  *out << screen.name;
}
// RUG has no operation channels.
constexpr ScreenOfAModel Screens[] = {
    {"KovChannel", "0", "frmChSetting", "fgrCh", ChannelPage},
    {"RugChannel", "1", "frmChSetting", "fgrCh", ChannelPage},
    {"KovOperation", "0", "frmOperationChSet", "fgrOperationChSet", OperationPage}};

struct ChannelOnTheDisplay : OnTheDisplay {
  // Behind the screen the keyboard is in the row that opened it.
  void Opened(const ScreenOfAModel& which, int row, const std::function<void()>& open,
              const std::function<void(QWidget&)>& act) {
    auto& table = Find<GridView>(which.table);
    InTheScreen(which.screen, open, act);
    EXPECT_TRUE(hands.BecomesActive(Window())) << "behind the screen";
    EXPECT_EQ(&table, QApplication::focusWidget());
    EXPECT_EQ(row, table.currentIndex().row());
  }
  void OpenedByDoubleClick(const ScreenOfAModel& which, int row, const std::function<void(QWidget&)>& act) {
    Opened(
        which, row, [&] { DoubleClickCell(Find<GridView>(which.table), row); }, act);
  }
  void OpenedByEnter(const ScreenOfAModel& which, int row, const std::function<void(QWidget&)>& act) {
    ClickCell(Find<GridView>(which.table), row);
    Opened(
        which, row, [&] { hands.Press(Key::Return); }, act);
  }
  // The entry of a list that reads so.
  void ChooseText(QWidget& screen, const char* list, const char* text) {
    auto& box = In<QComboBox>(screen, list);
    const int row = box.findText(QString::fromUtf8(text));
    ASSERT_GE(row, 0) << text;
    Choose(box, row);
  }
  // The list that has the keyboard goes to a row by the arrow keys.
  void ArrowTo(QComboBox& list, int row) {
    TabTo(list);
    for (int steps = std::abs(row - list.currentIndex()); steps > 0; --steps) {
      hands.Press(row < list.currentIndex() ? Key::Up : Key::Down);
    }
    EXPECT_EQ(row, list.currentIndex());
  }
  // In full, for the keyboard: a field that the Tab key enters is typed over.
  void TypeInto(QWidget& screen, const char* field, std::string_view text) {
    TabTo(Field(screen, field));
    hands.SelectAll();
    hands.Type(text);
  }
  static std::string Caption(QWidget& screen, const char* label) {
    return In<QLabel>(screen, label).text().trimmed().toStdString(); // a formula ends with a blank
  }
  bool RowShows(const char* table, int row, std::string_view text) {
    const QAbstractItemModel& model = *Find<GridView>(table).model();
    for (int col = 0; col < model.columnCount(); ++col) {
      if (model.index(row, col).data().toString().trimmed() == QString::fromUtf8(text)) {
        return true;
      }
    }
    return false;
  }
  void ClickApply(QWidget& screen) { hands.Click(In<QPushButton>(screen, "OKButton")); }
  void ClickClose(QWidget& screen) {
    hands.Click(In<QPushButton>(screen, "CancelButton"));
    EXPECT_FALSE(screen.isVisible());
  }
};

constexpr const ScreenOfAModel& KovChannel = Screens[0];
constexpr const ScreenOfAModel& KovOperation = Screens[2];

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

// --- Formulas

struct FormulasOnTheDisplay : ChannelOnTheDisplay {
  void SetUp() override {
    OpenProgram();
    ClickTab(OperationPage);
  }
};

TEST_F(FormulasOnTheDisplay, FourFormulasOfAnOperationChannelByTheMouse) {
  OpenedByDoubleClick(KovOperation, 1, [&](QWidget& screen) {
    for (const int formula : {1, 2, 3, 4}) {
      const std::string number = std::to_string(formula);
      auto& set = In<QPushButton>(screen, ("cmdFormulaSet" + number).c_str());
      InTheScreen(
          "frmFormula", [&] { hands.Click(set); },
          [&](QWidget& terms) {
            auto& setTerm = In<QPushButton>(terms, "btnSet");
            InTheScreen(
                "frmOpSetting", [&] { hands.Click(setTerm); },
                [&](QWidget& term) {
                  Choose(In<QComboBox>(term, "cmbInputChNo1"), formula);
                  hands.Click(In<QPushButton>(term, "btnOk"));
                });
            EXPECT_TRUE(hands.BecomesActive(terms));
            EXPECT_EQ(&setTerm, QApplication::focusWidget());
            hands.Click(In<QPushButton>(terms, "btnNext"));
            InTheScreen(
                "frmOpSetting", [&] { hands.Click(setTerm); },
                [&](QWidget& term) {
                  Choose(In<QComboBox>(term, "cmbOpFourRules"), 2);
                  Choose(In<QComboBox>(term, "cmbInputChNo1"), formula + 5);
                  hands.Click(In<QPushButton>(term, "btnOk"));
                });
            EXPECT_TRUE(hands.BecomesActive(terms));
            hands.Click(In<QPushButton>(terms, "OKButton"));
            EXPECT_FALSE(terms.isVisible());
          });
      EXPECT_TRUE(hands.BecomesActive(screen));
      EXPECT_EQ(&set, QApplication::focusWidget());
      EXPECT_EQ("C0" + std::to_string(formula + 1) + "-C" + (formula + 6 < 10 ? "0" : "") +
                    std::to_string(formula + 6),
                Caption(screen, ("lblFormula" + number).c_str()));
    }
    ClickApply(screen);
    ClickClose(screen);
  });
  for (const char* formula : {"C02-C07", "C03-C08", "C04-C09", "C05-C10"}) {
    EXPECT_TRUE(RowShows("fgrOperationChSet", 1, formula)) << formula;
  }
  EXPECT_EQ(0, boxes.Shown());
}

TEST_F(FormulasOnTheDisplay, AFormulaByTheKeyboardAlone) {
  std::string formula;
  OpenedByEnter(KovOperation, 0, [&](QWidget& screen) {
    auto& set = In<QPushButton>(screen, "cmdFormulaSet1");
    TabTo(set);
    InTheScreen(
        "frmFormula", [&] { hands.Press(Key::Return); },
        [&](QWidget& terms) {
          TabTo(In<QPushButton>(terms, "btnSet"));
          InTheScreen(
              "frmOpSetting", [&] { hands.Press(Key::Return); },
              [&](QWidget& term) {
                ArrowTo(In<QComboBox>(term, "cmbOpContents"), 1);
                ArrowTo(In<QComboBox>(term, "cmbInputChNo1"), 2);
                TabTo(In<QPushButton>(term, "btnOk"));
                hands.Press(Key::Return);
                EXPECT_FALSE(term.isVisible());
              });
          EXPECT_TRUE(hands.BecomesActive(terms));
          TabTo(In<QPushButton>(terms, "OKButton"));
          hands.Press(Key::Return);
          EXPECT_FALSE(terms.isVisible());
        });
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&set, QApplication::focusWidget());
    formula = Caption(screen, "lblFormula1");
    TabTo(In<QPushButton>(screen, "OKButton"));
    hands.Press(Key::Return);
    hands.Press(Key::Escape);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ("ABS(C03)", formula);
  EXPECT_TRUE(RowShows("fgrOperationChSet", 0, formula));
}

// All inputs of a formula are in the mouse's reach, the last ones by a scroll bar.
TEST_F(FormulasOnTheDisplay, ALongListOpensBelowItsFieldAndScrolls) {
  OpenedByDoubleClick(KovOperation, 0, [&](QWidget& screen) {
    InTheScreen(
        "frmFormula", [&] { hands.Click(In<QPushButton>(screen, "cmdFormulaSet1")); },
        [&](QWidget& terms) {
          InTheScreen(
              "frmOpSetting", [&] { hands.Click(In<QPushButton>(terms, "btnSet")); },
              [&](QWidget& term) {
                auto& inputs = In<QComboBox>(term, "cmbInputChNo1");
                hands.Click(inputs);
                const QAbstractItemView& rows = *inputs.view();
                ASSERT_TRUE(QTest::qWaitFor([&] { return rows.isVisible(); }));
                EXPECT_GE(rows.mapToGlobal(QPoint(0, 0)).y(),
                          inputs.mapToGlobal(inputs.rect().bottomLeft()).y());
                const QRect row = rows.visualRect(inputs.model()->index(0, 0));
                EXPECT_LE(rows.viewport()->height(), 20 * row.height() + row.height() / 2);
                EXPECT_TRUE(rows.verticalScrollBar()->isVisible());
                hands.Press(Key::Escape); // closes the list alone
                EXPECT_TRUE(QTest::qWaitFor([&] { return !rows.isVisible(); }));
                EXPECT_TRUE(term.isVisible());
              });
        });
  });
}

// What a screen that is left without "適用" has set stays on the screen.
TEST_F(FormulasOnTheDisplay, EscGoesBackOneScreenAtATimeAndKeepsNothing) {
  const std::vector<std::int16_t> before = AllNumbers();
  OpenedByDoubleClick(KovOperation, 0, [&](QWidget& screen) {
    auto& set = In<QPushButton>(screen, "cmdFormulaSet1");
    InTheScreen(
        "frmFormula", [&] { hands.Click(set); },
        [&](QWidget& terms) {
          auto& setTerm = In<QPushButton>(terms, "btnSet");
          InTheScreen(
              "frmOpSetting", [&] { hands.Click(setTerm); },
              [&](QWidget& term) {
                Choose(In<QComboBox>(term, "cmbInputChNo1"), 3);
                hands.Press(Key::Escape);
                EXPECT_FALSE(term.isVisible());
              });
          EXPECT_TRUE(hands.BecomesActive(terms));
          EXPECT_EQ(&setTerm, QApplication::focusWidget());
          hands.Press(Key::Escape);
          EXPECT_FALSE(terms.isVisible());
        });
    EXPECT_TRUE(hands.BecomesActive(screen));
    EXPECT_EQ(&set, QApplication::focusWidget());
    EXPECT_EQ("", Caption(screen, "lblFormula1"));
    hands.Press(Key::Escape);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(before, AllNumbers());
}

} // namespace
} // namespace loader::test
