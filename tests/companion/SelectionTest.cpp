// How parameters are named, singly and together.
#include "companion/Selection.h"

#include <gtest/gtest.h>

#include <set>

#include "core/Text.h"
#include "tests/companion/CompanionTest.h"

namespace loader::test {
namespace {

class Selections : public CompanionTest {
protected:
  Selections() { LoadModel("KOV"); }
  // The keys that a text names.
  static std::set<std::string> Named(std::u16string_view text) {
    const Selection selection(text);
    std::set<std::string> keys;
    for (const ParameterRef& ref : AllParameters()) {
      if (selection.Names(ref)) {
        keys.insert(KeyOf(ref));
      }
    }
    return keys;
  }
  static std::set<std::string> SectionsOf(std::u16string_view text) {
    std::set<std::string> sections;
    for (const std::string& key : Named(text)) {
      sections.insert(key.substr(0, 3));
    }
    return sections;
  }
};

using Keys = std::set<std::string>;

TEST_F(Selections, NameSingleParametersByKeyAndPattern) {
  EXPECT_EQ(Named(u"C02MMAX"), Keys{"C02MMAX"});
  EXPECT_EQ(Named(u"c02mmax"), Keys{"C02MMAX"});
  EXPECT_EQ(Named(u"C0?COLR").size(), 10U);
  EXPECT_EQ(Named(u"A??A1VL").size(), 30U);
  EXPECT_EQ(Named(u"C02TAG"), Keys{"C02TAG"}) << "and not TAG2";
  EXPECT_TRUE(Named(u"C02").empty());
}

TEST_F(Selections, NameAChannelWithItsAlarmsAndItsFormula) {
  EXPECT_EQ(SectionsOf(u"CH3"), (Keys{"A02", "C02"}));
  EXPECT_EQ(SectionsOf(u"channel 3"), (Keys{"A02", "C02"}));
  EXPECT_EQ(SectionsOf(u"ch19"), (Keys{"A18", "C18", "O00"})) << "19 is the first operation channel";
  EXPECT_EQ(SectionsOf(u"CH1-2"), (Keys{"A00", "A01", "C00", "C01"}));
  EXPECT_EQ(SectionsOf(u"alarms 3"), Keys{}) << "a word in the plural takes no number";
  EXPECT_EQ(SectionsOf(u"alarm 3"), Keys{"A02"});
  EXPECT_EQ(SectionsOf(u"alarms").size(), 30U);
}

TEST_F(Selections, NameGroupsMailAndNetwork) {
  EXPECT_EQ(SectionsOf(u"group 2"), (Keys{"B01", "G01", "T01"}));
  EXPECT_EQ(SectionsOf(u"グループ 2"), (Keys{"B01", "G01", "T01"}));
  const Keys mail = Named(u"mail");
  EXPECT_TRUE(mail.contains("J00RAD1"));
  EXPECT_TRUE(mail.contains("X00ETRG"));
  EXPECT_FALSE(mail.contains("J00IPA1"));
  const Keys network = Named(u"network");
  EXPECT_TRUE(network.contains("J00IPA1"));
  EXPECT_TRUE(network.contains("K00UNAM"));
  EXPECT_FALSE(network.contains("J00RAD1"));
}

TEST_F(Selections, NameByPatternsOverTheNamesOfBothLanguages) {
  EXPECT_EQ(Named(u"*警報*set value"), Keys{});
  EXPECT_EQ(Named(u"*alarm ? set value").size(), 120U);
  EXPECT_EQ(Named(u"CH 3 警報No.1 警報設定値"), Keys{"A02A1VL"});
  EXPECT_EQ(SectionsOf(u"CH19*"), (Keys{"A18", "C18", "O00"})) << "the blanks of a name need not be typed";
  EXPECT_EQ(SectionsOf(u"CH 19*"), SectionsOf(u"CH19*"));
}

TEST_F(Selections, ThatNameNothingAreFound) {
  const std::vector<Selection> selections{Selection(u"CH3"), Selection(u"CH31"), Selection(u"nonsense")};
  const Selection* nothing = FirstThatNamesNothing(selections);
  ASSERT_NE(nothing, nullptr);
  EXPECT_EQ(nothing->Text(), u"CH31");
  EXPECT_EQ(FirstThatNamesNothing({Selection(u"CH30")}), nullptr);
}

TEST(Patterns, StandForWhatTheyStandForInAShell) {
  EXPECT_TRUE(MatchesPattern(u"abc", u"a*c"));
  EXPECT_TRUE(MatchesPattern(u"abc", u"*"));
  EXPECT_TRUE(MatchesPattern(u"", u"**"));
  EXPECT_TRUE(MatchesPattern(u"abcbc", u"a*bc"));
  EXPECT_TRUE(MatchesPattern(u"ABC", u"?b?"));
  EXPECT_FALSE(MatchesPattern(u"abc", u"ab"));
  EXPECT_FALSE(MatchesPattern(u"ab", u"ab?"));
  EXPECT_FALSE(MatchesPattern(u"abd", u"a*c"));
}

// --- Names and values

class Values : public Selections {};

TEST_F(Values, ReadAsAnEngineerReadsThem) {
  const Speech speech{Language::English, false};
  EXPECT_EQ(ReadableValue({"C", 0, "MMAX"}, speech), u"500.0");
  EXPECT_EQ(NameOf({"C", 2, "MMAX"}, Language::English), u"CH 3 Measuring range, upper limit");
  SetNumValue("C", 0, "MMAX", 32767);
  EXPECT_EQ(ReadableValue({"C", 0, "MMAX"}, speech), u"32767") << "beyond the kind's limits it is its number";
}

TEST_F(Values, OfPasswordsAreHiddenUnlessAskedFor) {
  ASSERT_TRUE(gFParamValue("K", 0, "PASS", u"sesame", SlotValue));
  EXPECT_EQ(ReadableValue({"K", 0, "PASS"}, {Language::English, false}), HiddenSecret);
  EXPECT_EQ(ReadableValue({"K", 1, "PASS"}, {Language::English, false}), HiddenSecret);
  EXPECT_EQ(ReadableValue({"K", 0, "PASS"}, {Language::English, true}), u"sesame");
}

TEST(Keys_, AreThoseOfTheParameterFile) {
  EXPECT_EQ(KeyOf({"C", 2, "TAG"}), "C02TAG");
  EXPECT_EQ(RefOfKey("C02TAG "), (ParameterRef{"C", 2, "TAG"}));
  EXPECT_EQ(RefOfKey("C2TAG"), std::nullopt);
  EXPECT_EQ(RefOfKey("C02"), std::nullopt);
  EXPECT_EQ(RefOfKey("C02TAGGED"), std::nullopt);
}

TEST_F(Values, StandOnThePagesOfTheWindow) {
  EXPECT_EQ(PageOf({"C", 17, "TYPE"}), Page::Channels);
  EXPECT_EQ(PageOf({"C", 18, "TYPE"}), Page::Operations);
  EXPECT_EQ(PageOf({"J", 0, "RAD1"}), Page::Mail);
  EXPECT_EQ(PageOf({"J", 0, "IPA1"}), Page::Network);
  EXPECT_EQ(PageOf({"L", 0, "MODF"}), Page::Unshown);
  EXPECT_EQ(PageOf({"P", 0, "PILC"}), Page::Recorder);
}

} // namespace
} // namespace loader::test
