// A recorder that is about to be written.
#pragma once

#include "comm/BulkWrite.h"
#include "tests/comm/CommFixture.h"
#include "tests/comm/Generations.h"
#include "tests/comm/StoreFilling.h"

namespace loader::test {

struct WriteOf : RecorderFixture {
  void Prepare(const Generation& generation) {
    StartWithModel(platform, generation.model);
    Configure(Line::Ethernet);
    recorder.FillWithPattern();
    recorder.PutIdentity(generation.model, generation.version);
    recorder.PutState(0);
  }
  void Write() {
    platform.ExpectBox(20106);
    platform.ExpectBox(62701);
    WriteToRecorder(window);
  }
};

} // namespace loader::test
