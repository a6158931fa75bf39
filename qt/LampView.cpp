#include "qt/LampView.h"

#include <QPainter>

#include "qt/ReadableColour.h"

namespace loader {

LampView::LampView(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LampView::SetColour(const QColor& colour) {
  if (colour != colour_) {
    colour_ = colour;
    update();
  }
}

QSize LampView::sizeHint() const {
  const int side = fontMetrics().height();
  return {side * 2, side};
}

void LampView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(LineColour(palette())); // an unlit lamp is black, as the window may be
  painter.setBrush(colour_);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace loader
