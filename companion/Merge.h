// Parameters of another set-up taken over into the one in force.
#pragma once

#include <vector>

#include "companion/Edit.h"
#include "companion/Selection.h"
#include "core/WholeSetUp.h"

namespace loader {

struct MergeReport {
  EditReport edits;
  // Chosen, and never taken: each recorder's own (clock, commands, identity), and what a parameter file
  // loses.
  std::vector<Refusal> left;
};

// Takes over what `only` names and `ignore` does not, all of it or nothing. Both set-ups are of one model.
// Beside the rules of ApplyEdits a value is refused that would read otherwise here than it does there: 80.0
// is not 8.00, be the stored number the same. A field that is disabled in the state of its channel takes the
// value of a channel in the same state alone.
// Undone for set-ups of two models: references are numbered differently, convert first.
[[nodiscard]] MergeReport MergeFrom(WholeSetUp& other, const std::vector<Selection>& only,
                                    const std::vector<Selection>& ignore, const Speech& speech);

} // namespace loader
