// The plants of both models with a handful of changes: one of each kind that a comparison has to tell.
#pragma once

#include <regex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/paramtool/ToolTest.h"

namespace loader::test {

using Changes = std::vector<std::pair<std::string_view, std::string_view>>;

// The file with these values in place of its own: bytes, as they stand behind the comma. A key that the file
// does not name fails the test.
[[nodiscard]] inline std::string WithValues(std::string bytes, const Changes& changes) {
  for (const auto& [key, value] : changes) {
    // A tag stands in four columns.
    std::string line = "\r\n" + std::string(key);
    line.resize(std::string_view("\r\nC00TYPE").size(), ' ');
    const std::size_t at = bytes.find(line + ",");
    EXPECT_NE(at, std::string::npos) << key;
    if (at == std::string::npos) {
      continue;
    }
    const std::size_t from = at + line.size() + 1;
    bytes.replace(from, bytes.find("\r\n", from) - from, value);
  }
  return bytes;
}

// Without the lines whose key begins so: those parameters keep their defaults.
[[nodiscard]] inline std::string WithoutLines(std::string_view bytes, std::string_view key) {
  std::string kept;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find("\r\n") + 2;
    if (!bytes.starts_with(key)) {
      kept += bytes.substr(0, end);
    }
    bytes.remove_prefix(end);
  }
  return kept;
}

// A page with its time of making as "TIME" and without its style, which every page has.
[[nodiscard]] inline std::string WithoutTime(const std::string& html) {
  const std::size_t style = html.find("<style>") + std::string_view("<style>").size();
  return std::regex_replace(html.substr(0, style) + html.substr(html.find("</style>")),
                            std::regex("<time [^>]*>[^<]*</time>"), "TIME");
}

inline const Changes HandfulOfChanges{
    {"A02A1VL", "8123"},            // an alarm value
    {"C01UNIT", "5"},               // a unit
    {"C03POIN", "2"},               // a decimal point: other values of the channel read differently
    {"C04TAG", "Oven <4> & \"B\""}, // what a page of HTML must not take for markup
    {"C05TAG2", "  two"},           // blanks
    {"G01GC03", "7"},               // a slot of a group
    {"H00PAS1", "4711"},            // passwords
    {"K00PASS", "open-sesame"},
    {"J00RAD1", "night.shift@example.com"}, // a mail address
    {"C06COLR", "99"},                      // a value outside its list
    {"O00S111", "3"},                       // a word of a formula
    {"U00UNIT", "t/h"},                     // a user unit: values that have it read differently
};

} // namespace loader::test
