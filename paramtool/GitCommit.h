// Files that stand under git, and one commit of some of them. git runs as a process with arguments; it is
// never asked through a shell and never asks anybody.
#pragma once

#include <QString>
#include <QStringList>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace loader::paramtool {

// What git could not do, in its own words; empty: it cannot be run.
struct GitFailure {
  QString reason;
};

// The root of the work tree that the folder is in; empty where it is in none, or where no git is installed
// and nothing above the folder looks like a work tree. GitFailure where git refuses to say.
[[nodiscard]] std::optional<std::filesystem::path> WorkTreeOf(const std::filesystem::path& folder);

struct GitChange {
  std::filesystem::path file;        // as it was given
  std::optional<std::string> before; // its bytes in the last commit; empty where that has no such file
};

struct GitCommit {
  std::string id;        // short
  bool detached = false; // on no branch
};

// Commits those of the files whose content differs from the last commit, and nothing else: what somebody has
// staged besides stays staged and stays out. `message` makes the message of what has changed. Empty where
// nothing has. GitFailure where git refuses: no identity, a hook, a locked index, a merge under way; the
// files stay as they are.
[[nodiscard]] std::optional<GitCommit>
CommitFiles(const std::filesystem::path& workTree, const std::vector<std::filesystem::path>& files,
            const std::function<QString(const std::vector<GitChange>&)>& message);

} // namespace loader::paramtool
