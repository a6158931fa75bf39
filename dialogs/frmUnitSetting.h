// The name of one user unit. User units are the last entries of the unit list.
#pragma once

#include "dialogs/Browsing.h"

namespace loader {

struct UnitSettingScreen : EntryDialog {
  UnitSettingScreen();
};

// Modal; `unit` counts from 0.
void ShowUnitSetting(int unit);

// The fields and their parameters.
[[nodiscard]] std::span<const FieldRow> UnitFields();

} // namespace loader
