// A set-up in lines that each speak for themselves.
#pragma once

#include <string>
#include <vector>

#include "companion/Parameters.h"

namespace loader {

// A parameter, or a formula in place of its nine words.
struct ShownLine {
  Page page = Page::Channels;
  std::u16string name;
  std::u16string text;
};

// The chosen parameters of the set-up in force, by page and in the order of the parameter file inside. A
// formula of which all words are chosen is one line where its first word stands; the words that its text does
// not tell follow it.
//
// A value stands without its unit: the unit is a line of its own, and a change of it is a change of that line
// alone.
[[nodiscard]] std::vector<ShownLine> ShownLines(const std::vector<ParameterRef>& chosen,
                                                const Speech& speech);

} // namespace loader
