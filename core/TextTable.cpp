#include "core/TextTable.h"

#include <algorithm>

namespace loader {

namespace {

constexpr auto Rows = std::to_array<TextRow>({
#define TEXT(id, text) {id, text},
#include "data/TextTable.def"
#undef TEXT
});

// The runs of the header are written by hand: they must name exactly the rows, each once and in order.
consteval bool RunsMatchRows() {
  std::size_t row = 0;
  for (const TextRun& run : TextRuns) {
    for (int id = run.first; id <= run.last; ++id, ++row) {
      if (row >= Rows.size() || Rows[row].id != id) {
        return false;
      }
    }
  }
  return row == Rows.size();
}
static_assert(RunsMatchRows(), "TextRuns and data/TextTable.def differ");

} // namespace

std::u16string_view LoadText(TextId id) {
  const auto row = std::ranges::lower_bound(Rows, id.value, {}, &TextRow::id);
  return row->text; // a TextId names a row that exists
}

std::span<const TextRow> AllTexts() {
  return Rows;
}

} // namespace loader
