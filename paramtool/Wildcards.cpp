#include "paramtool/Wildcards.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/PathText.h"
#include "core/Text.h"
#include "paramtool/Completion.h"
#include "paramtool/Json.h"
#include "platform/FileName.h"

namespace loader::paramtool {

namespace {

constexpr std::u16string_view Wildcards = u"*?";

// A pattern that has come to the end of the name: what is left of it may be nothing, and so may a dot in
// front of that ("*.*" and "readme.*").
bool MayBeNothing(std::u16string_view rest) {
  if (rest.starts_with(u'.')) {
    rest.remove_prefix(1);
  }
  return rest.find_first_not_of(Wildcards) == std::u16string_view::npos;
}

// The position of the pattern and of the name from which the last `*` takes one character more.
struct Retry {
  std::size_t pattern = 0;
  std::size_t name = 0;
};

bool Matches(std::u16string_view pattern, std::u16string_view name) {
  std::size_t p = 0;
  std::size_t n = 0;
  bool star = false;
  Retry retry;
  while (n < name.size() || !MayBeNothing(pattern.substr(p))) {
    const char16_t wanted = p < pattern.size() ? pattern[p] : u'\0';
    const bool more = n < name.size();
    if (wanted == u'*') {
      star = true;
      retry = {++p, n};
    } else if (wanted == u'?' && (!more || name[n] == u'.')) {
      ++p;
    } else if (more && p < pattern.size() && (wanted == u'?' || wanted == name[n])) {
      ++p;
      ++n;
    } else if (star && retry.name < name.size()) {
      p = retry.pattern;
      n = ++retry.name;
    } else {
      return false;
    }
  }
  return true;
}

// Of a folder, by their keys; empty where it cannot be read.
std::vector<std::u16string> NamesOf(const std::filesystem::path& folder, const std::u16string& pattern) {
  std::set<std::pair<std::u16string, std::u16string>> names; // key and name
  const std::u16string key = FileKey(PathOf(pattern));
  std::error_code failed;
  std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, failed);
  for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
    const std::filesystem::path name = entry->path().filename();
    std::error_code none; // what it is cannot be told: its opening will
    if (MatchesWildcards(key, FileKey(name)) && !entry->is_directory(none)) {
      names.emplace(FileKey(name), PathText(name));
    }
  }
  std::vector<std::u16string> sorted;
  sorted.reserve(names.size());
  for (const auto& [keyOfName, name] : names) {
    sorted.push_back(name);
  }
  return sorted;
}

bool IsOfFiles(const std::string& operand) {
  const Completed kind = CompletionOf(operand);
  return kind == Completed::File || kind == Completed::SetUp;
}

} // namespace

bool MatchesWildcards(std::u16string_view pattern, std::u16string_view name) {
  if (!pattern.ends_with(u'.')) {
    return Matches(pattern, name);
  }
  pattern.remove_suffix(1);
  return name.find(u'.') == std::u16string_view::npos && Matches(pattern, name);
}

QStringList FilesByWildcards(const QString& word) {
  const std::filesystem::path path = PathOf(word.toStdU16String());
  const std::u16string pattern = PathText(path.filename());
  if (pattern.find_first_of(Wildcards) == std::u16string::npos) {
    return {word};
  }
  const QString folder = word.left(word.size() - static_cast<qsizetype>(pattern.size()));
  QStringList files;
  for (const std::u16string& name : NamesOf(path.parent_path(), pattern)) {
    files << folder + Q(name);
  }
  return files.isEmpty() ? QStringList{word} : files;
}

QStringList WithFiles(const Command& command, const QStringList& operands) {
  const std::vector<std::string> words = ArgumentsOf(command.usage);
  QStringList files;
  if (words.empty()) {
    return operands; // too many, as the command will say
  }
  for (qsizetype i = 0; i < operands.size(); ++i) {
    const auto at = std::min(static_cast<std::size_t>(i), words.size() - 1); // the last one may stand again
    files << (IsOfFiles(words.at(at)) ? FilesMeantBy(operands.at(i)) : QStringList{operands.at(i)});
  }
  return files;
}

} // namespace loader::paramtool
