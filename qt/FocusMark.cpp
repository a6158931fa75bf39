#include "qt/FocusMark.h"

#include <QEvent>
#include <QPainter>

#include "qt/ReadableColour.h"

namespace loader {

FocusMark::FocusMark(QWidget& marked) : QWidget(&marked) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  marked.installEventFilter(this);
  hide();
}

bool FocusMark::eventFilter(QObject* watched, QEvent* event) {
  const auto& marked = static_cast<const QWidget&>(*watched);
  switch (event->type()) {
  case QEvent::FocusIn:
  case QEvent::FocusOut:
    setVisible(event->type() == QEvent::FocusIn);
    [[fallthrough]];
  case QEvent::Resize:
    setGeometry(marked.rect());
    break;
  default:
    break;
  }
  return false;
}

void FocusMark::paintEvent(QPaintEvent* /*event*/) {
  PaintFocusMark(*this);
}

void PaintFocusMark(QWidget& widget) {
  constexpr int Width = 2;
  QPainter painter(&widget);
  painter.setPen(QPen(FocusColour(widget.palette()), Width));
  painter.drawRect(widget.rect().adjusted(1, 1, -1, -1));
}

} // namespace loader
