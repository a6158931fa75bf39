// paramtool write: a parameter file into a recorder, told beforehand and proved afterwards.
#include <QJsonArray>
#include <array>

#include "companion/Check.h"
#include "companion/LossesOfWrite.h"
#include "companion/SavedSetUp.h"
#include "companion/Verify.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/RecorderSession.h"
#include "paramtool/ShellWord.h"
#include "paramtool/TransferReport.h"
#include "paramtool/WriteReport.h"

namespace loader::paramtool {

namespace {

struct Writing {
  Call& call;
  const RecorderSession& session;
  WholeSetUp& setUp;
  RecorderRead& present;
  QJsonObject report;
  std::filesystem::path backup; // empty: none was made

  [[nodiscard]] Language language() const { return call.language(); }
};

// A file that the window opens; what of it is not as it stands there is told.
OpenedSetUp OpenFile(const Call& call) {
  const SetUpAddress address = ParseAddress(call.Argument(0), call.language());
  if (address.place != Place::File) {
    throw Undone{Say(Phrase::NotAFile, call.language(), {{u"SETUP", address.text}})};
  }
  OpenedSetUp opened = OpenSetUp(address, call.model, call.language());
  for (const FileDefect& defect : opened.defects) {
    Output::Message(Say(Phrase::FileOpensWith, call.language(),
                        {{u"SETUP", address.text},
                         {u"LINE", DecimalText(static_cast<std::int64_t>(defect.line))},
                         {u"KEY", DefectKey(defect)},
                         {u"REASON", DefectText(defect.reason, call.language())}}));
  }
  return opened;
}

// What is not in the file is written too, at the initial settings.
std::vector<ParameterRef> NotInFile(const Call& call, const OpenedSetUp& opened) {
  return CheckBytes(opened.address.text, opened.bytes, opened.finding.model, call.speech).missing;
}

// An empty file or the first half of one opens as well, and would reset a whole recorder. A file of an older
// program lacks a few items at most.
void RequireWhole(const Call& call, const OpenedSetUp& opened, const std::vector<ParameterRef>& missing) {
  if (ModelByItems(opened.bytes, call.language()) != opened.finding.model) {
    throw Undone{Say(Phrase::FileNotWhole, call.language(),
                     {{u"SETUP", opened.address.text},
                      {u"COUNT", DecimalText(static_cast<std::int64_t>(missing.size()))}})};
  }
}

void TellNotInFile(Writing& writing, const std::vector<ParameterRef>& missing) {
  const SetUpInForce inForce(writing.setUp);
  if (writing.call.json) {
    QJsonArray array;
    for (const ParameterRef& ref : missing) {
      array.append(JsonOf(ref, writing.language()));
    }
    if (!missing.empty()) {
      writing.report.insert(QStringLiteral("notInFile"), array);
    }
    return;
  }
  std::vector<std::u16string> lines;
  for (const ParameterRange& range : RangesOf(missing)) {
    lines.push_back(RangeName(range, writing.language()));
  }
  SayBlock(writing.call.out, PhraseText(Phrase::NotInFileHeading, writing.language()), lines);
}

// --- The backup

// An address as a part of a file name.
std::u16string FileNameOf(std::u16string_view address) {
  std::u16string name(address);
  for (char16_t& character : name) {
    const bool plain = (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') ||
                       IsDigit(character) || character == u'.' || character == u'-' || character == u'_';
    character = plain ? character : u'_';
  }
  return name;
}

std::u16string TimeText(const DateAndTime& now) {
  std::u16string text = PaddedDecimal(now.year, 4);
  for (const int part : {now.month, now.day}) {
    text += PaddedDecimal(part, 2);
  }
  text += u"-";
  for (const int part : {now.hour, now.minute, now.second}) {
    text += PaddedDecimal(part, 2);
  }
  return text;
}

bool Stands(const std::filesystem::path& file) {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::symlink_status(file, error));
}

// A name beside the file that is written, which nothing has yet.
std::filesystem::path FreeBackupName(const Writing& writing) {
  const std::filesystem::path folder = PathOf(writing.call.Argument(0)).parent_path();
  const std::u16string begin =
      FileNameOf(writing.session.Line().address.text) + u"-" + TimeText(ThePlatform().clock.Now());
  const std::u16string ending = u"." + Widen(writing.present.recorder.model);
  std::filesystem::path file = folder / PathOf(begin + ending);
  for (int again = 2; Stands(file); ++again) {
    file = folder / PathOf(begin + u"-" + DecimalText(again) + ending);
  }
  return file.make_preferred(); // the user's folder may be written with the other separator
}

// Nothing is ever put in the place of another file: it may be the last good backup.
std::filesystem::path BackupName(const Writing& writing) {
  if (!writing.call.Has("backup")) {
    return FreeBackupName(writing);
  }
  std::filesystem::path file = PathOf(writing.call.Value("backup"));
  if (Stands(file)) {
    throw Undone{Say(Phrase::BackupStands, writing.language(), {{u"FILE", file.u16string()}})};
  }
  return file;
}

// Without a backup that stands nothing is written.
std::vector<NotKept> SaveOrEnd(const Writing& writing, const std::filesystem::path& file) {
  try {
    return SaveAndProve(writing.present.setUp, file, writing.language());
  } catch (const Undone& undone) {
    throw Undone{Say(Phrase::BackupFailed, writing.language(), {{u"REASON", undone.message}})};
  }
}

void MakeBackup(Writing& writing) {
  if (writing.call.Has("no-backup")) {
    return;
  }
  const std::filesystem::path file = BackupName(writing);
  const std::vector<NotKept> notKept = SaveOrEnd(writing, file);
  writing.backup = file;
  Output::Message(Say(Phrase::BackupMade, writing.language(), {{u"FILE", file.u16string()}}));
  writing.report.insert(QStringLiteral("backup"), Q(file.u16string()));
  writing.report.insert(QStringLiteral("notKept"), JsonOfNotKept(writing.call, notKept));
  if (!writing.call.json) {
    SayNotKept(writing.call, notKept);
  }
}

// --- The end

std::u16string RepairCommand(const Writing& writing) {
  const std::u16string file = writing.backup.empty() ? writing.call.Argument(0) : writing.backup.u16string();
  return u"paramtool write " + ShellWord(file) + u" " + ShellWord(writing.session.Line().address.text) +
         u" --yes --no-backup";
}

Phrase EndPhrase(const Writing& writing, WriteEnd end) {
  switch (end) {
  case WriteEnd::Verified:
    return Phrase::WriteVerified;
  case WriteEnd::Different:
    return Phrase::WriteDifferent;
  case WriteEnd::Mixture:
    return writing.backup.empty() ? Phrase::WriteMixtureNoBackup : Phrase::WriteMixture;
  case WriteEnd::NotCompared:
    return writing.backup.empty() ? Phrase::WriteNotComparedNoBackup : Phrase::WriteNotCompared;
  case WriteEnd::NotStored:
    return Phrase::WriteNotStored;
  case WriteEnd::NotWritten:
    break;
  }
  return Phrase::WriteNotBegun;
}

std::u16string EndText(const Writing& writing, const WriteOutcome& outcome) {
  return Say(EndPhrase(writing, outcome.end), writing.language(),
             {{u"SETUP", writing.session.Line().address.text},
              {u"REASON", outcome.reason},
              {u"COUNT", DecimalText(static_cast<std::int64_t>(outcome.registers))},
              {u"OTHERS", DecimalText(static_cast<std::int64_t>(outcome.different.size()))},
              {u"BACKUP", writing.backup.u16string()},
              {u"COMMAND", RepairCommand(writing)}});
}

Exit ExitOf(WriteEnd end) {
  switch (end) {
  case WriteEnd::Verified:
    return Exit::Good;
  case WriteEnd::Different:
    return Exit::Different;
  default:
    return Exit::Failed;
  }
}

Exit TellOutcome(Writing& writing, const WriteOutcome& outcome) {
  const std::u16string text = EndText(writing, outcome);
  const Exit exit = ExitOf(outcome.end);
  if (exit == Exit::Failed) {
    Output::Message(text);
    writing.report.insert(QStringLiteral("error"), Q(text));
    writing.report.insert(QStringLiteral("repair"), Q(RepairCommand(writing)));
  }
  const SetUpInForce inForce(writing.setUp);
  if (writing.call.json) {
    InsertOutcome(writing.call, outcome, writing.report);
    writing.call.out.Json(writing.report);
    return exit;
  }
  SayDifferent(writing.call, outcome.different);
  if (exit != Exit::Failed) {
    writing.call.out.Line(text);
  }
  if (outcome.end == WriteEnd::Different) {
    writing.call.out.Line(
        Say(Phrase::RepairHint, writing.language(), {{u"COMMAND", RepairCommand(writing)}}));
  }
  if (outcome.end == WriteEnd::Verified) {
    writing.call.out.Line(
        PhraseText(outcome.stored ? Phrase::SettingsStored : Phrase::SettingsNotStored, writing.language()));
  }
  return exit;
}

// --- Dry run and write

bool AnythingToTell(const WriteForecast& forecast) {
  return !forecast.changes.empty() || !forecast.unseen.empty() ||
         std::ranges::any_of(forecast.losses,
                             [](const LostParameter& lost) { return lost.fate != WriteFate::NotMoved; });
}

Exit EndDryRun(Writing& writing, const WriteForecast& forecast) {
  if (writing.call.json) {
    writing.call.out.Json(writing.report);
  } else {
    writing.call.out.Line(
        PhraseText(writing.present.busy ? Phrase::DryRunBusy : Phrase::DryRunEnd, writing.language()));
  }
  return writing.present.busy || AnythingToTell(forecast) ? Exit::Different : Exit::Good;
}

Exit WriteNow(Writing& writing) {
  if (writing.present.busy) {
    throw Undone{Say(Phrase::WriteBusy, writing.language(),
                     {{u"SETUP", writing.session.Line().address.text}, {u"BOX", LoadText(20107)}})};
  }
  MakeBackup(writing);
  writing.session.RequireNotStopped();
  const WriteOutcome outcome =
      WriteAndVerify(writing.session.Line(), writing.setUp, writing.call.Has("store"), &writing.present);
  return TellOutcome(writing, outcome);
}

} // namespace

Exit RunWrite(Call& call) {
  if (call.Has("backup") && call.Has("no-backup")) {
    throw WrongUsage{std::u16string(PhraseText(Phrase::BackupOrNot, call.language()))};
  }
  OpenedSetUp opened = OpenFile(call);
  const std::vector<ParameterRef> missing = NotInFile(call, opened);
  const bool yes = call.Has("yes");
  if (yes) {
    RequireWhole(call, opened, missing);
  }
  const RecorderSession session(call, RecorderAddress(call, call.Argument(1)));
  RecorderRead present = ReadRecorder(session.Line(), opened.finding.model, AskState::Yes);
  session.RequireNotStopped();
  Output::Message(session.Line().address.text + u": " + RecorderText(present.recorder, session.Line()));
  WriteForecast forecast = ForecastWrite(opened.setUp, present);

  Writing writing{call, session, opened.setUp, present, call.Report(), {}};
  writing.report.insert(QStringLiteral("recorder"), JsonOfRecorder(present.recorder, session.Line()));
  writing.report.insert(QStringLiteral("busy"), present.busy);
  writing.report.insert(QStringLiteral("dryRun"), !yes);
  if (!call.json) {
    call.out.Line(session.Line().address.text + u": " + RecorderText(present.recorder, session.Line()));
  }
  TellNotInFile(writing, missing);
  if (call.json) {
    InsertForecast(call, opened.setUp, forecast, writing.report);
  } else {
    SayForecast(call, opened.setUp, present, forecast);
  }
  return yes ? WriteNow(writing) : EndDryRun(writing, forecast);
}

} // namespace loader::paramtool
