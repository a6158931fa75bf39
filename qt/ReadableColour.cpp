#include "qt/ReadableColour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace loader {

namespace {

double Linear(double part) {
  constexpr double LinearUpTo = 0.04045;
  return part <= LinearUpTo ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double LuminanceOf(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

// Luma of Rec. 601, 0 to 255.
int LumaOf(const QColor& colour) {
  return (299 * colour.red() + 587 * colour.green() + 114 * colour.blue()) / 1000;
}

// The nearest colour of the same hue that differs enough from another one.
QColor MovedAwayFrom(const QColor& other, const QColor& colour, double contrast) {
  const int step = LumaOf(other) > LumaOf(colour) ? -1 : 1;
  QColor shown = colour;
  for (int lightness = colour.lightness(); lightness >= 0 && lightness <= 255; lightness += step) {
    const QColor moved = QColor::fromHsl(colour.hslHue(), colour.hslSaturation(), lightness);
    shown = QColor(moved.rgb()); // in eight bits, as it is painted
    if (ContrastOf(other, shown) >= contrast) {
      break;
    }
  }
  // On that side of a middle gray there may be no room.
  return ContrastOf(other, shown) < contrast ? ReadableOn(other) : shown;
}

} // namespace

double ContrastOf(const QColor& one, const QColor& other) {
  constexpr double Flare = 0.05;
  const auto [dark, light] = std::minmax({LuminanceOf(one), LuminanceOf(other)});
  return (light + Flare) / (dark + Flare);
}

QColor ReadableOn(const QColor& back) {
  return ContrastOf(Qt::white, back) >= ReadableContrast ? Qt::white : Qt::black;
}

QColor ShadeOn(const QColor& base, const QColor& shade) {
  constexpr int Distinct = 38;
  const bool gray = shade.red() == shade.green() && shade.green() == shade.blue();
  if (!gray || std::abs(LumaOf(shade) - LumaOf(base)) >= Distinct) {
    return shade;
  }
  const int luma = LumaOf(base) + Distinct;
  return {luma, luma, luma};
}

QPalette WithReadableSelection(QPalette palette) {
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    const QColor text = palette.color(group, QPalette::HighlightedText);
    const QColor back = palette.color(group, QPalette::Highlight);
    if (ContrastOf(text, back) < ReadableContrast) {
      palette.setColor(group, QPalette::Highlight, MovedAwayFrom(text, back, ReadableContrast));
    }
  }
  return palette;
}

QColor FadedOn(const QColor& back, const QColor& text, double contrast) {
  constexpr int Steps = 64;
  const auto mixed = [](int one, int other, int step) { return one + (other - one) * step / Steps; };
  for (int step = 0; step < Steps; ++step) {
    const QColor faded(mixed(back.red(), text.red(), step), mixed(back.green(), text.green(), step),
                       mixed(back.blue(), text.blue(), step));
    if (ContrastOf(back, faded) >= contrast) {
      return faded;
    }
  }
  return text;
}

QColor LineColour(const QPalette& palette, QPalette::ColorRole ground) {
  const QColor back = palette.color(QPalette::Active, ground);
  return FadedOn(back, ReadableOn(back), VisibleContrast);
}

bool IsFlat(const QPalette& palette) {
  constexpr double OneColour = 1.05;
  const QColor window = palette.color(QPalette::Active, QPalette::Window);
  return ContrastOf(window, palette.color(QPalette::Active, QPalette::Base)) < OneColour &&
         ContrastOf(window, palette.color(QPalette::Active, QPalette::Button)) < OneColour;
}

QPalette WithReadableDisabled(QPalette palette) {
  // A list shows its row on a button, in the colour of a field's text.
  constexpr std::array<std::pair<QPalette::ColorRole, QPalette::ColorRole>, 4> TextsOnBacks{
      {{QPalette::WindowText, QPalette::Window},
       {QPalette::Text, QPalette::Base},
       {QPalette::Text, QPalette::Button},
       {QPalette::ButtonText, QPalette::Button}}};
  for (const auto& [text, back] : TextsOnBacks) {
    const QColor behind = palette.color(QPalette::Disabled, back);
    if (ContrastOf(behind, palette.color(QPalette::Disabled, text)) < ReadableContrast) {
      palette.setColor(QPalette::Disabled, text, FadedOn(behind, palette.color(QPalette::Active, text)));
    }
  }
  return palette;
}

QColor FocusColour(const QPalette& palette) {
  const QColor around = palette.color(QPalette::Active, QPalette::Window);
  const QColor selection = palette.color(QPalette::Active, QPalette::Highlight);
  return ContrastOf(around, selection) >= VisibleContrast ? selection
                                                          : MovedAwayFrom(around, selection, VisibleContrast);
}

} // namespace loader
