// The formulas of the operation channels: words that stand for nothing, inputs that the model does not have,
// and what the screen of a formula refuses.
#include <utility>

#include "companion/CheckParts.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "operation/Formula.h"

namespace loader::check {

namespace {

constexpr std::string_view Section = "O";

class FormulaWalk {
public:
  FormulaWalk(Findings& findings, const LaidLines& lines, int item)
      : findings_(findings), lines_(lines), item_(item) {}

  void Walk() {
    for (formula_ = 1; formula_ <= FormulaCount; ++formula_) {
      static_cast<void>(FormulaText(table_, item_, FormulaModeStore, formula_));
      for (term_ = 1; term_ <= TermCount; ++term_) {
        CheckTerm(table_[static_cast<std::size_t>(formula_ - 1)][static_cast<std::size_t>(term_ - 1)]);
      }
      if (AveragesAndSums(table_, formula_) > 1) {
        TellTwoAverages();
      }
    }
  }

private:
  [[nodiscard]] ParameterRef RefOf(std::string_view stem, int term) const {
    return {std::string(Section), item_, std::string(stem) + std::to_string(formula_) + std::to_string(term)};
  }
  // A word that is outside of its limits (which those of the functions and kinds of inputs are) is told as
  // that.
  void TellWord(const ParameterRef& ref, CheckReason reason, std::u16string message) {
    const ParamNumRecord* record = FindNumRecord(ref.section, ref.item, ref.tag);
    if (record != nullptr && record->Value >= record->MinValue && record->Value <= record->MaxValue) {
      Tell(ref, reason, std::move(message));
    }
  }
  void Tell(const ParameterRef& ref, CheckReason reason, std::u16string message) {
    const std::u16string value = DecimalText(NumValue(ref.section, ref.item, ref.tag));
    findings_.TellParameter(ref, lines_.Of(ref, value), reason, Severity::Doubtful, std::move(message));
  }

  void CheckTerm(const FormulaTerm& term) {
    if (CatalogueEntry(OperatorList, term.Rule) == nullptr) {
      TellWord(RefOf("OP", term_), CheckReason::FormulaWord,
               findings_.Words(Phrase::CheckNoSuchRule, {{u"NUMBER", DecimalText(term.Rule)}}));
    }
    if (term.TextLen == 0) {
      return;
    }
    if (term_ > 1 && term.Rule == 0) {
      Tell(RefOf("OP", term_), CheckReason::NoRule, findings_.Words(Phrase::CheckNoRule));
    }
    const int inputs = FunctionInputs(term.Func);
    if (inputs >= 1) {
      CheckInput("S1", {term.Input1Kind, term.Input1No});
    }
    if (inputs == 2) {
      CheckInput("S2", {term.Input2Kind, term.Input2No});
    }
  }

  void CheckInput(std::string_view stem, const TermInput& input) {
    if (RowOfInput(input) < 0) {
      TellWord(
          RefOf(stem, term_), CheckReason::NoSuchReference,
          findings_.Words(Phrase::CheckNoSuchTermInput, {{u"INPUT", InputName(input.kind, input.number)}}));
    }
  }

  // At the last of them: the one too many.
  void TellTwoAverages() {
    int last = TermCount;
    for (FormulaTable shorter = table_; last > 1; --last) {
      shorter[static_cast<std::size_t>(formula_ - 1)][static_cast<std::size_t>(last - 1)] = FormulaTerm{};
      if (AveragesAndSums(shorter, formula_) < AveragesAndSums(table_, formula_)) {
        break;
      }
    }
    Tell(RefOf("OP", last), CheckReason::TwoAverages, findings_.Words(Phrase::CheckTwoAverages));
  }

  Findings& findings_;
  const LaidLines& lines_;
  int item_;
  int formula_ = 1;
  int term_ = 1;
  FormulaTable table_{};
};

} // namespace

void CheckFormulas(Findings& findings, const LaidLines& lines, const ParamStoreTable& initial) {
  const StoreIndex section = gFFindSection(Section);
  if (section == NotFound) {
    return;
  }
  const std::vector<ParamItem>& items = ParamStore[section].Items;
  for (std::size_t item = 0; item < items.size(); ++item) {
    if (items[item] != initial.at(section).Items.at(item)) {
      FormulaWalk(findings, lines, static_cast<int>(item)).Walk();
    }
  }
}

} // namespace loader::check
