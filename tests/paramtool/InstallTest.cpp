// paramtool as "cmake --install" puts it into a folder: it works from there, wherever that is.
#include <gtest/gtest.h>

#include <fstream>

#include "platform/DataFolder.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using Installed = ToolTest;

TEST_F(Installed, RunsFromAnyPlaceWithItsDataPagesAndCompletion) {
  const std::filesystem::path prefix = File("工場 2");
  const Ended install = RunProcess(
      CMAKE_PROGRAM, {"--install", BUILD_FOLDER, "--prefix", prefix.string(), "--component", "system"});
  ASSERT_EQ(install.status, 0) << install.errors;
  const std::filesystem::path program = prefix / "bin/paramtool";
  const std::vector<std::string> arguments{"show", "default:RUG", "CH1"};
  const Ended shown = RunProcess(program, arguments);
  EXPECT_EQ(shown.status, ExitGood) << shown.errors;
  EXPECT_EQ(shown.errors, "");
  EXPECT_EQ(shown.output, Tool(arguments).output);
  EXPECT_FALSE(std::filesystem::exists(prefix / "bin/InitSet.Ini"));
  for (const char* file : {"man/man1/paramtool.1", "man/ja/man1/paramtool.1", "parameter-loader/TextKOV.Ini",
                           "parameter-loader/TextRUG.Ini", "bash-completion/completions/paramtool"}) {
    EXPECT_TRUE(std::filesystem::exists(prefix / "share" / file)) << file;
  }
  // And from another place.
  const std::filesystem::path moved = File("moved");
  std::filesystem::rename(prefix, moved);
  EXPECT_EQ(RunProcess(moved / "bin/paramtool", arguments).output, shown.output);
  // Called by a link that stands elsewhere.
  std::filesystem::create_symlink(moved / "bin/paramtool", File("link"));
  EXPECT_EQ(RunProcess(File("link"), arguments).output, shown.output);
}

TEST_F(Installed, DataFilesBesideTheProgramComeFirst) {
  const std::filesystem::path bin = File("bin");
  const std::filesystem::path share = File("share/parameter-loader");
  std::filesystem::create_directories(bin);
  std::filesystem::create_directories(share);
  EXPECT_EQ(DataFolder(bin), bin); // neither has them: the failure names the program's folder
  std::ofstream(share / "InitSet.Ini") << "x";
  EXPECT_EQ(DataFolder(bin), share);
  std::ofstream(bin / "InitSet.Ini") << "x";
  EXPECT_EQ(DataFolder(bin), bin);
}

} // namespace
} // namespace loader::test
