// A field's check runs before the action that takes the focus from it, and once for each leaving.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QWindow>

#include "qt/GridView.h"
#include "tests/qt/SampleForms.h"

namespace loader::test {
namespace {

constexpr auto Complaint = u"数字ではありません。";

struct LostFocus : SampleTest {
  void SetUp() override {
    FillList(screen.cmbKind, std::vector<std::u16string>{u"a", u"b", u"c"});
    screen.cmbKind.index = 0;
    screen.fgrTable.Resize(4, 3);
    ShowSample();
    AcceptOnlyGood(screen.txtName);
    screen.btnApply.onClick = [this] { ++acted; };
    screen.cmbKind.onChange = [this] { ++acted; };
    screen.chkOn.onClick = [this] { ++acted; };
    screen.smenuOpen.onClick = [this] { ++acted; };
    screen.tool.onClick = [this] { ++acted; };
    screen.tbsPages.onChange = [this] { ++acted; };
    screen.lblColour.onClick = [this] { ++acted; };
  }
  QLineEdit& Field() { return Find<QLineEdit>("txtName"); }
  void EnterWrongValue() { TypeOver(Field(), "bad"); }
  void EnterGoodValue() { TypeOver(Field(), "good"); }
  void ExpectBackInTheField() {
    EXPECT_TRUE(GetsFocus(Field()));
    EXPECT_EQ(QStringLiteral("bad"), Field().selectedText());
    EXPECT_EQ(0, acted);
    EXPECT_EQ(1, checks);
    EXPECT_EQ(1, boxes.Shown());
  }
  QTabBar& Tabs() { return *Find<QTabWidget>("tbsPages").tabBar(); }
  void ClickTab(int page) {
    QTest::mouseClick(&Tabs(), Qt::LeftButton, Qt::NoModifier, Tabs().tabRect(page).center());
  }
  int acted = 0;
};

TEST_F(LostFocus, AClickOnAButtonAppliesNothingWhileTheFieldIsWrong) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  Click(Find<QPushButton>("btnApply"));
  ExpectBackInTheField();
  EXPECT_FALSE(Find<QPushButton>("btnApply").isDown());
}

TEST_F(LostFocus, TheButtonWorksOnceTheFieldIsRight) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  Click(Find<QPushButton>("btnApply"));
  QTest::keyClicks(&Field(), QStringLiteral("good"));
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(1, acted);
  EXPECT_EQ(2, checks);
}

// As the window system delivers it: press and release to the window, which finds the widget.
TEST_F(LostFocus, TheClickAfterASwallowedPressGoesWhereItPoints) {
  const auto at = [this](const char* name) {
    auto& widget = Find<QWidget>(name);
    return widget.mapTo(&Window(), QPoint(8, widget.height() / 2));
  };
  QWindow* window = Window().windowHandle();
  EnterWrongValue();
  boxes.Expect(Complaint);
  QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at("btnApply"));
  QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at("btnApply"));
  ExpectBackInTheField();
  EXPECT_FALSE(Find<QPushButton>("btnApply").isDown());
  EnterGoodValue();
  QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at("chkOn"));
  QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at("chkOn"));
  EXPECT_TRUE(screen.chkOn.checked);
  EXPECT_EQ(1, acted);
  EXPECT_EQ(2, checks);
}

TEST_F(LostFocus, TheCheckRunsOnceAndBeforeTheClick) {
  EnterGoodValue();
  screen.btnApply.onClick = [this] {
    EXPECT_EQ(1, checks);
    ++acted;
  };
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(1, acted);
  EXPECT_EQ(1, checks);
  EXPECT_TRUE(GetsFocus(Find<QPushButton>("btnApply")));
}

TEST_F(LostFocus, TabStaysInAWrongField) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  QTest::keyClick(&Field(), Qt::Key_Tab);
  ExpectBackInTheField();
}

TEST_F(LostFocus, TabLeavesARightFieldWithOneCheck) {
  EnterGoodValue();
  QTest::keyClick(&Field(), Qt::Key_Tab);
  EXPECT_FALSE(Field().hasFocus());
  EXPECT_EQ(1, checks);
}

