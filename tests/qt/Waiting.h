// Waiting for what the events of the program bring.
#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include "devices/EventWait.h"

namespace loader::test {

// Gives out events until it is so. As the program itself waits: Qt's own wait may sleep behind what it has
// just given out.
template <typename Condition> void WaitUntil(const Condition& isSo) {
  EventWait wait;
  while (!isSo()) {
    wait.Wait();
  }
}

// True as soon as the window is the active one, false after some seconds. Qt's own question passes too early:
// for it a dialog is active as soon as the window is that it belongs to, and the window while a dialog of its
// own is.
[[nodiscard]] inline bool BecomesActive(const QWidget& window) {
  constexpr int Patience = 10000;
  QTimer patience; // its event ends the wait
  patience.setSingleShot(true);
  patience.start(Patience);
  WaitUntil([&] { return QApplication::activeWindow() == &window || !patience.isActive(); });
  return QApplication::activeWindow() == &window;
}

} // namespace loader::test
