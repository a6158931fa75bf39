// Which parameters of a channel can be changed at all: a thermocouple has no scaling, only another channel's
// value has a reference. A screen disables the fields of the others.
#pragma once

#include <string_view>

#include "channel/InputTypeRules.h"

namespace loader {

// By tag of section C; true for one that no state of a channel takes away. An operation channel has the
// state of kind 40.
[[nodiscard]] bool IsAdjustable(std::string_view tag, const ChannelState& state);

// Whether a channel of the kind may have the unit: a temperature is in one of the first two.
[[nodiscard]] bool OffersUnit(int kind, int unit);
inline constexpr int TemperatureUnits = 2;

} // namespace loader
