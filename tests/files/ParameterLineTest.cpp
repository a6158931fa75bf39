#include "tests/files/ParameterFileSupport.h"

#include <string>

namespace loader::test {
namespace {

using ParameterLines = ParameterFiles;

std::string ReadAs(std::string_view lines) {
  return LoadParamBytes(lines) ? "loaded" : "failed";
}

// --- Lines

TEST_F(ParameterLines, LayANumberOverTheStore) {
  EXPECT_EQ("loaded", ReadAs("LOADER ,V210\r\nC02TYPE,2\r\n"));
  EXPECT_EQ(2, Stored("C", 2, "TYPE"));
}

TEST_F(ParameterLines, LayATextOverTheStore) {
  EXPECT_EQ("loaded", ReadAs("LOADER ,V210\r\nG01GNEM,GROUP 2\r\n"));
  EXPECT_EQ("GROUP 2", TrimmedText("G", 1, "GNEM"));
}

TEST_F(ParameterLines, ReachATagOfThreeLettersWithAndWithoutItsBlank) {
  EXPECT_EQ("loaded", ReadAs("C00TAG ,A\r\nC01TAG,B\r\nC02 TAG,C\r\n"));
  EXPECT_EQ("A", TrimmedText("C", 0, "TAG"));
  EXPECT_EQ("B", TrimmedText("C", 1, "TAG"));
  EXPECT_EQ("C", TrimmedText("C", 2, "TAG"));
}

TEST_F(ParameterLines, ReachANumberWhereATextOfTheSameNameIsInAnotherSection) {
  EXPECT_EQ("loaded", ReadAs("C00UNIT,82\r\nU00UNIT,m/s\r\n"));
  EXPECT_EQ(82, Stored("C", 0, "UNIT"));
  EXPECT_EQ("m/s", TrimmedText("U", 0, "UNIT"));
}

TEST_F(ParameterLines, SetTheWorkingValueOnly) {
  EXPECT_EQ("loaded", ReadAs("C00FILT,7\r\nC00STAG,new\r\n"));
  const ParamNumRecord& number = NumRecord("C", 0, "FILT");
  EXPECT_EQ(7, number.Value);
  EXPECT_EQ(0, number.ReadValue);
  EXPECT_EQ(0, number.DefaultValue);
  const ParamTextRecord& text = TextRecord("C", 0, "STAG");
  EXPECT_EQ(FixedText(u"new"), text.Value);
  EXPECT_EQ(FixedText(u"CH 01"), text.ReadValue);
  EXPECT_EQ(FixedText(u"CH 01"), text.DefaultValue);
}

TEST_F(ParameterLines, KeepLeadingBlanksOfATextAndLoseTrailingOnes) {
  EXPECT_EQ("loaded", ReadAs("G00GNEM,  A B  \r\n"));
  EXPECT_EQ("  A B", TrimmedText("G", 0, "GNEM"));
}

TEST_F(ParameterLines, KeepTheCommaInTextsThatMayHoldOne) {
  EXPECT_EQ("loaded", ReadAs("J00SDAD,A,B\r\nC00STAG,C,D,\r\n"));
  EXPECT_EQ("A,B", TrimmedText("J", 0, "SDAD"));
  EXPECT_EQ("C,D,", TrimmedText("C", 0, "STAG"));
}

TEST_F(ParameterLines, KeepQuotesAsText) {
  EXPECT_EQ("loaded", ReadAs("G00GNEM,\"A\"\r\n"));
  EXPECT_EQ("\"A\"", TrimmedText("G", 0, "GNEM"));
}

TEST_F(ParameterLines, EmptyATextWithAnEmptyValue) {
  EXPECT_EQ("loaded", ReadAs("C00TAG ,\r\n"));
  EXPECT_EQ("", TrimmedText("C", 0, "TAG"));
}

TEST_F(ParameterLines, CutATextAt64Characters) {
  EXPECT_EQ("loaded", ReadAs("J00SDAD," + std::string(64, 'x') + "123456\r\n"));
  EXPECT_EQ(std::string(64, 'x'), TrimmedText("J", 0, "SDAD"));
}

TEST_F(ParameterLines, CountFullWidthCharactersAsOneWhenCutting) {
  std::string value;
  for (int i = 0; i < 70; ++i) {
    value += "\x83\x5C"; // a trail byte that is a backslash by itself
  }
  EXPECT_EQ("loaded", ReadAs("J00SDAD," + value + "\r\n"));
  EXPECT_EQ(std::u16string(64, u'\u30BD'), TextRecord("J", 0, "SDAD").Value);
}

TEST_F(ParameterLines, AreDecodedFromTheCodePage) {
  EXPECT_EQ("loaded", ReadAs("M00MESS,\x95\x5C\x8E\xA6 \xB1\xB2 \x81\x60 \x83\x7C\r\n"));
  EXPECT_EQ("表示 ｱｲ \uFF5E ポ", TrimmedText("M", 0, "MESS"));
}

TEST_F(ParameterLines, MayStandInAnyOrder) {
  EXPECT_EQ("loaded", ReadAs("S00SYS1,3\r\nC29FILT,9\r\nC00FILT,8\r\nLOADER ,V210\r\nA00A1TY,1\r\n"));
  EXPECT_EQ(3, Stored("S", 0, "SYS1"));
  EXPECT_EQ(9, Stored("C", 29, "FILT"));
  EXPECT_EQ(8, Stored("C", 0, "FILT"));
  EXPECT_EQ(1, Stored("A", 0, "A1TY"));
}

TEST_F(ParameterLines, OverwriteEarlierLinesOfTheSameParameter) {
  EXPECT_EQ("loaded", ReadAs("C00FILT,8\r\nC00FILT,9\r\n"));
  EXPECT_EQ(9, Stored("C", 0, "FILT"));
}

TEST_F(ParameterLines, TakeNumbersOutsideTheLimitsOfTheParameter) {
  EXPECT_EQ("loaded", ReadAs("C00POIN,-32768\r\nC01POIN,32767\r\n"));
  EXPECT_EQ(-32768, Stored("C", 0, "POIN"));
  EXPECT_EQ(32767, Stored("C", 1, "POIN"));
}

TEST_F(ParameterLines, TakeANumberWithBlanksAndASign) {
  EXPECT_EQ("loaded", ReadAs("C00FILT,  +12  \r\nC01FILT,007\r\n"));
  EXPECT_EQ(12, Stored("C", 0, "FILT"));
  EXPECT_EQ(7, Stored("C", 1, "FILT"));
}

TEST_F(ParameterLines, IgnoreWhatStandsBehindTheTagInTheKey) {
  EXPECT_EQ("loaded", ReadAs("C00FILTER,12\r\n"));
  EXPECT_EQ(12, Stored("C", 0, "FILT"));
}

TEST_F(ParameterLines, TakeAnItemNumberWithABlank) {
  EXPECT_EQ("loaded", ReadAs("C 5FILT,12\r\n"));
  EXPECT_EQ(12, Stored("C", 5, "FILT"));
}

// --- Line ends

TEST_F(ParameterLines, MayEndWithALineFeedAlone) {
  EXPECT_EQ("loaded", ReadAs("LOADER ,V210\nC00FILT,3\nC00STAG,x\n"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
  EXPECT_EQ("x", TrimmedText("C", 0, "STAG"));
}

TEST_F(ParameterLines, MayEndWithACarriageReturnAlone) {
  EXPECT_EQ("loaded", ReadAs("LOADER ,V210\rC00FILT,3\r"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
}

TEST_F(ParameterLines, NeedNoLineEndAfterTheLast) {
  EXPECT_EQ("loaded", ReadAs("LOADER ,V210\r\nC00FILT,3"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
}

TEST_F(ParameterLines, FailOnABlankLineInTheMiddle) {
  EXPECT_EQ("failed", ReadAs("LOADER ,V210\r\n\r\nC00FILT,3\r\n"));
}

TEST_F(ParameterLines, FailOnABlankLineAtTheEnd) {
  EXPECT_EQ("failed", ReadAs("LOADER ,V210\r\nC00FILT,3\r\n\r\n"));
}

TEST_F(ParameterLines, FailOnALineOfBlanks) {
  EXPECT_EQ("failed", ReadAs("LOADER ,V210\r\n   \r\nC00FILT,3\r\n"));
}

// --- The head

TEST_F(ParameterLines, LeaveAllDefaultsWhenThereIsOnlyAHead) {
  const std::string defaults = Saved();
  EXPECT_EQ("loaded", ReadAs("LOADER ,V210\r\n"));
  EXPECT_EQ(defaults, Saved());
}

TEST_F(ParameterLines, LeaveAllDefaultsWhenThereIsNoLineAtAll) {
  const std::string defaults = Saved();
  EXPECT_EQ("loaded", ReadAs(""));
  EXPECT_EQ(defaults, Saved());
}

class HeadVersions : public ParameterFiles, public testing::WithParamInterface<const char*> {};

// Deliberate: the version of the head is never checked.
TEST_P(HeadVersions, AreAllAccepted) {
  EXPECT_EQ("loaded", ReadAs("LOADER ," + std::string(GetParam()) + "\r\nC00FILT,3\r\n"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
}

INSTANTIATE_TEST_SUITE_P(Known, HeadVersions,
                         testing::Values("V174", "V18A", "V27A", "V130", "V129", "V210", "V999", "", ",,,"));

TEST_F(ParameterLines, NeedNoHead) {
  EXPECT_EQ("loaded", ReadAs("C00FILT,3\r\n"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
}

TEST_F(ParameterLines, SkipAHeadAnywhere) {
  EXPECT_EQ("loaded", ReadAs("C00FILT,3\r\nLOADER,\r\nLOADER   ,x\r\nC01FILT,4\r\n"));
  EXPECT_EQ(4, Stored("C", 1, "FILT"));
}

class WrongHeads : public ParameterFiles, public testing::WithParamInterface<const char*> {};

TEST_P(WrongHeads, AreParameterLinesAndFail) {
  EXPECT_EQ("failed", ReadAs(std::string(GetParam()) + "\r\nC00FILT,3\r\n"));
  EXPECT_EQ(0, Stored("C", 0, "FILT"));
}

INSTANTIATE_TEST_SUITE_P(Heads, WrongHeads,
                         testing::Values("Loader ,V210", "loader,V210", " LOADER ,V210", "LOADERS,V210",
                                         "\xEF\xBB\xBFLOADER ,V210", "LOADER V210", "[LOADER]"));

// --- What fails a load

struct BadLine {
  const char* what;
  const char* line;
};
void PrintTo(const BadLine& bad, std::ostream* out) {
  *out << bad.what;
}

class BadLines : public ParameterFiles, public testing::WithParamInterface<BadLine> {};

TEST_P(BadLines, FailTheLoadAndKeepWhatCameBefore) {
  EXPECT_EQ("failed",
            ReadAs("LOADER ,V210\r\nC00FILT,3\r\n" + std::string(GetParam().line) + ",1\r\nC01FILT,4\r\n"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
  EXPECT_EQ(0, Stored("C", 1, "FILT"));
}

INSTANTIATE_TEST_SUITE_P(
    Keys, BadLines,
    testing::Values(
        BadLine{"an unknown tag", "C00QQQQ"}, BadLine{"an unknown section", "Q00TYPE"},
        BadLine{"a section in lower case", "c00FILT"}, BadLine{"a tag in lower case", "C00filt"},
        BadLine{"a tag of another section", "C00GNEM"}, BadLine{"a section without tags", "R00TYPE"},
        BadLine{"an item behind the last", "C30FILT"}, BadLine{"item 99", "C99FILT"},
        BadLine{"item -1", "C-1FILT"}, BadLine{"an item in three digits", "C100FILT"},
        BadLine{"an item that is no number", "CxxFILT"}, BadLine{"an item that is half a number", "C1xFILT"},
        BadLine{"an item of blanks", "C  FILT"}, BadLine{"a hexadecimal item", "C0AFILT"},
        BadLine{"no tag", "C00"}, BadLine{"half a tag", "C00FIL"}, BadLine{"a section letter alone", "C"},
        BadLine{"an empty key", ""}, BadLine{"a key of blanks", "       "},
        BadLine{"a key that starts with a blank", " C00FILT"}, BadLine{"a tabulator in the key", "C00\tFILT"},
        BadLine{"a comment", ";"}));

class BadNumbers : public ParameterFiles, public testing::WithParamInterface<const char*> {};

TEST_P(BadNumbers, FailTheLoadAndKeepTheValue) {
  EXPECT_EQ("failed", ReadAs("C00FILT," + std::string(GetParam()) + "\r\nC01FILT,4\r\n"));
  EXPECT_EQ(0, Stored("C", 0, "FILT"));
  EXPECT_EQ(0, Stored("C", 1, "FILT"));
}

INSTANTIATE_TEST_SUITE_P(Values, BadNumbers,
                         testing::Values("", " ", "abc", "1.5", "1e2", "&H10", "0x10", "32768", "-32769",
                                         "99999999999999999999", "-", "+", "--1", "1 2", "1,2", "\x82\x50",
                                         "1\t", "\"1\""));

TEST_F(ParameterLines, LayNothingWhenAnyLineHasNoComma) {
  EXPECT_EQ("failed", ReadAs("LOADER ,V210\r\nC00FILT,3\r\nC01FILT 4\r\n"));
  EXPECT_EQ(0, Stored("C", 0, "FILT"));
}

TEST_F(ParameterLines, KeepWhatWasLaidBeforeAnUnknownTag) {
  EXPECT_EQ("failed", ReadAs("C00FILT,3\r\nC00QQQQ,1\r\nC01FILT,4\r\n"));
  EXPECT_EQ(3, Stored("C", 0, "FILT"));
  EXPECT_EQ(0, Stored("C", 1, "FILT"));
}

TEST_F(SmallStore, CannotBeReadAboveItem99) {
  Start("1,N,40371,1,101\r\n0,CONS,0,0,5,0,9\r\n");
  EXPECT_FALSE(LoadParamBytes(Saved()));
}

TEST_F(ParameterLines, FindNothingInAnEmptyStore) {
  ParamStore.clear();
  EXPECT_EQ("failed", ReadAs("LOADER ,V210\r\nC00FILT,3\r\n"));
}

} // namespace
} // namespace loader::test
