#include "channelscreens/frmOpSetting.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "tests/channelscreens/Terms.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader {
namespace {

using namespace test;

constexpr const char* RuleMissing = "四則演算を設定してください";
constexpr const char* InputMissing = "入力を設定してください";

class OpSetting : public ::testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }
  void TearDown() override {
    platform.boxes.ExpectNoneLeft();
    platform.screens.ExpectNoneLeft();
  }
  // What the screen hands back for the term after the user's `act`, be it by btnOk or not.
  template <typename Act> std::optional<FormulaTerm> Set(int formula, int term, Act act) {
    platform.screens.Expect<OpSettingScreen>("frmOpSetting", act);
    return ShowOpSetting(work, formula, term);
  }
  void ExpectMessage(const char* text) { platform.boxes.Expect(FromUtf8(text)); }

  ScriptedPlatform platform;
  ScriptedUser user;
  FormulaTable work{};
};

// --- Rows and inputs

struct KindBorder {
  const char* model;
  int kind;
  int firstRow;
  int lastRow;
  const char* firstText;
  const char* lastText;
};
// As the lists are laid out: each kind follows the one before.
constexpr KindBorder Borders[] = {
    {"KOV", 0, 0, 29, "ﾁｬﾈﾙ1 : C01", "ﾁｬﾈﾙ30 : C30"},
    {"KOV", 1, 30, 59, "積算1 : T01", "積算30 : T30"},
    {"KOV", 2, 60, 69, "DI1 : D01", "DI10 : D10"},
    {"KOV", 3, 70, 81, "通信1 : M01", "通信12 : M12"},
    {"KOV", 4, 82, 101, "定数1 : K01", "定数20 : K20"},
    {"KOV", 5, 102, 104, "演算結果1 : B01", "演算結果3 : B03"},
    {"RUG", 0, 0, 71, "ﾁｬﾈﾙ1 : C01", "ﾁｬﾈﾙ72 : C72"},
    {"RUG", 1, 72, 143, "積算1 : T01", "積算72 : T72"},
    {"RUG", 2, 144, 159, "DI1 : D01", "DI16 : D16"},
    {"RUG", 3, 160, 195, "通信1 : M01", "通信36 : M36"},
    {"RUG", 4, 196, 255, "定数1 : K01", "定数60 : K60"},
    {"RUG", 5, 256, 258, "演算結果1 : B01", "演算結果3 : B03"},
};

TEST_F(OpSetting, RowsAndInputsTurnIntoEachOtherAtEveryBorder) {
  for (const KindBorder& border : Borders) {
    SCOPED_TRACE(testing::Message() << border.model << " kind " << border.kind);
    StartWithModel(platform, border.model);
    const int last = border.lastRow - border.firstRow;
    EXPECT_EQ((TermInput{border.kind, 0}), InputOfRow(border.firstRow));
    EXPECT_EQ((TermInput{border.kind, last}), InputOfRow(border.lastRow));
    EXPECT_EQ(border.firstRow, RowOfInput({border.kind, 0}));
    EXPECT_EQ(border.lastRow, RowOfInput({border.kind, last}));
    EXPECT_EQ(-1, RowOfInput({border.kind, last + 1})) << "a number of the next kind";
    EXPECT_EQ(-1, RowOfInput({border.kind, -1}));
  }
}

TEST_F(OpSetting, EveryRowIsOneInput) {
  for (const auto& [model, rows] : {std::pair{"KOV", 105}, std::pair{"RUG", 259}}) {
    StartWithModel(platform, model);
    EXPECT_EQ(rows, InputRows());
    for (int row = 0; row < rows; ++row) {
      ASSERT_TRUE(InputOfRow(row)) << row;
      EXPECT_EQ(row, RowOfInput(*InputOfRow(row)));
    }
    EXPECT_FALSE(InputOfRow(rows));
    EXPECT_FALSE(InputOfRow(-1));
  }
}

