// The commits that a run of `paramtool fleet LIST read` leaves.
#pragma once

#include <vector>

#include "paramtool/Fleet.h"

namespace loader::paramtool {

// Of the files that were read well, one for each work tree. A work tree where git refuses has a commit
// without an id, which tells why.
[[nodiscard]] std::vector<FleetCommit> CommitWhatChanged(const FleetOrder& order,
                                                         const std::vector<FleetResult>& results);

} // namespace loader::paramtool
