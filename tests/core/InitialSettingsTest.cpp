// The grammar of the initial settings file and the store that it shapes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

// The rows of the block of V00L, fields joined by "|", rows by "/".
std::string Rows(std::u16string_view file, std::u16string_view versionTag = u"V00L") {
  std::string joined;
  for (const InitRow& row : ReadInitBlock(file, versionTag)) {
    joined += joined.empty() ? "" : "/";
    for (std::size_t field = 0; field < row.size(); ++field) {
      joined += (field == 0 ? "" : "|") + ToUtf8(row[field]);
    }
  }
  return joined;
}

// --- Lines

TEST(InitialSettingsLines, AreSplitAtCommas) {
  EXPECT_EQ("2|V00L|0/1|C|44001|60|30", Rows(u"2   ,V00L,0\r\n1,C,44001,60,30\r\n"));
}

TEST(InitialSettingsLines, OfCommentsAreSkipped) {
  EXPECT_EQ("2|V00L|0/1|C", Rows(u"; a, b\r\n2   ,V00L,0\r\n;\r\n;1,D\r\n1,C\r\n"));
}

TEST(InitialSettingsLines, AreNoCommentWhenTheSemicolonIsNotInTheFirstColumn) {
  EXPECT_EQ("2|V00L|0/; a|b/1;|C", Rows(u"2   ,V00L,0\r\n ; a,b\r\n1;,C\r\n"));
}

TEST(InitialSettingsLines, ThatAreEmptyAreSkipped) {
  EXPECT_EQ("2|V00L|0/1|C", Rows(u"\r\n2   ,V00L,0\r\n\r\n\r\n1,C\r\n\r\n"));
}

TEST(InitialSettingsLines, OfBlanksAreRowsWithOneEmptyField) {
  const std::vector<InitRow> rows = ReadInitBlock(u"2   ,V00L,0\r\n   \r\n1,C\r\n", u"V00L");
  ASSERT_EQ(3U, rows.size());
  EXPECT_EQ(InitRow{u""}, rows[1]);
}

TEST(InitialSettingsLines, HaveTheirFieldsTrimmedThenFreedOfQuotes) {
  EXPECT_EQ("2|V00L|0/0|  AB |a|x y| ",
            Rows(u"2   ,V00L,0\r\n0 ,  \"  AB \" , \"\"a , x\" y\" , \" \" \r\n"));
}

TEST(InitialSettingsLines, HaveALastEmptyFieldBehindACommaAtTheEnd) {
  const std::vector<InitRow> rows = ReadInitBlock(u"2   ,V00L,0\r\n1,C,\r\n", u"V00L");
  ASSERT_EQ(2U, rows.size());
  EXPECT_EQ((InitRow{u"1", u"C", u""}), rows[1]);
}

TEST(InitialSettingsLines, MayHoldNineFields) {
  EXPECT_EQ("2|V00L|0/0|1|2|3|4|5|6|7|8", Rows(u"2   ,V00L,0\r\n0,1,2,3,4,5,6,7,8\r\n"));
}

TEST(InitialSettingsLines, OfTenFieldsInsideTheBlockFail) {
  EXPECT_THROW(Rows(u"2   ,V00L,0\r\n0,1,2,3,4,5,6,7,8,9\r\n"), RunTimeFailure);
  EXPECT_THROW(Rows(u"2   ,V00L,0\r\n0,1,2,3,4,5,6,7,8,\r\n"), RunTimeFailure);
}

TEST(InitialSettingsLines, OfTenFieldsBeforeTheBlockFail) {
  EXPECT_THROW(Rows(u"0,1,2,3,4,5,6,7,8,9\r\n2   ,V00L,0\r\n"), RunTimeFailure);
  EXPECT_THROW(Rows(u"0,1,2,3,4,5,6,7,8,9,10,11\r\n2   ,V00L,0\r\n"), RunTimeFailure);
}

TEST(InitialSettingsLines, OfTenFieldsBehindTheBlockAreNotRead) {
  EXPECT_EQ("2|V00L|0/1|C", Rows(u"2   ,V00L,0\r\n1,C\r\n2   ,V00W,0\r\n0,1,2,3,4,5,6,7,8,9\r\n"));
}

