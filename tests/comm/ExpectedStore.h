// Where a whole read of each generation has to take each value of the store from, worked out apart from the
// program's own tables.
#pragma once

#include <string_view>

#include "tests/comm/Generations.h"

namespace loader::test {

// Where a value comes from: its own place, a fixed byte of the item, its default, or nowhere: it is kept.
struct Source {
  enum Kind { Own, Byte, Default, Kept } kind = Own;
  int byte = 0;
};

[[nodiscard]] Source SourceIn(const Generation& generation, char section, int item, std::string_view tag);
// The values that follow other rules than a place or a default.
[[nodiscard]] bool IsSpecial(const Generation& generation, char section, std::string_view tag);

} // namespace loader::test
