// The template run: placeholders, columns, what is no placeholder, and what makes a run fail.
#include "files/TextOutput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "tests/support/FullDisk.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"
#include "tests/support/System.h"

namespace loader::test {
namespace {

class Templates : public testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }

  // The one line that a template of one line gives, without its end.
  static std::string Printed(std::string_view line) {
    std::string sheet = PrintedSheet(line);
    EXPECT_TRUE(sheet.ends_with("\r\n"));
    sheet.resize(sheet.size() - 2);
    return sheet;
  }
  // A number of eight columns in C01UNIT: a user unit that reads as one.
  static void PutWideNumber() {
    constexpr int FirstUserUnit = 156;
    UnitNames.at(FirstUserUnit) = u"99999999";
    Put("C", 0, "UNIT", FirstUserUnit);
  }
  static std::string Bytes(std::u16string_view text) { return ToCodePage(text); }
  ScriptedPlatform platform;
};

// --- What is no placeholder

TEST_F(Templates, WithoutQuotesAreCopied) {
  EXPECT_EQ("", PrintedSheet(""));
  EXPECT_EQ("\r\n", PrintedSheet("\r\n"));
  EXPECT_EQ("a  b \r\n\r\nc\r\n", PrintedSheet("a  b \r\n\r\nc"));
  EXPECT_EQ("a\r\nb\r\nc\r\n", PrintedSheet("a\nb\rc\r\n"));
}

TEST_F(Templates, KeepALineWithoutAClosingQuote) {
  EXPECT_EQ("a \" b", Printed("a \" b"));
  EXPECT_EQ("\"", Printed("\""));
  EXPECT_EQ("OFF      \"C01TAIS", Printed("\"H01FIFO\"\"C01TAIS"));
}

TEST_F(Templates, LeaveAnyOtherQuotedWordAndTheRestOfItsLine) {
  for (const char* word : {"\"a word\"", "\"\"", "\" \"", "\"C\"", "\"CxxTYPE\"", "\"C0xTYPE\"",
                           "\"Q01TYPE\"", "\"c01TYPE\"", "\"outputdatetimestring\"", "\"C&1TYPE\""}) {
    const std::string line = std::string(word) + " \"C01TYPE\" \"OUTPUTDATETIMESTRING\"";
    EXPECT_EQ(line, Printed(line));
    EXPECT_EQ(Bytes(u"K熱電対   ") + line, Printed("\"C01TYPE\" " + line));
  }
}

TEST_F(Templates, LeaveTheWordOfASectionThatTheStoreLacks) {
  DropSection("Z");
  EXPECT_EQ("\"Z01TOTA\" \"C01TYPE\"", Printed("\"Z01TOTA\" \"C01TYPE\""));
}

// --- Values in their columns

TEST_F(Templates, PutAWordLeftAndTheRestOfTheFieldBlank) {
  EXPECT_EQ(Bytes(u"|K熱電対  |"), Printed("|\"C01TYPE\"|"));
  EXPECT_EQ(Bytes(u"|K熱電対       |"), Printed("|\"C01TYPE     \"|"));
}

TEST_F(Templates, TrimTheKeyOnBothSides) {
  EXPECT_EQ(Bytes(u"|K熱電対       |"), Printed("|\"   C01TYPE  \"|"));
  EXPECT_EQ("|2026/11/21 12:00:00       |", Printed("|\"  OUTPUTDATETIMESTRING  \"|"));
}

TEST_F(Templates, PutANumberTwoColumnsBeforeTheClosingQuote) {
  Put("C", 0, "FILT", 5);
  EXPECT_EQ("|      5  |", Printed("|\"C01FILT\"|"));
  Put("C", 0, "FILT", 42);
  EXPECT_EQ("|       42  |", Printed("|\"C01FILT  \"|"));
  Put("C", 0, "POIN", 1);
  Put("C", 0, "PVSI", -12);
  EXPECT_EQ("|   -1.2  |", Printed("|\"C01PVSI\"|"));
}

TEST_F(Templates, PutANumberThatAListGivesLikeANumber) {
  Put("H", 0, "COMB", 1);
  EXPECT_EQ("|  19200  |", Printed("|\"H01COMB\"|"));
  Put("X", 0, "EADD", 1);
  EXPECT_EQ("|      1  |", Printed("|\"X01EADD\"|"));
  Put("X", 0, "EADD", 3);
  EXPECT_EQ("|1 2      |", Printed("|\"X01EADD\"|"));
}

