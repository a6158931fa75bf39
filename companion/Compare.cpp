#include "companion/Compare.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "companion/Formulas.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"
#include "meaning/Meaning.h"

namespace loader {

namespace {

struct Entry {
  std::string key;
  ParameterRef ref;
  StoredValue value;
  bool named = false;   // by a pattern of `only`
  bool ignored = false; // by one of `ignore`
};

std::vector<Entry> EntriesOf(WholeSetUp& setUp, const CompareScope& scope) {
  const SetUpInForce inForce(setUp);
  std::vector<Entry> entries;
  ForEachParameter([&](const ParameterRef& ref, const StoredParameter& stored) {
    StoredValue value = stored.text != nullptr ? StoredValue(std::u16string(TrimRight(stored.text->Value)))
                                               : StoredValue(stored.number->Value);
    entries.push_back({KeyOf(ref), ref, std::move(value), scope.only.empty() || AnyNames(scope.only, ref),
                       AnyNames(scope.ignore, ref)});
  });
  return entries;
}

bool Compared(const Entry* a, const Entry* b) {
  const bool named = (a != nullptr && a->named) || (b != nullptr && b->named);
  const bool ignored = (a == nullptr || a->ignored) && (b == nullptr || b->ignored);
  return named && !ignored;
}

// 0.0 and 0.00, at two positions, are the same.
bool IsZero(std::u16string_view text) {
  return text.find_first_not_of(u"0.-") == std::u16string_view::npos &&
         text.find(u'0') != std::u16string_view::npos;
}

// One of the two set-ups while parameters of both are looked at in turn.
class Side {
public:
  Side(WholeSetUp& setUp, const Speech& speech) : setUp_(setUp), speech_(speech) {}

  std::u16string TextOfValue(const ParameterRef& ref) {
    const SetUpInForce inForce(setUp_);
    return ReadableValue(ref, speech_);
  }
  Page PageOfParameter(const ParameterRef& ref) {
    const SetUpInForce inForce(setUp_);
    return PageOf(ref);
  }
  ComparedSide Describe(const Entry& entry) {
    const SetUpInForce inForce(setUp_);
    const std::optional<FormulaRef> formula = FormulaOf(entry.ref);
    return {NameOf(entry.ref, speech_.language), entry.value, ReadableValue(entry.ref, speech_),
            formula ? TextOf(*formula) : std::u16string()};
  }

private:
  WholeSetUp& setUp_;
  const Speech& speech_;
};

// A text reads as it stands, and so does a number that has no meaning beside itself.
bool MayReadDifferently(const Entry& entry) {
  const MeaningRow* row = FindMeaning(entry.ref.section, entry.ref.tag);
  const Sense sense = row == nullptr ? Sense::Plain : row->meaning.sense;
  return sense == Sense::Number || sense == Sense::Choice || sense == Sense::ColourNumber;
}

class Comparer {
public:
  Comparer(WholeSetUp& a, WholeSetUp& b, const Speech& speech)
      : a_(a, speech), b_(b, speech), showsSecrets_(speech.secrets) {}

  void Look(const Entry* a, const Entry* b) {
    if (!Compared(a, b)) {
      ++result_.leftOut;
      return;
    }
    ++result_.compared;
    if (const std::optional<Verdict> verdict = VerdictOf(a, b)) {
      Tell(a, b, *verdict);
    }
  }

  Comparison Take() {
    std::ranges::stable_sort(result_.found, {}, &ComparedParameter::page);
    return std::move(result_);
  }

private:
  std::optional<Verdict> VerdictOf(const Entry* a, const Entry* b) {
    if (a == nullptr) {
      return Verdict::OnlyInB;
    }
    if (b == nullptr) {
      return Verdict::OnlyInA;
    }
    if (a->value != b->value) {
      return Verdict::Different;
    }
    return ReadsDifferently(*a) ? std::optional(Verdict::ReadsDifferent) : std::nullopt;
  }

  bool ReadsDifferently(const Entry& entry) {
    if (!MayReadDifferently(entry)) {
      return false;
    }
    const std::u16string inA = a_.TextOfValue(entry.ref);
    const std::u16string inB = b_.TextOfValue(entry.ref);
    return inA != inB && !(IsZero(inA) && IsZero(inB));
  }

  void Tell(const Entry* a, const Entry* b, Verdict verdict) {
    // cppcheck-suppress nullPointerRedundantCheck ; one of the two is there
    const ParameterRef& ref = a != nullptr ? a->ref : b->ref;
    ComparedParameter& parameter = result_.found.emplace_back();
    parameter.ref = ref;
    parameter.page = (a != nullptr ? a_ : b_).PageOfParameter(ref);
    parameter.verdict = verdict;
    parameter.hidden = IsSecret(ref) && !showsSecrets_;
    if (a != nullptr) {
      parameter.a = a_.Describe(*a);
    }
    if (b != nullptr) {
      parameter.b = b_.Describe(*b);
    }
    ++result_.counts[static_cast<std::size_t>(verdict)];
  }

