// Requests and what became of them, in plain words.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "simulator/Faults.h"
#include "simulator/Recorder.h"

namespace loader::simulator {

// The values that lie on the registers, by section, item (from 1) and tag: "C 1: all; C 2: TAG, TYPE".
// Registers without a value are not named; "no value" when there is none.
[[nodiscard]] std::string NamesOf(const RegisterMap& map, int address, int count);

// "read 64 holding registers 44001-44064 (C 1: all; C 2: TAG)"
[[nodiscard]] std::string Describe(const Request& request, const RegisterMap& map);

// "-> 133 bytes", "-> exception 2 (illegal data address)", "-> no reply: it is for another station", and in
// front of it what the write set off and the fault.
[[nodiscard]] std::string Describe(const ModbusAnswer& answer, const WriteEffects& effects,
                                   const Recorder& recorder, std::optional<FaultKind> fault);

// "01 03 0F A0": the bytes of a frame.
[[nodiscard]] std::string HexOf(std::span<const std::uint8_t> bytes);

} // namespace loader::simulator
