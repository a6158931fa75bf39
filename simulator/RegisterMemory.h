// The registers of a recorder: two tables of 16-bit registers, named by the numbers of the 3xxxx/4xxxx
// notation.
#pragma once

#include <array>
#include <cstdint>

namespace loader::simulator {

constexpr int FirstInput = 30001;   // read with function 4
constexpr int FirstHolding = 40001; // read with function 3, written with 6 and 16
constexpr int TableRegisters = 9999;

struct RegisterMemory {
  std::array<std::uint16_t, TableRegisters> input{};
  std::array<std::uint16_t, TableRegisters> holding{};

  // Registers exist from 30001 to 39999 and from 40001 to 49999; any other number throws std::out_of_range.
  [[nodiscard]] std::uint16_t& At(int address);
  [[nodiscard]] std::uint16_t At(int address) const;
  [[nodiscard]] static bool Exists(int address);

  bool operator==(const RegisterMemory&) const = default;
};

} // namespace loader::simulator
