// The layout of the tables as runs of text ids: headings, widths and column numbers stand in the text table.
//
// A run is up to four ids in a row: upper heading (absent in a three-id run), lower heading, width in twips
// as decimal text (0 hides the column; a word instead of a number means: as wide as that word), column number
// as decimal text.
#pragma once

#include <optional>
#include <span>

#include "core/TextTable.h"
#include "platform/Controls.h"

namespace loader {

struct ColumnSpec {
  std::optional<TextId> upper;
  TextId lower;
  TextId width;
  TextId column;
};

// The columns behind the first one, in the order of the headings.
[[nodiscard]] std::span<const ColumnSpec> ChannelColumns();
[[nodiscard]] std::span<const ColumnSpec> OperationColumns();
[[nodiscard]] std::span<const ColumnSpec> MessageColumns();
[[nodiscard]] std::span<const ColumnSpec> UnitColumns();
[[nodiscard]] std::span<const ColumnSpec> ConstantColumns();
[[nodiscard]] std::span<const ColumnSpec> GroupColumns();

constexpr int ChannelTableCols = 55;
constexpr int OperationTableCols = 58;
constexpr int MailTableCols = 16;
constexpr int FirstMailAddressColumn = 8;

// A decimal text of the layout as a number.
[[nodiscard]] int LayoutNumber(TextId id);
// Width in twips of the run's width entry, measured where it holds a word.
[[nodiscard]] int LayoutWidth(TextId id);
// Empties the table, sets its size and writes the headings, widths and hidden columns of the run. `rows`
// counts the data rows.
void LayOutTable(Grid& grid, int dataRows, int cols, TextId firstColumnWidth,
                 std::span<const ColumnSpec> columns);
// The mail trigger table, whose columns have no number in their run.
void LayOutMailTable(Grid& grid, int triggers);

// タグNo.1, in both tables of channels.
constexpr int TagColumn = 2;

// Columns that exist for model KOV only, by table.
constexpr int ChannelLogColumn = 14;
constexpr int ChannelResetInputColumn = 38;
constexpr int OperationLogColumn = 17;
constexpr int OperationResetInputColumn = 41;

} // namespace loader
