// Keys that do nothing by themselves.
#pragma once

#include <algorithm>
#include <array>

#include <qnamespace.h>

namespace loader {

[[nodiscard]] inline bool IsLoneModifier(int key) {
  constexpr std::array Modifiers{Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta};
  return std::find(Modifiers.begin(), Modifiers.end(), key) != Modifiers.end();
}

} // namespace loader
