#include "channelscreens/frmFormula.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "channelscreens/frmOpSetting.h"
#include "core/Text.h"
#include "tests/channelscreens/Terms.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader {
namespace {

using namespace test;

constexpr const char* OnlyOnce = "AVG演算またはSUM演算は、1つの式に1回しか使用できません";

class FormulaDialog : public ::testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }
  void TearDown() override {
    platform.boxes.ExpectNoneLeft();
    platform.screens.ExpectNoneLeft();
  }
  template <typename Act> void Edit(int formula, Act act) {
    platform.screens.Expect<FormulaScreen>("frmFormula", act);
    ShowFormula(work, formula);
  }
  // "変更", and in its screen the choice of a rule, a function and one input.
  void SetTerm(FormulaScreen& screen, int rule, int function, int row) {
    platform.screens.Expect<OpSettingScreen>("frmOpSetting", [=, this](OpSettingScreen& term) {
      user.Choose(term.cmbOpFourRules, rule); // takes nothing on the first term
      user.Choose(term.cmbOpContents, function);
      user.Choose(term.cmbInputChNo1, row);
      user.Choose(term.cmbInputChNo2, row);
      user.Click(term.btnOk);
    });
    user.Click(screen.btnSet);
  }
  void Put(int formula, std::vector<FormulaTerm> terms) {
    for (std::size_t term = 0; term < terms.size(); ++term) {
      TermOf(work, formula, static_cast<int>(term) + 1) = terms[term];
    }
  }
  static std::string Shown(const FormulaScreen& screen) { return ToUtf8(screen.lblFormula.caption); }

  const FormulaTerm c01 = Term(Plus, Plain, {Channel, 0});
  const FormulaTerm absT02 = Term(Minus, Abs, {Totalizer, 1});
  const FormulaTerm maxC03K01 = Term(Times, Max, {Channel, 2}, {Constant, 0});

  ScriptedPlatform platform;
  ScriptedUser user;
  FormulaTable work{};
};

// --- What it shows

TEST_F(FormulaDialog, IsCalledByItsFormula) {
  const char* captions[] = {"式B01の設定", "式B02の設定", "式B03の設定", "式結果の設定"};
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    EXPECT_EQ(captions[formula - 1], ToUtf8(FormulaScreen(work, formula).caption));
  }
}

TEST_F(FormulaDialog, ItsCaptions) {
  const FormulaScreen screen(work, 1);
  EXPECT_EQ("関数", ToUtf8(screen.lblFNum.caption));
  EXPECT_EQ("1", ToUtf8(screen.lblFormulaNum.caption));
  EXPECT_EQ("前", ToUtf8(screen.btnPrev.caption));
  EXPECT_EQ("次", ToUtf8(screen.btnNext.caption));
  EXPECT_EQ("変更", ToUtf8(screen.btnSet.caption));
  EXPECT_EQ("削除", ToUtf8(screen.btnDelete.caption));
  EXPECT_EQ("ＯＫ", ToUtf8(screen.OKButton.caption));
  EXPECT_EQ("キャンセル", ToUtf8(screen.CancelButton.caption));
}

TEST_F(FormulaDialog, ShowsTheFormulaWithOneBlankWhileTermsAreFree) {
  EXPECT_EQ("", Shown(FormulaScreen(work, 2)));
  Put(2, {c01});
  EXPECT_EQ("C01 ", Shown(FormulaScreen(work, 2)));
  Put(2, {c01, absT02});
  EXPECT_EQ("C01-ABS(T02) ", Shown(FormulaScreen(work, 2)));
  Put(2, {c01, absT02, maxC03K01});
  EXPECT_EQ("C01-ABS(T02)*MAX(C03,K01)", Shown(FormulaScreen(work, 2)));
  EXPECT_EQ("", Shown(FormulaScreen(work, 1)));
}

// --- The cursor

