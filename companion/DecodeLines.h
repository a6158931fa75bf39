// The lines of a trace as frames: what recorder-sim --trace-frames writes, and hex of other programs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace loader {

enum class Direction { Unknown, Request, Reply };

struct TraceLine {
  std::size_t line = 0; // from 1
  Direction direction = Direction::Unknown;
  std::vector<std::uint8_t> bytes;
  bool broken = false; // it is hex with something else in it
};

// A line is a frame when its end is hex: bytes with or without blanks, commas, colons or "0x". In front of it
// may stand anything: a time, a name, and a mark or word that tells the direction (">", "TX", "request";
// "<", "RX", "reply"). Lines without hex are words and left out.
[[nodiscard]] std::vector<TraceLine> ReadTraceLines(std::string_view text);

} // namespace loader
