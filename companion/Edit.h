// Edits of the set-up in force: all of them, or none.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "companion/Parameters.h"
#include "core/WholeSetUp.h"

namespace loader {

// As it is typed, or as another set-up stores it.
struct TypedText {
  std::u16string text;
};
struct Edit {
  ParameterRef ref;
  std::variant<TypedText, StoredValue> value;
};

// "C02MMAX=800.0" or, with '*' and '?' in the key, an edit for each key that it matches. Small letters count
// as capitals. Undone for an argument without "=", and for a key that names nothing of the set-up in force.
[[nodiscard]] std::vector<Edit> EditsOf(std::u16string_view argument, Language language);

// A parameter whose value, or what its value reads as, is another one now.
struct Change {
  ParameterRef ref;
  StoredValue before;
  StoredValue after;
  std::u16string textBefore; // by ReadableValue
  std::u16string textAfter;
};
struct Refusal {
  ParameterRef ref;
  std::u16string reason;
};
struct EditReport {
  std::vector<Change> changes;       // in the order of the edits
  std::vector<ParameterRef> already; // asked for, and so already
  std::vector<Change> reads;         // the same number, which reads otherwise now: its point has moved
  std::vector<Refusal> refusals;     // where there is one, nothing has been changed
};

// The set-up in force as it is once it has been saved and opened again: some words of older files are none of
// today's.
[[nodiscard]] WholeSetUp SavedAndOpened(Language language);

// A further objection to an edited parameter, changed or so already, once all edits are laid.
using Judge = std::function<std::optional<std::u16string>(const ParameterRef&, bool changed)>;

// Lays all edits, in whatever order they depend on each other, then looks at the whole set-up: what was
// edited has to be good (Objection), can be edited (WhyNeverSet), for typed edits also in the state of its
// channel unless kind or scaling was edited as well, and nothing that was good may be bad now. A parameter
// that is edited twice with different values is refused.
[[nodiscard]] EditReport ApplyEdits(const std::vector<Edit>& edits, const Speech& speech,
                                    const Judge& judge = {});

} // namespace loader
