#include "companion/Convert.h"

#include <QJsonArray>

#include "companion/Formulas.h"
#include "companion/Html.h"
#include "core/Text.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/OpenAny.h"
#include "platform/Platform.h"

namespace loader::paramtool {

namespace {

struct OutcomeRow {
  Outcome outcome;
  Phrase heading;
  Phrase name;
  const char* json;
  Tone tone;
};
// In the order of the report.
constexpr std::array<OutcomeRow, Outcomes> OutcomeRows{{
    {Outcome::Dropped, Phrase::OutcomeDropped, Phrase::DroppedShort, "dropped", Tone::Lost},
    {Outcome::Cleared, Phrase::OutcomeCleared, Phrase::ClearedShort, "cleared", Tone::Lost},
    {Outcome::NotCarried, Phrase::OutcomeNotCarried, Phrase::NotCarriedShort, "notCarried", Tone::Lost},
    {Outcome::Renumbered, Phrase::OutcomeRenumbered, Phrase::RenumberedShort, "renumbered", Tone::Changed},
    {Outcome::Carried, Phrase::OutcomeCarried, Phrase::CarriedShort, "carried", Tone::Good},
}};

std::u16string Counted(std::size_t count) {
  return DecimalText(static_cast<std::int64_t>(count));
}

// What is asked: from which set-up to which file.
struct Task {
  SetUpAddress from;
  std::string to;
  std::filesystem::path output;
  std::optional<std::filesystem::path> html;
};

std::string AskedModel(const Call& call) {
  if (!call.Has("to")) {
    throw WrongUsage{Say(Phrase::OptionMissing, call.language(), {{u"OPTION", u"to"}})};
  }
  const std::string model = Narrow(call.Value("to"));
  if (model != "KOV" && model != "RUG") {
    throw WrongUsage{std::u16string(PhraseText(Phrase::WrongTo, call.language()))};
  }
  return model;
}

[[noreturn]] void RefuseFile(const std::filesystem::path& file, Language language) {
  throw Undone{Say(Phrase::OutputIsInput, language, {{u"FILE", file.u16string()}})};
}

Task TaskOf(const Call& call) {
  Task task{ParseAddress(call.Argument(0), call.language()), AskedModel(call), call.OutputFile(), {}};
  // In place only by its own name: through a link it would be a surprise.
  if (task.output != PathOf(task.from.where)) {
    RequireOtherFile(task.output, task.from, call.language());
  }
  if (call.Has("html")) {
    task.html = PathOf(call.Value("html"));
    RequireOtherFile(*task.html, task.from, call.language());
    std::error_code none;
    if (std::filesystem::absolute(*task.html, none).lexically_normal() ==
            std::filesystem::absolute(task.output, none).lexically_normal() ||
        std::filesystem::equivalent(*task.html, task.output, none)) {
      RefuseFile(*task.html, call.language());
    }
  }
  return task;
}

// The same thing by the same name on both models.
bool StaysAsItIs(const ConversionLine& line) {
  return line.newRef && line.oldName == line.newName && line.ref == *line.newRef &&
         ShownOld(line) == ShownNew(line) && line.parameter.outcome == Outcome::Carried;
}

// --- Text

std::u16string LineOf(const ConversionLine& line, Language language) {
  const bool moved = line.newRef && (line.ref != *line.newRef || line.oldName != line.newName);
  const Phrase phrase = !line.newRef        ? Phrase::ConvertGoneLine
                        : moved             ? Phrase::ConvertMovedLine
                        : StaysAsItIs(line) ? Phrase::ConvertSameLine
                                            : Phrase::ConvertLine;
  const std::u16string key = Widen(KeyOf(line.ref));
  const std::u16string newKey = line.newRef ? Widen(KeyOf(*line.newRef)) : std::u16string();
  const std::u16string before = ShownOld(line);
  const std::u16string after = ShownNew(line);
  std::u16string text = Say(phrase, language,
                            {{u"NAME", line.oldName},
                             {u"KEY", key},
                             {u"OLD", before},
                             {u"NEWNAME", line.newName},
                             {u"NEWKEY", newKey},
                             {u"NEW", after}});
  text += FormulasBeside(line.oldFormula, line.newFormula, language);
  return text;
}

std::u16string CountsOf(const Conversion& conversion, Language language) {
  const auto count = [&](Outcome outcome) { return Counted(conversion.Count(outcome)); };
  return Say(Phrase::ConvertCounts, language,
             {{u"ALL", Counted(conversion.lines.size())},
              {u"DROPPED", count(Outcome::Dropped)},
              {u"CLEARED", count(Outcome::Cleared)},
              {u"NOTCARRIED", count(Outcome::NotCarried)},
              {u"RENUMBERED", count(Outcome::Renumbered)},
              {u"CARRIED", count(Outcome::Carried)}});
}

void SayAll(Call& call, const Task& task, std::string_view oldModel, const Conversion& conversion) {
  const Language language = call.language();
  call.out.Line(Say(Phrase::ConvertHead, language,
                    {{u"SETUP", task.from.text},
                     {u"OLD", Widen(oldModel)},
                     {u"FILE", task.output.u16string()},
                     {u"NEW", Widen(task.to)}}));
  call.out.Line(conversion.lines.empty() ? std::u16string(PhraseText(Phrase::ConvertNothing, language))
                                         : CountsOf(conversion, language));
  for (const OutcomeRow& row : OutcomeRows) {
    if (conversion.Count(row.outcome) == 0) {
      continue;
    }
    call.out.Line();
    call.out.Line(Say(
        Phrase::CompareGroup, language,
        {{u"PAGE", PhraseText(row.heading, language)}, {u"COUNT", Counted(conversion.Count(row.outcome))}}));
    for (const ConversionLine& line : conversion.lines) {
      if (line.parameter.outcome == row.outcome) {
        call.out.Line(LineOf(line, language));
      }
    }
  }
}

// --- JSON

QJsonObject JsonSide(const ConversionLine& line, const std::u16string& name, const ParameterRef& ref,
                     const ParameterValue& value, const std::u16string& text, const std::u16string& formula) {
  QJsonObject json{{QStringLiteral("key"), Q(KeyOf(ref))},
                   {QStringLiteral("name"), Q(name)},
                   {QStringLiteral("value"), line.hidden ? QJsonValue(QJsonValue::Null) : JsonValueOf(value)},
                   {QStringLiteral("text"), Q(text)}};
  if (FormulaOf(ref)) {
    json.insert(QStringLiteral("formula"), Q(formula));
  }
  return json;
}

QJsonObject JsonLine(const ConversionLine& line) {
  QJsonObject json = JsonOf(line.ref, line.oldName, line.page);
  const auto* row = std::ranges::find(OutcomeRows, line.parameter.outcome, &OutcomeRow::outcome);
  json.insert(QStringLiteral("outcome"), QLatin1String(row->json));
  json.insert(QStringLiteral("hidden"), line.hidden);
  json.insert(QStringLiteral("old"),
              JsonSide(line, line.oldName, line.ref, line.parameter.oldValue, line.oldText, line.oldFormula));
  json.insert(QStringLiteral("new"),
              line.newRef ? QJsonValue(JsonSide(line, line.newName, *line.newRef, *line.parameter.newValue,
                                                line.newText, line.newFormula))
                          : QJsonValue(QJsonValue::Null));
  return json;
}

QJsonObject JsonOfAll(const Call& call, const Task& task, std::string_view oldModel,
                      const Conversion& conversion) {
  QJsonObject counts;
  for (const OutcomeRow& row : OutcomeRows) {
    counts.insert(QLatin1String(row.json), static_cast<qint64>(conversion.Count(row.outcome)));
  }
  QJsonArray parameters;
  for (const ConversionLine& line : conversion.lines) {
    parameters.append(JsonLine(line));
  }
  QJsonObject report = call.Report();
  report.insert(QStringLiteral("setup"), Q(task.from.text));
  report.insert(QStringLiteral("model"), Q(oldModel));
  report.insert(QStringLiteral("file"), Q(task.output.u16string()));
  report.insert(QStringLiteral("newModel"), Q(std::string_view(task.to)));
  report.insert(QStringLiteral("counts"), counts);
  report.insert(QStringLiteral("parameters"), parameters);
  return report;
}

// --- HTML

HtmlRow HtmlRowOf(const ConversionLine& line, const OutcomeRow& outcome, Language language) {
  HtmlRow row;
  row.name = line.oldName;
  row.key = Widen(KeyOf(line.ref));
  if (line.newRef && *line.newRef != line.ref) {
    row.key += u" \u2192 " + Widen(KeyOf(*line.newRef));
  }
  if (line.newRef && line.newName != line.oldName) {
    row.note = u"\u2192 " + line.newName;
  }
  row.verdict = PhraseText(outcome.name, language);
  // What stands as it stood needs no colour.
  row.tone = StaysAsItIs(line) ? Tone::Plain : outcome.tone;
  row.a = {ShownOld(line), line.oldFormula, false};
  row.b = line.newRef ? HtmlValue{ShownNew(line), line.newFormula, false}
                      : HtmlValue{std::u16string(PhraseText(Phrase::HtmlAbsent, language)), {}, true};
  return row;
}

HtmlGroup HtmlGroupOf(const Conversion& conversion, const OutcomeRow& outcome, Language language) {
  HtmlGroup group{std::u16string(PhraseText(outcome.heading, language)), {}};
  std::optional<Page> page;
  for (const ConversionLine& line : conversion.lines) {
    if (line.parameter.outcome != outcome.outcome) {
      continue;
    }
    if (line.page != page) {
      page = line.page;
      group.subgroups.push_back({std::u16string(PageName(line.page, language)), {}});
    }
    group.subgroups.back().rows.push_back(HtmlRowOf(line, outcome, language));
  }
  return group;
}

HtmlReport HtmlOfAll(const Task& task, std::string_view oldModel, const Conversion& conversion,
                     Language language) {
  HtmlReport report;
  report.language = language;
  report.title = PhraseText(Phrase::ConvertTitle, language);
  report.made = ThePlatform().clock.Now();
  report.headingA = PhraseText(Phrase::ConvertOld, language);
  report.headingB = PhraseText(Phrase::ConvertNew, language);
  report.a = {report.headingA, task.from.text, Widen(oldModel), {}};
  report.b = {report.headingB, task.output.u16string(), Widen(task.to), {}};
  for (const OutcomeRow& row : OutcomeRows) {
    report.counts.push_back(
        {conversion.Count(row.outcome), std::u16string(PhraseText(row.name, language)), row.tone});
    if (conversion.Count(row.outcome) != 0) {
      report.groups.push_back(HtmlGroupOf(conversion, row, language));
    }
  }
  if (conversion.lines.empty()) {
    report.summary = PhraseText(Phrase::ConvertNothing, language);
  }
  return report;
}

} // namespace

// A conversion that was made is as asked, whatever the new model has no place for: the exit code tells a
// script whether there is a new file, and the counts of the report tell what is not in it.
Exit RunConvert(Call& call) {
  const Task task = TaskOf(call);
  const WholeSetUp old = OpenAny(call, task.from.text);
  if (old.modelCode == task.to) {
    throw Undone{Say(Phrase::ConvertSameModel, call.language(),
                     {{u"SETUP", task.from.text}, {u"MODEL", Widen(task.to)}})};
  }
  Conversion conversion = ConvertSetUp(old, InitialSetUp(task.to, call.language()), call.speech);
  WithSetUp(conversion.setUp, [&] { SaveSetUp(task.output, call.language()); });
  if (task.html) {
    SaveBytes(*task.html, HtmlPage(HtmlOfAll(task, old.modelCode, conversion, call.language())),
              call.language());
  }
  if (call.json) {
    call.out.Json(JsonOfAll(call, task, old.modelCode, conversion));
  } else {
    SayAll(call, task, old.modelCode, conversion);
  }
  return Exit::Good;
}

} // namespace loader::paramtool
