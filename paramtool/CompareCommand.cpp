#include "companion/Compare.h"

#include <QJsonArray>

#include "companion/Formulas.h"
#include "companion/Html.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/OpenAny.h"
#include "platform/Platform.h"

namespace loader::paramtool {

namespace {

// One of the two, as it was given.
struct Given {
  std::u16string letter;
  SetUpAddress address;
  WholeSetUp setUp;
  std::optional<std::size_t> unnamed; // of a file
};

Given Open(const Call& call, int argument) {
  Given given;
  given.letter = argument == 0 ? u"A" : u"B";
  given.address = ParseAddress(call.Argument(argument), call.language());
  if (given.address.place != Place::File) {
    given.setUp = OpenAny(call, given.address.text);
    return given;
  }
  OpenedSetUp opened = OpenFile(call, given.address);
  given.unnamed = CountUnnamed(opened.setUp, opened.bytes);
  given.setUp = std::move(opened.setUp);
  return given;
}

std::u16string NoteOn(const Given& given, Language language) {
  return given.unnamed.value_or(0) == 0
             ? std::u16string()
             : Say(Phrase::CompareUnnamed, language,
                   {{u"COUNT", DecimalText(static_cast<std::int64_t>(*given.unnamed))}});
}

std::u16string Counted(std::size_t count) {
  return DecimalText(static_cast<std::int64_t>(count));
}

std::u16string NumberOf(const ComparedParameter& parameter) {
  return parameter.a.value ? RawText(*parameter.a.value) : std::u16string();
}

struct VerdictRow {
  Phrase line;
  Phrase name;
  const char* json;
  Tone tone;
};
// By verdict.
constexpr std::array<VerdictRow, Verdicts> VerdictRows{{
    {Phrase::CompareLine, Phrase::VerdictDifferent, "different", Tone::Changed},
    {Phrase::CompareReadsLine, Phrase::VerdictReads, "readsDifferent", Tone::Reads},
    {Phrase::CompareOnlyALine, Phrase::VerdictOnlyA, "onlyInA", Tone::OnlyA},
    {Phrase::CompareOnlyBLine, Phrase::VerdictOnlyB, "onlyInB", Tone::OnlyB},
}};
const VerdictRow& RowOf(Verdict verdict) {
  return VerdictRows.at(static_cast<std::size_t>(verdict));
}

// --- Text

std::u16string LineOf(const ComparedParameter& parameter, Language language) {
  const bool hidden = parameter.hidden && parameter.verdict == Verdict::Different;
  const std::u16string name = ShownName(parameter);
  const std::u16string key = Widen(KeyOf(parameter.ref));
  const std::u16string a = ShownValue(parameter, parameter.a);
  const std::u16string b = ShownValue(parameter, parameter.b);
  const std::u16string number = NumberOf(parameter);
  std::u16string line = Say(hidden ? Phrase::CompareHiddenLine : RowOf(parameter.verdict).line, language,
                            {{u"NAME", name}, {u"KEY", key}, {u"A", a}, {u"B", b}, {u"NUMBER", number}});
  line += FormulasBeside(parameter.a.formula, parameter.b.formula, language);
  return line;
}

void SayHead(Call& call, const Given& given) {
  const std::u16string note = NoteOn(given, call.language());
  const std::u16string model = Widen(given.setUp.modelCode);
  call.out.Line(
      Say(note.empty() ? Phrase::CompareSide : Phrase::CompareSideUnnamed, call.language(),
          {{u"LETTER", given.letter}, {u"SETUP", given.address.text}, {u"MODEL", model}, {u"NOTE", note}}));
}

std::u16string CountsOf(const Comparison& comparison, Language language) {
  return Say(Phrase::CompareCounts, language,
             {{u"COMPARED", Counted(comparison.compared)},
              {u"DIFFERENT", Counted(comparison.Count(Verdict::Different))},
              {u"READS", Counted(comparison.Count(Verdict::ReadsDifferent))},
              {u"ONLYA", Counted(comparison.Count(Verdict::OnlyInA))},
              {u"ONLYB", Counted(comparison.Count(Verdict::OnlyInB))}});
}

std::size_t CountOfPage(const Comparison& comparison, Page page) {
  return static_cast<std::size_t>(std::ranges::count(comparison.found, page, &ComparedParameter::page));
}

void SayAll(Call& call, const Given& a, const Given& b, const Comparison& comparison) {
  SayHead(call, a);
  SayHead(call, b);
  call.out.Line(CountsOf(comparison, call.language()));
  if (comparison.leftOut != 0) {
    call.out.Line(Say(Phrase::CompareLeftOut, call.language(), {{u"COUNT", Counted(comparison.leftOut)}}));
  }
  if (comparison.Equal()) {
    call.out.Line(PhraseText(Phrase::CompareEqual, call.language()));
  }
  std::optional<Page> page;
  for (const ComparedParameter& parameter : comparison.found) {
    if (parameter.page != page) {
      page = parameter.page;
      call.out.Line();
      call.out.Line(Say(Phrase::CompareGroup, call.language(),
                        {{u"PAGE", PageName(*page, call.language())},
                         {u"COUNT", Counted(CountOfPage(comparison, *page))}}));
    }
    call.out.Line(LineOf(parameter, call.language()));
  }
}

// --- JSON

QJsonObject JsonGiven(const Given& given) {
  return {{QStringLiteral("setup"), Q(given.address.text)},
          {QStringLiteral("model"), Q(given.setUp.modelCode)},
          {QStringLiteral("atDefault"),
           given.unnamed ? QJsonValue(static_cast<qint64>(*given.unnamed)) : QJsonValue(QJsonValue::Null)}};
}

QJsonValue JsonSide(const ComparedParameter& parameter, const ComparedSide& side) {
  if (!side.value) {
    return QJsonValue::Null;
  }
  QJsonObject json{
      {QStringLiteral("name"), Q(side.name)},
      {QStringLiteral("value"), parameter.hidden ? QJsonValue(QJsonValue::Null) : JsonValueOf(*side.value)},
      {QStringLiteral("text"), Q(side.text)}};
  if (FormulaOf(parameter.ref)) {
    json.insert(QStringLiteral("formula"), Q(side.formula));
  }
  return json;
}

QJsonObject JsonOfAll(const Call& call, const Given& a, const Given& b, const Comparison& comparison) {
  QJsonObject counts;
  for (std::size_t verdict = 0; verdict < Verdicts; ++verdict) {
    counts.insert(QLatin1String(VerdictRows[verdict].json), static_cast<qint64>(comparison.counts[verdict]));
  }
  QJsonArray parameters;
  for (const ComparedParameter& parameter : comparison.found) {
    QJsonObject json = JsonOf(parameter.ref, ShownName(parameter), parameter.page);
    json.insert(QStringLiteral("verdict"), QLatin1String(RowOf(parameter.verdict).json));
    json.insert(QStringLiteral("hidden"), parameter.hidden);
    json.insert(QStringLiteral("a"), JsonSide(parameter, parameter.a));
    json.insert(QStringLiteral("b"), JsonSide(parameter, parameter.b));
    parameters.append(json);
  }
  QJsonObject report = call.Report();
  report.insert(QStringLiteral("a"), JsonGiven(a));
  report.insert(QStringLiteral("b"), JsonGiven(b));
  report.insert(QStringLiteral("compared"), static_cast<qint64>(comparison.compared));
  report.insert(QStringLiteral("leftOut"), static_cast<qint64>(comparison.leftOut));
  report.insert(QStringLiteral("counts"), counts);
  report.insert(QStringLiteral("parameters"), parameters);
  return report;
}

// --- HTML

HtmlValue HtmlSide(const ComparedParameter& parameter, const ComparedSide& side, Language language) {
  if (!side.value) {
    return {std::u16string(PhraseText(Phrase::HtmlAbsent, language)), {}, true};
  }
  return {ShownValue(parameter, side), side.formula, false};
}

HtmlRow HtmlRowOf(const ComparedParameter& parameter, Language language) {
  HtmlRow row;
  row.name = ShownName(parameter);
  row.key = Widen(KeyOf(parameter.ref));
  row.tone = RowOf(parameter.verdict).tone;
  row.verdict = PhraseText(RowOf(parameter.verdict).name, language);
  if (parameter.verdict == Verdict::ReadsDifferent) {
    row.verdictNote = Say(Phrase::HtmlSameNumber, language, {{u"NUMBER", NumberOf(parameter)}});
  }
  row.a = HtmlSide(parameter, parameter.a, language);
  row.b = HtmlSide(parameter, parameter.b, language);
  return row;
}

HtmlSetUp HtmlOf(const Given& given, Language language) {
  return {given.letter, given.address.text, Widen(given.setUp.modelCode), NoteOn(given, language)};
}

HtmlReport HtmlOfAll(const Given& a, const Given& b, const Comparison& comparison, Language language) {
  HtmlReport report;
  report.language = language;
  report.title = PhraseText(Phrase::CompareTitle, language);
  report.made = ThePlatform().clock.Now();
  report.a = HtmlOf(a, language);
  report.b = HtmlOf(b, language);
  report.headingA = a.letter;
  report.headingB = b.letter;
  for (std::size_t verdict = 0; verdict < Verdicts; ++verdict) {
    const VerdictRow& row = VerdictRows[verdict];
    report.counts.push_back(
        {comparison.counts[verdict], std::u16string(PhraseText(row.name, language)), row.tone});
  }
  report.counts.push_back(
      {comparison.compared, std::u16string(PhraseText(Phrase::HtmlCompared, language)), {}});
  report.counts.push_back(
      {comparison.leftOut, std::u16string(PhraseText(Phrase::HtmlLeftOut, language)), {}});
  if (comparison.Equal()) {
    report.summary = PhraseText(Phrase::CompareEqual, language);
  }
  std::optional<Page> page;
  for (const ComparedParameter& parameter : comparison.found) {
    if (parameter.page != page) {
      page = parameter.page;
      report.groups.push_back({std::u16string(PageName(*page, language)), {{}}});
    }
    report.groups.back().subgroups.back().rows.push_back(HtmlRowOf(parameter, language));
  }
  return report;
}

} // namespace

Exit RunCompare(Call& call) {
  Given a = Open(call, 0);
  Given b = Open(call, 1);
  const CompareScope scope{call.Selections("only"), call.Selections("ignore")};
  if (const Selection* nothing = FirstThatNamesNothing(scope, a.setUp, b.setUp)) {
    throw Undone{Say(Phrase::SelectsNothing, call.language(), {{u"PATTERN", nothing->Text()}})};
  }
  const Comparison comparison = Compare(a.setUp, b.setUp, scope, call.speech);
  if (call.Has("html")) {
    const std::filesystem::path file = PathOf(call.Value("html"));
    RequireOtherFile(file, a.address, call.language());
    RequireOtherFile(file, b.address, call.language());
    SaveBytes(file, HtmlPage(HtmlOfAll(a, b, comparison, call.language())), call.language());
  }
  if (call.json) {
    call.out.Json(JsonOfAll(call, a, b, comparison));
  } else {
    SayAll(call, a, b, comparison);
  }
  return comparison.Equal() ? Exit::Good : Exit::Different;
}

} // namespace loader::paramtool
