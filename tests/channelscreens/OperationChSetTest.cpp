// What the screen of an operation channel shows, and where its buttons go.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "channelscreens/frmFormula.h"
#include "channelscreens/frmOpSetting.h"
#include "core/ModelProfile.h"
#include "tests/channelscreens/OperationFixture.h"
#include "tests/channelscreens/Terms.h"

namespace loader::test {
namespace {

constexpr const char* NotANumber = "数値のみで入力してください";
constexpr const char* OutOfRange = "19～30を入力してください";

class OperationChannel : public OperationScreen {};

// --- What it shows

TEST_F(OperationChannel, ItsCaptions) {
  Open(18, [&](OperationChSetScreen& screen) {
    EXPECT_EQ("演算ﾁｬﾈﾙ設定", ToUtf8(screen.caption));
    const std::pair<const char*, const char*> captions[] = {{"lblFormulaName1", "式B01 ="},
                                                            {"lblFormulaName2", "式B02 ="},
                                                            {"lblFormulaName3", "式B03 ="},
                                                            {"lblFormulaName4", "式結果 ="}};
    for (const auto& [label, text] : captions) {
      EXPECT_EQ(text, Caption(screen, label));
    }
    for (int formula = 1; formula <= FormulaCount; ++formula) {
      const auto button = [&](const std::string& name) {
        return ToUtf8(static_cast<Button&>(ControlNamed(screen, name + std::to_string(formula))).caption);
      };
      EXPECT_EQ("変更", button("cmdFormulaSet"));
      EXPECT_EQ("削除", button("cmdFormulaDel"));
    }
    EXPECT_EQ("演算チャネル", ToUtf8(static_cast<Frame&>(ControlNamed(screen, "fraCh")).caption));
    EXPECT_EQ("式", ToUtf8(static_cast<Frame&>(ControlNamed(screen, "fraFormula")).caption));
    EXPECT_EQ("適用", ToUtf8(static_cast<Button&>(ControlNamed(screen, "OKButton")).caption));
    EXPECT_EQ("終了", ToUtf8(static_cast<Button&>(ControlNamed(screen, "CancelButton")).caption));
  });
}

TEST_F(OperationChannel, HasNoInputKindNoReferenceAndNoScaling) {
  Open(18, [&](OperationChSetScreen& screen) {
    for (const char* name : {"cmbInputType", "cmbInputOtch", "cmbScale"}) {
      EXPECT_EQ(nullptr, screen.Find(name)) << name;
    }
  });
}

TEST_F(OperationChannel, ShowsTheFourFormulasOfTheStore) {
  Put("O", 2, "OP11", FormulaCompose(Plain, Plus));
  Put("O", 2, "OP21", FormulaCompose(Abs, Plus));
  Put("O", 2, "OP22", FormulaCompose(Max, Times));
  Put("O", 2, "S122", FormulaCompose(Totalizer, 1));
  Put("O", 2, "S222", FormulaCompose(Constant, 11));
  Open(20, [&](OperationChSetScreen& screen) {
    EXPECT_EQ("C01 ", Caption(screen, "lblFormula1"));
    EXPECT_EQ("ABS(C01)*MAX(T02,K12) ", Caption(screen, "lblFormula2"));
    EXPECT_EQ("", Caption(screen, "lblFormula3"));
    EXPECT_EQ("", Caption(screen, "lblFormula4"));
  });
}

TEST_F(OperationChannel, NamesItsChannelInTheSubtraction) {
  for (const auto& [model, channel, text] : {std::tuple{"KOV", 18, "ﾁｬﾈﾙ19 = ﾁｬﾈﾙ19 - 設定ﾁｬﾈﾙ"},
                                             std::tuple{"RUG", 71, "ﾁｬﾈﾙ72 = ﾁｬﾈﾙ72 - 設定ﾁｬﾈﾙ"}}) {
    Start(model);
    Open(channel, [&, expected = text](OperationChSetScreen& screen) {
      EXPECT_EQ(expected, Caption(screen, "lblSUB"));
    });
  }
}

TEST_F(OperationChannel, ShowsItsFieldsAsTheStoreHoldsThem) {
  PutText("C", 19, "TAG ", "FLOW");
  PutText("C", 19, "STAG", "TOTAL");
  const std::tuple<const char*, int> numbers[] = {
      {"COLR", 3},  {"FILT", 12}, {"UNIT", 82}, {"POIN", 2},   {"MMIN", -150}, {"MMAX", 9950}, {"SMIN", 10},
      {"SMAX", 20}, {"ROOT", 1},  {"PVSI", 30}, {"PVKA", 110}, {"RMIN", 40},   {"RMAX", 50},   {"RECO", 1},
      {"RECM", 2},  {"SUBC", 5},  {"SEKI", 2},  {"STYP", 3},   {"SDIG", 11},   {"SBAS", 2},    {"SRES", 1},
      {"SEUN", 7},  {"SSCL", 60}, {"SECU", 70}, {"SRIN", 1}};
  for (const auto& [tag, value] : numbers) {
    Put("C", 19, tag, value);
  }
  Put("A", 19, "A2TY", 1);
  Put("A", 19, "A2VL", 800);
  Put("A", 19, "A2RL", 4);
  Open(19, [&](OperationChSetScreen& screen) {
    const std::pair<const char*, const char*> fields[] = {
        {"txtChannelTag", "FLOW"},  {"txtInputFilter", "12"}, {"txtStMin", "-1.50"},
        {"txtStMax", "99.50"},      {"txtIndMin", "0.10"},    {"txtIndMax", "0.20"},
        {"txtPVShift", "0.30"},     {"txtPVSlope", "110"},    {"txtRecRangeMin", "0.40"},
        {"txtRecRangeMax", "0.50"}, {"txtSekiTag", "TOTAL"},  {"txtSekiScale", "60"},
        {"txtSecu", "0.70"},        {"txtAlarmSet2", "8.00"}, {"txtChannel", "20"}};
    for (const auto& [name, text] : fields) {
      EXPECT_EQ(text, Shown(screen, name)) << name;
    }
    const std::pair<const char*, int> rows[] = {
        {"cmbDispColor", 2}, {"cmbDecimal", 2}, {"cmbTaisu", 0},      {"cmbROOT", 1},
        {"cmbFtio", 0},      {"cmbRecMode", 1}, {"cmbRecM", 2},       {"cmbSUBCh", 5},
        {"cmbSeki", 2},      {"cmbStyp", 3},    {"cmbSdig", 11},      {"cmbSbas", 2},
        {"cmbSres", 1},      {"cmbSri", 1},     {"cmbAlarmType2", 1}, {"cmbAlarmOut2", 4}};
    for (const auto& [name, row] : rows) {
      EXPECT_EQ(row, Row(screen, name)) << name;
    }
    EXPECT_EQ("%", Caption(screen, "lblSelUnit"));
    EXPECT_EQ("kg/d", Caption(screen, "lblSelSekiUnit"));
  });
}

TEST_F(OperationChannel, TheLogarithmAndTheResetInputAreThoseOfKov) {
  for (const auto& [model, channel] : {std::pair{"KOV", 18}, std::pair{"RUG", 36}}) {
    Start(model);
    const bool kov = std::string(model) == "KOV";
    Open(channel, [&](OperationChSetScreen& screen) {
      for (const char* name : {"lblTaisu", "cmbTaisu", "lblSrin", "cmbSri"}) {
        EXPECT_EQ(kov, Visible(screen, name)) << model << name;
      }
    });
  }
}

// --- Moving between channels

struct Walk {
  const char* model;
  int from;
  const char* button;
  int to;
};

TEST_F(OperationChannel, ItsButtonsWalkTheOperationChannels) {
  const Walk walks[] = {
      {"KOV", 24, "btnTop", 18},  {"KOV", 24, "btnPrev", 23},  {"KOV", 24, "btnNext", 25},
      {"KOV", 18, "btnPrev", 18}, {"KOV", 29, "btnNext", 29},  {"KOV", 29, "btnReset", 29},
      {"RUG", 50, "btnTop", 18}, // not the first one of this model, deliberately
      {"RUG", 50, "btnPrev", 49}, {"RUG", 50, "btnNext", 51},  {"RUG", 36, "btnPrev", 36},
      {"RUG", 71, "btnNext", 71}, {"RUG", 71, "btnReset", 71},
  };
  for (const Walk& walk : walks) {
    Start(walk.model);
    Open(walk.from, [&](OperationChSetScreen& screen) {
      Press(screen, walk.button);
      EXPECT_EQ(std::to_string(walk.to + 1), Shown(screen, "txtChannel"))
          << walk.model << walk.from << walk.button;
    });
  }
}

TEST_F(OperationChannel, FromTheTopOfRugTheWalkGoesOnToBothSides) {
  Start("RUG");
  for (const auto& [button, channel] :
       {std::pair{"btnNext", 19}, std::pair{"btnPrev", 36}, std::pair{"btnReset", 18}}) {
    Open(50, [&, name = button, shown = channel](OperationChSetScreen& screen) {
      Press(screen, "btnTop");
      Press(screen, name);
      EXPECT_EQ(shown, screen.browsing.entry) << name;
    });
  }
}

TEST_F(OperationChannel, AMoveShowsTheOtherChannelAndDropsWhatWasTyped) {
  PutText("C", 19, "TAG ", "NEXT");
  const std::vector<std::int16_t> numbers = AllNumbers();
  Open(18, [&](OperationChSetScreen& screen) {
    Enter(screen, "txtStMax", "7");
    Pick(screen, "cmbRecM", 2);
    Press(screen, "btnNext");
    EXPECT_EQ("NEXT", Shown(screen, "txtChannelTag"));
    Press(screen, "btnPrev");
    EXPECT_EQ(Stored("C", 18, "RECM"), Row(screen, "cmbRecM"));
  });
  EXPECT_EQ(numbers, AllNumbers());
}

TEST_F(OperationChannel, ATypedNumberGoesToItsChannel) {
  for (const auto& [model, first, last] : {std::tuple{"KOV", 19, 30}, std::tuple{"RUG", 37, 72}}) {
    Start(model);
    Open(first - 1, [&, lowest = first, highest = last](OperationChSetScreen& screen) {
      for (const int number : {highest, lowest, lowest + 1}) {
        Enter(screen, "txtChannel", std::to_string(number));
        EXPECT_EQ(number - 1, screen.browsing.entry);
      }
    });
  }
}

TEST_F(OperationChannel, ANumberThatIsNoOperationChannelIsRefusedWithOneTextOnEveryModel) {
  for (const auto& [model, first, last] : {std::tuple{"KOV", 19, 30}, std::tuple{"RUG", 37, 72}}) {
    Start(model);
    Open(first + 3,
         [&, start = first + 3, below = first - 1, above = last + 1](OperationChSetScreen& screen) {
           for (const int number : {below, above, 0, -1, 32768}) {
             ExpectMessage(OutOfRange);
             Enter(screen, "txtChannel", std::to_string(number));
             EXPECT_EQ(start, screen.browsing.entry) << number;
           }
         });
    ExpectNoneLeft();
  }
}

TEST_F(OperationChannel, ATextThatIsNoNumberIsRefused) {
  for (const char* text : {"abc", "", "2O"}) {
    Open(20, [&](OperationChSetScreen& screen) {
      ExpectMessage(NotANumber);
      Enter(screen, "txtChannel", text);
      EXPECT_EQ(20, screen.browsing.entry);
      EXPECT_EQ("21", Shown(screen, "txtChannel"));
    });
    ExpectNoneLeft();
  }
}

TEST_F(OperationChannel, ANumberThatNobodyEditedIsPassedThrough) {
  Open(20, [&](OperationChSetScreen& screen) {
    Pick(screen, "cmbRecM", 2);
    user.MoveTo(FieldNamed(screen, "txtChannel"));
    user.Leave(FieldNamed(screen, "txtChannel"));
    EXPECT_EQ(2, Row(screen, "cmbRecM")) << "what was picked has not been lost";
  });
}

// --- Formulas

// In frmFormula: one term of one channel, then OK or not.
void ScriptFormula(ScriptedPlatform& platform, ScriptedUser& user, int input, bool keeps) {
  platform.screens.Expect<FormulaScreen>(
      "frmFormula", [&platform, &user, input, keeps](FormulaScreen& screen) {
        platform.screens.Expect<OpSettingScreen>("frmOpSetting", [&user, input](OpSettingScreen& term) {
          user.Choose(term.cmbInputChNo1, input);
          user.Click(term.btnOk);
        });
        user.Click(screen.btnSet);
        user.Click(keeps ? screen.OKButton : screen.CancelButton);
      });
}

class OperationFormulas : public OperationScreen {
protected:
  void SetUp() override {
    OperationScreen::SetUp();
    FillFormulas(0);
  }
  static void FillFormulas(int item) {
    for (int formula = 1; formula <= FormulaCount; ++formula) {
      Put("O", item, "OP" + std::to_string(formula) + "1", FormulaCompose(Plain, Plus));
      Put("O", item, "S1" + std::to_string(formula) + "1", FormulaCompose(Channel, formula));
    }
  }
  static std::vector<std::string> Formulas(Screen& screen) {
    std::vector<std::string> texts;
    for (int formula = 1; formula <= FormulaCount; ++formula) {
      texts.push_back(Caption(screen, "lblFormula" + std::to_string(formula)));
    }
    return texts;
  }
  const std::vector<std::string> filled{"C02 ", "C03 ", "C04 ", "C05 "};
};

TEST_F(OperationFormulas, ChangingOneShowsItAndStoresNothing) {
  const std::vector<std::int16_t> numbers = AllNumbers();
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    Open(18, [&](OperationChSetScreen& screen) {
      ASSERT_EQ(filled, Formulas(screen));
      ScriptFormula(platform, user, 29, true);
      Press(screen, "cmdFormulaSet" + std::to_string(formula));
      std::vector<std::string> expected = filled;
      expected[static_cast<std::size_t>(formula - 1)] = "C30 ";
      EXPECT_EQ(expected, Formulas(screen));
    });
    EXPECT_EQ(numbers, AllNumbers());
  }
}

TEST_F(OperationFormulas, AChangeThatIsGivenUpShowsTheOldOne) {
  Open(18, [&](OperationChSetScreen& screen) {
    ScriptFormula(platform, user, 29, false);
    Press(screen, "cmdFormulaSet2");
    EXPECT_EQ(filled, Formulas(screen));
  });
}

TEST_F(OperationFormulas, DeletingOneLeavesTheOthersAndAsksNothing) {
  const std::vector<std::int16_t> numbers = AllNumbers();
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    Open(18, [&](OperationChSetScreen& screen) {
      Press(screen, "cmdFormulaDel" + std::to_string(formula));
      std::vector<std::string> expected = filled;
      expected[static_cast<std::size_t>(formula - 1)] = "";
      EXPECT_EQ(expected, Formulas(screen));
    });
    EXPECT_EQ(numbers, AllNumbers());
  }
}

