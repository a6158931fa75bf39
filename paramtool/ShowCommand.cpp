#include "companion/Show.h"

#include <QJsonArray>

#include "companion/Formulas.h"
#include "core/WholeSetUp.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/OpenAny.h"

namespace loader::paramtool {

namespace {

// What the arguments behind the first one name; all of it without them.
std::vector<ParameterRef> Chosen(const Call& call) {
  std::vector<Selection> where;
  for (int i = 1; i < call.arguments.size(); ++i) {
    where.emplace_back(call.Argument(i));
  }
  RequireEachNames(where, call.language());
  std::vector<ParameterRef> chosen;
  for (const ParameterRef& ref : AllParameters()) {
    if (where.empty() || AnyNames(where, ref)) {
      chosen.push_back(ref);
    }
  }
  return chosen;
}

void SayLines(Call& call, const std::vector<ShownLine>& lines) {
  const bool headings = !lines.empty() && lines.front().page != lines.back().page;
  std::optional<Page> page;
  for (const ShownLine& line : lines) {
    if (headings && line.page != page) {
      call.out.Line(
          Say(Phrase::PageHeading, call.language(), {{u"PAGE", PageName(line.page, call.language())}}));
      page = line.page;
    }
    // No blank at the end of a line: tools that show differences point at them.
    call.out.Line(line.name + u":" + (line.text.empty() ? u"" : u" " + line.text));
  }
}

QJsonArray JsonParameters(const Call& call, const std::vector<ParameterRef>& chosen) {
  QJsonArray parameters;
  for (const ParameterRef& ref : chosen) {
    QJsonObject parameter = JsonOf(ref, call.language());
    parameter.insert(QStringLiteral("value"), JsonValueOf(ref, *ValueOf(ref), call.speech));
    parameter.insert(QStringLiteral("text"), Q(ReadableValue(ref, call.speech)));
    parameters.append(parameter);
  }
  return parameters;
}

// Of each formula of which a word was chosen.
QJsonArray JsonFormulas(const Call& call, const std::vector<ParameterRef>& chosen) {
  QJsonArray formulas;
  for (const ParameterRef& ref : chosen) {
    const std::optional<FormulaRef> formula = FormulaOf(ref);
    const auto same = [&](const QJsonValue& told) {
      return told[QStringLiteral("item")].toInt() == formula->item &&
             told[QStringLiteral("number")].toInt() == formula->number;
    };
    if (formula && std::ranges::none_of(formulas, same)) {
      formulas.append(QJsonObject{{QStringLiteral("item"), formula->item},
                                  {QStringLiteral("number"), formula->number},
                                  {QStringLiteral("name"), Q(NameOf(*formula, call.language()))},
                                  {QStringLiteral("text"), Q(TextOf(*formula))}});
    }
  }
  return formulas;
}

} // namespace

Exit RunShow(Call& call) {
  WholeSetUp setUp = OpenAny(call, call.Argument(0));
  const SetUpInForce inForce(setUp);
  const std::vector<ParameterRef> chosen = Chosen(call);
  if (!call.json) {
    SayLines(call, ShownLines(chosen, call.speech));
    return Exit::Good;
  }
  QJsonObject report = call.Report();
  report.insert(QStringLiteral("setup"), Q(call.Argument(0)));
  report.insert(QStringLiteral("model"), Q(ModelCode));
  report.insert(QStringLiteral("parameters"), JsonParameters(call, chosen));
  report.insert(QStringLiteral("formulas"), JsonFormulas(call, chosen));
  call.out.Json(report);
  return Exit::Good;
}

} // namespace loader::paramtool
