// The main window by the keyboard, and what a refused field does that turns the page.
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QWheelEvent>
#include <set>

#include "channel/modUtil.h"
#include "core/TextTable.h"
#include "qt/GridView.h"
#include "tests/qt/Boxes.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/qt/Waiting.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

struct MainWindowKeys : MainWindowTest {
  Boxes boxes;

  void TearDown() override { StopTimer(WaitTimer2); }
  QTabWidget& Pages() { return Find<QTabWidget>("tbsParameter"); }
  void ClickTab(int page) {
    QTabBar& bar = *Pages().tabBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(page).center());
  }
  void TypeWrongValue(const char* field) {
    auto& edit = Find<QLineEdit>(field);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QStringLiteral("bad"));
  }
  static void GuardEnds() {
    test::WaitUntil([] { return !WaitTimer2.Enabled; });
  }
};

TEST_F(MainWindowKeys, TheTabKeyGoesRoundTheWholeWindowOnEveryPage) {
  Start("0");
  for (int page = 0; page < Pages().count(); ++page) {
    Pages().setCurrentIndex(page);
    auto& start = Find<QComboBox>("cmbType");
    start.setFocus();
    std::set<QWidget*> met;
    constexpr int MoreThanThereAre = 200;
    for (int step = 0; step < MoreThanThereAre; ++step) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      met.insert(QApplication::focusWidget());
      if (QApplication::focusWidget() == &start) {
        break;
      }
    }
    EXPECT_TRUE(met.contains(&start)) << "page " << page << ": the round does not close";
    for (QWidget* widget : Window().findChildren<QWidget*>()) {
      const bool field =
          qobject_cast<QLineEdit*>(widget) != nullptr || qobject_cast<QComboBox*>(widget) != nullptr;
      if (field && widget->isVisible() && widget->isEnabled() &&
          (widget->focusPolicy() & Qt::TabFocus) != 0) {
        EXPECT_TRUE(met.contains(widget)) << "page " << page << ": " << widget->objectName().toStdString();
      }
    }
  }
}

TEST_F(MainWindowKeys, ReturnStoresTheValueOfAFieldOfAPage) {
  Start("0");
  ClickTab(RecorderPage);
  auto& field = Find<QLineEdit>("txtAlarmHist");
  field.setFocus();
  field.selectAll();
  QTest::keyClicks(&field, QStringLiteral("012"));
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_EQ(12, Stored("H", 0, "ALMH"));
  EXPECT_EQ(QStringLiteral("12"), field.selectedText()); // as it is stored
  EXPECT_TRUE(field.hasFocus());
}

// The second Return comes before the guard has ended, as that of a user who types it twice.
TEST_F(MainWindowKeys, ReturnInAWrongFieldIsOneMessageAndTheFieldIsNotLeftWithoutAnother) {
  Start("0");
  ClickTab(RecorderPage);
  const std::vector<std::int16_t> before = AllNumbers();
  TypeWrongValue("txtAlarmHist");
  auto& field = Find<QLineEdit>("txtAlarmHist");
  boxes.Expect(std::u16string(LoadText(62200)));
  QTest::keyClick(&field, Qt::Key_Return);
  ASSERT_TRUE(WaitTimer2.Enabled);
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_EQ(1, boxes.Shown());
  EXPECT_TRUE(QTest::qWaitFor([&] { return field.hasFocus(); }));
  EXPECT_EQ(QStringLiteral("bad"), field.selectedText());
  GuardEnds();
  boxes.Expect(std::u16string(LoadText(62200)));
  QTest::keyClick(&field, Qt::Key_Tab);
  EXPECT_EQ(2, boxes.Shown());
  EXPECT_TRUE(QTest::qWaitFor([&] { return field.hasFocus(); }));
  EXPECT_EQ(before, AllNumbers());
}

TEST_F(MainWindowKeys, APageOfTablesIsEnteredInTheFirstRowOfItsFirstTable) {
  Start("0");
  ClickTab(RecorderPage); // the keyboard is on a page that the next click hides
  ClickTab(DisplayPage);
  auto& table = Find<GridView>("fgrGroup");
  EXPECT_TRUE(table.hasFocus());
  EXPECT_EQ(0, table.currentIndex().row());
  EXPECT_EQ(1, frmParamLoader->fgrGroup.Row);
}

TEST_F(MainWindowKeys, ARefusedFieldThatWasScrolledAwayStandsBeforeTheUserAgain) {
  Start("0");
  ClickTab(RecorderPage);
  TypeWrongValue("txtAlarmHist");
  auto& field = Find<QLineEdit>("txtAlarmHist");
  auto& page = Find<QScrollArea>("pageRecorder");
  page.verticalScrollBar()->setValue(page.verticalScrollBar()->maximum());
  ASSERT_TRUE(field.visibleRegion().isEmpty()) << "the page does not scroll far enough";
  boxes.Expect(std::u16string(LoadText(62200)));
  QTest::mouseClick(&Find<QComboBox>("cmbDI_8"), Qt::LeftButton);
  EXPECT_EQ(&field, Window().focusWidget());
  EXPECT_EQ(field.rect(), field.visibleRegion().boundingRect());
}

TEST_F(MainWindowKeys, WhatNoCaptionNamesTellsItsNameAsAToolTip) {
  Start("0");
  ClickTab(EthernetPage);
  EXPECT_EQ(QStringLiteral("Web ｻｰﾊﾞｰ メッセージ"), Find<QComboBox>("cmbWebSrvMsgFunc").toolTip());
  EXPECT_TRUE(Find<QComboBox>("cmbWebSrvFunc").toolTip().isEmpty());
}

