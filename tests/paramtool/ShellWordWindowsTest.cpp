#include <gtest/gtest.h>

#include "paramtool/ShellWord.h"

namespace loader::test {
namespace {

using paramtool::ShellWord;

// No single quotes, which are letters of a name for cmd.exe.
TEST(ShellWord, IsOneWordOfEachShell) {
  EXPECT_TRUE(ShellWord(u"C:\\set-ups\\a_1.KOV") == u"C:\\set-ups\\a_1.KOV");
  EXPECT_TRUE(ShellWord(u"tcp:127.0.0.1:1502") == u"tcp:127.0.0.1:1502");
  EXPECT_TRUE(ShellWord(u"C:\\set ups\\a.KOV") == u"\"C:\\set ups\\a.KOV\"");
  EXPECT_TRUE(ShellWord(u"炉(1)&it's.KOV") == u"\"炉(1)&it's.KOV\"");
  EXPECT_TRUE(ShellWord(u"tcp:a#2") == u"\"tcp:a#2\"");
  EXPECT_TRUE(ShellWord(u"") == u"\"\"");
}

} // namespace
} // namespace loader::test
