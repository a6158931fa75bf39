// The folder of a scripted platform: a new one each time, and gone with it.
#include "tests/support/ScriptedPlatform.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "tests/support/System.h"

namespace loader::test {
namespace {

namespace fs = std::filesystem;

const std::string Variable = TemporaryFolderVariable();

// All temporary files of the test lie in one folder that it can look into.
class TemporaryFiles : public testing::Test {
protected:
  TemporaryFiles() { SetEnvironment(Variable, all_.Path().string()); }
  ~TemporaryFiles() override {
    if (before_.empty()) {
      RemoveEnvironment(Variable);
    } else {
      SetEnvironment(Variable, before_);
    }
  }
  [[nodiscard]] const fs::path& All() const { return all_.Path(); }
  [[nodiscard]] std::ptrdiff_t Count() const { return std::distance(fs::directory_iterator(All()), {}); }

private:
  const std::string before_ = std::getenv(Variable.c_str()) == nullptr ? "" : std::getenv(Variable.c_str());
  const TemporaryFolder all_{"loader-support-test-"};
};

TEST_F(TemporaryFiles, OfAScriptedPlatformAreGoneWithIt) {
  {
    ScriptedPlatform platform;
    platform.WriteFile("LOADER.INI", "[LOADER]\r\n");
    EXPECT_EQ(1, Count());
    EXPECT_TRUE(fs::exists(platform.folder / "InitSet.Ini"));
  }
  EXPECT_EQ(0, Count());
}

TEST_F(TemporaryFiles, OfTwoPlatformsLieApart) {
  ScriptedPlatform one;
  const fs::path ofOne = one.folder;
  {
    const ScriptedPlatform two;
    EXPECT_NE(ofOne, two.folder);
  }
  EXPECT_TRUE(fs::exists(ofOne / "InitSet.Ini"));
}

// An aborted run leaves its folder, and the system gives its process id to a later one.
TEST_F(TemporaryFiles, ThatAnAbortedRunOfThisIdLeftBehindDoNoHarm) {
  constexpr int MorePlatformsThanATestMakes = 20;
  const std::string id = std::to_string(ProcessId());
  for (int run = 0; run < MorePlatformsThanATestMakes; ++run) {
    const fs::path left = All() / ("loader-test-" + id + "-" + std::to_string(run));
    fs::create_directory(left);
    fs::copy_file(fs::path(LOADER_DATA_DIR) / "InitSet.Ini", left / "InitSet.Ini");
  }
  EXPECT_NO_THROW(ScriptedPlatform());
}

TEST_F(TemporaryFiles, ThatCannotBeMadeAreAFailure) {
  SetEnvironment(TemporaryFolderVariable(), (All() / "missing").string());
  EXPECT_THROW(TemporaryFolder("loader-test-"), std::exception);
}

} // namespace
} // namespace loader::test
