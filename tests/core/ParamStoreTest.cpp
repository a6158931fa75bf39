#include "core/modMain.h"

#include <gtest/gtest.h>

#include <string>

#include "core/Text.h"
#include "core/modFile.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

using namespace std::string_view_literals;

// Two sections: "AB" of two items with texts and numbers, "N" of one item with numbers only, "R" without
// records.
ParamStoreTable SmallTable() {
  ParamTextRecord text;
  text.Tag = "TAG ";
  text.Value = text.ReadValue = text.DefaultValue = FixedText(u"text");
  ParamTextRecord both;
  both.Tag = "BOTH";
  both.Value = both.ReadValue = both.DefaultValue = FixedText(u"");
  ParamNumRecord number;
  number.Tag = "NUM ";
  number.Value = number.ReadValue = number.DefaultValue = 7;
  ParamNumRecord bothNumber;
  bothNumber.Tag = "BOTH";
  ParamItem item{{number, bothNumber}, {text, both}};
  ParamItem numbersOnly{{number}, {}};
  return {{"AB ", 40001, 10, 2, {item, item}},
          {"N  ", 40101, 1, 1, {numbersOnly}},
          {"R  ", 49901, 1, 1, {ParamItem{}}}};
}

class Store : public testing::Test {
protected:
  void SetUp() override { ParamStore = SmallTable(); }
  void TearDown() override { ParamStore.clear(); }
};

// --- Sections

TEST_F(Store, FindsASection) {
  EXPECT_EQ(0, gFFindSection("AB"));
  EXPECT_EQ(1, gFFindSection("N"));
  EXPECT_EQ(2, gFFindSection("R"));
}

TEST_F(Store, FindsASectionTrimmedOnBothSides) {
  EXPECT_EQ(1, gFFindSection("N  "));
  EXPECT_EQ(1, gFFindSection("  N"));
  EXPECT_EQ(1, gFFindSection(" N "));
}

TEST_F(Store, FindsASectionByItsWholeCodeOnly) {
  for (const char* code : {"n", "A", "B", "ABC", "NN", "", " ", "Q", "A B"}) {
    EXPECT_EQ(NotFound, gFFindSection(code)) << code;
  }
}

TEST_F(Store, FindsTheFirstOfEqualSections) {
  ParamStore.push_back(ParamStore[1]);
  EXPECT_EQ(1, gFFindSection("N"));
}

TEST(EmptyStore, HoldsNothing) {
  ParamStore.clear();
  EXPECT_EQ(NotFound, gFFindSection("C"));
  EXPECT_EQ(NotFound, gFFindSection(""));
  EXPECT_EQ(NotFound, gFFindNumTag(0, 0, "TYPE"));
  EXPECT_EQ(NotFound, gFFindTextTag(0, 0, "TAG"));
  EXPECT_FALSE(gFParamValue("C", 0, "TYPE", u"1", SlotValue));
  EXPECT_EQ(nullptr, FindNumRecord("C", 0, "TYPE"));
  EXPECT_EQ(nullptr, FindTextRecord("C", 0, "TAG"));
}

TEST(NotFoundIndex, IsAll16Bits) {
  EXPECT_EQ(65535U, NotFound);
  EXPECT_EQ(-1, static_cast<std::int16_t>(NotFound));
}

// --- Tags

TEST_F(Store, FindsTags) {
  EXPECT_EQ(0, gFFindTextTag(0, 0, "TAG"));
  EXPECT_EQ(1, gFFindTextTag(0, 1, "BOTH"));
  EXPECT_EQ(0, gFFindNumTag(0, 0, "NUM"));
  EXPECT_EQ(1, gFFindNumTag(0, 1, "BOTH"));
  EXPECT_EQ(0, gFFindNumTag(1, 0, "NUM"));
}

TEST_F(Store, FindsATagTrimmedOnBothSides) {
  EXPECT_EQ(0, gFFindTextTag(0, 0, "TAG "));
  EXPECT_EQ(0, gFFindTextTag(0, 0, " TAG"));
  EXPECT_EQ(0, gFFindNumTag(0, 0, "  NUM  "));
}

TEST_F(Store, FindsATagByItsWholeNameOnly) {
  for (const char* tag : {"tag", "TA", "TAG2", "AG", "", "    "}) {
    EXPECT_EQ(NotFound, gFFindTextTag(0, 0, tag)) << tag;
    EXPECT_EQ(NotFound, gFFindNumTag(0, 0, tag)) << tag;
  }
}

TEST_F(Store, FindsNoTextAmongNumbersAndNoNumberAmongTexts) {
  EXPECT_EQ(NotFound, gFFindNumTag(0, 0, "TAG"));
  EXPECT_EQ(NotFound, gFFindTextTag(0, 0, "NUM"));
}

