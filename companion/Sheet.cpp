#include "companion/Sheet.h"

#include <limits>
#include <stdexcept>

#include "companion/SetUps.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "files/TextOutput.h"
#include "meaning/ParameterText.h"
#include "platform/RunTimeFailure.h"

namespace loader {

namespace {

[[noreturn]] void Refuse(Phrase why, const std::exception& reason, Language language) {
  throw Undone{
      Say(why, language, {{u"FILE", TemplateFile().u16string()}, {u"REASON", FromUtf8(reason.what())}})};
}

std::string SheetInForce(Language language) {
  std::string pattern;
  try {
    pattern = ReadRegularFile(TemplateFile());
  } catch (const RunTimeFailure& failure) {
    Refuse(Phrase::PrintNoTemplate, failure, language);
  }
  try {
    return PrintedSheet(pattern);
  } catch (const RunTimeFailure& failure) {
    Refuse(Phrase::PrintBadTemplate, failure, language);
  }
}

void Blank(const ParameterRef& ref, const StoredParameter& stored) {
  if (stored.text != nullptr) {
    SetText(*stored.text, {}, SlotValue);
  } else {
    // The sheet leaves a number outside of its limits blank.
    const ParamNumRecord& record = *stored.number;
    constexpr std::int16_t Lowest = std::numeric_limits<std::int16_t>::min();
    stored.number->Value =
        static_cast<std::int16_t>(record.MinValue > Lowest ? record.MinValue - 1 : record.MaxValue + 1);
  }
  if (!Trim(ReportText(ref.section, ref.item, ref.tag, View::Sheet)).empty()) {
    throw std::logic_error("no value of " + KeyOf(ref) + " prints as blanks");
  }
}

} // namespace

void BlankSecrets() {
  ForEachParameter([](const ParameterRef& ref, const StoredParameter& stored) {
    if (IsSecret(ref)) {
      Blank(ref, stored);
    }
  });
}

std::string SheetOf(const WholeSetUp& setUp, const Speech& speech) {
  WholeSetUp printed = setUp;
  const SetUpInForce inForce(printed);
  if (!speech.secrets) {
    BlankSecrets();
  }
  return SheetInForce(speech.language);
}

} // namespace loader