// A power of ten reads as a number, a time of day does not.
TEST_F(Templates, PutAPowerOfTenLikeANumber) {
  Put("C", 0, "TYPE", 32);
  Put("C", 0, "SCAL", 1);
  Put("C", 0, "TAIS", 1);
  Put("C", 0, "RMIN", -2);
  Put("C", 0, "RMAX", 3);
  EXPECT_EQ("|    1.00E-2  |   1.00E3  |", Printed("|\"C01RMIN    \"|\"C01RMAX  \"|"));
  Put("E", 0, "TSBA", 485);
  EXPECT_EQ("|8:05     |", Printed("|\"E01TSBA\"|"));
}

TEST_F(Templates, PutTheDigitsOfATextLeft) {
  PutText("C", 0, "TAG", "123");
  EXPECT_EQ("|123     |", Printed("|\"C01TAG\"|"));
  PutText("C", 0, "TAG", "1.5E3");
  EXPECT_EQ("|1.5E3   |", Printed("|\"C01TAG\"|"));
}

TEST_F(Templates, BlankTheFieldOfAnEmptyValue) {
  PutText("C", 0, "TAG", "");
  EXPECT_EQ("|        |", Printed("|\"C01TAG\"|"));
  EXPECT_EQ("|         |", Printed("|\"X01EADA\"|"));
  EXPECT_EQ("|         | |         |", Printed("|\"I01DCOL\"| |\"S01SYS1\"|"));
}

TEST_F(Templates, CountItemsFromOneInTwoColumns) {
  PutText("C", 29, "TAG", "last");
  EXPECT_EQ("last    ", Printed("\"C30TAG\""));
  PutText("C", 0, "TAG", "first");
  EXPECT_EQ("first   ", Printed("\"C 1TAG\""));
}

TEST_F(Templates, TakeFourCharactersOfTheTag) {
  PutText("C", 0, "TAG2", "second");
  EXPECT_EQ("second        ", Printed("\"C01TAG2 etc.\""));
  EXPECT_EQ("second      ", Printed("\"C01TAG2xxx\""));
}

TEST_F(Templates, HoldAnyNumberOfPlaceholdersOnALine) {
  Put("C", 0, "SCAL", 1);
  EXPECT_EQ("ON       OFF      ON       2026/11/21 12:00:00   .",
            Printed("\"C01SCAL\"\"C02SCAL\"\"C01SCAL\"\"OUTPUTDATETIMESTRING\"."));
}

TEST_F(Templates, PrintTheDateAndTimeInFull) {
  platform.time.now = {2027, 1, 2, 3, 4, 5};
  EXPECT_EQ("|2027/01/02 03:04:05   |", Printed("|\"OUTPUTDATETIMESTRING\"|"));
}

TEST_F(Templates, CountColumnsInBytes) {
  PutText("C", 0, "TAG", "炉ﾛ");
  EXPECT_EQ(Bytes(u"温度|炉ﾛ     |計"), Printed(Bytes(u"温度|\"C01TAG\"|計")));
}

// The second byte of some full-width characters is a backslash or a bar; none is a quote.
TEST_F(Templates, AreNotMisledByTheSecondByteOfACharacter) {
  PutText("C", 0, "TAG", "表ソ能");
  EXPECT_EQ(Bytes(u"表ソ能|表ソ能  |"), Printed(Bytes(u"表ソ能|\"C01TAG\"|")));
}

// --- Values that are longer than their fields

TEST_F(Templates, LetALongTextOverrunWhatStandsBehind) {
  PutText("C", 0, "TAG", "0123456789abcdef");
  EXPECT_EQ("0123456789abcdef.....", Printed("\"C01TAG\"............."));
}

TEST_F(Templates, LetALongNumberOverrunWhatStandsBefore) {
  PutWideNumber();
  EXPECT_EQ("..99999999  ..", Printed("..|\"C01UNIT\".."));
}

TEST_F(Templates, LengthenALineBeyondItsEnd) {
  PutText("C", 0, "TAG", "0123456789abcdef");
  EXPECT_EQ("|0123456789abcdef", Printed("|\"C01TAG\""));
  EXPECT_EQ("|0123456789abcdef", Printed("|\"C01TAG\"|"));
}

TEST_F(Templates, GoOnBehindAValueThatOverranTheNextField) {
  PutText("C", 0, "TAG", "0123456789abcdef");
  // The opening quote of the second field is gone; its closing one makes a word with the next.
  EXPECT_EQ("0123456789abcdefL\"  \"C03SCAL\"", Printed("\"C01TAG\" \"C02SCAL\"  \"C03SCAL\""));
}

