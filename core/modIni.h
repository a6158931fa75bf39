// The catalogues: the texts of all lists of choices. Which parameter is a row of which list, and which stored
// value stands for which row, is said in meaning/. Beside them the number tables that several layers share.
//
// All catalogues are built at their largest size, for 72 channels; a screen takes the first entries that its
// model needs. They are read-only after gFInitCatalogues, with one exception: the user units at the end of
// UnitNames.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace loader {

using Catalogue = std::vector<std::u16string>;

// Fills every catalogue below. Called once at start, before the store and any window; a second call gives the
// same content (and empties the user units).
void gFInitCatalogues();

// The entry at `index`, or nullptr outside of the list: for an index that comes from a file or a recorder.
[[nodiscard]] const std::u16string* CatalogueEntry(const Catalogue& list, long index);

// --- Channels

extern Catalogue ColorNames;     // entries 1 to 14; entry 0 is empty
extern Catalogue InputTypeNames; // 42 entries by input type number, those of unused numbers empty
extern Catalogue ScaleList;
extern Catalogue DecimalPointList; // "0" to "4"
extern Catalogue TaisList;
extern Catalogue RootList;
extern Catalogue RecordDisplayList;
extern Catalogue RecordModeList;
extern Catalogue SubtractList; // none, then channels 1 to 72
extern Catalogue TotalKindList;
extern Catalogue ReportCycleList;
// 16 DI, then 72 channels with four alarms each: 304 entries.
extern Catalogue AlarmSourceList;
extern Catalogue MessageAlarmSourceList; // the same content, for the message screen
extern Catalogue PerUnitTimeList;
extern Catalogue ResetSwitchList;
extern Catalogue FValueSwitchList;
extern Catalogue AlarmTypeList;
extern Catalogue AlarmNumberList; // "1" to "4"
extern Catalogue RelayList;       // "無し", then "1" to "36"
extern Catalogue NoneChannelList; // "無し", then channels 1 to 72

// --- Recorder

extern Catalogue ScreenOffList; // of older recorders
extern Catalogue BacklightList;
extern Catalogue KeyLockList;
extern Catalogue DailyFileList; // of older recorders
extern Catalogue FileSplitList;
extern Catalogue SampleCycleList;
extern Catalogue CommCodeList;
extern Catalogue AlarmLatchList;
extern Catalogue CompressionList;
extern Catalogue OverwriteList;
extern Catalogue LanguageList;
extern Catalogue LoginModeList;
extern Catalogue TrendBackgroundList;
extern Catalogue HistoryBackgroundList;
extern Catalogue BaudList;
extern Catalogue ParityList;
extern Catalogue DateFormatList;
extern Catalogue DIFunctionList;
extern Catalogue DINames; // "DI1" to "DI16"
extern Catalogue TotalCycleList;
extern Catalogue WeekdayList;
extern Catalogue TotalSwitchList;
extern Catalogue TotalUnitTimeList;
extern Catalogue OperationKindList;
extern Catalogue DIAndAlarmList30;   // 10 DI, then 30 channels with four alarms each: 130 entries
extern Catalogue RecordPresenceList; // two entries: without, with record
extern Catalogue RecordModeList2;    // as RecordModeList
extern Catalogue MoveSwitchList;     // the list of cmbTmove
extern Catalogue HourList;           // "0" to "23"
extern Catalogue MinuteList;         // "0" to "59"
extern Catalogue DayList;            // "1" to "31"

// --- Display and messages

extern Catalogue GroupChannelList; // none, then channels 1 to 72
extern Catalogue BarMeterList;
extern Catalogue ColorBarList;
extern Catalogue BarDirectionList;
extern Catalogue TrendScaleList;
extern Catalogue DivisionList; // entries 1 to 20; entry 0 is empty
extern Catalogue MessageTimingList;

// --- Formulas

