// The program folder of a portable folder, of an installation for all users, and of places that cannot be
// written.
#include <chrono>

#include "core/PathText.h"
#include "qt/System.h"
#include "tests/qt/ProgramFolders.h"

namespace loader::test {
namespace {

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
  EXPECT_EQ(ContentOf(chosen.path / "TextRUG.Ini"), "installed");
  Put(share, "a newer version");
  EXPECT_EQ(ChooseProgramFolder(bin, home).path, chosen.path);
  EXPECT_EQ(ContentOf(chosen.path / "InitSet.Ini"), "a newer version");
}

TEST_F(ProgramFolders, ACopyIsMadeAnewWhenTheInstalledFileIsNewer) {
  Put(share, "newer");
  const fs::path own = home / "parameter-loader";
  fs::create_directories(own);
  std::ofstream(own / "InitSet.Ini") << "a copy";
  std::ofstream(own / "InitSet.Ini.copied") << "\n";
  EXPECT_EQ(ContentOf(ChooseProgramFolder(bin, home).path / "InitSet.Ini"), "a copy") << "it is not older";
  fs::last_write_time(own / "InitSet.Ini",
                      fs::last_write_time(share / "InitSet.Ini") - std::chrono::hours(1));
  EXPECT_EQ(ContentOf(ChooseProgramFolder(bin, home).path / "InitSet.Ini"), "newer");
  EXPECT_EQ(ContentOf(own / "InitSet.Ini.old"), "a copy");
}

TEST_F(ProgramFolders, AFolderThatCannotBeMadeIsToldAndTheDataIsUsedWhereItIs) {
  Put(share, "installed");
  std::ofstream(folder / "file") << "no folder";
  const ProgramFolder chosen = ChooseProgramFolder(bin, folder / "file");
  EXPECT_EQ(chosen.path, share);
  EXPECT_NE(chosen.problem.find(PathText(folder / "file" / "parameter-loader")), std::u16string::npos);
  EXPECT_EQ(chosen.problem.find(u'@'), std::u16string::npos);
}

// A package's files are as old as the package: newer ones may be older than the copies of the ones before.
TEST_F(ProgramFolders, ACopyOfAnotherFileThanTheInstalledOneIsMadeAnewHoweverOldThatIs) {
  const fs::path own = home / "parameter-loader";
  for (const std::string_view adapted : {"", "my own sheet"}) {
    fs::remove_all(own);
    Put(share, "the next version");
    Put(own, adapted.empty() ? "the version before" : adapted);
    for (const char* name : {"InitSet.Ini", "TextKOV.Ini", "TextRUG.Ini"}) {
      std::ofstream(own / (std::string(name) + ".copied")) << "the version before";
      fs::last_write_time(share / name, fs::last_write_time(own / name) - std::chrono::hours(24));
    }
    EXPECT_EQ(ChooseProgramFolder(bin, home).path, own);
    EXPECT_EQ(ContentOf(own / "TextKOV.Ini"), "the next version");
    EXPECT_EQ(fs::exists(own / "TextKOV.Ini.old"), !adapted.empty()) << "what the user has made of a copy";
    EXPECT_FALSE(fs::exists(own / "TextKOV.Ini.new"));
    fs::remove(own / "InitSet.Ini"); // as if it had ended there
    EXPECT_EQ(ChooseProgramFolder(bin, home).path, own);
    EXPECT_EQ(ContentOf(own / "InitSet.Ini"), "the next version");
  }
  EXPECT_EQ(ContentOf(own / "TextKOV.Ini.old"), "my own sheet");
}

TEST_F(ProgramFolders, ACopyThatTheUserHasAdaptedStaysUntilAnotherFileIsInstalled) {
  const fs::path own = home / "parameter-loader";
  Put(share, "installed");
  Put(own, "my own sheet");
  std::ofstream(own / "TextKOV.Ini.copied") << "installed";
  fs::last_write_time(share / "TextKOV.Ini",
                      fs::last_write_time(own / "TextKOV.Ini") + std::chrono::hours(24));
  EXPECT_EQ(ChooseProgramFolder(bin, home).path, own);
  EXPECT_EQ(ContentOf(own / "TextKOV.Ini"), "my own sheet");
}

// As on a medium that cannot be written, and as of an installation for all users that has the data beside the
// program.
TEST_F(ProgramFolders, WhereTheExecutablesCannotBeWrittenEachUserHasHisOwnAndTheGuidesOfTheInstallation) {
  Put(bin, "portable");
  for (const char* name : {"InitSet.Ini", "TextKOV.Ini", "TextRUG.Ini"}) {
    fs::permissions(bin / name, fs::perms(0444));
  }
  fs::create_directory(bin / "docs");
  std::ofstream(bin / "docs/user-guide.ja.html") << "guide";
  const auto others = [this](const fs::path& asked) { return asked != bin && fs::is_directory(asked); };
  const ProgramFolder chosen = ChooseProgramFolder(bin, home, others);
  EXPECT_EQ(chosen.path, home / "parameter-loader");
  EXPECT_TRUE(chosen.problem.empty());
  EXPECT_EQ(chosen.guides, bin);
  EXPECT_EQ(ContentOf(chosen.path / "TextKOV.Ini"), "portable");
  EXPECT_EQ(ContentOf(chosen.guides / "docs/user-guide.ja.html"), "guide");
  // His own cannot be written either: the data stays where it is, and the program says so.
  const ProgramFolder none = ChooseProgramFolder(bin, home, [](const fs::path&) { return false; });
  EXPECT_EQ(none.path, bin);
  EXPECT_EQ(none.guides, bin);
  EXPECT_NE(none.problem.find(PathText(home / "parameter-loader")), std::u16string::npos);
}

TEST_F(ProgramFolders, TheGuidesOfAnInstallationForAllUsersAreAmongItsDocuments) {
  Put(share, "installed");
  EXPECT_EQ(ChooseProgramFolder(bin, home).guides, share);
  const fs::path documents = (share / "../doc/parameter-loader").lexically_normal();
  fs::create_directories(documents / "docs");
  EXPECT_EQ(ChooseProgramFolder(bin, home).guides, documents);
}

// Where the system itself refuses, whoever asks: the folder of the kernel's own files. Elsewhere there is no
// such folder, which can be written as little.
TEST_F(ProgramFolders, TheSystemSaysWhichOfThemCanBeWritten) {
  fs::create_directories(home);
  EXPECT_TRUE(FolderCanBeWritten(home));
  EXPECT_TRUE(fs::is_empty(home)) << "nothing is left there";
  EXPECT_FALSE(FolderCanBeWritten(fs::path(LOADER_REFUSED_FOLDER)));
  EXPECT_FALSE(FolderCanBeWritten(home / "none"));
}

TEST_F(ProgramFolders, WithoutDataItIsThatOfTheExecutable) {
  const ProgramFolder chosen = ChooseProgramFolder(bin, home);
  EXPECT_EQ(chosen.path, bin);
  EXPECT_FALSE(fs::exists(home));
}

} // namespace
} // namespace loader::test