// --- Quotes within values

TEST_F(Templates, TakeNoQuoteOfAValueForAField) {
  PutText("C", 0, "TAG", "5\"");
  EXPECT_EQ("5\"       OFF      |", Printed("\"C01TAG\" \"C01SCAL\"|"));
  PutText("C", 0, "TAG", "\"");
  PutText("C", 1, "TAG", "\"C01TAG\"");
  EXPECT_EQ("\"        \"C01TAG\" |", Printed("\"C01TAG\" \"C02TAG\" |"));
}

TEST_F(Templates, EndThoughATagSpellsItsOwnPlaceholder) {
  PutText("C", 0, "TAG", "\"C01TAG\"");
  EXPECT_EQ("\"C01TAG\"OFF      ", Printed("\"C01TAG\"\"C01SCAL\""));
}

// A recorder may hold anything in a text; a line break would tear its row, a NUL would end it.
TEST_F(Templates, PrintABlankForAControlCharacterOfAValue) {
  SetText(TextRecord("C", 0, "TAG"),
          std::u16string(u"a\r\nb\tc\0d\x7F"
                         "e",
                         10),
          SlotValue);
  EXPECT_EQ("a  b c d e|OFF      |", Printed("\"C01TAG  \"|\"C01SCAL\"|"));
}

TEST_F(Templates, PrintAQuestionMarkForACharacterThatTheCodePageLacks) {
  PutText("C", 0, "TAG", "é");
  EXPECT_EQ("?       ", Printed("\"C01TAG\""));
}

// --- The longest line

TEST_F(Templates, TakeLinesOf2047Bytes) {
  const std::string longest(2047, 'x');
  EXPECT_EQ(longest, Printed(longest));
  EXPECT_THROW(static_cast<void>(PrintedSheet(longest + "x")), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(PrintedSheet("short\r\n" + longest + "xxxx\r\n")), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(PrintedSheet(std::string(100000, '"'))), RunTimeFailure);
}

TEST_F(Templates, TakeAFullWidthCharacterAndAFieldAtTheEdge) {
  const std::string filled = std::string(2045, 'x') + Bytes(u"表");
  EXPECT_EQ(filled, Printed(filled));
  const std::string edge = std::string(2038, 'x') + "\"C01SCAL\"";
  EXPECT_EQ(std::string(2038, 'x') + "OFF      ", Printed(edge));
  // Its lead byte alone, and a quote as the last byte.
  EXPECT_EQ(std::string(2046, 'x') + "\x95", Printed(std::string(2046, 'x') + "\x95"));
  EXPECT_EQ(std::string(2046, 'x') + "\"", Printed(std::string(2046, 'x') + "\""));
}

TEST_F(Templates, FailWhereAValueEndsBehindTheLongestLine) {
  PutText("C", 0, "TAG", "0123456789abcdef");
  const auto line = [](std::size_t before) { return std::string(before, 'x') + "\"C01TAG\""; };
  EXPECT_EQ(2047U, Printed(line(2031)).size());
  EXPECT_THROW(static_cast<void>(PrintedSheet(line(2032))), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(PrintedSheet(line(2039))), RunTimeFailure);
}

TEST_F(Templates, FailWhereAValueBeginsBeforeItsLine) {
  PutWideNumber();
  EXPECT_EQ("99999999  |", Printed(".\"C01UNIT\"|"));
  EXPECT_THROW(static_cast<void>(PrintedSheet("\"C01UNIT\"|")), RunTimeFailure);
}

TEST_F(Templates, EndALineAtANulOfItsOwn) {
  EXPECT_EQ("a", Printed(std::string_view("a\0b", 3)));
}

// --- Items that do not exist

TEST_F(Templates, FailForAnItemThatDoesNotExist) {
  for (const char* word :
       {"C00TYPE", "C31TYPE", "C99TYPE", "C0", "C-1TYPE", "H02FIFO", "X09ETTL", "I00DCOL", "C00QQQQ"}) {
    EXPECT_THROW(static_cast<void>(PrintedSheet("\"" + std::string(word) + "\"")), RunTimeFailure) << word;
  }
}

TEST_F(Templates, BlankATagThatDoesNotExist) {
  EXPECT_EQ("|         |OFF      ", Printed("|\"C01QQQQ\"|\"C01SCAL\""));
  EXPECT_EQ("|     |OFF      ", Printed("|\"C01\"|\"C01SCAL\""));
}

