// A program as a process of its own.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace loader::test {

struct Ended {
  int status = -1; // exit status; 128 + signal when a signal ended it
  std::string output, errors;
};

struct ProcessOptions {
  std::vector<std::string> environment = {}; // "NAME=VALUE", beside or in place of the test's own
  std::string input = {};                    // what stands on its standard input
  bool console = false; // it has a console of its own, where Interrupt is a Ctrl+C; Windows needs it for that
};

// What a program can be told. On Windows Kill ends it at once, and every other one is a Ctrl+Break, but for
// the Interrupt of a program with a console.
constexpr int HangUp = 1, Interrupt = 2, Kill = 9, Terminate = 15;

class RunningProcess {
public:
  RunningProcess(const std::filesystem::path& program, std::vector<std::string> arguments,
                 const ProcessOptions& options = {});
  // Ends it when the test has not.
  ~RunningProcess();
  RunningProcess(const RunningProcess&) = delete;
  RunningProcess& operator=(const RunningProcess&) = delete;

  [[nodiscard]] int ProcessId() const;
  // What it has written up to so many line ends, or up to its end when it ends or is silent too long before.
  [[nodiscard]] std::string ReadLines(int lines);
  [[nodiscard]] std::string ErrorsSoFar() const;
  void Signal(int signal) const;
  // Nobody reads its output from now on.
  void CloseOutput();
  // Waits for the end, which must come by itself (a test that hangs is killed after a while and fails).
  [[nodiscard]] Ended Wait();

private:
  struct Parts; // of the system
  std::unique_ptr<Parts> parts_;
  std::string read_; // of the output, by ReadLines
  TemporaryFolder folder_{"loader-process-"};
};

// Runs it to its end.
[[nodiscard]] Ended RunProcess(const std::filesystem::path& program, std::vector<std::string> arguments,
                               const ProcessOptions& options = {});

[[nodiscard]] std::string ContentOf(const std::filesystem::path& file);

} // namespace loader::test
