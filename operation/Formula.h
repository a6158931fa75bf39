// The formulas of an operation channel: how a term is packed in the store, its working form, and its text.
//
// Section "O" holds nine numbers for each of the four formulas of a channel, three for each of its three
// terms: OPft (function, rule), S1ft (kind and number of input 1), S2ft (kind and number of input 2), the
// first in the high byte, the second in the low byte.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace loader {

constexpr int FormulaCount = 4;
constexpr int TermCount = 3;

struct FormulaTerm {
  std::int16_t Rule = 0;       // row of OperatorList: 0 none, then + - * /
  std::int16_t Func = 0;       // row of FunctionList
  std::int16_t Input1No = 0;   // from 0
  std::int16_t Input1Kind = 0; // row of TermPrefixList
  std::int16_t Input2No = 0;
  std::int16_t Input2Kind = 0;
  std::int16_t TextLen = 0; // length of the term's text with its rule sign; 0: the term is empty
  bool operator==(const FormulaTerm&) const = default;
};

// The working form of a channel's formulas. Whoever edits some has a table of its own (FormulaWork of the
// screen of an operation channel), and so has whoever prints some: what is refilled behind a screen destroys
// no edits.
using FormulaTable = std::array<std::array<FormulaTerm, TermCount>, FormulaCount>;

// high x 256 + low, as the signed 16-bit number that the store holds.
[[nodiscard]] std::int16_t FormulaCompose(int high, int low);
struct FormulaBytes {
  std::int16_t high;
  std::int16_t low;
  bool operator==(const FormulaBytes&) const = default;
};
[[nodiscard]] FormulaBytes FormulaSplit(std::int16_t value);

// How many inputs a function has: 1 or 2; 0 for a number that is no row of FunctionList.
[[nodiscard]] int FunctionInputs(int function);

// "C01": the letter of the kind, and the number, from 0, as it is counted on the screens. A kind that is no
// row of TermPrefixList has no letter.
[[nodiscard]] std::u16string InputName(int kind, int number);

// An input that a term can have.
struct TermInput {
  int kind;   // row of TermPrefixList
  int number; // from 0
  bool operator==(const TermInput&) const = default;
};
// All inputs that the model in force has: its channels, then its totalizers, digital inputs, communication
// inputs, constants and results. The lists of inputs offer them in this order.
[[nodiscard]] int InputRows();
// The input of a row; empty outside the lists.
[[nodiscard]] std::optional<TermInput> InputOfRow(int row);
// The row of an input; -1 for one that the model does not have.
[[nodiscard]] int RowOfInput(TermInput input);

// How many terms of formula `formula` (1 to 4) are AVG or SUM. The recorder takes one of them in a formula.
[[nodiscard]] int AveragesAndSums(const FormulaTable& table, int formula);

// Fills TextLen of the term.
void FormulaTermLength(FormulaTerm& term);

constexpr int FormulaModeDialog = 1; // one blank behind a text of fewer than three terms
constexpr int FormulaModeWork = 2;   // what stands in the table
constexpr int FormulaModeStore = 3;  // reloads the formula from the store first

// The text of formula `formula` (1 to 4) of operation channel `channel` (from 0: its item in section "O"), by
// the terms of `table`. Printing stops at the first empty term.
[[nodiscard]] std::u16string FormulaText(FormulaTable& table, int channel, int mode, int formula);
// Writes what stands in the table into the items of the operation channel, formula by formula and term by
// term; a channel that section "O" does not have keeps what it has.
void StoreFormulas(const FormulaTable& table, int channel);
// What the store holds, for a reader who edits nothing.
[[nodiscard]] std::u16string StoredFormulaText(int channel, int formula);

} // namespace loader
