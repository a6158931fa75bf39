#include "paramtool/FleetCommits.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>

#include "core/Text.h"
#include "core/modFile.h"
#include "paramtool/GitCommit.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

namespace {

std::u16string Counted(std::size_t count) {
  return DecimalText(static_cast<std::int64_t>(count));
}

// The first few, and how many more there are.
std::u16string FirstOf(std::span<const std::u16string> names, Language language) {
  constexpr std::size_t Most = 5;
  const std::size_t shown = std::min(names.size(), Most);
  std::u16string text;
  for (std::size_t i = 0; i < shown; ++i) {
    text += (i == 0 ? std::u16string() : std::u16string(PhraseText(Phrase::FleetListSeparator, language))) +
            names[i];
  }
  return names.size() == shown ? text
                               : Say(Phrase::FleetAndMore, language,
                                     {{u"NAMES", text}, {u"COUNT", Counted(names.size() - shown)}});
}

std::u16string LineOf(const std::u16string& name, const GitChange& change, Language language) {
  if (!change.before) {
    return Say(Phrase::FleetCommitNew, language, {{u"NAME", name}});
  }
  const FleetChanges changes =
      ChangesBetween(*change.before, ReadWholeFile(change.file), change.file, language);
  if (!changes.known || changes.names.empty()) {
    return Say(Phrase::FleetCommitReplaced, language, {{u"NAME", name}});
  }
  return Say(Phrase::FleetCommitChanged, language,
             {{u"NAME", name},
              {u"COUNT", Counted(changes.names.size())},
              {u"PARAMETERS", FirstOf(changes.names, language)}});
}

QString Message(const FleetOrder& order, const std::vector<GitChange>& changes) {
  std::vector<std::u16string> names;
  std::u16string body;
  for (const GitChange& change : changes) {
    const auto recorder = std::ranges::find_if(
        order.recorders, [&](const FleetRecorder& row) { return FileOf(order, row) == change.file; });
    names.push_back(recorder->name);
    body += LineOf(recorder->name, change, order.language) + u"\n";
  }
  return Q(Say(Phrase::FleetCommitSubject, order.language,
               {{u"COUNT", Counted(names.size())}, {u"NAMES", FirstOf(names, order.language)}}) +
           u"\n\n" + body);
}

FleetCommit Refused(const std::filesystem::path& folder, const GitFailure& failure, Language language) {
  const std::u16string reason = failure.reason.isEmpty()
                                    ? std::u16string(PhraseText(Phrase::FleetNoGit, language))
                                    : failure.reason.toStdU16String();
  return {folder,
          {},
          Say(Phrase::FleetNotCommitted, language, {{u"FOLDER", folder.u16string()}, {u"REASON", reason}})};
}

FleetCommit Told(const std::filesystem::path& workTree, const GitCommit& commit, Language language) {
  std::u16string text = Say(Phrase::FleetCommitted, language,
                            {{u"FOLDER", workTree.u16string()}, {u"COMMIT", Widen(commit.id)}});
  if (commit.detached) {
    text += u" " + Say(Phrase::FleetDetached, language, {{u"FOLDER", workTree.u16string()}});
  }
  return {workTree, commit.id, text};
}

} // namespace

std::vector<FleetCommit> CommitWhatChanged(const FleetOrder& order, const std::vector<FleetResult>& results) {
  std::vector<FleetCommit> commits;
  std::map<std::filesystem::path, std::optional<std::filesystem::path>> workTreeOf; // by folder
  std::map<std::filesystem::path, std::vector<std::filesystem::path>> files;        // by work tree
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (!results[i].saved) {
      continue;
    }
    const std::filesystem::path file = FileOf(order, order.recorders[i]);
    const auto [known, isNew] = workTreeOf.try_emplace(file.parent_path());
    if (isNew) {
      try {
        known->second = WorkTreeOf(file.parent_path());
      } catch (const GitFailure& failure) {
        commits.push_back(Refused(file.parent_path(), failure, order.language));
      }
    }
    if (known->second) {
      files[*known->second].push_back(file);
    }
  }
  for (const auto& [workTree, changed] : files) {
    try {
      const auto message = [&](const std::vector<GitChange>& changes) { return Message(order, changes); };
      if (const auto commit = CommitFiles(workTree, changed, message)) {
        commits.push_back(Told(workTree, *commit, order.language));
      }
    } catch (const GitFailure& failure) {
      commits.push_back(Refused(workTree, failure, order.language));
    }
  }
  return commits;
}

} // namespace loader::paramtool
