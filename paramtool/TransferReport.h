// What the reports of read and write share.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "companion/Losses.h"
#include "companion/SavedSetUp.h"
#include "companion/Transfer.h"
#include "paramtool/Command.h"

namespace loader::paramtool {

// {"address", "model", "version", "generation", "station"}
[[nodiscard]] QJsonObject JsonOfRecorder(const RecorderThere& recorder, const RecorderLine& line);

// The value that a set-up would have if the parameter were `value`, as a report shows it; by the set-up in
// force.
[[nodiscard]] std::u16string ShownValue(const ParameterRef& ref, const StoredValue& value,
                                        const Speech& speech);

// The lines of what a file does not give back, with their heading; and as JSON: "notKept".
void SayNotKept(const Call& call, const std::vector<NotKept>& notKept);
[[nodiscard]] QJsonArray JsonOfNotKept(const Call& call, const std::vector<NotKept>& notKept);

// A heading and its lines, each indented; nothing for no lines.
void SayBlock(Output& out, std::u16string_view heading, const std::vector<std::u16string>& lines);

} // namespace loader::paramtool
