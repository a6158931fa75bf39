// The side dialogs as a user works them: opened from their tables, edited, applied and closed by mouse or
// keyboard, and where the keyboard is after a refused value and behind the dialog.
#include <QPointer>
#include <QTabBar>
#include <QTabWidget>
#include <functional>
#include <utility>

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
};
void PrintTo(const TableDialog& dialog, std::ostream* out) {
  *out << dialog.dialog;
}
const TableDialog TableDialogs[] = {
    {"frmGroupSetting", "fgrGroup", DisplayPage, "txtDispNameTag", "boiler", "G", "GNEM"},
    {"frmMsgSetting", "fgrMess", DisplayPage, "txtMessage", "too hot", "M", "MESS"},
    {"frmUnitSetting", "fgrUnit", DisplayPage, "txtMessage", "kcal", "U", "UNIT"},
    {"frmEMailTriggerSetting", "flxEMailTriggerSetting", MailPage, "txtTitle", "hot", "X", "ETTL"}};

// Runs `act` from the event loop of the window of that name, once it is shown.
class WhenShown final : public QObject {
public:
  WhenShown(const char* name, std::function<void(QWidget&)> act)
      : name_(QString::fromLatin1(name)), act_(std::move(act)) {
    qApp->installEventFilter(this);
  }
  // True when `act` has run; waits for it.
  [[nodiscard]] bool WasShown() const {
    return QTest::qWaitFor([this] { return done_; });
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->objectName() == name_ && !std::exchange(seen_, true)) {
      QMetaObject::invokeMethod(
          this,
          [this, window = QPointer<QWidget>(static_cast<QWidget*>(watched))] {
            ASSERT_NE(nullptr, window);
            act_(*window);
            done_ = true;
          },
          Qt::QueuedConnection);
    }
    return false;
  }

private:
  const QString name_;
  const std::function<void(QWidget&)> act_;
  bool seen_ = false;
  bool done_ = false;
};

struct SideDialog : OnTheDisplay, testing::WithParamInterface<TableDialog> {
  static constexpr int Row = 1; // of the table below its headings: the second entry

  void SetUp() override {
    OpenProgram();
    const QTabBar& bar = *Find<QTabWidget>("tbsParameter").tabBar();
    hands.ClickAt(bar, bar.tabRect(GetParam().page).center());
  }
  GridView& Table() { return Find<GridView>(GetParam().table); }
  QPoint CellOfTheRow() {
    return Table().visualRect(Table().model()->index(Row, 0)).center() + Table().viewport()->pos();
  }
  // The dialog opens some time after what the user has done, and `act` runs in it.
  void Opened(const std::function<void()>& open, const std::function<void(QWidget&)>& act) {
    const WhenShown dialog(GetParam().dialog, [&](QWidget& window) {
      EXPECT_TRUE(hands.BecomesActive(window));
      const QPointer<QWidget> still = &window;
      act(window);
      if (still != nullptr) {
        still->close();
      }
    });
    open();
    EXPECT_TRUE(dialog.WasShown());
    EXPECT_TRUE(hands.BecomesActive(Window())) << "behind the dialog";
    EXPECT_EQ(&Table(), QApplication::focusWidget());
    EXPECT_EQ(Row, Table().currentIndex().row());
  }
  void OpenedByDoubleClick(const std::function<void(QWidget&)>& act) {
    Opened([&] { hands.DoubleClickAt(*Table().viewport(), CellOfTheRow() - Table().viewport()->pos()); },
           act);
  }
  void OpenedByEnter(const std::function<void(QWidget&)>& act) {
    hands.ClickAt(*Table().viewport(), CellOfTheRow() - Table().viewport()->pos());
    Opened([&] { hands.Press(Key::Return); }, act);
  }
  static void TabTo(Hands& hands, const QWidget& widget) {
    constexpr int MoreThanThereAre = 60;
    for (int step = 0; step < MoreThanThereAre && QApplication::focusWidget() != &widget; ++step) {
      hands.Press(Key::Tab);
    }
    EXPECT_EQ(&widget, QApplication::focusWidget());
  }
  std::string StoredName() { return TrimmedText(GetParam().section, Row, GetParam().tag); }
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
    EXPECT_EQ(GetParam().typed, StoredName());
    hands.Click(In<QPushButton>(dialog, "btnCancel"));
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(RowShows(GetParam().typed));
  EXPECT_EQ(0, boxes.Shown());
}

TEST_P(SideDialog, EnterOpensItAndTheKeyboardAloneDoesTheRest) {
  OpenedByEnter([&](QWidget& dialog) {
    TabTo(hands, Field(dialog, GetParam().field));
    hands.SelectAll();
    hands.Type(GetParam().typed);
    TabTo(hands, In<QPushButton>(dialog, "btnOk"));
    hands.Press(Key::Return);
    EXPECT_EQ(GetParam().typed, StoredName());
    TabTo(hands, In<QPushButton>(dialog, "btnCancel"));
    hands.Press(Key::Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_TRUE(RowShows(GetParam().typed));
}

TEST_P(SideDialog, AClickOnApplyWithARefusedTextIsOneMessageAndTheKeyboardIsBackInTheField) {
  const std::string before = StoredName();
  OpenedByDoubleClick([&](QWidget& dialog) {
    QLineEdit& field = Field(dialog, GetParam().field);
    hands.TypeOver(field, "a,b");
    ExpectBox(Replace(LoadText(62203), u"@MID@", u","));
    hands.Click(In<QPushButton>(dialog, "btnOk"));
    EXPECT_TRUE(hands.BecomesActive(dialog));
    EXPECT_EQ(&field, QApplication::focusWidget());
    EXPECT_EQ(QStringLiteral(","), field.selectedText());
    EXPECT_FALSE(In<QPushButton>(dialog, "btnOk").isDown());
    EXPECT_EQ(1, boxes.Shown());
    EXPECT_EQ(before, StoredName());
    hands.Press(Key::Escape); // closes without a check
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_EQ(before, StoredName());
}

} // namespace
} // namespace loader::test
