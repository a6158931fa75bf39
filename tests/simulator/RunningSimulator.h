// recorder-sim as a process of its own.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::simulator {

using test::ContentOf;
using test::Ended;

// A folder of a test's own.
struct TestFolder : test::TemporaryFolder {
  TestFolder() : TemporaryFolder("recorder-sim-test-") {}
  // The name of a file in it, for a command line.
  [[nodiscard]] std::string File(std::string_view name) const { return (*this / name).string(); }
};

// Runs it to its end, which must come by itself.
[[nodiscard]] Ended RunSimulator(std::vector<std::string> arguments);

class RunningSimulator {
public:
  // Starts it and waits until `lines` lines are open; a failed start fails the test.
  explicit RunningSimulator(std::vector<std::string> arguments, int lines = 1);

  // What is behind "listening on ", in the order of opening.
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  // Of the first line, which is TCP.
  [[nodiscard]] int Port() const;
  [[nodiscard]] int ProcessId() const { return process_.ProcessId(); }

  // Sends the signal and waits for the end; its output is what came behind Lines().
  [[nodiscard]] Ended Stop(int signal);

private:
  test::RunningProcess process_;
  std::string greeting_;
  std::vector<std::string> lines_;
};

} // namespace loader::simulator
