// Whole parameter files, byte for byte: what the window and the companion save of a fresh store and of a
// plant in operation, the same on every system.
//
// A file that differs is left in the folder "printed" of the build's tests. Look at it; when the change is
// meant, copy it over the one in tests/files/golden.
#include <fstream>

#include "core/UserUnits.h"
#include "core/modFile.h"
#include "simulator/Plant.h"
#include "tests/files/ParameterFileSupport.h"

namespace loader::test {
namespace {

struct SavedSet {
  const char* model;
  const char* setup;
  bool plant;
};

class SavedSets : public testing::TestWithParam<SavedSet> {
protected:
  void SetUp() override {
    StartWithModel(platform, GetParam().model);
    if (GetParam().plant) {
      const bool kov = ModelCode == "KOV";
      ParamStore = simulator::PlantSetup(ParamStore, kov ? simulator::Model::Kov : simulator::Model::Rug);
      UpdateUserUnitNames();
    }
  }
  static std::string Name() {
    return std::string(GetParam().model) + "-" + GetParam().setup + "." + GetParam().model;
  }
  static std::string Golden() {
    const std::filesystem::path file =
        std::filesystem::path(LOADER_SOURCE_DIR) / "tests/files/golden" / Name();
    return std::filesystem::exists(file) ? ReadWholeFile(file) : std::string();
  }
  ScriptedPlatform platform;
};

INSTANTIATE_TEST_SUITE_P(Setups, SavedSets,
                         testing::Values(SavedSet{"KOV", "fresh", false}, SavedSet{"KOV", "plant", true},
                                         SavedSet{"RUG", "fresh", false}, SavedSet{"RUG", "plant", true}),
                         [](const auto& tested) {
                           return std::string(tested.param.model) + "_" + tested.param.setup;
                         });

TEST_P(SavedSets, AreAsTheyWere) {
  const std::u16string file = (platform.folder / PathOf(u"炉 1 号.KOV")).u16string();
  ASSERT_TRUE(gFSaveParamFile(PathOf(file)));
  const std::string saved = ReadWholeFile(PathOf(file));
  if (saved != Golden()) {
    std::filesystem::create_directories(PRINTED_FOLDER);
    std::ofstream(std::filesystem::path(PRINTED_FOLDER) / Name(), std::ios::binary) << saved;
  }
  // Not as two texts: the lines are told by a look at both files.
  EXPECT_TRUE(saved == Golden()) << PRINTED_FOLDER << "/" << Name() << " differs";
  ASSERT_EQ(Replacement::Done, SaveParamFileProved(PathOf(file)));
  EXPECT_TRUE(FileHolds(PathOf(file), Golden()));
}

TEST_P(SavedSets, AreReadBackToTheSameBytes) {
  ASSERT_TRUE(LoadParamBytes(Golden()));
  EXPECT_TRUE(ParamFileBytes() == Golden());
}

} // namespace
} // namespace loader::test
