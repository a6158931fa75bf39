#include "companion/Phrases.h"

#include <algorithm>
#include <array>

namespace loader {

namespace {

constexpr auto Rows = std::to_array<PhraseRow>({
#define PHRASE(id, japanese, english) {#id, japanese, english},
#include "data/Phrases.def"
#undef PHRASE
});

} // namespace

std::u16string_view PhraseText(Phrase id, Language language) {
  const PhraseRow& row = Rows.at(static_cast<std::size_t>(id));
  return language == Language::Japanese ? row.japanese : row.english;
}

std::u16string Say(Phrase id, Language language, std::span<const Filling> fillings) {
  constexpr char16_t Mark = u'@';
  std::u16string_view rest = PhraseText(id, language);
  std::u16string said;
  while (!rest.empty()) {
    const std::size_t open = rest.find(Mark);
    said += rest.substr(0, open);
    if (open == std::u16string_view::npos) {
      break;
    }
    rest.remove_prefix(open + 1);
    const std::size_t close = rest.find(Mark);
    const auto filling =
        std::ranges::find(fillings, rest.substr(0, std::min(close, rest.size())), &Filling::placeholder);
    if (close == std::u16string_view::npos || filling == fillings.end()) {
      said += Mark; // no placeholder of this call: it stays as it is
      continue;
    }
    said += filling->with;
    rest.remove_prefix(close + 1);
  }
  return said;
}

std::u16string Say(Phrase id, Language language, std::initializer_list<Filling> fillings) {
  return Say(id, language, std::span(fillings.begin(), fillings.size()));
}

std::span<const PhraseRow> AllPhrases() {
  return Rows;
}

} // namespace loader
