// A report as one page of HTML that stands for itself: no script, nothing that is loaded from elsewhere. It
// is made for a screen, light or dark, wide or narrow, and for paper in black and white: no meaning is in a
// colour alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "companion/Phrases.h"
#include "platform/Platform.h"

namespace loader {

// What a row, a group or a count means, by its look.
enum class Tone {
  Plain,
  Changed, // two values
  Reads,   // the same number that says something else
  OnlyA,
  OnlyB,
  Lost,
  Good,
};

// One of the two set-ups of a report.
struct HtmlSetUp {
  std::u16string letter; // "A"
  std::u16string name;
  std::u16string model;
  std::u16string note; // may be empty
};

struct HtmlCount {
  std::size_t count = 0;
  std::u16string label;
  Tone tone = Tone::Plain;
};

// A value, with a line below it in small letters.
struct HtmlValue {
  std::u16string text;
  std::u16string note;
  bool absent = false; // the set-up does not have it; `text` says so
};

struct HtmlRow {
  std::u16string name;
  std::u16string note; // below the name
  std::u16string key;
  std::u16string verdict;     // in words
  std::u16string verdictNote; // below it
  Tone tone = Tone::Plain;
  HtmlValue a, b;
};

struct HtmlSubgroup {
  std::u16string title; // empty: none
  std::vector<HtmlRow> rows;
};

struct HtmlGroup {
  std::u16string title;
  std::vector<HtmlSubgroup> subgroups;

  [[nodiscard]] std::size_t Rows() const;
};

struct HtmlReport {
  Language language = Language::Japanese;
  std::u16string title;
  DateAndTime made;
  HtmlSetUp a, b;
  std::vector<HtmlCount> counts;
  std::u16string summary; // a sentence below the counts
  std::vector<HtmlGroup> groups;
  std::u16string headingA, headingB; // of the columns
};

// UTF-8. Whatever the report holds is text: none of it becomes markup.
[[nodiscard]] std::string HtmlPage(const HtmlReport& report);

} // namespace loader
