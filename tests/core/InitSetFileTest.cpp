// The shipped initial settings, both models: what the recorder's registers, the older generations, the
// parameter file and the program's profile ask of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

std::string CodeOf(const ParamSection& section) {
  return std::string(Trim(std::string_view(section.Code)));
}
std::string TagOf(std::string_view tag) {
  return std::string(Trim(tag));
}

const ParamSection& SectionOf(std::string_view code) {
  const StoreIndex index = gFFindSection(code);
  if (index == NotFound) {
    throw std::out_of_range("no section " + std::string(code));
  }
  return ParamStore[index];
}
const ParamNumRecord& NumberOf(std::string_view section, std::string_view tag) {
  const ParamNumRecord* record = FindNumRecord(section, 0, tag);
  if (record == nullptr) {
    throw std::out_of_range("no number " + std::string(section) + " " + std::string(tag));
  }
  return *record;
}
const ParamTextRecord& TextOf(std::string_view section, std::string_view tag) {
  const ParamTextRecord* record = FindTextRecord(section, 0, tag);
  if (record == nullptr) {
    throw std::out_of_range("no text " + std::string(section) + " " + std::string(tag));
  }
  return *record;
}

// Registers [first, last].
struct Registers {
  std::string section;
  int first;
  int last;
};
Registers RegistersOf(const ParamSection& section, int shift = 0) {
  const int first = section.BaseAddress + shift;
  return {CodeOf(section), first, first + section.ItemWords * section.ItemCount - 1};
}
bool Meet(const Registers& a, const Registers& b) {
  return a.first <= b.last && b.first <= a.last;
}

// Words [first, last] of an item that a tag takes.
struct Words {
  std::string tag;
  int first;
  int last;
};
std::vector<Words> WordsOf(const ParamSection& section) {
  std::vector<Words> words;
  for (const ParamTextRecord& text : section.Items[0].TextRecords) {
    words.push_back({TagOf(text.Tag), text.WordOffset, text.WordOffset + text.ByteLength / 2 - 1});
  }
  for (const ParamNumRecord& number : section.Items[0].NumRecords) {
    words.push_back({TagOf(number.Tag), number.WordOffset, number.WordOffset});
  }
  return words;
}

class InitSetFile : public testing::TestWithParam<const char*> {
protected:
  void SetUp() override { StartWithModel(platform, GetParam()); }
  ScriptedPlatform platform;
};

INSTANTIATE_TEST_SUITE_P(Models, InitSetFile, testing::Values("KOV", "RUG"),
                         [](const testing::TestParamInfo<const char*>& model) { return model.param; });

// --- Every section and tag

struct SectionTags {
  const char* code;
  std::vector<std::string> texts;
  std::vector<std::string> numbers;
};

std::vector<std::string> Numbered(std::string_view stem, int first, int last, int digits = 1) {
  std::vector<std::string> tags;
  for (int i = first; i <= last; ++i) {
    tags.push_back(std::string(stem) + Narrow(PaddedDecimal(i, digits)));
  }
  return tags;
}
std::vector<std::string> Joined(std::initializer_list<std::vector<std::string>> lists) {
  std::vector<std::string> all;
  for (const std::vector<std::string>& list : lists) {
    all.insert(all.end(), list.begin(), list.end());
  }
  return all;
}

