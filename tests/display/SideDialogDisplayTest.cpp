// The side dialogs as a user works them: opened from their tables, edited, applied and closed by mouse or
// keyboard, and where the keyboard is after a refused value and behind the dialog.
#include <functional>

#include "qt/GridView.h"
#include "tests/display/DisplayFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

struct TableDialog {
  const char* dialog;
  const char* table;
  int page;
  const char* field; // a text that is edited
  const char* typed;
  const char* section; // where "適用" stores it
  const char* tag;
  const char* bad = "a,b";
  int message = 62203;     // why that is refused; the dialogs have rows of their own with the same words
  const char* wrong = ","; // what of it is selected then
};
void PrintTo(const TableDialog& dialog, std::ostream* out) {
  *out << dialog.dialog;
}
const TableDialog TableDialogs[] = {
    {"frmGroupSetting", "fgrGroup", DisplayPage, "txtDispNameTag", "boiler", "G", "GNEM"},
    {"frmMsgSetting", "fgrMess", DisplayPage, "txtMessage", "too hot", "M", "MESS"},
    {"frmUnitSetting", "fgrUnit", DisplayPage, "txtMessage", "kcal", "U", "UNIT"},
    {"frmConstSetting", "fgrConst", OperationPage, "txtMessage", "12.345", "N", "CONS", "abc", 62200, "abc"},
    {"frmEMailTriggerSetting", "flxEMailTriggerSetting", MailPage, "txtTitle", "hot", "X", "ETTL"}};

struct SideDialog : OnTheDisplay, testing::WithParamInterface<TableDialog> {
  static constexpr int Row = 1; // of the table below its headings: the second entry

  void SetUp() override {
    OpenProgram();
    ClickTab(GetParam().page);
  }
  GridView& Table() { return Find<GridView>(GetParam().table); }
  void Opened(const std::function<void()>& open, const std::function<void(QWidget&)>& act) {
    InTheScreen(GetParam().dialog, open, act);
    EXPECT_TRUE(hands.BecomesActive(Window())) << "behind the dialog";
    EXPECT_EQ(&Table(), QApplication::focusWidget());
    EXPECT_EQ(Row, Table().currentIndex().row());
  }
  void OpenedByDoubleClick(const std::function<void(QWidget&)>& act) {
    Opened([&] { DoubleClickCell(Table(), Row); }, act);
  }
  void OpenedByEnter(const std::function<void(QWidget&)>& act) {
    ClickCell(Table(), Row);
    Opened([&] { hands.Press(Key::Return); }, act);
  }
  // The text, or the digits of a number.
  static std::string Stored() {
    const TableDialog& tested = GetParam();
    const ParamTextRecord* text = FindTextRecord(tested.section, Row, tested.tag);
    return text != nullptr ? ToUtf8(TrimRight(text->Value))
                           : std::to_string(NumRecord(tested.section, Row, tested.tag).Value);
  }
  static std::string Typed() {
    std::string typed = GetParam().typed;
    if (FindTextRecord(GetParam().section, Row, GetParam().tag) == nullptr) {
      std::erase(typed, '.');
    }
    return typed;
  }
  bool RowShows(const char* text) {
    const QAbstractItemModel& model = *Table().model();
    for (int col = 0; col < model.columnCount(); ++col) {
      if (model.index(Row, col).data().toString() == QString::fromUtf8(text)) {
        return true;
      }
    }
    return false;
  }
};
INSTANTIATE_TEST_SUITE_P(Dialogs, SideDialog, testing::ValuesIn(TableDialogs),
                         [](const auto& tested) { return std::string(tested.param.dialog); });

TEST_P(SideDialog, ADoubleClickOpensItAndWhatIsAppliedStandsInTheRow) {
  OpenedByDoubleClick([&](QWidget& dialog) {
    EXPECT_TRUE(Field(dialog, "txtSelectNo").text().endsWith(u'2'));
    hands.TypeOver(Field(dialog, GetParam().field), GetParam().typed);
    hands.Click(In<QPushButton>(dialog, "btnOk"));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Typed(), Stored());
    hands.Click(In<QPushButton>(dialog, "btnCancel"));
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(RowShows(GetParam().typed));
  EXPECT_EQ(0, boxes.Shown());
}

TEST_P(SideDialog, EnterOpensItAndTheKeyboardAloneDoesTheRest) {
  OpenedByEnter([&](QWidget& dialog) {
    TabTo(Field(dialog, GetParam().field));
    hands.SelectAll();
    hands.Type(GetParam().typed);
    TabTo(In<QPushButton>(dialog, "btnOk"));
    hands.Press(Key::Return);
    EXPECT_EQ(Typed(), Stored());
    TabTo(In<QPushButton>(dialog, "btnCancel"));
    hands.Press(Key::Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(RowShows(GetParam().typed));
}

// The entry number that is only passed through throws nothing away.
TEST_P(SideDialog, ATypedTextOutlivesTheTabKeyThroughTheNumber) {
  OpenedByDoubleClick([&](QWidget& dialog) {
    QLineEdit& field = Field(dialog, GetParam().field);
    hands.TypeOver(field, GetParam().typed);
    hands.Click(Field(dialog, "txtSelectNo"));
    hands.Press(Key::Tab);
    EXPECT_EQ(GetParam().typed, field.text().toStdString());
    hands.Press(Key::Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(0, boxes.Shown());
}

TEST_P(SideDialog, AClickOnApplyWithARefusedTextIsOneMessageAndTheKeyboardIsBackInTheField) {
  const std::string before = Stored();
  OpenedByDoubleClick([&](QWidget& dialog) {
    QLineEdit& field = Field(dialog, GetParam().field);
    hands.TypeOver(field, GetParam().bad);
    ExpectBox(Replace(LoadText(TextId::At(GetParam().message)), u"@MID@", u","));
    hands.Click(In<QPushButton>(dialog, "btnOk"));
    EXPECT_TRUE(hands.BecomesActive(dialog));
    EXPECT_EQ(&field, QApplication::focusWidget());
    EXPECT_EQ(GetParam().wrong, field.selectedText().toStdString());
    EXPECT_FALSE(In<QPushButton>(dialog, "btnOk").isDown());
    EXPECT_EQ(1, boxes.Shown());
    EXPECT_EQ(before, Stored());
    hands.Press(Key::Escape); // closes without a check
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_EQ(before, Stored());
}

} // namespace
} // namespace loader::test
