// Which firmware tag means which register layout.
#include "simulator/Firmware.h"

#include <gtest/gtest.h>

namespace loader::simulator {
namespace {

struct TagCase {
  Model model;
  const char* tag;
  int generation;
};

class FirmwareTags : public testing::TestWithParam<TagCase> {};

INSTANTIATE_TEST_SUITE_P(BothEndsOfEveryRange, FirmwareTags,
                         testing::Values(TagCase{Model::Kov, "V00A", 0}, TagCase{Model::Kov, "V05A", 0},
                                         TagCase{Model::Kov, "V06A", 1}, TagCase{Model::Kov, "V13A", 1},
                                         TagCase{Model::Kov, "V14A", 2}, TagCase{Model::Kov, "V17A", 2},
                                         TagCase{Model::Kov, "V18A", 3}, TagCase{Model::Kov, "V26A", 3},
                                         TagCase{Model::Kov, "V27A", 4}, TagCase{Model::Kov, "V39A", 4},
                                         TagCase{Model::Kov, "V40A", 5}, TagCase{Model::Kov, "V99A", 5},
                                         TagCase{Model::Rug, "V00W", 20}, TagCase{Model::Rug, "V09W", 20},
                                         TagCase{Model::Rug, "V10W", 21}, TagCase{Model::Rug, "V99W", 21}),
                         [](const auto& of) { return std::string(of.param.tag); });

TEST_P(FirmwareTags, SelectTheGeneration) {
  const Firmware firmware = FirmwareOf(GetParam().model, GetParam().tag);

  EXPECT_EQ(firmware.generation, GetParam().generation);
  EXPECT_TRUE(firmware.regularTag);
  EXPECT_EQ(firmware.tag, GetParam().tag);
}

TEST(FirmwareTag, OfAnotherFormIsReportedWithTheNewestLayout) {
  for (const char* tag : {"V10W", "V1A", "X40A", "V4xA", "V400", "V40A1", "version8"}) {
    const Firmware firmware = FirmwareOf(Model::Kov, tag);
    EXPECT_FALSE(firmware.regularTag) << tag;
    EXPECT_EQ(firmware.generation, 5) << tag;
    EXPECT_EQ(firmware.tag, tag);
  }
  EXPECT_EQ(FirmwareOf(Model::Rug, "V40A").generation, 21);
  EXPECT_FALSE(FirmwareOf(Model::Rug, "V40A").regularTag);
}

TEST(FirmwareTag, ThatIsTheNewestIsRegular) {
  for (const Model model : {Model::Kov, Model::Rug}) {
    EXPECT_TRUE(FirmwareOf(model, NewestTag(model)).regularTag);
  }
}

TEST(FirmwareTag, IsPrintableAndAtMostEightCharacters) {
  EXPECT_TRUE(IsTag("V40A"));
  EXPECT_TRUE(IsTag("12345678"));
  for (const char* tag : {"", "123456789", "V 0A", "V40\x01", "V40\x7F", "\xE3\x81\x82"}) {
    EXPECT_FALSE(IsTag(tag)) << tag;
  }
}

} // namespace
} // namespace loader::simulator
