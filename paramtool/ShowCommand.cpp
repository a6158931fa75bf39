#include <QJsonArray>

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

} // namespace

Exit RunShow(Call& call) {
  WholeSetUp setUp = OpenAny(call, call.Argument(0));
  const SetUpInForce inForce(setUp);
  QJsonArray parameters;
  for (const ParameterRef& ref : Chosen(call)) {
    const std::u16string text = ReadableValue(ref, call.speech);
    if (call.json) {
      QJsonObject parameter = JsonOf(ref, call.language());
      parameter.insert(QStringLiteral("value"), JsonValueOf(ref, *ValueOf(ref), call.speech));
      parameter.insert(QStringLiteral("text"), Q(text));
      parameters.append(parameter);
    } else {
      call.out.Line(NameOf(ref, call.language()) + u": " + text);
    }
  }
  if (call.json) {
    QJsonObject report = call.Report();
    report.insert(QStringLiteral("model"), Q(ModelCode));
    report.insert(QStringLiteral("parameters"), parameters);
    call.out.Json(report);
  }
  return Exit::Good;
}

} // namespace loader::paramtool
