// Closed lists under the keyboard: which keys scroll the page, where the focus is to be seen, and that a
// stray key does not change the model.
#include <QComboBox>
#include <QImage>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

#include "core/TextTable.h"
#include "qt/ReadableColour.h"
#include "tests/qt/Boxes.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

struct ListKeys : MainWindowTest {
  Boxes boxes;

  // As a click on the tab leaves it: the keyboard is in the first list of a page that is higher than the
  // window.
  QComboBox& ListAfterClickOnTab() {
    QTabBar& bar = *Find<QTabWidget>("tbsParameter").tabBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(RecorderPage).center());
    auto& list = Find<QComboBox>("cmbMainSample");
    EXPECT_TRUE(list.hasFocus());
    QTest::keyClick(&list, Qt::Key_Down); // from the first row, where some keys would change nothing
    return list;
  }
  QScrollBar& PageBar() { return *Find<QScrollArea>("pageRecorder").verticalScrollBar(); }
};

TEST_F(ListKeys, TheKeysOfThePageScrollItAndChangeNoRow) {
  Start("0");
  QComboBox& list = ListAfterClickOnTab();
  const int row = list.currentIndex();
  const std::vector<std::int16_t> before = AllNumbers();
  struct Step {
    Qt::Key key;
    bool down;
  };
  for (const Step step : {Step{Qt::Key_PageDown, true}, Step{Qt::Key_PageUp, false}, Step{Qt::Key_End, true},
                          Step{Qt::Key_Home, false}}) {
    const int from = PageBar().value();
    QTest::keyClick(&list, step.key);
    EXPECT_EQ(step.down, PageBar().value() > from) << step.key;
    EXPECT_NE(from, PageBar().value()) << step.key;
    EXPECT_EQ(row, list.currentIndex()) << step.key;
    EXPECT_EQ(row, ListNamed(*frmParamLoader, "cmbMainSample").index) << step.key;
  }
  EXPECT_EQ(before, AllNumbers());
  EXPECT_TRUE(list.hasFocus());
}

TEST_F(ListKeys, EndGoesToTheEndOfThePageAndHomeToItsBeginning) {
  Start("0");
  QComboBox& list = ListAfterClickOnTab();
  QTest::keyClick(&list, Qt::Key_End);
  EXPECT_EQ(PageBar().maximum(), PageBar().value());
  QTest::keyClick(&list, Qt::Key_Home);
  EXPECT_EQ(0, PageBar().value());
}

TEST_F(ListKeys, TheKeysOfThePageDoNotPickAModel) {
  Start("0");
  auto& models = Find<QComboBox>("cmbType");
  models.setFocus();
  for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_PageUp, Qt::Key_Home}) {
    QTest::keyClick(&models, key);
  }
  EXPECT_EQ(0, models.currentIndex());
  EXPECT_EQ(0, boxes.Shown());
}

TEST_F(ListKeys, ArrowsAndLettersPickARowAndF4OpensTheList) {
  Start("0");
  QComboBox& list = ListAfterClickOnTab();
  const int row = list.currentIndex();
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(row + 1, list.currentIndex());
  QTest::keyClick(&list, Qt::Key_Up);
  EXPECT_EQ(row, list.currentIndex());
  auto& onOff = Find<QComboBox>("cmbAlarmLach");
  onOff.setFocus();
  QTest::keyClick(&onOff, Qt::Key_Down);
  ASSERT_NE(onOff.currentText(), onOff.itemText(0));
  QTest::keyClicks(&onOff, onOff.itemText(0));
  EXPECT_EQ(0, onOff.currentIndex());
  QTest::keyClick(&onOff, Qt::Key_F4);
  EXPECT_NE(nullptr, QApplication::activePopupWidget());
  onOff.hidePopup();
}

// A key that would pick a row nobody sees shows the list instead; the next one picks.
TEST_F(ListKeys, AListThatWasScrolledAwayIsShownBeforeItsRowChanges) {
  Start("0");
  QComboBox& list = ListAfterClickOnTab();
  const int row = list.currentIndex();
  const std::vector<std::int16_t> before = AllNumbers();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_1, Qt::Key_F4}) {
    QTest::keyClick(&list, Qt::Key_End);
    ASSERT_TRUE(list.visibleRegion().isEmpty());
    QTest::keyClick(&list, Qt::Key_Control); // by itself it does nothing
    EXPECT_EQ(PageBar().maximum(), PageBar().value());
    QTest::keyClick(&list, key);
    EXPECT_EQ(list.rect(), list.visibleRegion().boundingRect()) << key;
    EXPECT_EQ(row, list.currentIndex()) << key;
    EXPECT_EQ(nullptr, QApplication::activePopupWidget()) << key;
  }
  EXPECT_EQ(before, AllNumbers());
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(row + 1, list.currentIndex());
}

// As when a scrolled page is turned to again, whose first list gets the keyboard.
TEST_F(ListKeys, AListThatGetsTheKeyboardIsShown) {
  Start("0");
  QComboBox& list = ListAfterClickOnTab();
  for (const Qt::FocusReason reason : {Qt::OtherFocusReason, Qt::MouseFocusReason}) {
    Find<QPushButton>("btnRegRead").setFocus();
    PageBar().setValue(PageBar().maximum());
    ASSERT_TRUE(list.visibleRegion().isEmpty());
    list.setFocus(reason);
    EXPECT_EQ(list.rect(), list.visibleRegion().boundingRect()) << reason;
  }
}

