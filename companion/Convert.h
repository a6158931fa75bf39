// The change of model of a set-up, with all that became of it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "companion/Parameters.h"
#include "conversion/modModelChng.h"
#include "core/WholeSetUp.h"

namespace loader {

inline constexpr std::size_t Outcomes = 5;
// In the order of a report: what is lost stands first.
inline constexpr std::array<Outcome, Outcomes> OutcomesByLoss{
    Outcome::Dropped, Outcome::Cleared, Outcome::NotCarried, Outcome::Renumbered, Outcome::Carried};

// A changed parameter of the old set-up and what stands in its place in the new one, each by the rules of its
// own model.
struct ConversionLine {
  ConvertedParameter parameter;
  ParameterRef ref; // in the old set-up
  Page page = Page::Channels;
  bool hidden = false; // a secret of a report that shows none
  std::u16string oldName;
  std::u16string oldText;
  std::u16string oldFormula; // of a word of a formula: how the whole of it reads
  // Empty where the new model does not have the parameter.
  std::optional<ParameterRef> newRef;
  std::u16string newName;
  std::u16string newText;
  std::u16string newFormula;
};

struct Conversion {
  WholeSetUp setUp;                  // of the new model
  std::vector<ConversionLine> lines; // by page, inside in the order of the old parameter file
  std::array<std::size_t, Outcomes> counts{};

  [[nodiscard]] std::size_t Count(Outcome outcome) const { return counts[static_cast<std::size_t>(outcome)]; }
};

// What the window's change of model makes of `old`; `initial` are the initial settings of the other model.
// Nothing of both changes, and neither does ParamStoreBackup.
[[nodiscard]] Conversion ConvertSetUp(const WholeSetUp& old, const WholeSetUp& initial, const Speech& speech);

// The value of a line for a report: a text in quotes.
[[nodiscard]] std::u16string ShownOld(const ConversionLine& line);
[[nodiscard]] std::u16string ShownNew(const ConversionLine& line);

} // namespace loader
