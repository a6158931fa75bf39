// A recorder that is about to be written.
#pragma once

#include <algorithm>
#include <array>
#include <random>

#include "comm/BulkWrite.h"
#include "tests/comm/CommFixture.h"
#include "tests/comm/Generations.h"

namespace loader::test {

struct WriteOf : RecorderFixture {
  void Prepare(const Generation& generation) {
    StartWithModel(platform, generation.model);
    Configure(Line::Ethernet);
    recorder.FillWithPattern();
    recorder.PutIdentity(generation.model, generation.version);
    recorder.PutState(0);
  }
  // Values around all limits, different in each parameter and with each seed.
  void FillStore(unsigned seed) {
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
  void Write() {
    platform.ExpectBox(20106);
    platform.ExpectBox(62701);
    WriteToRecorder(window);
  }
};

} // namespace loader::test
