#include "core/modIni.h"

#include "core/Text.h"
#include "core/TextTable.h"

#include <algorithm>
#include <span>
#include <stdexcept>

namespace loader {

Catalogue ColorNames;
Catalogue InputTypeNames;
Catalogue ScaleList;
Catalogue DecimalPointList;
Catalogue TaisList;
Catalogue RootList;
Catalogue RecordDisplayList;
Catalogue RecordModeList;
Catalogue SubtractList;
Catalogue TotalKindList;
Catalogue ReportCycleList;
Catalogue AlarmSourceList;
Catalogue MessageAlarmSourceList;
Catalogue PerUnitTimeList;
Catalogue ResetSwitchList;
Catalogue FValueSwitchList;
Catalogue AlarmTypeList;
Catalogue AlarmNumberList;
Catalogue RelayList;
Catalogue NoneChannelList;

Catalogue ScreenOffList;
Catalogue BacklightList;
Catalogue KeyLockList;
Catalogue DailyFileList;
Catalogue FileSplitList;
Catalogue SampleCycleList;
Catalogue CommCodeList;
Catalogue AlarmLatchList;
Catalogue CompressionList;
Catalogue OverwriteList;
Catalogue LanguageList;
Catalogue LoginModeList;
Catalogue TrendBackgroundList;
Catalogue HistoryBackgroundList;
Catalogue BaudList;
Catalogue ParityList;
Catalogue DateFormatList;
Catalogue DIFunctionList;
Catalogue DINames;
Catalogue TotalCycleList;
Catalogue WeekdayList;
Catalogue TotalSwitchList;
Catalogue TotalUnitTimeList;
Catalogue OperationKindList;
Catalogue DIAndAlarmList30;
Catalogue RecordPresenceList;
Catalogue RecordModeList2;
Catalogue MoveSwitchList;
Catalogue HourList;
Catalogue MinuteList;
Catalogue DayList;

Catalogue GroupChannelList;
Catalogue BarMeterList;
Catalogue ColorBarList;
Catalogue BarDirectionList;
Catalogue TrendScaleList;
Catalogue DivisionList;
Catalogue MessageTimingList;

Catalogue OperatorList;
Catalogue FunctionList;
Catalogue TermPrefixList;
Catalogue TermNameList;

std::array<Catalogue, EthernetSwitchTags.size()> EthernetSwitchLists;
Catalogue UserLevelList;
Catalogue MailTriggerList;
Catalogue RecorderAlarmList;
Catalogue MailPeriodList;
Catalogue YesNoList;
Catalogue MasterSlaveList;
Catalogue RetryIntervalList;
Catalogue LinkDateFormatList;
Catalogue LinkSwitchList;
Catalogue LinkBaudList;
Catalogue LinkParityList;

Catalogue UnitNames;

namespace {

// `count` texts from id `first` on, laid into the catalogue from index `at` on. Entries that no piece covers
// are empty.
struct TextPiece {
  Catalogue* catalogue;
  std::size_t at;
  int first;
  int count;
};

constexpr TextPiece TextPieces[] = {
    {&ColorNames, 1, 30000, 14},
    {&InputTypeNames, 0, 31000, 13},
    {&InputTypeNames, 20, 31020, 2},
    {&InputTypeNames, 30, 31030, 4},
    {&InputTypeNames, 40, 31040, 1},
    {&ScaleList, 0, 32000, 2},
    {&TaisList, 0, 33000, 2},
    {&RootList, 0, 34000, 2},
    {&RecordDisplayList, 0, 35000, 2},
    {&RecordModeList, 0, 36000, 3},
    {&SubtractList, 0, 37000, 31},  // none, channels 1 to 30
    {&SubtractList, 31, 37033, 42}, // 37031 and 37032 are words of the text output
    {&TotalKindList, 0, 38001, 3},
    {&ReportCycleList, 0, 39007, 1}, // OFF
    {&ReportCycleList, 1, 39001, 1}, // daily
    {&ReportCycleList, 2, 39003, 2}, // monthly, yearly
    {&ReportCycleList, 4, 39006, 1}, // external input
    {&AlarmSourceList, 0, 60000, 16},
    {&AlarmSourceList, 16, 40010, 288},
    {&MessageAlarmSourceList, 0, 60000, 16},
    {&MessageAlarmSourceList, 16, 40010, 288},
    {&PerUnitTimeList, 0, 41000, 4},
    {&ResetSwitchList, 0, 42000, 2},
    {&FValueSwitchList, 0, 43000, 2},
    {&AlarmTypeList, 0, 44000, 3},
    {&AlarmNumberList, 0, 61100, 4},
    {&RelayList, 0, 37031, 1}, // numbers follow
    {&NoneChannelList, 0, 45000, 1},
    {&NoneChannelList, 1, 45501, 72},
    {&ScreenOffList, 0, 49000, 9},
    {&BacklightList, 0, 47000, 9},
    {&KeyLockList, 0, 50000, 3},
    {&DailyFileList, 0, 51000, 9},
    {&FileSplitList, 0, 62000, 5},
    {&SampleCycleList, 0, 53000, 20},
    {&CommCodeList, 0, 48000, 2},
    {&AlarmLatchList, 0, 46000, 2},
    {&CompressionList, 0, 46500, 4},
    {&OverwriteList, 0, 46600, 2},
    {&LanguageList, 0, 46700, 2},
    {&LoginModeList, 0, 46800, 2},
    {&TrendBackgroundList, 0, 46900, 2},
    {&HistoryBackgroundList, 0, 46902, 2},
    {&BaudList, 0, 61600, 2},
    {&ParityList, 0, 61700, 3},
    {&DateFormatList, 0, 61900, 5},
    {&DIFunctionList, 0, 60300, 6},
    {&DINames, 0, 60000, 16},
    {&TotalCycleList, 0, 60600, 10},
    {&WeekdayList, 0, 60700, 7},
    {&TotalSwitchList, 0, 60400, 2},
    {&TotalUnitTimeList, 0, 60500, 4},
    {&OperationKindList, 0, 61000, 4},
    {&DIAndAlarmList30, 0, 60800, 130},
    {&RecordPresenceList, 0, 60100, 2},
    {&RecordModeList2, 0, 60200, 3},
    {&MoveSwitchList, 0, 61800, 2},
    {&GroupChannelList, 0, 56000, 73},
    {&BarMeterList, 0, 57000, 2},
    {&ColorBarList, 0, 58000, 3},
    {&BarDirectionList, 0, 54000, 2},
    {&TrendScaleList, 0, 59000, 2},
    {&MessageTimingList, 0, 55000, 5},
    {&OperatorList, 0, 61200, 5},
    {&FunctionList, 0, 61300, 14},
    {&TermPrefixList, 0, 61400, 6},
    {&TermNameList, 0, 61500, 6},
    {&UserLevelList, 0, 63300, 4},
    {&MailTriggerList, 0, 63500, 7},
    {&RecorderAlarmList, 0, 63531, 4},
    {&MailPeriodList, 0, 63540, 7},
    {&YesNoList, 0, 63700, 2},
};

consteval bool PiecesExist() {
  return std::ranges::all_of(TextPieces, [](const TextPiece& piece) {
    for (int id = piece.first; id < piece.first + piece.count; ++id) {
      if (!TextIdExists(id)) {
        return false;
      }
    }
    return true;
  });
}
static_assert(PiecesExist(), "a catalogue asks for a text that does not exist");

// Plain numbers, laid into the catalogue from index `at` on.
struct NumberPiece {
  Catalogue* catalogue;
  std::size_t at;
  int first;
  int last;
};

constexpr NumberPiece NumberPieces[] = {
    {&DecimalPointList, 0, 0, 4}, {&RelayList, 1, 1, 36}, {&HourList, 0, 0, 23},
    {&MinuteList, 0, 0, 59},      {&DayList, 0, 1, 31},   {&DivisionList, 1, 1, 20},
};

// Words of the links and switches, which are no texts of the table.
constexpr std::u16string_view MasterSlave[] = {u"slave", u"master"};
constexpr std::u16string_view RetryInterval[] = {u"200ms", u"500ms", u"1s", u"2s", u"5s", u"10s"};
constexpr std::u16string_view LinkDateFormat[] = {u"2004/04/27", u"27/09/2004", u"27-Sep-04", u"09/27/2004",
                                                  u"Sep-27-04"};
constexpr std::u16string_view OffOn[] = {u"OFF", u"ON"};
constexpr std::u16string_view LinkBaud[] = {u"9600", u"19200"};
constexpr std::u16string_view LinkParity[] = {u"none", u"odd", u"even"};

struct WordPiece {
  Catalogue* catalogue;
  std::span<const std::u16string_view> words;
};

constexpr WordPiece WordPieces[] = {
    {&MasterSlaveList, MasterSlave},
    {&RetryIntervalList, RetryInterval},
    {&LinkDateFormatList, LinkDateFormat},
    {&LinkSwitchList, OffOn},
    {&LinkBaudList, LinkBaud},
    {&LinkParityList, LinkParity},
};

constexpr std::size_t InputTypeEntries = 42;

struct UnitRow {
  std::size_t id;
  std::u16string_view name;
};

// The ids are what the recorder stores; those that are missing here are reserved and stay empty.
// clang-format off
constexpr UnitRow FixedUnits[] = {
    {0, u"゜C"}, {1, u"゜F"}, {2, u"%RH"}, {3, u"vol%"}, {6, u"t/d"}, {7, u"kg/d"}, {8, u"g/d"}, {9, u"m3/d"},
    {10, u"l/d"}, {12, u"t/h"}, {13, u"kg/h"}, {14, u"g/h"}, {15, u"m3/h"}, {16, u"l/h"}, {18, u"t/min"},
    {19, u"kg/min"}, {20, u"g/min"}, {21, u"m3/min"}, {22, u"l/min"}, {24, u"t/s"}, {25, u"kg/s"},
    {26, u"g/s"}, {27, u"m3/s"}, {28, u"l/s"}, {30, u"mbar"}, {31, u"bar"}, {32, u"N/mm2"}, {33, u"N/m2"},
    {36, u"mPa"}, {37, u"Pa"}, {38, u"kPa"}, {39, u"MPa"}, {42, u"mm"}, {43, u"cm"}, {44, u"m"}, {48, u"ml"},
    {49, u"L"}, {50, u"kl"}, {51, u"mm3"}, {52, u"cm3"}, {53, u"m3"}, {54, u"mm2"}, {55, u"cm2"}, {56, u"m2"},
    {57, u"g"}, {58, u"kg"}, {59, u"t"}, {60, u"g/cm3"}, {61, u"kg/cm3"}, {62, u"g/m3"}, {63, u"kg/m3"},
    {66, u"g/l"}, {67, u"kg/l"}, {68, u"g/ml"}, {72, u"ppm"}, {73, u"ppmNH3"}, {74, u"ppmSO2"},
    {75, u"ppmH2S"}, {76, u"ppmCO"}, {77, u"ppmO2"}, {78, u"ppmNOx"}, {79, u"ppb"}, {80, u"pH"}, {81, u"mol"},
    {82, u"%"}, {83, u"%H2"}, {84, u"%CO2"}, {85, u"%He"}, {86, u"%Ar"}, {87, u"%O2"}, {88, u"%NaCl"},
    {89, u"%CO"}, {90, u"mN"}, {91, u"N"}, {92, u"N･m"}, {93, u"J"}, {94, u"kJ"}, {96, u"mm/s"},
    {97, u"mm/min"}, {98, u"mm/h"}, {99, u"m/s"}, {100, u"m/min"}, {101, u"m/h"}, {102, u"rps"},
    {103, u"rpm"}, {104, u"rph"}, {105, u"m/s2"}, {106, u"rad/s"}, {107, u"km/h"}, {108, u"us"}, {109, u"ms"},
    {110, u"s"}, {111, u"min"}, {112, u"h"}, {113, u"day"}, {114, u"mV"}, {115, u"V"}, {116, u"kV"},
    {117, u"uA"}, {118, u"mA"}, {119, u"A"}, {120, u"Hz"}, {121, u"dB"}, {122, u"W"}, {123, u"kW"},
    {124, u"VA"}, {125, u"kVA"}, {126, u"Var"}, {127, u"kVar"}, {128, u"uS/cm"}, {129, u"uF"}, {130, u"F"},
    {131, u"C"}, {132, u"mH"}, {133, u"H"}, {134, u"m ohm"}, {135, u"ohm"}, {136, u"k ohm"}, {137, u"M ohm"},
    {138, u"lx"}, {139, u"cd"}, {140, u"lm"}, {141, u"cd/m2"}, {144, u"uSv/h"}, {145, u"mSv/h"},
    {146, u"nGy/h"}, {147, u"uGy/h"}, {148, u"um"}, {150, u"Pa･s"}, {151, u"mPa･s"},
};
// clang-format on

void Place(Catalogue& catalogue, std::size_t index, std::u16string_view text) {
  if (catalogue.size() <= index) {
    catalogue.resize(index + 1);
  }
  catalogue[index] = text;
}

} // namespace

void gFInitCatalogues() {
  for (const TextPiece& piece : TextPieces) {
    piece.catalogue->clear();
  }
  for (const NumberPiece& piece : NumberPieces) {
    piece.catalogue->clear();
  }
  for (const TextPiece& piece : TextPieces) {
    for (int i = 0; i < piece.count; ++i) {
      Place(*piece.catalogue, piece.at + static_cast<std::size_t>(i), LoadText(TextId::At(piece.first + i)));
    }
  }
  for (const NumberPiece& piece : NumberPieces) {
    for (int number = piece.first; number <= piece.last; ++number) {
      Place(*piece.catalogue, piece.at + static_cast<std::size_t>(number - piece.first), DecimalText(number));
    }
  }
  for (const WordPiece& piece : WordPieces) {
    piece.catalogue->assign(piece.words.begin(), piece.words.end());
  }
  for (Catalogue& list : EthernetSwitchLists) {
    list.assign(std::begin(OffOn), std::end(OffOn));
  }
  InputTypeNames.resize(InputTypeEntries);
  UnitNames.assign(UnitEntries, {});
  for (const UnitRow& unit : FixedUnits) {
    UnitNames[unit.id] = unit.name;
  }
}

const std::u16string* CatalogueEntry(const Catalogue& list, long index) {
  if (index < 0 || static_cast<std::size_t>(index) >= list.size()) {
    return nullptr;
  }
  return &list[static_cast<std::size_t>(index)];
}

std::size_t UserUnitIndex(int unitNumber, int unitCount) {
  if (unitNumber < 1 || unitNumber > unitCount || unitCount > UnitEntries) {
    throw std::out_of_range("no such user unit");
  }
  return static_cast<std::size_t>(UnitEntries - unitCount + unitNumber - 1);
}

} // namespace loader
