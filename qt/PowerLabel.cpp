#include "qt/PowerLabel.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace loader {

namespace {

constexpr int Beside = 6; // pixels between the number and its frame

} // namespace

PowerLabel::PowerLabel(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize PowerLabel::sizeHint() const {
  const QSize hint = QLabel::sizeHint();
  const int longest = fontMetrics().horizontalAdvance(QStringLiteral("-9.99E-9")) + 2 * Beside;
  return {std::max(hint.width(), longest), fontMetrics().height() + Beside};
}

QSize PowerLabel::minimumSizeHint() const {
  return sizeHint();
}

void PowerLabel::paintEvent(QPaintEvent* event) {
  if (isEnabled()) {
    QStylePainter painter(this);
    QStyleOptionButton button;
    button.initFrom(this);
    button.state |= QStyle::State_Raised;
    painter.drawPrimitive(QStyle::PE_PanelButtonCommand, button);
  }
  QLabel::paintEvent(event);
}

} // namespace loader
