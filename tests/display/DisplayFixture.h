// The program on a display, worked by mouse and keyboard.
#pragma once

#include <QLineEdit>
#include <QPushButton>

#include "channel/modUtil.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "tests/display/Hands.h"
#include "tests/qt/Boxes.h"
#include "tests/qt/MainWindowFixture.h"
#include "tests/qt/ModalScript.h"

namespace loader::test {

class OnTheDisplay : public MainWindowTest {
protected:
  void TearDown() override { StopTimer(WaitTimer2); }
  void OpenProgram() {
    Start("0");
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
    while (WaitTimer2.Enabled) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
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
