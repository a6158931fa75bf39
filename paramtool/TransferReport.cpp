#include "paramtool/TransferReport.h"

#include "core/Text.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

QJsonObject JsonOfRecorder(const RecorderThere& recorder, const RecorderLine& line) {
  return {{QStringLiteral("address"), Q(line.address.text)},
          {QStringLiteral("model"), Q(recorder.model)},
          {QStringLiteral("version"), Q(recorder.versionTag)},
          {QStringLiteral("generation"), recorder.generation},
          {QStringLiteral("station"), line.address.station}};
}

std::u16string ShownValue(const ParameterRef& ref, const StoredValue& value, const Speech& speech) {
  if (!speech.secrets && IsSecret(ref)) {
    return std::u16string(HiddenSecret);
  }
  return std::holds_alternative<std::int16_t>(value) ? RawText(value) : u"\"" + RawText(value) + u"\"";
}

void SayBlock(Output& out, std::u16string_view heading, const std::vector<std::u16string>& lines) {
  if (lines.empty()) {
    return;
  }
  out.Line(std::u16string(heading) + u":");
  for (const std::u16string& line : lines) {
    out.Line(u"  " + line);
  }
}

void SayNotKept(const Call& call, const std::vector<NotKept>& notKept) {
  std::vector<std::u16string> lines;
  for (const NotKept& pair : notKept) {
    lines.push_back(Say(Phrase::NotKeptLine, call.language(),
                        {{u"NAME", NameOf(pair.ref, call.language())},
                         {u"KEY", Widen(KeyOf(pair.ref))},
                         {u"VALUE", ShownValue(pair.ref, pair.value, call.speech)},
                         {u"OPENED", ShownValue(pair.ref, pair.inFile, call.speech)}}));
  }
  SayBlock(call.out, PhraseText(Phrase::NotKeptHeading, call.language()), lines);
}

QJsonArray JsonOfNotKept(const Call& call, const std::vector<NotKept>& notKept) {
  QJsonArray array;
  for (const NotKept& pair : notKept) {
    QJsonObject object = JsonOf(pair.ref, call.language());
    object.insert(QStringLiteral("value"), JsonValueOf(pair.ref, pair.value, call.speech));
    object.insert(QStringLiteral("inFile"), JsonValueOf(pair.ref, pair.inFile, call.speech));
    array.append(object);
  }
  return array;
}

} // namespace loader::paramtool
