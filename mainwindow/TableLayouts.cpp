#include "mainwindow/TableLayouts.h"

#include <array>
#include <cmath>

#include "core/Text.h"
#include "platform/Platform.h"

namespace loader {

namespace {

consteval ColumnSpec Three(int first) {
  return {std::nullopt, TextId(first), TextId(first + 1), TextId(first + 2)};
}
consteval ColumnSpec Four(int first) {
  return {TextId(first), TextId(first + 1), TextId(first + 2), TextId(first + 3)};
}

constexpr std::array ChannelTable{
    Three(21003), Three(21007), Three(21011), Three(21015), Four(21210),  Three(21019), Three(21023),
    Four(21026),  Four(21030),  Four(21034),  Four(21042),  Four(21046),  Four(21050),  Four(21038),
    Four(21054),  Four(21058),  Four(21062),  Three(21067), Three(21071), Three(21075), Three(21079),
    Four(21082),  Four(21086),  Four(21090),  Four(21094),  Four(21098),  Four(21102),  Four(21106),
    Four(21110),  Four(21114),  Four(21118),  Four(21122),  Four(21126),  Four(21130),  Four(21134),
    Four(21138),  Four(21142),  Four(21214),  Four(21146),  Four(21150),  Four(21154),  Four(21158),
    Four(21162),  Four(21166),  Four(21170),  Four(21174),  Four(21178),  Four(21182),  Four(21186),
    Four(21190),  Four(21194),  Four(21198),  Four(21202),  Four(21206)};
static_assert(ChannelTable.size() == ChannelTableCols - 1);

// Columns 9 to 57 are those of the channel table from column 6 on, 1018 ids further; the reset input stands
// apart.
constexpr std::array OperationTable{
    Three(22005), Three(22009), Three(22013), Three(22017), Three(22021), Three(22025), Three(22029),
    Three(22033), Three(22037), Three(22041), Four(22044),  Four(22048),  Four(22052),  Four(22060),
    Four(22064),  Four(22068),  Four(22056),  Four(22072),  Four(22076),  Four(22080),  Three(22085),
    Three(22089), Three(22093), Three(22097), Four(22100),  Four(22104),  Four(22108),  Four(22112),
    Four(22116),  Four(22120),  Four(22124),  Four(22128),  Four(22132),  Four(22136),  Four(22140),
    Four(22144),  Four(22148),  Four(22152),  Four(22156),  Four(22160),  Four(22228),  Four(22164),
    Four(22168),  Four(22172),  Four(22176),  Four(22180),  Four(22184),  Four(22188),  Four(22192),
    Four(22196),  Four(22200),  Four(22204),  Four(22208),  Four(22212),  Four(22216),  Four(22220),
    Four(22224)};
static_assert(OperationTable.size() == OperationTableCols - 1);

constexpr std::array MessageTable{Three(23006), Three(23009), Three(23012), Three(23015)};
constexpr std::array UnitTable{Three(24003)};
constexpr std::array ConstantTable{Three(28003)};
constexpr std::array GroupTable{Three(26004), Three(26007), Three(26010), Three(26013), Three(26016),
                                Three(26019), Three(26022), Three(26025), Three(26028), Three(26031),
                                Three(26034), Three(26037), Three(26040), Three(26043), Three(26046)};

constexpr TextId FirstMailHeading = 63100;
constexpr int MailNumberTwips = 300;

} // namespace

std::span<const ColumnSpec> ChannelColumns() {
  return ChannelTable;
}
std::span<const ColumnSpec> OperationColumns() {
  return OperationTable;
}
std::span<const ColumnSpec> MessageColumns() {
  return MessageTable;
}
std::span<const ColumnSpec> UnitColumns() {
  return UnitTable;
}
std::span<const ColumnSpec> ConstantColumns() {
  return ConstantTable;
}
std::span<const ColumnSpec> GroupColumns() {
  return GroupTable;
}

int LayoutNumber(TextId id) {
  return RequireInt16(LoadText(id));
}

int LayoutWidth(TextId id) {
  if (const auto width = ParseInt16(LoadText(id))) {
    return *width;
  }
  // A word: the whole part of its width times 1.1.
  return static_cast<int>(std::lround(std::floor(MeasureTextWidth(LoadText(id))) * 1.1));
}

void LayOutTable(Grid& grid, int dataRows, int cols, TextId firstColumnWidth,
                 std::span<const ColumnSpec> columns) {
  grid.Resize(grid.FixedRows + dataRows, cols);
  grid.Clear();
  grid.SetColWidth(0, LayoutWidth(firstColumnWidth));
  const int lowerRow = grid.FixedRows - 1;
  for (const ColumnSpec& spec : columns) {
    const int column = LayoutNumber(spec.column);
    if (spec.upper && lowerRow > 0) {
      grid.SetText(0, column, LoadText(*spec.upper));
    }
    grid.SetText(lowerRow, column, LoadText(spec.lower));
    grid.SetColWidth(column, LayoutWidth(spec.width));
  }
}

void LayOutMailTable(Grid& grid, int triggers) {
  grid.Resize(grid.FixedRows + triggers, MailTableCols);
  grid.Clear();
  grid.SetColWidth(0, MailNumberTwips);
  for (int trigger = 0; trigger < triggers; ++trigger) {
    grid.SetText(grid.FixedRows + trigger, 0, DecimalText(trigger + 1));
  }
  for (int column = 1; column < MailTableCols; ++column) {
    grid.SetText(0, column, LoadText(FirstMailHeading + 2 * (column - 1)));
    grid.SetColWidth(column, LayoutWidth(FirstMailHeading + (2 * (column - 1) + 1)));
  }
}

} // namespace loader
