// What a whole write of each generation has to leave in the recorder's memory, worked out apart from the
// program's own tables.
#pragma once

#include <cstdint>
#include <vector>

#include "tests/comm/Generations.h"

namespace loader::test {

// Register 40001 up.
using Memory = std::vector<std::uint16_t>;

// Lays the section of the store over the memory, as the generation's firmware takes it.
void LaySection(Memory& memory, const Generation& generation, char code);

} // namespace loader::test
