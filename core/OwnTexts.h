// The program's own texts, Japanese and English side by side: data/OwnTexts.def.
//
// They stand beside the text table and never in forms or code. An id that has no row does not compile.
#pragma once

#include <span>
#include <string_view>

namespace loader {

enum class OwnTextId {
#define OWN_TEXT(id, japanese, english) id,
#include "data/OwnTexts.def"
#undef OWN_TEXT
};

// The Japanese text, which is what the window shows and speaks; it lives as long as the program.
[[nodiscard]] std::u16string_view OwnText(OwnTextId id);
// The same in English, for reports.
[[nodiscard]] std::u16string_view OwnTextEnglish(OwnTextId id);

struct OwnTextRow {
  std::string_view name; // the id as it is written in the code
  std::u16string_view japanese;
  std::u16string_view english;
};

// All rows in the order of their ids, for checks of the table as a whole.
[[nodiscard]] std::span<const OwnTextRow> AllOwnTexts();

} // namespace loader
