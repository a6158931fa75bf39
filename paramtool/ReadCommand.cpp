// paramtool read: a recorder's whole set-up into a parameter file.
#include <QJsonArray>
#include <array>
#include <map>

#include "companion/Losses.h"
#include "companion/SavedSetUp.h"
#include "core/Text.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/RecorderSession.h"
#include "paramtool/TransferReport.h"

namespace loader::paramtool {

namespace {

struct FateRow {
  ReadFate fate;
  Phrase heading;
  const char* key; // in JSON
};
constexpr std::array<FateRow, 4> FateRows{{
    {ReadFate::NoSection, Phrase::FilledNoSection, "section"},
    {ReadFate::NoItem, Phrase::FilledNoItem, "item"},
    {ReadFate::NoTag, Phrase::FilledNoTag, "tag"},
    {ReadFate::NotMoved, Phrase::FilledNotMoved, "notRead"},
}};

void SayFilled(const Call& call, const std::vector<FilledParameter>& filled) {
  for (const FateRow& row : FateRows) {
    std::vector<ParameterRef> refs;
    for (const FilledParameter& parameter : filled) {
      if (parameter.fate == row.fate) {
        refs.push_back(parameter.ref);
      }
    }
    std::vector<std::u16string> lines;
    for (const ParameterRange& range : RangesOf(refs)) {
      lines.push_back(RangeName(range, call.language()));
    }
    SayBlock(call.out, PhraseText(row.heading, call.language()), lines);
  }
}

QJsonArray JsonOfFilled(const Call& call, const std::vector<FilledParameter>& filled) {
  QJsonArray array;
  for (const FilledParameter& parameter : filled) {
    QJsonObject object = JsonOf(parameter.ref, call.language());
    const auto row = std::ranges::find(FateRows, parameter.fate, &FateRow::fate);
    object.insert(QStringLiteral("lacks"), QLatin1String(row->key));
    array.append(object);
  }
  return array;
}

} // namespace

Exit RunRead(Call& call) {
  const std::filesystem::path file = call.OutputFile();
  const RecorderSession session(call, RecorderAddress(call, call.Argument(0)));
  RecorderRead read = ReadRecorder(session.Line(), call.model);
  session.RequireNotStopped();
  const std::u16string recorder =
      session.Line().address.text + u": " + RecorderText(read.recorder, session.Line());
  Output::Message(recorder);
  const std::vector<NotKept> notKept = SaveAndProve(read.setUp, file, call.language());

  const SetUpInForce inForce(read.setUp);
  const std::vector<FilledParameter> filled = FilledByRead(read.recorder.generation);
  if (call.json) {
    QJsonObject report = call.Report();
    report.insert(QStringLiteral("recorder"), JsonOfRecorder(read.recorder, session.Line()));
    report.insert(QStringLiteral("file"), Q(file.u16string()));
    report.insert(QStringLiteral("filled"), JsonOfFilled(call, filled));
    report.insert(QStringLiteral("notKept"), JsonOfNotKept(call, notKept));
    call.out.Json(report);
  } else {
    call.out.Line(recorder);
    SayFilled(call, filled);
    SayNotKept(call, notKept);
    call.out.Line(Say(Phrase::SetUpSaved, call.language(), {{u"FILE", file.u16string()}}));
  }
  return notKept.empty() ? Exit::Good : Exit::Different;
}

} // namespace loader::paramtool
