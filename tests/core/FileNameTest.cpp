// Which names a file may have: the rule of Windows, which is the same on every system that is asked for it.
#include "platform/FileName.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "core/PathText.h"
#include "core/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {
namespace {

TEST(FileName, OfWindowsIsAnyPlainPath) {
  for (const std::u16string_view path :
       {u"set.KOV", u"C:\\plant\\炉 1 号.KOV", u"c:set.KOV", u"..\\set.KOV", u".\\a\\..\\b",
        u"\\\\server\\share\\x.KOV", u"Z:/tmp/a b/c", u".hidden", u"CONSOLE.KOV", u"COM10", u"COM0.KOV",
        u"LPT", u"x.CON", u"a..b", u" a"}) {
    EXPECT_TRUE(IsWindowsFileName(path)) << ToUtf8(path);
  }
}

TEST(FileName, OfWindowsIsNoDevice) {
  for (const std::u16string_view path :
       {u"NUL", u"nul.KOV", u"C:\\plant\\Con", u"CON .KOV", u"aux.tar.gz", u"PRN", u"COM1", u"com9.KOV",
        u"LPT1.txt", u"COM\u00B9", u"lpt\u00B3.KOV", u"CONIN$", u"conout$", u"\\\\.\\COM1", u"//./NUL",
        u"\\\\?\\C:\\x.KOV", u"NUL\\x.KOV"}) {
    EXPECT_FALSE(IsWindowsFileName(path)) << ToUtf8(path);
  }
}

TEST(FileName, OfWindowsIsNoOtherFilesName) {
  for (const std::u16string_view path :
       {u"set.KOV.", u"set.KOV ", u"a. \\set.KOV", u"set.KOV:stream", u"a:b:c", u"C:\\x:y", u"a*.KOV", u"a?",
        u"<a>", u"a|b", u"\"a\"", u"a\tb", u"..."}) {
    EXPECT_FALSE(IsWindowsFileName(path)) << ToUtf8(path);
  }
}

TEST(FileName, OfWindowsHasAtMost259Characters) {
  EXPECT_TRUE(IsWindowsFileName(u"C:\\" + std::u16string(256, u'あ')));
  EXPECT_FALSE(IsWindowsFileName(u"C:\\" + std::u16string(257, u'あ')));
}

TEST(FileName, OfAFileThatCanBeMadeIsAFileName) {
  const TemporaryFolder folder("file-name-test-");
  const std::filesystem::path file = folder.Path() / PathOf(u"炉 1 号 (写し).KOV");
  EXPECT_TRUE(IsFileName(file));
  EXPECT_TRUE(std::ofstream(file).is_open());
  EXPECT_EQ(u"炉 1 号 (写し).KOV", PathText(file.filename()));
  EXPECT_EQ(u"炉 1 号 (写し).KOV",
            PathText(std::filesystem::directory_iterator(folder.Path())->path().filename()));
}

TEST(FileName, HasOneKeyHoweverThePathIsWritten) {
  EXPECT_EQ(FileKey(PathOf(u"炉/a.KOV")), FileKey(PathOf(u"炉/./b/../a.KOV")));
  EXPECT_NE(FileKey(PathOf(u"炉/a.KOV")), FileKey(PathOf(u"炉/b.KOV")));
}

} // namespace
} // namespace loader::test
