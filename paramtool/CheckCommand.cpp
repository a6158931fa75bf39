#include <QJsonArray>
#include <array>

#include "companion/Check.h"
#include "core/Text.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"

namespace loader::paramtool {

namespace {

struct BasisRow {
  const char* word;
  Phrase says;
};
// By ModelBasis.
constexpr std::array<BasisRow, 6> Bases{{
    {"asked", Phrase::CheckBasisAsked},
    {"content", Phrase::CheckBasisContent},
    {"model-field", Phrase::CheckBasisModelField},
    {"file-name", Phrase::CheckBasisFileName},
    {"both", Phrase::CheckBasisBoth},
    {"neither", Phrase::CheckBasisNeither},
}};
const BasisRow& BasisOf(const CheckedFile& checked) {
  return Bases.at(static_cast<std::size_t>(checked.finding.basis));
}

Phrase SeverityPhrase(Severity severity) {
  constexpr std::array<Phrase, 3> Phrases{Phrase::CheckPrevents, Phrase::CheckLost, Phrase::CheckDoubtful};
  return Phrases.at(static_cast<std::size_t>(severity));
}

qint64 Number(std::size_t count) {
  return static_cast<qint64>(count);
}

// --- Text

// "FILE:LINE: KEY: ": without what is not known.
std::u16string Place(const CheckedFile& checked, std::size_t line, std::u16string_view key) {
  std::u16string place = checked.file + u":";
  if (line > 0) {
    place += DecimalText(Number(line)) + u":";
  }
  return key.empty() ? place + u" " : place + u" " + std::u16string(key) + u": ";
}

// " (name, value)"
std::u16string NameAndValue(const CheckDefect& defect, Language language) {
  if (!defect.ref) {
    return {};
  }
  const std::u16string value = defect.value.value_or(std::u16string(HiddenSecret));
  return Say(Phrase::CheckNameAndValue, language, {{u"NAME", defect.name}, {u"VALUE", value}});
}

void PrintDefect(Call& call, const CheckedFile& checked, const CheckDefect& defect) {
  call.out.Line(Place(checked, defect.line, defect.key) + u"[" +
                std::u16string(PhraseText(SeverityPhrase(defect.severity), call.language())) + u"] " +
                defect.message + NameAndValue(defect, call.language()));
}

void PrintCount(Call& call, const CheckedFile& checked, Phrase phrase, std::size_t count) {
  call.out.Line(
      Say(phrase, call.language(), {{u"FILE", checked.file}, {u"COUNT", DecimalText(Number(count))}}));
}

// An older key that a later line overrides says nothing: every file has two of them, for older programs.
void PrintLines(Call& call, const CheckedFile& checked) {
  auto defect = checked.defects.begin();
  const auto printUpTo = [&](std::size_t line) {
    for (; defect != checked.defects.end() && defect->line <= line; ++defect) {
      PrintDefect(call, checked, *defect);
    }
  };
  for (const OlderKey& key : checked.olderKeys) {
    if (!key.superseded) {
      printUpTo(key.line);
      call.out.Line(Place(checked, key.line, key.key) +
                    Say(Phrase::CheckReadAs, call.language(), {{u"READAS", Widen(key.readAs)}}));
    }
  }
  printUpTo(static_cast<std::size_t>(-1));
}

void Print(Call& call, const CheckedFile& checked) {
  call.out.Line(Say(Phrase::CheckHeading, call.language(),
                    {{u"FILE", checked.file},
                     {u"MODEL", Widen(checked.model)},
                     {u"BASIS", PhraseText(BasisOf(checked).says, call.language())}}));
  PrintLines(call, checked);
  if (checked.untold > 0) {
    PrintCount(call, checked, Phrase::CheckUntold, checked.untold);
  }
  if (!checked.missing.empty()) {
    PrintCount(call, checked, Phrase::CheckMissing, checked.missing.size());
  }
  PrintCount(call, checked, checked.opens ? Phrase::CheckOpens : Phrase::CheckDoesNotOpen,
             checked.defects.size() + checked.untold);
}

// --- JSON

QJsonObject JsonOfDefect(const CheckDefect& defect) {
  const bool line = defect.line > 0;
  QJsonObject object{{QStringLiteral("line"), line ? QJsonValue(Number(defect.line)) : QJsonValue()},
                     {QStringLiteral("key"), Q(defect.key)},
                     {QStringLiteral("reason"), Q(ReasonWord(defect.reason))},
                     {QStringLiteral("severity"), Q(SeverityWord(defect.severity))},
                     {QStringLiteral("message"), Q(defect.message)},
                     {QStringLiteral("parameter"), QJsonValue()},
                     {QStringLiteral("name"), QJsonValue()},
                     {QStringLiteral("value"), QJsonValue()}};
  if (defect.ref) {
    object.insert(QStringLiteral("parameter"), Q(KeyOf(*defect.ref)));
    object.insert(QStringLiteral("name"), Q(defect.name));
  }
  if (defect.value) {
    object.insert(QStringLiteral("value"), Q(*defect.value));
  }
  return object;
}

QJsonObject JsonOfFile(const CheckedFile& checked) {
  QJsonArray defects;
  for (const CheckDefect& defect : checked.defects) {
    defects.append(JsonOfDefect(defect));
  }
  QJsonArray olderKeys;
  for (const OlderKey& key : checked.olderKeys) {
    olderKeys.append(QJsonObject{{QStringLiteral("line"), Number(key.line)},
                                 {QStringLiteral("key"), Q(key.key)},
                                 {QStringLiteral("readAs"), Q(key.readAs)},
                                 {QStringLiteral("superseded"), key.superseded}});
  }
  QJsonArray missing;
  for (const ParameterRef& ref : checked.missing) {
    missing.append(Q(KeyOf(ref)));
  }
  return {{QStringLiteral("file"), Q(checked.file)},
          {QStringLiteral("model"), Q(checked.model)},
          {QStringLiteral("basis"), QLatin1String(BasisOf(checked).word)},
          {QStringLiteral("opens"), checked.opens},
          {QStringLiteral("defects"), defects},
          {QStringLiteral("untold"), Number(checked.untold)},
          {QStringLiteral("olderKeys"), olderKeys},
          {QStringLiteral("missing"), missing}};
}

} // namespace

// A file that cannot be read keeps none of the others from being checked.
Exit RunCheck(Call& call) {
  Exit exit = Exit::Good;
  QJsonArray files;
  for (int i = 0; i < call.arguments.size(); ++i) {
    const std::u16string file = call.Argument(i);
    try {
      const CheckedFile checked = CheckSetUp(ParseAddress(file, call.language()), call.model, call.speech);
      exit = exit == Exit::Good && HasDefects(checked) ? Exit::Different : exit;
      if (call.json) {
        files.append(JsonOfFile(checked));
      } else {
        Print(call, checked);
      }
    } catch (const Undone& undone) {
      exit = Exit::Failed;
      Output::Message(undone.message);
      files.append(
          QJsonObject{{QStringLiteral("file"), Q(file)}, {QStringLiteral("error"), Q(undone.message)}});
    }
  }
  if (call.json) {
    QJsonObject report = call.Report();
    report.insert(QStringLiteral("files"), files);
    call.out.Json(report);
  }
  return exit;
}

} // namespace loader::paramtool