TEST(InitialSettingsLines, MayEndInALineFeedOrInNothing) {
  EXPECT_EQ("2|V00L|0/1|C/1|D", Rows(u"2   ,V00L,0\n1,C\n1,D"));
}

// --- The block

TEST(InitialSettingsBlock, IsThatOfTheModelWhateverComesBefore) {
  const std::u16string_view file = u"2   ,V00W,0\r\n1,W\r\n2   ,V00L,0\r\n1,L\r\n";
  EXPECT_EQ("2|V00L|0/1|L", Rows(file, u"V00L"));
  EXPECT_EQ("2|V00W|0/1|W", Rows(file, u"V00W"));
}

TEST(InitialSettingsBlock, EndsAtAHeaderWithTheDigitAloneInFourColumns) {
  for (const std::u16string_view header :
       {u"2   ,V00W,0", u" 2  ,V00W,0", u"   2,V00W,0", u"2   V00W,0", u"2", u"2   "}) {
    EXPECT_EQ("2|V00L|0/1|C", Rows(u"2   ,V00L,0\r\n1,C\r\n" + std::u16string(header) + u"\r\n1,W\r\n"))
        << ToUtf8(header);
  }
}

TEST(InitialSettingsBlock, GoesOnBehindAHeaderWithoutItsBlanks) {
  EXPECT_EQ("2|V00L|0/1|C/2|V00W|1/1|W", Rows(u"2   ,V00L,0\r\n1,C\r\n2,V00W,1\r\n1,W\r\n"));
  EXPECT_EQ("2|V00L|0/1|C/2|V00W|1/1|W", Rows(u"2   ,V00L,0\r\n1,C\r\n2  ,V00W,1\r\n1,W\r\n"));
  EXPECT_EQ("2|V00L|0/1|C/22|V00W|1", Rows(u"2   ,V00L,0\r\n1,C\r\n22  ,V00W,1\r\n"));
}

TEST(InitialSettingsBlock, OpensBehindAHeaderWithoutItsBlanks) {
  EXPECT_EQ("2|V00L|0/1|C", Rows(u"2,V00L,0\r\n1,C\r\n"));
}

TEST(InitialSettingsBlock, OpensAtATagInAnyField) {
  EXPECT_EQ("2|||V00L|7/1|C", Rows(u"x,y,z,V00L,7\r\n1,C\r\n"));
}

TEST(InitialSettingsBlock, OpensAtAQuotedTag) {
  EXPECT_EQ("2|V00L|0", Rows(u"2   , \"V00L\" ,0\r\n"));
}

TEST(InitialSettingsBlock, DoesNotOpenAtATagInTheLastField) {
  EXPECT_THROW(Rows(u"2   ,V00L\r\n1,C,44001,60,30\r\n"), RunTimeFailure);
}

TEST(InitialSettingsBlock, DoesNotOpenAtATagOfAnotherCaseOrLength) {
  EXPECT_THROW(Rows(u"2   ,v00l,0\r\n2   ,V00LX,0\r\n2   ,V00,0\r\n"), RunTimeFailure);
}

TEST(InitialSettingsBlock, StaysOpenAtASecondHeaderOfItsOwnTag) {
  EXPECT_EQ("2|V00L|0/1|C/2|V00L|1/1|D", Rows(u"2   ,V00L,0\r\n1,C\r\n2,V00L,1\r\n1,D\r\n"));
}

TEST(InitialSettingsBlock, OpensForEveryModelAtALineThatEndsInV01L) {
  const std::u16string_view file = u"1,X\r\n2   ,V01L\r\n1,C\r\n2   ,V00L,0\r\n1,L\r\n";
  EXPECT_EQ("|V01L/1|C", Rows(file, u"V00L"));
  EXPECT_EQ("|V01L/1|C", Rows(file, u"V00W"));
}

TEST(InitialSettingsBlock, OpensAtALineOfV01LAlone) {
  EXPECT_EQ("V01L/1|C", Rows(u"V01L\r\n1,C\r\n"));
}

TEST(InitialSettingsBlock, OpensAnewAtV01LInsideAnother) {
  EXPECT_EQ("|||V01L/1|D", Rows(u"2   ,V00L,0\r\n1,C\r\na,b,c,V01L\r\n1,D\r\n"));
}

TEST(InitialSettingsBlock, DoesNotOpenAtV01LBeforeAComma) {
  EXPECT_THROW(Rows(u"2   ,V01L,0\r\n1,C\r\n"), RunTimeFailure);
}

