// Formulas of an operation channel as a user sets them: three screens, one over the other.
#include <QScrollBar>

#include "tests/display/ChannelFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

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