TEST_F(LostFocus, BacktabStaysInAWrongField) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  QTest::keyClick(&Field(), Qt::Key_Backtab, Qt::ShiftModifier);
  ExpectBackInTheField();
}

TEST_F(LostFocus, AMenuEntryIsSwallowed) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  Find<QAction>("smenuOpen").trigger();
  ExpectBackInTheField();
}

TEST_F(LostFocus, AMenuEntryRunsAfterTheCheckOfARightField) {
  EnterGoodValue();
  Find<QAction>("smenuOpen").trigger();
  EXPECT_EQ(1, acted);
  EXPECT_EQ(1, checks);
}

TEST_F(LostFocus, AfterAMenuEntryTheFieldIsCheckedAgainWhenItIsLeft) {
  EnterGoodValue();
  Find<QAction>("smenuOpen").trigger();
  QTest::keyClick(&Field(), Qt::Key_Tab);
  EXPECT_EQ(2, checks);
}

TEST_F(LostFocus, AShortcutIsSwallowed) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  QTest::keyClick(&Window(), Qt::Key_O, Qt::ControlModifier);
  ExpectBackInTheField();
}

TEST_F(LostFocus, AToolButtonIsSwallowed) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  Click(*Find<QToolBar>("V").widgetForAction(&Find<QAction>("V_1")));
  ExpectBackInTheField();
}

TEST_F(LostFocus, APageStaysWhileItsFieldIsWrong) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  ClickTab(1);
  ExpectBackInTheField();
  EXPECT_EQ(0, Tabs().currentIndex());
  EXPECT_EQ(0, screen.tbsPages.current);
}

TEST_F(LostFocus, APageChangeByKeyStaysToo) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  QTest::keyClick(&Field(), Qt::Key_Tab, Qt::ControlModifier);
  ExpectBackInTheField();
  EXPECT_EQ(0, Tabs().currentIndex());
}

TEST_F(LostFocus, APageChangesAfterOneCheckOfARightField) {
  EnterGoodValue();
  ClickTab(1);
  EXPECT_EQ(1, screen.tbsPages.current);
  EXPECT_EQ(1, acted);
  EXPECT_EQ(1, checks);
}

TEST_F(LostFocus, AListDoesNotOpen) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  Click(Find<QComboBox>("cmbKind"));
  ExpectBackInTheField();
  EXPECT_EQ(nullptr, QApplication::activePopupWidget());
}

TEST_F(LostFocus, ACheckBoxKeepsItsMark) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  auto& box = Find<QCheckBox>("chkOn");
  QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box.height() / 2));
  ExpectBackInTheField();
  EXPECT_FALSE(box.isChecked());
}

TEST_F(LostFocus, AChoiceMadeWithoutTheMouseFallsBack) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  auto& combo = Find<QComboBox>("cmbKind");
  combo.setCurrentIndex(2);
  emit combo.activated(2); // as an assistive program does it
  ExpectBackInTheField();
  EXPECT_EQ(0, combo.currentIndex());
}

TEST_F(LostFocus, AMnemonicIsSwallowed) {
  screen.btnApply.caption = u"適用(&A)";
  platform.userInterface.Refresh();
  EnterWrongValue();
  boxes.Expect(Complaint);
  QTest::keyClick(&Window(), Qt::Key_A, Qt::AltModifier);
  ExpectBackInTheField();
  EXPECT_FALSE(Find<QPushButton>("btnApply").isDown());
}

TEST_F(LostFocus, AMnemonicRunsAfterOneCheckOfARightField) {
  screen.btnApply.caption = u"適用(&A)";
  platform.userInterface.Refresh();
  EnterGoodValue();
  QTest::keyClick(&Window(), Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return acted == 1; }));
  EXPECT_EQ(1, checks);
}

TEST_F(LostFocus, AClickOnALabelIsSwallowed) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  Click(Find<QLabel>("lblColour"));
  ExpectBackInTheField();
}

TEST_F(LostFocus, AnotherFieldIsNotEntered) {
  EnterWrongValue();
  screen.txtValue.onGotFocus = [] { FAIL() << "entered"; };
  boxes.Expect(Complaint);
  Click(Find<QLineEdit>("txtValue"));
  ExpectBackInTheField();
}

