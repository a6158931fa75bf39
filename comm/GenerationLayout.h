// What the read and the write of a section share: where older firmware keeps the section's block, and the
// order in which the sections go.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace loader {

// Added to a section's BaseAddress, by generation; 0 where the table does not name it.
struct BlockShift {
  std::string_view section;
  std::array<std::int16_t, 3> byGeneration; // 0, 1, 2
};
inline constexpr std::array<BlockShift, 4> BlockShifts{{
    {"M", {-22, -22, -22}},
    {"D", {5, 5, 5}},
    {"H", {6, 0, 0}},
    {"E", {0, 0, 60}},
}};

[[nodiscard]] constexpr std::int16_t RegisterOffset(std::string_view section, int generation) {
  for (const BlockShift& shift : BlockShifts) {
    if (shift.section == section && generation >= 0 &&
        static_cast<std::size_t>(generation) < shift.byGeneration.size()) {
      return shift.byGeneration[static_cast<std::size_t>(generation)];
    }
  }
  return 0;
}

} // namespace loader
