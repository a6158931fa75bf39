#include "companion/DecodeLines.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace loader {

namespace {

struct DirectionWord {
  std::string_view word; // small letters
  Direction direction;
};
constexpr auto DirectionWords = std::to_array<DirectionWord>({
    {">", Direction::Request},       {"->", Direction::Request},     {">>", Direction::Request},
    {"tx", Direction::Request},      {"send", Direction::Request},   {"sent", Direction::Request},
    {"request", Direction::Request}, {"req", Direction::Request},    {"query", Direction::Request},
    {"out", Direction::Request},     {"<", Direction::Reply},        {"<-", Direction::Reply},
    {"<<", Direction::Reply},        {"rx", Direction::Reply},       {"recv", Direction::Reply},
    {"received", Direction::Reply},  {"response", Direction::Reply}, {"reply", Direction::Reply},
    {"rsp", Direction::Reply},       {"in", Direction::Reply},
});

bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
int HexDigit(char c) {
  return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
}

std::string Small(std::string_view text) {
  std::string small(text);
  std::ranges::transform(small, small.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
  return small;
}

std::vector<std::string_view> WordsOf(std::string_view line) {
  constexpr std::string_view Blanks = " \t\r,;[]";
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t start = line.find_first_not_of(Blanks);
    if (start == std::string_view::npos) {
      return words;
    }
    line.remove_prefix(start);
    const std::size_t end = std::min(line.find_first_of(Blanks), line.size());
    words.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

// "0x01", "01", "0103", "01:03:0F", "01-03"; empty for anything else. A time of day is none: its numbers are
// followed by others, which is the caller's to see.
std::optional<std::vector<std::uint8_t>> BytesOf(std::string_view word) {
  std::vector<std::uint8_t> bytes;
  while (!word.empty()) {
    if (word.starts_with("0x") || word.starts_with("0X")) {
      word.remove_prefix(2);
    }
    const std::size_t end = std::min(word.find_first_of(":-"), word.size());
    const std::string_view part = word.substr(0, end);
    if (part.empty() || part.size() % 2 != 0 || !std::ranges::all_of(part, IsHexDigit)) {
      return std::nullopt;
    }
    for (std::size_t i = 0; i < part.size(); i += 2) {
      bytes.push_back(static_cast<std::uint8_t>(HexDigit(part[i]) * 16 + HexDigit(part[i + 1])));
    }
    word.remove_prefix(std::min(end + 1, word.size()));
  }
  return bytes;
}

Direction DirectionOf(std::string_view word) {
  std::string small = Small(word);
  while (small.size() > 1 && small.ends_with(':')) {
    small.pop_back();
  }
  const auto* found = std::ranges::find(DirectionWords, small, &DirectionWord::word);
  return found == DirectionWords.end() ? Direction::Unknown : found->direction;
}

// "12:00:01", "12:00:01.250", "2026-11-22": hex digits that are none.
bool IsTimeOrDate(std::string_view word) {
  const auto count = [&](char mark) { return std::ranges::count(word, mark); };
  const bool digits = std::ranges::all_of(
      word, [](char c) { return (c >= '0' && c <= '9') || c == ':' || c == '-' || c == '.'; });
  const bool time = count(':') >= 1 && count(':') <= 2 && count('-') == 0;
  const bool date = count('-') == 2 && count(':') == 0 && word.size() >= 8;
  return digits && (time || date);
}

TraceLine ReadLine(std::string_view text, std::size_t number) {
  TraceLine line{.line = number, .direction = Direction::Unknown, .bytes = {}};
  std::vector<std::string_view> words = WordsOf(text);
  // What stands behind the last mark; without one, the hex at the end.
  std::size_t first = 0;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (const Direction direction = DirectionOf(words[i]); direction != Direction::Unknown) {
      line.direction = direction;
      first = i + 1;
    }
  }
  while (first + 1 < words.size() && IsTimeOrDate(words[first])) {
    ++first;
  }
  std::size_t odd = 0; // words that are no bytes
  std::size_t hex = 0;
  for (std::size_t i = first; i < words.size(); ++i) {
    if (const auto bytes = BytesOf(words[i])) {
      line.bytes.insert(line.bytes.end(), bytes->begin(), bytes->end());
      hex += bytes->size();
    } else if (hex == 0 && line.direction == Direction::Unknown) {
      continue; // a name in front
    } else {
      ++odd;
    }
  }
  constexpr std::size_t Few = 4; // fewer bytes among words are numbers of the words
  line.broken = odd > 0 && hex >= Few && hex > odd;
  if (odd > 0 && !line.broken) {
    line.bytes.clear();
  }
  return line;
}

} // namespace

std::vector<TraceLine> ReadTraceLines(std::string_view text) {
  constexpr std::size_t Fewest = 2; // bytes; a lone number is no frame
  std::vector<TraceLine> lines;
  std::size_t number = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    TraceLine line = ReadLine(text.substr(0, end), ++number);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.broken || line.bytes.size() >= Fewest) {
      lines.push_back(std::move(line));
    }
  }
  return lines;
}

} // namespace loader
