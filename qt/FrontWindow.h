// The window that has the keyboard, which gets it back when a box or a dialog over it has gone. A window
// manager does that by itself; a display without one doesn't.
#pragma once

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace loader {

class FrontWindow {
public:
  FrontWindow() : active_(QApplication::activeWindow()), window_(Find()) {}
  ~FrontWindow() {
    if (active_ && active_->isVisible()) {
      active_->activateWindow();
    }
  }
  FrontWindow(const FrontWindow&) = delete;
  FrontWindow& operator=(const FrontWindow&) = delete;

  // What a box or a dialog belongs over; null when no window stands.
  [[nodiscard]] QWidget* Window() const { return window_; }

private:
  // No window has the keyboard just after a box has gone, or while the user works in another program.
  static QWidget* Find() {
    if (QWidget* active = QApplication::activeWindow()) {
      return active;
    }
    if (QWidget* modal = QApplication::activeModalWidget()) {
      return modal;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->windowType() == Qt::Window) {
        return window;
      }
    }
    return nullptr;
  }

  QPointer<QWidget> active_;
  QPointer<QWidget> window_;
};

} // namespace loader
