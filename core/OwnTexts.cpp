#include "core/OwnTexts.h"

#include <array>

namespace loader {

namespace {

constexpr auto Rows = std::to_array<OwnTextRow>({
#define OWN_TEXT(id, japanese, english) {#id, japanese, english},
#include "data/OwnTexts.def"
#undef OWN_TEXT
});

const OwnTextRow& RowOf(OwnTextId id) {
  return Rows.at(static_cast<std::size_t>(id));
}

} // namespace

std::u16string_view OwnText(OwnTextId id) {
  return RowOf(id).japanese;
}

std::u16string_view OwnTextEnglish(OwnTextId id) {
  return RowOf(id).english;
}

std::span<const OwnTextRow> AllOwnTexts() {
  return Rows;
}

} // namespace loader
