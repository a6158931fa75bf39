#include "mainwindow/TableCells.h"

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "mainwindow/TableLayouts.h"

namespace loader {

namespace {

struct ColumnSource {
  int column; // the first one of a family
  std::string_view section;
  std::string_view tag;
};

constexpr auto ChannelSources = std::to_array<ColumnSource>({
    {1, "C", "COLR"},  {2, "C", "TAG"},   {3, "C", "TAG2"},  {4, "C", "TYPE"},  {5, "C", "OTCH"},
    {6, "C", "FILT"},  {7, "C", "UNIT"},  {8, "C", "SCAL"},  {9, "C", "MMIN"},  {10, "C", "MMAX"},
    {11, "C", "SMIN"}, {12, "C", "SMAX"}, {13, "C", "ROOT"}, {14, "C", "TAIS"}, {15, "C", "SUBC"},
    {16, "C", "RMIN"}, {17, "C", "RMAX"}, {19, "C", "RECO"}, {20, "C", "RECM"}, {26, "C", "PVSI"},
    {27, "C", "PVKA"}, {28, "C", "FTIO"}, {29, "C", "STAG"}, {30, "C", "SEKI"}, {31, "C", "STYP"},
    {32, "C", "SDIG"}, {33, "C", "SBAS"}, {34, "C", "SRES"}, {35, "C", "SEUN"}, {36, "C", "SSCL"},
    {37, "C", "SECU"}, {38, "C", "SRIN"}, {39, "A", "A1TY"}, {40, "A", "A1VL"}, {42, "A", "A1RL"},
    {43, "A", "A2TY"}, {44, "A", "A2VL"}, {46, "A", "A2RL"}, {47, "A", "A3TY"}, {48, "A", "A3VL"},
    {50, "A", "A3RL"}, {51, "A", "A4TY"}, {52, "A", "A4VL"}, {54, "A", "A4RL"},
});
constexpr auto GroupSources = std::to_array<ColumnSource>({
    {1, "B", "BBRM"},
    {2, "T", "TPVD"},
    {3, "G", "GC01"},
    {4, "G", "GC02"},
    {5, "G", "GC03"},
    {6, "G", "GC04"},
    {7, "G", "GC05"},
    {8, "G", "GC06"},
    {9, "G", "GC07"},
    {10, "G", "GC08"},
    {11, "G", "GC09"},
    {12, "G", "GC10"},
    {13, "G", "GNEM"},
    {14, "T", "THOU"},
    {15, "T", "TBUN"},
});
constexpr auto MessageSources =
    std::to_array<ColumnSource>({{1, "M", "MESS"}, {2, "M", "MTM1"}, {3, "M", "MTM2"}, {4, "M", "MTM3"}});
constexpr auto UnitSources = std::to_array<ColumnSource>({{1, "U", "UNIT"}});
constexpr auto ConstantSources = std::to_array<ColumnSource>({{1, "N", "CONS"}});
constexpr auto MailSources = std::to_array<ColumnSource>({
    {1, "X", "ETTL"},
    {2, "X", "ECM1"},
    {3, "X", "ECM2"},
    {4, "X", "ETRG"},
    {5, "X", "ETG1"},
    {6, "X", "ETG2"},
    {7, "X", "EPVA"},
    {FirstMailAddressColumn, "X", "EADD"}, // a column for each address
});

std::vector<CellSource> Sources(std::span<const ColumnSource> columns) {
  std::vector<CellSource> cells;
  cells.reserve(columns.size());
  for (const ColumnSource& column : columns) {
    const bool isSlot = column.tag.starts_with("GC");
    cells.push_back({column.column, &MeaningOf(column.section, column.tag), std::string(column.tag),
                     column.tag == "SRIN", isSlot ? RequireInt16(Widen(column.tag.substr(2))) : 0});
  }
  return cells;
}

void PaintColour(Grid& grid, int row, int column, int colour) {
  if (colour >= 1 && colour < static_cast<int>(ColourTable.size())) {
    grid.SetBack(row, column, ColourTable[static_cast<std::size_t>(colour)]);
  }
}

void MarkAddresses(Grid& grid, int row, int firstColumn, int mask) {
  constexpr std::u16string_view Chosen = u"○";
  for (int address = 0; address < MailAddresses; ++address) {
    grid.SetText(row, firstColumn + address, HasAddress(mask, address) ? Chosen : std::u16string_view{});
    grid.SetAlignment(row, firstColumn + address, CellAlignment::Centre);
  }
}

void WriteCell(Grid& grid, int row, int column, const CellSource& cell, int item, const ChannelRow* channel) {
  switch (FormIn(*cell.meaning, View::Table).sense) {
  case Sense::ColourNumber:
    PaintColour(grid, row, column, NumValue(cell.meaning->meaning.section, item, cell.tag, -1));
    return;
  case Sense::AddressMask:
    MarkAddresses(grid, row, column, NumValue(cell.meaning->meaning.section, item, cell.tag));
    return;
  default:
    break;
  }
  if (const auto text = ParameterText(*cell.meaning, View::Table, item, cell.tag, channel)) {
    grid.SetText(row, column, *text);
    grid.SetAlignment(row, column, CellAlignment::Left);
  }
}

bool IsRead(const CellSource& cell) {
  return (!cell.kovOnly || ModelCode == "KOV") && cell.slot <= Profile.GroupChannelLast + 1;
}

std::optional<int> ColumnIn(const ChannelRow& row, int channelColumn) {
  return row.operation ? OperationColumnOf(channelColumn) : std::optional(channelColumn);
}

} // namespace

std::span<const CellSource> ChannelCells() {
  static const std::vector<CellSource> cells = Sources(ChannelSources);
  return cells;
}
std::span<const CellSource> GroupCells() {
  static const std::vector<CellSource> cells = Sources(GroupSources);
  return cells;
}
std::span<const CellSource> MessageCells() {
  static const std::vector<CellSource> cells = Sources(MessageSources);
  return cells;
}
std::span<const CellSource> UnitCells() {
  static const std::vector<CellSource> cells = Sources(UnitSources);
  return cells;
}
std::span<const CellSource> ConstantCells() {
  static const std::vector<CellSource> cells = Sources(ConstantSources);
  return cells;
}
std::span<const CellSource> MailTriggerCells() {
  static const std::vector<CellSource> cells = Sources(MailSources);
  return cells;
}

std::optional<int> OperationColumnOf(int channelColumn) {
  constexpr int InputTypeColumn = 4;
  constexpr int OperationInputTypeColumn = 8;
  constexpr int OtherChannelColumn = 5;
  if (channelColumn == OtherChannelColumn) {
    return std::nullopt;
  }
  if (channelColumn == InputTypeColumn) {
    return OperationInputTypeColumn;
  }
  return channelColumn < InputTypeColumn ? channelColumn : channelColumn + 3;
}

void WriteCells(Grid& grid, int gridRow, std::span<const CellSource> cells, int item) {
  for (const CellSource& cell : cells) {
    if (IsRead(cell)) {
      WriteCell(grid, gridRow, cell.column, cell, item, nullptr);
    }
  }
}

void WriteChannelCells(Grid& grid, int gridRow, const ChannelRow& row) {
  for (const CellSource& cell : ChannelCells()) {
    const std::optional<int> column = ColumnIn(row, cell.column);
    if (column && IsRead(cell)) {
      WriteCell(grid, gridRow, *column, cell, row.item, &row);
    }
  }
  for (const CellShade& shade : ChannelShades(row)) {
    if (const std::optional<int> column = ColumnIn(row, shade.column)) {
      grid.SetBack(gridRow, *column, shade.applies ? White : GrayCellColor);
    }
  }
}

std::array<CellShade, 9> ChannelShades(const ChannelRow& row) {
  // The scaling of an operation channel is judged by a shorter run of kinds, deliberately.
  constexpr int LastUnscaledKind = 24;
  constexpr int LastUnscaledOperationKind = 14;
  const bool other = row.storedType == KindOtherChannel;
  const int last = row.operation ? LastUnscaledOperationKind : LastUnscaledKind;
  const bool canScale = !(row.storedType >= 1 && row.storedType <= last) && !other;
  const bool ranged = row.state.scalingOn || other;
  return {{{5, other},
           {7, true},
           {8, canScale},
           {9, ranged},
           {10, ranged},
           {11, ranged},
           {12, ranged},
           {13, ranged},
           {14, ranged}}};
}

} // namespace loader
