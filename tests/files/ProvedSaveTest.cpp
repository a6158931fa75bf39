// The save that is proved: a file is the whole set-up or stays what it was, and the reason is told.
#include "tests/files/ParameterFileSupport.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "tests/support/FullDisk.h"
#include "tests/support/System.h"

namespace loader {

void PrintTo(Replacement replacement, std::ostream* out) {
  *out << "replacement " << static_cast<int>(replacement);
}

} // namespace loader

namespace loader::test {
namespace {

class ProvedSave : public ParameterFiles {
protected:
  [[nodiscard]] std::filesystem::path Path(std::string_view name) const { return platform.folder / name; }
  // Everything in the program folder, links and pipes too.
  [[nodiscard]] std::vector<std::string> Folder() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(platform.folder)) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }
  // A save that is expected to fail for this reason, and to leave everything as it was.
  void Fails(Replacement reason, const std::filesystem::path& path) {
    const std::vector<std::string> before = Folder();
    EXPECT_EQ(reason, SaveParamFileProved(path));
    EXPECT_EQ(before, Folder());
  }
};

TEST_F(ProvedSave, WritesWhatTheWindowSaves) {
  for (const char* model : {"KOV", "RUG"}) {
    StartWithModel(platform, model);
    const std::string bytes = Saved();
    EXPECT_EQ(bytes, ParamFileBytes());
    EXPECT_EQ(Replacement::Done, SaveParamFileProved(Path("proved")));
    EXPECT_EQ(bytes, platform.ReadFile("proved"));
  }
}

TEST_F(ProvedSave, LeavesNothingBesideTheFile) {
  std::vector<std::string> expected = Folder();
  expected.emplace_back("proved.KOV");
  std::ranges::sort(expected);
  EXPECT_EQ(Replacement::Done, SaveParamFileProved(Path("proved.KOV")));
  EXPECT_EQ(Replacement::Done, SaveParamFileProved(Path("proved.KOV")));
  EXPECT_EQ(expected, Folder());
}

TEST_F(ProvedSave, LeavesTheFilesOfOthersBesideIt) {
  platform.WriteFile("proved.KOV.new", "of somebody else");
  EXPECT_EQ(Replacement::Done, SaveParamFileProved(Path("proved.KOV")));
  EXPECT_EQ("of somebody else", platform.ReadFile("proved.KOV.new"));
}

TEST_F(ProvedSave, GoesThroughALinkAndKeepsThePermissions) {
  platform.WriteFile("file.KOV", "old");
  std::filesystem::permissions(Path("file.KOV"), std::filesystem::perms(0640));
  std::filesystem::create_symlink("file.KOV", Path("link.KOV"));
  EXPECT_EQ(Replacement::Done, SaveParamFileProved(Path("link.KOV")));
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link.KOV")));
  EXPECT_EQ(ParamFileBytes(), platform.ReadFile("file.KOV"));
  EXPECT_EQ(std::filesystem::perms(0640), std::filesystem::status(Path("file.KOV")).permissions());
}

// The window's save shortens the file here and says nothing.
TEST_F(ProvedSave, LeavesTheOldFileWhenTheDiskIsFull) {
  const std::string old = Saved();
  Put("C", 0, "FILT", 77);
  for (const std::size_t room :
       {std::size_t{0}, std::size_t{5}, std::size_t{1000}, ParamFileBytes().size() - 1}) {
    const FullDisk disk(room);
    Fails(Replacement::NotWritten, Path("saved.KOV"));
    Fails(Replacement::NotWritten, Path("another.KOV"));
  }
  EXPECT_EQ(old, platform.ReadFile("saved.KOV"));
}

TEST_F(ProvedSave, TellsThatThereIsNoSuchFolder) {
  Fails(Replacement::NotWritten, Path("nowhere") / "a.KOV");
}

TEST_F(ProvedSave, TellsWhatIsNoFile) {
  ASSERT_TRUE(MakePipe(Path("pipe.KOV")));
  std::filesystem::create_symlink("circle.KOV", Path("circle.KOV"));
  Fails(Replacement::NoFile, platform.folder);
  Fails(Replacement::NoFile, Path("pipe.KOV"));
  Fails(Replacement::NoFile, Path("circle.KOV"));
  Fails(Replacement::NoFile, "/dev/null");
  Fails(Replacement::NoFile, {});
}

TEST_F(ProvedSave, TellsThatAFileIsReadOnly) {
  platform.WriteFile("kept.KOV", "kept");
  std::filesystem::permissions(Path("kept.KOV"), std::filesystem::perms(0444));
  Fails(Replacement::ReadOnly, Path("kept.KOV"));
  EXPECT_EQ("kept", platform.ReadFile("kept.KOV"));
}

TEST_F(ProvedSave, TellsThatEveryNameBesideIsTaken) {
  platform.WriteFile("a.KOV.new", "x");
  for (int number = 1; number < 100; ++number) {
    platform.WriteFile("a.KOV.new" + std::to_string(number), "x");
  }
  Fails(Replacement::NoNameBeside, Path("a.KOV"));
}

// The comparison that every proved save passes before the new file takes its place.
TEST_F(ProvedSave, ComparesTheWholeFile) {
  platform.WriteFile("a", std::string_view("ab\0\xFF\r\n", 6));
  EXPECT_TRUE(FileHolds(Path("a"), std::string_view("ab\0\xFF\r\n", 6)));
  EXPECT_FALSE(FileHolds(Path("a"), std::string_view("ab\0\xFF\r\n", 5))) << "longer than it should be";
  EXPECT_FALSE(FileHolds(Path("a"), std::string_view("ab\0\xFF\r\nx", 7))) << "shorter than it should be";
  EXPECT_FALSE(FileHolds(Path("a"), std::string_view("ab\0\xFF\n\n", 6)));
  platform.WriteFile("empty", "");
  EXPECT_TRUE(FileHolds(Path("empty"), ""));
  EXPECT_FALSE(FileHolds(Path("empty"), "x"));
  EXPECT_FALSE(FileHolds(Path("a"), ""));
  EXPECT_FALSE(FileHolds(Path("nowhere"), "")) << "no file is no empty file";
  EXPECT_FALSE(FileHolds(platform.folder, ""));
}

} // namespace
} // namespace loader::test