TEST_F(OpSetting, AKindThatIsNoneHasNoRow) {
  EXPECT_EQ(-1, RowOfInput({6, 0}));
  EXPECT_EQ(-1, RowOfInput({255, 255}));
  EXPECT_EQ(-1, RowOfInput({-1, 0}));
}

TEST_F(OpSetting, BothListsOfInputsNameThemInTheOrderOfTheKinds) {
  for (const char* model : {"KOV", "RUG"}) {
    StartWithModel(platform, model);
    OpSettingScreen screen(work, 1, 1);
    ASSERT_EQ(static_cast<std::size_t>(InputRows()), screen.cmbInputChNo1.items.size());
    EXPECT_EQ(screen.cmbInputChNo1.items, screen.cmbInputChNo2.items);
    for (const KindBorder& border : Borders) {
      if (std::string(border.model) == model) {
        EXPECT_EQ(border.firstText,
                  ToUtf8(screen.cmbInputChNo1.items.at(static_cast<std::size_t>(border.firstRow))));
        EXPECT_EQ(border.lastText,
                  ToUtf8(screen.cmbInputChNo1.items.at(static_cast<std::size_t>(border.lastRow))));
      }
    }
  }
}

// --- What it shows

TEST_F(OpSetting, IsCalledByItsFormulaAndItsTerm) {
  const char* captions[] = {"式B01設定", "式B02設定", "式B03設定", "式結果設定"};
  const char* frames[] = {"関数 1", "関数 2", "関数 3"};
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    for (int term = 1; term <= TermCount; ++term) {
      const OpSettingScreen screen(work, formula, term);
      EXPECT_EQ(captions[formula - 1], ToUtf8(screen.caption));
      EXPECT_EQ(frames[term - 1], ToUtf8(screen.fraOpSetting.caption));
    }
  }
  const OpSettingScreen screen(work, 1, 1);
  EXPECT_EQ("四則演算", ToUtf8(screen.lblOpFourRules.caption));
  EXPECT_EQ("入力1", ToUtf8(screen.lblInputChNo1.caption));
  EXPECT_EQ("入力2", ToUtf8(screen.lblInputChNo2.caption));
  EXPECT_EQ("ＯＫ", ToUtf8(screen.btnOk.caption));
  EXPECT_EQ("キャンセル", ToUtf8(screen.btnCancel.caption));
}

TEST_F(OpSetting, OffersTheRulesAndTheFunctions) {
  const OpSettingScreen screen(work, 1, 1);
  const std::vector<std::u16string> rules{u"無し", u"+", u"-", u"*", u"/"};
  EXPECT_EQ(rules, screen.cmbOpFourRules.items);
  const std::vector<std::u16string> functions{u"無し",   u"ABS(A)", u"POW(A,B)", u"SQR(A)",   u"LOG(A)",
                                              u"LN(A)",  u"EXP(A)", u"RH(A,B)",  u"MAX(A,B)", u"MIN(A,B)",
                                              u"H-P(A)", u"L-P(A)", u"AVG(A)",   u"SUM(A,B)"};
  EXPECT_EQ(functions, screen.cmbOpContents.items);
}

TEST_F(OpSetting, ShowsTheTermAsItStands) {
  TermOf(work, 3, 2) = Term(Times, Max, {Channel, 2}, {Constant, 0});
  const OpSettingScreen screen(work, 3, 2);
  EXPECT_EQ(3, screen.cmbOpFourRules.index);
  EXPECT_EQ(8, screen.cmbOpContents.index);
  EXPECT_EQ(2, screen.cmbInputChNo1.index);
  EXPECT_EQ(82, screen.cmbInputChNo2.index);
}

TEST_F(OpSetting, AnEmptyTermHasNothingChosen) {
  for (int term = 1; term <= TermCount; ++term) {
    const OpSettingScreen screen(work, 2, term);
    EXPECT_EQ(0, screen.cmbOpFourRules.index);
    EXPECT_EQ(0, screen.cmbOpContents.index);
    EXPECT_EQ(-1, screen.cmbInputChNo1.index);
    EXPECT_EQ(-1, screen.cmbInputChNo2.index);
  }
}

