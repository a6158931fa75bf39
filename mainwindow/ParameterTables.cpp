#include "mainwindow/ParameterTables.h"

#include <optional>
#include <span>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modMain.h"
#include "mainwindow/SettingsPages.h"
#include "mainwindow/TableCells.h"
#include "mainwindow/TableLayouts.h"
#include "mainwindow/frmParamLoader.h"
#include "operation/Formula.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr TextId ChannelPrefix = 20900;
constexpr TextId OperationPrefix = 22002;
constexpr TextId MessagePrefix = 23001;
constexpr TextId UnitPrefix = 24001;
constexpr TextId ConstantPrefix = 28001;
constexpr TextId GroupPrefix = 26002;

// Switches the drawing of a table off for its life.
class DrawingOff {
public:
  explicit DrawingOff(Grid& grid) : grid_(grid), before_(grid.Redraw) { grid_.Redraw = false; }
  ~DrawingOff() { grid_.Redraw = before_; }
  DrawingOff(const DrawingOff&) = delete;
  DrawingOff& operator=(const DrawingOff&) = delete;

private:
  Grid& grid_;
  bool before_;
};

void WriteNumberedCell(Grid& grid, int row, TextId prefix, int number) {
  grid.SetText(row, 0, std::u16string(LoadText(prefix)) + DecimalText(number));
}

bool RowExists(const Grid& grid, int row) {
  return row >= grid.FixedRows && row < grid.Rows();
}

int ItemCountOf(std::string_view section) {
  const StoreIndex index = gFFindSection(section);
  return index == NotFound ? 0 : static_cast<int>(ParamStore[index].Items.size());
}

// The rows of `count` entries from `firstNumber` on, with drawing off meanwhile.
void FillRows(Grid& grid, int count, void (*fillRow)(int), int firstNumber = 1) {
  const DrawingOff off(grid);
  for (int i = 0; i < count; ++i) {
    fillRow(firstNumber + i);
  }
}

// The row of the n-th entry, with its number in the first column; nothing when the table has no such row.
std::optional<int> StartRow(Grid& grid, TextId prefix, int entry, int shownNumber) {
  const int row = grid.FixedRows + entry - 1;
  if (!RowExists(grid, row)) {
    return std::nullopt;
  }
  WriteNumberedCell(grid, row, prefix, shownNumber);
  return row;
}

void FillSmallRow(Grid& grid, TextId prefix, std::span<const CellSource> cells, int number) {
  if (const auto row = StartRow(grid, prefix, number, number)) {
    WriteCells(grid, *row, cells, number - 1);
  }
}

void SelectFirstRow(Grid& grid) {
  if (RowExists(grid, grid.FixedRows)) {
    grid.SelectRow(grid.FixedRows);
  }
}

} // namespace

void BuildTables() {
  ParamLoaderScreen& window = *frmParamLoader;
  // The model list is refilled and selected without its handler: only the user's pick changes the model.
  ClearList(window.cmbType);
  AddItem(window.cmbType, u"KOV");
  AddItem(window.cmbType, u"RUG");
  ApplyModelVisibility(window);
  LayOutTable(window.fgrCh, Profile.ChannelCount, ChannelTableCols, 20901, ChannelColumns());
  LayOutTable(window.fgrOperationChSet, Profile.OperationChannelCount, OperationTableCols, 22003,
              OperationColumns());
  if (ModelCode != "KOV") {
    window.fgrCh.SetColWidth(ChannelLogColumn, 0);
    window.fgrCh.SetColWidth(ChannelResetInputColumn, 0);
    window.fgrOperationChSet.SetColWidth(OperationLogColumn, 0);
    window.fgrOperationChSet.SetColWidth(OperationResetInputColumn, 0);
  }
  LayOutTable(window.fgrMess, Profile.MessageCount, window.fgrMess.FixedCols + LayoutNumber(23000), 23002,
              MessageColumns());
  LayOutTable(window.fgrUnit, Profile.UnitCount, window.fgrUnit.FixedCols + LayoutNumber(24000), 24002,
              UnitColumns());
  LayOutTable(window.fgrConst, Profile.ConstantCount, window.fgrConst.FixedCols + LayoutNumber(28000), 28002,
              ConstantColumns());
  LayOutTable(window.fgrGroup, Profile.GroupCount, LayoutNumber(26001), 26003, GroupColumns());
  FillPageLists(window);
  LayOutMailTable(window.flxEMailTriggerSetting, ItemCountOf("X"));
}

