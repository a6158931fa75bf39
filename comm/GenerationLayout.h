// What the read and the write of a section share: where older firmware keeps the section's block, how many of
// its items there are, and the words of its totalizer. Layouts and order of the sections are each one's own.
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

// How many items of a section a layout takes.
inline constexpr int AllItems = 32767;
inline constexpr int OldChannels = 9;      // of C and A, in generations 0 and 1
inline constexpr int OldDigitalInputs = 5; // of D, in generations 0 to 2

// The totalizer switches that generation 2 keeps in section E belong to section Z today.
struct OldTotalizerWord {
  std::int16_t byte;
  std::string_view tagOfZ;
};
inline constexpr std::array<OldTotalizerWord, 3> OldTotalizerWords{{{0, "TOTA"}, {2, "TSTM"}, {8, "TSIG"}}};
// It keeps a time as hours and minutes in two words; today it is minutes in one.

} // namespace loader
