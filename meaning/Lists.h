// The choice lists by what they are lists of. Named here so that a screen that needs a list by itself (a
// channel of an input, a relay) offers the same rows as the parameter does.
#pragma once

#include <array>
#include <cstdint>

#include "meaning/ChoiceLists.h"

namespace loader::lists {

// --- Channels

inline constexpr ChoiceList Channels72{"channels (0 is channel 1)", &NoneChannelList, Extent::OtherChannels,
                                       1};
inline constexpr ChoiceList SubtractedChannels{"none, channels", &SubtractList, Extent::NoneAndChannels};
// The five contents that are no channels keep their numbers; they stand at rows of channels, deliberately.
inline constexpr ChoiceList GroupSlots{.name = "none, channels",
                                       .catalogue = &GroupChannelList,
                                       .extent = Extent::NoneAndChannels,
                                       .specials = {-32768, -32764, 19},
                                       .ownRowsOnly = true};
inline constexpr ChoiceList TrendScaleChannels{"none, channels", &GroupChannelList, Extent::NoneAndChannels};

// --- Inputs and outputs

inline constexpr ChoiceList ExternalInputs{.name = "digital inputs, alarms of the channels",
                                           .catalogue = &AlarmSourceList,
                                           .extent = Extent::ExternalInputs,
                                           .sixteenInputs = true};
inline constexpr ChoiceList ResetInputs{.name = "none, digital inputs, alarms of the channels",
                                        .catalogue = &AlarmSourceList,
                                        .extent = Extent::NoneAndExternalInputs,
                                        .firstEntry = -1,
                                        .headText = 63800,
                                        .sixteenInputs = true};
inline constexpr ChoiceList AlarmOutputs{"none, alarm outputs", &RelayList, Extent::AlarmOutputs};
inline constexpr ChoiceList MemoryFullOutputs{.name = "none, alarm outputs",
                                              .catalogue = &RelayList,
                                              .extent = Extent::AlarmOutputs,
                                              .headText = 52000};
inline constexpr ChoiceList BatteryOutputs{.name = "none, alarm outputs",
                                           .catalogue = &RelayList,
                                           .extent = Extent::AlarmOutputs,
                                           .headText = 52001};
inline constexpr ChoiceList DIFunctions{"functions", &DIFunctionList};

// --- One channel

inline constexpr ChoiceList Colours{
    .name = "colours", .catalogue = &ColorNames, .firstEntry = 1, .firstValue = 1};
inline constexpr ChoiceList InputKindNames{"input kinds", &InputTypeNames, Extent::PairedInputKinds};
inline constexpr std::array<std::int16_t, 20> InputKindNumbers{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,
                                                               10, 11, 12, 20, 21, 30, 31, 32, 33, 40};
inline constexpr ChoiceList PrintedInputKinds{.name = "input kinds",
                                              .catalogue = &InputTypeNames,
                                              .extent = Extent::Values,
                                              .values = InputKindNumbers,
                                              .entries = InputKindNumbers};
inline constexpr ChoiceList Units{"units", &UnitNames};
inline constexpr ChoiceList Scaling{"switch", &ScaleList};
inline constexpr ChoiceList Logarithm{"switch", &TaisList};
inline constexpr ChoiceList SquareRoot{"switch", &RootList};
inline constexpr ChoiceList FValue{"switch", &FValueSwitchList};
inline constexpr ChoiceList ResetSwitch{"switch", &ResetSwitchList};
inline constexpr ChoiceList Positions{"digits behind the point", &DecimalPointList};
inline constexpr ChoiceList RecordDisplay{"record or display", &RecordDisplayList};
inline constexpr ChoiceList RecordModes{"record modes", &RecordModeList};
inline constexpr ChoiceList InputRecordModes{"record modes", &RecordModeList2};
inline constexpr ChoiceList RecordPresence{"without or with record", &RecordPresenceList};
inline constexpr ChoiceList TotalKinds{"kinds of totalizing", &TotalKindList};
inline constexpr ChoiceList PerTime{"unit times", &PerUnitTimeList};
inline constexpr ChoiceList AlarmTypes{"alarm types", &AlarmTypeList};
inline constexpr ChoiceList AlarmNumbers{"alarm numbers (0 is alarm 1)", &AlarmNumberList};

inline constexpr std::array<std::int16_t, 5> ReportCycleValues{15, 0, 1, 3, 6};
inline constexpr ChoiceList ReportCycles{.name = "report cycles",
                                         .catalogue = &ReportCycleList,
                                         .extent = Extent::Values,
                                         .values = ReportCycleValues};
// A value that is no cycle reads as OFF.
inline constexpr ChoiceList ReportCyclesOrOff{.name = "report cycles",
                                              .catalogue = &ReportCycleList,
                                              .extent = Extent::Values,
                                              .values = ReportCycleValues,
                                              .otherRow = 0};
inline constexpr std::array<std::int16_t, 4> PrintedTotalKindValues{0, 1, 2, 3};
inline constexpr std::array<std::int16_t, 4> PrintedTotalKindEntries{0, 0, 1, 2};
inline constexpr ChoiceList PrintedTotalKinds{.name = "kinds of totalizing",
                                              .catalogue = &TotalKindList,
                                              .extent = Extent::Values,
                                              .values = PrintedTotalKindValues,
                                              .entries = PrintedTotalKindEntries};
inline constexpr ChoiceList PrintedOtherChannels{"none, channels", &NoneChannelList, Extent::NoneAndChannels};
inline constexpr ChoiceList PrintedChannels{.name = "none, channels",
                                            .catalogue = nullptr,
                                            .extent = Extent::NoneAndChannels,
                                            .headText = 37031,
                                            .numberedText = 37032};

// --- Display

inline constexpr ChoiceList Directions{"directions", &BarDirectionList};
// Only 1 reads as sideways; any other value as upright.
inline constexpr ChoiceList DirectionsOrUpright{
    .name = "directions", .catalogue = &BarDirectionList, .otherRow = 0};
inline constexpr ChoiceList ColourBars{"captions of the colour bar", &ColorBarList};
inline constexpr ChoiceList TrendScale{"switch", &TrendScaleList};
inline constexpr ChoiceList BarsOrMeters{"bar graph or meter", &BarMeterList};
inline constexpr ChoiceList Divisions{
    .name = "divisions", .catalogue = &DivisionList, .firstEntry = 1, .firstValue = 1};
inline constexpr ChoiceList NoYes{"no, yes", &YesNoList};

// --- Messages and mail

inline constexpr ChoiceList MessageTimings{"timings", &MessageTimingList};
inline constexpr ChoiceList MessageInputs{"digital inputs (0 is DI1)", &DINames, Extent::TriggerInputs};
// The list has more channels than a model.
inline constexpr ChoiceList MessageChannels{.name = "none, channels",
                                            .catalogue = &NoneChannelList,
                                            .extent = Extent::NoneAndChannels,
                                            .ownRowsOnly = true};
inline constexpr ChoiceList MailTimings{"timings", &MailTriggerList};
inline constexpr ChoiceList MailInputs{.name = "digital inputs (0 is DI1)",
                                       .catalogue = nullptr,
                                       .extent = Extent::TriggerInputs,
                                       .numberedText = 63520,
                                       .ownRowsOnly = true};
inline constexpr ChoiceList MailChannels{.name = "channels (0 is channel 1)",
                                         .catalogue = nullptr,
                                         .extent = Extent::Channels,
                                         .numberedText = 63510,
                                         .ownRowsOnly = true};
inline constexpr ChoiceList RecorderAlarms{"alarms of the recorder", &RecorderAlarmList};
inline constexpr ChoiceList MailPeriods{"periods", &MailPeriodList};
inline constexpr ChoiceList Hours{"hours", &HourList};
inline constexpr ChoiceList Minutes{"minutes", &MinuteList};

inline constexpr std::array<const ChoiceList*, 5> MessageSources{nullptr, &MessageInputs, &MessageInputs,
                                                                 &MessageChannels, &MessageChannels};
inline constexpr std::array<const ChoiceList*, 5> MessageAlarms{nullptr, nullptr, nullptr, &AlarmNumbers,
                                                                &AlarmNumbers};
inline constexpr std::array<const ChoiceList*, 7> MailSources{
    nullptr, &MailInputs, &MailInputs, &MailChannels, &MailChannels, &RecorderAlarms, &MailPeriods};
inline constexpr std::array<const ChoiceList*, 7> MailDetails{nullptr,       nullptr, nullptr, &AlarmNumbers,
                                                              &AlarmNumbers, nullptr, &Hours};

// --- The recorder

inline constexpr ChoiceList SampleCycles{"cycles", &SampleCycleList};
inline constexpr ChoiceList AlarmLatch{"switch", &AlarmLatchList};
inline constexpr ChoiceList RecordCodes{"codes", &CommCodeList};
inline constexpr ChoiceList KeyLocks{"locks", &KeyLockList};
inline constexpr ChoiceList FileSplits{"periods of a file", &FileSplitList};
inline constexpr ChoiceList DailyFiles{"days of a file", &DailyFileList};
inline constexpr ChoiceList Backlight{"minutes until the backlight goes off", &BacklightList};
inline constexpr ChoiceList ScreenOff{"minutes until the screen goes off", &ScreenOffList};
inline constexpr ChoiceList DateFormats{"date formats", &DateFormatList};
inline constexpr ChoiceList BaudRates{"speeds", &BaudList};
inline constexpr ChoiceList Parities{"parities", &ParityList};
inline constexpr ChoiceList Compressions{"compressions", &CompressionList};
inline constexpr ChoiceList Overwrite{"switch", &OverwriteList};
inline constexpr ChoiceList Languages{"languages", &LanguageList};
inline constexpr ChoiceList LoginModes{"modes", &LoginModeList};
inline constexpr ChoiceList TrendBackgrounds{"colours", &TrendBackgroundList};
inline constexpr ChoiceList HistoryBackgrounds{"colours", &HistoryBackgroundList};
inline constexpr ChoiceList TotalCycles{"cycles", &TotalCycleList};
inline constexpr ChoiceList Weekdays{"days of the week", &WeekdayList};
inline constexpr ChoiceList Days{"days of the month (0 is day 1)", &DayList};
inline constexpr ChoiceList TotalSwitch{"switch", &TotalSwitchList};
inline constexpr ChoiceList TotalUnitTimes{"unit times", &TotalUnitTimeList};
inline constexpr ChoiceList OperationKinds{"kinds of operation", &OperationKindList};

// --- Network

inline constexpr ChoiceList Switches[] = {
    {"switch", &EthernetSwitchLists[0]}, {"switch", &EthernetSwitchLists[1]},
    {"switch", &EthernetSwitchLists[2]}, {"switch", &EthernetSwitchLists[3]},
    {"switch", &EthernetSwitchLists[4]}, {"switch", &EthernetSwitchLists[5]},
    {"switch", &EthernetSwitchLists[6]}, {"switch", &EthernetSwitchLists[7]}};
// A screen offers two of the four levels, stored as 0 and 1.
inline constexpr std::array<std::int16_t, 2> OfferedLevelValues{0, 1};
inline constexpr std::array<std::int16_t, 2> OfferedLevelEntries{0, 3};
inline constexpr ChoiceList OfferedLevels{.name = "levels",
                                          .catalogue = &UserLevelList,
                                          .extent = Extent::Values,
                                          .values = OfferedLevelValues,
                                          .entries = OfferedLevelEntries};
inline constexpr ChoiceList UserLevels{"levels", &UserLevelList};
inline constexpr ChoiceList LinkRoles{"roles", &MasterSlaveList};
inline constexpr ChoiceList RetryIntervals{"intervals", &RetryIntervalList};

} // namespace loader::lists
