#include <QCoreApplication>
#include <QDateTime>
#include <QJsonArray>
#include <algorithm>
#include <array>
#include <map>

#include "core/Text.h"
#include "core/modFile.h"
#include "paramtool/Command.h"
#include "paramtool/Fleet.h"
#include "paramtool/FleetTable.h"
#include "paramtool/Json.h"
#include "paramtool/ProgressLine.h"
#include "platform/RunTimeFailure.h"

namespace loader::paramtool {

namespace {

// Which options are for which action: one that is not for it is no option of no effect, but wrong usage.
struct ForAction {
  const char* option;
  FleetAction action;
  bool passedOn; // to the program that does it for one recorder
};
constexpr auto ForActions = std::to_array<ForAction>({
    {"files", FleetAction::Compare, false},
    {"only", FleetAction::Compare, true},
    {"ignore", FleetAction::Compare, true},
    {"yes", FleetAction::Write, true},
    {"store", FleetAction::Write, true},
    {"no-backup", FleetAction::Write, true},
    {"backup-folder", FleetAction::Write, false},
    {"no-commit", FleetAction::Read, false},
});

std::u16string Number(std::size_t number) {
  return DecimalText(static_cast<std::int64_t>(number));
}

FleetAction AskedAction(const Call& call) {
  for (const FleetAction action : {FleetAction::Read, FleetAction::Compare, FleetAction::Write}) {
    if (call.arguments.at(1) == QLatin1String(NameOf(action))) {
      return action;
    }
  }
  throw WrongUsage{Say(Phrase::FleetUnknownAction, call.language(), {{u"ACTION", call.Argument(1)}})};
}

int NumberOption(const Call& call, const char* option, int first, int last, int otherwise) {
  if (!call.Has(option)) {
    return otherwise;
  }
  const auto number = ParseInt32(call.Value(option));
  if (!number || *number < first || *number > last) {
    throw WrongUsage{
        Say(Phrase::FleetNumberOption, call.language(),
            {{u"OPTION", Widen(option)}, {u"FIRST", DecimalText(first)}, {u"LAST", DecimalText(last)}})};
  }
  return *number;
}

QStringList PassedOn(const Call& call, FleetAction action) {
  QStringList words;
  for (const ForAction& row : ForActions) {
    if (!call.Has(row.option)) {
      continue;
    }
    if (row.action != action) {
      throw WrongUsage{Say(Phrase::FleetOptionElsewhere, call.language(),
                           {{u"OPTION", Widen(row.option)}, {u"ACTION", Widen(NameOf(action))}})};
    }
    if (!row.passedOn) {
      continue;
    }
    const QString written = QStringLiteral("--") + QLatin1String(row.option);
    const QStringList values = call.options.values(QLatin1String(row.option));
    for (const QString& value : values) {
      words << written + QLatin1Char('=') + value;
    }
    if (values.isEmpty()) {
      words << written;
    }
  }
  if (call.speech.secrets) {
    words << QStringLiteral("--secrets");
  }
  return words;
}

// Each run has a folder of its own below the one that was given: no backup ever takes the place of another.
void TakeBackups(const Call& call, FleetOrder& order) {
  if (!call.Has("backup-folder")) {
    return;
  }
  if (call.Has("no-backup")) {
    throw WrongUsage{std::u16string(PhraseText(Phrase::FleetBackupOrNot, call.language()))};
  }
  if (call.Has("yes")) { // a dry run saves none
    order.backups = std::filesystem::absolute(PathOf(call.Value("backup-folder"))) /
                    QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")).toStdString();
  }
}

// A file or the initial settings; the children run in this folder, so that its name stays good.
void TakeReference(const Call& call, FleetOrder& order) {
  if (call.arguments.size() > 2) {
    if (order.action != FleetAction::Compare) {
      throw WrongUsage{std::u16string(PhraseText(Phrase::FleetReferenceElsewhere, call.language()))};
    }
    if (IsRecorder(ParseAddress(call.Argument(2), call.language()).place)) {
      throw WrongUsage{
          Say(Phrase::FleetReferenceIsRecorder, call.language(), {{u"SETUP", call.Argument(2)}})};
    }
    order.reference = call.arguments.at(2);
  }
  if (order.files && order.reference.isEmpty()) {
    throw WrongUsage{std::u16string(PhraseText(Phrase::FleetFilesNeedReference, call.language()))};
  }
}

FleetOrder OrderOf(const Call& call) {
  constexpr int MostJobs = 64;
  constexpr int LongestTimeout = 24 * 60 * 60;
  constexpr int Millisecond = 1000;
  FleetOrder order;
  order.action = AskedAction(call);
  order.language = call.language();
  order.passedOn = PassedOn(call, order.action);
  order.files = call.Has("files");
  order.commit = !call.Has("no-commit");
  TakeReference(call, order);
  TakeBackups(call, order);
  order.run.program = QCoreApplication::applicationFilePath();
  order.run.jobs = NumberOption(call, "jobs", 1, MostJobs, order.run.jobs);
  order.run.timeout =
      NumberOption(call, "timeout", 1, LongestTimeout, order.run.timeout / Millisecond) * Millisecond;
  const std::filesystem::path list = std::filesystem::absolute(PathOf(call.Argument(0)));
  order.folder =
      call.Has("folder") ? std::filesystem::absolute(PathOf(call.Value("folder"))) : list.parent_path();
  return order;
}

// --- The list

// The list knows its files by their words alone. Two words for one file, by a link or by a whole path, would
// have one recorder's set-up take the place of another's.
void ReportSameFiles(const Call& call, const FleetOrder& order, FleetList& list) {
  std::map<std::filesystem::path, int> lines; // by file
  for (const FleetRecorder& recorder : list.recorders) {
    std::error_code failed;
    const std::filesystem::path file = FileOf(order, recorder);
    const std::filesystem::path real = std::filesystem::weakly_canonical(file, failed);
    const auto [known, first] = lines.emplace(failed ? file : real, recorder.line);
    const bool told =
        std::ranges::find(list.defects, recorder.line, &FleetListDefect::line) != list.defects.end();
    if (!first && !told) {
      list.defects.push_back(
          {recorder.line,
           Say(Phrase::FleetTwice, call.language(),
               {{u"COLUMN", u"file"}, {u"TEXT", recorder.file}, {u"LINE", DecimalText(known->second)}})});
    }
  }
}

FleetList ReadList(const Call& call, const FleetOrder& order) {
  const std::u16string name = call.Argument(0);
  FleetList list;
  try {
    list = ReadFleetList(ReadRegularFile(PathOf(name)), call.language());
  } catch (const RunTimeFailure& failure) {
    throw Undone{Say(Phrase::FleetListNotRead, call.language(),
                     {{u"LIST", name}, {u"REASON", FromUtf8(failure.what())}})};
  }
  for (const FleetRecorder& recorder : list.recorders) {
    std::error_code absent; // a file that is not there yet is not the list
    if (std::filesystem::equivalent(FileOf(order, recorder), PathOf(name), absent)) {
      list.defects.push_back(
          {recorder.line, Say(Phrase::FleetFileIsList, call.language(), {{u"TEXT", recorder.file}})});
    }
  }
  ReportSameFiles(call, order, list);
  std::ranges::stable_sort(list.defects, {}, &FleetListDefect::line);
  return list;
}

Exit RefuseList(Call& call, const FleetList& list) {
  QJsonArray defects;
  for (const FleetListDefect& defect : list.defects) {
    Output::Message(
        Say(Phrase::FleetListDefect, call.language(),
            {{u"LIST", call.Argument(0)}, {u"LINE", DecimalText(defect.line)}, {u"REASON", defect.reason}}));
    defects.append(
        QJsonObject{{QStringLiteral("line"), defect.line}, {QStringLiteral("reason"), Q(defect.reason)}});
  }
  const std::u16string message = Say(Phrase::FleetListUnusable, call.language(),
                                     {{u"LIST", call.Argument(0)}, {u"COUNT", Number(list.defects.size())}});
  Output::Message(message);
  if (call.json) {
    QJsonObject report = call.Report();
    report.insert(QStringLiteral("error"), Q(message));
    report.insert(QStringLiteral("defects"), defects);
    call.out.Json(report);
  }
  return Exit::Failed;
}

// --- What is told meanwhile

FleetReport CarryOutTold(const FleetOrder& order) {
  ProgressLine progress;
  const std::u16string all = Number(order.recorders.size());
  FleetWatch watch;
  watch.ended = [&](std::size_t recorder, const FleetResult& result, std::size_t done) {
    progress.Clear();
    Output::Message(Say(Phrase::FleetProgress, order.language,
                        {{u"DONE", Number(done)},
                         {u"ALL", all},
                         {u"NAME", order.recorders[recorder].name},
                         {u"RESULT", result.text},
                         {u"SECONDS", SecondsText(result.child.seconds)}}));
  };
  watch.changed = [&](std::size_t running, std::size_t done) {
    progress.Show(Say(Phrase::FleetRunning, order.language,
                      {{u"DONE", Number(done)}, {u"ALL", all}, {u"RUNNING", Number(running)}}));
  };
  FleetReport report = CarryOut(order, watch);
  progress.Clear();
  for (const FleetCommit& commit : report.commits) {
    Output::Message(commit.text);
  }
  return report;
}

Exit ExitOf(const FleetReport& report) {
  const auto ran = [](const FleetResult& result) {
    return result.child.end != ChildEnd::NotStarted && result.child.end != ChildEnd::NeverStarted;
  };
  if (std::ranges::none_of(report.results, ran)) {
    return Exit::Failed;
  }
  const bool good = report.Count(FleetOutcome::Good) == report.results.size() &&
                    std::ranges::all_of(report.commits, &FleetCommit::Done);
  return good ? Exit::Good : Exit::Different;
}

} // namespace

Exit RunFleet(Call& call) {
  FleetOrder order = OrderOf(call);
  FleetList list = ReadList(call, order);
  if (!list.defects.empty()) {
    return RefuseList(call, list);
  }
  order.recorders = std::move(list.recorders);
  for (FleetRecorder& recorder : order.recorders) {
    recorder.model = recorder.model.empty() ? call.model : recorder.model;
  }
  const FleetReport report = CarryOutTold(order);
  if (call.json) {
    QJsonObject json = call.Report();
    AddFleetJson(json, order, report);
    call.out.Json(json);
  } else {
    for (const std::u16string& line : FleetTable(order, report)) {
      call.out.Line(line);
    }
  }
  return ExitOf(report);
}

} // namespace loader::paramtool
