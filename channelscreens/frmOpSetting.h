// One term of a formula: its rule, its function and its inputs, each chosen from a list.
#pragma once

#include <optional>
#include <vector>

#include "operation/Formula.h"
#include "platform/Controls.h"

namespace loader {

// "ﾁｬﾈﾙ1 : C01".
[[nodiscard]] std::u16string InputRowText(TermInput input);

// How many functions a term of the formula is offered: the first ones of FunctionList. AVG and SUM are the
// last two, and every AVG or SUM in the other formulas of the channel takes two rows away.
[[nodiscard]] int FunctionsOffered(const FormulaTable& work, int formula);

struct OpSettingScreen : Screen {
  // `formula` from 1 to 4, `term` from 1 to 3.
  OpSettingScreen(const FormulaTable& work, int formula, int term);

  const FormulaTerm before; // what the term is while the screen is open
  const bool firstTerm;
  Frame fraOpSetting{*this, "fraOpSetting"};
  Label lblOpFourRules{*this, "lblOpFourRules"};
  ListBox cmbOpFourRules{*this, "cmbOpFourRules"};
  ListBox cmbOpContents{*this, "cmbOpContents"};
  Label lblInputChNo1{*this, "lblInputChNo1"};
  ListBox cmbInputChNo1{*this, "cmbInputChNo1"};
  Label lblInputChNo2{*this, "lblInputChNo2"};
  ListBox cmbInputChNo2{*this, "cmbInputChNo2"};
  Button btnOk{*this, "btnOk"};
  Button btnCancel{*this, "btnCancel"};
  std::optional<FormulaTerm> handedBack; // its TextLen is not counted yet
};

// Modal. The term as it was set, its TextLen not counted yet; empty when the user gave it up, or when it
// lacked its rule or an input and the message has said so.
[[nodiscard]] std::optional<FormulaTerm> ShowOpSetting(const FormulaTable& work, int formula, int term);

} // namespace loader
