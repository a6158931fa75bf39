// paramtool write: a parameter file into a recorder, told beforehand and proved afterwards.
#include <QJsonArray>
#include <array>

#include "companion/LossesOfWrite.h"
#include "companion/SavedSetUp.h"
#include "companion/Verify.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/RecorderSession.h"
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
                         {u"KEY", FromCodePage(defect.key)},
                         {u"REASON", DefectText(defect.reason, call.language())}}));
  }
  return opened;
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
  return file;
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

// What a shell takes as one word.
std::u16string Quoted(std::u16string_view word) {
  std::u16string quoted = u"'";
  for (const char16_t character : word) {
    quoted += character == u'\'' ? std::u16string(u"'\\''") : std::u16string(1, character);
  }
  return quoted + u"'";
}

std::u16string RepairCommand(const Writing& writing) {
  const std::u16string file = writing.backup.empty() ? writing.call.Argument(0) : writing.backup.u16string();
  return u"paramtool write " + Quoted(file) + u" " + Quoted(writing.session.Line().address.text) +
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
      WriteAndVerify(writing.session.Line(), writing.setUp, writing.call.Has("store"));
  return TellOutcome(writing, outcome);
}

} // namespace

Exit RunWrite(Call& call) {
  if (call.Has("backup") && call.Has("no-backup")) {
    throw WrongUsage{std::u16string(PhraseText(Phrase::BackupOrNot, call.language()))};
  }
  OpenedSetUp opened = OpenFile(call);
  const RecorderSession session(call, RecorderAddress(call, call.Argument(1)));
  RecorderRead present = ReadRecorder(session.Line(), opened.finding.model, AskState::Yes);
  session.RequireNotStopped();
  const bool yes = call.Has("yes");
  Output::Message(session.Line().address.text + u": " + RecorderText(present.recorder, session.Line()));
  WriteForecast forecast = ForecastWrite(opened.setUp, present);

  Writing writing{call, session, opened.setUp, present, call.Report(), {}};
  writing.report.insert(QStringLiteral("recorder"), JsonOfRecorder(present.recorder, session.Line()));
  writing.report.insert(QStringLiteral("busy"), present.busy);
  writing.report.insert(QStringLiteral("dryRun"), !yes);
  if (call.json) {
    InsertForecast(call, opened.setUp, forecast, writing.report);
  } else {
    call.out.Line(session.Line().address.text + u": " + RecorderText(present.recorder, session.Line()));
    SayForecast(call, opened.setUp, present, forecast);
  }
  return yes ? WriteNow(writing) : EndDryRun(writing, forecast);
}

} // namespace loader::paramtool
