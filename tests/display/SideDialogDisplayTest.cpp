// The side dialogs, from the double click or the Enter key on a row to the row that shows the change, by
// mouse and by the keyboard alone.
#include <QCheckBox>
#include <QComboBox>

#include "core/ModelProfile.h"
#include "qt/GridView.h"
#include "tests/display/DisplayFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

// A dialog, the row that opens it, and a field that takes a text there.
struct Side {
  const char* dialog;
  int page;
  const char* table;
  int row; // below the headings
  const char* field;
  const char* typed;
  int column; // of the table: where the change shows
  const char* bad;
  int message; // why the bad text is refused
};
void PrintTo(const Side& side, std::ostream* out) {
  *out << side.dialog;
}

struct SideDialog : OnTheDisplay, testing::WithParamInterface<Side> {
  void SetUp() override {
    OpenProgram();
    auto& pages = Find<QTabWidget>("tbsParameter");
    const QTabBar& bar = *pages.tabBar();
    hands.ClickAt(bar, bar.tabRect(GetParam().page).center());
    ASSERT_EQ(GetParam().page, pages.currentIndex());
  }
  GridView& Table() { return Find<GridView>(GetParam().table); }
  QPoint Cell() { return Table().visualRect(Table().model()->index(GetParam().row, 0)).center(); }
  void DoubleClickRow() { hands.DoubleClickAt(*Table().viewport(), Cell()); }
  void EnterRow() {
    hands.ClickAt(*Table().viewport(), Cell());
    hands.Press(Key::Return);
  }
  std::string Shown() {
    const GridModel& cells = Table().Model();
    return ToUtf8(cells.CellAt(GetParam().row + cells.FixedRows(), GetParam().column).text);
  }
  void ExpectBackAtTheRow() {
    EXPECT_EQ(&Table(), QApplication::focusWidget());
    EXPECT_EQ(GetParam().row, Table().currentIndex().row());
  }
  // By the Tab key alone, from where the keyboard is.
  void TabTo(QWidget& widget) {
    for (int presses = 0; QApplication::focusWidget() != &widget && presses < 60; ++presses) {
      hands.Press(Key::Tab);
    }
    EXPECT_EQ(&widget, QApplication::focusWidget());
  }
};

TEST_P(SideDialog, AnEditByTheMouseShowsInTheRow) {
  During(
      GetParam().dialog, [&] { DoubleClickRow(); },
      [&](QWidget& dialog) {
        hands.TypeOver(Field(dialog, GetParam().field), GetParam().typed);
        hands.Click(In<QPushButton>(dialog, "btnOk"));
        EXPECT_TRUE(dialog.isVisible()) << "it stays";
        hands.Click(In<QPushButton>(dialog, "btnCancel"));
        EXPECT_FALSE(dialog.isVisible());
      });
  EXPECT_EQ(0, boxes.Shown());
  EXPECT_EQ(GetParam().typed, Shown());
  ExpectBackAtTheRow();
}

TEST_P(SideDialog, ByTheKeyboardAloneItIsTheSame) {
  During(
      GetParam().dialog, [&] { EnterRow(); },
      [&](QWidget& dialog) {
        TabTo(Field(dialog, GetParam().field));
        hands.SelectAll();
        hands.Type(GetParam().typed);
        TabTo(In<QPushButton>(dialog, "btnOk"));
        hands.Type(" ");
        TabTo(In<QPushButton>(dialog, "btnCancel"));
        hands.Press(Key::Return);
        EXPECT_FALSE(dialog.isVisible());
      });
  EXPECT_EQ(0, boxes.Shown());
  EXPECT_EQ(GetParam().typed, Shown());
  ExpectBackAtTheRow();
}

TEST_P(SideDialog, AClickOnApplyWithARefusedTextStoresNothingAndTheKeyboardIsBackInTheField) {
  const std::vector<std::int16_t> before = AllNumbers();
  const std::string shown = Shown();
  During(
      GetParam().dialog, [&] { DoubleClickRow(); },
      [&](QWidget& dialog) {
        QLineEdit& field = Field(dialog, GetParam().field);
        hands.TypeOver(field, GetParam().bad);
        std::u16string text(LoadText(TextId::At(GetParam().message)));
        ExpectBox(Replace(text, u"@MID@", u","));
        auto& apply = In<QPushButton>(dialog, "btnOk");
        hands.Click(apply);
        EXPECT_EQ(1, boxes.Shown());
        EXPECT_TRUE(hands.BecomesActive(dialog));
        EXPECT_EQ(&field, QApplication::focusWidget());
        EXPECT_FALSE(field.selectedText().isEmpty());
        EXPECT_FALSE(apply.isDown());
        EXPECT_EQ(before, AllNumbers());
        hands.Press(Key::Escape); // closes without another word
        EXPECT_FALSE(dialog.isVisible());
      });
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_EQ(before, AllNumbers());
  EXPECT_EQ(shown, Shown());
  ExpectBackAtTheRow();
}

TEST_P(SideDialog, ATypedNumberThatIsLeftByTabAlonePassesAndATypedTextStays) {
  During(
      GetParam().dialog, [&] { DoubleClickRow(); },
      [&](QWidget& dialog) {
        QLineEdit& field = Field(dialog, GetParam().field);
        hands.TypeOver(field, GetParam().typed);
        auto& number = Field(dialog, "txtSelectNo");
        const QString shown = number.text();
        hands.Click(number);
        hands.Press(Key::Tab);
        EXPECT_EQ(GetParam().typed, field.text().toStdString());
        EXPECT_EQ(shown, number.text());
        hands.Press(Key::Escape);
      });
  EXPECT_EQ(0, boxes.Shown());
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, SideDialog,
    testing::Values(Side{"frmGroupSetting", 3, "fgrGroup", 2, "txtDispNameTag", "line 3", 13, "a,b", 62203},
                    Side{"frmMsgSetting", 3, "fgrMess", 3, "txtMessage", "pump on", 1, "a,b", 62301},
                    Side{"frmUnitSetting", 3, "fgrUnit", 1, "txtMessage", "l/km", 1, "a,b", 62601},
                    Side{"frmConstSetting", 1, "fgrConst", 5, "txtMessage", "12.345", 1, "abc", 62200},
                    Side{"frmEMailTriggerSetting", 5, "flxEMailTriggerSetting", 1, "txtTitle", "alarm", 1,
                         "a,b", 62401}),
    [](const auto& tested) { return std::string(tested.param.dialog); });

} // namespace
} // namespace loader::test
