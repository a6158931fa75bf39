#include "companion/Show.h"

#include <algorithm>
#include <set>

#include "companion/Formulas.h"

namespace loader {

namespace {

class LineMaker {
public:
  LineMaker(const std::vector<ParameterRef>& chosen, const Speech& speech)
      : chosen_(chosen.begin(), chosen.end()), speech_(speech) {}

  void Add(const ParameterRef& ref) {
    const std::optional<FormulaRef> formula = FormulaOf(ref);
    if (!formula || !IsWhole(*formula)) {
      AddParameter(ref);
    } else if (ref == WordsOf(*formula).front()) {
      AddFormula(*formula, PageOf(ref));
    }
  }

  std::vector<ShownLine> TakeByPage() {
    std::ranges::stable_sort(lines_, {}, &ShownLine::page);
    return std::move(lines_);
  }

private:
  bool IsWhole(const FormulaRef& formula) const {
    return std::ranges::all_of(WordsOf(formula),
                               [&](const ParameterRef& word) { return chosen_.contains(word); });
  }
  void AddParameter(const ParameterRef& ref) {
    lines_.push_back({PageOf(ref), NameOf(ref, speech_.language), ReadableValue(ref, speech_)});
  }
  void AddFormula(const FormulaRef& formula, Page page) {
    lines_.push_back({page, NameOf(formula, speech_.language), TextOf(formula)});
    for (const ParameterRef& word : WordsBeside(formula)) {
      AddParameter(word);
    }
  }

  std::set<ParameterRef> chosen_;
  const Speech& speech_;
  std::vector<ShownLine> lines_;
};

} // namespace

std::vector<ShownLine> ShownLines(const std::vector<ParameterRef>& chosen, const Speech& speech) {
  LineMaker maker(chosen, speech);
  for (const ParameterRef& ref : chosen) {
    maker.Add(ref);
  }
  return maker.TakeByPage();
}

} // namespace loader
