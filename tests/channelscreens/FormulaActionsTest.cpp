// The two screens of a formula against a plain model of them, by random sequences of what a user does; and
// what passes between the working table and the store.
#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "channelscreens/frmFormula.h"
#include "channelscreens/frmOpSetting.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "tests/channelscreens/Terms.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader {
namespace {

using namespace test;

// What a formula is to a user: a list of at most three terms, the numbers of their rows.
struct ModelTerm {
  int rule, function, first, second;
};
struct Model {
  std::vector<ModelTerm> terms;
  int cursor = 1;
};

const char* const Names[] = {"",        "ABS(A)",   "POW(A,B)", "SQR(A)", "LOG(A)", "LN(A)",  "EXP(A)",
                             "RH(A,B)", "MAX(A,B)", "MIN(A,B)", "H-P(A)", "L-P(A)", "AVG(A)", "SUM(A,B)"};
bool OfTwo(int function) {
  return std::string(Names[function]).ends_with("(A,B)");
}

// The rows of KOV.
std::string NameOfRow(int row) {
  const std::pair<char, int> kinds[] = {{'C', 30}, {'T', 30}, {'D', 10}, {'M', 12}, {'K', 20}, {'B', 3}};
  for (const auto& [letter, count] : kinds) {
    if (row < count) {
      return letter + std::string(row < 9 ? "0" : "") + std::to_string(row + 1);
    }
    row -= count;
  }
  return "?";
}

std::string Print(const Model& model) {
  std::string text;
  for (std::size_t place = 0; place < model.terms.size(); ++place) {
    const ModelTerm& term = model.terms[place];
    if (place > 0) {
      text += std::string(" +-*/").substr(static_cast<std::size_t>(term.rule), 1);
    }
    if (term.function == Plain) {
      text += NameOfRow(term.first);
      continue;
    }
    const std::string name = Names[term.function];
    text += name.substr(0, name.find('(') + 1) + NameOfRow(term.first);
    text += OfTwo(term.function) ? "," + NameOfRow(term.second) + ")" : ")";
  }
  return text.empty() || model.terms.size() == 3 ? text : text + " ";
}

class FormulaActions : public ::testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }
  int Random(int below) { return std::uniform_int_distribution(0, below - 1)(generator); }
  // A row, or none where the list shows none and nobody picks one.
  std::optional<int> Sometimes(int below) {
    return Random(6) == 0 ? std::nullopt : std::optional(Random(below));
  }
  void SetAtRandom(FormulaScreen& screen, Model& model);
  void Act(FormulaScreen& screen, Model& model);

  std::mt19937 generator{20261122};
  ScriptedPlatform platform;
  ScriptedUser user;
  FormulaTable work{};
};

void FormulaActions::SetAtRandom(FormulaScreen& screen, Model& model) {
  const auto place = static_cast<std::size_t>(model.cursor - 1);
  const bool stands = place < model.terms.size();
  ModelTerm term = stands ? model.terms[place] : ModelTerm{NoRule, Plain, -1, -1};
  if (!OfTwo(term.function)) {
    term.second = -1;
  }
  const std::optional<int> rule = Sometimes(5);
  const std::optional<int> function = Sometimes(14);
  const std::optional<int> first = Sometimes(105);
  const std::optional<int> second = Sometimes(105);
  const bool cancels = Random(8) == 0;
  if (model.cursor > 1) {
    term.rule = rule.value_or(term.rule);
  }
  term.function = function.value_or(term.function);
  term.first = first.value_or(term.first);
  term.second = OfTwo(term.function) ? second.value_or(term.second) : -1;
  const char16_t* message = nullptr;
  if (model.cursor > 1 && term.rule == NoRule) {
    message = u"四則演算を設定してください";
  } else if (term.first < 0 || (OfTwo(term.function) && term.second < 0)) {
    message = u"入力を設定してください";
  }
  if (message != nullptr && !cancels) {
    platform.boxes.Expect(message);
  }
  platform.screens.Expect<OpSettingScreen>("frmOpSetting", [&](OpSettingScreen& setting) {
    if (rule) {
      user.Choose(setting.cmbOpFourRules, *rule);
    }
    if (function) {
      user.Choose(setting.cmbOpContents, *function);
    }
    if (first) {
      user.Choose(setting.cmbInputChNo1, *first);
    }
    if (second) {
      user.Choose(setting.cmbInputChNo2, *second);
    }
    user.Click(cancels ? setting.btnCancel : setting.btnOk);
  });
  user.Click(screen.btnSet);
  if (cancels || message != nullptr) {
    return;
  }
  if (stands) {
    model.terms[place] = term;
  } else {
    model.terms.push_back(term);
  }
}

