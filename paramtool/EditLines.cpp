#include "paramtool/EditLines.h"

#include <QJsonArray>

#include "core/Text.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

namespace {

std::u16string Line(const Call& call, Phrase phrase, const ParameterRef& ref,
                    std::initializer_list<Filling> more) {
  const std::u16string key = Widen(KeyOf(ref));
  const std::u16string name = NameOf(ref, call.language());
  std::vector<Filling> fillings{{u"KEY", key}, {u"NAME", name}};
  fillings.insert(fillings.end(), more.begin(), more.end());
  return Say(phrase, call.language(), fillings);
}

void TellChange(Call& call, Phrase phrase, const Change& change) {
  call.out.Line(
      Line(call, phrase, change.ref, {{u"BEFORE", change.textBefore}, {u"AFTER", change.textAfter}}));
}

void TellRefusals(const Call& call, const std::vector<Refusal>& refusals) {
  for (const Refusal& refusal : refusals) {
    Output::Message(Line(call, Phrase::EditRefused, refusal.ref, {{u"REASON", refusal.reason}}));
  }
  Output::Message(Say(Phrase::EditNothingWritten, call.language(),
                      {{u"COUNT", DecimalText(static_cast<std::int64_t>(refusals.size()))}}));
}

void TellLines(Call& call, const EditReport& report, const std::vector<Refusal>& left) {
  for (const Change& change : report.changes) {
    TellChange(call, Phrase::EditDone, change);
  }
  for (const Change& change : report.reads) {
    TellChange(call, Phrase::EditReads, change);
  }
  constexpr std::size_t Few = 20; // a merge of many equal ones counts them
  for (const ParameterRef& ref : report.already) {
    if (report.already.size() <= Few) {
      call.out.Line(Line(call, Phrase::EditAlready, ref, {{u"VALUE", ReadableValue(ref, call.speech)}}));
    }
  }
  for (const Refusal& refusal : left) {
    call.out.Line(Line(call, Phrase::MergeLeft, refusal.ref, {{u"REASON", refusal.reason}}));
  }
  call.out.Line(Say(Phrase::EditCounts, call.language(),
                    {{u"CHANGED", DecimalText(static_cast<std::int64_t>(report.changes.size()))},
                     {u"EQUAL", DecimalText(static_cast<std::int64_t>(report.already.size()))}}));
}

QJsonArray JsonOf(const Call& call, const std::vector<Change>& changes) {
  QJsonArray array;
  for (const Change& change : changes) {
    QJsonObject entry = paramtool::JsonOf(change.ref, call.language());
    entry.insert(QStringLiteral("before"), JsonValueOf(change.ref, change.before, call.speech));
    entry.insert(QStringLiteral("beforeText"), Q(change.textBefore));
    entry.insert(QStringLiteral("after"), JsonValueOf(change.ref, change.after, call.speech));
    entry.insert(QStringLiteral("afterText"), Q(change.textAfter));
    array.append(entry);
  }
  return array;
}

QJsonArray JsonOf(const Call& call, const std::vector<ParameterRef>& refs) {
  QJsonArray array;
  for (const ParameterRef& ref : refs) {
    array.append(paramtool::JsonOf(ref, call.language()));
  }
  return array;
}

QJsonArray JsonOf(const Call& call, const std::vector<Refusal>& refusals) {
  QJsonArray array;
  for (const Refusal& refusal : refusals) {
    QJsonObject entry = paramtool::JsonOf(refusal.ref, call.language());
    entry.insert(QStringLiteral("reason"), Q(refusal.reason));
    array.append(entry);
  }
  return array;
}

void TellJson(Call& call, const EditReport& report, const std::vector<Refusal>& left,
              const std::filesystem::path& file) {
  QJsonObject json = call.Report();
  json.insert(QStringLiteral("model"), Q(ModelCode));
  json.insert(QStringLiteral("written"),
              report.refusals.empty() ? QJsonValue(Q(file.u16string())) : QJsonValue::Null);
  json.insert(QStringLiteral("changes"), JsonOf(call, report.changes));
  json.insert(QStringLiteral("readsOtherwise"), JsonOf(call, report.reads));
  json.insert(QStringLiteral("already"), JsonOf(call, report.already));
  json.insert(QStringLiteral("left"), JsonOf(call, left));
  json.insert(QStringLiteral("refusals"), JsonOf(call, report.refusals));
  call.out.Json(json);
}

} // namespace

Exit FinishEdits(Call& call, const EditReport& report, const std::vector<Refusal>& left,
                 const std::filesystem::path& file) {
  const bool good = report.refusals.empty();
  if (good) {
    SaveSetUp(file, call.language());
  } else {
    TellRefusals(call, report.refusals);
  }
  if (call.json) {
    TellJson(call, report, left, file);
  } else if (good) {
    TellLines(call, report, left);
  }
  return good ? Exit::Good : Exit::Failed;
}

} // namespace loader::paramtool
