// The registers as text.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "simulator/RegisterMemory.h"

namespace loader::simulator {

// Every register, one line each: "40001 = 0x0001".
[[nodiscard]] std::string DumpText(const RegisterMemory& memory);

// Writes the file whole or not at all: a reader sees the old content or the new. RunTimeFailure when it
// cannot be written.
void WriteWholeFile(const std::filesystem::path& file, std::string_view content);

} // namespace loader::simulator
