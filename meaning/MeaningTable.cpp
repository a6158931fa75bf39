// The rows of the meaning table, in the order of the initial settings file, and the list of what its views
// show differently.
#include "meaning/Lists.h"
#include "meaning/Meaning.h"
#include "meaning/MeaningRows.h"

namespace loader {

namespace {

using namespace lists;
using enum OwnTextId;

// --- How rows are written

consteval Meaning Row(std::string_view section, std::string_view tag, const ParameterNames& names,
                      Sense sense) {
  Meaning row{};
  row.section = section;
  row.tag = tag;
  row.names = names;
  row.sense = sense;
  return row;
}
consteval Meaning Listed(std::string_view section, std::string_view tag, const ParameterNames& names,
                         const ChoiceList& choices, Sense sense = Sense::Choice) {
  Meaning row = Row(section, tag, names, sense);
  row.choices = &choices;
  return row;
}
consteval Meaning Listed(std::string_view section, std::string_view tag, const ParameterNames& names,
                         const ChoiceList& choices, const ChoiceList& otherChoices) {
  Meaning row = Listed(section, tag, names, choices);
  row.otherChoices = &otherChoices;
  return row;
}
consteval Meaning Counted(std::string_view section, std::string_view tag, const ParameterNames& names,
                          NumberRule number = {}, std::string_view dependsOn = {}) {
  Meaning row = Row(section, tag, names, Sense::Number);
  row.number = number;
  row.dependsOn = dependsOn;
  return row;
}
consteval Meaning Worded(std::string_view section, std::string_view tag, const ParameterNames& names,
                         TextKind text = {}) {
  Meaning row = Row(section, tag, names, Sense::Text);
  row.text = text;
  return row;
}
consteval Meaning Decided(std::string_view section, std::string_view tag, const ParameterNames& names,
                          std::string_view decidedBy, std::span<const ChoiceList* const> byDecider) {
  Meaning row = Row(section, tag, names, Sense::Choice);
  row.decidedBy = decidedBy;
  row.byDecider = byDecider;
  return row;
}
consteval Meaning AlsoTyped(Meaning row) {
  row.alsoTyped = true;
  return row;
}
consteval Meaning Depending(Meaning row, std::string_view on) {
  row.dependsOn = on;
  return row;
}
consteval Meaning KovOnly(Meaning row) {
  row.kovOnly = true;
  return row;
}
consteval Meaning Secret(Meaning row) {
  row.secret = true;
  return row;
}
consteval Meaning PrintedOnKov(Meaning row) {
  row.printed = Printed::OnKov;
  return row;
}
consteval Meaning NotPrinted(Meaning row) {
  row.printed = Printed::Never;
  return row;
}
consteval Meaning UsedAs(Use use, Meaning row) {
  row.use = use;
  return row;
}
consteval Meaning Unshown(const Meaning& row) {
  return UsedAs(Use::Unshown, row);
}

consteval Difference ListedIn(View view, std::string_view section, std::string_view tag,
                              const ChoiceList& choices, std::string_view reason) {
  return {section, tag, view, Sense::Choice, &choices, {}, reason};
}
consteval Difference PlainIn(View view, std::string_view section, std::string_view tag,
                             std::string_view reason) {
  return {section, tag, view, Sense::Plain, nullptr, {}, reason};
}
consteval Difference CountedIn(View view, std::string_view section, std::string_view tag, NumberRule number,
                               std::string_view reason) {
  return {section, tag, view, Sense::Number, nullptr, number, reason};
}

// A number that no screen shows: it is what it is, whatever its limits.
consteval Meaning Kept(std::string_view section, std::string_view tag, const ParameterNames& names) {
  return Unshown(Row(section, tag, names, Sense::Plain));
}

// A caption of a screen; a caption inside a frame; words of our own where no caption says it; a parameter
// that no screen names goes by its tag.
consteval ParameterNames Caption(int label, std::string_view english) {
  return {.label = label, .english = english};
}
consteval ParameterNames Caption(int group, int label, std::string_view english) {
  return {.group = group, .label = label, .english = english};
}
consteval ParameterNames Inside(OwnTextId group, int label, std::string_view english) {
  return {.label = label, .ownGroup = group, .english = english};
}
consteval ParameterNames Own(OwnTextId words) {
  return {.ownLabel = words};
}
consteval ParameterNames Own(int group, OwnTextId words, std::string_view english) {
  return {.group = group, .ownLabel = words, .english = english};
}
constexpr ParameterNames Nameless{};

// --- Rules that several rows share

constexpr NumberRule MeasuringRule{Position::Measuring, Within::Kind, UnderLogarithm::AsEver};
constexpr NumberRule EngineeringRule{Position::Engineering, Within::Engineering, UnderLogarithm::Exponent};
constexpr NumberRule RecordRule{Position::RecordRange, Within::RecordRange, UnderLogarithm::Power};
constexpr NumberRule ChannelPointRule{Position::Channel, Within::Record, UnderLogarithm::AsEver};
constexpr NumberRule LowCutRule{Position::FValue, Within::Record, UnderLogarithm::AsEver};
constexpr NumberRule AlarmRule{Position::FValue, Within::Alarm, UnderLogarithm::Scaled};
// Where a view differs.
constexpr NumberRule TerminalsRule{Position::Terminals, Within::Terminals, UnderLogarithm::AsEver};
constexpr NumberRule TypedRecordRule{Position::RecordRange, Within::RecordRange, UnderLogarithm::Exponent};
constexpr NumberRule TypedLowCutRule{Position::FValue, Within::Alarm, UnderLogarithm::AsEver};
constexpr NumberRule TypedAlarmRule{Position::RecordRange, Within::Alarm, UnderLogarithm::Scaled};
constexpr NumberRule PrintedEngineeringRule{Position::Channel, Within::Record, UnderLogarithm::Exponent};
constexpr NumberRule PrintedRecordRule{Position::Channel, Within::Record, UnderLogarithm::Power};
constexpr std::string_view EngineeringNeeds = "TYPE UNIT SCAL TAIS POIN";
constexpr std::string_view RecordNeeds = "TYPE UNIT SCAL TAIS POIN FTIO FPOI";
constexpr std::string_view LowCutNeeds = "TYPE UNIT SCAL POIN FTIO FPOI";
constexpr std::string_view AlarmNeeds = "TYPE UNIT SCAL POIN FTIO FPOI; under TAIS also MMIN MMAX SMIN SMAX";

constexpr TextKind Tag{TextForm::AsTyped, true};
constexpr TextKind Trimmed{TextForm::TrimmedOnLeave, true};
constexpr TextKind Address{TextForm::TrimmedAsTyped, false};

constexpr auto Rows = std::to_array<Meaning>({
    // One channel.
    Worded("C", "TAG", Caption(18038, "Tag"), Tag),
    Worded("C", "TAG2", Caption(18037, "Tag 2"), Tag),
    Worded("C", "STAG", Caption(18008, 18014, "Totalizer tag"), Tag),
    Depending(Listed("C", "TYPE", Caption(18040, "Input kind"), InputKindNames),
              "the channel before it, which may share its terminals"),
    Listed("C", "SUBC", Caption(18020, "Channel to subtract"), SubtractedChannels),
    Counted("C", "FILT", Caption(18041, "Input filter (s)")),
    Listed("C", "UNIT", Caption(18042, "Unit"), Units),
    Listed("C", "SCAL", Caption(18026, "Scaling"), Scaling),
    Counted("C", "MMIN", Caption(18024, 18022, "Measuring range, lower limit"), MeasuringRule,
            "TYPE UNIT; TYPE 40: OTCH"),
    Counted("C", "MMAX", Caption(18024, 18023, "Measuring range, upper limit"), MeasuringRule,
            "TYPE UNIT; TYPE 40: OTCH"),
    Counted("C", "SMIN", Caption(18021, 18022, "Engineering value, lower limit"), EngineeringRule,
            EngineeringNeeds),
    Counted("C", "SMAX", Caption(18021, 18023, "Engineering value, upper limit"), EngineeringRule,
            EngineeringNeeds),
    Listed("C", "POIN", Caption(18027, "Decimal point"), Positions),
    Counted("C", "PVSI", Caption(18032, 18034, "PV shift"), ChannelPointRule, "POIN"),
    Counted("C", "PVKA", Caption(18032, 18033, "PV slope (%)")),
    Kept("C", "NIPO", Nameless),
    Listed("C", "RECO", Caption(18029, "Recorded or displayed only"), RecordDisplay),
    Counted("C", "RMIN", Caption(18028, 18022, "Display range, lower limit"), RecordRule, RecordNeeds),
    Counted("C", "RMAX", Caption(18028, 18023, "Display range, upper limit"), RecordRule, RecordNeeds),
    Kept("C", "DSPM", Caption(21079, "Display mode")),
    Kept("C", "ZMB1", Caption(21082, 21083, "Zoom, border 1")),
    Kept("C", "ZMB2", Caption(21090, 21091, "Zoom, border 2")),
    Kept("C", "ZMP1", Caption(21086, 21087, "Zoom, position 1")),
    Kept("C", "ZMP2", Caption(21094, 21095, "Zoom, position 2")),
    KovOnly(Listed("C", "TAIS", Caption(18172, "Logarithm"), Logarithm)),
    Listed("C", "COLR", Caption(18039, "Display colour"), Colours, Sense::ColourNumber),
    Listed("C", "ROOT", Caption(18025, "Square root"), SquareRoot),
    Listed("C", "RECM", Caption(18030, "Record mode"), RecordModes),
    Depending(Listed("C", "OTCH", Caption(18036, "Channel referred to"), Channels72), "TYPE 40"),
    Listed("C", "FTIO", Caption(18006, "F value function"), FValue),
    Listed("C", "SEKI", Caption(18018, "Totalizer function"), TotalKinds),
    Listed("C", "SEUN", Caption(18017, "Totalizer unit"), Units),
    Counted("C", "SECU", Caption(18016, "Totalizer low cut"), LowCutRule, LowCutNeeds),
    Counted("C", "SSCL", Caption(18013, "Totalizer divisor")),
    Listed("C", "STYP", Caption(18012, "Totalizer type"), ReportCycles),
    Listed("C", "SDIG", Caption(18008, 18011, "Totalizer external input"), ExternalInputs),
    Listed("C", "SBAS", Caption(18010, "Totalizer unit time"), PerTime),
    Listed("C", "SRES", Caption(18009, "Totalizer reset"), ResetSwitch),
    PrintedOnKov(KovOnly(Listed("C", "SRIN", Caption(18173, "Totalizer reset input"), ResetInputs))),

    // The four alarms of a channel.
    Listed("A", "A#TY", Inside(AlarmNumber, 18045, "Alarm # type"), AlarmTypes),
    Counted("A", "A#VL", Inside(AlarmNumber, 18046, "Alarm # set value"), AlarmRule, AlarmNeeds),
    Kept("A", "A#HC", Inside(AlarmNumber, 21155, "Alarm # channel compared with")),
    Listed("A", "A#RL", Inside(AlarmNumber, 18047, "Alarm # output relay"), AlarmOutputs),

    // A display group: name and slots, trend, bar graph or meter.
    Worded("G", "GNEM", Caption(18063, "Name"), Trimmed),
    Listed("G", "GC##", Own(DataSlot), GroupSlots),
    Listed("T", "THOU", Caption(18066, "Trend direction"), Directions),
    Listed("T", "TMCH", Caption(18064, 18053, "Channel of the trend scale"), TrendScaleChannels),
    Listed("T", "TBUN", Caption(18067, "Divisions"), Divisions),
    Listed("T", "TPVD", Caption(18062, "Colour bar"), ColourBars),
    Listed("T", "TMEM", Caption(18064, "Trend scale"), TrendScale),
    Unshown(Listed("B", "BHOU", Nameless, Directions)),
    Kept("B", "BPVD", Nameless),
    Kept("B", "BPVM", Nameless),
    Listed("B", "BBRM", Caption(18061, "Bar graph or meter"), BarsOrMeters),

    // General settings.
    Listed("H", "KLOC", Own(KeyLock), KeyLocks),
    Listed("H", "BETU", Caption(18107, "File period"), FileSplits, DailyFiles),
    Listed("H", "MSMP", Caption(18099, "Display period"), SampleCycles),
    Unshown(Listed("H", "SSMP", Nameless, SampleCycles)),
    Counted("H", "ALMH", Caption(18100, "Alarm hysteresis (%)")),
    Listed("H", "ALML", Caption(18101, "Alarm latch"), AlarmLatch),
    Listed("H", "ASBY", Caption(18102, "Record format"), RecordCodes),
    Counted("H", "FSTN", Caption(18124, 18125, "F value, reference temperature (°C)")),
    Counted("H", "FZTI", Caption(18124, 18126, "F value, Z value (°C)")),
    Listed("H", "FPOI", Caption(18124, 18127, "F value, decimal point"), Positions),
    Kept("H", "FTIR", Nameless),
    Counted("H", "FTIT", Caption(18124, 18128, "F value, reset temperature (°C)")),
    Listed("H", "BAAL", Caption(18105, "Battery alarm output"), BatteryOutputs),
    AlsoTyped(Listed("H", "SHOU", Caption(18103, "LCD off after (min)"), Backlight, ScreenOff)),
    Listed("H", "CFFL", Caption(18104, "Memory full output"), MemoryFullOutputs),
    Secret(Counted("H", "PAS1", Caption(18184, "Password of the parameters"))),
    Secret(Counted("H", "PAS2", Caption(18185, "Password of the memory card"))),
    Secret(Counted("H", "RPAS", Caption(18186, "Password of recording"))),
    Counted("H", "COMS", Caption(18109, "Modbus station")),
    Listed("H", "COMB", Caption(18110, "Modbus speed"), BaudRates),
    Listed("H", "COMP", Caption(18111, "Modbus parity"), Parities),
    Unshown(Listed("H", "TIMF", Caption(18106, "Date format"), DateFormats)),
    UsedAs(Use::Command, Counted("H", "TIMS", Caption(19626, "Clock command"))),
    Listed("H", "CMPL", Caption(18180, "Trend compression"), Compressions),
    Listed("H", "FIFO", Caption(18181, "Overwrite files"), Overwrite),
    Listed("H", "LANG", Caption(18182, "Language"), Languages),
    Listed("H", "LOGO", Caption(18183, "Security mode"), LoginModes),
    KovOnly(Listed("H", "TBKC", Caption(18210, "Trend background"), TrendBackgrounds)),
    KovOnly(Listed("H", "HBKC", Caption(18211, "History background"), HistoryBackgrounds)),
    UsedAs(Use::Clock, Counted("H", "YEAR", Inside(Clock, 18088, "Clock, year"))),
    UsedAs(Use::Clock, Counted("H", "MONT", Inside(Clock, 18089, "Clock, month"))),
    UsedAs(Use::Clock, Counted("H", "DAYS", Inside(Clock, 18090, "Clock, day"))),
    UsedAs(Use::Clock, Counted("H", "HOUR", Inside(Clock, 18091, "Clock, hour"))),
    UsedAs(Use::Clock, Counted("H", "MINT", Inside(Clock, 18092, "Clock, minute"))),

    // A message.
    Worded("M", "MESS", Caption(18082, "Text"), Tag),
    Unshown(Listed("M", "MCOR", Nameless, Colours, Sense::ColourNumber)),
    Kept("M", "MITI", Nameless),
    Listed("M", "MTM1", Caption(18083, "Timing"), MessageTimings),
    Decided("M", "MTM2", Caption(18084, "Digital input or channel"), "MTM1", MessageSources),
    Decided("M", "MTM3", Caption(18085, "Alarm number"), "MTM1", MessageAlarms),

    // A user unit, a digital input.
    Worded("U", "UNIT", Caption(18003, "Name"), Tag),
    Listed("D", "DIKI", Caption(18129, "Function"), DIFunctions),

    // The timing of the totalizer.
    Counted("E", "TTSH", Caption(18122, 18091, "Start hour")),
    Counted("E", "TTSM", Caption(18122, 18092, "Start minute")),
    Counted("E", "TTEH", Caption(18123, 18091, "End hour")),
    Counted("E", "TTEM", Caption(18123, 18092, "End minute")),
    Row("E", "TSBA", Own(18112, ReferenceTime, "Totalizer reference time"), Sense::TimeOfDay),
    Listed("E", "TCYC", Caption(18117, "Totalizer cycle"), TotalCycles),
    Listed("E", "TWDY", Own(18112, Weekday, "Totalizer reference day of the week"), Weekdays),
    Listed("E", "TDAY", Caption(18112, 18114, "Totalizer reference day of the month"), Days),
    KovOnly(Row("E", "TSTR", Caption(18112, 18122, "Totalizer start time"), Sense::TimeOfDay)),
    KovOnly(Row("E", "TSTO", Caption(18112, 18123, "Totalizer end time"), Sense::TimeOfDay)),
    Listed("E", "TEXT", Caption(18112, 18115, "Totalizer external input"), ExternalInputs),
    Counted("E", "TIMH", Caption(18187, 18188, "Timer H-P, L-P (min)")),
    Counted("E", "TIMA", Caption(18187, 18189, "Timer AVG (min)")),
    Counted("E", "TIMT", Caption(18187, 18190, "Timer SUM (min)")),

    // A constant.
    Counted("N", "CONS", Caption(18170, "Value"), {Position::Constant, Within::Record}, "CONP"),
    Listed("N", "CONP", Caption(18027, "Decimal point"), Positions),

    // The formulas of an operation channel: formula, term.
    Row("O", "OP##", Own(FormulaOperation), Sense::FormulaWord),
    Row("O", "S1##", Own(FormulaInput1), Sense::FormulaWord),
    Row("O", "S2##", Own(FormulaInput2), Sense::FormulaWord),

    // Network, mail.
    Worded("J", "SDAD", Caption(18151, 18153, "Mail sender's address"), Address),
    Worded("J", "SDNM", Caption(18151, 18154, "Mail sender's name"), Address),
    Worded("J", "RAD#", Caption(18155, "Mail address #"), Address),
    Listed("J", "ETHE", Caption(18134, "Ethernet"), Switches[0]),
    Listed("J", "MAIL", Caption(18148, "E-mail"), Switches[1]),
    Listed("J", "FTPF", Caption(18143, "FTP server"), Switches[2]),
    Listed("J", "FTPA", Caption(18142, 18144, "FTP access control"), Switches[3]),
    Listed("J", "WEBF", Caption(18146, "Web server"), Switches[4]),
    Listed("J", "WEBA", Own(WebServerAccessControl), Switches[5]),
    Listed("J", "WEBM", Own(WebServerMessages), Switches[6]),
    Listed("J", "MOTC", Caption(18150, "Modbus TCP/IP"), Switches[7]),
    Row("J", "IPA#", Caption(18135, "IP address, number #"), Sense::Octet),
    Row("J", "SUB#", Caption(18136, "Subnet mask, number #"), Sense::Octet),
    Row("J", "DEF#", Caption(18137, "Default gateway, number #"), Sense::Octet),
    Row("J", "SIP#", Caption(18152, "SMTP address, number #"), Sense::Octet),

    // A user account.
    Worded("K", "UNAM", Caption(18139, "Name")),
    Secret(Worded("K", "PASS", Caption(18140, "Password"))),
    Listed("K", "LVEL", Caption(18141, "Level"), OfferedLevels),

    // A mail trigger.
    Worded("X", "ECM1", Caption(18056, "Text 1"), Trimmed),
    Worded("X", "ECM2", Caption(18057, "Text 2"), Trimmed),
    Worded("X", "ETTL", Caption(18055, "Title"), Trimmed),
    Listed("X", "ETRG", Caption(18054, "Timing"), MailTimings),
    Decided("X", "ETG1", Caption(63108, "What it waits for"), "ETRG", MailSources),
    Decided("X", "ETG2", Caption(63110, "Alarm number or hour"), "ETRG", MailDetails),
    Row("X", "EADD", Caption(18059, "Addresses"), Sense::AddressMask),
    Listed("X", "EPVA", Caption(18058, "Values attached"), NoYes),

    // The recorder's serial master and its slaves.
    Unshown(Listed("L", "MODF", Nameless, LinkRoles)),
    Kept("L", "RECY", Nameless),
    Kept("L", "RETR", Nameless),
    Kept("L", "TIOU", Nameless),
    Kept("L", "DELT", Nameless),
    Unshown(Listed("L", "RETN", Nameless, RetryIntervals)),
    Kept("Y", "SLST", Nameless),
    Kept("Y", "SLRA", Nameless),
    Kept("Y", "SLRN", Nameless),

    // What the recorder is.
    UsedAs(Use::Identity, Worded("P", "PILC", Own(Model))),
    UsedAs(Use::Identity, Worded("P", "SNO.", Own(SerialNumber))),
    UsedAs(Use::Identity, Worded("P", "PVER", Own(ProgramVersion))),

    // The recording of a digital input; the switches of the totalizer.
    NotPrinted(Unshown(Listed("I", "DCOL", Caption(18039, "Display colour"), Colours, Sense::ColourNumber))),
    NotPrinted(Unshown(Listed("I", "DREM", Caption(18030, "Record mode"), InputRecordModes))),
    NotPrinted(Unshown(Listed("I", "DREO", Caption(18029, "Recorded"), RecordPresence))),
    NotPrinted(Kept("I", "DRMN", Caption(18028, 18022, "Display range, lower limit"))),
    NotPrinted(Kept("I", "DRMX", Caption(18028, 18023, "Display range, upper limit"))),
    KovOnly(Listed("Z", "TOTA", Caption(18119, "Totalizing"), TotalSwitch)),
    KovOnly(Listed("Z", "TSTM", Caption(18120, "Unit time"), TotalUnitTimes)),
    KovOnly(Listed("Z", "TSIG", Caption(18121, "Start and stop signal"), OperationKinds)),

    NotPrinted(UsedAs(Use::Command, Counted("F", "FIX", Caption(19625, "Store the settings")))),
    NotPrinted(UsedAs(Use::Identity, Row("S", "SYS1", Own(RecorderState), Sense::Plain))),
});

// Where a view shows a parameter otherwise than its row says. Each is deliberate.
constexpr auto DifferenceRows = std::to_array<Difference>({
    ListedIn(View::Screen, "C", "COLR", Colours, "a screen names the colour beside its swatch"),
    ListedIn(View::Sheet, "C", "COLR", Colours, "paper knows no colour: the sheet names it"),
    ListedIn(View::Sheet, "C", "TYPE", PrintedInputKinds, "a number that is no kind is printed as it is"),
    ListedIn(View::Sheet, "C", "SUBC", PrintedChannels, "the sheet has words of its own"),
    PlainIn(View::Sheet, "C", "POIN", "the sheet prints the number"),
    ListedIn(View::Sheet, "C", "OTCH", PrintedOtherChannels,
             "the sheet takes the entry at the value, where the first is none: it prints one channel less "
             "than the screens show"),
    ListedIn(View::Sheet, "C", "SEKI", PrintedTotalKinds,
             "the sheet counts the kinds from 1 as the recorder does, the screens from 0: with entries from "
             "1 everywhere all three would show the same"),
    ListedIn(View::Table, "C", "STYP", ReportCyclesOrOff, "a table shows OFF for no cycle"),
    ListedIn(View::Sheet, "C", "STYP", ReportCyclesOrOff, "as the table"),
    CountedIn(View::Sheet, "A", "A#RL", NumberRule{}, "the sheet prints the number of the relay"),
    ListedIn(View::Sheet, "G", "GC##", PrintedChannels, "the sheet has words of its own"),
    ListedIn(View::Table, "T", "THOU", DirectionsOrUpright, "a table tells sideways from all else"),
    ListedIn(View::Sheet, "T", "THOU", DirectionsOrUpright, "as the table"),
    PlainIn(View::Table, "T", "TBUN", "a table shows the number whatever it is"),
    PlainIn(View::Sheet, "T", "TBUN", "as the table"),
    ListedIn(View::Sheet, "T", "TMEM", NoYes, "the sheet says no or yes, the screen OFF or ON"),
    ListedIn(View::Sheet, "K", "LVEL", UserLevels,
             "the sheet takes the entry at the value of all four; the screen offers the first and the fourth "
             "as 0 and 1, of which the second and the fourth read alike"),

    // Numbers: what a screen takes is not always what a table can show.
    CountedIn(View::Screen, "C", "MMIN", TerminalsRule,
              "a screen takes what the terminals take whatever the kind, at the position of the kind"),
    CountedIn(View::Screen, "C", "MMAX", TerminalsRule,
              "a screen takes what the terminals take whatever the kind, at the position of the kind"),
    CountedIn(View::Sheet, "C", "SMIN", PrintedEngineeringRule, "the sheet prints at POIN"),
    CountedIn(View::Sheet, "C", "SMAX", PrintedEngineeringRule, "the sheet prints at POIN"),
    CountedIn(View::Screen, "C", "RMIN", TypedRecordRule, "a screen takes the exponent"),
    CountedIn(View::Screen, "C", "RMAX", TypedRecordRule, "a screen takes the exponent"),
    CountedIn(View::Sheet, "C", "RMIN", PrintedRecordRule, "the sheet prints at POIN"),
    CountedIn(View::Sheet, "C", "RMAX", PrintedRecordRule, "the sheet prints at POIN"),
    CountedIn(View::Screen, "C", "SECU", TypedLowCutRule,
              "a screen takes what the kind can measure; a table shows what the record holds"),
    CountedIn(View::Screen, "A", "A#VL", TypedAlarmRule,
              "a screen takes an unscaled alarm at the kind's position; a table shows it at POIN"),
});

} // namespace

std::span<const Meaning> MeaningRows() {
  return Rows;
}

std::span<const Difference> Differences() {
  return DifferenceRows;
}

} // namespace loader