TEST_F(FormulaDialog, TheCursorGoesUpToTheFirstEmptyTerm) {
  const int last[] = {1, 2, 3, 3}; // by the number of filled terms
  for (std::size_t filled = 0; filled <= 3; ++filled) {
    work = {};
    const std::vector<FormulaTerm> terms{c01, absT02, maxC03K01};
    Put(1, {terms.begin(), terms.begin() + static_cast<std::ptrdiff_t>(filled)});
    Edit(1, [&](FormulaScreen& screen) {
      for (int click = 1; click <= 4; ++click) {
        user.Click(screen.btnNext);
        EXPECT_EQ(std::min(click + 1, last[filled]), screen.cursor);
        EXPECT_EQ(std::to_string(screen.cursor), ToUtf8(screen.lblFormulaNum.caption));
      }
      for (int click = 1; click <= 4; ++click) {
        user.Click(screen.btnPrev);
        EXPECT_EQ(std::max(last[filled] - click, 1), screen.cursor);
        EXPECT_EQ(std::to_string(screen.cursor), ToUtf8(screen.lblFormulaNum.caption));
      }
    });
  }
}

TEST_F(FormulaDialog, TheCursorStopsAtAHole) {
  Put(1, {c01, FormulaTerm{}, maxC03K01});
  Edit(1, [&](FormulaScreen& screen) {
    EXPECT_EQ("C01 ", Shown(screen));
    user.Click(screen.btnNext);
    user.Click(screen.btnNext);
    EXPECT_EQ(2, screen.cursor);
  });
}

// --- Setting

