// The table at the end of `paramtool fleet`, and its JSON report.
#pragma once

#include <QJsonObject>
#include <string>
#include <string_view>
#include <vector>

#include "paramtool/Fleet.h"

namespace loader::paramtool {

// How many columns of a terminal a text takes: a full-width character takes two.
[[nodiscard]] std::size_t ColumnsOf(std::u16string_view text);

// In the order of the list, with its heading first and the sum last; every line without its end.
[[nodiscard]] std::vector<std::u16string> FleetTable(const FleetOrder& order, const FleetReport& report);

// Adds what a run was to a report. The form is described in docs/paramtool.md.
void AddFleetJson(QJsonObject& json, const FleetOrder& order, const FleetReport& report);

// "1.2"
[[nodiscard]] std::u16string SecondsText(double seconds);

} // namespace loader::paramtool