TEST(InitialSettingsBlock, ThatIsMissingFails) {
  EXPECT_THROW(Rows(u""), RunTimeFailure);
  EXPECT_THROW(Rows(u"; nothing\r\n"), RunTimeFailure);
  EXPECT_THROW(Rows(u"2   ,V00W,0\r\n1,C,44001,60,72\r\n"), RunTimeFailure);
}

// --- The shape

ParamStoreTable Built(std::u16string_view block) {
  std::int32_t modeCheckOff = 0;
  return BuildStore(ReadInitBlock(u"2   ,V00L,0\r\n" + std::u16string(block), u"V00L"), modeCheckOff);
}

TEST(InitialSettingsShape, HasTheSectionsOfTheFileInTheirOrder) {
  const ParamStoreTable store = Built(u"1,C,44001,60,30\r\n1,XY,30001,-5,1\r\n1,LONG,-70000,1,2\r\n");
  ASSERT_EQ(3U, store.size());
  EXPECT_EQ("C  ", store[0].Code);
  EXPECT_EQ(44001, store[0].BaseAddress);
  EXPECT_EQ(60, store[0].ItemWords);
  EXPECT_EQ(30, store[0].ItemCount);
  EXPECT_EQ(30U, store[0].Items.size());
  EXPECT_EQ("XY ", store[1].Code);
  EXPECT_EQ(-5, store[1].ItemWords);
  EXPECT_EQ("LON", store[2].Code);
  EXPECT_EQ(-70000, store[2].BaseAddress);
}

TEST(InitialSettingsShape, HasTheNumbersOfTheFile) {
  const ParamStoreTable store =
      Built(u"1,C,44001,60,1\r\n0,TYPE,8,0,1,-2,40\r\n0,FIX,-9,0,-32768,-32768,32767\r\n");
  const std::vector<ParamNumRecord>& numbers = store[0].Items[0].NumRecords;
  ASSERT_EQ(2U, numbers.size());
  EXPECT_EQ("TYPE", numbers[0].Tag);
  EXPECT_EQ(8, numbers[0].WordOffset);
  EXPECT_EQ(1, numbers[0].Value);
  EXPECT_EQ(1, numbers[0].ReadValue);
  EXPECT_EQ(1, numbers[0].DefaultValue);
  EXPECT_EQ(-2, numbers[0].MinValue);
  EXPECT_EQ(40, numbers[0].MaxValue);
  EXPECT_EQ("FIX ", numbers[1].Tag);
  EXPECT_EQ(-9, numbers[1].WordOffset);
  EXPECT_EQ(-32768, numbers[1].DefaultValue);
  EXPECT_EQ(32767, numbers[1].MaxValue);
  EXPECT_TRUE(store[0].Items[0].TextRecords.empty());
}

TEST(InitialSettingsShape, HasTheTextsOfTheFile) {
  const ParamStoreTable store = Built(u"1,C,44001,60,1\r\n0,TAG,0,1,CH,16\r\n0,LONGTAG,5,1,,8\r\n");
  const std::vector<ParamTextRecord>& texts = store[0].Items[0].TextRecords;
  ASSERT_EQ(2U, texts.size());
  EXPECT_EQ("TAG ", texts[0].Tag);
  EXPECT_EQ(0, texts[0].WordOffset);
  EXPECT_EQ(FixedText(u"CH"), texts[0].Value);
  EXPECT_EQ(FixedText(u"CH"), texts[0].ReadValue);
  EXPECT_EQ(FixedText(u"CH"), texts[0].DefaultValue);
  EXPECT_EQ(16, texts[0].ByteLength);
  EXPECT_EQ("LONG", texts[1].Tag);
  EXPECT_EQ(FixedText(u""), texts[1].Value);
  EXPECT_TRUE(store[0].Items[0].NumRecords.empty());
}

TEST(InitialSettingsShape, KeepsTheBlanksOfAQuotedDefaultOnly) {
  const ParamStoreTable store = Built(u"1,C,44001,60,1\r\n0,A,0,1,\"  AB \",16\r\n0,B,0,1,  AB ,16\r\n");
  // Two blanks, AB, one blank: five characters against two.
  EXPECT_EQ(FixedText(u"  AB "), store[0].Items[0].TextRecords[0].DefaultValue);
  EXPECT_EQ(FixedText(u"AB"), store[0].Items[0].TextRecords[1].DefaultValue);
  const ParamStoreTable marked = Built(u"1,C,44001,60,1\r\n0,A,0,1,\"  AB \"x,16\r\n");
  EXPECT_EQ(FixedText(u"  AB x"), marked[0].Items[0].TextRecords[0].DefaultValue);
}

