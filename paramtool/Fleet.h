// What `paramtool fleet` does with the recorders of a list, as a record: the table and the JSON report are
// faces of it.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "companion/FleetChanges.h"
#include "companion/FleetList.h"
#include "companion/Phrases.h"
#include "paramtool/FleetRun.h"

namespace loader::paramtool {

enum class FleetAction { Read, Compare, Write };
[[nodiscard]] const char* NameOf(FleetAction action); // "read"

struct FleetOrder {
  FleetAction action = FleetAction::Read;
  std::vector<FleetRecorder> recorders;
  std::filesystem::path folder; // of their files
  QString reference;            // compare: against this in place of each one's file; empty: none
  bool files = false;           // compare: their files in place of the recorders
  QStringList passedOn;         // options of the program that does it for one recorder
  bool commit = true;           // read
  // write: the folder of the backups of this run; empty: a single write's own place.
  std::filesystem::path backups;
  Language language = Language::Japanese;
  ChildRun run; // `program` takes the arguments of paramtool; `ended` and `changed` are not used
};

enum class FleetOutcome { Good, Different, Failed, Stopped };

struct FleetResult {
  FleetOutcome outcome = FleetOutcome::Stopped;
  std::u16string text;     // what became of it, one line
  std::u16string recorder; // "RUG V12W"; empty where nobody has told
  ChildResult child;
  // Read well, with its file in place.
  bool saved = false;
};

struct FleetCommit {
  std::filesystem::path workTree;
  std::string id;      // empty: git has refused
  std::u16string text; // one line
  [[nodiscard]] bool Done() const { return !id.empty(); }
};

struct FleetReport {
  std::vector<FleetResult> results; // in the order of the list
  std::vector<FleetCommit> commits; // one for each work tree in which something has changed
  bool interrupted = false;
  double seconds = 0;
  [[nodiscard]] std::size_t Count(FleetOutcome outcome) const;
};

// What is told while it runs.
struct FleetWatch {
  std::function<void(std::size_t recorder, const FleetResult& result, std::size_t done)> ended;
  std::function<void(std::size_t running, std::size_t done)> changed;
};

// Each recorder in a process of its own. `read` reads to a folder of its own first and puts a file in place
// when it is whole and its settings have changed; the changed ones then become one commit, where their folder
// is under git. An interrupt leaves no commit: the next run makes up for it.
[[nodiscard]] FleetReport CarryOut(const FleetOrder& order, const FleetWatch& watch);

[[nodiscard]] std::filesystem::path FileOf(const FleetOrder& order, const FleetRecorder& recorder);

} // namespace loader::paramtool
