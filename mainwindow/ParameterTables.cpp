#include "mainwindow/ParameterTables.h"

#include <array>
#include <optional>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "mainwindow/ChannelCells.h"
#include "mainwindow/SettingsPages.h"
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

void ShowEntry(Grid& grid, int row, int column, const Catalogue& list, long index) {
  if (const std::u16string* entry = CatalogueEntry(list, index)) {
    grid.SetText(row, column, *entry);
  }
}

void ShowText(Grid& grid, int row, int column, std::string_view section, int item, std::string_view tag) {
  if (const ParamTextRecord* record = FindTextRecord(section, item, tag)) {
    grid.SetText(row, column, TrimRight(record->Value));
    grid.SetAlignment(row, column, CellAlignment::Left);
  }
}

// The entry of a list at the stored value; a tag that does not exist leaves the cell as it is.
void ShowListValue(Grid& grid, int row, int column, const Catalogue& list, std::string_view section, int item,
                   std::string_view tag) {
  if (const ParamNumRecord* record = FindNumRecord(section, item, tag)) {
    ShowEntry(grid, row, column, list, record->Value);
  }
}

bool RowExists(const Grid& grid, int row) {
  return row >= grid.FixedRows && row < grid.Rows();
}

// The cells that the two channel tables share. `columnOf` maps a column of fgrCh to the table's own.
template <typename ColumnOf>
void FillChannelCells(Grid& grid, int gridRow, const ChannelRow& row, const ColumnOf& columnOf) {
  for (const ChannelColumn& column : ChannelCellColumns()) {
    const std::optional<int> target = columnOf(column.column);
    if (!target) {
      continue;
    }
    if (column.rule == CellRule::BackColour) {
      const int colour = NumValue(column.section, row.item, column.tag, -1);
      if (colour >= 1 && colour < static_cast<int>(ColourTable.size())) {
        grid.SetBack(gridRow, *target, ColourTable[static_cast<std::size_t>(colour)]);
      }
      continue;
    }
    if (const auto text = ChannelCellText(row, column)) {
      grid.SetText(gridRow, *target, *text);
      grid.SetAlignment(gridRow, *target, CellAlignment::Left);
    }
  }
  for (const CellShade& shade : ChannelShades(row)) {
    if (const std::optional<int> target = columnOf(shade.column)) {
      grid.SetBack(gridRow, *target, shade.applies ? White : GrayCellColor);
    }
  }
}

// Measuring and operation channels of the model.
int AllChannels() {
  return Profile.ChannelCount + Profile.OperationChannelCount;
}

std::string SlotTag(int slot) {
  return "GC" + Narrow(PaddedDecimal(slot, 2));
}

// A data slot: a channel of the list, or one of the five special contents, tied to list entries 19 to 23.
void ShowGroupSlot(Grid& grid, int row, int column, int item, int slot) {
  constexpr int FirstSpecial = -32768;
  constexpr int LastSpecial = -32764;
  constexpr int FirstSpecialEntry = 19;
  const ParamNumRecord* record = FindNumRecord("G", item, SlotTag(slot));
  if (record == nullptr) {
    return;
  }
  const int value = record->Value;
  if (value >= 0 && value <= AllChannels()) {
    ShowEntry(grid, row, column, GroupChannelList, value);
  } else if (value >= FirstSpecial && value <= LastSpecial) {
    ShowEntry(grid, row, column, GroupChannelList, FirstSpecialEntry + (value - FirstSpecial));
  }
}

enum class MailTiming { None, DIOn, DIOff, AlarmOn, AlarmOff, Recorder, Period };

// What a cell of a trigger shows; nothing leaves it as it is: a timing or a value outside its list.
using MailText = std::optional<std::u16string>;

MailText NumberedEntry(TextId prefix, int value, int count) {
  if (value < 0 || value >= count) {
    return std::nullopt;
  }
  return std::u16string(LoadText(prefix)) + DecimalText(value + 1);
}

MailText ListedEntry(const Catalogue& list, int value) {
  const std::u16string* entry = CatalogueEntry(list, value);
  return entry == nullptr ? std::nullopt : MailText(*entry);
}