TEST(InitialSettingsShape, CutsADefaultTextAt64Characters) {
  const ParamStoreTable store = Built(u"1,C,44001,60,1\r\n0,A,0,1," + std::u16string(70, u'x') + u",64\r\n");
  EXPECT_EQ(std::u16string(64, u'x'), store[0].Items[0].TextRecords[0].Value);
}

TEST(InitialSettingsShape, PassesOverRowsOfOtherKinds) {
  const ParamStoreTable store = Built(u"7,C,44001,60,30\r\n,\r\n   "
                                      u"\r\n1,C,44001,60,2\r\n0,FOO,3,2,1\r\n0,BAR,3\r\n0\r\nx,BAZ,0,0,1,0,"
                                      u"9\r\n00,QUX,0,0,1,0,9\r\n0,A,0,0,1,0,9\r\n");
  ASSERT_EQ(1U, store.size());
  ASSERT_EQ(1U, store[0].Items[0].NumRecords.size());
  EXPECT_EQ("A   ", store[0].Items[0].NumRecords[0].Tag);
  EXPECT_TRUE(store[0].Items[0].TextRecords.empty());
}

TEST(InitialSettingsShape, GivesEveryItemItsOwnCopyOfTheFirst) {
  ParamStoreTable store =
      Built(u"1,C,44001,60,3\r\n0,A,0,0,1,0,9\r\n0,T,1,1,x,8\r\n1,D,40001,1,2\r\n0,B,0,0,2,0,9\r\n");
  ASSERT_EQ(3U, store[0].Items.size());
  for (const ParamItem& item : store[0].Items) {
    ASSERT_EQ(1U, item.NumRecords.size());
    ASSERT_EQ(1U, item.TextRecords.size());
    EXPECT_EQ("A   ", item.NumRecords[0].Tag);
    EXPECT_EQ(FixedText(u"x"), item.TextRecords[0].Value);
  }
  ASSERT_EQ(2U, store[1].Items.size());
  EXPECT_EQ("B   ", store[1].Items[1].NumRecords[0].Tag);
  store[0].Items[1].NumRecords[0].Value = 5;
  EXPECT_EQ(1, store[0].Items[0].NumRecords[0].Value);
  EXPECT_EQ(1, store[0].Items[2].NumRecords[0].Value);
}

TEST(InitialSettingsShape, KeepsTheSingleItemOfASectionOfOne) {
  const ParamStoreTable store = Built(u"1,H,40011,40,1\r\n0,A,0,0,1,0,9\r\n");
  EXPECT_EQ(1U, store[0].Items.size());
}

TEST(InitialSettingsShape, MayHaveASectionWithoutRecords) {
  const ParamStoreTable store = Built(u"1,R,49901,1,2\r\n");
  ASSERT_EQ(2U, store[0].Items.size());
  EXPECT_TRUE(store[0].Items[1].NumRecords.empty());
  EXPECT_TRUE(store[0].Items[1].TextRecords.empty());
}

class BadRows : public testing::TestWithParam<const char16_t*> {};

