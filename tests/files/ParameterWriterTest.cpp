#include "tests/files/ParameterFileSupport.h"

#include <algorithm>
#include <fstream>

#include "tests/support/FullDisk.h"
#include "tests/support/System.h"

namespace loader::test {
namespace {

TEST_F(SmallStore, IsWrittenByteForByte) {
  Start("1,C,44001,60,2\r\n"
        "0,TYPE,8,0,1,0,40\r\n"
        "0,TAG,0,1,CH,16\r\n"
        "0,PVSI,18,0,-7,-32767,32767\r\n"
        "0,TAG2,44,1,,16\r\n"
        "1,R,49901,1,1\r\n"
        "1,G,40761,20,2\r\n"
        "0,GNEM,0,1,GROUP,16\r\n"
        "1,F,40001,1,1\r\n"
        "0,FIX,0,0,0,0,1\r\n");
  SetText(TextRecord("C", 1, "TAG2"), u"  \uFF8E\uFF9F\uFF9D\uFF8C\uFF9F \u8868\u793A  ", SlotValue);

  // Texts before numbers whatever their order in the initial settings, sections and items in store order.
  EXPECT_EQ("LOADER ,V210\r\n"
            "C00TAG ,CH 01\r\n"
            "C00TAG2,\r\n"
            "C00TYPE,1\r\n"
            "C00PVSI,-7\r\n"
            "C01TAG ,CH 02\r\n"
            "C01TAG2,  \xCE\xDF\xDD\xCC\xDF \x95\x5C\x8E\xA6\r\n"
            "C01TYPE,1\r\n"
            "C01PVSI,-7\r\n"
            "G00GNEM,GROUP1\r\n"
            "G01GNEM,GROUP2\r\n"
            "F00FIX ,0\r\n",
            Saved());
}

TEST_F(SmallStore, OfNoSectionIsWrittenAsTheHeadLine) {
  Start("");
  EXPECT_EQ("LOADER ,V210\r\n", Saved());
}

TEST_F(SmallStore, WritesItemNumbersAboveNinetyNineInThreeDigits) {
  Start("1,N,40371,1,101\r\n0,CONS,0,0,5,0,9\r\n");
  EXPECT_NE(std::string::npos, Saved().find("\r\nN99CONS,5\r\nN100CONS,5\r\n"));
}

// As a recorder may hold it: the row would be split, and the file would not open again.
TEST_F(SmallStore, WritesALineBreakInATextAsABlank) {
  Start("1,S,30101,1,1\r\n0,NAME,0,1,x,16\r\n");
  SetText(TextRecord("S", 0, "NAME"), u"\nA\r\nB\n", SlotValue);
  EXPECT_EQ("LOADER ,V210\r\nS00NAME, A  B\r\n", Saved());
  EXPECT_EQ(u"\nA\r\nB\n", TrimRight(TextRecord("S", 0, "NAME").Value)) << "as the recorder has it";
}

TEST_F(SmallStore, WritesTheExtremesOfANumber) {
  Start("1,S,30101,1,2\r\n0,SYS1,0,0,0,-32768,32767\r\n");
  Put("S", 0, "SYS1", -32768);
  Put("S", 1, "SYS1", 32767);
  EXPECT_EQ("LOADER ,V210\r\nS00SYS1,-32768\r\nS01SYS1,32767\r\n", Saved());
}

TEST_F(SmallStore, WritesTheWorkingValueAndNoOther) {
  Start("1,S,30101,1,1\r\n0,SYS1,0,0,5,-32768,32767\r\n0,NAME,0,1,default,16\r\n");
  SetNumber(NumRecord("S", 0, "SYS1"), 6, SlotReadValue);
  SetText(TextRecord("S", 0, "NAME"), u"read", SlotReadValue);
  EXPECT_EQ("LOADER ,V210\r\nS00NAME,default\r\nS00SYS1,5\r\n", Saved());
}

TEST_F(SmallStore, WritesACommaOfATextAsItIs) {
  Start("1,G,40761,20,1\r\n0,GNEM,0,1,,16\r\n");
  SetText(TextRecord("G", 0, "GNEM"), u"A,B", SlotValue);
  EXPECT_EQ("LOADER ,V210\r\nG00GNEM,A,B\r\n", Saved());
}

TEST_F(SmallStore, WritesAQuestionMarkForWhatTheCodePageLacks) {
  Start("1,G,40761,20,1\r\n0,GNEM,0,1,,16\r\n");
  SetText(TextRecord("G", 0, "GNEM"), u"a\u00E9\uAC00b", SlotValue);
  EXPECT_EQ("LOADER ,V210\r\nG00GNEM,a??b\r\n", Saved());
}

TEST_F(SmallStore, WritesATextOfFullWidthWhole) {
  Start("1,G,40761,20,1\r\n0,GNEM,0,1,,64\r\n");
  SetText(TextRecord("G", 0, "GNEM"), std::u16string(64, u'\u3042'), SlotValue);
  std::string full = "LOADER ,V210\r\nG00GNEM,";
  for (int i = 0; i < 64; ++i) {
    full += "\x82\xA0";
  }
  EXPECT_EQ(full + "\r\n", Saved());
}

TEST_F(ParameterFiles, HaveALineForEachParameter) {
  std::size_t parameters = 0;
  for (const ParamSection& section : ParamStore) {
    for (const ParamItem& item : section.Items) {
      parameters += item.NumRecords.size() + item.TextRecords.size();
    }
  }
  const std::string bytes = Saved();
  EXPECT_EQ(parameters + 1, static_cast<std::size_t>(std::ranges::count(bytes, '\n')));
}

TEST_F(ParameterFiles, StartWithTheHeadAndEndWithTheLastParameter) {
  const std::string bytes = Saved();
  EXPECT_TRUE(
      bytes.starts_with("LOADER ,V210\r\nC00TAG ,CH 01\r\nC00TAG2,\r\nC00STAG,CH 01\r\nC00TYPE,1\r\n"));
  EXPECT_TRUE(bytes.ends_with("\r\nF00FIX ,0\r\nS00SYS1,0\r\n"));
}

TEST_F(ParameterFiles, HoldTheSectionsThatTheScreensDoNotShow) {
  const std::string bytes = Saved();
  for (const char* line : {"\r\nP00PILC,\r\n", "\r\nP00SNO.,\r\n", "\r\nP00PVER,\r\n", "\r\nI09DRMX,100\r\n",
                           "\r\nY11SLRN,0\r\n", "\r\nZ00TSIG,0\r\n"}) {
    EXPECT_NE(std::string::npos, bytes.find(line)) << line;
  }
}

TEST_F(ParameterFiles, ReplaceALongerFile) {
  platform.WriteFile("saved.KOV", std::string(1'000'000, 'x'));
  EXPECT_TRUE(Saved().ends_with("\r\nS00SYS1,0\r\n"));
}

TEST_F(ParameterFiles, LeaveTheStoreAsItWasWhenSaved) {
  const std::string first = Saved();
  EXPECT_EQ(first, Saved());
}

TEST_F(ParameterFiles, AreNotSavedIntoAFolderThatDoesNotExist) {
  EXPECT_FALSE(gFSaveParamFile(platform.folder / "nowhere" / "a.KOV"));
}

TEST_F(ParameterFiles, AreNotSavedOverAFolder) {
  EXPECT_FALSE(gFSaveParamFile(platform.folder));
}

TEST_F(ParameterFiles, AreNotSavedUnderAnEmptyName) {
  EXPECT_FALSE(gFSaveParamFile({}));
}

TEST_F(ParameterFiles, AreNotSavedToADevice) {
  ASSERT_TRUE(std::ofstream("/dev/full").is_open()) << "a device that is always full";
  EXPECT_FALSE(gFSaveParamFile("/dev/full"));
  ASSERT_TRUE(std::ofstream("/dev/null").is_open());
  EXPECT_FALSE(gFSaveParamFile("/dev/null")) << "nothing would be kept";
}

// Nobody reads at its other end: opening it would wait for ever.
TEST_F(ParameterFiles, AreNotSavedToAPipe) {
  const std::filesystem::path pipe = platform.folder / "pipe.KOV";
  ASSERT_TRUE(MakePipe(pipe));
  EXPECT_FALSE(gFSaveParamFile(pipe));
  std::filesystem::create_symlink("pipe.KOV", platform.folder / "link.KOV");
  EXPECT_FALSE(gFSaveParamFile(platform.folder / "link.KOV"));
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(ParameterFiles, AreSavedThroughALink) {
  const std::string whole = Saved();
  platform.WriteFile("file.KOV", "old");
  std::filesystem::create_symlink("file.KOV", platform.folder / "link.KOV");
  std::filesystem::create_symlink("new.KOV", platform.folder / "link to a new one.KOV");
  EXPECT_TRUE(gFSaveParamFile(platform.folder / "link.KOV"));
  EXPECT_TRUE(gFSaveParamFile(platform.folder / "link to a new one.KOV"));
  EXPECT_TRUE(std::filesystem::is_symlink(platform.folder / "link.KOV"));
  EXPECT_EQ(whole, platform.ReadFile("file.KOV"));
  EXPECT_EQ(whole, platform.ReadFile("new.KOV"));
}

TEST_F(ParameterFiles, FailToSaveWhenTheHeadCannotBeWritten) {
  const FullDisk disk(5);
  EXPECT_FALSE(gFSaveParamFile(platform.folder / "short.KOV"));
}

// Deliberate: from the first parameter on the writer ignores failures.
TEST_F(ParameterFiles, AreShortenedWithoutAWordWhenTheDiskFills) {
  const std::string whole = Saved();
  bool saved = false;
  {
    const FullDisk disk(1000);
    saved = gFSaveParamFile(platform.folder / "short.KOV");
  }
  EXPECT_TRUE(saved);
  EXPECT_EQ(whole.substr(0, 1000), platform.ReadFile("short.KOV"));
}

} // namespace
} // namespace loader::test
