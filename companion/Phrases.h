// What the companion program says: data/Phrases.def, Japanese and English side by side.
#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "meaning/Meaning.h"

namespace loader {

enum class Phrase {
#define PHRASE(id, japanese, english) id,
#include "data/Phrases.def"
#undef PHRASE
};

// It lives as long as the program.
[[nodiscard]] std::u16string_view PhraseText(Phrase id, Language language);

// A placeholder without its "@" marks, and what stands in its place.
struct Filling {
  std::u16string_view placeholder;
  std::u16string_view with;
};
// What is filled in is never itself searched for placeholders.
[[nodiscard]] std::u16string Say(Phrase id, Language language, std::initializer_list<Filling> fillings);
[[nodiscard]] std::u16string Say(Phrase id, Language language, std::span<const Filling> fillings);

struct PhraseRow {
  std::string_view name; // the id as it is written in the code
  std::u16string_view japanese;
  std::u16string_view english;
};
// All rows in the order of their ids, for checks of the table as a whole.
[[nodiscard]] std::span<const PhraseRow> AllPhrases();

} // namespace loader
