// The check value of a frame on a serial line (Modbus CRC-16), bit by bit: worked out by the tests for
// themselves: it judges the program's.
#pragma once

#include <cstdint>
#include <span>

namespace loader::test {

[[nodiscard]] inline std::uint16_t CheckValueOf(std::span<const std::uint8_t> bytes) {
  unsigned check = 0xFFFF;
  for (const std::uint8_t byte : bytes) {
    check ^= byte;
    for (int bit = 0; bit < 8; ++bit) {
      const bool carry = check % 2 == 1;
      check /= 2;
      if (carry) {
        check ^= 0xA001;
      }
    }
  }
  return static_cast<std::uint16_t>(check);
}

} // namespace loader::test
