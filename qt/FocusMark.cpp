#include "qt/FocusMark.h"

#include <QEvent>
#include <QPainter>

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
  constexpr int Width = 2;
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), Width));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

} // namespace loader
