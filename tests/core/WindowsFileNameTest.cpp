// What the names of Windows are to the functions that ask the system itself.
#include <gtest/gtest.h>

#include "core/Text.h"
#include "platform/FileName.h"
#include "platform/WholeFile.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {
namespace {

TEST(WindowsFileName, IsAskedOfTheSystemAsItCompletesIt) {
  EXPECT_TRUE(IsFileName("set.KOV"));
  EXPECT_FALSE(IsFileName("NUL"));
  EXPECT_FALSE(IsFileName("C:\\plant\\COM1.KOV"));
  EXPECT_FALSE(IsFileName("set.KOV."));
  EXPECT_FALSE(IsFileName(std::string(259, 'x'))) << "too long with the folder it starts from";
}

TEST(WindowsFileName, MakesNoDifferenceBetweenCapitalAndSmallLetters) {
  EXPECT_EQ(FileKey("plant\\Set.KOV"), FileKey("PLANT/set.kov"));
  EXPECT_EQ(FileKey(PathOf(u"ＬＩＮＥ.KOV")), FileKey(PathOf(u"ｌｉｎｅ.kov")));
  EXPECT_NE(FileKey("a.KOV"), FileKey("b.KOV"));
}

TEST(WindowsFileName, OfADeviceOrOfAnotherFileIsNotWritten) {
  const TemporaryFolder folder("windows-name-test-");
  ASSERT_TRUE(ReplaceFile(folder / "set.KOV", "kept", Neighbours::OfOthers));
  for (const char* name : {"NUL", "con.KOV", "COM1", "set.KOV.", "set.KOV ", "set.KOV:stream"}) {
    EXPECT_EQ(Replacement::NoName, ReplaceFileProved(folder / name, "lost", Neighbours::OfOthers)) << name;
  }
  EXPECT_TRUE(FileHolds(folder / "set.KOV", "kept"));
  EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder.Path()), {}));
}

TEST(WindowsFileName, ThatIsTooLongIsRefusedBeforeAnythingIsWritten) {
  const TemporaryFolder folder("windows-name-test-");
  std::filesystem::path deep = folder.Path();
  while (deep.native().size() < 250) {
    deep /= "0123456789";
    std::filesystem::create_directory(deep);
  }
  const std::filesystem::path file = deep / "0123456789.KOV";
  EXPECT_EQ(Replacement::NoName, ReplaceFileProved(file, "bytes", Neighbours::OfOthers));
  EXPECT_TRUE(std::filesystem::is_empty(deep));
}

} // namespace
} // namespace loader::test
