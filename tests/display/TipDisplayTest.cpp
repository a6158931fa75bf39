// What the buttons of the window tell under the mouse.
#include <QAction>
#include <QToolBar>
#include <QToolTip>

#include "tests/display/DisplayFixture.h"
#include "tests/display/Pointer.h"

namespace loader::test {
namespace {

struct TipOnTheDisplay : OnTheDisplay {};

TEST_F(TipOnTheDisplay, AToolButtonTellsItsKey) {
  OpenProgram();
  for (const auto& [name, key] : {std::pair{"V_1", "Ctrl+O"}, {"V_2", "Ctrl+C"}, {"V_3", "Ctrl+V"}}) {
    auto& action = Find<QAction>(name);
    const QWidget& button = *Find<QToolBar>("V").widgetForAction(&action);
    Pointer pointer;
    pointer.MoveTo(Window().mapToGlobal(QPoint(400, 500)));
    pointer.MoveTo(button.mapToGlobal(button.rect().center()));
    pointer.MoveTo(button.mapToGlobal(button.rect().center()) + QPoint(1, 1));
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return QToolTip::isVisible() && QToolTip::text().contains(QString::fromLatin1(key));
    })) << name
        << " tells: " << QToolTip::text().toStdString();
  }
}

TEST_F(TipOnTheDisplay, AButtonOfTheWindowTellsItsKey) {
  OpenProgram();
  for (const auto& [name, key] : {std::pair{"btnRegRead", "F5"}, {"btnRegWrite", "F9"}}) {
    const auto& button = Find<QPushButton>(name);
    Pointer pointer;
    pointer.MoveTo(Window().mapToGlobal(QPoint(400, 500)));
    pointer.MoveTo(button.mapToGlobal(button.rect().center()));
    pointer.MoveTo(button.mapToGlobal(button.rect().center()) + QPoint(1, 1));
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return QToolTip::isVisible() && QToolTip::text().contains(QString::fromLatin1(key));
    })) << name
        << " tells: " << QToolTip::text().toStdString();
  }
}

} // namespace
} // namespace loader::test
