// A store full of values that a recorder of an old firmware has to be spared.
#pragma once

#include <array>
#include <random>

#include "core/Text.h"
#include "core/modMain.h"

namespace loader::test {

// Values around all limits, different in each parameter and with each seed.
inline void FillStore(unsigned seed) {
  constexpr std::array<std::int16_t, 32> Values{0,  1,  2,   3,   4,    5,    8,     9,     10,     11, 13,
                                                17, 18, 19,  20,  21,   30,   31,    32,    33,     40, 81,
                                                82, 83, 125, 666, 1439, 5000, 20000, 32767, -32768, -1};
  std::mt19937 random(seed);
  for (ParamSection& section : ParamStore) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        SetNumber(record, Values[random() % Values.size()], SlotValue);
      }
      for (ParamTextRecord& record : item.TextRecords) {
        SetText(record, u"T" + DecimalText(static_cast<std::int64_t>(random() % 100000)) + u" x  ",
                SlotValue);
      }
    }
  }
}

} // namespace loader::test