extern Catalogue OperatorList;
extern Catalogue FunctionList;
extern Catalogue TermPrefixList;
extern Catalogue TermNameList;

// --- Ethernet, users, mail, links

// The function switches of section J, each with its own list of "OFF" and "ON".
inline constexpr std::array<std::string_view, 8> EthernetSwitchTags = {"ETHE", "MAIL", "FTPF", "FTPA",
                                                                       "WEBF", "WEBA", "WEBM", "MOTC"};
// By position in EthernetSwitchTags.
extern std::array<Catalogue, EthernetSwitchTags.size()> EthernetSwitchLists;

extern Catalogue UserLevelList; // the screen offers entries 0 and 3
extern Catalogue MailTriggerList;
extern Catalogue RecorderAlarmList; // ETG1 of trigger timing 5
extern Catalogue MailPeriodList;    // ETG1 of trigger timing 6
extern Catalogue YesNoList;

extern Catalogue MasterSlaveList;   // "slave", "master"
extern Catalogue RetryIntervalList; // "200ms" to "10s"
extern Catalogue LinkDateFormatList;
extern Catalogue LinkSwitchList;
extern Catalogue LinkBaudList;
extern Catalogue LinkParityList;

// --- Units

// By unit id. Reserved ids are empty; the last entries are the user units, which start empty and are replaced
// from section U after a parameter file was opened or a recorder read, and when a user unit is edited.
inline constexpr int UnitEntries = 168;
extern Catalogue UnitNames;

// The unit id of user unit `unitNumber` (from 1) of `unitCount`. A number outside of 1 to unitCount throws
// std::out_of_range.
[[nodiscard]] std::size_t UserUnitIndex(int unitNumber, int unitCount);

// --- Number tables

// A time of day is stored as minutes since midnight.
inline constexpr int MinutesOfHour = 60;

namespace detail {

inline constexpr std::size_t ColourOrderEntries = 36; // the most channels that a model colours from one order

consteval std::array<std::int16_t, ColourOrderEntries> Repeated(const std::array<std::int16_t, 10>& period) {
  std::array<std::int16_t, ColourOrderEntries> order{};
  for (std::size_t i = 0; i < order.size(); ++i) {
    order[i] = period[i % period.size()];
  }
  return order;
}

// CRC-16 of Modbus: polynomial 0xA001, reflected.
consteval std::array<std::uint16_t, 256> MakeCrcTable() {
  std::array<std::uint16_t, 256> table{};
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    auto remainder = static_cast<std::uint16_t>(byte);
    for (int bit = 0; bit < 8; ++bit) {
      const bool carry = (remainder & 1U) != 0;
      remainder = static_cast<std::uint16_t>((remainder >> 1U) ^ (carry ? 0xA001U : 0U));
    }
    table[byte] = remainder;
  }
  return table;
}

} // namespace detail

// Default colours (COLR) channel by channel: A for measuring channels and for all of RUG, B for KOV's
// operation channels.
inline constexpr auto ColourOrderA = detail::Repeated({1, 2, 3, 4, 11, 10, 5, 6, 8, 9});
inline constexpr auto ColourOrderB = detail::Repeated({5, 6, 8, 9, 1, 2, 3, 4, 11, 10});

// 0xRRGGBB by the stored colour number; the numbers start at 1, entry 0 is white and stands for none.
inline constexpr std::array<std::uint32_t, 15> ColourTable = {
    0xFFFFFF, 0xFF0000, 0x0000FF, 0x800080, 0x008000, 0x00FFFF, 0xFFFF00, 0x808080,
    0x000080, 0x965036, 0x674196, 0x007B43, 0x00A3AF, 0x928C36, 0xAFAFB0};

// The step of the link's check value for one byte: crc = (crc >> 8) ^ CrcTable[(crc ^ byte) & 0xFF], from
// 0xFFFF.
inline constexpr std::array<std::uint16_t, 256> CrcTable = detail::MakeCrcTable();

} // namespace loader
