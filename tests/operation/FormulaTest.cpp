#include "operation/Formula.h"

#include <gtest/gtest.h>

#include "core/Text.h"
#include "core/modMain.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader {
namespace {

class Formula : public ::testing::Test {
protected:
  void SetUp() override { test::StartWithModel(platform, "KOV"); }
  void Store(const std::string& tag, int high, int low, int channel = 0) {
    test::Put("O", channel, tag, FormulaCompose(high, low));
  }
  std::string Text(int formula, int mode = FormulaModeStore, int channel = 0) {
    return ToUtf8(FormulaText(work, channel, mode, formula));
  }
  test::ScriptedPlatform platform;
  FormulaTable work{};
};

TEST_F(Formula, ComposesAndSplitsBytes) {
  EXPECT_EQ(513, FormulaCompose(2, 1));
  EXPECT_EQ((FormulaBytes{2, 1}), FormulaSplit(513));
  EXPECT_EQ((FormulaBytes{0, 255}), FormulaSplit(255));
  EXPECT_EQ((FormulaBytes{255, 254}), FormulaSplit(-2));
}

TEST_F(Formula, EmptyTermsPrintAsEmptyText) {
  EXPECT_EQ("", Text(1));
  EXPECT_EQ("", Text(1, FormulaModeDialog));
}

TEST_F(Formula, APlainFirstInputCountsOnlyByItsRule) {
  Store("OP11", 0, 1);
  EXPECT_EQ("C01", Text(1));
  Store("OP11", 0, 0);
  EXPECT_EQ("", Text(1));
}

TEST_F(Formula, TermsAreJoinedByTheirRulesAndTheFirstRuleIsNotPrinted) {
  Store("OP21", 0, 3); // a plain input with rule "*"
  Store("S121", 0, 0);
  Store("OP22", 1, 1); // + ABS
  Store("S122", 1, 1);
  Store("OP23", 8, 3); // * MAX
  Store("S123", 0, 2);
  Store("S223", 4, 0);
  EXPECT_EQ("C01+ABS(T02)*MAX(C03,K01)", Text(2));
  EXPECT_EQ("C01+ABS(T02)*MAX(C03,K01)", Text(2, FormulaModeDialog));
}

TEST_F(Formula, DialogModeAddsOneBlankWhileTermsAreFree) {
  Store("OP11", 0, 1);
  EXPECT_EQ("C01", Text(1));
  EXPECT_EQ("C01 ", Text(1, FormulaModeDialog));
  EXPECT_EQ("C01", Text(1, FormulaModeWork));
}

TEST_F(Formula, InputsAreNamedByLetterAndTwoDigits) {
  Store("OP11", 0, 1);
  Store("S111", 4, 11);
  EXPECT_EQ("K12", Text(1));
  Store("S111", 5, 2);
  EXPECT_EQ("B03", Text(1));
}

TEST_F(Formula, AFunctionOutsideTheListPrintsNothingAndARuleAboveFourNoSign) {
  Store("OP11", 14, 1);
  Store("OP12", 0, 9);
  Store("S112", 0, 4);
  EXPECT_EQ("C05", Text(1));
}

TEST_F(Formula, PrintingStopsAtAHole) {
  Store("OP11", 0, 1);
  Store("OP13", 1, 1);
  EXPECT_EQ("C01", Text(1));
}

TEST_F(Formula, TermLengthsFollowTheFunctionsAndTheRule) {
  const int lengths[] = {3, 8, 12, 8, 8, 7, 8, 11, 12, 12, 8, 8, 8, 12};
  for (std::int16_t function = 0; function < 14; ++function) {
    FormulaTerm term;
    term.Func = function;
    term.Input1No = 1;
    FormulaTermLength(term);
    EXPECT_EQ(lengths[function], term.TextLen) << function;
    term.Rule = 2;
    FormulaTermLength(term);
    EXPECT_EQ(lengths[function] + 1, term.TextLen) << function;
  }
}

TEST_F(Formula, FunctionsHaveOneInputOrTwo) {
  const int inputs[] = {1, 1, 2, 1, 1, 1, 1, 2, 2, 2, 1, 1, 1, 2};
  for (int function = 0; function < 14; ++function) {
    EXPECT_EQ(inputs[function], FunctionInputs(function)) << function;
  }
  EXPECT_EQ(0, FunctionInputs(14));
  EXPECT_EQ(0, FunctionInputs(-1));
}

TEST_F(Formula, AveragesAndSumsAreCountedInOneFormula) {
  FormulaTable table{};
  table[1][0].Func = 12;
  table[1][2].Func = 13;
  table[2][1].Func = 11;
  table[3][1].Func = 14;
  EXPECT_EQ(0, AveragesAndSums(table, 1));
  EXPECT_EQ(2, AveragesAndSums(table, 2));
  EXPECT_EQ(0, AveragesAndSums(table, 3));
  EXPECT_EQ(0, AveragesAndSums(table, 4));
}

TEST_F(Formula, AllThirtySixTagsPassThroughTheTableAsTheyAre) {
  // Words that no screen composes as well: every bit of them comes back.
  std::vector<std::string> tags;
  int word = -32768;
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    for (int term = 1; term <= TermCount; ++term) {
      for (const char* stem : {"OP", "S1", "S2"}) {
        tags.push_back(stem + std::to_string(formula) + std::to_string(term));
        test::Put("O", 3, tags.back(), word);
        word += 1821;
      }
    }
  }
  ASSERT_EQ(36U, tags.size());
  const std::vector<std::int16_t> before = test::AllNumbers();
  FormulaTable table{};
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    static_cast<void>(FormulaText(table, 3, FormulaModeStore, formula));
  }
  for (const std::string& tag : tags) {
    test::Put("O", 3, tag, 0);
  }
  StoreFormulas(table, 3);
  EXPECT_EQ(before, test::AllNumbers());
}

TEST_F(Formula, EachWordOfTheTableGoesToItsOwnTag) {
  FormulaTable table{};
  table[1][2] = {.Rule = 3, .Func = 8, .Input1No = 2, .Input1Kind = 1, .Input2No = 7, .Input2Kind = 4};
  StoreFormulas(table, 5);
  EXPECT_EQ(0x0803, test::Stored("O", 5, "OP23"));
  EXPECT_EQ(0x0102, test::Stored("O", 5, "S123"));
  EXPECT_EQ(0x0407, test::Stored("O", 5, "S223"));
}

TEST_F(Formula, AChannelThatDoesNotExistTakesNoFormulas) {
  const std::vector<std::int16_t> before = test::AllNumbers();
  FormulaTable table{};
  table[0][0].Func = 1;
  StoreFormulas(table, -18);
  StoreFormulas(table, 12);
  EXPECT_EQ(before, test::AllNumbers());
}

TEST_F(Formula, AChannelOrFormulaThatDoesNotExistPrintsNothing) {
  EXPECT_EQ("", Text(1, FormulaModeStore, 99));
  EXPECT_EQ("", Text(5));
  EXPECT_EQ("", Text(0));
}

} // namespace
} // namespace loader
