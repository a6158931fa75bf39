// What the buttons of the window tell under the mouse.
#include <QAction>
#include <QToolBar>
#include <QToolTip>

#include "tests/display/DisplayFixture.h"
#include "tests/display/Pointer.h"

namespace loader::test {
namespace {

struct TipOnTheDisplay : OnTheDisplay {
  // The pointer comes to rest on the button.
  void ExpectTip(const QWidget& button, const char* name, const char* key) {
    Pointer pointer;
    pointer.MoveTo(Window().mapToGlobal(QPoint(400, 500)));
    pointer.MoveTo(button.mapToGlobal(button.rect().center()));
    pointer.MoveTo(button.mapToGlobal(button.rect().center()) + QPoint(1, 1));
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return QToolTip::isVisible() && QToolTip::text().contains(QString::fromLatin1(key));
    })) << name
        << " tells: " << QToolTip::text().toStdString();
  }
};

TEST_F(TipOnTheDisplay, AToolButtonTellsItsKey) {
  OpenProgram();
  for (const auto& [name, key] : {std::pair{"V_1", "Ctrl+O"}, {"V_2", "Ctrl+C"}, {"V_3", "Ctrl+V"}}) {
    ExpectTip(*Find<QToolBar>("V").widgetForAction(&Find<QAction>(name)), name, key);
  }
}

TEST_F(TipOnTheDisplay, AButtonOfTheWindowTellsItsKey) {
  OpenProgram();
  for (const auto& [name, key] : {std::pair{"btnRegRead", "F5"}, {"btnRegWrite", "F9"}}) {
    ExpectTip(Find<QPushButton>(name), name, key);
  }
}

} // namespace
} // namespace loader::test
