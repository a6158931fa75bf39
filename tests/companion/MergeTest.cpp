// What of one set-up is taken over into another.
#include "companion/Merge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/Text.h"
#include "core/UserUnits.h"
#include "simulator/Plant.h"
#include "tests/companion/CompanionTest.h"

namespace loader::test {
namespace {

class Merges : public CompanionTest {
protected:
  Merges() : other(Initial("KOV")) {
    LoadModel("KOV");
    UpdateUserUnitNames();
  }

  static WholeSetUp Initial(std::string_view model) { return InitialSetUp(model, Language::English); }
  static WholeSetUp Plant(std::string_view model) {
    WholeSetUp plant = Initial(model);
    WithSetUp(plant, [&] {
      ParamStore =
          simulator::PlantSetup(ParamStore, model == "KOV" ? simulator::Model::Kov : simulator::Model::Rug);
      UpdateUserUnitNames();
      return 0;
    });
    return plant;
  }
  void There(std::string_view section, int item, std::string_view tag, std::int16_t value) {
    WithSetUp(other, [&] { return SetNumValue(section, item, tag, value); });
  }
  MergeReport Take(const std::vector<std::u16string>& only, const std::vector<std::u16string>& ignore = {}) {
    std::vector<Selection> names(only.begin(), only.end());
    std::vector<Selection> not_names(ignore.begin(), ignore.end());
    return MergeFrom(other, names, not_names, {Language::English, false});
  }
  static std::string Refusals(const MergeReport& report) {
    std::string all;
    for (const Refusal& refusal : report.edits.refusals) {
      all += (all.empty() ? "" : "; ") + KeyOf(refusal.ref) + ": " + ToUtf8(refusal.reason);
    }
    return all;
  }