TEST_F(FormulaDialog, TheFirstTermGetsTheRuleThatMakesItCount) {
  Edit(4, [&](FormulaScreen& screen) {
    SetTerm(screen, NoRule, Plain, 0);
    EXPECT_EQ("C01 ", Shown(screen));
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(c01, TermOf(work, 4, 1));
  EXPECT_EQ(1, TermOf(work, 4, 1).TextLen);
}

TEST_F(FormulaDialog, AFirstTermOfAFileGetsTheRuleWhenItIsSet) {
  Put(1, {Term(Times, Abs, {Channel, 1})});
  Edit(1, [&](FormulaScreen& screen) {
    SetTerm(screen, NoRule, Abs, 2);
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(Term(Plus, Abs, {Channel, 2}), TermOf(work, 1, 1));
}

TEST_F(FormulaDialog, BuildsAFormulaOfThreeTerms) {
  Edit(3, [&](FormulaScreen& screen) {
    SetTerm(screen, NoRule, Plain, 0);
    user.Click(screen.btnNext);
    SetTerm(screen, Plus, Abs, 31);
    EXPECT_EQ("C01+ABS(T02) ", Shown(screen));
    user.Click(screen.btnNext);
    SetTerm(screen, Times, Max, 82);
    EXPECT_EQ("C01+ABS(T02)*MAX(K01,K01)", Shown(screen));
    EXPECT_EQ(3, screen.cursor);
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(Term(Plus, Abs, {Totalizer, 1}), TermOf(work, 3, 2));
  EXPECT_EQ(Term(Times, Max, {Constant, 0}, {Constant, 0}), TermOf(work, 3, 3));
  for (const int other : {1, 2, 4}) {
    EXPECT_EQ((std::array<FormulaTerm, TermCount>{}), work[static_cast<std::size_t>(other - 1)]);
  }
}

TEST_F(FormulaDialog, APlainFirstChannelCountsInALaterTermByItsRule) {
  Put(1, {c01});
  Edit(1, [&](FormulaScreen& screen) {
    user.Click(screen.btnNext);
    SetTerm(screen, Divide, Plain, 0);
    EXPECT_EQ("C01/C01 ", Shown(screen));
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(1, TermOf(work, 1, 2).TextLen);
}

TEST_F(FormulaDialog, ATermThatFailedStaysAsItWas) {
  Put(1, {c01, absT02});
  const FormulaTable was = work;
  Edit(1, [&](FormulaScreen& screen) {
    user.Click(screen.btnNext);
    platform.boxes.Expect(u"四則演算を設定してください");
    SetTerm(screen, NoRule, Sqr, 5);
    EXPECT_EQ(was, work);
    EXPECT_TRUE(platform.screens.Reachable(screen)) << "the user is back here";
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(was, work);
}

TEST_F(FormulaDialog, ATermThatWasGivenUpStaysAsItWas) {
  Put(1, {c01, absT02});
  const FormulaTable was = work;
  Edit(1, [&](FormulaScreen& screen) {
    platform.screens.Expect<OpSettingScreen>("frmOpSetting", [&](OpSettingScreen& term) {
      user.Choose(term.cmbInputChNo1, 9);
      user.Click(term.btnCancel);
    });
    user.Click(screen.btnSet);
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(was, work);
}

TEST_F(FormulaDialog, OffersTheShortenedListOfFunctions) {
  Put(1, {Term(Plus, Avg, {})});
  Edit(2, [&](FormulaScreen& screen) {
    platform.screens.Expect<OpSettingScreen>(
        "frmOpSetting", [](OpSettingScreen& term) { EXPECT_EQ(12U, term.cmbOpContents.items.size()); });
    user.Click(screen.btnSet);
  });
}

// --- Deleting

struct Deletion {
  int filled;
  int cursor;
  std::vector<int> left; // the terms that are left, by their numbers before
  int cursorAfter;
};

TEST_F(FormulaDialog, DeletingMovesTheFollowingTermsUp) {
  const FormulaTerm terms[] = {Term(Plus, Sqr, {Channel, 0}), absT02, maxC03K01};
  const Deletion deletions[] = {
      {1, 1, {}, 1},     {2, 1, {2}, 1}, {2, 2, {1}, 2},    {3, 1, {2, 3}, 1}, {3, 2, {1, 3}, 2},
      {3, 3, {1, 2}, 3}, {1, 2, {1}, 2}, {2, 3, {1, 2}, 3}, {0, 1, {}, 1},
  };
  for (const Deletion& deletion : deletions) {
    SCOPED_TRACE(testing::Message() << deletion.filled << " filled, cursor " << deletion.cursor);
    work = {};
    Put(2, {terms, terms + deletion.filled});
    FormulaTable expected{};
    int place = 0;
    for (const int left : deletion.left) {
      TermOf(expected, 2, ++place) = terms[left - 1];
    }
    if (deletion.cursor == 1 && place > 0) { // the new first term
      TermOf(expected, 2, 1).Rule = Plus;
    }
    Edit(2, [&](FormulaScreen& screen) {
      for (int click = 1; click < deletion.cursor; ++click) {
        user.Click(screen.btnNext);
      }
      user.Click(screen.btnDelete);
      EXPECT_EQ(deletion.cursorAfter, screen.cursor);
      EXPECT_EQ(FormulaText(expected, 0, FormulaModeDialog, 2), screen.lblFormula.caption);
      user.Click(screen.OKButton);
    });
    EXPECT_EQ(expected, work);
  }
}

TEST_F(FormulaDialog, TheNewFirstTermIsMeasuredWithItsNewRule) {
  FormulaTerm noRule = Term(NoRule, Abs, {Channel, 1});
  Put(1, {c01, noRule});
  Edit(1, [&](FormulaScreen& screen) {
    user.Click(screen.btnDelete);
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(Plus, TermOf(work, 1, 1).Rule);
  EXPECT_EQ(9, TermOf(work, 1, 1).TextLen);
}

TEST_F(FormulaDialog, NoTermComesIntoBeingByADeletion) {
  Put(1, {c01, FormulaTerm{}, maxC03K01}); // a hole, as a file may hold one
  Edit(1, [&](FormulaScreen& screen) {
    user.Click(screen.btnDelete);
    EXPECT_EQ("", Shown(screen)) << "an empty term with a rule would print as C01";
    user.Click(screen.OKButton);
  });
  EXPECT_EQ(FormulaTerm{}, TermOf(work, 1, 1));
}

TEST_F(FormulaDialog, DeletingAnEmptyTermDoesNothing) {
  Put(1, {c01, FormulaTerm{}, maxC03K01});
  const FormulaTable was = work;
  Edit(1, [&](FormulaScreen& screen) {
    user.Click(screen.btnNext);
    user.Click(screen.btnDelete);
    EXPECT_EQ(was, work) << "what stands behind the hole is not moved into it";
    user.Click(screen.OKButton);
  });
}

// --- OK and Cancel

TEST_F(FormulaDialog, OneAverageOrOneSumIsTaken) {
  for (const int function : {Avg, Sum}) {
    Put(1, {c01, Term(Plus, function, {Channel, 1}, {Channel, 2})});
    Edit(1, [&](FormulaScreen& screen) {
      user.Click(screen.OKButton);
      EXPECT_FALSE(platform.screens.Reachable(screen));
    });
  }
}

TEST_F(FormulaDialog, TwoOfThemAreRefusedAndTheDialogStays) {
  const std::pair<int, int> refused[] = {{Avg, Avg}, {Sum, Sum}, {Avg, Sum}, {Sum, Avg}};
  for (const auto& [first, second] : refused) {
    work = {};
    const FormulaTable was = work;
    Edit(1, [&, one = first, two = second](FormulaScreen& screen) {
      SetTerm(screen, NoRule, one, 0);
      user.Click(screen.btnNext);
      SetTerm(screen, Minus, two, 1);
      const FormulaTable edited = work;
      platform.boxes.Expect(FromUtf8(OnlyOnce));
      user.Click(screen.OKButton);
      EXPECT_TRUE(platform.screens.Reachable(screen));
      EXPECT_EQ(edited, work) << "nothing is lost by the refusal";
      user.Click(screen.btnDelete);
      user.Click(screen.btnPrev);
      user.Click(screen.OKButton);
      EXPECT_FALSE(platform.screens.Reachable(screen)) << "one alone is taken";
    });
    EXPECT_NE(was, work);
  }
}

TEST_F(FormulaDialog, WhatOtherFormulasHoldIsNoReasonToRefuse) {
  Put(1, {Term(Plus, Avg, {})});
  Put(2, {Term(Plus, Sum, {})});
  Edit(1, [&](FormulaScreen& screen) {
    user.Click(screen.OKButton);
    EXPECT_FALSE(platform.screens.Reachable(screen));
  });
}

TEST_F(FormulaDialog, CancelPutsTheThreeTermsBack) {
  Put(1, {c01, absT02});
  Put(2, {maxC03K01});
  const FormulaTable was = work;
  const auto change = [&](FormulaScreen& screen) {
    user.Click(screen.btnDelete);
    user.Click(screen.btnNext);
    SetTerm(screen, Times, Pow, 17);
    EXPECT_NE(was, work);
  };
  Edit(1, [&](FormulaScreen& screen) {
    change(screen);
    user.Click(screen.CancelButton);
  });
  EXPECT_EQ(was, work);
  Edit(1, [&](FormulaScreen& screen) {
    change(screen);
    user.CloseWindow(screen);
  });
  EXPECT_EQ(was, work);
  Edit(1, [&](FormulaScreen& screen) {
    change(screen);
    user.Escape(screen);
  });
  EXPECT_EQ(was, work);
}

TEST_F(FormulaDialog, CancelAfterARefusalPutsThemBackToo) {
  Edit(1, [&](FormulaScreen& screen) {
    SetTerm(screen, NoRule, Avg, 0);
    user.Click(screen.btnNext);
    SetTerm(screen, Plus, Avg, 1);
    platform.boxes.Expect(FromUtf8(OnlyOnce));
    user.Click(screen.OKButton);
    user.Click(screen.CancelButton);
  });
  EXPECT_EQ(FormulaTable{}, work);
}

} // namespace
} // namespace loader
