// What the tests of the parameter file share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {

// A program with the shipped initial settings and the model in force.
class ParameterFiles : public testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }

  // Saves the store and gives the file's bytes.
  std::string Saved() {
    EXPECT_TRUE(gFSaveParamFile(platform.folder / "saved.KOV"));
    return platform.ReadFile("saved.KOV");
  }

  ScriptedPlatform platform;
};

// A program whose initial settings are those of the test: `block` stands behind the header row.
class SmallStore : public testing::Test {
protected:
  void Start(std::string_view block) {
    platform.WriteFile("InitSet.Ini", "2   ,V00L,0\r\n" + std::string(block));
    StartWithModel(platform, "KOV");
  }
  std::string Saved() {
    EXPECT_TRUE(gFSaveParamFile(platform.folder / "saved.KOV"));
    return platform.ReadFile("saved.KOV");
  }
  ScriptedPlatform platform;
};

} // namespace loader::test
