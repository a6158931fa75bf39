// Files that another program has open, that are read-only, or that stand in a folder of a Japanese name: what
// Windows does with them, and that nothing is lost.
#include <gtest/gtest.h>
#include <windows.h>
#undef ReplaceFile // a macro of that header

#include "core/Text.h"
#include "platform/PrivateProfile.h"
#include "platform/WholeFile.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {
namespace {

// A file as another program has it open, which lets others do no more than `sharing`.
class OpenElsewhere {
public:
  OpenElsewhere(const std::filesystem::path& file, DWORD sharing)
      : handle_(CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {
    EXPECT_NE(INVALID_HANDLE_VALUE, handle_) << file;
  }
  ~OpenElsewhere() { CloseHandle(handle_); }
  OpenElsewhere(const OpenElsewhere&) = delete;
  OpenElsewhere& operator=(const OpenElsewhere&) = delete;

private:
  HANDLE handle_;
};

class WindowsFiles : public testing::Test {
protected:
  [[nodiscard]] std::filesystem::path File() const { return folder_.Path() / PathOf(u"炉 1 号.INI"); }
  void SetUp() override { ASSERT_TRUE(ReplaceFile(File(), Before, Neighbours::OfOthers)); }
  // Nothing but the file, as it was.
  void ExpectUntouched() const {
    EXPECT_EQ(Before, ContentOf(File()));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder_.Path()), {}));
  }
  static constexpr std::string_view Before = "[LOADER]\r\nTYPE=KOV\r\n";

private:
  const TemporaryFolder folder_{"windows-files-test-"};
};

TEST_F(WindowsFiles, AreReplacedWhereTheyStand) {
  EXPECT_EQ(Replacement::Done, ReplaceFileProved(File(), "other", Neighbours::OfOthers));
  EXPECT_EQ("other", ContentOf(File()));
}

TEST_F(WindowsFiles, KeepTheirLineEndsAndBytes) {
  EXPECT_TRUE(WritePrivateProfileStringA("LOADER", "NAME", ToCodePage(u"～炉"), File()));
  EXPECT_EQ("[LOADER]\r\nTYPE=KOV\r\nNAME=\x81\x60\x98\x46\r\n", ContentOf(File()));
}

TEST_F(WindowsFiles, ThatAnotherProgramKeepsToItselfStayAsTheyAre) {
  {
    const OpenElsewhere open(File(), 0);
    EXPECT_EQ(Replacement::ReadOnly, ReplaceFileProved(File(), "lost", Neighbours::OfOthers));
    EXPECT_FALSE(WritePrivateProfileStringA("LOADER", "TYPE", "RUG", File()));
    EXPECT_EQ("absent", GetPrivateProfileStringA("LOADER", "TYPE", "absent", 255, File()));
  }
  ExpectUntouched();
}

TEST_F(WindowsFiles, ThatAnotherProgramOnlyLetsReadStayAsTheyAre) {
  {
    const OpenElsewhere open(File(), FILE_SHARE_READ);
    EXPECT_EQ(Replacement::ReadOnly, ReplaceFileProved(File(), "lost", Neighbours::OfOthers));
  }
  ExpectUntouched();
}

TEST_F(WindowsFiles, ThatAnotherProgramLetsWriteButNotGoStayAsTheyAre) {
  {
    const OpenElsewhere open(File(), FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_EQ(Replacement::NotPutInPlace, ReplaceFileProved(File(), "lost", Neighbours::OfOthers));
  }
  ExpectUntouched();
}

TEST_F(WindowsFiles, WithTheReadOnlyAttributeStayAsTheyAre) {
  ASSERT_TRUE(SetFileAttributesW(File().c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_EQ(Replacement::ReadOnly, ReplaceFileProved(File(), "lost", Neighbours::OfOthers));
  EXPECT_FALSE(WritePrivateProfileStringA("LOADER", "TYPE", "RUG", File()));
  ExpectUntouched();
  SetFileAttributesW(File().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WindowsFiles, AreNotMadeWhereTheTemporaryOneCannotBe) {
  const std::filesystem::path beside = PathOf(File().u16string() + u".new");
  std::filesystem::create_directory(beside);
  EXPECT_FALSE(WritePrivateProfileStringA("LOADER", "TYPE", "RUG", File()));
  std::filesystem::remove(beside);
  ExpectUntouched();
}

} // namespace
} // namespace loader::test