std::vector<SectionTags> AllTags() {
  std::vector<std::string> alarms;
  for (const char* alarm : {"A1", "A2", "A3", "A4"}) {
    for (const char* part : {"TY", "VL", "HC", "RL"}) {
      alarms.push_back(std::string(alarm) + part);
    }
  }
  std::vector<std::string> formula;
  for (const char* stem :
       {"OP1", "OP2", "OP3", "OP4", "S11", "S12", "S13", "S14", "S21", "S22", "S23", "S24"}) {
    formula = Joined({formula, Numbered(stem, 1, 3)});
  }
  return {
      {"C",
       {"TAG", "TAG2", "STAG"},
       {"TYPE", "SUBC", "FILT", "UNIT", "SCAL", "MMIN", "MMAX", "SMIN", "SMAX", "POIN", "PVSI", "PVKA",
        "NIPO", "RECO", "RMIN", "RMAX", "DSPM", "ZMB1", "ZMB2", "ZMP1", "ZMP2", "TAIS", "COLR", "ROOT",
        "RECM", "OTCH", "FTIO", "SEKI", "SEUN", "SECU", "SSCL", "STYP", "SDIG", "SBAS", "SRES", "SRIN"}},
      {"A", {}, alarms},
      {"G", {"GNEM"}, Numbered("GC", 1, 10, 2)},
      {"T", {}, {"THOU", "TMCH", "TBUN", "TPVD", "TMEM"}},
      {"B", {}, {"BHOU", "BPVD", "BPVM", "BBRM"}},
      {"H", {}, {"KLOC", "BETU", "MSMP", "SSMP", "ALMH", "ALML", "ASBY", "FSTN", "FZTI",
                 "FPOI", "FTIR", "FTIT", "BAAL", "SHOU", "CFFL", "PAS1", "PAS2", "RPAS",
                 "COMS", "COMB", "COMP", "TIMF", "TIMS", "CMPL", "FIFO", "LANG", "LOGO",
                 "TBKC", "HBKC", "YEAR", "MONT", "DAYS", "HOUR", "MINT"}},
      {"M", {"MESS"}, {"MCOR", "MITI", "MTM1", "MTM2", "MTM3"}},
      {"U", {"UNIT"}, {}},
      {"D", {}, {"DIKI"}},
      {"E",
       {},
       {"TTSH", "TTSM", "TTEH", "TTEM", "TSBA", "TCYC", "TWDY", "TDAY", "TSTR", "TSTO", "TEXT", "TIMH",
        "TIMA", "TIMT"}},
      {"N", {}, {"CONS", "CONP"}},
      {"O", {}, formula},
      {"J", Joined({{"SDAD", "SDNM"}, Numbered("RAD", 1, 8)}),
       Joined({{"ETHE", "MAIL", "FTPF", "FTPA", "WEBF", "WEBA", "WEBM", "MOTC"},
               Numbered("IPA", 1, 4),
               Numbered("SUB", 1, 4),
               Numbered("DEF", 1, 4),
               Numbered("SIP", 1, 4)})},
      {"K", {"UNAM", "PASS"}, {"LVEL"}},
      {"X", {"ECM1", "ECM2", "ETTL"}, {"ETRG", "ETG1", "ETG2", "EADD", "EPVA"}},
      {"L", {}, {"MODF", "RECY", "RETR", "TIOU", "DELT", "RETN"}},
      {"Y", {}, {"SLST", "SLRA", "SLRN"}},
      {"P", {"PILC", "SNO.", "PVER"}, {}},
      {"I", {}, {"DCOL", "DREM", "DREO", "DRMN", "DRMX"}},
      {"Z", {}, {"TOTA", "TSTM", "TSIG"}},
      {"R", {}, {}},
      {"F", {}, {"FIX"}},
      {"S", {}, {"SYS1"}},
  };
}

template <typename Record> std::vector<std::string> TagsOf(const std::vector<Record>& records) {
  std::vector<std::string> tags;
  std::ranges::transform(records, std::back_inserter(tags),
                         [](const Record& record) { return TagOf(record.Tag); });
  return tags;
}

TEST_P(InitSetFile, HoldsEverySectionAndTagAndNoOther) {
  const std::vector<SectionTags> all = AllTags();
  ASSERT_EQ(all.size(), ParamStore.size());
  std::size_t rows = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i].code, CodeOf(ParamStore[i]));
    EXPECT_EQ(all[i].texts, TagsOf(ParamStore[i].Items[0].TextRecords)) << all[i].code;
    EXPECT_EQ(all[i].numbers, TagsOf(ParamStore[i].Items[0].NumRecords)) << all[i].code;
    rows += all[i].texts.size() + all[i].numbers.size();
  }
  EXPECT_EQ(236U, rows);
}

// --- Addresses and sizes

TEST_P(InitSetFile, KeepsEverySectionInsideItsRegisterTable) {
  for (const ParamSection& section : ParamStore) {
    const Registers registers = RegistersOf(section);
    const bool readOnly = section.BaseAddress < 40000;
    EXPECT_LE(readOnly ? 30001 : 40001, registers.first) << section.Code;
    EXPECT_GE(readOnly ? 39999 : 49999, registers.last) << section.Code;
  }
}

TEST_P(InitSetFile, LetsOnlyWhatIsNeverWrittenBeReadOnly) {
  for (const ParamSection& section : ParamStore) {
    const bool readOnly = CodeOf(section) == "P" || CodeOf(section) == "S";
    EXPECT_EQ(readOnly, section.BaseAddress < 40001) << section.Code;
  }
}

TEST_P(InitSetFile, KeepsItsSectionsApart) {
  for (std::size_t i = 0; i < ParamStore.size(); ++i) {
    for (std::size_t j = i + 1; j < ParamStore.size(); ++j) {
      EXPECT_FALSE(Meet(RegistersOf(ParamStore[i]), RegistersOf(ParamStore[j])))
          << ParamStore[i].Code << "and " << ParamStore[j].Code;
    }
  }
}

