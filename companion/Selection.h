// How a user names some of the parameters: what `show` shows, what `compare` looks at, what `merge` takes.
//
//   C02MMAX   a key of the parameter file; '*' and '?' stand for what they stand for in a shell: C*TAG,
//   A??A1VL CH3       a word and the number that the screens give it (from 1): CH3, "group 2", CH1-6,
//   "チャネル 3" mail      a word alone: all of its items *警報*    anything else: a pattern over the full
//   names, in either language
//
// Letters may be small or large. `CH3` is the channel with its alarms, and its formula where it has one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/Parameters.h"

namespace loader {

// One such word with the sections that it stands for.
struct SelectionWord {
  std::u16string_view word;      // small letters
  std::string_view sections;     // letters
  std::optional<Page> page = {}; // of a section that serves two pages
};
[[nodiscard]] const std::vector<SelectionWord>& SelectionWords();

class Selection {
public:
  // Any text selects something in this way; whether it is anything that exists the walk over a set-up tells.
  explicit Selection(std::u16string_view text);

  // By the set-up in force, which says how its items count.
  [[nodiscard]] bool Names(const ParameterRef& ref) const;
  [[nodiscard]] const std::u16string& Text() const { return text_; }

private:
  std::u16string text_;
  std::u16string pattern_; // small letters
  std::vector<SelectionWord> words_;
  std::optional<int> first_; // items from 1, both ends included
  int last_ = 0;
};

// Whether one of them names the parameter.
[[nodiscard]] bool AnyNames(const std::vector<Selection>& selections, const ParameterRef& ref);
// The first one that names nothing of the set-up in force: a mistake of the user's, never an empty report.
[[nodiscard]] const Selection* FirstThatNamesNothing(const std::vector<Selection>& selections);

// '*' stands for any characters, '?' for one; small and large letters are the same.
[[nodiscard]] bool MatchesPattern(std::u16string_view text, std::u16string_view pattern);

} // namespace loader
