// Every number of the store, in its order: what a step may not have changed.
#pragma once

#include <cstdint>
#include <vector>

#include "core/modMain.h"

namespace loader::test {

inline std::vector<std::int16_t> AllNumbers() {
  std::vector<std::int16_t> numbers;
  for (const ParamSection& section : ParamStore) {
    for (const ParamItem& item : section.Items) {
      for (const ParamNumRecord& record : item.NumRecords) {
        numbers.push_back(record.Value);
      }
    }
  }
  return numbers;
}

} // namespace loader::test
