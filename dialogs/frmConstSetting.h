// One constant of the formulas. How many digits it has behind the point is how many are typed.
#pragma once

#include "dialogs/Browsing.h"

namespace loader {

struct ConstSettingScreen : Screen {
  ConstSettingScreen();

  BrowsingFrame browsing;
  std::deque<Label> labels;
  TextField txtMessage{*this, "txtMessage"};
  std::u16string shownText; // of txtMessage when the entry was shown
};

// Modal; `constant` counts from 0.
void ShowConstSetting(int constant);

// The fields and their parameters.
[[nodiscard]] std::span<const FieldRow> ConstantFields();

} // namespace loader
