#include "qt/ContentsArea.h"

#include <QEvent>

namespace loader {

ContentsArea::ContentsArea(QWidget* parent) : QScrollArea(parent) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
}

QSize ContentsArea::sizeHint() const {
  return widget() == nullptr ? QScrollArea::sizeHint() : widget()->sizeHint();
}

bool ContentsArea::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) {
    updateGeometry();
  }
  return QScrollArea::event(event);
}

} // namespace loader
