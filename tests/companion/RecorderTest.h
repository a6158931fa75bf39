// What the tests of transfers share: a recorder on the scripted wires, in virtual time, as the companion
// program talks to it.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "companion/LossesOfWrite.h"
#include "companion/Transfer.h"
#include "companion/Verify.h"
#include "core/modFile.h"
#include "tests/comm/CommFixture.h"
#include "tests/comm/Generations.h"
#include "tests/comm/StoreFilling.h"

namespace loader::test {

struct CompanionRecorder : RecorderFixture {
  // A recorder of the generation whose other registers hold letters, which are text and number alike.
  void Prepare(const Generation& generation, unsigned seed = 1) {
    StartWithModel(platform, generation.model);
    FillMemory(generation, seed);
  }
  void FillMemory(const Generation& generation, unsigned seed) {
    std::mt19937 random(seed);
    for (int number = 40001; number <= 50000; ++number) {
      recorder.Register(number) =
          static_cast<std::uint16_t>((0x41 + random() % 26) * 0x100 + (0x41 + random() % 26));
    }
    if (generation.number == 2) { // hours and minutes: as minutes they have to be a number of 16 bits
      for (int word = 6; word <= 9; ++word) {
        recorder.Register(PlaceIn(generation, 'E').base + word) = static_cast<std::uint16_t>(random() % 60);
      }
    }
    recorder.PutIdentity(generation.model, generation.version);
    recorder.PutState(0);
  }
  [[nodiscard]] std::vector<std::uint16_t> Memory() {
    std::vector<std::uint16_t> memory;
    for (int number = 40001; number <= 50000; ++number) {
      memory.push_back(recorder.Register(number));
    }
    return memory;
  }
  void PutMemory(const std::vector<std::uint16_t>& memory) {
    for (int number = 40001; number <= 50000; ++number) {
      recorder.Register(number) = memory.at(static_cast<std::size_t>(number - 40001));
    }
  }

  // The recorder's address on that line.
  static RecorderLine On(Line line) {
    const std::u16string_view address = line == Line::Usb        ? u"usb:plug"
                                        : line == Line::Ethernet ? u"tcp:192.168.1.1"
                                                                 : u"serial:plug";
    return {ParseAddress(address, Language::English), Language::English, {}};
  }
  // A set-up of values around all limits.
  static WholeSetUp Filled(std::string_view model, unsigned seed) {
    WholeSetUp setUp = InitialSetUp(model, Language::English);
    WithSetUp(setUp, [&] { FillStore(seed); });
    return setUp;
  }

  RecorderLine line = On(Line::Ethernet);
};

inline std::vector<StoredValue> ValuesOf(WholeSetUp& setUp) {
  return WithSetUp(setUp, AllValues);
}

} // namespace loader::test
