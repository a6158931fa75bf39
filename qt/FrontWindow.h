// The window that has the keyboard, which gets it back when a box or a dialog over it has gone. A window
// manager does that by itself; a display without one doesn't.
#pragma once

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace loader {

class FrontWindow {
public:
  FrontWindow() : window_(QApplication::activeWindow()) {}
  ~FrontWindow() {
    if (window_ && window_->isVisible()) {
      window_->activateWindow();
    }
  }
  FrontWindow(const FrontWindow&) = delete;
  FrontWindow& operator=(const FrontWindow&) = delete;

  // Null when no window of the program has the keyboard.
  [[nodiscard]] QWidget* Window() const { return window_; }

private:
  QPointer<QWidget> window_;
};

} // namespace loader
