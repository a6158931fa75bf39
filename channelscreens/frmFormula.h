// One formula of an operation channel: its text, and a cursor over its three terms.
#pragma once

#include <array>

#include "operation/Formula.h"
#include "platform/Controls.h"

namespace loader {

struct FormulaScreen : Screen {
  // `work` holds the formulas of the channel that is being edited; the screen changes formula `formula`, from
  // 1 to 4, in it. It has to outlive the screen.
  FormulaScreen(FormulaTable& work, int formula);

  FormulaTable& table;
  const int number;                                // of the formula, from 1
  const std::array<FormulaTerm, TermCount> before; // its terms as they were when the screen opened
  int cursor = 1;                                  // the term in hand, from 1 to 3
  bool kept = false;                               // closed by OKButton

  Label lblFormula{*this, "lblFormula"};
  Label lblFNum{*this, "lblFNum"};
  Label lblFormulaNum{*this, "lblFormulaNum"};
  Button btnPrev{*this, "btnPrev"};
  Button btnNext{*this, "btnNext"};
  Button btnSet{*this, "btnSet"};
  Button btnDelete{*this, "btnDelete"};
  Button OKButton{*this, "OKButton"};
  Button CancelButton{*this, "CancelButton"};
};

// Modal. Unless it is closed by OKButton the terms are put back as they were.
void ShowFormula(FormulaTable& work, int formula);

} // namespace loader
