// The formulas of the operation channels in reports: as they are read, not as the words that they are packed
// in.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "companion/Parameters.h"

namespace loader {

// One formula of one operation channel.
struct FormulaRef {
  int item = 0;   // of section O, from 0
  int number = 1; // 1 to 4
  bool operator==(const FormulaRef&) const = default;
};

// The formula that a parameter is a word of; empty for every other parameter.
[[nodiscard]] std::optional<FormulaRef> FormulaOf(const ParameterRef& ref);
// Its nine words, in the order of the parameter file.
[[nodiscard]] std::vector<ParameterRef> WordsOf(const FormulaRef& formula);

// "CH 19 式1"
[[nodiscard]] std::u16string NameOf(const FormulaRef& formula, Language language);
// "C01+C02", by the set-up in force; empty for a formula without a term.
[[nodiscard]] std::u16string TextOf(const FormulaRef& formula);
// The words that the text does not tell: of a term behind the first empty one, a second input that the
// function does not take, a function, sign or kind that does not exist. Text and these words together are the
// whole formula: no two formulas have both the same.
[[nodiscard]] std::vector<ParameterRef> WordsBeside(const FormulaRef& formula);

// Behind a word that has changed: "  [C01+C02 → C01+C03]". Empty where both formulas read the same.
[[nodiscard]] std::u16string FormulasBeside(std::u16string_view before, std::u16string_view after,
                                            Language language);

} // namespace loader