TEST_F(Store, FindsNothingWhereThereAreNoRecords) {
  EXPECT_EQ(NotFound, gFFindTextTag(1, 0, "TAG"));
  EXPECT_EQ(NotFound, gFFindTextTag(2, 0, "TAG"));
  EXPECT_EQ(NotFound, gFFindNumTag(2, 0, "NUM"));
}

TEST_F(Store, FindsNothingOutsideItsItemsAndSections) {
  for (const int item : {-1, 2, 99, 65535, -65536, 2147483647, -2147483647}) {
    EXPECT_EQ(NotFound, gFFindNumTag(0, item, "NUM")) << item;
    EXPECT_EQ(NotFound, gFFindTextTag(0, item, "TAG")) << item;
    EXPECT_FALSE(gFParamValue("AB", item, "NUM", u"1", SlotValue)) << item;
    EXPECT_FALSE(gFParamValue("AB", item, "TAG", u"1", SlotValue)) << item;
  }
  for (const StoreIndex section : {StoreIndex{3}, StoreIndex{1000}, NotFound}) {
    EXPECT_EQ(NotFound, gFFindNumTag(section, 0, "NUM")) << section;
    EXPECT_EQ(NotFound, gFFindTextTag(section, 0, "TAG")) << section;
  }
}

// --- The setter

TEST_F(Store, SetsANumber) {
  EXPECT_TRUE(gFParamValue("AB", 1, "NUM", u"-12", SlotValue));
  EXPECT_EQ(-12, FindNumRecord("AB", 1, "NUM")->Value);
  EXPECT_EQ(7, FindNumRecord("AB", 0, "NUM")->Value);
}

TEST_F(Store, SetsAText) {
  EXPECT_TRUE(gFParamValue("AB", 1, "TAG", u"new", SlotValue));
  EXPECT_EQ(FixedText(u"new"), FindTextRecord("AB", 1, "TAG")->Value);
  EXPECT_EQ(FixedText(u"text"), FindTextRecord("AB", 0, "TAG")->Value);
}

TEST_F(Store, GoesOnToTheNumbersOfASectionWithoutTexts) {
  EXPECT_TRUE(gFParamValue("N", 0, "NUM", u"9", SlotValue));
  EXPECT_EQ(9, FindNumRecord("N", 0, "NUM")->Value);
}

TEST_F(Store, SetsTheTextOnlyWhenATagIsBoth) {
  EXPECT_TRUE(gFParamValue("AB", 0, "BOTH", u"5", SlotValue));
  EXPECT_EQ(FixedText(u"5"), FindTextRecord("AB", 0, "BOTH")->Value);
  EXPECT_EQ(0, FindNumRecord("AB", 0, "BOTH")->Value);
}

struct Slot {
  ValueSlot slot;
  bool value;
  bool readValue;
};
void PrintTo(const Slot& slot, std::ostream* out) {
  *out << "slot " << slot.slot;
}

class Slots : public Store, public testing::WithParamInterface<Slot> {};

TEST_P(Slots, SayWhichCopyOfANumberIsWritten) {
  EXPECT_TRUE(gFParamValue("AB", 0, "NUM", u"9", GetParam().slot));
  const ParamNumRecord& record = *FindNumRecord("AB", 0, "NUM");
  EXPECT_EQ(GetParam().value ? 9 : 7, record.Value);
  EXPECT_EQ(GetParam().readValue ? 9 : 7, record.ReadValue);
  EXPECT_EQ(7, record.DefaultValue);
}

TEST_P(Slots, SayWhichCopyOfATextIsWritten) {
  EXPECT_TRUE(gFParamValue("AB", 0, "TAG", u"new", GetParam().slot));
  const ParamTextRecord& record = *FindTextRecord("AB", 0, "TAG");
  EXPECT_EQ(FixedText(GetParam().value ? u"new" : u"text"), record.Value);
  EXPECT_EQ(FixedText(GetParam().readValue ? u"new" : u"text"), record.ReadValue);
  EXPECT_EQ(FixedText(u"text"), record.DefaultValue);
}

INSTANTIATE_TEST_SUITE_P(All, Slots,
                         testing::Values(Slot{0, true, false}, Slot{1, false, true}, Slot{2, true, true},
                                         Slot{3, true, true}, Slot{7, true, true}, Slot{-1, true, true}));

TEST_F(Store, ChangesNothingForAnUnknownSectionOrTag) {
  EXPECT_FALSE(gFParamValue("Q", 0, "NUM", u"9", SlotBoth));
  EXPECT_FALSE(gFParamValue("AB", 0, "NONE", u"9", SlotBoth));
  EXPECT_FALSE(gFParamValue("N", 0, "TAG", u"9", SlotBoth));
  for (const ParamSection& section : ParamStore) {
    for (const ParamItem& item : section.Items) {
      for (const ParamNumRecord& record : item.NumRecords) {
        EXPECT_NE(9, record.Value);
        EXPECT_NE(9, record.ReadValue);
      }
    }
  }
}