TEST_F(OpSetting, ATermWithoutARuleIsNotEmptyForThat) {
  TermOf(work, 1, 1) = Term(NoRule, Abs, {Totalizer, 0}); // as a file may hold one
  const OpSettingScreen screen(work, 1, 1);
  EXPECT_EQ(0, screen.cmbOpFourRules.index);
  EXPECT_EQ(1, screen.cmbOpContents.index);
  EXPECT_EQ(30, screen.cmbInputChNo1.index);
}

TEST_F(OpSetting, ASecondInputThatTheFunctionDoesNotHaveIsNotChosen) {
  TermOf(work, 1, 1) = Term(Plus, Abs, {Channel, 4}, {Channel, 7});
  const OpSettingScreen screen(work, 1, 1);
  EXPECT_EQ(4, screen.cmbInputChNo1.index);
  EXPECT_EQ(-1, screen.cmbInputChNo2.index);
}

TEST_F(OpSetting, AnInputThatTheModelDoesNotHaveSelectsNoRow) {
  TermOf(work, 1, 1) = Term(Plus, Pow, {Channel, 30}, {6, 0});
  const OpSettingScreen screen(work, 1, 1);
  EXPECT_EQ(-1, screen.cmbInputChNo1.index);
  EXPECT_EQ(-1, screen.cmbInputChNo2.index);
}

TEST_F(OpSetting, TheRuleOfTheFirstTermCannotBeChosen) {
  for (int term = 1; term <= TermCount; ++term) {
    const OpSettingScreen screen(work, 1, term);
    EXPECT_EQ(term != 1, screen.cmbOpFourRules.enabled);
    EXPECT_TRUE(screen.cmbOpContents.enabled);
    EXPECT_TRUE(screen.cmbInputChNo1.enabled);
  }
}

TEST_F(OpSetting, TheSecondInputIsThereForFunctionsOfTwo) {
  const bool two[] = {false, false, true, false, false, false, false,
                      true,  true,  true, false, false, false, true};
  Set(1, 1, [&](OpSettingScreen& screen) {
    EXPECT_FALSE(screen.cmbInputChNo2.enabled);
    for (int function = 0; function < 14; ++function) {
      ASSERT_TRUE(user.Choose(screen.cmbOpContents, function));
      EXPECT_EQ(two[function], screen.cmbInputChNo2.enabled) << function;
    }
  });
  for (int function = 0; function < 14; ++function) {
    TermOf(work, 1, 1) = Term(Plus, function, {Channel, 1});
    EXPECT_EQ(two[function], OpSettingScreen(work, 1, 1).cmbInputChNo2.enabled) << function;
  }
}

// --- The shortened list

TEST_F(OpSetting, AnAverageOrASumInAnotherFormulaTakesTwoFunctionsAway) {
  for (const int function : {Avg, Sum}) {
    for (int formula = 1; formula <= FormulaCount; ++formula) {
      for (int term = 1; term <= TermCount; ++term) {
        work = {};
        TermOf(work, formula, term) = Term(Plus, function, {});
        for (int asked = 1; asked <= FormulaCount; ++asked) {
          EXPECT_EQ(asked == formula ? 14 : 12, FunctionsOffered(work, asked));
        }
      }
    }
  }
}

TEST_F(OpSetting, TheLastOfTheShortenedListIsTheLowPeak) {
  TermOf(work, 1, 1) = Term(Plus, Avg, {});
  EXPECT_EQ(u"L-P(A)", OpSettingScreen(work, 2, 1).cmbOpContents.items.back());
  EXPECT_EQ(u"SUM(A,B)", OpSettingScreen(work, 1, 2).cmbOpContents.items.back());
}

