// Colours that the system prescribes, and the text colour that can be read on them in any palette.
#pragma once

#include <QColor>
#include <cstdlib>

#include "platform/Controls.h"

namespace loader {

[[nodiscard]] inline QColor ToColour(Colour colour) {
  return QColor::fromRgb(static_cast<QRgb>(colour));
}

// Luma of Rec. 601, 0 to 255.
[[nodiscard]] inline int LumaOf(const QColor& colour) {
  return (299 * colour.red() + 587 * colour.green() + 114 * colour.blue()) / 1000;
}

[[nodiscard]] inline QColor ReadableOn(const QColor& back) {
  constexpr int Middle = 140; // above it, black is the better contrast
  return LumaOf(back) > Middle ? QColor(0x10, 0x10, 0x10) : QColor(0xF0, 0xF0, 0xF0);
}

// A gray that shades a cell, as it is told from the palette's base: on a dark base of nearly the same luma it
// is drawn lighter. Colours are shown as they are.
[[nodiscard]] inline QColor ShadeOn(const QColor& base, const QColor& shade) {
  constexpr int Distinct = 40;
  const bool gray = shade.red() == shade.green() && shade.green() == shade.blue();
  if (!gray || std::abs(LumaOf(shade) - LumaOf(base)) >= Distinct) {
    return shade;
  }
  const int luma = LumaOf(base) + Distinct;
  return {luma, luma, luma};
}

} // namespace loader
