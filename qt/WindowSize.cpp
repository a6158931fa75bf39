#include "qt/WindowSize.h"

#include <QApplication>
#include <QFontMetrics>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace loader {

namespace {

QMargins FrameOf(const QWidget& window) {
  if (window.isVisible()) {
    const QRect inner = window.geometry();
    const QRect outer = window.frameGeometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
  }
  return {0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight), 0, 0};
}

} // namespace

void FitToScreen(QWidget& window) {
  const QRect free = window.screen()->availableGeometry();
  const QMargins frame = FrameOf(window);
  const QSize fitting = window.size().boundedTo(free.marginsRemoved(frame).size());
  if (fitting != window.size()) {
    window.resize(fitting);
  }
  if (!window.isVisible()) {
    return; // the window manager places it
  }
  const QRect outer = QRect(window.pos(), fitting.grownBy(frame));
  if (!free.contains(outer)) {
    // Its title stays on the screen even where the rest cannot.
    window.move(std::max(std::min(outer.left(), free.right() + 1 - outer.width()), free.left()),
                std::max(std::min(outer.top(), free.bottom() + 1 - outer.height()), free.top()));
  }
}

int WidthForTitle(const QString& title) {
  QFont font = QApplication::font("QMdiSubWindowTitleBar");
  font.setBold(true);
  // An icon and up to three buttons, each as wide as the title is high, and air.
  constexpr int LinesBeside = 5;
  return QFontMetrics(font).horizontalAdvance(title) +
         LinesBeside * QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

} // namespace loader
