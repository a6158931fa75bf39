// The meaning table against the shipped initial settings: every parameter has its row, every row a parameter.
#include "meaning/Meaning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "meaning/ParameterText.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

struct Parameter {
  std::string section;
  std::string tag;
  bool text;
};

class MeaningTable : public ::testing::TestWithParam<const char*> {
protected:
  void SetUp() override { StartWithModel(platform, GetParam()); }

  static std::vector<Parameter> AllParameters() {
    std::vector<Parameter> all;
    for (const ParamSection& section : ParamStore) {
      const std::string code(Trim(std::string_view(section.Code)));
      for (const ParamTextRecord& record : section.Items.front().TextRecords) {
        all.push_back({code, std::string(Trim(std::string_view(record.Tag))), true});
      }
      for (const ParamNumRecord& record : section.Items.front().NumRecords) {
        all.push_back({code, std::string(Trim(std::string_view(record.Tag))), false});
      }
    }
    return all;
  }
  ScriptedPlatform platform;
};
INSTANTIATE_TEST_SUITE_P(Models, MeaningTable, ::testing::Values("KOV", "RUG"),
                         [](const auto& tested) { return std::string(tested.param); });

// A failure here names a parameter of data/InitSet.Ini without a row in meaning/MeaningTable.cpp.
TEST_P(MeaningTable, HasARowForEveryParameter) {
  EXPECT_GT(AllParameters().size(), 200U);
  for (const Parameter& parameter : AllParameters()) {
    EXPECT_NE(nullptr, FindMeaning(parameter.section, parameter.tag))
        << parameter.section << " " << parameter.tag;
  }
}

TEST_P(MeaningTable, TellsTextsFromNumbers) {
  for (const Parameter& parameter : AllParameters()) {
    const MeaningRow* row = FindMeaning(parameter.section, parameter.tag);
    ASSERT_NE(nullptr, row) << parameter.section << parameter.tag;
    EXPECT_EQ(parameter.text, row->meaning.sense == Sense::Text) << parameter.section << parameter.tag;
  }
}

// No row outlives its parameter, and no two rows speak of one.
TEST_P(MeaningTable, HasNoRowWithoutAParameter) {
  std::set<const MeaningRow*> met;
  for (const Parameter& parameter : AllParameters()) {
    met.insert(FindMeaning(parameter.section, parameter.tag));
  }
  for (const MeaningRow& row : Meanings()) {
    EXPECT_TRUE(met.contains(&row)) << row.meaning.section << " " << row.meaning.tag;
  }
}

TEST_P(MeaningTable, NamesEveryParameterInBothLanguages) {
  for (const Parameter& parameter : AllParameters()) {
    const Meaning& meaning = MeaningOf(parameter.section, parameter.tag).meaning;
    for (const Language language : {Language::Japanese, Language::English}) {
      const std::u16string name = ParameterName(meaning, parameter.tag, language);
      EXPECT_FALSE(Trim(name).empty()) << parameter.section << parameter.tag;
      EXPECT_EQ(std::u16string::npos, name.find(u'#')) << ToUtf8(name);
      EXPECT_EQ(std::u16string::npos, name.find(u"  ")) << ToUtf8(name);
    }
  }
}

// Two parameters of one item with one name could not be told apart in a report.
TEST_P(MeaningTable, GivesNoTwoParametersOfAnItemOneName) {
  for (const Language language : {Language::Japanese, Language::English}) {
    std::set<std::string> names;
    for (const Parameter& parameter : AllParameters()) {
      const std::string name =
          parameter.section + ToUtf8(FullName(parameter.section, 0, parameter.tag, language));
      EXPECT_TRUE(names.insert(name).second) << parameter.tag << ": " << name;
    }
  }
}

TEST_P(MeaningTable, NamesParametersThatExistAsThoseThatAValueDependsOn) {
  const std::vector<Parameter> all = AllParameters();
  const auto exists = [&](std::string_view tag) {
    return std::ranges::any_of(all, [&](const Parameter& parameter) { return parameter.tag == tag; });
  };
  for (const MeaningRow& row : Meanings()) {
    if (!row.meaning.decidedBy.empty()) {
      EXPECT_NE(nullptr, FindNumRecord(row.meaning.section, 0, row.meaning.decidedBy)) << row.meaning.tag;
    }
    std::istringstream words{std::string(row.meaning.dependsOn)};
    for (std::string word; words >> word;) {
      const bool isTag = word.size() >= 4 && std::ranges::all_of(word.substr(0, 4), [](char character) {
                           return character >= 'A' && character <= 'Z';
                         });
      if (isTag) {
        EXPECT_TRUE(exists(word.substr(0, 4))) << row.meaning.tag << " depends on " << word;
      }
    }
  }
}

// What the record's limits admit has a text on the screens, both ends; where it has none, deliberately, it
// stands here.
TEST_P(MeaningTable, HasARowForBothLimitsOfEveryListedParameter) {
  // SEKI: the store counts to 3, the list has three. STYP: its values have gaps. LVEL: a screen offers two of
  // four. SHOU: up to 60 minutes as a number. BETU: the older list has nine rows. TYPE: 41 is a kind without
  // a name.
  const std::set<std::string> otherwise{"SEKI", "STYP", "LVEL", "SHOU", "BETU"};
  for (const Parameter& parameter : AllParameters()) {
    const MeaningRow& row = MeaningOf(parameter.section, parameter.tag);
    const Form& form = FormIn(row, View::Screen);
    const ParamNumRecord* record = FindNumRecord(parameter.section, 0, parameter.tag);
    if (form.choices == nullptr || record == nullptr || otherwise.contains(parameter.tag)) {
      continue;
    }
    EXPECT_TRUE(ValueText(*form.choices, record->MinValue).has_value()) << parameter.tag;
    EXPECT_TRUE(ValueText(*form.choices, record->MaxValue).has_value()) << parameter.tag;
    EXPECT_TRUE(ValueText(*form.choices, record->DefaultValue).has_value()) << parameter.tag;
    EXPECT_FALSE(RowOfValue(*form.choices, record->MaxValue + 1).has_value()) << parameter.tag;
  }
}

