// What the cells of the two channel tables show: one table of columns, one rule for each kind of cell.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "channel/InputTypeRules.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "platform/Controls.h"

namespace loader {

// A cell that does not apply to the row's input type; its value is written all the same.
constexpr Colour GrayCellColor = 0x404040;

enum class CellRule {
  BackColour,       // background colour, no text
  Text,             // record text without trailing blanks
  ListEntry,        // entry of `list` at the stored value
  Number,           // StoredToText at position 0 with the record's limits
  PointNumber,      // the same at the channel's position
  RowPointNumber,   // the same at the row's position
  MeasuringRange,   // MMIN, MMAX
  EngineeringRange, // SMIN, SMAX
  RecordRange,      // RMIN, RMAX
  TotalKind,        // SEKI
  ReportCycle,      // STYP
  ExternalInput,    // SDIG
  ResetInput,       // SRIN, on KOV only
  AlarmValue,       // A1VL to A4VL
};

struct ChannelColumn {
  int column; // of fgrCh
  std::string_view section;
  std::string_view tag;
  CellRule rule;
  const Catalogue* list = nullptr;
};

// The columns of fgrCh that have a source, in the order in which a row is written.
[[nodiscard]] std::span<const ChannelColumn> ChannelCellColumns();
// The column of fgrOperationChSet that shows what `channelColumn` of fgrCh shows; nothing for column 5, which
// has no counterpart.
[[nodiscard]] std::optional<int> OperationColumnOf(int channelColumn);

// What a row's cells depend on, looked up once for each row.
struct ChannelRow {
  int item;       // of sections C and A, from 0
  bool operation; // an operation channel: its limits are those of kind 40 without a reference
  int storedType;
  ChannelState state; // an operation channel: kind 40
  bool fValue;
  int point;            // POIN
  int rowPoint;         // FPOI of section H when the F value function is on, else POIN
  InputRange measuring; // limits and position of MMIN and MMAX
};
[[nodiscard]] ChannelRow LookUpChannelRow(int item, bool operation);

// The cell's text; nothing when the tag does not exist in this model or the value lies outside its list: the
// cell then stays as it is.
[[nodiscard]] std::optional<std::u16string> ChannelCellText(const ChannelRow& row,
                                                            const ChannelColumn& column);

// Entry of the external input lists for a stored value: the lists always have sixteen DI entries, and a model
// with fewer steps over the last six.
[[nodiscard]] int ExternalInputEntry(int storedValue);
// Row of ReportCycleList for a stored STYP.
[[nodiscard]] int ReportCycleRow(int storedValue);

struct CellShade {
  int column; // of fgrCh
  bool applies;
};
// The cells whose background tells whether they apply, with what it tells for this row.
[[nodiscard]] std::array<CellShade, 9> ChannelShades(const ChannelRow& row);

} // namespace loader
