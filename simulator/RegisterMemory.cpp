#include "simulator/RegisterMemory.h"

#include <stdexcept>

namespace loader::simulator {

namespace {

constexpr bool InTable(int address, int first) {
  return address >= first && address < first + TableRegisters;
}

} // namespace

bool RegisterMemory::Exists(int address) {
  return InTable(address, FirstInput) || InTable(address, FirstHolding);
}

std::uint16_t& RegisterMemory::At(int address) {
  if (InTable(address, FirstInput)) {
    return input[static_cast<std::size_t>(address - FirstInput)];
  }
  if (InTable(address, FirstHolding)) {
    return holding[static_cast<std::size_t>(address - FirstHolding)];
  }
  throw std::out_of_range("no such register");
}

std::uint16_t RegisterMemory::At(int address) const {
  return const_cast<RegisterMemory*>(this)->At(address);
}

} // namespace loader::simulator
