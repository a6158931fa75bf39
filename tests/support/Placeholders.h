// The placeholders of a text, for checks that both languages of it have the same ones.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace loader::test {

// The names between two "@" of a text.
inline std::multiset<std::u16string> Placeholders(std::u16string_view text) {
  std::multiset<std::u16string> names;
  for (std::size_t open = text.find(u'@'); open != std::u16string_view::npos;) {
    const std::size_t close = text.find(u'@', open + 1);
    if (close == std::u16string_view::npos) {
      names.emplace(u"one without an end");
      break;
    }
    names.emplace(text.substr(open, close - open + 1));
    open = text.find(u'@', close + 1);
  }
  return names;
}

} // namespace loader::test
