#include "mainwindow/ChannelCells.h"

#include <array>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modMain.h"

namespace loader {

namespace {

constexpr int FirstPartnerRangeItem = 18;

using enum CellRule;

const std::array<ChannelColumn, 44> Columns{{
    {1, "C", "COLR", CellRule::BackColour},
    {2, "C", "TAG", Text},
    {3, "C", "TAG2", Text},
    {4, "C", "TYPE", ListEntry, &InputTypeNames},
    {5, "C", "OTCH", ListEntry, nullptr}, // the channel list of 72, which has no entry for "none"
    {6, "C", "FILT", Number},
    {7, "C", "UNIT", ListEntry, &UnitNames},
    {8, "C", "SCAL", ListEntry, &ScaleList},
    {9, "C", "MMIN", MeasuringRange},
    {10, "C", "MMAX", MeasuringRange},
    {11, "C", "SMIN", EngineeringRange},
    {12, "C", "SMAX", EngineeringRange},
    {13, "C", "ROOT", ListEntry, &RootList},
    {14, "C", "TAIS", ListEntry, &TaisList},
    {15, "C", "SUBC", ListEntry, &SubtractList},
    {16, "C", "RMIN", RecordRange},
    {17, "C", "RMAX", RecordRange},
    {19, "C", "RECO", ListEntry, &RecordDisplayList},
    {20, "C", "RECM", ListEntry, &RecordModeList},
    {26, "C", "PVSI", PointNumber},
    {27, "C", "PVKA", Number},
    {28, "C", "FTIO", ListEntry, &FValueSwitchList},
    {29, "C", "STAG", Text},
    {30, "C", "SEKI", TotalKind},
    {31, "C", "STYP", ReportCycle},
    {32, "C", "SDIG", ExternalInput},
    {33, "C", "SBAS", ListEntry, &PerUnitTimeList},
    {34, "C", "SRES", ListEntry, &ResetSwitchList},
    {35, "C", "SEUN", ListEntry, &UnitNames},
    {36, "C", "SSCL", Number},
    {37, "C", "SECU", RowPointNumber},
    {38, "C", "SRIN", ResetInput},
    {39, "A", "A1TY", ListEntry, &AlarmTypeList},
    {40, "A", "A1VL", AlarmValue},
    {42, "A", "A1RL", ListEntry, &RelayList},
    {43, "A", "A2TY", ListEntry, &AlarmTypeList},
    {44, "A", "A2VL", AlarmValue},
    {46, "A", "A2RL", ListEntry, &RelayList},
    {47, "A", "A3TY", ListEntry, &AlarmTypeList},
    {48, "A", "A3VL", AlarmValue},
    {50, "A", "A3RL", ListEntry, &RelayList},
    {51, "A", "A4TY", ListEntry, &AlarmTypeList},
    {52, "A", "A4VL", AlarmValue},
    {54, "A", "A4RL", ListEntry, &RelayList},
}};

std::optional<std::u16string> Entry(const Catalogue& list, long index) {
  const std::u16string* entry = CatalogueEntry(list, index);
  return entry == nullptr ? std::nullopt : std::optional(*entry);
}

// Limits and position of the measuring range of a channel that takes its input from another one.
InputRange PartnerRange(int item) {
  InputRange range; // position 0
  InputRangeLookup(KindOtherChannel, 0, range);
  const int partner = NumValue("C", item, "OTCH", -1);
  // A reference to the channel itself is ignored.
  if (partner == item || FindNumRecord("C", partner, "TYPE") == nullptr) {
    return range;
  }
  if (item >= FirstPartnerRangeItem) {
    range.MinValue = NumValue("C", partner, "SMIN");
    range.MaxValue = NumValue("C", partner, "SMAX");
    range.Point = NumValue("C", partner, "POIN");
    return range;
  }
  InputRangeLookup(NumValue("C", partner, "TYPE"), NumValue("C", partner, "UNIT"), range);
  return range;
}

std::u16string TextWithin(const ParamNumRecord& record, int position, const Limits& limits) {
  return StoredToText(record.Value, position, limits.minimum, limits.maximum);
}

std::u16string RangeText(const ChannelRow& row, const ChannelColumn& column, const ParamNumRecord& record) {
  const Limits limits = EngineeringLimits(row.state, record);
  // Under logarithm these values are whole exponents, whatever the position of the channel. The record range
  // takes the form by the switch alone; the scaling range of a channel that its kind limits knows no
  // logarithm.
  if (row.state.logOn && column.rule == RecordRange) {
    return TextWithin(record, 0, limits).empty() ? std::u16string()
                                                 : LogValueText(0, 0, 0, record.Value, record.Value);
  }
  if (row.state.logOn && !KindLimited(row.state.kind, row.state.scalingOn)) {
    return TextWithin(record, 0, limits);
  }
  const bool fPoint = column.rule == RecordRange && row.fValue;
  const int position = EngineeringPoint(row.state.kind, row.state.scalingOn, row.point);
  return TextWithin(record, fPoint ? row.rowPoint : position, limits);
}

std::u16string AlarmText(const ChannelRow& row, const ParamNumRecord& record) {
  if (row.state.logOn) {
    return LogValueText(record.Value, NumValue("C", row.item, "MMIN"), NumValue("C", row.item, "MMAX"),
                        NumValue("C", row.item, "SMIN"), NumValue("C", row.item, "SMAX"));
  }
  return TextWithin(record, row.rowPoint, AlarmLimits(row.state, record));
}

std::optional<std::u16string> ResetInputText(int value) {
  if (ModelCode != "KOV") {
    return std::nullopt;
  }
  if (value == 0) {
    return std::u16string(LoadText(63800));
  }
  return Entry(AlarmSourceList, value < 0 ? -1 : ExternalInputEntry(value - 1));
}

std::optional<std::u16string> ListText(const ChannelColumn& column, int value) {
  if (column.list != nullptr) {
    return Entry(*column.list, value);
  }
  // The other channel counts from 0 without an entry for "none": the channel list behind its first entry.
  return Entry(NoneChannelList, value < 0 ? -1 : value + 1L);
}

} // namespace

std::span<const ChannelColumn> ChannelCellColumns() {
  return Columns;
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

ChannelRow LookUpChannelRow(int item, bool operation) {
  ChannelRow row{};
  row.item = item;
  row.operation = operation;
  row.storedType = NumValue("C", item, "TYPE");
  row.state = StoredChannelState(item);
  if (operation) {
    row.state.kind = KindOtherChannel; // an operation channel has no kind: the limits are those of kind 40
  }
  row.fValue = NumValue("C", item, "FTIO") == 1;
  row.point = NumValue("C", item, "POIN");
  row.rowPoint = row.fValue ? NumValue("H", 0, "FPOI") : row.point;
  if (!operation && row.state.kind == KindOtherChannel) {
    row.measuring = PartnerRange(item);
  } else {
    row.measuring.Point = row.point; // stays where the kind has no position of its own
    InputRangeLookup(row.state.kind, row.state.unit, row.measuring);
  }
  return row;
}

std::optional<std::u16string> ChannelCellText(const ChannelRow& row, const ChannelColumn& column) {
  if (column.rule == Text) {
    const ParamTextRecord* record = FindTextRecord(column.section, row.item, column.tag);
    return record == nullptr ? std::nullopt : std::optional(std::u16string(TrimRight(record->Value)));
  }
  const ParamNumRecord* record = FindNumRecord(column.section, row.item, column.tag);
  if (record == nullptr) {
    return std::nullopt;
  }
  const auto ownLimits = [&](int position) {
    return StoredToText(record->Value, position, record->MinValue, record->MaxValue);
  };
  switch (column.rule) {
  case ListEntry:
    return ListText(column, record->Value);
  case Number:
    return ownLimits(0);
  case PointNumber:
    return ownLimits(row.point);
  case RowPointNumber:
    return ownLimits(row.rowPoint);
  case MeasuringRange:
    return StoredToText(record->Value, row.measuring.Point, row.measuring.MinValue, row.measuring.MaxValue);
  case EngineeringRange:
  case RecordRange:
    return RangeText(row, column, *record);
  case TotalKind:
    // The list at the stored value, deliberately: indexed from 1 it would show what the printed list shows.
    return Entry(TotalKindList, record->Value);
  case ReportCycle:
    return Entry(ReportCycleList, ReportCycleRow(record->Value));
  case ExternalInput:
    return Entry(AlarmSourceList, ExternalInputEntry(record->Value));
  case ResetInput:
    return ResetInputText(record->Value);
  case AlarmValue:
    return AlarmText(row, *record);
  case CellRule::BackColour:
  case Text:
    break;
  }
  return std::nullopt;
}

int ExternalInputEntry(int storedValue) {
  constexpr int ListDIs = 16;
  constexpr int LastCommonDI = 9;
  constexpr int SteppedOver = 6;
  return Profile.DigitalInputCount == ListDIs || storedValue <= LastCommonDI ? storedValue
                                                                             : storedValue + SteppedOver;
}

int ReportCycleRow(int storedValue) {
  switch (storedValue) {
  case 0:
    return 1;
  case 1:
    return 2;
  case 3:
    return 3;
  case 6:
    return 4;
  default:
    return 0;
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
