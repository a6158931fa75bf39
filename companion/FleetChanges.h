// What has changed in a recorder between two readings of it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "companion/Parameters.h"

namespace loader {

struct FleetChanges {
  bool known = false; // false: one of the two does not open as a parameter file
  // Names of the parameters that differ, in the order of the report of a comparison; those that only one of
  // the two has are among them. No values: a commit message tells no secret.
  std::vector<std::u16string> names;
  [[nodiscard]] bool None() const { return known && names.empty(); }
};

// Between the parameter files `before` and `after`. The recorder's clock, its running state and its commands
// are no settings and differ from one minute to the next: they do not count. `file`: by whose name the model
// is found where the content leaves it open.
[[nodiscard]] FleetChanges ChangesBetween(std::string_view before, std::string_view after,
                                          const std::filesystem::path& file, Language language);

} // namespace loader