TEST_F(Store, FailsOnATextThatIsNoNumber) {
  for (const std::u16string_view value : {u""sv, u"x"sv, u"1.5"sv, u"32768"sv, u"-32769"sv}) {
    EXPECT_THROW(gFParamValue("AB", 0, "NUM", value, SlotBoth), RunTimeFailure) << ToUtf8(value);
  }
  EXPECT_EQ(7, FindNumRecord("AB", 0, "NUM")->Value);
  EXPECT_EQ(7, FindNumRecord("AB", 0, "NUM")->ReadValue);
}

TEST_F(Store, TakesTheExtremesOfANumber) {
  EXPECT_TRUE(gFParamValue("AB", 0, "NUM", u"-32768", SlotBoth));
  EXPECT_EQ(-32768, FindNumRecord("AB", 0, "NUM")->Value);
  EXPECT_TRUE(gFParamValue("AB", 0, "NUM", u" 32767 ", SlotBoth));
  EXPECT_EQ(32767, FindNumRecord("AB", 0, "NUM")->Value);
}

// --- Texts at full width

TEST_F(Store, CutsATextAt64Characters) {
  const std::u16string seventy = std::u16string(64, u'表') + u"123456";
  EXPECT_TRUE(gFParamValue("AB", 0, "TAG", seventy, SlotBoth));
  EXPECT_EQ(std::u16string(64, u'表'), FindTextRecord("AB", 0, "TAG")->Value);
  EXPECT_EQ(std::u16string(64, u'表'), FindTextRecord("AB", 0, "TAG")->ReadValue);
}

TEST_F(Store, PadsAShortTextWithBlanks) {
  EXPECT_TRUE(gFParamValue("AB", 0, "TAG", u"abc", SlotBoth));
  EXPECT_EQ(u"abc" + std::u16string(61, u' '), FindTextRecord("AB", 0, "TAG")->Value);
}

TEST_F(Store, PadsAnEmptyTextWithBlanks) {
  EXPECT_TRUE(gFParamValue("AB", 0, "TAG", u"", SlotBoth));
  EXPECT_EQ(std::u16string(64, u' '), FindTextRecord("AB", 0, "TAG")->Value);
}

TEST_F(Store, TakesATextAsItStands) {
  EXPECT_TRUE(gFParamValue("AB", 0, "TAG", u"  a,\"b\"\t", SlotBoth));
  EXPECT_EQ(FixedText(u"  a,\"b\"\t"), FindTextRecord("AB", 0, "TAG")->Value);
}

TEST(FixedTexts, AreAlways64Characters) {
  for (std::size_t length = 0; length < 130; ++length) {
    const std::u16string text(length, u'x');
    EXPECT_EQ(64U, FixedText(text).size());
    EXPECT_EQ(text.substr(0, 64), TrimRight(FixedText(text)));
  }
}

// --- Records in one step

TEST_F(Store, GivesARecordOrNothing) {
  ASSERT_NE(nullptr, FindNumRecord("AB", 0, "NUM"));
  ASSERT_NE(nullptr, FindTextRecord("AB", 0, "TAG"));
  EXPECT_EQ(&ParamStore[0].Items[1].NumRecords[1], FindNumRecord("AB", 1, "BOTH"));
  EXPECT_EQ(&ParamStore[0].Items[1].TextRecords[1], FindTextRecord("AB", 1, "BOTH"));
  EXPECT_EQ(nullptr, FindNumRecord("AB", 0, "TAG"));
  EXPECT_EQ(nullptr, FindTextRecord("AB", 0, "NUM"));
  EXPECT_EQ(nullptr, FindNumRecord("AB", 2, "NUM"));
  EXPECT_EQ(nullptr, FindTextRecord("AB", -1, "TAG"));
  EXPECT_EQ(nullptr, FindNumRecord("Q", 0, "NUM"));
  EXPECT_EQ(nullptr, FindTextRecord("Q", 0, "TAG"));
}

TEST_F(Store, GivesANumberOrWhatStandsForItsAbsence) {
  EXPECT_EQ(7, NumValue("AB", 0, "NUM"));
  EXPECT_EQ(0, NumValue("AB", 0, "NONE"));
  EXPECT_EQ(-3, NumValue("AB", 0, "NONE", -3));
  EXPECT_EQ(-3, NumValue("AB", 5, "NUM", -3));
}

TEST_F(Store, IsCopiedWholeIntoItsBackup) {
  ParamStoreBackup = ParamStore;
  EXPECT_TRUE(gFParamValue("AB", 0, "NUM", u"9", SlotBoth));
  EXPECT_TRUE(gFParamValue("AB", 0, "TAG", u"new", SlotBoth));
  EXPECT_EQ(7, ParamStoreBackup[0].Items[0].NumRecords[0].Value);
  EXPECT_EQ(FixedText(u"text"), ParamStoreBackup[0].Items[0].TextRecords[0].Value);
  ParamStoreBackup.clear();
}

} // namespace
} // namespace loader::test
