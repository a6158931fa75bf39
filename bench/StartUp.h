// How long a program takes from its start to its painted window, whole processes in turn.
#pragma once

#include <string>
#include <vector>

namespace loader::bench {

struct StartUp {
  double milliseconds;
  double residentMegabytes; // once painted
};

// Runs a program of this bench's folder with its arguments until it tells that it is painted.
// std::runtime_error when it ends without that.
[[nodiscard]] StartUp MeasureStart(const std::vector<std::string>& command);

} // namespace loader::bench
