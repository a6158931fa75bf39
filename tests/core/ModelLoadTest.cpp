// A model that is loaded by its name, as a program without LOADER.INI does it.
#include <gtest/gtest.h>

#include <string>

#include "core/ModelProfile.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "platform/RunTimeFailure.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

class ModelLoad : public testing::Test {
protected:
  [[nodiscard]] std::filesystem::path LoaderIni() const { return platform.folder / "LOADER.INI"; }
  static std::string WhyNot(std::string_view model) {
    try {
      LoadModel(model);
      return {};
    } catch (const RunTimeFailure& failure) {
      return failure.what();
    }
  }
  ScriptedPlatform platform;
};

class ModelByName : public ModelLoad, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Models, ModelByName, testing::Values("KOV", "RUG"),
                         [](const testing::TestParamInfo<const char*>& model) { return model.param; });

TEST_P(ModelByName, IsWhatTheWindowLoadsForIt) {
  StartWithModel(platform, GetParam());
  const ParamStoreTable store = ParamStore;
  const ModelProfile profile = Profile;
  const std::string tag = VersionTag;
  ASSERT_FALSE(store.empty());

  ParamStore.clear();
  Profile = {};
  ModelCode.clear();
  VersionTag.clear();
  std::filesystem::remove(LoaderIni());
  TakeStartValues();
  LoadModel(GetParam());

  EXPECT_TRUE(store == ParamStore);
  EXPECT_EQ(profile, Profile);
  EXPECT_EQ(GetParam(), ModelCode);
  EXPECT_EQ(tag, VersionTag);
}

TEST_P(ModelByName, NeedsNoLoaderIniAndMakesNone) {
  ASSERT_FALSE(std::filesystem::exists(LoaderIni()));
  LoadModel(GetParam());
  EXPECT_FALSE(std::filesystem::exists(LoaderIni()));
}

TEST_P(ModelByName, IsNotThatOfLoaderIni) {
  const std::string other =
      std::string("[LOADER]\r\nTYPE=") + (GetParam() == std::string("KOV") ? "1" : "0") + "\r\n";
  platform.WriteFile("LOADER.INI", other);
  LoadModel(GetParam());
  EXPECT_EQ(GetParam(), ModelCode);
  EXPECT_EQ(other, platform.ReadFile("LOADER.INI"));
}

TEST_P(ModelByName, TakesTheModeCheckOfItsBlock) {
  platform.WriteFile("InitSet.Ini", "2   ,V00L,3\r\n2   ,V00W,4\r\n");
  LoadModel(GetParam());
  EXPECT_EQ(GetParam() == std::string("KOV") ? 3 : 4, ModeCheckOff);
}

TEST_F(ModelLoad, StartsFromItsOwnFileWhateverWasInForce) {
  LoadModel("RUG");
  LoadModel("KOV");
  EXPECT_EQ(30U, ParamStore.front().Items.size());
  LoadModel("RUG");
  EXPECT_EQ(72U, ParamStore.front().Items.size());
}

TEST_F(ModelLoad, OfAnUnknownNameChangesNothing) {
  LoadModel("KOV");
  const ParamStoreTable store = ParamStore;
  for (const char* name : {"", "kov", "KOV ", "XYZ", "V00L"}) {
    EXPECT_EQ("no such model: " + std::string(name), WhyNot(name));
    EXPECT_EQ("KOV", ModelCode);
    EXPECT_TRUE(store == ParamStore);
    EXPECT_FALSE(TakeProfileOf(name));
  }
}

TEST_F(ModelLoad, ThatFailsSaysWhyAndChangesNothing) {
  LoadModel("KOV");
  ModeCheckOff = 7;
  const ParamStoreTable store = ParamStore;
  const ModelProfile profile = Profile;
  platform.WriteFile("InitSet.Ini", "2   ,V00W,5\r\n1,D,x,60,1\r\n");
  EXPECT_EQ("not a whole number in range: x", WhyNot("RUG"));
  platform.WriteFile("InitSet.Ini", "2   ,V00L,5\r\n");
  EXPECT_EQ("the initial settings file has no block of the selected model", WhyNot("RUG"));
  std::filesystem::remove(platform.folder / "InitSet.Ini");
  EXPECT_EQ("not a regular file: " + (platform.folder / "InitSet.Ini").string(), WhyNot("RUG"));

  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ("V00L", VersionTag);
  EXPECT_EQ(profile, Profile);
  EXPECT_EQ(7, ModeCheckOff);
  EXPECT_TRUE(store == ParamStore);
}

TEST_F(ModelLoad, OfTheWindowIsSelectionAndLoad) {
  platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=1\r\n");
  SelectModel();
  EXPECT_EQ("RUG", ModelCode);
  LoadModelBlock();
  const ParamStoreTable inTwoSteps = ParamStore;
  ParamStore.clear();
  ASSERT_TRUE(gFLoadInitSetteiData());
  EXPECT_TRUE(inTwoSteps == ParamStore);
}

TEST_F(ModelLoad, NeedsTheStartValuesForTheCountsThatAllModelsShare) {
  Profile = {};
  ColorNames.clear();
  TakeStartValues();
  LoadModel("KOV");
  EXPECT_EQ(10, Profile.MessageCount);
  EXPECT_EQ(12, Profile.UnitCount);
  EXPECT_EQ(3, Profile.OperationResultCount);
  EXPECT_EQ(15U, ColorNames.size()) << "the catalogues";
}

} // namespace
} // namespace loader::test
