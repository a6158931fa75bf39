// What of the program folder only Linux has: links, and the rights of another user.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

#include "tests/qt/ProgramFolders.h"

namespace loader::test {
namespace {

struct LinkedProgramFolders : ProgramFolders {
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
};

TEST_F(LinkedProgramFolders, InstalledTheGuidesAreFoundFromTheUsersFolder) {
  Put(share, "installed");
  const fs::path guides = folder / "プログラム 1/share/doc/parameter-loader/docs";
  fs::create_directories(guides);
  std::ofstream(guides / "user-guide.ja.md") << "guide";
  EXPECT_EQ(ContentOf(ChooseProgramFolder(bin, home).path / "docs/user-guide.ja.md"), "guide");
  fs::remove(home / "parameter-loader/docs");
  fs::create_directory_symlink("/gone/docs", home / "parameter-loader/docs");
  EXPECT_EQ(ContentOf(ChooseProgramFolder(bin, home).path / "docs/user-guide.ja.md"), "guide");
}

TEST_F(LinkedProgramFolders, ALinkToAnEarlierInstallationIsMadeAnewAndAFileOfTheUsersStays) {
  Put(share, "installed");
  fs::create_directories(home / "parameter-loader");
  fs::create_symlink("/gone/InitSet.Ini", home / "parameter-loader/InitSet.Ini");
  std::ofstream(home / "parameter-loader/TextKOV.Ini") << "my own sheet";
  fs::last_write_time(home / "parameter-loader/TextKOV.Ini",
                      fs::last_write_time(share / "TextKOV.Ini") - std::chrono::hours(1));
  const ProgramFolder chosen = ChooseProgramFolder(bin, home);
  EXPECT_EQ(ContentOf(chosen.path / "InitSet.Ini"), "installed");
  EXPECT_EQ(ContentOf(chosen.path / "TextKOV.Ini"), "my own sheet");
}

TEST_F(LinkedProgramFolders, APortableFolderThatCannotBeWrittenGivesEachUserOneOfHisOwn) {
  Put(bin, "portable");
  fs::create_directories(home);
  fs::permissions(bin, fs::perms(0555));
  fs::permissions(home, fs::perms(0777));
  EXPECT_TRUE(IsChosenByAnyone(home / "parameter-loader", false));
  EXPECT_EQ(ContentOf(home / "parameter-loader/TextKOV.Ini"), "portable");
  // His own cannot be written either: the data stays where it is, and the program says so.
  fs::remove_all(home / "parameter-loader");
  fs::permissions(home, fs::perms(0555));
  EXPECT_TRUE(IsChosenByAnyone(bin, true));
  for (const fs::path& locked : {bin, home}) {
    fs::permissions(locked, fs::perms(0755)); // so that the test can take them away
  }
}

} // namespace
} // namespace loader::test