TEST_P(InitSetFile, FitsEverySectionIntoTheBlockBuffer) {
  for (const ParamSection& section : ParamStore) {
    EXPECT_GE(5000, section.ItemWords * section.ItemCount) << section.Code;
    EXPECT_LE(1, section.ItemWords) << section.Code;
  }
  EXPECT_GE(69, SectionOf("C").ItemWords); // 72 channels
}

TEST_P(InitSetFile, CountsItemsInTwoDigits) {
  for (const ParamSection& section : ParamStore) {
    EXPECT_GE(100, section.ItemCount) << section.Code;
  }
}

TEST_P(InitSetFile, KeepsEveryTagInsideItsItem) {
  for (const ParamSection& section : ParamStore) {
    for (const Words& words : WordsOf(section)) {
      EXPECT_LE(0, words.first) << section.Code << words.tag;
      EXPECT_GT(section.ItemWords, words.last) << section.Code << words.tag;
    }
  }
}

TEST_P(InitSetFile, KeepsTheTagsOfAnItemApart) {
  for (const ParamSection& section : ParamStore) {
    std::map<int, std::string> taken;
    for (const Words& words : WordsOf(section)) {
      for (int word = words.first; word <= words.last; ++word) {
        EXPECT_TRUE(taken.emplace(word, words.tag).second)
            << section.Code << words.tag << " and " << taken[word];
      }
    }
  }
}

TEST_P(InitSetFile, GivesEachTextWholeRegistersAndRoomForItsDefault) {
  for (const ParamSection& section : ParamStore) {
    for (const ParamTextRecord& text : section.Items[0].TextRecords) {
      EXPECT_EQ(0, text.ByteLength % 2) << section.Code << text.Tag;
      EXPECT_LT(0, text.ByteLength) << section.Code << text.Tag;
      EXPECT_GE(64, text.ByteLength) << section.Code << text.Tag;
      for (const ParamItem& item : section.Items) {
        const ParamTextRecord& copy = *std::ranges::find(
            item.TextRecords, text.Tag, [](const ParamTextRecord& record) { return record.Tag; });
        EXPECT_GE(static_cast<std::size_t>(text.ByteLength), CodePageLength(TrimRight(copy.DefaultValue)))
            << section.Code << text.Tag;
      }
    }
  }
}

// --- Counts

TEST_P(InitSetFile, HasTheItemCountsOfTheProfile) {
  const int channels = Profile.ChannelCount + Profile.OperationChannelCount;
  const std::map<std::string, int> counts = {
      {"C", channels},
      {"A", channels},
      {"G", Profile.GroupCount},
      {"T", Profile.GroupCount},
      {"B", Profile.GroupCount},
      {"M", Profile.MessageCount},
      {"U", Profile.UnitCount},
      {"N", Profile.ConstantCount},
      {"O", Profile.OperationChannelCount},
      {"Y", Profile.CommInputCount},
      {"I", Profile.DigitalInputCount},
      {"K", 8},
      {"X", 8},
      {"D", 16}, // on both models: inputs 11 to 16 are in the store of the smaller one and hidden
      {"H", 1},
      {"J", 1},
      {"P", 1},
      {"L", 1},
      {"E", 1},
      {"Z", 1},
      {"R", 1},
      {"F", 1},
      {"S", 1},
  };
  ASSERT_EQ(counts.size(), ParamStore.size());
  for (const ParamSection& section : ParamStore) {
    EXPECT_EQ(counts.at(CodeOf(section)), section.ItemCount) << section.Code;
    EXPECT_EQ(static_cast<std::size_t>(section.ItemCount), section.Items.size()) << section.Code;
  }
  EXPECT_LE(Profile.DigitalInputCount, SectionOf("D").ItemCount);
  EXPECT_EQ(Profile.OtherChannelListSize, channels);
  EXPECT_EQ(Profile.GroupChannelLast + 1, static_cast<int>(SectionOf("G").Items[0].NumRecords.size()));
}

// --- Positions that older generations and commands rely on

// Generation 2 holds these four at words 35, 40, 41 and 42 of a channel, whatever the file says: nothing that
// it reads or writes where the file says may lie there.
TEST_P(InitSetFile, KeepsTheOldTotalizerWordsOfAChannelFree) {
  EXPECT_LE(43, SectionOf("C").ItemWords);
  const std::set<std::string> notAtTheirOwnPosition = {"TAG2", "STAG", "RECM", "OTCH", "SSCL", "SDIG", "SBAS",
                                                       "SRES", "FTIO", "SEUN", "SECU", "SEKI", "STYP"};
  for (const Words& words : WordsOf(SectionOf("C"))) {
    if (notAtTheirOwnPosition.contains(words.tag)) {
      continue;
    }
    for (const int old : {35, 40, 41, 42}) {
      EXPECT_FALSE(words.first <= old && old <= words.last) << words.tag << " on word " << old;
    }
  }
}

