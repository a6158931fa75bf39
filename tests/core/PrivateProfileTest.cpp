#include "platform/PrivateProfile.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/ScriptedPlatform.h"
#include "tests/support/System.h"

namespace loader::test {
namespace {

using namespace std::string_view_literals;

class PrivateProfiles : public testing::Test {
protected:
  void Given(std::string_view bytes) { platform.WriteFile("a.ini", bytes); }
  [[nodiscard]] std::string Value(std::string_view key, std::string_view section = "LOADER") const {
    return GetPrivateProfileStringA(section, key, "ERROR", 255, File());
  }
  [[nodiscard]] bool Write(std::string_view key, std::string_view value,
                           std::string_view section = "LOADER") const {
    return WritePrivateProfileStringA(section, key, value, File());
  }
  [[nodiscard]] std::string Bytes() const { return platform.ReadFile("a.ini"); }
  [[nodiscard]] std::filesystem::path File() const { return platform.folder / "a.ini"; }

  ScriptedPlatform platform;
};

// --- Reading

TEST_F(PrivateProfiles, GiveTheValueOfAKey) {
  Given("[LOADER]\r\nTYPE=1\r\nIP=192.168.1.1\r\n");
  EXPECT_EQ("1", Value("TYPE"));
  EXPECT_EQ("192.168.1.1", Value("IP"));
}

TEST_F(PrivateProfiles, GiveTheDefaultForWhatIsAbsent) {
  EXPECT_EQ("ERROR", Value("TYPE"));
  Given("");
  EXPECT_EQ("ERROR", Value("TYPE"));
  Given("[LOADER]\r\nCOM=1\r\n");
  EXPECT_EQ("ERROR", Value("TYPE"));
  EXPECT_EQ("ERROR", Value("COM", "OTHER"));
}

TEST_F(PrivateProfiles, GiveTheDefaultForAFolder) {
  std::filesystem::create_directory(File());
  EXPECT_EQ("ERROR", Value("TYPE"));
}

TEST_F(PrivateProfiles, FindSectionsAndKeysWithoutRegardToCase) {
  Given("[Loader]\r\ntype=1\r\nIp=x\r\n");
  EXPECT_EQ("1", Value("TYPE"));
  EXPECT_EQ("x", Value("IP", "LOADER"));
  EXPECT_EQ("x", Value("iP", "lOADER"));
}

TEST_F(PrivateProfiles, TrimBlanksAndTabulators) {
  Given("  [ LOADER ]  \r\n \t TYPE \t=\t 1 2 \t\r\n");
  EXPECT_EQ("1 2", Value("TYPE"));
}

TEST_F(PrivateProfiles, RemoveOnePairOfQuotes) {
  Given("[LOADER]\r\nA=\" 1 \"\r\nB='2'\r\nC=\"\"3\"\"\r\nD=\"4\r\nE=5\"\r\nF=\"6'\r\nG=\"\r\nH=\"\"\r\n");
  EXPECT_EQ(" 1 ", Value("A"));
  EXPECT_EQ("2", Value("B"));
  EXPECT_EQ("\"3\"", Value("C"));
  EXPECT_EQ("\"4", Value("D"));
  EXPECT_EQ("5\"", Value("E"));
  EXPECT_EQ("\"6'", Value("F"));
  EXPECT_EQ("\"", Value("G"));
  EXPECT_EQ("", Value("H"));
}

TEST_F(PrivateProfiles, GiveAnEmptyValueThatIsThere) {
  Given("[LOADER]\r\nTYPE=\r\n");
  EXPECT_EQ("", Value("TYPE"));
}

TEST_F(PrivateProfiles, TakeTheValueFromTheFirstEqualsSignOn) {
  Given("[LOADER]\r\nA=b=c\r\n");
  EXPECT_EQ("b=c", Value("A"));
}

TEST_F(PrivateProfiles, SkipCommentsAndLinesWithoutAnEqualsSign) {
  Given("; TYPE=5\r\n[LOADER]\r\n;TYPE=6\r\n  ; TYPE=7\r\nTYPE\r\n\r\nTYPE=1 ; kept\r\n");
  EXPECT_EQ("1 ; kept", Value("TYPE"));
}

TEST_F(PrivateProfiles, GiveTheFirstOfEqualKeysAndSections) {
  Given("[LOADER]\r\nTYPE=1\r\nTYPE=2\r\n[LOADER]\r\nTYPE=3\r\nCOM=4\r\n");
  EXPECT_EQ("1", Value("TYPE"));
  EXPECT_EQ("ERROR", Value("COM"));
}

TEST_F(PrivateProfiles, DoNotLookIntoOtherSections) {
  Given("TYPE=0\r\n[OTHER]\r\nTYPE=1\r\n[LOADER]\r\n[NEXT]\r\nTYPE=2\r\n");
  EXPECT_EQ("ERROR", Value("TYPE"));
  EXPECT_EQ("1", Value("TYPE", "OTHER"));
}

TEST_F(PrivateProfiles, ReadLinesThatEndInALineFeedAloneOrInNothing) {
  Given("[LOADER]\nTYPE=1\nCOM=2");
  EXPECT_EQ("1", Value("TYPE"));
  EXPECT_EQ("2", Value("COM"));
}

TEST_F(PrivateProfiles, ReadASectionLineWithoutItsClosingBracket) {
  Given("[LOADER\r\nTYPE=1\r\n");
  EXPECT_EQ("1", Value("TYPE"));
}

TEST_F(PrivateProfiles, CutAValueAtTheBuffer) {
  Given("[LOADER]\r\nA=" + std::string(300, 'x') + "\r\nB=" + std::string(254, 'y') + "\r\n");
  EXPECT_EQ(std::string(254, 'x'), Value("A"));
  EXPECT_EQ(std::string(254, 'y'), Value("B"));
  EXPECT_EQ("x", GetPrivateProfileStringA("LOADER", "A", "", 2, File()));
  EXPECT_EQ("", GetPrivateProfileStringA("LOADER", "A", "", 1, File()));
  EXPECT_EQ("", GetPrivateProfileStringA("LOADER", "A", "", 0, File()));
}

TEST_F(PrivateProfiles, EndAValueAtItsFirstNUL) {
  Given("[LOADER]\r\nA=12\0003\r\n"sv);
  EXPECT_EQ("12", Value("A"));
}

TEST_F(PrivateProfiles, OfBinaryBytesHoldNothing) {
  std::string bytes;
  for (int i = 0; i < 100'000; ++i) {
    bytes += static_cast<char>(i * 7);
  }
  Given(bytes);
  EXPECT_EQ("ERROR", Value("TYPE"));
}

TEST_F(PrivateProfiles, OfOneHugeLineHoldNothing) {
  Given(std::string(20'000'000, '['));
  EXPECT_EQ("ERROR", Value("TYPE"));
}

// --- Writing

TEST_F(PrivateProfiles, AreCreatedWithSectionAndKey) {
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\n", Bytes());
}

TEST_F(PrivateProfiles, AddKeysInTheOrderOfWriting) {
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_TRUE(Write("COM", "1"));
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\nCOM=1\r\n", Bytes());
}

TEST_F(PrivateProfiles, ReplaceTheLineOfAKey) {
  Given("[LOADER]\r\n type = 0 \r\nCOM=1\r\n");
  EXPECT_TRUE(Write("TYPE", "1"));
  EXPECT_EQ("[LOADER]\r\nTYPE=1\r\nCOM=1\r\n", Bytes());
}

TEST_F(PrivateProfiles, KeepEveryOtherLineAsItWas) {
  Given("; by hand\n[OTHER]\r\nTYPE=7\r\n\r\n[LOADER]\r\n; model\r\nTYPE=0\r\nnonsense\r\nIP=\x95\x5C\r\n");
  EXPECT_TRUE(Write("TYPE", "1"));
  EXPECT_EQ(
      "; by hand\n[OTHER]\r\nTYPE=7\r\n\r\n[LOADER]\r\n; model\r\nTYPE=1\r\nnonsense\r\nIP=\x95\x5C\r\n",
      Bytes());
}

TEST_F(PrivateProfiles, AddAKeyBehindTheLastLineOfItsSection) {
  Given("[LOADER]\r\nCOM=1\r\n\r\n\r\n[OTHER]\r\nA=1\r\n");
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_EQ("[LOADER]\r\nCOM=1\r\nTYPE=0\r\n\r\n\r\n[OTHER]\r\nA=1\r\n", Bytes());
}

TEST_F(PrivateProfiles, AddAKeyToAnEmptySection) {
  Given("[LOADER]\r\n\r\n[OTHER]\r\n");
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\n\r\n[OTHER]\r\n", Bytes());
}

TEST_F(PrivateProfiles, AddASectionAtTheEnd) {
  Given("[OTHER]\r\nA=1\r\n");
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_EQ("[OTHER]\r\nA=1\r\n[LOADER]\r\nTYPE=0\r\n", Bytes());
}

TEST_F(PrivateProfiles, EndALastLineThatHasNoEnd) {
  Given("[LOADER]\r\nCOM=1");
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_EQ("[LOADER]\r\nCOM=1\r\nTYPE=0\r\n", Bytes());
}

TEST_F(PrivateProfiles, WriteIntoTheFirstOfEqualSections) {
  Given("[LOADER]\r\n[LOADER]\r\nTYPE=3\r\n");
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\n[LOADER]\r\nTYPE=3\r\n", Bytes());
  EXPECT_EQ("0", Value("TYPE"));
}

TEST_F(PrivateProfiles, GiveBackWhatWasWritten) {
  for (const std::string_view value : {"", "0", "-1", "a b", "192.168.1.1", "\x95\x5C\xB1", "a=b;c"}) {
    EXPECT_TRUE(Write("A", value));
    EXPECT_EQ(value, Value("A"));
  }
}

TEST_F(PrivateProfiles, CannotBeWrittenWhereThereIsNoFolder) {
  EXPECT_FALSE(WritePrivateProfileStringA("LOADER", "TYPE", "0", platform.folder / "nowhere" / "a.ini"));
  EXPECT_FALSE(WritePrivateProfileStringA("LOADER", "TYPE", "0", platform.folder / "InitSet.Ini" / "a.ini"));
}

TEST_F(PrivateProfiles, CannotBeWrittenOverAFolder) {
  std::filesystem::create_directory(File());
  EXPECT_FALSE(Write("TYPE", "0"));
  EXPECT_TRUE(std::filesystem::is_directory(File()));
}

TEST_F(PrivateProfiles, TakeNothingAwayThatStandsWhereTheNewFileWouldBe) {
  Given("[LOADER]\r\nTYPE=1\r\n");
  std::filesystem::create_directory(platform.folder / "a.ini.new");
  EXPECT_FALSE(Write("TYPE", "0"));
  EXPECT_FALSE(Write("TYPE", "0"));
  EXPECT_TRUE(std::filesystem::is_directory(platform.folder / "a.ini.new"));
  EXPECT_EQ("[LOADER]\r\nTYPE=1\r\n", Bytes());
}

TEST_F(PrivateProfiles, LeaveNoOtherFileBehind) {
  EXPECT_TRUE(Write("TYPE", "0"));
  std::filesystem::create_directory(platform.folder / "b.ini");
  EXPECT_FALSE(WritePrivateProfileStringA("LOADER", "TYPE", "0", platform.folder / "b.ini"));
  std::size_t entries = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(platform.folder)) {
    ++entries;
  }
  EXPECT_EQ(3U, entries); // a.ini, b.ini and InitSet.Ini
}

// --- What the user has made of the file

TEST_F(PrivateProfiles, ThatAreSymbolicLinksStayLinks) {
  std::filesystem::create_directory(platform.folder / "elsewhere");
  const std::filesystem::path target = platform.folder / "elsewhere" / "b.ini";
  platform.WriteFile("elsewhere/b.ini", "[LOADER]\r\nTYPE=1\r\n");
  for (const std::filesystem::path& link : {target, std::filesystem::path("elsewhere/b.ini")}) {
    std::filesystem::create_symlink(link, File());
    const std::string before = Value("TYPE");
    EXPECT_TRUE(Write("TYPE", before + "0"));
    EXPECT_TRUE(std::filesystem::is_symlink(File()));
    EXPECT_EQ(link, std::filesystem::read_symlink(File()));
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(target)));
    EXPECT_EQ("[LOADER]\r\nTYPE=" + before + "0\r\n", platform.ReadFile("elsewhere/b.ini"));
    std::filesystem::remove(File());
  }
}

