// What two set-ups differ in.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "companion/Parameters.h"
#include "companion/Selection.h"
#include "core/WholeSetUp.h"

namespace loader {

// How a parameter stands in the two set-ups, which are called A and B. What is equal is not reported.
enum class Verdict {
  Different,
  // Both hold the same number, and it says something else: the decimal point of the channel is another one,
  // the user unit has another text, the models count their channels differently.
  ReadsDifferent,
  OnlyInA,
  OnlyInB,
};
inline constexpr std::size_t Verdicts = 4;

// A parameter in one of the two, by that one's own rules.
struct ComparedSide {
  std::u16string name;
  std::optional<StoredValue> value; // empty where the set-up does not have it
  std::u16string text;              // ReadableValue
  std::u16string formula;           // of a word of a formula: how the whole of it reads
};

struct ComparedParameter {
  ParameterRef ref;
  Page page = Page::Channels; // of A, or of B where A does not have it
  Verdict verdict = Verdict::Different;
  bool hidden = false; // a secret of a report that shows none
  ComparedSide a;
  ComparedSide b;
};

// What is compared: what one of `only` names (everything when there is none), without what one of `ignore`
// names. The models count differently: "CH19" of a KOV is another channel than that of a RUG. In doubt a
// parameter is compared: it is when `only` names it in either set-up, and left out when `ignore` names it in
// each that has it.
struct CompareScope {
  std::vector<Selection> only;
  std::vector<Selection> ignore;
};

struct Comparison {
  std::vector<ComparedParameter> found; // by page, inside in the order of the parameter file, A's first
  std::size_t compared = 0;             // keys that were looked at
  std::size_t leftOut = 0;              // keys that the scope leaves out
  std::array<std::size_t, Verdicts> counts{};

  [[nodiscard]] bool Equal() const { return found.empty(); }
  [[nodiscard]] std::size_t Count(Verdict verdict) const { return counts[static_cast<std::size_t>(verdict)]; }
};

// By key, whatever the two models are. Neither set-up changes.
[[nodiscard]] Comparison Compare(WholeSetUp& a, WholeSetUp& b, const CompareScope& scope,
                                 const Speech& speech);

// The first pattern of the scope that names nothing in either set-up: a mistake of the user's.
[[nodiscard]] const Selection* FirstThatNamesNothing(const CompareScope& scope, WholeSetUp& a, WholeSetUp& b);

// The value of a side for a report: a text in quotes, so that its blanks can be seen, a number with its
// stored number where both sides would read the same. Empty where the set-up does not have it.
[[nodiscard]] std::u16string ShownValue(const ComparedParameter& parameter, const ComparedSide& side);
// A name, or both where the two models call it differently.
[[nodiscard]] std::u16string ShownName(const ComparedParameter& parameter);

// How many parameters of an opened set-up its file does not name, so that they are at their defaults. By the
// reader's own rules, under which an older file names some of them by other keys.
[[nodiscard]] std::size_t CountUnnamed(WholeSetUp& opened, std::string_view bytes);

} // namespace loader