TEST_F(OperationFormulas, WhatWasNotAppliedIsDroppedByAMoveAReturnAndTheClose) {
  Open(18, [&](OperationChSetScreen& screen) {
    Press(screen, "cmdFormulaDel1");
    Press(screen, "btnReset");
    EXPECT_EQ(filled, Formulas(screen));
    Press(screen, "cmdFormulaDel1");
    Press(screen, "btnNext");
    EXPECT_EQ((std::vector<std::string>{"", "", "", ""}), Formulas(screen));
    Press(screen, "btnPrev");
    EXPECT_EQ(filled, Formulas(screen));
    Press(screen, "cmdFormulaDel2");
    Press(screen, "CancelButton");
  });
  Open(18, [&](OperationChSetScreen& screen) { EXPECT_EQ(filled, Formulas(screen)); });
}

TEST_F(OperationFormulas, AnAppliedOneStandsInTheStoreOfItsChannelAlone) {
  for (const auto& [model, channel, item] : {std::tuple{"KOV", 20, 2}, std::tuple{"RUG", 71, 35}}) {
    Start(model);
    std::vector<std::int16_t> before = AllNumbers();
    Open(channel, [&](OperationChSetScreen& screen) {
      ScriptFormula(platform, user, 29, true);
      Press(screen, "cmdFormulaSet4");
      Press(screen, "OKButton");
      EXPECT_EQ("C30 ", Caption(screen, "lblFormula4"));
    });
    EXPECT_EQ(FormulaCompose(Plain, Plus), Stored("O", item, "OP41"));
    EXPECT_EQ(FormulaCompose(Channel, 29), Stored("O", item, "S141"));
    Put("O", item, "OP41", 0);
    Put("O", item, "S141", 0);
    EXPECT_EQ(before, AllNumbers());
  }
}

