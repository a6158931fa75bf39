// The recorder itself: its registers, what it keeps when it is switched off, and what a write sets off.
#pragma once

#include <optional>
#include <string>

#include "simulator/Commissioning.h"
#include "simulator/Firmware.h"
#include "simulator/RegisterMap.h"

namespace loader::simulator {

// The recorder's clock as a client last set it; the year counts from 2000.
struct ClockSetting {
  int year = 0, month = 1, day = 1, hour = 0, minute = 0;
  bool operator==(const ClockSetting&) const = default;
};

struct Recorder {
  Firmware firmware;
  RegisterMap map;
  RegisterMemory memory; // working memory: what is read and written
  RegisterMemory kept;   // non-volatile memory: what a restart begins with
  std::optional<ClockSetting> clock{};
  int station = 1;
  // Registers whose writing is a command; 0: this firmware has none.
  int storeCommand = 0; // FIX
  int clockCommand = 0; // TIMS
};

// A recorder that has just been switched on with `start` in its non-volatile memory.
[[nodiscard]] Recorder SwitchOn(const Firmware& firmware, const RegisterMap& map, const RegisterMemory& start,
                                const Status& status);

// What a write to the registers set off beside being stored.
struct WriteEffects {
  bool stored = false;       // the working memory went to the non-volatile one
  bool clockSet = false;     // the clock took the time of the clock registers
  bool clockRefused = false; // those registers held no date and time
};
// To be called after every write of `count` registers from `address`.
WriteEffects AfterWrite(Recorder& recorder, int address, int count);

} // namespace loader::simulator