TEST_F(PrivateProfiles, OfAChainOfLinksKeepEachOfThem) {
  Given("[LOADER]\r\nTYPE=1\r\n");
  std::filesystem::create_symlink("a.ini", platform.folder / "b.ini");
  std::filesystem::create_symlink("b.ini", platform.folder / "c.ini");
  EXPECT_TRUE(WritePrivateProfileStringA("LOADER", "TYPE", "0", platform.folder / "c.ini"));
  EXPECT_TRUE(std::filesystem::is_symlink(platform.folder / "b.ini"));
  EXPECT_TRUE(std::filesystem::is_symlink(platform.folder / "c.ini"));
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\n", Bytes());
}

TEST_F(PrivateProfiles, BehindALinkThatLeadsNowhereYetAreCreatedThere) {
  std::filesystem::create_symlink("b.ini", File());
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_TRUE(std::filesystem::is_symlink(File()));
  EXPECT_EQ("[LOADER]\r\nTYPE=0\r\n", platform.ReadFile("b.ini"));
}

TEST_F(PrivateProfiles, OfLinksInACircleCannotBeWritten) {
  std::filesystem::create_symlink("b.ini", File());
  std::filesystem::create_symlink("a.ini", platform.folder / "b.ini");
  EXPECT_EQ("ERROR", Value("TYPE"));
  EXPECT_FALSE(Write("TYPE", "0"));
  EXPECT_TRUE(std::filesystem::is_symlink(File()));
}