// Generation 2 keeps hours and minutes in words 6 to 9 of section E, the switches of section Z in 0, 1 and 4.
TEST_P(InitSetFile, ReadsTheOldTimesWhereOlderRecordersKeepThem) {
  EXPECT_LE(10, SectionOf("E").ItemWords);
  EXPECT_EQ(6, NumberOf("E", "TTSH").WordOffset);
  EXPECT_EQ(7, NumberOf("E", "TTSM").WordOffset);
  EXPECT_EQ(8, NumberOf("E", "TTEH").WordOffset);
  EXPECT_EQ(9, NumberOf("E", "TTEM").WordOffset);
}

// Generation 0 lacks the six clock words: its block starts six registers later, and its own positions of
// these four are the same registers.
TEST_P(InitSetFile, KeepsTheOldestGeneralSettingsOnTheirRegisters) {
  constexpr int Shift = 6;
  EXPECT_EQ(4 / 2 + Shift, NumberOf("H", "MSMP").WordOffset);
  EXPECT_EQ(6 / 2 + Shift, NumberOf("H", "SSMP").WordOffset);
  EXPECT_EQ(36 / 2 + Shift, NumberOf("H", "ALMH").WordOffset);
  EXPECT_EQ(38 / 2 + Shift, NumberOf("H", "ALML").WordOffset);
  for (const int old : {2, 3, 18, 19}) {
    EXPECT_NE(old, NumberOf("H", "KLOC").WordOffset);
    EXPECT_NE(old, NumberOf("H", "BETU").WordOffset);
  }
  EXPECT_LT(38 / 2, SectionOf("H").ItemWords);
}

TEST_P(InitSetFile, HasTheClockInSixRegistersFromTheStartOfItsSection) {
  int word = 0;
  for (const char* tag : {"TIMS", "YEAR", "MONT", "DAYS", "HOUR", "MINT"}) {
    EXPECT_EQ(word++, NumberOf("H", tag).WordOffset) << tag;
  }
}

TEST_P(InitSetFile, HasTheStoreCommandAtTheStartOfItsSection) {
  EXPECT_EQ(0, NumberOf("F", "FIX").WordOffset);
}

struct Shift {
  const char* section;
  int words;
  int firstGeneration;
  int lastGeneration;
};
constexpr Shift Shifts[] = {{"M", -22, 0, 2}, {"D", 5, 0, 2}, {"H", 6, 0, 0}, {"E", 60, 2, 2}};

TEST(InitSetFiles, KeepTheShiftedBlocksOfOlderGenerationsInRangeAndApart) {
  ScriptedPlatform platform;
  StartWithModel(platform, "KOV"); // the other model has no older generation
  for (int generation = 0; generation <= 2; ++generation) {
    std::vector<Registers> blocks;
    for (const ParamSection& section : ParamStore) {
      int shift = 0;
      for (const Shift& row : Shifts) {
        const bool holds = generation >= row.firstGeneration && generation <= row.lastGeneration;
        shift = CodeOf(section) == row.section && holds ? row.words : shift;
      }
      blocks.push_back(RegistersOf(section, shift));
      if (shift != 0) {
        EXPECT_LE(40001, blocks.back().first) << section.Code << generation;
        EXPECT_GE(49999, blocks.back().last) << section.Code << generation;
      }
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      for (std::size_t j = i + 1; j < blocks.size(); ++j) {
        EXPECT_FALSE(Meet(blocks[i], blocks[j]))
            << blocks[i].section << " and " << blocks[j].section << " of generation " << generation;
      }
    }
  }
}