TEST_P(BadRows, FailTheLoad) {
  EXPECT_THROW(Built(GetParam()), RunTimeFailure) << ToUtf8(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Sections, BadRows,
                         testing::Values(u"1,C\r\n", u"1,C,44001,60\r\n", u"1,C,44001,60,\r\n",
                                         u"1,C,,60,30\r\n", u"1,C,44001,,30\r\n", u"1,C,x,60,30\r\n",
                                         u"1,C,44001,x,30\r\n", u"1,C,44001,60,x\r\n", u"1,C,44001,60,0\r\n",
                                         u"1,C,44001,60,-1\r\n", u"1,C,44001,60,32768\r\n",
                                         u"1,C,44001,40000,1\r\n", u"1,C,2147483648,60,1\r\n",
                                         u"1,C,44001.5,60,1\r\n", u"1,C,&HABC,60,1\r\n"));
INSTANTIATE_TEST_SUITE_P(
    Numbers, BadRows,
    testing::Values(u"0,A,0,0,1,0,9\r\n", // before the first section row
                    u"1,C,44001,60,1\r\n0,A,,0,1,0,9\r\n", u"1,C,44001,60,1\r\n0,A,x,0,1,0,9\r\n",
                    u"1,C,44001,60,1\r\n0,A,0,0,,0,9\r\n", u"1,C,44001,60,1\r\n0,A,0,0,x,0,9\r\n",
                    u"1,C,44001,60,1\r\n0,A,0,0,1,,9\r\n", u"1,C,44001,60,1\r\n0,A,0,0,1,x,9\r\n",
                    u"1,C,44001,60,1\r\n0,A,0,0,1,0,\r\n", u"1,C,44001,60,1\r\n0,A,0,0,1,0,x\r\n",
                    u"1,C,44001,60,1\r\n0,A,0,0,1,0\r\n", u"1,C,44001,60,1\r\n0,A,0,0\r\n",
                    u"1,C,44001,60,1\r\n0,A,32768,0,1,0,9\r\n", u"1,C,44001,60,1\r\n0,A,0,0,-32769,0,9\r\n",
                    u"1,C,44001,60,1\r\n0,A,0,0,1,-32769,9\r\n", u"1,C,44001,60,1\r\n0,A,0,0,1,0,32768\r\n"));
INSTANTIATE_TEST_SUITE_P(Texts, BadRows,
                         testing::Values(u"0,A,0,1,x,8\r\n", u"1,C,44001,60,1\r\n0,A,,1,x,8\r\n",
                                         u"1,C,44001,60,1\r\n0,A,x,1,x,8\r\n",
                                         u"1,C,44001,60,1\r\n0,A,0,1,x,\r\n",
                                         u"1,C,44001,60,1\r\n0,A,0,1,x\r\n",
                                         u"1,C,44001,60,1\r\n0,A,0,1,x,y\r\n",
                                         u"1,C,44001,60,1\r\n0,A,0,1,x,32768\r\n"));

// --- ModeCheckOff

std::int32_t ModeCheckOffOf(std::u16string_view file, std::int32_t before) {
  std::int32_t modeCheckOff = before;
  static_cast<void>(BuildStore(ReadInitBlock(file, u"V00L"), modeCheckOff));
  return modeCheckOff;
}

TEST(InitialSettingsModeCheck, IsTheThirdFieldOfTheHeader) {
  EXPECT_EQ(0, ModeCheckOffOf(u"2   ,V00L,0\r\n", 9));
  EXPECT_EQ(1, ModeCheckOffOf(u"2   ,V00L,1\r\n", 9));
  EXPECT_EQ(-7, ModeCheckOffOf(u"2   ,V00L,-7\r\n", 9));
}

TEST(InitialSettingsModeCheck, IsLeftAloneByABlockForEveryModel) {
  EXPECT_EQ(9, ModeCheckOffOf(u"2   ,V01L\r\n1,C,44001,60,1\r\n", 9));
}

TEST(InitialSettingsModeCheck, IsTakenFromTheLastHeaderOfAMergedBlock) {
  EXPECT_EQ(4, ModeCheckOffOf(u"2   ,V00L,0\r\n2,V00W,4\r\n", 9));
}

TEST(InitialSettingsModeCheck, FailsWhenItIsNoNumber) {
  EXPECT_THROW(ModeCheckOffOf(u"2   ,V00L,\r\n", 9), RunTimeFailure);
  EXPECT_THROW(ModeCheckOffOf(u"2   ,V00L,x\r\n", 9), RunTimeFailure);
}

// --- The load

class InitialSettings : public testing::Test {
protected:
  void Load(std::string_view model, std::string_view block) {
    platform.WriteFile("LOADER.INI",
                       std::string("[LOADER]\r\nTYPE=") + (model == "RUG" ? "1" : "0") + "\r\n");
    platform.WriteFile("InitSet.Ini", std::string("2   ,") + (model == "RUG" ? "V00W" : "V00L") + ",0\r\n" +
                                          std::string(block));
    ASSERT_TRUE(gFLoadInitSetteiData());
  }
  ScriptedPlatform platform;
};

TEST_F(InitialSettings, ReplaceTheStoreWhole) {
  Load("KOV", "1,C,44001,60,2\r\n0,A,0,0,1,0,9\r\n");
  FindNumRecord("C", 0, "A")->Value = 5;
  Load("KOV", "1,D,44001,60,2\r\n0,A,0,0,1,0,9\r\n");
  EXPECT_EQ(1U, ParamStore.size());
  EXPECT_EQ(nullptr, FindNumRecord("C", 0, "A"));
  EXPECT_EQ(1, FindNumRecord("D", 0, "A")->Value);
}

TEST_F(InitialSettings, ResetEveryValue) {
  Load("KOV", "1,C,44001,60,1\r\n0,A,0,0,1,0,9\r\n0,T,1,1,x,8\r\n");
  SetNumber(*FindNumRecord("C", 0, "A"), 5, SlotBoth);
  SetText(*FindTextRecord("C", 0, "T"), u"y", SlotBoth);
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ(1, FindNumRecord("C", 0, "A")->Value);
  EXPECT_EQ(1, FindNumRecord("C", 0, "A")->ReadValue);
  EXPECT_EQ(FixedText(u"x"), FindTextRecord("C", 0, "T")->Value);
  EXPECT_EQ(FixedText(u"x"), FindTextRecord("C", 0, "T")->ReadValue);
}

TEST_F(InitialSettings, AreReadInTheCodePage) {
  Load("KOV", "; \x95\x5C\r\n1,C,44001,60,1\r\n0,T,0,1,\x83\x5C\xB1\x81\x60,8\r\n");
  EXPECT_EQ(FixedText(u"ソｱ\uFF5E"), FindTextRecord("C", 0, "T")->DefaultValue);
}

TEST_F(InitialSettings, ThatFailLeaveTheStoreAsItWas) {
  Load("KOV", "1,C,44001,60,1\r\n0,A,0,0,1,0,9\r\n");
  ModeCheckOff = 3;
  for (const char* bytes : {"", "2   ,V00L,5\r\n1,D,x,60,1\r\n", "2   ,V00L,5\r\n0,A,0,0,1,0,9\r\n"}) {
    platform.WriteFile("InitSet.Ini", bytes);
    EXPECT_FALSE(gFLoadInitSetteiData());
    ASSERT_EQ(1U, ParamStore.size());
    EXPECT_EQ("C  ", ParamStore[0].Code);
    EXPECT_EQ(3, ModeCheckOff);
  }
}

TEST_F(InitialSettings, ThatAreMissingFail) {
  std::filesystem::remove(platform.folder / "InitSet.Ini");
  EXPECT_FALSE(gFLoadInitSetteiData());
  std::filesystem::create_directory(platform.folder / "InitSet.Ini");
  EXPECT_FALSE(gFLoadInitSetteiData());
}

TEST_F(InitialSettings, SetTheModeCheckOfTheModel) {
  platform.WriteFile("InitSet.Ini", "2   ,V00L,3\r\n2   ,V00W,4\r\n");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ(3, ModeCheckOff);
  platform.WriteFile("LOADER.INI", "[LOADER]\r\nTYPE=1\r\n");
  EXPECT_TRUE(gFLoadInitSetteiData());
  EXPECT_EQ(4, ModeCheckOff);
}

TEST_F(InitialSettings, OfRandomBytesFail) {
  unsigned state = 1;
  for (int round = 0; round < 20; ++round) {
    std::string bytes;
    for (int i = 0; i < 10'000; ++i) {
      state = state * 1664525U + 1013904223U;
      bytes += static_cast<char>(state >> 24U);
    }
    platform.WriteFile("InitSet.Ini", bytes);
    EXPECT_FALSE(gFLoadInitSetteiData());
  }
}

TEST_F(InitialSettings, OfOneHugeLineFail) {
  platform.WriteFile("InitSet.Ini", std::string(20'000'000, ','));
  EXPECT_FALSE(gFLoadInitSetteiData());
}

TEST_F(InitialSettings, ThatEndAnywhereLoadOrFail) {
  const std::string whole = platform.ReadFile("InitSet.Ini").substr(0, 3000);
  int loaded = 0;
  for (std::size_t end = 0; end < whole.size(); end += 7) {
    platform.WriteFile("InitSet.Ini", std::string_view(whole).substr(0, end));
    loaded += gFLoadInitSetteiData() ? 1 : 0;
  }
  EXPECT_LT(50, loaded); // a file that ends behind a whole row is a smaller store
  EXPECT_GT(400, loaded);
}

// --- The defaults that depend on the item

class ItemDefaults : public InitialSettings {
protected:
  static constexpr std::string_view Block = "0,TAG,0,1,CH,16\r\n0,TAG2,44,1,two,16\r\n0,STAG,52,1,SUM,"
                                            "16\r\n0,COLR,30,0,7,1,14\r\n0,RECO,21,0,0,0,1\r\n";
  void LoadModel(const std::string& model) {
    Load(model, "1,C,44001,60," + std::string(model == "RUG" ? "72" : "30") + "\r\n" + std::string(Block) +
                    "1,G,40761,20," + (model == "RUG" ? "8" : "4") + "\r\n0,GNEM,0,1,GROUP,16\r\n");
  }
  static std::u16string Text(int item, std::string_view tag, std::string_view section = "C") {
    const ParamTextRecord& record = *FindTextRecord(section, item, tag);
    EXPECT_EQ(record.Value, record.ReadValue);
    EXPECT_EQ(record.Value, record.DefaultValue);
    return std::u16string(TrimRight(record.DefaultValue));
  }
  static int Number(int item, std::string_view tag) {
    const ParamNumRecord& record = *FindNumRecord("C", item, tag);
    EXPECT_EQ(record.Value, record.ReadValue);
    EXPECT_EQ(record.Value, record.DefaultValue);
    return record.DefaultValue;
  }
};

TEST_F(ItemDefaults, NumberTheTagsOfAllChannels) {
  LoadModel("KOV");
  EXPECT_EQ(u"CH 01", Text(0, "TAG"));
  EXPECT_EQ(u"CH 03", Text(2, "TAG"));
  EXPECT_EQ(u"CH 18", Text(17, "TAG"));
  EXPECT_EQ(u"CH 19", Text(18, "TAG"));
  EXPECT_EQ(u"CH 30", Text(29, "TAG"));
  LoadModel("RUG");
  EXPECT_EQ(u"CH 37", Text(36, "TAG"));
  EXPECT_EQ(u"CH 72", Text(71, "TAG"));
}

TEST_F(ItemDefaults, NumberTheTotalizerTagsFromTheirOwnDefault) {
  LoadModel("KOV");
  EXPECT_EQ(u"SUM 01", Text(0, "STAG"));
  EXPECT_EQ(u"SUM 19", Text(18, "STAG"));
  EXPECT_EQ(u"SUM 30", Text(29, "STAG"));
}

TEST_F(ItemDefaults, EmptyTheSecondTags) {
  LoadModel("KOV");
  for (int item = 0; item < 30; ++item) {
    EXPECT_EQ(u"", Text(item, "TAG2")) << item;
  }
}

TEST_F(ItemDefaults, NumberTheGroupNamesWithoutABlank) {
  LoadModel("KOV");
  EXPECT_EQ(u"GROUP1", Text(0, "GNEM", "G"));
  EXPECT_EQ(u"GROUP4", Text(3, "GNEM", "G"));
  LoadModel("RUG");
  EXPECT_EQ(u"GROUP8", Text(7, "GNEM", "G"));
}

TEST_F(ItemDefaults, ColourTheMeasuringChannelsInOrderA) {
  for (const char* model : {"KOV", "RUG"}) {
    LoadModel(model);
    for (int item = 0; item < Profile.ChannelCount; ++item) {
      EXPECT_EQ(ColourOrderA[static_cast<std::size_t>(item)], Number(item, "COLR")) << model << item;
    }
  }
  LoadModel("KOV");
  EXPECT_EQ(11, Number(4, "COLR"));
  EXPECT_EQ(1, Number(10, "COLR")); // the eleventh starts anew
}

TEST_F(ItemDefaults, ColourTheOperationChannelsOfKOVInOrderB) {
  LoadModel("KOV");
  const std::vector<int> expected = {5, 6, 8, 9, 1, 2, 3, 4, 11, 10, 5, 6};
  for (int j = 0; j < 12; ++j) {
    EXPECT_EQ(expected[static_cast<std::size_t>(j)], Number(18 + j, "COLR")) << j;
  }
}

TEST_F(ItemDefaults, ColourTheOperationChannelsOfRUGInOrderA) {
  LoadModel("RUG");
  for (int j = 0; j < 36; ++j) {
    EXPECT_EQ(ColourOrderA[static_cast<std::size_t>(j)], Number(36 + j, "COLR")) << j;
  }
}

TEST_F(ItemDefaults, RecordOnlyOperationChannelsByDefault) {
  LoadModel("KOV");
  for (int item = 0; item < 30; ++item) {
    EXPECT_EQ(item < 18 ? 0 : 1, Number(item, "RECO")) << item;
  }
}

TEST_F(ItemDefaults, TrimTheDefaultTextOnBothSides) {
  Load("KOV", "1,C,44001,60,30\r\n0,TAG,0,1,\"  CH  \",16\r\n1,G,40761,20,4\r\n0,GNEM,0,1,\" G \",16\r\n");
  EXPECT_EQ(u"CH 01", Text(0, "TAG"));
  EXPECT_EQ(u"G1", Text(0, "GNEM", "G"));
}

TEST_F(ItemDefaults, KeepTheBlankBehindAnEmptyDefaultText) {
  Load("KOV", "1,C,44001,60,30\r\n0,TAG,0,1,,16\r\n");
  EXPECT_EQ(u" 01", Text(0, "TAG"));
}

TEST_F(ItemDefaults, PassOverWhatTheStoreLacks) {
  Load("KOV", "1,H,40011,40,1\r\n0,A,0,0,1,0,9\r\n");
  Load("KOV", "1,C,44001,60,30\r\n0,COLR,30,0,7,1,14\r\n");
  EXPECT_EQ(1, Number(0, "COLR"));
}

TEST_F(ItemDefaults, PassOverItemsThatTheSectionLacks) {
  Load("KOV", "1,C,44001,60,20\r\n" + std::string(Block) + "1,G,40761,20,2\r\n0,GNEM,0,1,GROUP,16\r\n");
  EXPECT_EQ(u"CH 20", Text(19, "TAG"));
  EXPECT_EQ(u"GROUP2", Text(1, "GNEM", "G"));
}

TEST_F(ItemDefaults, LeaveTheItemsBehindTheChannelsOfTheModel) {
  Load("KOV", "1,C,44001,60,31\r\n" + std::string(Block) + "1,G,40761,20,5\r\n0,GNEM,0,1,GROUP,16\r\n");
  EXPECT_EQ(u"CH", Text(30, "TAG"));
  EXPECT_EQ(u"two", Text(30, "TAG2"));
  EXPECT_EQ(7, Number(30, "COLR"));
  EXPECT_EQ(u"GROUP", Text(4, "GNEM", "G"));
}

// --- Files and lines

TEST(TextLines, EndInCarriageReturnsAndLineFeeds) {
  using Lines = std::vector<std::u16string_view>;
  EXPECT_EQ((Lines{u"a", u"b"}), SplitLines(u"a\r\nb\r\n"));
  EXPECT_EQ((Lines{u"a", u"b"}), SplitLines(u"a\nb"));
  EXPECT_EQ((Lines{u"a", u"b"}), SplitLines(u"a\rb\r"));
  EXPECT_EQ((Lines{u"a", u"", u"b"}), SplitLines(u"a\r\n\r\nb"));
  EXPECT_EQ((Lines{u"a", u"", u"b"}), SplitLines(u"a\n\nb"));
  EXPECT_EQ((Lines{u"a", u"", u"b"}), SplitLines(u"a\n\rb"));
  EXPECT_EQ((Lines{u""}), SplitLines(u"\r\n"));
  EXPECT_EQ((Lines{}), SplitLines(u""));
}

TEST_F(InitialSettings, AreReadAsWholeFiles) {
  const std::string bytes("a\0\r\n\x1A\xFF", 6);
  platform.WriteFile("any", bytes);
  EXPECT_EQ(bytes, ReadWholeFile(platform.folder / "any"));
  platform.WriteFile("empty", "");
  EXPECT_EQ("", ReadWholeFile(platform.folder / "empty"));
  EXPECT_THROW(static_cast<void>(ReadWholeFile(platform.folder / "nowhere")), RunTimeFailure);
  EXPECT_THROW(static_cast<void>(ReadWholeFile(platform.folder)), RunTimeFailure);
}

} // namespace
} // namespace loader::test
