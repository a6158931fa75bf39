// paramtool print: the printed sheet, as the window makes it but for the passwords.
#include <gtest/gtest.h>

#include <regex>

#include "tests/paramtool/PlantChanges.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using Print = ToolTest;

// The window's own sheet of the initial settings, pinned by its own test.
std::string SheetOfTheWindow(std::string_view model) {
  return ContentOf(std::filesystem::path(LOADER_SOURCE_DIR) / "tests/files/golden" /
                   (std::string(model) + "-fresh.txt"));
}

// The date and time of the making, as that sheet has it.
std::string AtTheSameTime(const std::string& sheet) {
  return std::regex_replace(sheet, std::regex(R"(\d{4}/\d\d/\d\d \d\d:\d\d:\d\d)"), "2026/11/21 09:05:07");
}

TEST_F(Print, WithSecretsMakesTheSheetOfTheWindow) {
  for (const std::string model : {"KOV", "RUG"}) {
    const Ended ended = Tool({"print", "default:" + model, "-o", File("sheet"), "--secrets"});
    EXPECT_EQ(ended.status, ExitGood) << ended.errors;
    EXPECT_EQ(ended.errors, "");
    EXPECT_TRUE(AtTheSameTime(Read("sheet")) == SheetOfTheWindow(model)) << model;
  }
}

TEST_F(Print, LeavesThePasswordsBlankAndEverythingElseWhereItStands) {
  // As numbers they stand in columns, too.
  const std::string file =
      Write("plant.KOV",
            WithValues(PlantFile("KOV"), {{"H00PAS1", "4711"}, {"H00PAS2", "4712"}, {"H00RPAS", "4713"}}));
  const Ended ended = Tool({"print", file, "-o", File("sheet"), "--lang", "en"});
  EXPECT_EQ(ended.status, ExitGood);
  EXPECT_EQ(ended.errors, "paramtool: the fields of passwords are blank (--secrets prints them)\n");
  EXPECT_EQ(Tool({"print", file, "-o", File("open"), "--secrets"}).status, ExitGood);
  const std::string hidden = AtTheSameTime(Read("sheet"));
  std::string open = AtTheSameTime(Read("open"));
  int passwords = 0;
  for (const char* secret : {"heat4120", "m8-kov", "ope1", " guest", "4711", "4712", "4713"}) {
    EXPECT_EQ(hidden.find(secret), std::string::npos) << secret;
    for (std::size_t at = 0; (at = open.find(secret, at)) != std::string::npos; ++passwords) {
      open.replace(at, std::string_view(secret).size(), std::string_view(secret).size(), ' ');
    }
  }
  EXPECT_GE(passwords, 7);
  EXPECT_TRUE(hidden == open);
}

TEST_F(Print, TellsWhatItDidAsJsonToo) {
  const Ended ended = Tool({"print", "default:RUG", "-o", File("sheet"), "--json"});
  EXPECT_EQ(ended.status, ExitGood);
  ExpectGolden("print.json", WithoutFolder(ended.output));
}

TEST_F(Print, NeverWritesOverTheSetUpOrTheTemplate) {
  const std::string file = Write("plant.KOV", PlantFile("KOV"));
  const Ended ended = Tool({"print", file, "-o", file, "--lang", "en"});
  EXPECT_EQ(ended.status, ExitFailed);
  EXPECT_EQ(ended.errors, "paramtool: " + file + ": is not written, for it is a set-up that was given\n");
  EXPECT_EQ(Read("plant.KOV"), PlantFile("KOV"));
  const std::string pattern = (ToolProgram().parent_path() / "TextKOV.Ini").string();
  const std::string before = ContentOf(pattern);
  const Ended over = Tool({"print", file, "-o", pattern, "--lang", "en"});
  EXPECT_EQ(over.status, ExitFailed);
  EXPECT_EQ(over.errors, "paramtool: " + pattern + ": is the template itself and is not written\n");
  EXPECT_TRUE(ContentOf(pattern) == before);
}

TEST_F(Print, EveryFailureHasItsReason) {
  EXPECT_EQ(Tool({"print", "default:KOV"}).status, ExitUsage);
  const Ended nowhere = Tool({"print", "default:KOV", "-o", File("no/such/sheet"), "--lang", "en"});
  EXPECT_EQ(nowhere.status, ExitFailed);
  EXPECT_TRUE(nowhere.errors.starts_with("paramtool: " + File("no/such/sheet") + ": cannot be written ("))
      << nowhere.errors;
}

} // namespace
} // namespace loader::test
