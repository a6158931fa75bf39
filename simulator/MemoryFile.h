// A recorder's memory as text, in UTF-8, one value a line:
//
//   # a comment
//   model,KOV
//   firmware,V40A
//   C 1 TAG,1号炉 上段          section, item (from 1) and tag; the text up to the end of the line
//   C 1 TYPE,1                  a number, as the recorder keeps it
//   40950,0x1234                a register that holds no value of this firmware
//
// The two head lines come first, where they are given. A register that no line names holds 0.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/RunTimeFailure.h"
#include "simulator/Firmware.h"
#include "simulator/RegisterMap.h"
#include "simulator/RegisterMemory.h"

namespace loader::simulator {

// A text that is no such memory; the message begins with the number of the line.
struct MemoryFileError : RunTimeFailure {
  using RunTimeFailure::RunTimeFailure;
};

// Every value of the map and every other register that is not 0. Reading it back gives the same memory: a
// text that its characters do not tell is written as registers.
[[nodiscard]] std::string MemoryText(const Firmware& firmware, const RegisterMap& map,
                                     const RegisterMemory& memory);

// What the head lines say.
struct MemoryHead {
  std::optional<Model> model;
  std::optional<std::string> firmware;
};
// Both throw MemoryFileError.
[[nodiscard]] MemoryHead ReadMemoryHead(std::string_view text);
void ReadMemoryText(std::string_view text, const RegisterMap& map, RegisterMemory& memory);

// Every register, one line each: "40001 = 0x0001".
[[nodiscard]] std::string DumpText(const RegisterMemory& memory);

// Writes the file whole or not at all: a reader sees the old content or the new. RunTimeFailure when it
// cannot be written.
void WriteWholeFile(const std::filesystem::path& file, std::string_view content);

} // namespace loader::simulator