// --- The run

class TextOutputs : public testing::Test {
protected:
  void SetUp() override {
    StartWithModel(platform, "KOV");
    platform.WriteFile("TextKOV.Ini", "KOV \"C01TYPE\"\r\n");
    PutText("C", 0, "TAG", "0123456789abcdef");
  }
  [[nodiscard]] bool Print(std::string_view name = "sheet.txt") const {
    return gFTextOutput(platform.folder / name);
  }
  [[nodiscard]] std::string Sheet() const { return platform.ReadFile("sheet.txt"); }
  [[nodiscard]] std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(platform.folder)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  // A run that fails takes nothing away and leaves nothing behind.
  void ExpectFailureThatChangesNothing() {
    platform.WriteFile("sheet.txt", "older");
    const std::set<std::string> before = Files();
    EXPECT_FALSE(Print());
    EXPECT_EQ("older", Sheet());
    EXPECT_EQ(before, Files());
  }
  ScriptedPlatform platform;
};

TEST_F(TextOutputs, PrintByTheTemplateOfTheModel) {
  platform.WriteFile("TextRUG.Ini", "RUG \"C72TYPE\"\r\n");
  ASSERT_TRUE(Print());
  EXPECT_EQ(ToCodePage(u"KOV K熱電対  \r\n"), Sheet());
  StartWithModel(platform, "RUG");
  ASSERT_TRUE(Print());
  EXPECT_EQ(ToCodePage(u"RUG K熱電対  \r\n"), Sheet());
}

TEST_F(TextOutputs, FailWithoutTheTemplateOfTheModel) {
  StartWithModel(platform, "RUG"); // TextKOV.Ini is there, and no substitute
  ExpectFailureThatChangesNothing();
}

TEST_F(TextOutputs, FailWhereTheTemplateIsNoFile) {
  std::filesystem::remove(platform.folder / "TextKOV.Ini");
  std::filesystem::create_directory(platform.folder / "TextKOV.Ini");
  ExpectFailureThatChangesNothing();
  std::filesystem::remove(platform.folder / "TextKOV.Ini");
  ASSERT_TRUE(MakePipe(platform.folder / "TextKOV.Ini"));
  ExpectFailureThatChangesNothing();
}

TEST_F(TextOutputs, ThatFailInALineKeepTheOlderSheet) {
  for (const char* bad : {"\"C00TYPE\"", "\"C31TYPE\""}) {
    platform.WriteFile("TextKOV.Ini", "first\r\n" + std::string(bad) + "\r\nlast\r\n");
    ExpectFailureThatChangesNothing();
  }
  platform.WriteFile("TextKOV.Ini", "first\r\n" + std::string(2048, 'x') + "\r\n");
  ExpectFailureThatChangesNothing();
}

TEST_F(TextOutputs, ThatFailWithoutAnOlderSheetLeaveNone) {
  platform.WriteFile("TextKOV.Ini", "\"C00TYPE\"");
  const std::set<std::string> before = Files();
  EXPECT_FALSE(Print());
  EXPECT_EQ(before, Files());
}

TEST_F(TextOutputs, OfAnEmptyTemplateAreEmpty) {
  platform.WriteFile("TextKOV.Ini", "");
  ASSERT_TRUE(Print());
  EXPECT_EQ("", Sheet());
}

// In a line: the first block of the sheet does not fit. At the closing: all of it waits until then.
TEST_F(TextOutputs, OnADiskThatFillsKeepTheOlderSheet) {
  platform.WriteFile("TextKOV.Ini", std::string(2000, 'x') + "\r\n");
  {
    const FullDisk disk(100);
    ExpectFailureThatChangesNothing();
  }
  std::string large;
  for (int line = 0; line < 500; ++line) {
    large += std::string(2000, 'x') + "\r\n";
  }
  platform.WriteFile("TextKOV.Ini", large);
  {
    const FullDisk disk(200000);
    ExpectFailureThatChangesNothing();
  }
  EXPECT_TRUE(Print());
  EXPECT_EQ(large, Sheet());
}

TEST_F(TextOutputs, ReplaceAnOlderSheetAndLeaveNoOtherFile) {
  platform.WriteFile("sheet.txt", std::string(100000, 'o'));
  const std::set<std::string> before = Files();
  ASSERT_TRUE(Print());
  EXPECT_EQ(ToCodePage(u"KOV K熱電対  \r\n"), Sheet());
  EXPECT_EQ(before, Files());
}

