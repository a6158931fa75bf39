#include "paramtool/Fleet.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QTemporaryDir>
#include <algorithm>
#include <set>

#include "companion/SetUps.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "paramtool/FleetCommits.h"
#include "paramtool/Json.h"
#include "platform/RunTimeFailure.h"
#include "platform/WholeFile.h"

namespace loader::paramtool {

namespace {

constexpr int ExitGood = 0;
constexpr int ExitDifferent = 1;

std::u16string Number(int number) {
  return DecimalText(number);
}

class Fleet {
public:
  Fleet(const FleetOrder& order, const FleetWatch& watch) : order_(order), watch_(watch) {
    report_.results.resize(order.recorders.size());
  }

  FleetReport CarryOut() {
    QElapsedTimer sinceStart;
    sinceStart.start();
    if (!read_.isValid()) {
      throw Undone{
          Say(Phrase::FileNotWritten, order_.language,
              {{u"FILE", read_.path().toStdU16String()}, {u"REASON", read_.errorString().toStdU16String()}})};
    }
    NameBackups();
    std::vector<ChildJob> jobs;
    for (std::size_t i = 0; i < order_.recorders.size(); ++i) {
      jobs.push_back(
          {ArgumentsOf(i), order_.files ? Number(static_cast<int>(i)) : WireOf(order_.recorders[i].address)});
    }
    MakeBackupFolders();
    ChildRun run = order_.run;
    run.ended = [this](std::size_t job, const ChildResult& child) { Ended(job, child); };
    run.changed = [this](std::size_t running) { watch_.changed(running, done_); };
    report_.interrupted = RunChildren(jobs, run).interrupted;
    for (FleetResult& result : report_.results) {
      if (result.text.empty()) {
        result.text = PhraseText(Phrase::FleetNeverStarted, order_.language);
      }
    }
    if (order_.action == FleetAction::Read && order_.commit && !report_.interrupted) {
      report_.commits = CommitWhatChanged(order_, report_.results);
    }
    constexpr double MillisecondsPerSecond = 1000;
    report_.seconds = static_cast<double>(sinceStart.elapsed()) / MillisecondsPerSecond;
    return std::move(report_);
  }

private:
  // --- What a child is asked

  // Where a child reads to. The name of the file may tell the model.
  [[nodiscard]] std::filesystem::path ReadTo(std::size_t i) const {
    const std::filesystem::path file = FileOf(order_, order_.recorders[i]).filename();
    return PathOf(read_.path().toStdU16String()) /
           PathOf(Number(static_cast<int>(i)) + u"-" + file.u16string());
  }

  [[nodiscard]] QStringList ArgumentsOf(std::size_t i) const {
    const FleetRecorder& recorder = order_.recorders[i];
    const QString address = Q(recorder.address.text);
    const QString file = Q(FileOf(order_, recorder).u16string());
    QStringList arguments{QString::fromLatin1(NameOf(order_.action))};
    switch (order_.action) {
    case FleetAction::Read:
      arguments << address << QStringLiteral("-o") << Q(ReadTo(i).u16string());
      break;
    case FleetAction::Compare:
      arguments << (order_.files ? file : address) << (order_.reference.isEmpty() ? file : order_.reference);
      break;
    case FleetAction::Write:
      arguments << file << address;
      break;
    }
    arguments << QStringLiteral("--json") << QStringLiteral("--lang")
              << (order_.language == Language::Japanese ? QStringLiteral("ja") : QStringLiteral("en"));
    if (!recorder.model.empty()) {
      arguments << QStringLiteral("--model") << Q(recorder.model);
    }
    if (!backups_[i].empty()) {
      arguments << QStringLiteral("--backup") << Q(backups_[i].u16string());
    }
    return arguments + order_.passedOn;
  }

  // Laid out as the files are, so that the folder of the run can be written back with the same list; a file
  // outside of that folder by its name alone, and with its line where that is taken: each recorder has a
  // backup of its own.
  void NameBackups() {
    backups_.resize(order_.recorders.size());
    if (order_.backups.empty()) {
      return; // each stands where a single write puts it
    }
    std::set<std::filesystem::path> taken;
    for (const bool inside : {true, false}) {
      for (std::size_t i = 0; i < backups_.size(); ++i) {
        const std::filesystem::path file = PathOf(order_.recorders[i].file).lexically_normal();
        // "/x.RUG" of Windows is relative to a drive, and no name below another folder.
        if (inside != (!file.has_root_path() && *file.begin() != "..")) {
          continue;
        }
        backups_[i] = order_.backups / (inside ? file : file.filename());
        if (!taken.insert(backups_[i]).second) {
          backups_[i].replace_filename(
              PathOf(Number(order_.recorders[i].line) + u"-" + file.filename().u16string()));
          taken.insert(backups_[i]);
        }
      }
    }
  }

