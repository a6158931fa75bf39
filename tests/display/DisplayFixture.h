// The program on a display, worked by mouse and keyboard.
#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include "channel/modUtil.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "qt/GridView.h"
#include "tests/display/Hands.h"
#include "tests/display/WhenShown.h"
#include "tests/qt/Boxes.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/qt/ModalScript.h"
#include "tests/qt/Waiting.h"

namespace loader::test {

class OnTheDisplay : public MainWindowTest {
protected:
  void TearDown() override { StopTimer(WaitTimer2); }
  // `model`: TYPE of LOADER.INI.
  void OpenProgram(const char* model = "0") {
    Start(model);
    ASSERT_TRUE(hands.BecomesActive(Window()));
  }
  // The user works a modal screen that `show` opens over the main window.
  void During(const char* name, const std::function<void()>& show, const std::function<void(QWidget&)>& act) {
    WhileShown(name, show, [&](QWidget& screen) {
      EXPECT_TRUE(hands.BecomesActive(screen));
      act(screen);
    });
    EXPECT_TRUE(hands.BecomesActive(Window())) << "behind the screen";
  }
  // `open` makes a screen come up some time after, and `act` runs in it. A screen that `act` leaves open is
  // closed behind it.
  void InTheScreen(const char* name, const std::function<void()>& open,
                   const std::function<void(QWidget&)>& act) {
    const WhenShown screen(name, [&](QWidget& window) {
      EXPECT_TRUE(hands.BecomesActive(window)) << name;
      const QPointer<QWidget> still = &window;
      act(window);
      if (still != nullptr) {
        still->close();
      }
    });
    open();
    EXPECT_TRUE(screen.WasShown()) << name;
  }
  void ClickTab(int page) {
    const QTabBar& bar = *Find<QTabWidget>("tbsParameter").tabBar();
    hands.ClickAt(bar, bar.tabRect(page).center());
  }
  // A cell of the rows and columns below and beside the headings.
  void ClickCell(GridView& table, int row, int column = 0) {
    hands.ClickAt(*table.viewport(), table.visualRect(table.model()->index(row, column)).center());
  }
  void DoubleClickCell(GridView& table, int row, int column = 0) {
    hands.DoubleClickAt(*table.viewport(), table.visualRect(table.model()->index(row, column)).center());
  }
  // Opens the list and clicks on the row.
  void Choose(QComboBox& list, int row) {
    // A window that becomes active behind its open list takes the activity from it again.
    EXPECT_TRUE(hands.BecomesActive(*list.window()));
    hands.ClickToOpen(list);
    const QAbstractItemView& rows = *list.view();
    ASSERT_TRUE(QTest::qWaitFor([&] {
      return rows.isVisible() && QApplication::activePopupWidget() == rows.window();
    })) << "the list does not open: "
        << list.objectName().toStdString();
    const QRect place = rows.visualRect(list.model()->index(row, list.modelColumn()));
    ASSERT_TRUE(rows.viewport()->rect().contains(place.center()))
        << "row " << row << " has to be scrolled to";
    hands.ClickAt(*rows.viewport(), place.center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !rows.isVisible(); }));
    EXPECT_EQ(row, list.currentIndex()) << list.objectName().toStdString();
  }
  void TabTo(const QWidget& widget) {
    constexpr int MoreThanThereAre = 80;
    for (int step = 0; step < MoreThanThereAre && QApplication::focusWidget() != &widget; ++step) {
      hands.Press(Key::Tab);
    }
    EXPECT_EQ(&widget, QApplication::focusWidget());
  }
  // The next box has to hold this text. The user looks at it, as soon as it is the active window, and takes
  // it away by the Return key.
  void ExpectBox(std::u16string text) {
    boxes.Expect(std::move(text), BoxAnswer::Ok, [this](QMessageBox& box) {
      EXPECT_TRUE(hands.BecomesActive(box));
      hands.Press(Key::Return);
    });
  }
  void ExpectRangeBox(int from, int to) {
    ExpectBox(DecimalText(from) + u"から" + DecimalText(to) + u"の値を入力してください");
  }
  // The window is active again, the field has the keyboard, and its whole text is selected: what is typed
  // next takes the place of the refused text.
  void ExpectKeyboardBackIn(const QLineEdit& field, std::string_view refused) {
    EXPECT_TRUE(hands.BecomesActive(*field.window()));
    EXPECT_EQ(&field, QApplication::focusWidget());
    EXPECT_EQ(refused, field.selectedText().toStdString());
  }
  // For a moment after a refusal no field is checked; nobody types that fast.
  static void WaitForTheGuard() {
    test::WaitUntil([] { return !WaitTimer2.Enabled; });
  }
  template <typename Widget> static Widget& In(QWidget& window, const char* name) {
    auto* widget = window.findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr) {
      throw std::logic_error(std::string("no such widget: ") + name);
    }
    return *widget;
  }
  static QLineEdit& Field(QWidget& window, const char* name) { return In<QLineEdit>(window, name); }

  Boxes boxes;
  Hands hands;
};

} // namespace loader::test