  WholeSetUp other;
};

TEST_F(Merges, TakeWhatIsNamedAndNothingElse) {
  There("A", 2, "A1VL", 800);
  There("A", 3, "A1VL", 900);
  There("C", 2, "COLR", 9);
  const MergeReport report = Take({u"alarms"}, {u"A03*"});
  EXPECT_EQ(Refusals(report), "");
  ASSERT_EQ(report.edits.changes.size(), 1U);
  EXPECT_EQ(report.edits.changes[0].ref, (ParameterRef{"A", 2, "A1VL"}));
  EXPECT_EQ(report.edits.changes[0].textBefore, u"0.0");
  EXPECT_EQ(report.edits.changes[0].textAfter, u"80.0");
  EXPECT_EQ(NumValue("A", 2, "A1VL"), 800);
  EXPECT_EQ(NumValue("A", 3, "A1VL"), 0);
  EXPECT_EQ(NumValue("C", 2, "COLR"), 3);
  EXPECT_GT(report.edits.already.size(), 400U);
}

TEST_F(Merges, OfAWholeChannelTakeItsKindAlong) {
  other = Plant("KOV");
  EXPECT_EQ(Refusals(Take({u"CH1-18", u"unit"})), "");
  for (int channel = 0; channel < Profile.ChannelCount; ++channel) {
    const int there = WithSetUp(other, [&] { return NumValue("C", channel, "TYPE", -1); });
    EXPECT_EQ(NumValue("C", channel, "TYPE"), there) << channel;
  }
}

class WholeMerges : public Merges, public testing::WithParamInterface<const char*> {};

TEST_P(WholeMerges, MakeOneSetUpOfTheOther) {
  LoadModel(GetParam());
  other = Plant(GetParam());
  const MergeReport report = Take({u"*"});
  EXPECT_EQ(Refusals(report), "");
  EXPECT_FALSE(report.edits.changes.empty());
  const auto isLeft = [&](const ParameterRef& ref) {
    return std::ranges::find(report.left, ref, &Refusal::ref) != report.left.end();
  };
  for (const ParameterRef& ref : AllParameters()) {
    if (!isLeft(ref)) {
      const auto here = ValueOf(ref);
      EXPECT_TRUE(here == WithSetUp(other, [&] { return ValueOf(ref); })) << KeyOf(ref);
    }
  }
  EXPECT_TRUE(isLeft({"H", 0, "YEAR"}));
  EXPECT_TRUE(isLeft({"F", 0, "FIX"}));
  EXPECT_TRUE(isLeft({"P", 0, "PILC"}));
  EXPECT_FALSE(isLeft({"C", 0, "TAG"}));
  EXPECT_EQ(isLeft({"E", 0, "TTSM"}), ModelCode == "KOV") << "a file loses it, and RUG's plant has none";
}

INSTANTIATE_TEST_SUITE_P(Models, WholeMerges, testing::Values("KOV", "RUG"));

TEST_F(Merges, RefuseAValueThatWouldReadOtherwise) {
  There("C", 2, "TYPE", 32);
  There("C", 2, "SCAL", 1);
  There("C", 2, "POIN", 2);
  There("A", 2, "A1VL", 800);
  const ParamStoreTable before = ParamStore;
  EXPECT_EQ(Refusals(Take({u"A02A1VL"})), "A02A1VL: it is 8.00 there and would be 80.0 here");
  EXPECT_TRUE(ParamStore == before);
  SetNumValue("A", 2, "A1VL", 800);
  EXPECT_EQ(Refusals(Take({u"A02A1VL"})), "A02A1VL: it is 8.00 there and would be 80.0 here")
      << "the same number is not the same value";
}

TEST_F(Merges, RefuseAUnitOfAnotherName) {
  WithSetUp(other, [] {
    SetText(*FindTextRecord("U", 0, "UNIT"), u"Nm3", SlotValue);
    SetNumValue("C", 18, "UNIT", static_cast<std::int16_t>(UserUnitIndex(1, Profile.UnitCount)));
    UpdateUserUnitNames();
    return 0;
  });
  const std::string refusals = Refusals(Take({u"C18UNIT"}));
  EXPECT_TRUE(refusals.starts_with("C18UNIT: it is Nm3 there and would be ")) << refusals;
  EXPECT_EQ(Refusals(Take({u"C18UNIT", u"unit 1"})), "");
}

TEST_F(Merges, RefuseWhatTheChannelHereCannotTake) {
  There("C", 2, "TYPE", 4);
  There("A", 2, "A1VL", 100);
  There("C", 2, "SMAX", 4000);
  There("C", 2, "RMAX", 4000);
  EXPECT_EQ(Refusals(Take({u"CH3"})), "");
  There("C", 2, "TYPE", 32);
  There("C", 2, "SCAL", 1);
  EXPECT_EQ(Refusals(Take({u"C02OTCH"})), "") << "it is so already";
  There("C", 2, "OTCH", 5);
  EXPECT_EQ(
      Refusals(Take({u"C02OTCH"})),
      "C02OTCH: with this input kind (T熱電対), scaling and logarithm the screen does not let it be changed");
}

TEST_F(Merges, RefuseAKindBesideAnother) {
  There("C", 0, "TYPE", 20);
  There("C", 0, "SMAX", 4000);
  There("C", 0, "RMAX", 4000);
  const std::string refusals = Refusals(Take({u"CH1"}));
  EXPECT_TRUE(refusals.starts_with("C00TYPE: the input kind of CH 2")) << refusals;
}

TEST_F(Merges, OfFormulasKeepOneAverageInEach) {
  constexpr std::int16_t Average = 12 * 256;
  There("O", 0, "OP11", Average);
  There("O", 0, "OP12", Average + 1);
  SetNumValue("O", 0, "OP12", Average + 1);
  EXPECT_EQ(Refusals(Take({u"O00OP11"})), "O00OP11: a formula takes one AVG or SUM");
  EXPECT_EQ(Refusals(Take({u"O01*"})), "");
}

TEST_F(Merges, OfTwoModelsAreNone) {
  other = Initial("RUG");
  EXPECT_THROW((void)Take({u"alarms"}), Undone);
}

TEST_F(Merges, HideSecrets) {
  There("H", 0, "PAS1", 1234);
  const MergeReport report = Take({u"H00PAS1"});
  ASSERT_EQ(report.edits.changes.size(), 1U);
  EXPECT_EQ(report.edits.changes[0].textAfter, HiddenSecret);
  EXPECT_EQ(NumValue("H", 0, "PAS1"), 1234);
}

} // namespace
} // namespace loader::test
