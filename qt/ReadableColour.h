// Colours that the system prescribes, and the text colour that can be read on them in any palette.
#pragma once

#include <QColor>

#include "platform/Controls.h"

namespace loader {

[[nodiscard]] inline QColor ToColour(Colour colour) {
  return QColor::fromRgb(static_cast<QRgb>(colour));
}

[[nodiscard]] inline QColor ReadableOn(Colour back) {
  // Luma of Rec. 601; above the middle, black is the better contrast.
  const QColor colour = ToColour(back);
  const int luma = (299 * colour.red() + 587 * colour.green() + 114 * colour.blue()) / 1000;
  constexpr int Middle = 140;
  return luma > Middle ? QColor(0x10, 0x10, 0x10) : QColor(0xF0, 0xF0, 0xF0);
}

} // namespace loader
