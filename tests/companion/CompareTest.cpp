// What two set-ups differ in: the rules, one by one, and random changes.
#include "companion/Compare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "core/Text.h"
#include "core/UserUnits.h"
#include "meaning/Meaning.h"
#include "tests/companion/CompanionTest.h"
#include "tests/support/Store.h"

namespace loader::test {
namespace {

const Speech English{Language::English, false};

// Those of all items of all sections: a parameter more in data/InitSet.Ini is one more for each of its items.
constexpr std::size_t KovParameters = 2560;
constexpr std::size_t RugParameters = 5996;

class Comparisons : public CompanionTest {
protected:
  static WholeSetUp Initial(std::string_view model) { return InitialSetUp(model, Language::English); }
  // The initial settings with changes.
  template <typename Change> static WholeSetUp Changed(std::string_view model, const Change& change) {
    WholeSetUp setUp = Initial(model);
    const SetUpInForce inForce(setUp);
    change();
    UpdateUserUnitNames();
    return CopyOfSetUp();
  }
  static Comparison Compared(WholeSetUp a, WholeSetUp b, const CompareScope& scope = {},
                             const Speech& speech = English) {
    return Compare(a, b, scope, speech);
  }
  static std::set<std::string> KeysOf(const Comparison& comparison, Verdict verdict) {
    std::set<std::string> keys;
    for (const ComparedParameter& parameter : comparison.found) {
      if (parameter.verdict == verdict) {
        keys.insert(KeyOf(parameter.ref));
      }
    }
    return keys;
  }
  static const ComparedParameter& The(const Comparison& comparison, std::string_view key) {
    const auto found = std::ranges::find_if(
        comparison.found, [&](const ComparedParameter& parameter) { return KeyOf(parameter.ref) == key; });
    if (found == comparison.found.end()) {
      throw std::runtime_error("not told: " + std::string(key));
    }
    return *found;
  }
};

using Keys = std::set<std::string>;

TEST_F(Comparisons, OfASetUpWithItselfFindNothing) {
  for (const char* model : {"KOV", "RUG"}) {
    const Comparison comparison = Compared(Initial(model), Initial(model));
    EXPECT_TRUE(comparison.Equal());
    EXPECT_EQ(comparison.compared, model == std::string("KOV") ? KovParameters : RugParameters);
    EXPECT_EQ(comparison.leftOut, 0U);
  }
}

TEST_F(Comparisons, TellBothValuesAsTextsByNameAndPage) {
  const Comparison comparison = Compared(Initial("KOV"), Changed("KOV", [] {
                                           Put("C", 2, "MMAX", 8000);
                                           PutText("J", 0, "RAD1", "a@b");
                                         }));
  EXPECT_EQ(KeysOf(comparison, Verdict::Different), (Keys{"C02MMAX", "J00RAD1"}));
  EXPECT_EQ(comparison.Count(Verdict::Different), 2U);
  const ComparedParameter& range = The(comparison, "C02MMAX");
  EXPECT_EQ(range.a.name, u"CH 3 Measuring range, upper limit");
  EXPECT_EQ(ShownName(range), range.a.name);
  EXPECT_EQ(ShownValue(range, range.a), u"500.0");
  EXPECT_EQ(ShownValue(range, range.b), u"800.0");
  EXPECT_EQ(range.page, Page::Channels);
  EXPECT_EQ(The(comparison, "J00RAD1").page, Page::Mail);
  EXPECT_EQ(ShownValue(The(comparison, "J00RAD1"), The(comparison, "J00RAD1").b), u"\"a@b\"");
}

TEST_F(Comparisons, TellNumbersWhoseTextsReadTheSame) {
  // Eight addresses: the bits beyond them say nothing.
  const Comparison comparison = Compared(Changed("KOV", [] { Put("X", 0, "EADD", 1); }),
                                         Changed("KOV", [] { Put("X", 0, "EADD", 257); }));
  ASSERT_EQ(comparison.found.size(), 1U);
  const ComparedParameter& parameter = comparison.found.front();
  EXPECT_EQ(ShownValue(parameter, parameter.a), u"1 (1)");
  EXPECT_EQ(ShownValue(parameter, parameter.b), u"1 (257)");
}

TEST_F(Comparisons, TellEveryDifferenceWithTwoTextsThatDiffer) {
  const Comparison comparison =
      Compared(Initial("RUG"), Changed("RUG", [] {
                 ForEachParameter([](const ParameterRef&, const StoredParameter& stored) {
                   if (stored.number != nullptr) {
                     stored.number->Value = static_cast<std::int16_t>(stored.number->Value ^ 0x4000);
                   } else {
                     SetText(*stored.text, u" changed", SlotValue);
                   }
                 });
               }));
  EXPECT_EQ(comparison.Count(Verdict::Different), RugParameters);
  for (const ComparedParameter& parameter : comparison.found) {
    if (!parameter.hidden) {
      EXPECT_NE(ShownValue(parameter, parameter.a), ShownValue(parameter, parameter.b))
          << KeyOf(parameter.ref);
    }
  }
}

TEST_F(Comparisons, MakeBlanksVisible) {
  const Comparison comparison = Compared(Changed("KOV", [] { PutText("C", 0, "TAG", "a b"); }),
                                         Changed("KOV", [] { PutText("C", 0, "TAG", " a b"); }));
  const ComparedParameter& tag = The(comparison, "C00TAG");
  EXPECT_EQ(ShownValue(tag, tag.a), u"\"a b\"");
  EXPECT_EQ(ShownValue(tag, tag.b), u"\" a b\"");
}

TEST_F(Comparisons, TellTheSameNumberThatReadsDifferently) {
  const Comparison comparison =
      Compared(Changed("KOV", [] { Put("A", 3, "A1VL", 9200); }), Changed("KOV", [] {
                 Put("A", 3, "A1VL", 9200);
                 Put("C", 3, "SCAL", 1);
                 Put("C", 3, "POIN", 2);
                 PutText("U", 0, "UNIT", "t/h");
               }));
  EXPECT_EQ(KeysOf(comparison, Verdict::Different), (Keys{"C03SCAL", "C03POIN", "U00UNIT"}));
  const ComparedParameter& alarm = The(comparison, "A03A1VL");
  EXPECT_EQ(alarm.verdict, Verdict::ReadsDifferent);
  EXPECT_EQ(ShownValue(alarm, alarm.a), u"920.0");
  EXPECT_EQ(ShownValue(alarm, alarm.b), u"92.00");
  EXPECT_FALSE(KeysOf(comparison, Verdict::ReadsDifferent).contains("A03A2VL"))
      << "0.0 and 0.00 are the same";
}

TEST_F(Comparisons, NeverShowASecret) {
  const auto a = Changed("KOV", [] {
    PutText("K", 0, "PASS", "sesame");
    PutText("K", 1, "PASS", "same");
    Put("H", 0, "PAS1", 1234);
  });
  const auto b = Changed("KOV", [] {
    PutText("K", 0, "PASS", "mellon");
    PutText("K", 1, "PASS", "same");
  });
  const Comparison comparison = Compared(a, b);
  EXPECT_EQ(KeysOf(comparison, Verdict::Different), (Keys{"K00PASS", "H00PAS1"}));
  for (const ComparedParameter& parameter : comparison.found) {
    EXPECT_TRUE(parameter.hidden);
    EXPECT_EQ(ShownValue(parameter, parameter.a), HiddenSecret);
    EXPECT_EQ(ShownValue(parameter, parameter.b), HiddenSecret);
  }
  const Comparison open = Compared(a, b, {}, {Language::English, true});
  EXPECT_EQ(ShownValue(The(open, "K00PASS"), The(open, "K00PASS").b), u"\"mellon\"");
}

TEST_F(Comparisons, OfTwoModelsNameWhatOnlyOneHas) {
  const Comparison comparison = Compared(Initial("KOV"), Initial("RUG"));
  EXPECT_EQ(comparison.compared, RugParameters) << "all keys of KOV exist in RUG";
  EXPECT_EQ(comparison.Count(Verdict::OnlyInB), RugParameters - KovParameters);
  EXPECT_EQ(comparison.Count(Verdict::OnlyInA), 0U);
  const ComparedParameter& only = The(comparison, "C40TAG");
  EXPECT_EQ(only.verdict, Verdict::OnlyInB);
  EXPECT_EQ(ShownName(only), u"CH 41 Tag");
  EXPECT_FALSE(only.a.value);
  EXPECT_EQ(ShownValue(only, only.a), u"");
  EXPECT_EQ(ShownValue(only, only.b), u"\"CH 41\"");
  EXPECT_EQ(Compared(Initial("RUG"), Initial("KOV")).Count(Verdict::OnlyInA), RugParameters - KovParameters);
}

TEST_F(Comparisons, OfTwoModelsSayBothNamesWhereTheyDiffer) {
  const Comparison comparison = Compared(Initial("KOV"), Changed("RUG", [] { Put("O", 0, "S111", 3); }));
  const ComparedParameter& word = The(comparison, "O00S111");
  EXPECT_EQ(ShownName(word), u"CH 19 Formula 1 term 1: input 1 / CH 37 Formula 1 term 1: input 1");
  EXPECT_EQ(word.a.formula, u"");
  EXPECT_EQ(word.b.formula, u"C04");
}

TEST_F(Comparisons, LookOnlyAtWhatWasAskedForAndCountTheRest) {
  const auto changed = Changed("KOV", [] {
    Put("C", 2, "COLR", 5);
    Put("A", 2, "A1VL", 5);
    PutText("C", 3, "TAG", "x");
  });
  const CompareScope only{{Selection(u"CH3")}, {}};
  EXPECT_EQ(KeysOf(Compared(Initial("KOV"), changed, only), Verdict::Different),
            (Keys{"C02COLR", "A02A1VL"}));
  const CompareScope both{{Selection(u"CH3"), Selection(u"CH4")}, {Selection(u"alarms")}};
  const Comparison comparison = Compared(Initial("KOV"), changed, both);
  EXPECT_EQ(KeysOf(comparison, Verdict::Different), (Keys{"C02COLR", "C03TAG"}));
  EXPECT_EQ(comparison.compared + comparison.leftOut, KovParameters);
}

TEST_F(Comparisons, OfTwoModelsKeepWhatOneOfThemMeansOtherwise) {
  // O00 is the formula of CH 19 in a KOV and of CH 37 in a RUG.
  const auto rug = Changed("RUG", [] { Put("O", 0, "S111", 3); });
  const auto told = [&](const CompareScope& scope) {
    return KeysOf(Compared(Initial("KOV"), rug, scope), Verdict::Different).contains("O00S111");
  };
  EXPECT_TRUE(told({{Selection(u"CH19")}, {}}));
  EXPECT_TRUE(told({{Selection(u"CH37")}, {}}));
  EXPECT_TRUE(told({{}, {Selection(u"CH19")}}));
  EXPECT_TRUE(told({{}, {Selection(u"CH37")}}));
  EXPECT_FALSE(told({{}, {Selection(u"CH19"), Selection(u"CH37")}}));
  EXPECT_FALSE(told({{}, {Selection(u"formula")}}));
}

TEST_F(Comparisons, TellAPatternThatNamesNothingInEither) {
  WholeSetUp kov = Initial("KOV");
  WholeSetUp rug = Initial("RUG");
  const CompareScope scope{{Selection(u"CH3")}, {Selection(u"CH48")}};
  const Selection* nothing = FirstThatNamesNothing(scope, kov, kov);
  ASSERT_NE(nothing, nullptr);
  EXPECT_EQ(nothing->Text(), u"CH48");
  EXPECT_EQ(FirstThatNamesNothing(scope, kov, rug), nullptr);
  EXPECT_EQ(FirstThatNamesNothing(scope, rug, kov), nullptr);
}

// For any changes of n parameters exactly these n are told.
TEST_F(Comparisons, OfRandomChangesTellExactlyThese) {
  constexpr unsigned Seed = 20261122;
  constexpr int Rounds = 40;
  std::mt19937 random(Seed);
  for (int round = 0; round < Rounds; ++round) {
    const std::string model = round % 2 == 0 ? "KOV" : "RUG";
    WholeSetUp changed = Initial(model);
    Keys keys;
    {
      const SetUpInForce inForce(changed);
      const std::vector<ParameterRef> all = AllParameters();
      const std::size_t count = random() % 60;
      while (keys.size() < count) {
        const ParameterRef& ref = all[random() % all.size()];
        if (!keys.insert(KeyOf(ref)).second) {
          continue;
        }
        const StoredParameter stored = FindParameter(ref);
        if (stored.text != nullptr) {
          SetText(*stored.text, u"~" + DecimalText(static_cast<int>(random() % 1000)), SlotValue);
        } else {
          stored.number->Value =
              static_cast<std::int16_t>(stored.number->Value + 1 + static_cast<int>(random() % 60000));
        }
      }
      UpdateUserUnitNames();
    }
    for (const bool turned : {false, true}) {
      const Comparison comparison =
          turned ? Compared(changed, Initial(model)) : Compared(Initial(model), changed);
      EXPECT_EQ(KeysOf(comparison, Verdict::Different), keys) << "seed " << Seed << ", round " << round;
      EXPECT_EQ(comparison.Count(Verdict::Different) + comparison.Count(Verdict::ReadsDifferent),
                comparison.found.size());
    }
  }
}

// --- What a file does not set

TEST_F(Comparisons, CountWhatAFileDoesNotSet) {
  const auto unnamed = [](const std::string& model, const std::string& bytes) {
    WholeSetUp opened = Initial(model);
    WithSetUp(opened, [&] { ASSERT_TRUE(LoadParamBytes(bytes)); });
    return CountUnnamed(opened, bytes);
  };
  EXPECT_EQ(unnamed("KOV", ""), KovParameters - 2) << "TTSM and TTEM no file sets";
  EXPECT_EQ(unnamed("KOV", "C00COLR,3\r\nC00COLR,4\r\nC01TAG ,x\r\n"), KovParameters - 4);
  EXPECT_EQ(unnamed("KOV", "C00COLR,1\r\n"), KovParameters - 3) << "though it is the default";
  EXPECT_EQ(unnamed("KOV", "T00BMEM,1\r\n"), KovParameters - 3) << "the name of an older file";
  EXPECT_EQ(unnamed("KOV", BytesOf("default:KOV")), 0U);
  EXPECT_EQ(unnamed("RUG", BytesOf("default:RUG")), 0U);
}

} // namespace
} // namespace loader::test
