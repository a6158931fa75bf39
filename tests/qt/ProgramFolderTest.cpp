// The program folder of a portable folder, of an installation for all users, and of places that cannot be
// written.
#include "qt/ProgramFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <iterator>

#include "tests/support/TemporaryFolder.h"

namespace fs = std::filesystem;

namespace loader::test {
namespace {

class ProgramFolders : public testing::Test {
protected:
  static void Put(const fs::path& into, std::string_view content) {
    fs::create_directories(into);
    for (const char* name : {"InitSet.Ini", "TextKOV.Ini", "TextRUG.Ini"}) {
      std::ofstream(into / name) << content;
    }
  }
  static std::string Content(const fs::path& file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  // The choice of a user who may write no folder that is not his, whoever runs the tests: whether it is
  // `path`, and whether there is a problem.
  bool IsChosenByAnyone(const fs::path& path, bool problem) const {
    fs::permissions(folder.Path(), fs::perms(0755));
    const pid_t child = fork();
    if (child == 0) {
      constexpr uid_t Nobody = 65534;
      const bool dropped = geteuid() != 0 || setuid(Nobody) == 0;
      const ProgramFolder chosen = ChooseProgramFolder(bin, home);
      _exit(dropped && chosen.path == path && chosen.problem.empty() != problem ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0;
  }

  TemporaryFolder folder{"program-folder-test-"};
  fs::path bin = folder / "プログラム 1/bin";
  fs::path share = folder / "プログラム 1/share/parameter-loader";
  fs::path home = folder / "data";
};

TEST_F(ProgramFolders, APortableFolderIsItsOwn) {
  Put(bin, "portable");
  const ProgramFolder chosen = ChooseProgramFolder(bin, home);
  EXPECT_EQ(chosen.path, bin);
  EXPECT_TRUE(chosen.problem.empty());
  EXPECT_FALSE(fs::exists(home));
}

TEST_F(ProgramFolders, InstalledEachUserHasOneWithTheInstalledData) {
  fs::create_directories(bin);
  Put(share, "installed");
  const ProgramFolder chosen = ChooseProgramFolder(bin, home);
  EXPECT_EQ(chosen.path, home / "parameter-loader");
  EXPECT_TRUE(chosen.problem.empty());
  EXPECT_EQ(Content(chosen.path / "TextRUG.Ini"), "installed");
  Put(share, "a newer version");
  EXPECT_EQ(ChooseProgramFolder(bin, home).path, chosen.path);
  EXPECT_EQ(Content(chosen.path / "InitSet.Ini"), "a newer version");
}

TEST_F(ProgramFolders, InstalledTheGuidesAreFoundFromTheUsersFolder) {
  Put(share, "installed");
  const fs::path guides = folder / "プログラム 1/share/doc/parameter-loader/docs";
  fs::create_directories(guides);
  std::ofstream(guides / "user-guide.ja.md") << "guide";
  EXPECT_EQ(Content(ChooseProgramFolder(bin, home).path / "docs/user-guide.ja.md"), "guide");
  fs::remove(home / "parameter-loader/docs");
  fs::create_directory_symlink("/gone/docs", home / "parameter-loader/docs");
  EXPECT_EQ(Content(ChooseProgramFolder(bin, home).path / "docs/user-guide.ja.md"), "guide");
}

TEST_F(ProgramFolders, ALinkToAnEarlierInstallationIsMadeAnewAndAFileOfTheUsersStays) {
  Put(share, "installed");
  fs::create_directories(home / "parameter-loader");
  fs::create_symlink("/gone/InitSet.Ini", home / "parameter-loader/InitSet.Ini");
  std::ofstream(home / "parameter-loader/TextKOV.Ini") << "my own sheet";
  fs::last_write_time(home / "parameter-loader/TextKOV.Ini",
                      fs::last_write_time(share / "TextKOV.Ini") - std::chrono::hours(1));
  const ProgramFolder chosen = ChooseProgramFolder(bin, home);
  EXPECT_EQ(Content(chosen.path / "InitSet.Ini"), "installed");
  EXPECT_EQ(Content(chosen.path / "TextKOV.Ini"), "my own sheet");
}

TEST_F(ProgramFolders, ACopyIsMadeAnewWhenTheInstalledFileIsNewer) {
  Put(share, "newer");
  const fs::path own = home / "parameter-loader";
  fs::create_directories(own);
  std::ofstream(own / "InitSet.Ini") << "a copy";
  std::ofstream(own / "InitSet.Ini.copied") << "\n";
  EXPECT_EQ(Content(ChooseProgramFolder(bin, home).path / "InitSet.Ini"), "a copy") << "it is not older";
  fs::last_write_time(own / "InitSet.Ini",
                      fs::last_write_time(share / "InitSet.Ini") - std::chrono::hours(1));
  EXPECT_EQ(Content(ChooseProgramFolder(bin, home).path / "InitSet.Ini"), "newer");
  EXPECT_EQ(Content(own / "InitSet.Ini.old"), "a copy");
}

TEST_F(ProgramFolders, AFolderThatCannotBeMadeIsToldAndTheDataIsUsedWhereItIs) {
  Put(share, "installed");
  const ProgramFolder chosen = ChooseProgramFolder(bin, "/dev/null/no folder");
  EXPECT_EQ(chosen.path, share);
  EXPECT_NE(chosen.problem.find(u"/dev/null/no folder/parameter-loader"), std::u16string::npos);
  EXPECT_EQ(chosen.problem.find(u'@'), std::u16string::npos);
}

TEST_F(ProgramFolders, APortableFolderThatCannotBeWrittenGivesEachUserOneOfHisOwn) {
  Put(bin, "portable");
  fs::create_directories(home);
  fs::permissions(bin, fs::perms(0555));
  fs::permissions(home, fs::perms(0777));
  EXPECT_TRUE(IsChosenByAnyone(home / "parameter-loader", false));
  EXPECT_EQ(Content(home / "parameter-loader/TextKOV.Ini"), "portable");
  // His own cannot be written either: the data stays where it is, and the program says so.
  fs::remove_all(home / "parameter-loader");
  fs::permissions(home, fs::perms(0555));
  EXPECT_TRUE(IsChosenByAnyone(bin, true));
  for (const fs::path& locked : {bin, home}) {
    fs::permissions(locked, fs::perms(0755)); // so that the test can take them away
  }
}

TEST_F(ProgramFolders, WithoutDataItIsThatOfTheExecutable) {
  const ProgramFolder chosen = ChooseProgramFolder(bin, home);
  EXPECT_EQ(chosen.path, bin);
  EXPECT_FALSE(fs::exists(home));
}

} // namespace
} // namespace loader::test
