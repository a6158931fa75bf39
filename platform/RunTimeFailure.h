// What the system calls a run-time failure: bad data or a failing device at a place that cannot go on.
// Each routine that is said to catch failures catches it; no other does.
#pragma once

#include <stdexcept>

namespace loader {

struct RunTimeFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

} // namespace loader