  // Where one cannot be made the child has no backup, and so writes nothing.
  void MakeBackupFolders() const {
    for (const std::filesystem::path& backup : backups_) {
      std::error_code failed;
      if (!backup.empty()) {
        std::filesystem::create_directories(backup.parent_path(), failed);
      }
    }
  }

  // --- What became of it

  void Ended(std::size_t i, const ChildResult& child) {
    FleetResult& result = report_.results[i];
    result.child = child;
    if (child.report.contains(QStringLiteral("file"))) { // not where it was read to meanwhile
      result.child.report.insert(QStringLiteral("file"), Q(FileOf(order_, order_.recorders[i]).u16string()));
    }
    const QJsonObject recorder = RecorderIn(child.report);
    result.recorder = (recorder.value(QStringLiteral("model")).toString() + QLatin1Char(' ') +
                       recorder.value(QStringLiteral("version")).toString())
                          .trimmed()
                          .toStdU16String();
    if (child.end == ChildEnd::Ended) {
      Judge(i, recorder.value(QStringLiteral("model")).toString());
    } else {
      JudgeEnd(i);
    }
    ++done_;
    watch_.ended(i, result, done_);
  }

  // A comparison says no more of the recorder than the model.
  [[nodiscard]] QJsonObject RecorderIn(const QJsonObject& report) const {
    const bool compared = order_.action == FleetAction::Compare && !order_.files;
    return report.value(compared ? QStringLiteral("a") : QStringLiteral("recorder")).toObject();
  }

  // What the child says of its failure, without the address, which has a column of its own.
  [[nodiscard]] std::u16string ErrorOf(std::size_t i) const {
    const QString error = report_.results[i].child.report.value(QStringLiteral("error")).toString();
    const QString where = Q(order_.recorders[i].address.text) + QStringLiteral(": ");
    return OneLine((error.startsWith(where) ? error.mid(where.size()) : error).toStdU16String());
  }

  void Fail(FleetResult& result, std::u16string_view reason) const {
    result.outcome = FleetOutcome::Failed;
    result.text = Say(Phrase::FleetFailed, order_.language, {{u"REASON", OneLine(reason)}});
  }

  // A child that was asked to end may have more to say: that its recorder now holds half of a set-up.
  void JudgeEnd(std::size_t i) {
    FleetResult& result = report_.results[i];
    result.outcome = result.child.end == ChildEnd::Interrupted ? FleetOutcome::Stopped : FleetOutcome::Failed;
    constexpr int MillisecondsPerSecond = 1000;
    const std::u16string seconds = Number(order_.run.timeout / MillisecondsPerSecond);
    Phrase phrase = Phrase::FleetCrashed;
    if (result.child.end == ChildEnd::Interrupted) {
      phrase = Phrase::FleetStopped;
    } else if (result.child.end == ChildEnd::TimedOut) {
      phrase = Phrase::FleetTimedOut;
    } else if (result.child.end == ChildEnd::NotStarted) {
      phrase = Phrase::FleetNotStarted;
    }
    result.text = Say(phrase, order_.language, {{u"SECONDS", seconds}});
    if (const std::u16string error = ErrorOf(i); !error.empty()) {
      result.text += u": " + error;
    } else if (Writes() && result.child.end != ChildEnd::NotStarted) {
      result.text += PhraseText(Phrase::FleetMaybeMixture, order_.language);
    }
  }

  // Not a dry run.
  [[nodiscard]] bool Writes() const {
    return order_.action == FleetAction::Write && order_.passedOn.contains(QStringLiteral("--yes"));
  }

  void Judge(std::size_t i, const QString& foundModel) {
    FleetResult& result = report_.results[i];
    const QJsonObject& report = result.child.report;
    const std::u16string error = ErrorOf(i);
    const std::string& wanted = order_.recorders[i].model;
    const bool answered = result.child.exit == ExitGood || result.child.exit == ExitDifferent;
    if (!error.empty()) {
      Fail(result, error);
    } else if (report.isEmpty() || !answered) {
      Fail(result, Say(Phrase::FleetNoReport, order_.language, {{u"EXIT", Number(result.child.exit)}}));
    } else if (!wanted.empty() && !foundModel.isEmpty() && foundModel.toStdString() != wanted) {
      Fail(result, Say(Phrase::FleetOtherModel, order_.language,
                       {{u"FOUND", foundModel.toStdU16String()}, {u"MODEL", Widen(wanted)}}));
    } else if (order_.action == FleetAction::Read) {
      TakeFile(i, result);
    } else if (order_.action == FleetAction::Write && result.child.exit == ExitGood &&
               !SaysItIsWritten(report)) {
      Fail(result, Say(Phrase::FleetNoReport, order_.language, {{u"EXIT", Number(ExitGood)}}));
    } else {
      result.outcome = result.child.exit == ExitGood ? FleetOutcome::Good : FleetOutcome::Different;
      result.text = order_.action == FleetAction::Compare ? ComparedText(result) : WrittenText(result);
    }
  }

