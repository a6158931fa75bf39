#include "qt/NoteLabel.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <algorithm>

namespace loader {

// It asks for no width: the fields around it decide.
NoteLabel::NoteLabel(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  setWordWrap(true);
  TakeFont();
}

void NoteLabel::setCharacters(int characters) {
  characters_ = characters;
  TakeFont();
}

int NoteLabel::heightForWidth(int width) const {
  return QLabel::heightForWidth(std::min(width, maximumWidth()));
}

QSize NoteLabel::sizeHint() const {
  return {maximumWidth(), heightForWidth(maximumWidth())};
}

// The lines follow from the width alone.
QSize NoteLabel::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

bool NoteLabel::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationFontChange) {
    TakeFont();
  }
  return QLabel::event(event);
}

void NoteLabel::TakeFont() {
  constexpr double Small = 0.85;
  QFont font = QApplication::font(this);
  setMaximumWidth(characters_ * QFontMetrics(font).horizontalAdvance(u'0'));
  font.setPointSizeF(font.pointSizeF() * Small);
  setFont(font);
}

} // namespace loader
