// The table of commands.
#include <array>

#include "core/Text.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

namespace {

constexpr std::array<OptionRow, 4> EveryCommand{{
    {"lang", Phrase::OptionLang, "ja|en"},
    {"json", Phrase::OptionJson},
    {"secrets", Phrase::OptionSecrets},
    {"model", Phrase::OptionModel, "KOV|RUG"},
}};

// Those of one command alone.
constexpr std::array<OptionRow, 3> CompareOptions{{
    {"only", Phrase::OptionOnly, "PATTERN"},
    {"ignore", Phrase::OptionIgnore, "PATTERN"},
    {"html", Phrase::OptionHtml, "FILE"},
}};
constexpr std::array<OptionRow, 3> ConvertOptions{{
    {"to", Phrase::OptionTo, "KOV|RUG"},
    {"o,output", Phrase::OptionOutput, "FILE"},
    {"html", Phrase::OptionHtml, "FILE"},
}};
constexpr std::array<OptionRow, 1> DecodeOptions{{{"firmware", Phrase::OptionFirmware, "TAG"}}};
constexpr std::array<OptionRow, 3> MergeOptions{{{"only", Phrase::OptionOnly, "PATTERN"},
                                                 {"ignore", Phrase::OptionIgnore, "PATTERN"},
                                                 {"o,output", Phrase::OptionOutput, "FILE"}}};
constexpr std::array<OptionRow, 1> PrintOptions{{
    {"o,output", Phrase::OptionOutput, "FILE"},
}};
constexpr std::array<OptionRow, 1> ReadOptions{{
    {"o,output", Phrase::OptionOutput, "FILE"},
}};
constexpr std::array<OptionRow, 1> SetOptions{{{"o,output", Phrase::OptionOutput, "FILE"}}};
constexpr std::array<OptionRow, 4> WriteOptions{{
    {"yes", Phrase::OptionYes},
    {"backup", Phrase::OptionBackup, "FILE"},
    {"no-backup", Phrase::OptionNoBackup},
    {"store", Phrase::OptionStore},
}};
constexpr auto FleetOptions = std::to_array<OptionRow>({
    {"d,folder", Phrase::FleetOptionFolder, "FOLDER"},
    {"jobs", Phrase::FleetOptionJobs, "N"},
    {"timeout", Phrase::FleetOptionTimeout, "SECONDS"},
    {"no-commit", Phrase::FleetOptionNoCommit},
    {"files", Phrase::FleetOptionFiles},
    {"only", Phrase::OptionOnly, "PATTERN"},
    {"ignore", Phrase::OptionIgnore, "PATTERN"},
    {"yes", Phrase::FleetOptionYes},
    {"store", Phrase::FleetOptionStore},
    {"no-backup", Phrase::FleetOptionNoBackup},
    {"backup-folder", Phrase::FleetOptionBackupFolder, "FOLDER"},
});

constexpr auto Table = std::to_array<Command>({
    {.name = "check",
     .usage = "FILE...",
     .fewest = 1,
     .most = -1,
     .summary = Phrase::CheckSummary,
     .help = Phrase::CheckHelp,
     .examples = "paramtool check plant.KOV\n"
                 "paramtool check *.RUG --json\n"
                 "paramtool check old.txt --model KOV --lang en",
     .options = {},
     .run = RunCheck},
    {.name = "show",
     .usage = "SETUP [WHERE...]",
     .fewest = 1,
     .most = -1,
     .summary = Phrase::ShowSummary,
     .help = Phrase::ShowHelp,
     .examples = "paramtool show plant.KOV CH3\n"
                 "paramtool show plant.KOV \"group 2\" mail --lang en\n"
                 "paramtool show default:RUG C02MMAX --json",
     .options = {},
     .run = RunShow},
    {.name = "compare",
     .usage = "A B",
     .fewest = 2,
     .most = 2,
     .summary = Phrase::CompareSummary,
     .help = Phrase::CompareHelp,
     .examples = "paramtool compare reference.KOV plant.KOV\n"
                 "paramtool compare plant.RUG tcp:192.168.1.1 --ignore recorder\n"
                 "paramtool compare old.KOV new.KOV --only alarms --html report.html --lang en",
     .options = CompareOptions,
     .run = RunCompare},
    {.name = "merge",
     .usage = "A B --only PATTERN... -o FILE",
     .fewest = 2,
     .most = 2,
     .summary = Phrase::MergeSummary,
     .help = Phrase::MergeHelp,
     .examples = "paramtool merge line1.KOV line2.KOV --only alarms -o line1.KOV\n"
                 "paramtool merge new.RUG old.RUG --only network --only mail -o new.RUG\n"
                 "paramtool merge a.KOV b.KOV --only CH3-6 --ignore \"C*TAG\" -o c.KOV --lang en",
     .options = MergeOptions,
     .run = RunMerge},
    {.name = "set",
     .usage = "SETUP KEY=VALUE... -o FILE",
     .fewest = 2,
     .most = -1,
     .summary = Phrase::SetSummary,
     .help = Phrase::SetHelp,
     .examples = "paramtool set plant.KOV A02A1VL=850.0 A02A1TY=H -o plant.KOV\n"
                 "paramtool set plant.KOV \"C*COLR=3\" -o red.KOV --lang en\n"
                 "paramtool set default:RUG J00IPA1=192 J00IPA2=168 E00TSBA=8:05 -o new.RUG --json",
     .options = SetOptions,
     .run = RunSet},
    {.name = "convert",
     .usage = "FILE",
     .fewest = 1,
     .most = 1,
     .summary = Phrase::ConvertSummary,
     .help = Phrase::ConvertHelp,
     .examples = "paramtool convert plant.KOV --to RUG -o plant.RUG\n"
                 "paramtool convert plant.RUG --to KOV -o plant.KOV --html report.html",
     .options = ConvertOptions,
     .run = RunConvert},
    {.name = "print",
     .usage = "SETUP",
     .fewest = 1,
     .most = 1,
     .summary = Phrase::PrintSummary,
     .help = Phrase::PrintHelp,
     .examples = "paramtool print plant.KOV -o plant.txt",
     .options = PrintOptions,
     .run = RunPrint},
    {.name = "read",
     .usage = "DEVICE -o FILE",
     .fewest = 1,
     .most = 1,
     .summary = Phrase::ReadSummary,
     .help = Phrase::ReadHelp,
     .examples = "paramtool read tcp:192.168.1.20 -o furnace.KOV\n"
                 "paramtool read tcp:logger7.plant:1502 -o logger7.RUG --lang en\n"
                 "paramtool read serial:/dev/ttyUSB0@9600#3 -o line3.KOV --json",
     .options = ReadOptions,
     .run = RunRead},
    {.name = "write",
     .usage = "FILE DEVICE",
     .fewest = 2,
     .most = 2,
     .summary = Phrase::WriteSummary,
     .help = Phrase::WriteHelp,
     .examples = "paramtool write furnace.KOV tcp:192.168.1.20\n"
                 "paramtool write furnace.KOV tcp:192.168.1.20 --yes --store\n"
                 "paramtool write line3.KOV serial:/dev/ttyUSB0#3 --yes --backup before.KOV --json",
     .options = WriteOptions,
     .run = RunWrite},
    {.name = "fleet",
     .usage = "LIST read|compare|write [REFERENCE]",
     .fewest = 2,
     .most = 3,
     .summary = Phrase::FleetSummary,
     .help = Phrase::FleetHelp,
     .examples = "paramtool fleet plant.csv read -d backup --jobs 8\n"
                 "paramtool fleet plant.csv compare\n"
                 "paramtool fleet plant.csv compare reference.RUG --only alarm\n"
                 "paramtool fleet plant.csv write --yes --store --backup-folder before",
     .options = FleetOptions,
     .run = RunFleet},
    {.name = "decode",
     .usage = "FILE",
     .fewest = 1,
     .most = 1,
     .summary = Phrase::DecodeSummary,
     .help = Phrase::DecodeHelp,
     .examples = "recorder-sim --tcp 1502 --trace-frames 2>trace.txt\n"
                 "paramtool decode trace.txt\n"
                 "paramtool decode trace.txt --firmware V14A --lang en\n"
                 "echo \"01 03 0F A6 00 01 67 3D\" | paramtool decode - --model KOV --json",
     .options = DecodeOptions,
     .run = RunDecode},
});

} // namespace

std::span<const Command> Commands() {
  return Table;
}

const Command* FindCommand(const QString& name) {
  for (const Command& command : Table) {
    if (name == QLatin1String(command.name)) {
      return &command;
    }
  }
  return nullptr;
}

std::span<const OptionRow> CommonOptions() {
  return EveryCommand;
}

QJsonObject Call::Report() const {
  return {{QStringLiteral("form"), ReportForm}, {QStringLiteral("command"), QLatin1String(command)}};
}

std::filesystem::path Call::OutputFile() const {
  if (!Has("output")) {
    throw WrongUsage{Say(Phrase::OptionMissing, language(), {{u"OPTION", u"output"}})};
  }
  return PathOf(Value("output"));
}

std::vector<Selection> Call::Selections(const char* option) const {
  std::vector<Selection> selections;
  for (const QString& text : options.values(QString::fromLatin1(option))) {
    selections.emplace_back(text.toStdU16String());
  }
  return selections;
}

} // namespace loader::paramtool