// What is typed next is meant for the refused field: no list and no other field may take it.
TEST_F(MainWindowKeys, AFieldThatTurnsToAnotherPageLeavesTheKeyboardToTheTabs) {
  struct Refused {
    const char* field;
    int page;
  };
  for (const Refused refused : {Refused{"txtAVG", OperationPage}, Refused{"txtStationNo", RecorderPage}}) {
    if (!platform) {
      Start("0");
    }
    ClickTab(refused.page);
    const std::vector<std::int16_t> before = AllNumbers();
    TypeWrongValue(refused.field);
    boxes.Expect(std::u16string(LoadText(62200)));
    QTest::keyClick(&Find<QLineEdit>(refused.field), Qt::Key_Tab);
    EXPECT_NE(refused.page, Pages().currentIndex());
    EXPECT_EQ(Pages().tabBar(), Window().focusWidget()) << refused.field;
    QTest::keyClicks(Window().focusWidget(), QStringLiteral("5"));
    EXPECT_EQ(before, AllNumbers());
    GuardEnds();
    ClickTab(refused.page);
    auto& field = Find<QLineEdit>(refused.field);
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, QStringLiteral("1"));
    QTest::keyClick(&field, Qt::Key_Tab);
  }
}

// A recorder may hold an address that none of its parts can be.
TEST_F(MainWindowKeys, APageWithAWrongStoredValueCanBeLeftAgain) {
  Start("0");
  Put("J", 0, "SIP1", 300);
  for (int visit = 0; visit < 2; ++visit) {
    ClickTab(MailPage);
    EXPECT_EQ(Pages().tabBar(), Window().focusWidget());
    ClickTab(RecorderPage);
    EXPECT_EQ(RecorderPage, Pages().currentIndex());
  }
  EXPECT_EQ(0, boxes.Shown());
}

TEST_F(MainWindowKeys, CtrlTabTurnsThePagesFromAListToo) {
  Start("0");
  ClickTab(RecorderPage);
  auto& list = Find<QComboBox>("cmbMainSample");
  ASSERT_TRUE(list.hasFocus());
  QTest::keyClick(&list, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(DisplayPage, Pages().currentIndex());
  EXPECT_EQ(DisplayPage, frmParamLoader->tbsParameter.current);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(RecorderPage, Pages().currentIndex());
}

TEST_F(MainWindowKeys, CtrlTabOutOfAWrongFieldTellsOnce) {
  Start("0");
  ClickTab(RecorderPage);
  TypeWrongValue("txtAlarmHist");
  boxes.Expect(std::u16string(LoadText(62200)));
  QTest::keyClick(&Find<QLineEdit>("txtAlarmHist"), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(RecorderPage, Pages().currentIndex());
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QLineEdit>("txtAlarmHist").hasFocus(); }));
}

// It would turn past the check of a field, and past the rule which field of a page gets the keyboard.
TEST_F(MainWindowKeys, TheWheelOverTheTabsTurnsNoPage) {
  Start("0");
  ClickTab(RecorderPage);
  TypeWrongValue("txtAlarmHist");
  QTabBar& bar = *Pages().tabBar();
  const QPoint spot = bar.tabRect(DisplayPage).center();
  for (const int turn : {-120, 120}) {
    QWheelEvent wheel(spot, bar.mapToGlobal(spot), {}, QPoint(0, turn), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&bar, &wheel);
    EXPECT_EQ(RecorderPage, Pages().currentIndex());
  }
  EXPECT_TRUE(Find<QLineEdit>("txtAlarmHist").hasFocus());
  EXPECT_EQ(0, boxes.Shown());
}

// A refusal in a timer field turns to the page of the recorder's settings, though the field lies on another
// one.
TEST_F(MainWindowKeys, AFieldWhosePageWasTurnedAwayCanBeComeBackToAndMended) {
  Start("0");
  ClickTab(OperationPage);
  TypeWrongValue("txtHPLP");
  boxes.Expect(std::u16string(LoadText(62200)));
  ClickTab(DisplayPage);
  ASSERT_EQ(RecorderPage, Pages().currentIndex());
  GuardEnds();

  ClickTab(OperationPage);
  ASSERT_EQ(OperationPage, Pages().currentIndex());
  EXPECT_EQ(1, boxes.Shown());
  auto& field = Find<QLineEdit>("txtHPLP");
  field.setFocus();
  field.selectAll();
  QTest::keyClicks(&field, QStringLiteral("7"));
  ClickTab(DisplayPage);
  EXPECT_EQ(DisplayPage, Pages().currentIndex());
  EXPECT_EQ(7, NumValue("E", 0, "TIMH"));
}

TEST_F(MainWindowKeys, TheStationNumberTooCanBeComeBackTo) {
  Start("0");
  ClickTab(RecorderPage);
  TypeWrongValue("txtStationNo");
  boxes.Expect(std::u16string(LoadText(62200)));
  ClickTab(ChannelPage);
  ASSERT_EQ(EthernetPage, Pages().currentIndex());
  GuardEnds();
  ClickTab(RecorderPage);
  EXPECT_EQ(RecorderPage, Pages().currentIndex());
  EXPECT_EQ(1, boxes.Shown());
}

} // namespace
} // namespace loader::test