TEST_F(ListKeys, AFieldThatWasScrolledAwayIsShownWhenItIsTypedInto) {
  Start("0");
  ListAfterClickOnTab();
  auto& field = Find<QLineEdit>("txtAlarmHist");
  field.setFocus();
  const auto scrollAway = [&] {
    PageBar().setValue(PageBar().maximum());
    ASSERT_TRUE(field.visibleRegion().isEmpty());
  };
  scrollAway();
  QTest::keyClick(&field, Qt::Key_Shift);
  EXPECT_TRUE(field.visibleRegion().isEmpty());
  QTest::keyClick(&field, Qt::Key_7);
  EXPECT_EQ(field.rect(), field.visibleRegion().boundingRect());
  scrollAway();
  QInputMethodEvent letters;
  letters.setCommitString(QStringLiteral("8"));
  QApplication::sendEvent(&field, &letters);
  EXPECT_EQ(field.rect(), field.visibleRegion().boundingRect());
  EXPECT_TRUE(field.text().contains(QStringLiteral("78"))) << field.text().toStdString();
  field.setText(QStringLiteral("0"));
}

// In an open list nothing is picked before Enter.
TEST_F(ListKeys, InAnOpenListTheKeysGoToItsRows) {
  Start("0");
  QComboBox& list = ListAfterClickOnTab();
  list.showPopup();
  ASSERT_NE(nullptr, QApplication::activePopupWidget());
  QWidget* rows = QApplication::activePopupWidget()->focusWidget();
  ASSERT_NE(nullptr, rows);
  QTest::keyClick(rows, Qt::Key_End);
  QTest::keyClick(rows, Qt::Key_Return);
  EXPECT_EQ(list.count() - 1, list.currentIndex());
  EXPECT_EQ(list.count() - 1, ListNamed(*frmParamLoader, "cmbMainSample").index);
}

struct FocusWay {
  const char* name;
  Qt::FocusReason reason;
};
class FocusOfAControl : public ListKeys, public testing::WithParamInterface<FocusWay> {
protected:
  void ExpectSeen(QWidget& control) const;
};

void FocusOfAControl::ExpectSeen(QWidget& control) const {
  ASSERT_FALSE(control.window()->testAttribute(Qt::WA_KeyboardFocusChange)); // no Tab has been pressed
  const QImage without = control.grab().toImage();
  control.setFocus(GetParam().reason);
  const QImage with = control.grab().toImage();
  // the whole border, told from what was there and from what is around it
  const QColor around = control.window()->palette().color(QPalette::Window);
  for (const QPoint spot :
       {QPoint(0, control.height() / 2), QPoint(control.width() - 1, control.height() / 2),
        QPoint(control.width() / 2, 0), QPoint(control.width() / 2, control.height() - 1)}) {
    EXPECT_NE(without.pixelColor(spot), with.pixelColor(spot)) << spot.x() << "," << spot.y();
    EXPECT_GE(ContrastOf(with.pixelColor(spot), around), 3) << spot.x() << "," << spot.y();
  }
}

TEST_P(FocusOfAControl, IsToBeSeenHoweverItCame) {
  Start("0");
  Find<QPushButton>("btnRegRead").setFocus(Qt::MouseFocusReason);
  ExpectSeen(Find<QComboBox>("cmbType"));
  ExpectSeen(Find<QPushButton>("btnRegWrite"));
}
INSTANTIATE_TEST_SUITE_P(AllWays, FocusOfAControl,
                         testing::Values(FocusWay{"Mouse", Qt::MouseFocusReason},
                                         FocusWay{"Program", Qt::OtherFocusReason},
                                         FocusWay{"Popup", Qt::PopupFocusReason}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(ListKeys, AStrayKeyAndEnterKeepTheModelAndItsSetUp) {
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_R}) {
    if (platform == nullptr) {
      Start("0");
    }
    auto& models = Find<QComboBox>("cmbType");
    models.setFocus();
    FindNumRecord("H", 0, "ALMH")->Value = 7;
    const std::vector<std::int16_t> before = AllNumbers();
    boxes.Expect(std::u16string(LoadText(11016)), BoxAnswer::Cancel, [](QMessageBox& box) {
      EXPECT_EQ(box.button(QMessageBox::Cancel), box.defaultButton());
      EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
      QTest::keyClick(&box, Qt::Key_Return);
      EXPECT_EQ(QMessageBox::Cancel, box.result());
    });
    QTest::keyClick(&models, key);
    EXPECT_EQ(0, models.currentIndex());
    EXPECT_EQ(before, AllNumbers());
  }
}

// Every other question is asked by a button or a menu entry, and Enter goes on.
TEST_F(ListKeys, AnotherQuestionIsAnsweredOkByEnter) {
  Start("0");
  boxes.Expect(std::u16string(LoadText(20104)), BoxAnswer::Cancel,
               [](QMessageBox& box) { EXPECT_EQ(box.button(QMessageBox::Ok), box.defaultButton()); });
  QTest::mouseClick(&Find<QPushButton>("btnRegRead"), Qt::LeftButton);
}

} // namespace
} // namespace loader::test
