#include "operation/Formula.h"

#include <algorithm>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "core/modMain.h"

namespace loader {

namespace {

struct FunctionShape {
  int inputs;
  std::int16_t textLength; // with its inputs, without a rule sign
};
// By row of FunctionList.
constexpr std::array<FunctionShape, 14> Functions{{{1, 3},
                                                   {1, 8},
                                                   {2, 12},
                                                   {1, 8},
                                                   {1, 8},
                                                   {1, 7},
                                                   {1, 8},
                                                   {2, 11},
                                                   {2, 12},
                                                   {2, 12},
                                                   {1, 8},
                                                   {1, 8},
                                                   {1, 8},
                                                   {2, 12}}};

constexpr int AverageFunction = 12;
constexpr int SumFunction = 13;

const FunctionShape* ShapeOf(int function) {
  return function >= 0 && function < static_cast<int>(Functions.size())
             ? &Functions[static_cast<std::size_t>(function)]
             : nullptr;
}

// By row of TermPrefixList.
std::array<int, 6> InputCounts() {
  return {AllChannels(),          Profile.TotalizerCount, Profile.DigitalInputCount,
          Profile.CommInputCount, Profile.ConstantCount,  Profile.OperationResultCount};
}

std::string FormulaTag(std::string_view stem, int formula, int term) {
  return std::string(stem) + std::to_string(formula) + std::to_string(term + 1);
}

FormulaTerm LoadTerm(int channel, int formula, int term) {
  const FormulaBytes operation = FormulaSplit(NumValue("O", channel, FormulaTag("OP", formula, term)));
  const FormulaBytes first = FormulaSplit(NumValue("O", channel, FormulaTag("S1", formula, term)));
  const FormulaBytes second = FormulaSplit(NumValue("O", channel, FormulaTag("S2", formula, term)));
  FormulaTerm loaded;
  loaded.Func = operation.high;
  loaded.Rule = operation.low;
  loaded.Input1Kind = first.high;
  loaded.Input1No = first.low;
  loaded.Input2Kind = second.high;
  loaded.Input2No = second.low;
  FormulaTermLength(loaded);
  return loaded;
}

std::u16string TermText(const FormulaTerm& term) {
  const FunctionShape* shape = ShapeOf(term.Func);
  const std::u16string* pattern = CatalogueEntry(FunctionList, term.Func);
  if (shape == nullptr || pattern == nullptr) {
    return {};
  }
  std::u16string first = InputName(term.Input1Kind, term.Input1No);
  if (term.Func == 0) {
    return first;
  }
  std::u16string text = Replace(*pattern, u"(A", u"(" + first);
  if (shape->inputs == 2) {
    text = Replace(text, u"B)", InputName(term.Input2Kind, term.Input2No) + u")");
  }
  return text;
}

} // namespace

std::int16_t FormulaCompose(int high, int low) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(high * 256 + low));
}

FormulaBytes FormulaSplit(std::int16_t value) {
  const auto bits = static_cast<std::uint16_t>(value);
  return {static_cast<std::int16_t>(bits >> 8), static_cast<std::int16_t>(bits & 0xFF)};
}

int FunctionInputs(int function) {
  const FunctionShape* shape = ShapeOf(function);
  return shape == nullptr ? 0 : shape->inputs;
}

std::u16string InputName(int kind, int number) {
  const std::u16string* letter = CatalogueEntry(TermPrefixList, kind);
  return (letter == nullptr ? std::u16string() : *letter) + PaddedDecimal(number + 1, 2);
}

int InputRows() {
  int rows = 0;
  for (const int count : InputCounts()) {
    rows += count;
  }
  return rows;
}

std::optional<TermInput> InputOfRow(int row) {
  if (row < 0) {
    return std::nullopt;
  }
  int kind = 0;
  for (const int count : InputCounts()) {
    if (row < count) {
      return TermInput{kind, row};
    }
    row -= count;
    ++kind;
  }
  return std::nullopt;
}

int RowOfInput(TermInput input) {
  const std::array<int, 6> counts = InputCounts();
  const auto kind = static_cast<std::size_t>(input.kind);
  if (input.kind < 0 || kind >= counts.size() || input.number < 0 || input.number >= counts[kind]) {
    return -1;
  }
  int row = input.number;
  for (std::size_t before = 0; before < kind; ++before) {
    row += counts[before];
  }
  return row;
}

int AveragesAndSums(const FormulaTable& table, int formula) {
  const auto& terms = table.at(static_cast<std::size_t>(formula - 1));
  return static_cast<int>(std::ranges::count_if(terms, [](const FormulaTerm& term) {
    return term.Func == AverageFunction || term.Func == SumFunction;
  }));
}

void FormulaTermLength(FormulaTerm& term) {
  const FunctionShape* shape = ShapeOf(term.Func);
  std::int16_t length = shape == nullptr ? std::int16_t{0} : shape->textLength;
  // A plain input "C01" has number 0 and would count as empty: the rule of the first term, always 1, makes it
  // count.
  if (term.Func == 0 && term.Input1No == 0) {
    length = 0;
  }
  term.TextLen = static_cast<std::int16_t>(length + (term.Rule != 0 ? 1 : 0));
}

std::u16string FormulaText(FormulaTable& table, int channel, int mode, int formula) {
  if (formula < 1 || formula > FormulaCount) {
    return {};
  }
  auto& terms = table[static_cast<std::size_t>(formula - 1)];
  if (mode == FormulaModeStore) {
    for (int term = 0; term < TermCount; ++term) {
      terms[static_cast<std::size_t>(term)] = LoadTerm(channel, formula, term);
    }
  }
  std::u16string text;
  int filled = 0;
  for (const FormulaTerm& term : terms) {
    if (term.TextLen == 0) {
      break;
    }
    const std::u16string body = TermText(term);
    const std::u16string* sign = CatalogueEntry(OperatorList, term.Rule);
    // The rule of the first term is never printed; neither is one that the list does not hold.
    if (filled > 0 && term.Rule != 0 && sign != nullptr && !body.empty()) {
      text += *sign;
    }
    text += body;
    ++filled;
  }
  if (mode == FormulaModeDialog && filled > 0 && filled < TermCount) {
    text += u' ';
  }
  return text;
}

void StoreFormulas(const FormulaTable& table, int channel) {
  for (int formula = 1; formula <= FormulaCount; ++formula) {
    for (int term = 0; term < TermCount; ++term) {
      const FormulaTerm& stored =
          table[static_cast<std::size_t>(formula - 1)][static_cast<std::size_t>(term)];
      SetNumValue("O", channel, FormulaTag("OP", formula, term), FormulaCompose(stored.Func, stored.Rule));
      SetNumValue("O", channel, FormulaTag("S1", formula, term),
                  FormulaCompose(stored.Input1Kind, stored.Input1No));
      SetNumValue("O", channel, FormulaTag("S2", formula, term),
                  FormulaCompose(stored.Input2Kind, stored.Input2No));
    }
  }
}

std::u16string StoredFormulaText(int channel, int formula) {
  FormulaTable table{};
  return FormulaText(table, channel, FormulaModeStore, formula);
}

} // namespace loader
