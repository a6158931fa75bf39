#include "companion/Convert.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "companion/Formulas.h"
#include "core/UserUnits.h"

namespace loader {

namespace {

// ParamStoreBackup for the time of one change of model.
class Backup {
public:
  explicit Backup(ParamStoreTable store) : kept_(std::exchange(ParamStoreBackup, std::move(store))) {}
  ~Backup() { std::swap(ParamStoreBackup, kept_); }
  Backup(const Backup&) = delete;
  Backup& operator=(const Backup&) = delete;

private:
  ParamStoreTable kept_;
};

// With the initial settings of the new model in force.
ConversionReport ConvertInForce() {
  if (ModelCode == "RUG") {
    return ConvertToRug();
  }
  if (ModelCode == "KOV") {
    return ConvertToKov();
  }
  throw std::logic_error("no change of model to " + ModelCode);
}

std::u16string FormulaTextOf(const ParameterRef& ref) {
  const std::optional<FormulaRef> formula = FormulaOf(ref);
  return formula ? TextOf(*formula) : std::u16string();
}

void TellOld(ConversionLine& line, const Speech& speech) {
  line.ref = {line.parameter.section, line.parameter.item, line.parameter.tag};
  line.page = PageOf(line.ref);
  line.hidden = IsSecret(line.ref) && !speech.secrets;
  line.oldName = NameOf(line.ref, speech.language);
  line.oldText = ReadableValue(line.ref, speech);
  line.oldFormula = FormulaTextOf(line.ref);
}

void TellNew(ConversionLine& line, const Speech& speech) {
  if (!line.parameter.newItem || !line.parameter.newValue) {
    return;
  }
  const ParameterRef ref{line.parameter.section, *line.parameter.newItem, line.parameter.tag};
  line.newRef = ref;
  line.newName = NameOf(ref, speech.language);
  line.newText = ReadableValue(ref, speech);
  line.newFormula = FormulaTextOf(ref);
}

std::u16string Shown(bool hidden, const ParameterValue& value, const std::u16string& text) {
  return !hidden && std::holds_alternative<std::u16string>(value) ? u"\"" + text + u"\"" : text;
}

} // namespace

Conversion ConvertSetUp(const WholeSetUp& old, const WholeSetUp& initial, const Speech& speech) {
  Conversion conversion;
  conversion.setUp = initial;
  ConversionReport report;
  {
    const Backup backup(old.store);
    const SetUpInForce inForce(conversion.setUp);
    report = ConvertInForce();
    UpdateUserUnitNames();
  }
  for (ConvertedParameter& parameter : report) {
    ++conversion.counts[static_cast<std::size_t>(parameter.outcome)];
    conversion.lines.emplace_back().parameter = std::move(parameter);
  }
  WholeSetUp before = old;
  const auto each = [&](const auto& tell) {
    std::ranges::for_each(conversion.lines, [&](ConversionLine& line) { tell(line, speech); });
  };
  WithSetUp(before, [&] { each(TellOld); });
  WithSetUp(conversion.setUp, [&] { each(TellNew); });
  std::ranges::stable_sort(conversion.lines, {}, &ConversionLine::page);
  return conversion;
}

std::u16string ShownOld(const ConversionLine& line) {
  return Shown(line.hidden, line.parameter.oldValue, line.oldText);
}

std::u16string ShownNew(const ConversionLine& line) {
  return line.parameter.newValue ? Shown(line.hidden, *line.parameter.newValue, line.newText)
                                 : std::u16string();
}

} // namespace loader