TEST_F(OperationFormulas, ADeletedOneIsZeroInTheStore) {
  Open(18, [&](OperationChSetScreen& screen) {
    Press(screen, "cmdFormulaDel2");
    Press(screen, "OKButton");
  });
  EXPECT_EQ(0, Stored("O", 0, "OP21"));
  EXPECT_EQ(0, Stored("O", 0, "S121"));
  EXPECT_EQ(FormulaCompose(Plain, Plus), Stored("O", 0, "OP11"));
  EXPECT_EQ(FormulaCompose(Plain, Plus), Stored("O", 0, "OP31"));
}

TEST_F(OperationFormulas, AnAverageShortensTheListOfTheOtherFormulas) {
  Put("O", 0, "OP11", FormulaCompose(Avg, Plus));
  Open(18, [&](OperationChSetScreen& screen) {
    platform.screens.Expect<FormulaScreen>("frmFormula", [&](FormulaScreen& formula) {
      platform.screens.Expect<OpSettingScreen>(
          "frmOpSetting", [](OpSettingScreen& term) { EXPECT_EQ(12U, term.cmbOpContents.items.size()); });
      user.Click(formula.btnSet);
    });
    Press(screen, "cmdFormulaSet3");
  });
}

// --- "トップ" on RUG: a measuring channel