TEST_F(PrivateProfiles, ThatWereMadeReadOnlyStayAsTheyAre) {
  using std::filesystem::perms;
  Given("[LOADER]\r\nTYPE=1\r\n");
  const perms readOnly = perms::owner_read | perms::group_read | perms::others_read;
  std::filesystem::permissions(File(), readOnly);
  EXPECT_FALSE(Write("TYPE", "0"));
  EXPECT_EQ("1", Value("TYPE"));
  EXPECT_EQ(readOnly, std::filesystem::status(File()).permissions());
  EXPECT_FALSE(std::filesystem::exists(platform.folder / "a.ini.new"));
  // Through a link as well.
  std::filesystem::create_symlink("a.ini", platform.folder / "b.ini");
  EXPECT_FALSE(WritePrivateProfileStringA("LOADER", "TYPE", "0", platform.folder / "b.ini"));
  EXPECT_EQ("1", Value("TYPE"));
}

TEST_F(PrivateProfiles, KeepTheirPermissions) {
  using std::filesystem::perms;
  Given("[LOADER]\r\nTYPE=1\r\n");
  const perms mine = perms::owner_read | perms::owner_write;
  std::filesystem::permissions(File(), mine);
  EXPECT_TRUE(Write("TYPE", "0"));
  EXPECT_EQ(mine, std::filesystem::status(File()).permissions());
}

// A pipe has no end to be read to and nobody who takes what is written: neither may be waited for.
TEST_F(PrivateProfiles, ThatArePipesHoldNothingAndCannotBeWritten) {
  ASSERT_TRUE(MakePipe(File()));
  EXPECT_EQ("ERROR", Value("TYPE"));
  EXPECT_FALSE(Write("TYPE", "0"));
  EXPECT_TRUE(std::filesystem::is_fifo(File()));
}

TEST_F(PrivateProfiles, AreNotWrittenThroughAPipeBesideThem) {
  Given("[LOADER]\r\nTYPE=1\r\n");
  ASSERT_TRUE(MakePipe(platform.folder / "a.ini.new"));
  EXPECT_FALSE(Write("TYPE", "0"));
  EXPECT_EQ("1", Value("TYPE"));
}

} // namespace
} // namespace loader::test
