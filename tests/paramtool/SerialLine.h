// The serial line of a simulated recorder.
#pragma once

#include <string>
#include <vector>

namespace loader::test {

// What tells recorder-sim to stand on a serial line that is called `file`; empty where the system has no
// pseudo-terminals.
[[nodiscard]] std::vector<std::string> SerialLineOfRecorder(const std::string& file);

} // namespace loader::test
