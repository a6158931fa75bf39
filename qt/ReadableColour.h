// Colours that the system prescribes, and what keeps text readable on them in any palette.
#pragma once

#include <QColor>
#include <QPalette>

#include "platform/Controls.h"

namespace loader {

// What text and its background have to differ by at least.
constexpr double ReadableContrast = 4.5;
// What a line that tells something and what is around it have to differ by at least.
constexpr double VisibleContrast = 3;

[[nodiscard]] inline QColor ToColour(Colour colour) {
  return QColor::fromRgb(static_cast<QRgb>(colour));
}

// Of two colours, 1 (the same) to 21 (black and white): the ratio of their relative luminances as WCAG 2
// defines it.
[[nodiscard]] double ContrastOf(const QColor& one, const QColor& other);

// White or black, with a readable contrast on any colour.
[[nodiscard]] QColor ReadableOn(const QColor& back);

// A gray that shades a cell, as it is told from the palette's base: on a dark base of nearly the same luma it
// is drawn lighter. Colours are shown as they are.
[[nodiscard]] QColor ShadeOn(const QColor& base, const QColor& shade);

// The palette with a selection whose text can be read: where a theme's is too faint, its background moves
// away from the text, in its own hue.
[[nodiscard]] QPalette WithReadableSelection(QPalette palette);

// The faintest mixture of a text and its background that can be read, or that has another contrast; the text
// itself where none has it.
[[nodiscard]] QColor FadedOn(const QColor& back, const QColor& text, double contrast = ReadableContrast);

// A line that parts or frames something on the window's ground, or on another one, and can be seen there.
[[nodiscard]] QColor LineColour(const QPalette& palette, QPalette::ColorRole ground = QPalette::Window);

// True of a palette of high contrast: it has one colour for all grounds, so that nothing but its edges tells
// a field or a button from what is around it.
[[nodiscard]] bool IsFlat(const QPalette& palette);

// The palette with texts of what is disabled that can be read: where a theme's are too faint, they are faded
// no further than that. A value that cannot be changed for the time being still matters.
[[nodiscard]] QPalette WithReadableDisabled(QPalette palette);

// The line around what has the keyboard: the selection's colour, moved away from the window's where it is too
// near.
[[nodiscard]] QColor FocusColour(const QPalette& palette);

} // namespace loader