MailText MailSourceText(int timing, int value) {
  switch (static_cast<MailTiming>(timing)) {
  case MailTiming::None:
    return std::u16string();
  case MailTiming::DIOn:
  case MailTiming::DIOff:
    return NumberedEntry(63520, value, Profile.TriggerDIListSize);
  case MailTiming::AlarmOn:
  case MailTiming::AlarmOff:
    return NumberedEntry(63510, value, AllChannels());
  case MailTiming::Recorder:
    return ListedEntry(RecorderAlarmList, value);
  case MailTiming::Period:
    return ListedEntry(MailPeriodList, value);
  }
  return std::nullopt;
}

MailText MailDetailText(int timing, int value) {
  switch (static_cast<MailTiming>(timing)) {
  case MailTiming::None:
  case MailTiming::DIOn:
  case MailTiming::DIOff:
  case MailTiming::Recorder:
    return std::u16string();
  case MailTiming::AlarmOn:
  case MailTiming::AlarmOff:
    return ListedEntry(AlarmNumberList, value);
  case MailTiming::Period:
    return ListedEntry(HourList, value);
  }
  return std::nullopt;
}

void FillMailTriggerRow(Grid& grid, int item) {
  constexpr std::u16string_view Chosen = u"○";
  constexpr int Addresses = 8;
  const int row = grid.FixedRows + item;
  ShowText(grid, row, 1, "X", item, "ETTL");
  ShowText(grid, row, 2, "X", item, "ECM1");
  ShowText(grid, row, 3, "X", item, "ECM2");
  ShowListValue(grid, row, 4, MailTriggerList, "X", item, "ETRG");
  const int timing = NumValue("X", item, "ETRG");
  if (const MailText source = MailSourceText(timing, NumValue("X", item, "ETG1"))) {
    grid.SetText(row, 5, *source);
  }
  if (const MailText detail = MailDetailText(timing, NumValue("X", item, "ETG2"))) {
    grid.SetText(row, 6, *detail);
  }
  ShowListValue(grid, row, 7, YesNoList, "X", item, "EPVA");
  const int addresses = NumValue("X", item, "EADD");
  for (int address = 0; address < Addresses; ++address) {
    const bool chosen = (addresses >> address & 1) != 0;
    grid.SetText(row, FirstMailAddressColumn + address, chosen ? Chosen : std::u16string_view{});
    grid.SetAlignment(row, FirstMailAddressColumn + address, CellAlignment::Centre);
  }
}

int ItemCountOf(std::string_view section) {
  const StoreIndex index = gFFindSection(section);
  return index == NotFound ? 0 : static_cast<int>(ParamStore[index].Items.size());
}

// Rows 1 to `count`, then the first data row becomes the current one.
void FillRows(Grid& grid, int count, void (*fillRow)(int), int firstNumber = 1) {
  const DrawingOff off(grid);
  for (int i = 0; i < count; ++i) {
    fillRow(firstNumber + i);
  }
}

void SelectFirstRow(Grid& grid) {
  if (RowExists(grid, grid.FixedRows)) {
    grid.SelectRow(grid.FixedRows);
  }
}

} // namespace

double MeasureTextWidth(std::u16string_view text) {
  return ThePlatform().screens.TextWidth(text);
}

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
  FillRecorderLists(window);
  LayOutTable(window.fgrGroup, Profile.GroupCount, LayoutNumber(26001), 26003, GroupColumns());
  FillEthernetLists(window);
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
  Grid& grid = frmParamLoader->fgrCh;
  const int row = grid.FixedRows + channelNumber - 1;
  if (!RowExists(grid, row)) {
    return;
  }
  WriteNumberedCell(grid, row, ChannelPrefix, channelNumber);
  FillChannelCells(grid, row, LookUpChannelRow(channelNumber - 1, false),
                   [](int column) { return std::optional(column); });
}

void FillOperationRow(int channelNumber) {
  constexpr int FirstFormulaColumn = 4;
  Grid& grid = frmParamLoader->fgrOperationChSet;
  const int operationChannel = channelNumber - Profile.FirstOperationChannel; // from 0
  const int row = grid.FixedRows + operationChannel;
  if (!RowExists(grid, row)) {
    return;
  }
  WriteNumberedCell(grid, row, OperationPrefix, channelNumber);
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    grid.SetText(row, FirstFormulaColumn + formula - 1,
                 FormulaText(operationChannel, FormulaModeStore, formula));
  }
  FillChannelCells(grid, row, LookUpChannelRow(channelNumber - 1, true), OperationColumnOf);
}