TEST_F(OpSetting, TwoOfThemTakeFourAndThreeSix) {
  TermOf(work, 1, 1) = Term(Plus, Avg, {});
  TermOf(work, 2, 3) = Term(Plus, Sum, {});
  EXPECT_EQ(10, FunctionsOffered(work, 3));
  EXPECT_EQ(u"MIN(A,B)", OpSettingScreen(work, 3, 1).cmbOpContents.items.back());
  TermOf(work, 4, 2) = Term(Plus, Sum, {});
  EXPECT_EQ(8, FunctionsOffered(work, 3));
}

TEST_F(OpSetting, APlainInputIsOfferedHoweverManyThereAre) {
  for (auto& formula : work) {
    formula.fill(Term(Plus, Sum, {}));
  }
  EXPECT_EQ(1, FunctionsOffered(work, 1));
  EXPECT_EQ(1U, OpSettingScreen(work, 1, 1).cmbOpContents.items.size());
}

// --- OK and Cancel

TEST_F(OpSetting, HandsBackWhatWasChosen) {
  const auto set = Set(1, 2, [&](OpSettingScreen& screen) {
    user.Choose(screen.cmbOpFourRules, Divide);
    user.Choose(screen.cmbOpContents, Pow);
    user.Choose(screen.cmbInputChNo1, 69);
    user.Choose(screen.cmbInputChNo2, 104);
    user.Click(screen.btnOk);
  });
  ASSERT_TRUE(set);
  FormulaTerm expected = Term(Divide, Pow, {DigitalInput, 9}, {Result, 2});
  expected.TextLen = 0; // counted by who takes it
  EXPECT_EQ(expected, *set);
}

TEST_F(OpSetting, HandsBackAnUntouchedTermAsItWas) {
  for (int function = 0; function < 14; ++function) {
    const bool two = FunctionInputs(function) == 2;
    TermOf(work, 1, 2) = Term(Minus, function, {CommInput, 11}, two ? InputOf{Constant, 19} : InputOf{});
    const auto set = Set(1, 2, [&](OpSettingScreen& screen) { user.Click(screen.btnOk); });
    EXPECT_EQ(TermOf(work, 1, 2), set) << function;
  }
}

TEST_F(OpSetting, AFunctionOfOneInputHandsBackNoSecondOne) {
  TermOf(work, 1, 1) = Term(Plus, Max, {Channel, 4}, {Constant, 7});
  const auto set = Set(1, 1, [&](OpSettingScreen& screen) {
    user.Choose(screen.cmbOpContents, Ln);
    EXPECT_FALSE(user.Choose(screen.cmbInputChNo2, 3)) << "disabled at once";
    user.Click(screen.btnOk);
  });
  ASSERT_TRUE(set);
  EXPECT_EQ(Ln, set->Func);
  EXPECT_EQ(4, set->Input1No);
  EXPECT_EQ(0, set->Input2Kind);
  EXPECT_EQ(0, set->Input2No);
}

TEST_F(OpSetting, ALaterTermWithoutARuleIsRefused) {
  ExpectMessage(RuleMissing);
  const auto set = Set(1, 2, [&](OpSettingScreen& screen) {
    user.Choose(screen.cmbInputChNo1, 0);
    user.Click(screen.btnOk);
    EXPECT_FALSE(platform.screens.Reachable(screen)) << "closed all the same";
  });
  EXPECT_FALSE(set);
}

TEST_F(OpSetting, TheFirstTermNeedsNoRule) {
  const auto set = Set(1, 1, [&](OpSettingScreen& screen) {
    user.Choose(screen.cmbInputChNo1, 0);
    user.Click(screen.btnOk);
  });
  ASSERT_TRUE(set);
  EXPECT_EQ(0, set->Rule) << "given by who takes it";
}

