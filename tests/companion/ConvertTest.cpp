// The change of model as a report: the same as the window's, with names and texts of both models.
#include "companion/Convert.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/UserUnits.h"
#include "simulator/Plant.h"
#include "tests/companion/CompanionTest.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

const Speech English{Language::English, false};

class Conversions : public CompanionTest {
protected:
  template <typename Change> static WholeSetUp Changed(std::string_view model, const Change& change) {
    WholeSetUp setUp = InitialSetUp(model, Language::English);
    const SetUpInForce inForce(setUp);
    change();
    UpdateUserUnitNames();
    return CopyOfSetUp();
  }
  static WholeSetUp Plant(std::string_view model) {
    return Changed(model, [&] {
      ParamStore =
          simulator::PlantSetup(ParamStore, model == "KOV" ? simulator::Model::Kov : simulator::Model::Rug);
    });
  }
  static Conversion Converted(const WholeSetUp& old, std::string_view model, const Speech& speech = English) {
    return ConvertSetUp(old, InitialSetUp(model, Language::English), speech);
  }
  static const ConversionLine& The(const Conversion& conversion, std::string_view key) {
    const auto found = std::ranges::find_if(
        conversion.lines, [&](const ConversionLine& line) { return KeyOf(line.ref) == key; });
    if (found == conversion.lines.end()) {
      throw std::runtime_error("not told: " + std::string(key));
    }
    return *found;
  }
};

// The steps of the window: the store of the old model as the backup, the new one's initial settings, the
// conversion.
TEST_F(Conversions, MakeWhatTheWindowMakesAndTellAllOfIt) {
  for (const std::string from : {"KOV", "RUG"}) {
    const std::string to = from == "KOV" ? "RUG" : "KOV";
    const WholeSetUp old = Plant(from);
    Conversion conversion = Converted(old, to);

    ParamStoreBackup = old.store;
    LoadModel(to);
    const ConversionReport report = to == "RUG" ? ConvertToRug() : ConvertToKov();
    EXPECT_TRUE(conversion.setUp.store == ParamStore) << from;
    EXPECT_EQ(conversion.setUp.modelCode, to);
    ASSERT_EQ(conversion.lines.size(), report.size());
    EXPECT_GT(report.size(), 100U);
    for (const ConvertedParameter& parameter : report) {
      EXPECT_EQ(std::ranges::count(conversion.lines, parameter, &ConversionLine::parameter), 1);
    }
    std::size_t counted = 0;
    for (const Outcome outcome : OutcomesByLoss) {
      counted += conversion.Count(outcome);
    }
    EXPECT_EQ(counted, report.size());
  }
}

TEST_F(Conversions, LeaveTheSetUpInForceAndTheBackupAlone) {
  LoadModel("KOV");
  Put("C", 0, "COLR", 7);
  ParamStoreBackup = {};
  const ParamStoreTable before = ParamStore;
  EXPECT_EQ(Converted(Plant("RUG"), "KOV").setUp.modelCode, "KOV");
  EXPECT_TRUE(ParamStore == before);
  EXPECT_TRUE(ParamStoreBackup.empty());
  EXPECT_EQ(ModelCode, "KOV");
}

TEST_F(Conversions, TellBothValuesByTheRulesOfTheirModels) {
  const Conversion conversion = Converted(Changed("KOV",
                                                  [] {
                                                    Put("C", 2, "UNIT", 156); // the first user unit of both
                                                    PutText("U", 0, "UNIT", "t/h");
                                                    Put("G", 0, "GC01", 19);
                                                    PutText("C", 18, "TAG", "Mean");
                                                  }),
                                          "RUG");
  EXPECT_EQ(The(conversion, "C02UNIT").newText, u"t/h");
  const ConversionLine& slot = The(conversion, "G00GC01");
  EXPECT_EQ(slot.parameter.outcome, Outcome::Renumbered);
  EXPECT_NE(slot.oldText, slot.newText);
  const ConversionLine& tag = The(conversion, "C18TAG");
  EXPECT_EQ(tag.oldName, u"CH 19 Tag");
  EXPECT_EQ(tag.newName, u"CH 37 Tag");
  EXPECT_EQ(tag.page, Page::Operations);
  EXPECT_EQ(ShownOld(tag), u"\"Mean\"");
  EXPECT_EQ(ShownNew(tag), u"\"Mean\"");
}

TEST_F(Conversions, TellWhatTheNewModelDoesNotHave) {
  const Conversion conversion = Converted(Changed("RUG", [] { PutText("C", 25, "TAG", "lost"); }), "KOV");
  const ConversionLine& line = The(conversion, "C25TAG");
  EXPECT_EQ(line.parameter.outcome, Outcome::Dropped);
  EXPECT_FALSE(line.newRef);
  EXPECT_EQ(ShownNew(line), u"");
}

TEST_F(Conversions, HideSecrets) {
  const WholeSetUp old = Changed("KOV", [] { PutText("K", 0, "PASS", "sesame"); });
  const Conversion conversion = Converted(old, "RUG");
  EXPECT_EQ(ShownOld(The(conversion, "K00PASS")), HiddenSecret);
  EXPECT_EQ(ShownNew(The(conversion, "K00PASS")), HiddenSecret);
  const Conversion open = Converted(old, "RUG", {Language::English, true});
  EXPECT_EQ(ShownNew(The(open, "K00PASS")), u"\"sesame\"");
}

// What was at its default is not told: it is at the new model's. Those are the same but for these.
TEST_F(Conversions, PassOverDefaultsThatDifferOnlyInTagsAndColoursOfOperationChannels) {
  WholeSetUp kov = InitialSetUp("KOV", Language::English);
  WholeSetUp rug = InitialSetUp("RUG", Language::English);
  const int moved = rug.profile.ChannelCount - kov.profile.ChannelCount;
  std::set<std::string> differing;
  for (const ParameterRef& ref : WithSetUp(kov, AllParameters)) {
    const bool operation = (ref.section == "C" || ref.section == "A") && ref.item >= kov.profile.ChannelCount;
    const ParameterRef inRug{ref.section, operation ? ref.item + moved : ref.item, ref.tag};
    if (WithSetUp(kov, [&] { return ValueOf(ref); }) != WithSetUp(rug, [&] { return ValueOf(inRug); })) {
      EXPECT_TRUE(operation) << KeyOf(ref);
      differing.insert(ref.section + ref.tag);
    }
  }
  EXPECT_EQ(differing, (std::set<std::string>{"CTAG", "CSTAG", "CCOLR"}));
}

TEST_F(Conversions, OfInitialSettingsTellNothing) {
  EXPECT_TRUE(Converted(InitialSetUp("KOV", Language::English), "RUG").lines.empty());
  EXPECT_TRUE(Converted(InitialSetUp("RUG", Language::English), "KOV").lines.empty());
}

} // namespace
} // namespace loader::test
