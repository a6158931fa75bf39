#include "companion/Formulas.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/Text.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "operation/Formula.h"

namespace loader {

namespace {

constexpr std::string_view FormulaSection = "O";
// A tag is a stem, the formula's number and the term's: "OP11".
constexpr std::array<std::string_view, 3> Stems{"OP", "S1", "S2"};
constexpr std::size_t FormulaColumn = 2;

bool IsDigitUpTo(char digit, int last) {
  return digit >= '1' && digit <= '0' + last;
}

ParameterRef WordRef(const FormulaRef& formula, std::string_view stem, int term) {
  return {std::string(FormulaSection), formula.item,
          std::string(stem) + std::to_string(formula.number) + std::to_string(term)};
}

// The three words of a term.
struct TermWords {
  std::int16_t operation = 0;
  std::int16_t first = 0;
  std::int16_t second = 0;
  bool operator==(const TermWords&) const = default;
};

TermWords StoredWords(const FormulaRef& formula, int term) {
  const auto word = [&](std::string_view stem) {
    return NumValue(FormulaSection, formula.item, WordRef(formula, stem, term).tag);
  };
  return {word(Stems[0]), word(Stems[1]), word(Stems[2])};
}

// Whether the text counts the term as one, by the rule that prints it.
bool IsPrintedTerm(const TermWords& words) {
  FormulaTerm term;
  term.Func = FormulaSplit(words.operation).high;
  term.Rule = FormulaSplit(words.operation).low;
  term.Input1No = FormulaSplit(words.first).low;
  FormulaTermLength(term);
  return term.TextLen != 0;
}

// Which of the three words a printed term tells in full.
std::array<bool, Stems.size()> ToldBy(const TermWords& words, bool firstTerm) {
  constexpr int FirstRule = 1; // of every first term; it is not printed
  const auto [function, rule] = FormulaSplit(words.operation);
  const int inputs = CatalogueEntry(FunctionList, function) == nullptr ? 0 : FunctionInputs(function);
  const bool sign =
      firstTerm ? rule == FirstRule : rule != 0 && CatalogueEntry(OperatorList, rule) != nullptr;
  const auto input = [&](std::int16_t word, bool taken) {
    return taken ? CatalogueEntry(TermPrefixList, FormulaSplit(word).high) != nullptr : word == 0;
  };
  return {inputs > 0 && sign, input(words.first, inputs > 0), input(words.second, inputs > 1)};
}

} // namespace

std::optional<FormulaRef> FormulaOf(const ParameterRef& ref) {
  const std::string& tag = ref.tag;
  const bool word = ref.section == FormulaSection && tag.size() == TagWidth &&
                    std::ranges::find(Stems, std::string_view(tag).substr(0, FormulaColumn)) != Stems.end() &&
                    IsDigitUpTo(tag[FormulaColumn], FormulaCount) &&
                    IsDigitUpTo(tag[FormulaColumn + 1], TermCount);
  return word ? std::optional(FormulaRef{ref.item, tag[FormulaColumn] - '0'}) : std::nullopt;
}

std::vector<ParameterRef> WordsOf(const FormulaRef& formula) {
  std::vector<ParameterRef> words;
  for (const std::string_view stem : Stems) {
    for (int term = 1; term <= TermCount; ++term) {
      words.push_back(WordRef(formula, stem, term));
    }
  }
  return words;
}

std::u16string NameOf(const FormulaRef& formula, Language language) {
  return Say(Phrase::FormulaName, language,
             {{u"CHANNEL", ItemName(FormulaSection, formula.item, language)},
              {u"NUMBER", DecimalText(formula.number)}});
}

std::u16string TextOf(const FormulaRef& formula) {
  return StoredFormulaText(formula.item, formula.number);
}

std::vector<ParameterRef> WordsBeside(const FormulaRef& formula) {
  std::vector<ParameterRef> beside;
  bool printed = true;
  for (int term = 1; term <= TermCount; ++term) {
    const TermWords words = StoredWords(formula, term);
    printed = printed && IsPrintedTerm(words);
    const std::array<bool, Stems.size()> told =
        printed ? ToldBy(words, term == 1)
                : std::array<bool, Stems.size()>{words.operation == 0, words.first == 0, words.second == 0};
    for (std::size_t stem = 0; stem < Stems.size(); ++stem) {
      if (!told[stem]) {
        beside.push_back(WordRef(formula, Stems[stem], term));
      }
    }
  }
  return beside;
}

std::u16string FormulasBeside(std::u16string_view before, std::u16string_view after, Language language) {
  if (before == after) {
    return {};
  }
  const auto told = [&](std::u16string_view formula) {
    return formula.empty() ? PhraseText(Phrase::HtmlAbsent, language) : formula;
  };
  return Say(Phrase::FormulasBeside, language, {{u"A", told(before)}, {u"B", told(after)}});
}

} // namespace loader
