#include "companion/Sheet.h"
#include "core/Text.h"
#include "files/TextOutput.h"
#include "paramtool/Command.h"
#include "paramtool/Json.h"
#include "paramtool/OpenAny.h"

namespace loader::paramtool {

namespace {

void RequireNoTemplate(const std::filesystem::path& file, WholeSetUp& setUp, Language language) {
  const std::filesystem::path pattern = WithSetUp(setUp, TemplateFile);
  std::error_code none;
  if (std::filesystem::equivalent(file, pattern, none)) {
    throw Undone{Say(Phrase::PrintOverTemplate, language, {{u"FILE", file.u16string()}})};
  }
}

} // namespace

Exit RunPrint(Call& call) {
  const std::filesystem::path file = call.OutputFile();
  const SetUpAddress address = ParseAddress(call.Argument(0), call.language());
  RequireOtherFile(file, address, call.language());
  WholeSetUp setUp = OpenAny(call, address.text);
  RequireNoTemplate(file, setUp, call.language());
  SaveBytes(file, SheetOf(setUp, call.speech), call.language());
  if (!call.speech.secrets) {
    Output::Message(PhraseText(Phrase::PrintHidesSecrets, call.language()));
  }
  if (call.json) {
    QJsonObject report = call.Report();
    report.insert(QStringLiteral("setup"), Q(address.text));
    report.insert(QStringLiteral("model"), Q(setUp.modelCode));
    report.insert(QStringLiteral("file"), Q(file.u16string()));
    report.insert(QStringLiteral("secrets"), call.speech.secrets);
    call.out.Json(report);
  } else {
    call.out.Line(
        Say(Phrase::PrintDone, call.language(),
            {{u"SETUP", address.text}, {u"MODEL", Widen(setUp.modelCode)}, {u"FILE", file.u16string()}}));
  }
  return Exit::Good;
}

} // namespace loader::paramtool
