// The faces of what companion/ says of a write: lines and JSON.
#pragma once

#include "companion/LossesOfWrite.h"
#include "companion/Verify.h"
#include "paramtool/Command.h"

namespace loader::paramtool {

// What would change, and what the recorder cannot take. `setUp` is the one that is written.
void SayForecast(const Call& call, WholeSetUp& setUp, RecorderRead& present, WriteForecast& forecast);
// "changes", "losses", "unseen".
void InsertForecast(const Call& call, WholeSetUp& setUp, WriteForecast& forecast, QJsonObject& report);

// The registers that are not as they have to be; by the set-up in force.
void SayDifferent(const Call& call, const std::vector<RegisterDifference>& different);
// "end", "sections", "registers", "different", "stored"; by the set-up in force.
void InsertOutcome(const Call& call, const WriteOutcome& outcome, QJsonObject& report);

} // namespace loader::paramtool
