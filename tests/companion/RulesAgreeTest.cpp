// What `check` says of a stored number and what `set` and `merge` say of it are one measure, for numbers of
// every parameter of both models.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <string>

#include "companion/Check.h"
#include "companion/EditRules.h"
#include "core/Text.h"
#include "tests/companion/CompanionTest.h"

namespace loader::test {
namespace {

// Where they mean to differ.
struct Exception {
  std::string_view section;
  std::string_view tag; // empty: of all
  bool toldByCheck;     // and not by an edit; else the other way round
  const char* why;
};
constexpr auto Exceptions = std::to_array<Exception>({
    {"C", "MMIN", true,
     "a table shows more than the field of the screen takes, and what it shows may be kept"},
    {"C", "MMAX", true, "the same"},
    {"C", "SECU", true, "the same"},
    {"O", "", true,
     "a check follows the terms of a formula; an edit types none and takes those of others whole"},
    {"O", "", false, "both tell a second AVG, the edit at the first word of the formula"},
});

bool IsMeant(const ParameterRef& ref, bool toldByCheck) {
  return std::ranges::any_of(Exceptions, [&](const Exception& row) {
    return row.section == ref.section && (row.tag.empty() || row.tag == ref.tag) &&
           row.toldByCheck == toldByCheck;
  });
}

// Of the value itself, and not of its line or of what opening makes of it.
bool IsOfValue(CheckReason reason) {
  return reason >= CheckReason::TextTooLong;
}

// At the limits of the record, beside them, between them, anywhere.
std::int16_t SomeValue(std::mt19937& random, const ParamNumRecord& record) {
  const auto between = [&](int low, int high) {
    return static_cast<std::int16_t>(
        std::clamp(std::uniform_int_distribution<int>(low, std::max(low, high))(random), -32768, 32767));
  };
  switch (random() % 5) {
  case 0:
    return between(record.MinValue - 2, record.MinValue + 2);
  case 1:
    return between(record.MaxValue - 2, record.MaxValue + 2);
  case 2:
    return between(-32768, 32767);
  default:
    return between(record.MinValue, record.MaxValue);
  }
}

class RulesAgree : public CompanionTest, public testing::WithParamInterface<const char*> {
protected:
  // A file with some numbers of some parameters.
  std::string SomeFile(std::mt19937& random) const {
    WholeSetUp setUp = InitialSetUp(GetParam(), Language::English);
    const SetUpInForce inForce(setUp);
    for (const ParameterRef& ref : AllParameters()) {
      const StoredParameter stored = FindParameter(ref);
      // These two of the older totalizer are saved as times: a number that is none does not open.
      const bool asTime = ref.section == "E" && (ref.tag == "TTSM" || ref.tag == "TTEM");
      if (stored.number != nullptr && random() % 8 == 0 && !asTime) {
        SetNumber(*stored.number, SomeValue(random, *stored.number), SlotValue);
      }
    }
    return ParamFileBytes();
  }
};

TEST_P(RulesAgree, OnEveryNumberThatIsNotTheInitialOne) {
  std::mt19937 random(20);
  std::map<std::string, int> odd;
  int bad = 0;
  int files = 0;
  for (int round = 0; round < 60; ++round) {
    const std::string bytes = SomeFile(random);
    const CheckedFile checked = CheckBytes(u"x", bytes, GetParam(), {Language::English, false});
    std::map<ParameterRef, std::string> told;
    for (const CheckDefect& defect : checked.defects) {
      if (defect.ref && IsOfValue(defect.reason)) {
        told[*defect.ref] = ToUtf8(defect.message);
      }
    }
    WholeSetUp initial = InitialSetUp(GetParam(), Language::English);
    const std::vector<StoredValue> untouched = WithSetUp(initial, AllValues);
    WholeSetUp opened = initial;
    const SetUpInForce inForce(opened);
    if (!LoadParamBytes(bytes)) {
      continue;
    }
    ++files;
    ChannelRows rows;
    const auto objection = [&](const ParameterRef& ref) {
      auto reason = Objection(ref, rows, Language::English);
      return reason ? reason : PairObjection(ref, Language::English);
    };
    // Of two kinds that cannot stand together one is told, not always the same.
    const auto otherOfPair = [](const ParameterRef& ref) {
      const int step = ChannelPairKind(ref.item) == PairLeader ? 1 : -1;
      return ParameterRef{ref.section, ref.item + step, ref.tag};
    };
    auto before = untouched.begin();
    for (const ParameterRef& ref : AllParameters()) {
      if (ValueOf(ref) == *before++) {
        continue;
      }
      const auto reason = objection(ref);
      bad += reason ? 1 : 0;
      const bool ofPair = ref.section == "C" && ref.tag == "TYPE";
      const bool toldAtOther =
          ofPair && (reason ? told.contains(otherOfPair(ref)) : objection(otherOfPair(ref)).has_value());
      if (told.contains(ref) != reason.has_value() && !toldAtOther && !IsMeant(ref, told.contains(ref))) {
        ++odd[KeyOf(ref) + "=" + ToUtf8(RawText(*ValueOf(ref))) +
              (reason ? ", an edit: " + ToUtf8(*reason) : ", a check: " + told[ref])];
      }
    }
  }
  for (const auto& [what, count] : odd) {
    ADD_FAILURE() << what;
  }
  EXPECT_GT(files, 50);
  EXPECT_GT(bad, 1000);
}

INSTANTIATE_TEST_SUITE_P(Models, RulesAgree, testing::Values("KOV", "RUG"));

} // namespace
} // namespace loader::test