TEST(InitSetFiles, IdentifyEitherModelAtTheSamePlace) {
  ScriptedPlatform platform;
  StartWithModel(platform, "KOV");
  const ParamStoreTable kov = ParamStore;
  StartWithModel(platform, "RUG");
  for (const char* code : {"P", "F", "S"}) {
    const ParamSection& ofKov =
        *std::ranges::find_if(kov, [&](const ParamSection& section) { return CodeOf(section) == code; });
    const ParamSection& ofRug = SectionOf(code);
    EXPECT_EQ(ofKov.BaseAddress, ofRug.BaseAddress) << code;
    EXPECT_EQ(ofKov.ItemWords, ofRug.ItemWords) << code;
    EXPECT_EQ(ofKov.ItemCount, ofRug.ItemCount) << code;
    const std::vector<Words> kovWords = WordsOf(ofKov);
    const std::vector<Words> rugWords = WordsOf(ofRug);
    ASSERT_EQ(kovWords.size(), rugWords.size()) << code;
    for (std::size_t i = 0; i < kovWords.size(); ++i) {
      EXPECT_EQ(kovWords[i].tag, rugWords[i].tag);
      EXPECT_EQ(kovWords[i].first, rugWords[i].first) << kovWords[i].tag;
      EXPECT_EQ(kovWords[i].last, rugWords[i].last) << kovWords[i].tag;
    }
  }
}

// --- The order of rows

int RowOf(std::string_view section, std::string_view tag) {
  const StoreIndex index = gFFindNumTag(gFFindSection(section), 0, tag);
  EXPECT_NE(NotFound, index) << section << tag;
  return index;
}

// A parameter file holds its lines in this order, and the reader lets later lines win.
TEST_P(InitSetFile, PutsWhatTheParameterFileSetsByRuleBeforeWhatItMustNotOverwrite) {
  EXPECT_LT(RowOf("C", "SEKI"), RowOf("C", "STYP"));
  for (const char* old : {"TTSH", "TTSM", "TTEH", "TTEM"}) {
    EXPECT_LT(RowOf("E", old), RowOf("E", "TSTR")) << old;
    EXPECT_LT(RowOf("E", old), RowOf("E", "TSTO")) << old;
  }
  EXPECT_LT(RowOf("E", "TTSH"), RowOf("E", "TTSM"));
  EXPECT_LT(RowOf("E", "TTEH"), RowOf("E", "TTEM"));
}

// The writers to older recorders judge a channel number by the record before it.
TEST_P(InitSetFile, PutsATriggerDirectlyBeforeItsNumber) {
  EXPECT_EQ(RowOf("M", "MTM1") + 1, RowOf("M", "MTM2"));
  EXPECT_EQ(RowOf("X", "ETRG") + 1, RowOf("X", "ETG1"));
}

// --- Defaults

TEST_P(InitSetFile, HasDefaultsInsideTheirLimits) {
  for (const ParamSection& section : ParamStore) {
    for (const ParamItem& item : section.Items) {
      for (const ParamNumRecord& number : item.NumRecords) {
        EXPECT_LE(number.MinValue, number.DefaultValue) << section.Code << number.Tag;
        EXPECT_GE(number.MaxValue, number.DefaultValue) << section.Code << number.Tag;
      }
    }
  }
}

TEST_P(InitSetFile, StartsAChannelAsAThermocoupleThatCanBeApplied) {
  EXPECT_EQ(1, NumberOf("C", "TYPE").DefaultValue);
  EXPECT_EQ(0, NumberOf("C", "UNIT").DefaultValue);
  EXPECT_EQ(1, NumberOf("C", "POIN").DefaultValue);
  for (const char* tag : {"MMIN", "MMAX"}) {
    EXPECT_LE(-1000, NumberOf("C", tag).DefaultValue) << tag;
    EXPECT_GE(5500, NumberOf("C", tag).DefaultValue) << tag;
  }
}

// The only totalizer kind, and the report cycle with it, that an opened file leaves as they are.
TEST_P(InitSetFile, StartsTheTotalizerAsAParameterFileLeavesIt) {
  EXPECT_EQ(1, NumberOf("C", "SEKI").DefaultValue);
  EXPECT_EQ(15, NumberOf("C", "STYP").DefaultValue);
}

TEST_P(InitSetFile, HasTheTextLengthsThatTheScreensAllow) {
  EXPECT_EQ(16, TextOf("C", "TAG").ByteLength);
  EXPECT_EQ(16, TextOf("G", "GNEM").ByteLength);
  EXPECT_EQ(16, TextOf("K", "UNAM").ByteLength);
}

TEST_P(InitSetFile, NamesChannelsAndGroups) {
  EXPECT_EQ(FixedText(u"CH 01"), FindTextRecord("C", 0, "TAG")->Value);
  EXPECT_EQ(FixedText(u"CH 19"), FindTextRecord("C", 18, "STAG")->Value);
  EXPECT_EQ(FixedText(u"GROUP1"), FindTextRecord("G", 0, "GNEM")->Value);
}

TEST_P(InitSetFile, DoesNotAcceptARecorderOfAnotherMode) {
  EXPECT_EQ(0, ModeCheckOff);
}

} // namespace
} // namespace loader::test
