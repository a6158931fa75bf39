// One display group: what its screen shows, its ten data slots, its trend.
#pragma once

#include "dialogs/Browsing.h"

namespace loader {

struct GroupSettingScreen : EntryDialog {
  GroupSettingScreen();
};

// Modal; `group` counts from 0.
void ShowGroupSetting(int group);

// The fields and their parameters.
[[nodiscard]] std::span<const FieldRow> GroupFields();

} // namespace loader
