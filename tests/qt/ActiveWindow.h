// Waiting until a window is the one that the user's keys go to.
#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

namespace loader::test {

// True as soon as the window is the active one, false after some seconds. Qt's own question passes too early:
// for it a dialog is active as soon as the window is that it belongs to, and the window while a dialog of its
// own is.
[[nodiscard]] inline bool BecomesActive(const QWidget& window) {
  constexpr int Patience = 10000;
  QTimer patience; // its event ends the wait
  patience.setSingleShot(true);
  patience.start(Patience);
  while (QApplication::activeWindow() != &window && patience.isActive()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return QApplication::activeWindow() == &window;
}

} // namespace loader::test