void FormulaActions::Act(FormulaScreen& screen, Model& model) {
  const auto filled = static_cast<int>(model.terms.size());
  switch (Random(5)) {
  case 0:
    user.Click(screen.btnPrev);
    model.cursor = std::max(model.cursor - 1, 1);
    break;
  case 1:
    user.Click(screen.btnNext);
    model.cursor = std::min({model.cursor + 1, filled + 1, 3});
    break;
  case 2:
    user.Click(screen.btnDelete);
    if (model.cursor <= filled) {
      model.terms.erase(model.terms.begin() + model.cursor - 1);
    }
    break;
  default:
    SetAtRandom(screen, model);
    break;
  }
}

TEST_F(FormulaActions, KeepToThePlainModel) {
  std::array<Model, FormulaCount> models;
  for (int round = 0; round < 400; ++round) {
    // The functions offered depend on the other formulas; here they are all there.
    work = {};
    const int formula = Random(FormulaCount) + 1;
    Model& model = models.at(static_cast<std::size_t>(formula - 1));
    model = {};
    const int steps = Random(25);
    const bool keeps = Random(3) > 0;
    platform.screens.Expect<FormulaScreen>("frmFormula", [&](FormulaScreen& screen) {
      for (int step = 0; step < steps; ++step) {
        Act(screen, model);
        ASSERT_EQ(Print(model), ToUtf8(screen.lblFormula.caption));
        ASSERT_EQ(model.cursor, screen.cursor);
      }
      const auto special = std::ranges::count_if(
          model.terms, [](const ModelTerm& term) { return term.function == Avg || term.function == Sum; });
      if (keeps && special > 1) {
        platform.boxes.Expect(u"AVG演算またはSUM演算は、1つの式に1回しか使用できません");
      }
      user.Click(keeps ? screen.OKButton : screen.CancelButton);
      EXPECT_EQ(keeps && special > 1, platform.screens.Reachable(screen));
      if (!keeps || special > 1) {
        model = {};
      }
    });
    ShowFormula(work, formula);
    ASSERT_EQ(Print(model), ToUtf8(FormulaText(work, 0, FormulaModeDialog, formula)));
    for (const auto& terms : work) {
      ASSERT_TRUE(&terms == &work.at(static_cast<std::size_t>(formula - 1)) ||
                  terms == (std::array<FormulaTerm, TermCount>{}));
    }
    platform.boxes.ExpectNoneLeft();
    platform.screens.ExpectNoneLeft();
  }
}

// --- The store

TEST_F(FormulaActions, EveryInputOfBothModelsPrintsAndComesBackFromTheStore) {
  for (const char* model : {"KOV", "RUG"}) {
    StartWithModel(platform, model);
    for (int row = 0; row < InputRows(); ++row) {
      const TermInput input = *InputOfRow(row);
      Put("O", 1, "OP31", FormulaCompose(Max, Plus));
      Put("O", 1, "S131", FormulaCompose(input.kind, input.number));
      Put("O", 1, "S231", FormulaCompose(input.kind, input.number));
      const std::string text = ToUtf8(FormulaText(work, 1, FormulaModeStore, 3));
      EXPECT_EQ(row, RowOfInput({TermOf(work, 3, 1).Input1Kind, TermOf(work, 3, 1).Input1No}));
      EXPECT_EQ(row, RowOfInput({TermOf(work, 3, 1).Input2Kind, TermOf(work, 3, 1).Input2No}));
      const std::string rowText = ToUtf8(InputRowText(input));
      const std::string name = rowText.substr(rowText.find(" : ") + 3);
      EXPECT_EQ("MAX(" + name + "," + name + ")", text) << row;
    }
  }
}

} // namespace
} // namespace loader