void FillConstantRow(int number) {
  Grid& grid = frmParamLoader->fgrConst;
  const int row = grid.FixedRows + number - 1;
  if (!RowExists(grid, row)) {
    return;
  }
  WriteNumberedCell(grid, row, ConstantPrefix, number);
  if (const ParamNumRecord* value = FindNumRecord("N", number - 1, "CONS")) {
    grid.SetText(
        row, 1,
        StoredToText(value->Value, NumValue("N", number - 1, "CONP"), value->MinValue, value->MaxValue));
  }
}

void FillMessageRow(int number) {
  constexpr int DIOn = 1;
  constexpr int DIOff = 2;
  constexpr int AlarmOn = 3;
  constexpr int AlarmOff = 4;
  Grid& grid = frmParamLoader->fgrMess;
  const int row = grid.FixedRows + number - 1;
  const int item = number - 1;
  if (!RowExists(grid, row)) {
    return;
  }
  WriteNumberedCell(grid, row, MessagePrefix, number);
  ShowText(grid, row, 1, "M", item, "MESS");
  ShowListValue(grid, row, 2, MessageTimingList, "M", item, "MTM1");
  switch (NumValue("M", item, "MTM1")) {
  case 0:
    grid.SetText(row, 3, {});
    grid.SetText(row, 4, {});
    break;
  case DIOn:
  case DIOff:
    ShowListValue(grid, row, 3, DINames, "M", item, "MTM2");
    grid.SetText(row, 4, {});
    break;
  case AlarmOn:
  case AlarmOff:
    // "None" and the model's own channels: the list has more.
    if (const int channel = NumValue("M", item, "MTM2", -1); channel <= AllChannels()) {
      ShowEntry(grid, row, 3, NoneChannelList, channel);
    }
    ShowListValue(grid, row, 4, AlarmNumberList, "M", item, "MTM3");
    break;
  default:
    break; // a timing outside the list leaves its cells as they are
  }
}

void FillUnitRow(int number) {
  Grid& grid = frmParamLoader->fgrUnit;
  const int row = grid.FixedRows + number - 1;
  if (!RowExists(grid, row)) {
    return;
  }
  WriteNumberedCell(grid, row, UnitPrefix, number);
  ShowText(grid, row, 1, "U", number - 1, "UNIT");
}

void FillGroupTable() {
  constexpr int FirstSlotColumn = 3;
  constexpr int Left = 1;
  Grid& grid = frmParamLoader->fgrGroup;
  const DrawingOff off(grid);
  for (int item = 0; item < Profile.GroupCount; ++item) {
    const int row = grid.FixedRows + item;
    if (!RowExists(grid, row)) {
      break;
    }
    WriteNumberedCell(grid, row, GroupPrefix, item + 1);
    ShowListValue(grid, row, 1, BarMeterList, "B", item, "BBRM");
    ShowListValue(grid, row, 2, ColorBarList, "T", item, "TPVD");
    for (int slot = 1; slot <= Profile.GroupChannelLast + 1; ++slot) {
      ShowGroupSlot(grid, row, FirstSlotColumn + slot - 1, item, slot);
    }
    ShowText(grid, row, 13, "G", item, "GNEM");
    if (const ParamNumRecord* direction = FindNumRecord("T", item, "THOU")) {
      grid.SetText(row, 14, direction->Value == Left ? LoadText(54001) : LoadText(54000));
    }
    if (const ParamNumRecord* division = FindNumRecord("T", item, "TBUN")) {
      grid.SetText(row, 15, DecimalText(division->Value));
    }
  }
}

void FillMailTriggerTable() {
  Grid& grid = frmParamLoader->flxEMailTriggerSetting;
  const DrawingOff off(grid);
  const int triggers = ItemCountOf("X");
  for (int item = 0; item < triggers && RowExists(grid, grid.FixedRows + item); ++item) {
    FillMailTriggerRow(grid, item);
  }
}

} // namespace loader
