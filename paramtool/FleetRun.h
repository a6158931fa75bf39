// Many programs, some at a time, each a process of its own.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace loader::paramtool {

struct ChildJob {
  QStringList arguments;
  std::u16string wire; // jobs of the same wire run one after the other
};

enum class ChildEnd {
  NeverStarted, // the run was interrupted before its turn
  NotStarted,   // the program cannot be run
  Ended,        // by itself, with `exit`
  Crashed,
  TimedOut,
  Interrupted,
};

struct ChildResult {
  ChildEnd end = ChildEnd::NeverStarted;
  int exit = -1;
  QJsonObject report; // its standard output; empty where that is no JSON object
  QString errors;     // its standard error output
  double seconds = 0;
};

struct ChildRun {
  QString program;
  int jobs = 4;             // at a time
  int timeout = 900 * 1000; // milliseconds for each
  // From the request to end (so that a child puts its things in order) to the kill.
  int grace = 10 * 1000;
  std::function<void(std::size_t job, const ChildResult&)> ended = {};
  std::function<void(std::size_t running)> changed = {}; // after each start and end
};

struct ChildResults {
  std::vector<ChildResult> results; // in the order of the jobs
  bool interrupted = false;         // by Ctrl+C or its like
};

// Runs them all, in their order as far as the wires let them, with an event loop of its own. An interrupt
// starts no more and ends those that run, the second one at once. None of them outlives this.
[[nodiscard]] ChildResults RunChildren(const std::vector<ChildJob>& jobs, const ChildRun& run);

} // namespace loader::paramtool
