#include "channelscreens/frmOpSetting.h"

#include <algorithm>

#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modIni.h"
#include "platform/Platform.h"

namespace loader {

namespace {

void FillInputs(ListBox& list) {
  ClearList(list);
  for (int row = 0; row < InputRows(); ++row) {
    AddItem(list, InputRowText(*InputOfRow(row)), row);
  }
}

void ShowInput(ListBox& list, int kind, int number) {
  ShowRow(list, RowOfInput({kind, number})); // one that the model does not have is none
}

// The function that the screen stands for: the chosen one, or the term's own where the list does not have it.
int FunctionInForce(const OpSettingScreen& screen) {
  return screen.cmbOpContents.index < 0 ? screen.before.Func : screen.cmbOpContents.index;
}

int InputsInForce(const OpSettingScreen& screen) {
  return FunctionInputs(FunctionInForce(screen));
}

void ShowTerm(OpSettingScreen& screen) {
  const FormulaTerm& term = screen.before;
  if (term.TextLen == 0) { // nothing is chosen for a term that does not stand yet
    ShowRow(screen.cmbOpFourRules, 0);
    ShowRow(screen.cmbOpContents, 0);
    return;
  }
  ShowRow(screen.cmbOpFourRules, term.Rule);
  ShowRow(screen.cmbOpContents, term.Func);
  ShowInput(screen.cmbInputChNo1, term.Input1Kind, term.Input1No);
  // What a function of one input holds as its second one is no choice of anybody.
  if (InputsInForce(screen) == 2) {
    ShowInput(screen.cmbInputChNo2, term.Input2Kind, term.Input2No);
  }
}

void SetCaptions(OpSettingScreen& screen, int formula, int term) {
  screen.caption = LoadText(TextId::At(10009 + formula - 1));
  screen.fraOpSetting.caption = LoadText(TextId::At(18164 + term - 1));
  screen.lblOpFourRules.caption = LoadText(18169);
  screen.lblInputChNo1.caption = LoadText(18167);
  screen.lblInputChNo2.caption = LoadText(18168);
  screen.btnOk.caption = LoadText(19621);
  screen.btnCancel.caption = LoadText(19620);
}

// What the term lacks, in the words for it; empty when it is whole.
std::u16string_view Missing(const OpSettingScreen& screen) {
  if (!screen.firstTerm && screen.cmbOpFourRules.index <= 0) {
    return LoadText(62406);
  }
  if (screen.cmbInputChNo1.index < 0 || (InputsInForce(screen) == 2 && screen.cmbInputChNo2.index < 0)) {
    return LoadText(62407);
  }
  return {};
}

void TakeInput(const ListBox& list, std::int16_t& kind, std::int16_t& number) {
  const TermInput input = InputOfRow(list.index).value_or(TermInput{});
  kind = static_cast<std::int16_t>(input.kind);
  number = static_cast<std::int16_t>(input.number);
}

FormulaTerm ChosenTerm(const OpSettingScreen& screen) {
  FormulaTerm term = screen.before;
  if (screen.cmbOpFourRules.index >= 0) {
    term.Rule = static_cast<std::int16_t>(screen.cmbOpFourRules.index);
  }
  term.Func = static_cast<std::int16_t>(FunctionInForce(screen));
  TakeInput(screen.cmbInputChNo1, term.Input1Kind, term.Input1No);
  if (InputsInForce(screen) == 2) {
    TakeInput(screen.cmbInputChNo2, term.Input2Kind, term.Input2No);
  } else if (InputsInForce(screen) == 1) { // a function that nobody knows keeps what it has
    term.Input2Kind = 0;
    term.Input2No = 0;
  }
  return term;
}

// A term that lacks something is not taken over. The screen closes in any case.
void HandBack(OpSettingScreen& screen) {
  if (const std::u16string_view message = Missing(screen); !message.empty()) {
    ShowMessage(message);
  } else {
    screen.handedBack = ChosenTerm(screen);
  }
  ThePlatform().screens.Close(screen);
}

} // namespace

std::u16string InputRowText(TermInput input) {
  const std::u16string* name = CatalogueEntry(TermNameList, input.kind);
  return (name == nullptr ? std::u16string() : *name) + DecimalText(input.number + 1) + u" : " +
         InputName(input.kind, input.number);
}

int FunctionsOffered(const FormulaTable& work, int formula) {
  const auto functions = static_cast<int>(FunctionList.size());
  int taken = 0;
  for (int other = 1; other <= FormulaCount; ++other) {
    if (other != formula) {
      taken += AveragesAndSums(work, other);
    }
  }
  // Formulas of a file may hold more of them than there are rows. A plain input can always be chosen.
  return std::max(functions - 2 * taken, 1);
}

OpSettingScreen::OpSettingScreen(const FormulaTable& work, int formula, int term)
    : Screen("frmOpSetting"),
      before(work.at(static_cast<std::size_t>(formula - 1)).at(static_cast<std::size_t>(term - 1))),
      firstTerm(term == 1) {
  SetCaptions(*this, formula, term);
  FillList(cmbOpFourRules, OperatorList);
  FillList(cmbOpContents, FunctionList, FunctionsOffered(work, formula));
  FillInputs(cmbInputChNo1);
  FillInputs(cmbInputChNo2);
  ShowTerm(*this);
  cmbOpFourRules.enabled = !firstTerm; // its rule is never printed
  cmbInputChNo2.enabled = InputsInForce(*this) == 2;

  cmbOpContents.onChange = [this] { cmbInputChNo2.enabled = InputsInForce(*this) == 2; };
  btnOk.onClick = [this] { HandBack(*this); };
  btnCancel.onClick = [this] { ThePlatform().screens.Close(*this); };
}

std::optional<FormulaTerm> ShowOpSetting(const FormulaTable& work, int formula, int term) {
  OpSettingScreen screen(work, formula, term);
  ThePlatform().screens.ShowModal(screen);
  return screen.handedBack;
}

} // namespace loader