  Side a_;
  Side b_;
  bool showsSecrets_;
  Comparison result_;
};

// A value that the record does not hold now.
void Spoil(const StoredParameter& stored) {
  if (stored.text != nullptr) {
    stored.text->Value.back() = stored.text->Value.back() == u'#' ? u'!' : u'#';
  } else {
    stored.number->Value = static_cast<std::int16_t>(stored.number->Value ^ 1);
  }
}

bool SameValue(const StoredParameter& one, const StoredParameter& other) {
  return one.text != nullptr ? other.text != nullptr && one.text->Value == other.text->Value
                             : other.number != nullptr && one.number->Value == other.number->Value;
}

// Of each parameter of the set-up, in order, whether a file sets it: what it sets is after one more reading
// as it was, whatever was there before.
std::vector<bool> NamedBy(WholeSetUp& opened, std::string_view bytes) {
  WholeSetUp spoiled = opened;
  std::vector<StoredParameter> asOpened;
  WithSetUp(opened, [&] {
    ForEachParameter([&](const ParameterRef&, const StoredParameter& stored) { asOpened.push_back(stored); });
  });
  const SetUpInForce inForce(spoiled);
  ForEachParameter([](const ParameterRef&, const StoredParameter& stored) { Spoil(stored); });
  static_cast<void>(LoadParamBytes(bytes));
  std::vector<bool> named;
  auto before = asOpened.begin();
  ForEachParameter([&](const ParameterRef&, const StoredParameter& stored) {
    named.push_back(SameValue(stored, *before++));
  });
  return named;
}

} // namespace

Comparison Compare(WholeSetUp& a, WholeSetUp& b, const CompareScope& scope, const Speech& speech) {
  const std::vector<Entry> ofA = EntriesOf(a, scope);
  const std::vector<Entry> ofB = EntriesOf(b, scope);
  std::unordered_map<std::string_view, const Entry*> inB;
  for (const Entry& entry : ofB) {
    inB.emplace(entry.key, &entry);
  }
  Comparer comparer(a, b, speech);
  for (const Entry& entry : ofA) {
    const auto found = inB.find(entry.key);
    comparer.Look(&entry, found == inB.end() ? nullptr : found->second);
    if (found != inB.end()) {
      inB.erase(found);
    }
  }
  for (const Entry& entry : ofB) {
    if (inB.contains(entry.key)) {
      comparer.Look(nullptr, &entry);
    }
  }
  return comparer.Take();
}

const Selection* FirstThatNamesNothing(const CompareScope& scope, WholeSetUp& a, WholeSetUp& b) {
  for (const std::vector<Selection>* selections : {&scope.only, &scope.ignore}) {
    for (const Selection& selection : *selections) {
      const std::vector<Selection> alone{selection};
      const auto nothing = [&] { return FirstThatNamesNothing(alone) != nullptr; };
      if (WithSetUp(a, nothing) && WithSetUp(b, nothing)) {
        return &selection;
      }
    }
  }
  return nullptr;
}

std::u16string ShownValue(const ComparedParameter& parameter, const ComparedSide& side) {
  if (!side.value || parameter.hidden) {
    return side.text;
  }
  if (std::holds_alternative<std::u16string>(*side.value)) {
    return u"\"" + side.text + u"\"";
  }
  const bool alike = parameter.verdict == Verdict::Different && parameter.a.text == parameter.b.text;
  return alike ? side.text + u" (" + RawText(*side.value) + u")" : side.text;
}

std::u16string ShownName(const ComparedParameter& parameter) {
  const std::u16string& a = parameter.a.name;
  const std::u16string& b = parameter.b.name;
  if (a.empty() || b.empty() || a == b) {
    return a.empty() ? b : a;
  }
  return a + u" / " + b;
}

std::size_t CountUnnamed(WholeSetUp& opened, std::string_view bytes) {
  const std::string own = WithSetUp(opened, [] { return ParamFileBytes(); });
  if (bytes == own) { // a look at the bytes in place of two readings
    return 0;
  }
  const std::vector<bool> named = NamedBy(opened, bytes);
  // The times of an older file are read into other parameters: no file sets these two, its own neither.
  const std::vector<bool> nameable = NamedBy(opened, own);
  std::size_t unnamed = 0;
  for (std::size_t i = 0; i < named.size(); ++i) {
    unnamed += nameable[i] && !named[i] ? 1U : 0U;
  }
  return unnamed;
}

} // namespace loader