TEST_F(OperationFormulas, OnTheTopOfRugThereAreNoneAndNothingOfThemIsStored) {
  Start("RUG");
  for (int item = 0; item < 36; ++item) {
    FillFormulas(item);
  }
  Put("C", 18, "TYPE", 1);
  const std::vector<std::int16_t> before = AllNumbers();
  Open(36, [&](OperationChSetScreen& screen) {
    EXPECT_EQ(filled, Formulas(screen));
    Press(screen, "btnTop");
    EXPECT_EQ("19", Shown(screen, "txtChannel"));
    EXPECT_EQ((std::vector<std::string>{"", "", "", ""}), Formulas(screen));
    EXPECT_EQ(FormulaTable{}, screen.FormulaWork);
    ScriptFormula(platform, user, 5, true);
    Press(screen, "cmdFormulaSet1");
    EXPECT_EQ("C06 ", Caption(screen, "lblFormula1"));
    Press(screen, "OKButton");
    EXPECT_EQ(1, applied);
    Pick(screen, "cmbRecM", 1);
    Press(screen, "OKButton");
    EXPECT_EQ(2, applied);
  });
  EXPECT_EQ(1, Stored("C", 18, "RECM"));
  EXPECT_EQ(1, Stored("C", 18, "TYPE"));
  Put("C", 18, "RECM", 0);
  EXPECT_EQ(before, AllNumbers());
}

} // namespace
} // namespace loader::test
