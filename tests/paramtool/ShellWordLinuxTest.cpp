#include <gtest/gtest.h>

#include "paramtool/ShellWord.h"

namespace loader::test {
namespace {

using paramtool::ShellWord;

TEST(ShellWord, IsOneWordOfSh) {
  EXPECT_TRUE(ShellWord(u"a.KOV") == u"'a.KOV'");
  EXPECT_TRUE(ShellWord(u"it's \"a\" $HOME.KOV") == u"'it'\\''s \"a\" $HOME.KOV'");
}

} // namespace
} // namespace loader::test
