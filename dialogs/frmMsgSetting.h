// One message of the recorder: its text and what brings it up.
#pragma once

#include "dialogs/Browsing.h"

namespace loader {

struct MsgSettingScreen : EntryDialog {
  MsgSettingScreen();
};

// Modal; `message` counts from 0.
void ShowMsgSetting(int message);

// The fields and their parameters.
[[nodiscard]] std::span<const FieldRow> MessageFields();

} // namespace loader
