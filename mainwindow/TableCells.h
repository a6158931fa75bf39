// Which column of which table shows which parameter. What the cell then shows is what the parameter means.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "meaning/ParameterText.h"
#include "platform/Controls.h"

namespace loader {

// A cell that does not apply to the row's input type; its value is written all the same.
constexpr Colour GrayCellColor = 0x404040;

struct CellSource {
  int column;
  const MeaningRow* meaning;
  std::string tag;
  bool kovOnly; // not even read on another model
  int slot;     // of a group's data slot, from 1: not read beyond those that the model has; else 0
};

// The columns that have a source, in the order in which a row is written.
[[nodiscard]] std::span<const CellSource> ChannelCells(); // by column of fgrCh
[[nodiscard]] std::span<const CellSource> GroupCells();
[[nodiscard]] std::span<const CellSource> MessageCells();
[[nodiscard]] std::span<const CellSource> UnitCells();
[[nodiscard]] std::span<const CellSource> ConstantCells();
[[nodiscard]] std::span<const CellSource> MailTriggerCells();

// The column of fgrOperationChSet that shows what `channelColumn` of fgrCh shows; nothing for column 5, which
// has no counterpart.
[[nodiscard]] std::optional<int> OperationColumnOf(int channelColumn);

// Writes the cells of one row: a value outside its list leaves its cell as it is, one outside its limits
// leaves it blank.
void WriteCells(Grid& grid, int gridRow, std::span<const CellSource> cells, int item);
// The same for a channel, with the shades that tell which cells apply; for the operation channels in the
// columns of their own table.
void WriteChannelCells(Grid& grid, int gridRow, const ChannelRow& row);

struct CellShade {
  int column; // of fgrCh
  bool applies;
};
// The cells whose background tells whether they apply, with what it tells for this row.
[[nodiscard]] std::array<CellShade, 9> ChannelShades(const ChannelRow& row);

} // namespace loader
