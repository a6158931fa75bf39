// What `set` and `merge` say of their edits.
#pragma once

#include <vector>

#include "companion/Edit.h"
#include "paramtool/Command.h"

namespace loader::paramtool {

// The report as lines, refusals as messages, or as JSON. Where nothing was refused the set-up in force is
// written to `file` first; Undone where that fails. `left` is what merge never takes.
[[nodiscard]] Exit FinishEdits(Call& call, const EditReport& report, const std::vector<Refusal>& left,
                               const std::filesystem::path& file);

} // namespace loader::paramtool
