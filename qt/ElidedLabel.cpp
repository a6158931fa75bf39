#include "qt/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "qt/QtText.h"

namespace loader {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ElidedLabel::setCharacters(int characters) {
  characters_ = characters;
  setSizePolicy(characters > 0 ? QSizePolicy::Fixed : QSizePolicy::Expanding, QSizePolicy::Preferred);
  updateGeometry();
}

int ElidedLabel::Width() const {
  return characters_ * fontMetrics().horizontalAdvance(u'0');
}

bool ElidedLabel::IsCut() const {
  return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

QSize ElidedLabel::sizeHint() const {
  return {Width(), QLabel::sizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {Width(), QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto& help = static_cast<const QHelpEvent&>(*event);
    QToolTip::showText(help.globalPos(), IsCut() ? PlainTip(text()) : QString(), this);
    return true;
  }
  return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  drawFrame(&painter);
  const QRect room = contentsRect();
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width());
  style()->drawItemText(&painter, room, static_cast<int>(alignment()) | Qt::TextSingleLine, palette(),
                        isEnabled(), shown, foregroundRole());
}

} // namespace loader
