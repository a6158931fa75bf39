// The two single commands to the recorder: store the settings in its non-volatile memory, set its clock.
//
// Both are plain register writes, past the block image of the sections. Their register is BaseAddress +
// 2 x WordOffset: deliberately doubled, unlike in a section's image.
#pragma once

#include <cstdint>

#include "comm/FlowCallbacks.h"

namespace loader {

// The flow of cmdFIX: asks, opens the link, stores, closes. The recorder is neither checked nor asked whether
// it is busy.
void FixSettings(const FlowCallbacks& window);

// Writes 1 to FIX of section F. True, after text 62702, when it went through; no message of its own
// otherwise.
[[nodiscard]] bool gFFixSettings();

// What the clock is set to: each value goes out as the low byte of a register. The recorder's clock knows no
// seconds from here.
struct ClockSetting {
  std::uint8_t year = 0; // of the century
  std::uint8_t month = 1;
  std::uint8_t day = 1;
  std::uint8_t hour = 0;
  std::uint8_t minute = 0;
};

// The clock's flow: opens the link, refuses a busy recorder (text 62502), sets the clock, closes. A clock
// that was set is told by no message; true for one.
bool SetRecorderClock(const ClockSetting& clock, const FlowCallbacks& window);

// Checks the recorder, then writes six registers from TIMS of section H up: 1 and the setting. False when the
// check failed, else true, whatever the write did. The clock of generation 0 cannot be set: a box says so.
bool gFSetClock(const ClockSetting& clock);

} // namespace loader
