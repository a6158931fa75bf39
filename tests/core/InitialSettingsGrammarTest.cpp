// The grammar of the initial settings file: lines, blocks, rows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/Text.h"
#include "core/modFile.h"
#include "core/modMain.h"

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

// 40 lines that ask for some 50 GB.
TEST(InitialSettingsShape, FailsWhenItAsksForMoreThanARecorderCanHold) {
  std::u16string file;
  for (int section = 0; section < 20; ++section) {
    file += u"1,C,44001,60,32767\r\n0,TAG,0,1,CH,16\r\n";
  }
  EXPECT_THROW(Built(file), RunTimeFailure);
}

TEST(InitialSettingsShape, MayHaveAsManyPartsAsALookUpCanNumber) {
  // A section, 32766 items and a number in each.
  EXPECT_EQ(32766U, Built(u"1,C,44001,60,32766\r\n0,TYPE,0,0,1,0,41\r\n")[0].Items.size());
  EXPECT_THROW(Built(u"1,C,44001,60,32767\r\n0,TYPE,0,0,1,0,41\r\n"), RunTimeFailure);
}

TEST(InitialSettingsShape, FailsWithMoreSectionsThanALookUpCanNumber) {
  std::u16string file;
  for (int section = 0; section <= 65535; ++section) {
    file += u"1,C,1,1,1\r\n";
  }
  EXPECT_THROW(Built(file), RunTimeFailure);
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

} // namespace
} // namespace loader::test
