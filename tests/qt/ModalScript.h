// What a test does with a real modal screen while it is shown.
#pragma once

#include <QApplication>
#include <QMetaObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>

#include "tests/qt/Waiting.h"

namespace loader::test {

// Runs `show`, which returns when the screen has closed, and `act` from the screen's own event loop, once its
// window is active. A screen that `act` leaves open is closed behind it.
inline void WhileShown(const char* name, const std::function<void()>& show,
                       const std::function<void(QWidget&)>& act) {
  bool acted = false;
  QMetaObject::invokeMethod(
      qApp,
      [&] {
        const QPointer<QWidget> window = QApplication::activeModalWidget();
        ASSERT_NE(nullptr, window);
        EXPECT_EQ(name, window->objectName().toStdString());
        EXPECT_TRUE(BecomesActive(*window));
        act(*window);
        acted = true;
        if (window != nullptr) {
          window->close();
        }
      },
      Qt::QueuedConnection);
  show();
  EXPECT_TRUE(acted);
}

} // namespace loader::test
