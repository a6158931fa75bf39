// The check value of RTU frames.
#pragma once

#include <cstdint>
#include <span>

#include "core/modIni.h"

namespace loader::simulator {

// CRC-16 of Modbus over all bytes; 0 over a whole frame, check value included, that is not damaged.
[[nodiscard]] inline std::uint16_t CheckValue(std::span<const std::uint8_t> bytes) {
  std::uint16_t check = 0xFFFF;
  for (const std::uint8_t byte : bytes) {
    check = static_cast<std::uint16_t>((check >> 8) ^ CrcTable[(check ^ byte) & 0xFF]);
  }
  return check;
}

} // namespace loader::simulator
