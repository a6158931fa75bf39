#include "channelscreens/frmFormula.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "channelscreens/frmOpSetting.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "platform/Platform.h"

namespace loader {

namespace {

// The headings of the table of the operation channels name the formulas: "式 B01". A column has four ids.
constexpr int FirstFormulaHeading = 22017;
constexpr int HeadingStep = 4;

// The two words of a caption like "式 B01" or "関数 1".
std::u16string WordBeforeBlank(std::u16string_view text) {
  return std::u16string(text.substr(0, text.find(u' ')));
}
std::u16string WordBehindBlank(std::u16string_view text) {
  return std::u16string(text.substr(text.find(u' ') + 1));
}

std::array<FormulaTerm, TermCount>& Terms(const FormulaScreen& screen) {
  return screen.table[static_cast<std::size_t>(screen.number - 1)];
}

FormulaTerm& TermInHand(const FormulaScreen& screen) {
  return Terms(screen)[static_cast<std::size_t>(screen.cursor - 1)];
}

bool IsEmpty(const FormulaTerm& term) {
  return term.TextLen == 0;
}

// Those up to the first empty one: what stands behind a hole is never printed.
int FilledTerms(const FormulaScreen& screen) {
  const auto& terms = Terms(screen);
  return static_cast<int>(std::ranges::find_if(terms, IsEmpty) - terms.begin());
}

void Refresh(FormulaScreen& screen) {
  screen.lblFormula.caption = FormulaText(screen.table, 0, FormulaModeDialog, screen.number);
  screen.lblFormulaNum.caption = DecimalText(screen.cursor);
}

void MoveTo(FormulaScreen& screen, int term) {
  const int last = std::min(FilledTerms(screen) + 1, TermCount); // the first empty one can be set
  screen.cursor = std::clamp(term, 1, last);
  Refresh(screen);
}

// The first term has a rule that is never printed: without it a plain "C01" would count as empty.
void MakeWhole(FormulaTerm& term, bool first) {
  if (first) {
    term.Rule = 1;
  }
  FormulaTermLength(term);
}

void SetTermInHand(FormulaScreen& screen) {
  if (const std::optional<FormulaTerm> set = ShowOpSetting(screen.table, screen.number, screen.cursor)) {
    FormulaTerm& term = TermInHand(screen);
    term = *set;
    MakeWhole(term, screen.cursor == 1);
    Refresh(screen);
  }
}

void DeleteTermInHand(FormulaScreen& screen) {
  if (IsEmpty(TermInHand(screen))) {
    return;
  }
  auto& terms = Terms(screen);
  std::copy(terms.begin() + screen.cursor, terms.end(), terms.begin() + screen.cursor - 1);
  terms.back() = FormulaTerm{};
  if (screen.cursor == 1 && !IsEmpty(terms.front())) {
    MakeWhole(terms.front(), true);
  }
  MoveTo(screen, screen.cursor);
}

void Keep(FormulaScreen& screen) {
  if (AveragesAndSums(screen.table, screen.number) > 1) {
    ShowMessage(LoadText(62405));
    return;
  }
  screen.kept = true;
  ThePlatform().screens.Close(screen);
}

void SetCaptions(FormulaScreen& screen) {
  const std::u16string_view heading =
      LoadText(TextId::At(FirstFormulaHeading + HeadingStep * (screen.number - 1)));
  screen.caption = Replace(LoadText(10008), u"@FormulaSel@", WordBehindBlank(heading));
  screen.lblFNum.caption = WordBeforeBlank(LoadText(18164));
  screen.btnPrev.caption = LoadText(19615);
  screen.btnNext.caption = LoadText(19616);
  screen.btnSet.caption = LoadText(19622);
  screen.btnDelete.caption = LoadText(19627);
  screen.OKButton.caption = LoadText(19621);
  screen.CancelButton.caption = LoadText(19620);
}

} // namespace

FormulaScreen::FormulaScreen(FormulaTable& work, int formula)
    : Screen("frmFormula"), table(work), number(formula),
      before(work.at(static_cast<std::size_t>(formula - 1))) {
  SetCaptions(*this);
  Refresh(*this);
  btnPrev.onClick = [this] { MoveTo(*this, cursor - 1); };
  btnNext.onClick = [this] { MoveTo(*this, cursor + 1); };
  btnSet.onClick = [this] { SetTermInHand(*this); };
  btnDelete.onClick = [this] { DeleteTermInHand(*this); };
  OKButton.onClick = [this] { Keep(*this); };
  CancelButton.onClick = [this] { ThePlatform().screens.Close(*this); };
}

void ShowFormula(FormulaTable& work, int formula) {
  FormulaScreen screen(work, formula);
  ThePlatform().screens.ShowModal(screen);
  if (!screen.kept) {
    Terms(screen) = screen.before;
  }
}

} // namespace loader
