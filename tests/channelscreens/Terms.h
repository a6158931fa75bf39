// Formulas of the tests: terms by their fields, and a table of the kind that a screen edits.
#pragma once

#include <cstddef>

#include "operation/Formula.h"

namespace loader::test {

enum InputKind : int { Channel, Totalizer, DigitalInput, CommInput, Constant, Result };
enum Function : int { Plain, Abs, Pow, Sqr, Log, Ln, Exp, Rh, Max, Min, HighPeak, LowPeak, Avg, Sum };
enum Rule : int { NoRule, Plus, Minus, Times, Divide };

struct InputOf {
  int kind = Channel;
  int number = 0;
};

inline FormulaTerm Term(int rule, int function, InputOf first, InputOf second = {}) {
  FormulaTerm term;
  term.Rule = static_cast<std::int16_t>(rule);
  term.Func = static_cast<std::int16_t>(function);
  term.Input1Kind = static_cast<std::int16_t>(first.kind);
  term.Input1No = static_cast<std::int16_t>(first.number);
  term.Input2Kind = static_cast<std::int16_t>(second.kind);
  term.Input2No = static_cast<std::int16_t>(second.number);
  FormulaTermLength(term);
  return term;
}

inline FormulaTerm& TermOf(FormulaTable& table, int formula, int term) {
  return table.at(static_cast<std::size_t>(formula - 1)).at(static_cast<std::size_t>(term - 1));
}

} // namespace loader::test