TEST_F(OpSetting, ATermWithoutAnInputIsRefused) {
  for (int term = 1; term <= TermCount; ++term) {
    ExpectMessage(InputMissing);
    const auto set = Set(1, term, [&](OpSettingScreen& screen) {
      if (term > 1) {
        user.Choose(screen.cmbOpFourRules, Plus);
      }
      user.Click(screen.btnOk);
      EXPECT_FALSE(platform.screens.Reachable(screen));
    });
    EXPECT_FALSE(set);
  }
}

TEST_F(OpSetting, AFunctionOfTwoNeedsBothInputs) {
  for (const bool first : {true, false}) {
    ExpectMessage(InputMissing);
    const auto set = Set(1, 1, [&](OpSettingScreen& screen) {
      user.Choose(screen.cmbOpContents, Max);
      user.Choose(first ? screen.cmbInputChNo1 : screen.cmbInputChNo2, 5);
      user.Click(screen.btnOk);
    });
    EXPECT_FALSE(set);
  }
}

TEST_F(OpSetting, WithRuleAndInputMissingTheRuleAloneIsAskedFor) {
  ExpectMessage(RuleMissing);
  EXPECT_FALSE(Set(1, 3, [&](OpSettingScreen& screen) { user.Click(screen.btnOk); }));
  EXPECT_EQ(1U, platform.boxes.shown.size());
}

TEST_F(OpSetting, CancelHandsBackNothing) {
  TermOf(work, 1, 1) = Term(Plus, Max, {Channel, 4}, {Constant, 7});
  EXPECT_FALSE(Set(1, 1, [&](OpSettingScreen& screen) {
    user.Choose(screen.cmbInputChNo1, 9);
    user.Click(screen.btnCancel);
  }));
  EXPECT_FALSE(Set(1, 1, [&](OpSettingScreen& screen) { user.Escape(screen); }));
  EXPECT_FALSE(Set(1, 1, [&](OpSettingScreen& screen) { user.CloseWindow(screen); }));
}

// --- Terms that only a file can hold

TEST_F(OpSetting, ARuleOutsideTheListIsAskedForAndNotTakenOver) {
  TermOf(work, 1, 2) = Term(9, Abs, {Channel, 1});
  ExpectMessage(RuleMissing);
  EXPECT_FALSE(Set(1, 2, [&](OpSettingScreen& screen) {
    EXPECT_EQ(-1, screen.cmbOpFourRules.index);
    user.Click(screen.btnOk);
  }));
}

TEST_F(OpSetting, AFunctionThatIsNotOfferedStaysUntilAnotherIsPicked) {
  TermOf(work, 1, 1) = Term(Plus, Avg, {});
  TermOf(work, 2, 1) = Term(Plus, Sum, {Channel, 1}, {Channel, 2});
  const auto kept = Set(2, 1, [&](OpSettingScreen& screen) {
    EXPECT_EQ(-1, screen.cmbOpContents.index);
    EXPECT_TRUE(screen.cmbInputChNo2.enabled);
    EXPECT_EQ(2, screen.cmbInputChNo2.index);
    user.Click(screen.btnOk);
  });
  EXPECT_EQ(TermOf(work, 2, 1).Func, kept->Func);
  EXPECT_EQ(2, kept->Input2No);
  const auto picked = Set(2, 1, [&](OpSettingScreen& screen) {
    user.Choose(screen.cmbOpContents, Exp);
    user.Click(screen.btnOk);
  });
  EXPECT_EQ(Exp, picked->Func);
  EXPECT_EQ(0, picked->Input2No);
}

TEST_F(OpSetting, AnUnknownFunctionKeepsBothItsInputs) {
  TermOf(work, 1, 2) = Term(Minus, 200, {Channel, 1}, {Constant, 3});
  const auto kept = Set(1, 2, [&](OpSettingScreen& screen) {
    EXPECT_EQ(-1, screen.cmbOpContents.index);
    EXPECT_FALSE(screen.cmbInputChNo2.enabled);
    user.Click(screen.btnOk);
  });
  EXPECT_EQ(TermOf(work, 1, 2), kept);
}

} // namespace
} // namespace loader
