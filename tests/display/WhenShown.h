// What is done in a window that something else opens.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTest>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace loader::test {

// Runs `act` from the event loop of the next window of that name, once it is shown.
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

} // namespace loader::test