// The folder is the user's.
TEST_F(TextOutputs, TouchNoFileBesideTheSheet) {
  platform.WriteFile("sheet.txt.new", "another's");
  std::filesystem::create_directory(platform.folder / "sheet.txt.new1");
  ASSERT_TRUE(Print());
  EXPECT_EQ("another's", platform.ReadFile("sheet.txt.new"));
  EXPECT_TRUE(std::filesystem::is_directory(platform.folder / "sheet.txt.new1"));
  EXPECT_FALSE(std::filesystem::exists(platform.folder / "sheet.txt.new2"));
  EXPECT_EQ(ToCodePage(u"KOV K熱電対  \r\n"), Sheet());
}

TEST_F(TextOutputs, GoWhereALinkLeads) {
  platform.WriteFile("behind.txt", "older");
  std::filesystem::create_symlink("behind.txt", platform.folder / "link.txt");
  ASSERT_TRUE(Print("link.txt"));
  EXPECT_TRUE(std::filesystem::is_symlink(platform.folder / "link.txt"));
  EXPECT_EQ(ToCodePage(u"KOV K熱電対  \r\n"), platform.ReadFile("behind.txt"));
}

TEST_F(TextOutputs, CannotBeWrittenWhereNoFileCanBe) {
  std::filesystem::create_directory(platform.folder / "folder.txt");
  ASSERT_TRUE(MakePipe(platform.folder / "pipe.txt"));
  platform.WriteFile("read only.txt", "kept");
  std::filesystem::permissions(platform.folder / "read only.txt", std::filesystem::perms::owner_read);
  const std::set<std::string> before = Files();
  for (const char* name : {"folder.txt", "pipe.txt", "read only.txt", "nowhere/sheet.txt", ""}) {
    EXPECT_FALSE(Print(name)) << name;
  }
  EXPECT_FALSE(gFTextOutput("/dev/full"));
  EXPECT_FALSE(gFTextOutput("/dev/null"));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
  EXPECT_EQ("kept", platform.ReadFile("read only.txt"));
  EXPECT_EQ(before, Files());
}

TEST_F(TextOutputs, DoNotReplaceTheirTemplate) {
  const std::string pattern = platform.ReadFile("TextKOV.Ini");
  EXPECT_FALSE(Print("TextKOV.Ini"));
  std::filesystem::create_symlink("TextKOV.Ini", platform.folder / "link.txt");
  EXPECT_FALSE(Print("link.txt"));
  EXPECT_EQ(pattern, platform.ReadFile("TextKOV.Ini"));
}

// --- The flow

TEST_F(TextOutputs, AskForAFileOfTexts) {
  for (int time = 0; time < 2; ++time) { // twice: no dialog remembers the one before
    platform.fileDialogs.answers.push_back(platform.folder / "sheet.txt");
    WriteTextOutput();
  }
  ASSERT_EQ(2U, platform.fileDialogs.shown.size());
  for (const ScriptedFileDialogs::Shown& shown : platform.fileDialogs.shown) {
    EXPECT_STREQ("save", std::string(shown.kind).c_str());
    EXPECT_TRUE(shown.asked.CancelError);
    EXPECT_EQ(AskBeforeOverwrite, shown.asked.Flags);
    EXPECT_TRUE(shown.asked.FileName.empty());
    EXPECT_EQ(u"*.Txt(パラメータテキストファイル)|*.Txt", shown.asked.Filter);
    EXPECT_EQ(u"パラメータテキスト出力", shown.asked.DialogTitle);
  }
}

TEST_F(TextOutputs, WriteUnderAJapaneseName) {
  platform.fileDialogs.answers.push_back(platform.folder / PathOf(u"設定 表.txt"));
  WriteTextOutput();
  EXPECT_EQ(ToCodePage(u"KOV K熱電対  \r\n"), platform.ReadFile("設定 表.txt"));
}

TEST_F(TextOutputs, ThatAreCancelledWriteNothing) {
  const std::set<std::string> before = Files();
  platform.fileDialogs.answers.emplace_back();
  WriteTextOutput();
  EXPECT_EQ(before, Files());
}

TEST_F(TextOutputs, ThatFailAreTold) {
  platform.fileDialogs.answers.push_back(platform.folder / "nowhere" / "sheet.txt");
  platform.ExpectBox(11002);
  WriteTextOutput();
  ASSERT_EQ(1U, platform.boxes.shown.size());
  EXPECT_EQ(u"保存に失敗しました", platform.boxes.shown[0].text);
}

} // namespace
} // namespace loader::test
