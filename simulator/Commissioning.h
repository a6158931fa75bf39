// How a set-up comes into the registers of a given firmware.
//
// The newest firmware holds every value as it is. Older firmware numbers some input kinds differently, keeps
// times as hours and minutes, and knows fewer channels, relays and digital inputs: what it does not have is 0
// there.
#pragma once

#include "core/modMain.h"
#include "simulator/RegisterMap.h"

namespace loader::simulator {

// Model and firmware tag, section P.
void PutIdentity(const Firmware& firmware, const RegisterMap& map, RegisterMemory& memory);

// Writes every value of the map, taken from `Value` of the set-up, and the identity of the recorder.
void Commission(const ParamStoreTable& setup, const Firmware& firmware, const RegisterMap& map,
                RegisterMemory& memory);

// Fills every register that holds no value of the map.
void FillUnused(const RegisterMap& map, std::uint16_t pattern, RegisterMemory& memory);

// The recorder's state word, section S.
struct Status {
  bool recording = false;
  bool computing = false;
};
void PutStatus(const Status& status, const RegisterMap& map, RegisterMemory& memory);

} // namespace loader::simulator
