#include "platform/PrivateProfile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

#include "platform/FileName.h"
#include "platform/WholeFile.h"

namespace loader {

namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view Unquote(std::string_view text) {
  const bool quoted =
      text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
  return quoted ? text.substr(1, text.size() - 2) : text;
}

// The name between the brackets of a section line, or nothing for another line.
std::optional<std::string_view> SectionName(std::string_view line) {
  line = TrimBlanks(line);
  if (line.empty() || line.front() != '[') {
    return std::nullopt;
  }
  return TrimBlanks(
      line.substr(1, line.find(']') == std::string_view::npos ? line.size() - 1 : line.find(']') - 1));
}

struct KeyValue {
  std::string_view key;
  std::string_view value;
};

std::optional<KeyValue> KeyLine(std::string_view line) {
  line = TrimBlanks(line);
  const std::size_t equals = line.find('=');
  if (line.empty() || line.front() == ';' || equals == std::string_view::npos) {
    return std::nullopt;
  }
  return KeyValue{TrimBlanks(line.substr(0, equals)), Unquote(TrimBlanks(line.substr(equals + 1)))};
}

// The lines of the file, each with its own line end, so that a write gives back what it does not change.
std::optional<std::vector<std::string>> ReadLines(const std::filesystem::path& file) {
  std::error_code error;
  if (!IsFileName(file) || !std::filesystem::is_regular_file(file, error)) {
    return std::nullopt; // a pipe or a device would be waited for without end
  }
  std::ifstream in(file, std::ios::binary);
  if (!in.is_open()) {
    return std::nullopt;
  }
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t feed = bytes.find('\n', start);
    const std::size_t end = feed == std::string::npos ? bytes.size() : feed + 1;
    lines.push_back(bytes.substr(start, end - start));
    start = end;
  }
  return lines;
}

std::string_view WithoutLineEnd(std::string_view line) {
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
    line.remove_suffix(1);
  }
  return line;
}

// The lines [first, last) that belong to the first section of this name, its head line not among them.
struct SectionLines {
  std::size_t first;
  std::size_t last;
};

std::optional<SectionLines> FindSection(const std::vector<std::string>& lines, std::string_view section) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto name = SectionName(WithoutLineEnd(lines[i]));
    if (!name || !SameName(*name, section)) {
      continue;
    }
    std::size_t end = i + 1;
    while (end < lines.size() && !SectionName(WithoutLineEnd(lines[end]))) {
      ++end;
    }
    return SectionLines{i + 1, end};
  }
  return std::nullopt;
}

std::optional<std::size_t> FindKey(const std::vector<std::string>& lines, SectionLines range,
                                   std::string_view key) {
  for (std::size_t i = range.first; i < range.last; ++i) {
    const auto entry = KeyLine(WithoutLineEnd(lines[i]));
    if (entry && SameName(entry->key, key)) {
      return i;
    }
  }
  return std::nullopt;
}

// The folder is the program's own.
bool Replace(const std::filesystem::path& file, const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) {
    bytes += line;
  }
  return ReplaceFile(file, bytes, Neighbours::OfThisProgram);
}

} // namespace

std::string GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                     std::string_view defaultText, std::size_t bufferSize,
                                     const std::filesystem::path& file) {
  std::string value(defaultText);
  if (const auto lines = ReadLines(file)) {
    if (const auto range = FindSection(*lines, section)) {
      if (const auto at = FindKey(*lines, *range, key)) {
        value = KeyLine(WithoutLineEnd((*lines)[*at]))->value;
      }
    }
  }
  value.resize(std::min(value.find('\0'), value.size()));
  return value.substr(0, bufferSize == 0 ? 0 : bufferSize - 1);
}

bool WritePrivateProfileStringA(std::string_view section, std::string_view key, std::string_view value,
                                const std::filesystem::path& file) {
  std::error_code error;
  const bool existed = std::filesystem::exists(file, error);
  auto read = ReadLines(file);
  if (existed && !read) {
    return false; // there, but not readable: writing would lose what it holds
  }
  std::vector<std::string> lines = read.value_or(std::vector<std::string>{});
  if (!lines.empty() && (lines.back().empty() || lines.back().back() != '\n')) {
    lines.back() += "\r\n";
  }
  const std::string entry = std::string(key) + "=" + std::string(value) + "\r\n";
  auto range = FindSection(lines, section);
  if (!range) {
    lines.push_back("[" + std::string(section) + "]\r\n");
    lines.push_back(entry);
    return Replace(file, lines);
  }
  if (const auto at = FindKey(lines, *range, key)) {
    lines[*at] = entry;
    return Replace(file, lines);
  }
  // Behind the last line of the section that holds anything, before the blank lines that part it from the
  // next.
  std::size_t end = range->last;
  while (end > range->first && TrimBlanks(WithoutLineEnd(lines[end - 1])).empty()) {
    --end;
  }
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(end), entry);
  return Replace(file, lines);
}

} // namespace loader