TEST_F(LostFocus, AFocusMovedByOtherMeansComesBack) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  Find<QLineEdit>("txtValue").setFocus(Qt::OtherFocusReason); // as an assistive program does it
  ExpectBackInTheField();
}

TEST_F(LostFocus, AFocusRequestOfTheProgramChecksTheFieldThatItLeaves) {
  EnterWrongValue();
  boxes.Expect(Complaint);
  RequestFocus(screen.txtValue);
  platform.userInterface.Refresh();
  ExpectBackInTheField();
}

TEST_F(LostFocus, ABoxIsNoLostFocus) {
  EnterWrongValue();
  boxes.Expect(u"done");
  ShowMessage(u"done");
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
  EXPECT_EQ(0, checks);
  boxes.Expect(Complaint);
  Click(Find<QPushButton>("btnApply"));
  EXPECT_EQ(1, checks);
  EXPECT_EQ(0, acted);
}

TEST_F(LostFocus, AnOpenMenuIsNoLostFocus) {
  EnterWrongValue();
  auto& menu = Find<QMenu>("menuFile");
  menu.popup(Window().mapToGlobal(QPoint(0, 0)));
  EXPECT_TRUE(menu.isVisible());
  menu.close();
  EXPECT_EQ(0, checks);
  EXPECT_TRUE(GetsFocus(Field()));
}

TEST_F(LostFocus, AnotherWindowIsNoLostFocus) {
  EnterWrongValue();
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
  Window().activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
  EXPECT_EQ(0, checks);
}

TEST_F(LostFocus, APressOnTheBackgroundIsNoLostFocus) {
  EnterWrongValue();
  Click(Find<QLabel>("lblPlain"));
  EXPECT_EQ(0, checks);
  EXPECT_TRUE(GetsFocus(Field()));
}

TEST_F(LostFocus, ACheckThatSpeaksButLetsGoLeavesNoButtonDown) {
  screen.txtName.onLostFocus = [this] {
    ++checks;
    ShowMessage(u"changed to the default");
  };
  EnterWrongValue();
  boxes.Expect(u"changed to the default");
  QTest::mousePress(&Find<QPushButton>("btnApply"), Qt::LeftButton);
  EXPECT_FALSE(Find<QPushButton>("btnApply").isDown());
  EXPECT_TRUE(GetsFocus(Find<QPushButton>("btnApply")));
  EXPECT_EQ(1, checks);
}

TEST_F(LostFocus, AFieldThatTheProgramHidesIsNotChecked) {
  EnterWrongValue();
  screen.txtName.visible = false;
  platform.userInterface.Refresh();
  EXPECT_EQ(0, checks);
}

TEST_F(LostFocus, ACheckThatFailsItselfIsToldAndLetsGo) {
  screen.txtName.onLostFocus = [] { throw std::runtime_error("out of range"); };
  EnterWrongValue();
  boxes.Expect(u"out of range");
  QTest::keyClick(&Field(), Qt::Key_Tab);
  EXPECT_FALSE(Field().hasFocus());
}

TEST_F(LostFocus, ATableIsNotEntered) {
  SelectPage(screen.tbsPages, 2);
  platform.userInterface.Refresh();
  acted = 0;
  AcceptOnlyGood(screen.txtAbove);
  auto& field = Find<QLineEdit>("txtAbove");
  TypeOver(field, "bad");
  auto& table = Find<GridView>("fgrTable");
  boxes.Expect(Complaint);
  const QPoint cell = table.visualRect(table.model()->index(1, 1)).center();
  QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, cell);
  EXPECT_TRUE(GetsFocus(field));
  EXPECT_EQ(0, screen.fgrTable.Row);
}

// The page of the field that is asked for does not show: nobody leaves the one the user is in.
TEST_F(LostFocus, AFocusThatCannotBeTakenChecksNoField) {
  EnterWrongValue();
  RequestFocus(screen.txtOther);
  platform.userInterface.Refresh();
  EXPECT_EQ(0, checks);
  EXPECT_EQ(&Field(), Window().focusWidget());
}

} // namespace
} // namespace loader::test