TEST(MeaningNames, TellAnAlarmAsAnEngineerWould) {
  ScriptedPlatform platform;
  StartWithModel(platform, "KOV");
  EXPECT_EQ("CH 3 警報No.1 警報設定値", ToUtf8(FullName("A", 2, "A1VL", Language::Japanese)));
  EXPECT_EQ("CH 3 Alarm 1 set value", ToUtf8(FullName("A", 2, "A1VL", Language::English)));
  EXPECT_EQ("CH 1 測定範囲 上限値", ToUtf8(FullName("C", 0, "MMAX", Language::Japanese)));
  EXPECT_EQ("グループ 2 データ10", ToUtf8(FullName("G", 1, "GC10", Language::Japanese)));
  EXPECT_EQ("送信先アドレス 8", ToUtf8(FullName("J", 0, "RAD8", Language::Japanese)));
  EXPECT_EQ("ユーザー 8 パスワード", ToUtf8(FullName("K", 7, "PASS", Language::Japanese)));
}

// Its formulas are items of a section that counts from 0; its number is that of its channel.
TEST(MeaningNames, TellAFormulaByItsChannelsNumber) {
  ScriptedPlatform platform;
  StartWithModel(platform, "KOV");
  EXPECT_EQ("CH 19 式2 項3 入力1", ToUtf8(FullName("O", 0, "S123", Language::Japanese)));
  StartWithModel(platform, "RUG");
  EXPECT_EQ("CH 38 Formula 4 term 1: function and rule", ToUtf8(FullName("O", 1, "OP41", Language::English)));
}

TEST(MeaningNames, TellAParameterWithoutARowByItsTag) {
  ScriptedPlatform platform;
  StartWithModel(platform, "KOV");
  EXPECT_EQ("CH 1 C NEWT", ToUtf8(FullName("C", 0, "NEWT", Language::Japanese)));
  EXPECT_EQ("Q NEWT", ToUtf8(FullName("Q", 4, "NEWT", Language::English)));
}

TEST(MeaningFamilies, CoverTheirDigitsAndNothingElse) {
  EXPECT_EQ(FindMeaning("A", "A1VL"), FindMeaning("A", "A4VL"));
  EXPECT_EQ(FindMeaning("C ", "TAG "), FindMeaning("C", "TAG"));
  EXPECT_NE(FindMeaning("O", "S111"), FindMeaning("O", "S211"));
  EXPECT_EQ(nullptr, FindMeaning("A", "AXVL"));
  EXPECT_EQ(nullptr, FindMeaning("A", "A1V"));
  EXPECT_EQ(nullptr, FindMeaning("A", "A1VLX"));
  EXPECT_EQ(nullptr, FindMeaning("C", ""));
  EXPECT_EQ(nullptr, FindMeaning("C", "UNAM"));
  EXPECT_THROW(static_cast<void>(MeaningOf("C", "UNAM")), std::logic_error);
}

// --- The differences

TEST(MeaningDifferences, EachSpeakOfARowAndChangeIt) {
  std::set<std::string> met;
  for (const Difference& difference : Differences()) {
    const std::string name = std::string(difference.section) + std::string(difference.tag) +
                             std::to_string(static_cast<int>(difference.view));
    EXPECT_TRUE(met.insert(name).second) << name << " twice";
    EXPECT_FALSE(difference.reason.empty()) << name;
    const auto row = std::ranges::find_if(Meanings(), [&](const MeaningRow& candidate) {
      return candidate.meaning.section == difference.section && candidate.meaning.tag == difference.tag;
    });
    ASSERT_NE(Meanings().end(), row) << name;
    const Meaning& meaning = row->meaning;
    const bool same = meaning.sense == difference.sense && meaning.choices == difference.choices &&
                      meaning.number.position == difference.number.position &&
                      meaning.number.within == difference.number.within &&
                      meaning.number.logarithm == difference.number.logarithm;
    EXPECT_FALSE(same) << name << " changes nothing";
    EXPECT_EQ(difference.choices, FormIn(*row, difference.view).choices) << name;
  }
}

TEST(MeaningDifferences, LeaveTheOtherViewsAlone) {
  const MeaningRow& total = MeaningOf("C", "SEKI");
  EXPECT_EQ(FormIn(total, View::Table).choices, FormIn(total, View::Screen).choices);
  EXPECT_NE(FormIn(total, View::Table).choices, FormIn(total, View::Sheet).choices);
}

TEST(MeaningSecrets, ArePasswordsAndNothingElse) {
  std::set<std::string_view> secrets;
  for (const MeaningRow& row : Meanings()) {
    if (row.meaning.secret) {
      secrets.insert(row.meaning.tag);
    }
  }
  EXPECT_EQ((std::set<std::string_view>{"PAS1", "PAS2", "RPAS", "PASS"}), secrets);
}

} // namespace
} // namespace loader::test
