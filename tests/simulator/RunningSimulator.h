// recorder-sim as a process of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace loader::simulator {

// A folder of a test's own.
struct TestFolder : test::TemporaryFolder {
  TestFolder() : TemporaryFolder("recorder-sim-test-") {}
};

[[nodiscard]] std::string ContentOf(const std::filesystem::path& file);

struct Ended {
  int status = -1; // exit status; 128 + signal when a signal ended it
  std::string output, errors;
};
// Runs it to its end, which must come by itself.
[[nodiscard]] Ended RunSimulator(std::vector<std::string> arguments);

class RunningSimulator {
public:
  // Starts it and waits until `lines` lines are open; a failed start fails the test.
  explicit RunningSimulator(std::vector<std::string> arguments, int lines = 1);
  // Ends it when the test has not.
  ~RunningSimulator();
  RunningSimulator(const RunningSimulator&) = delete;
  RunningSimulator& operator=(const RunningSimulator&) = delete;

  // What is behind "listening on ", in the order of opening.
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  // Of the first line, which is TCP.
  [[nodiscard]] int Port() const;
  [[nodiscard]] int ProcessId() const { return process_; }

  // Sends the signal and waits for the end.
  [[nodiscard]] Ended Stop(int signal);

private:
  int process_ = -1;
  int output_ = -1;
  TestFolder folder_;
  std::vector<std::string> lines_;
};

} // namespace loader::simulator