  // Good is only what says so itself.
  static bool SaysItIsWritten(const QJsonObject& report) {
    return report.value(QStringLiteral("dryRun")).toBool() ||
           report.value(QStringLiteral("end")).toString() == QLatin1String("verified");
  }

  [[nodiscard]] std::u16string ComparedText(const FleetResult& result) const {
    if (result.outcome == FleetOutcome::Good) {
      return std::u16string(PhraseText(Phrase::FleetEqual, order_.language));
    }
    const qsizetype count = result.child.report.value(QStringLiteral("parameters")).toArray().size();
    return count == 0 ? std::u16string(PhraseText(Phrase::FleetDifferent, order_.language))
                      : Say(Phrase::FleetDifferentCount, order_.language,
                            {{u"COUNT", DecimalText(static_cast<std::int64_t>(count))}});
  }

  [[nodiscard]] std::u16string WrittenText(const FleetResult& result) const {
    const QJsonObject& report = result.child.report;
    if (report.value(QStringLiteral("dryRun")).toBool()) {
      const QJsonArray losses = report.value(QStringLiteral("losses")).toArray();
      const auto lost = std::ranges::count_if(losses, [](const QJsonValue& loss) {
        // What a write leaves out for good, such as the clock, is no loss.
        return loss.toObject().value(QStringLiteral("why")).toString() != QLatin1String("notMoved");
      });
      const qsizetype changes = report.value(QStringLiteral("changes")).toArray().size();
      return Say(report.value(QStringLiteral("busy")).toBool() ? Phrase::FleetDryRunBusy
                                                               : Phrase::FleetDryRun,
                 order_.language,
                 {{u"CHANGES", DecimalText(static_cast<std::int64_t>(changes))},
                  {u"LOSSES", DecimalText(static_cast<std::int64_t>(lost))}});
    }
    return std::u16string(
        PhraseText(result.outcome == FleetOutcome::Good ? Phrase::FleetWritten : Phrase::FleetNotVerified,
                   order_.language));
  }

  // --- Files that were read

  // A file whose settings have not changed is left as it is, clock of the recorder and all. A folder that is
  // not there is made; where that fails the save tells.
  void TakeFile(std::size_t i, FleetResult& result) const {
    const std::filesystem::path file = FileOf(order_, order_.recorders[i]);
    try {
      const std::string bytes = ReadRegularFile(ReadTo(i));
      std::error_code failed;
      Phrase phrase = Phrase::FleetNew;
      std::u16string count;
      if (std::filesystem::exists(file, failed)) {
        const std::string before = ReadRegularFile(file);
        const FleetChanges changes = ChangesBetween(before, bytes, file, order_.language);
        count = DecimalText(static_cast<std::int64_t>(changes.names.size()));
        phrase = changes.None() ? Phrase::FleetUnchanged
                                : (changes.known ? Phrase::FleetChanged : Phrase::FleetReplaced);
      }
      if (phrase != Phrase::FleetUnchanged) {
        std::filesystem::create_directories(file.parent_path(), failed);
        SaveBytes(file, bytes, order_.language);
      }
      // What no file can keep is told, and fails no run: a plant with such a recorder would fail every night,
      // and nobody would see the one that is dead.
      result.outcome = FleetOutcome::Good;
      result.saved = true;
      result.text = Say(phrase, order_.language, {{u"COUNT", count}}) + NotKeptText(result);
    } catch (const Undone& undone) {
      Fail(result, undone.message);
    } catch (const RunTimeFailure& failure) {
      Fail(result, FromUtf8(failure.what()));
    }
  }

  // Of a set-up that a file cannot hold as it is.
  [[nodiscard]] std::u16string NotKeptText(const FleetResult& result) const {
    const qsizetype count = result.child.report.value(QStringLiteral("notKept")).toArray().size();
    return count == 0 ? std::u16string()
                      : Say(Phrase::FleetNotKept, order_.language,
                            {{u"COUNT", DecimalText(static_cast<std::int64_t>(count))}});
  }

  const FleetOrder& order_;
  const FleetWatch& watch_;
  FleetReport report_;
  std::size_t done_ = 0;
  std::vector<std::filesystem::path> backups_; // empty: none of this run's own
  QTemporaryDir read_;
};

} // namespace

const char* NameOf(FleetAction action) {
  switch (action) {
  case FleetAction::Read:
    return "read";
  case FleetAction::Compare:
    return "compare";
  case FleetAction::Write:
    break;
  }
  return "write";
}

std::size_t FleetReport::Count(FleetOutcome outcome) const {
  return static_cast<std::size_t>(std::ranges::count(results, outcome, &FleetResult::outcome));
}

std::filesystem::path FileOf(const FleetOrder& order, const FleetRecorder& recorder) {
  return (order.folder / PathOf(recorder.file)).lexically_normal();
}

FleetReport CarryOut(const FleetOrder& order, const FleetWatch& watch) {
  return Fleet(order, watch).CarryOut();
}

} // namespace loader::paramtool