void FillChannelTable() {
  FillRows(frmParamLoader->fgrCh, Profile.ChannelCount, FillChannelRow);
}

void FillOperationTable() {
  FillRows(frmParamLoader->fgrOperationChSet, Profile.OperationChannelCount, FillOperationRow,
           Profile.FirstOperationChannel);
}

void FillConstantTable() {
  FillRows(frmParamLoader->fgrConst, Profile.ConstantCount, FillConstantRow);
}

void FillMessageTable() {
  FillRows(frmParamLoader->fgrMess, Profile.MessageCount, FillMessageRow);
}

void FillUnitTable() {
  FillRows(frmParamLoader->fgrUnit, Profile.UnitCount, FillUnitRow);
}

void RefreshAll() {
  ParamLoaderScreen& window = *frmParamLoader;
  FillChannelTable();
  SelectFirstRow(window.fgrCh);
  if (Profile.OperationChannelCount != 0) {
    FillOperationTable();
    SelectFirstRow(window.fgrOperationChSet);
    FillConstantTable();
    SelectFirstRow(window.fgrConst);
  }
  FillSettingsPages();
  FillMessageTable();
  SelectFirstRow(window.fgrMess);
  FillUnitTable();
  SelectFirstRow(window.fgrUnit);
  FillDigitalInputs();
  FillGroupTable();
  FillEthernetPage();
  FillUserAccounts();
  FillMailPage();
  FillMailTriggerTable();
}

void FillChannelRow(int channelNumber) {
  if (const auto row = StartRow(frmParamLoader->fgrCh, ChannelPrefix, channelNumber, channelNumber)) {
    WriteChannelCells(frmParamLoader->fgrCh, *row, LookUpChannelRow(channelNumber - 1, false));
  }
}

void FillOperationRow(int channelNumber) {
  constexpr int FirstFormulaColumn = 4;
  Grid& grid = frmParamLoader->fgrOperationChSet;
  const int operationChannel = channelNumber - Profile.FirstOperationChannel; // from 0
  const auto row = StartRow(grid, OperationPrefix, operationChannel + 1, channelNumber);
  if (!row) {
    return;
  }
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    grid.SetText(*row, FirstFormulaColumn + formula - 1, StoredFormulaText(operationChannel, formula));
  }
  WriteChannelCells(grid, *row, LookUpChannelRow(channelNumber - 1, true));
}

void FillConstantRow(int number) {
  FillSmallRow(frmParamLoader->fgrConst, ConstantPrefix, ConstantCells(), number);
}

void FillMessageRow(int number) {
  FillSmallRow(frmParamLoader->fgrMess, MessagePrefix, MessageCells(), number);
}

void FillUnitRow(int number) {
  FillSmallRow(frmParamLoader->fgrUnit, UnitPrefix, UnitCells(), number);
}

void FillGroupTable() {
  FillRows(frmParamLoader->fgrGroup, Profile.GroupCount,
           [](int number) { FillSmallRow(frmParamLoader->fgrGroup, GroupPrefix, GroupCells(), number); });
}

void FillMailTriggerRow(int number) {
  Grid& grid = frmParamLoader->flxEMailTriggerSetting;
  if (const int row = grid.FixedRows + number - 1; RowExists(grid, row)) {
    WriteCells(grid, row, MailTriggerCells(), number - 1); // the number stands there from the layout
  }
}

void FillMailTriggerTable() {
  FillRows(frmParamLoader->flxEMailTriggerSetting, ItemCountOf("X"), FillMailTriggerRow);
}

} // namespace loader
