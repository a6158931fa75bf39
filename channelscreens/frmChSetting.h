// The screen of one measuring channel: tags, input kind, ranges, recording, integration, alarms.
#pragma once

#include <functional>

#include "channelscreens/ChannelScreen.h"

namespace loader {

struct ChSettingScreen : ChannelScreen {
  explicit ChSettingScreen(std::function<void()> applied = {});

  Label lblNote1{*this, "lblNote1"}; // which channels share their terminals
  Label lblNote2{*this, "lblNote2"};
  bool tableChanged = false; // the neighbour was brought in line with the channel's kind
};

// Modal; `channel` counts from 0. `applied` runs after each "適用" that may have written to the store, while
// the screen is open.
void ShowChSetting(int channel, std::function<void()> applied = {});

// The fields and their parameters; the two units (UNIT, SEUN) are none.
[[nodiscard]] std::span<const FieldRow> ChannelFields();

} // namespace loader
