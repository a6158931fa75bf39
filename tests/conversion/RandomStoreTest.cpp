// Whole stores of border values against the rules written down once more, plainly: every changed parameter
// ends as its rule says, nothing else changes, and the report has a line for each and no other.
#include <algorithm>
#include <array>
#include <random>

#include "tests/conversion/Fixture.h"

namespace loader::test {
namespace {

// --- The rules once more

struct Expectation {
  Outcome outcome;
  int value; // where it is carried, renumbered or cleared
};
constexpr Expectation NotCarriedAtAll{Outcome::NotCarried, 0};

bool IsOneOf(std::string_view tag, std::initializer_list<std::string_view> tags) {
  return std::ranges::find(tags, tag) != tags.end();
}
bool IsGroupChannel(std::string_view tag) {
  return tag.starts_with("GC") && tag.size() == 4;
}
bool IsOperand(std::string_view tag) {
  return tag.size() == 4 && tag[0] == 'S' && (tag[1] == '1' || tag[1] == '2') && tag[2] >= '1' &&
         tag[2] <= '4' && tag[3] >= '1' && tag[3] <= '3';
}
Expectation Keep(int value) {
  return {Outcome::Carried, value};
}
Expectation Move(int value, int by) {
  return value + by > 32767 ? NotCarriedAtAll : Expectation{Outcome::Renumbered, value + by};
}
constexpr Expectation Clear{Outcome::Cleared, 0};

Expectation Up(std::string_view tag, int value) {
  if (tag == "SUBC" || IsGroupChannel(tag)) {
    return value > 18 ? Move(value, 18) : Keep(value);
  }
  if (IsOneOf(tag, {"OTCH", "MTM2", "ETG1"})) {
    return value > 17 ? Move(value, 18) : Keep(value);
  }
  if (IsOneOf(tag, {"SDIG", "TEXT"})) {
    return value <= 9 ? Keep(value) : value <= 81 ? Move(value, 6) : Move(value, 78);
  }
  if (IsOperand(tag)) {
    const int kind = (value & 0xFFFF) / 256;
    const int number = value & 0xFF;
    if (kind > 1 || number <= 17) {
      return Keep(value);
    }
    return number + 18 > 255 ? NotCarriedAtAll : Move(value, 18);
  }
  return IsOneOf(tag, {"SRIN", "TAIS", "TBKC", "HBKC"}) ? NotCarriedAtAll : Keep(value);
}

Expectation DownByIndex(int value) {
  return value <= 17 ? Keep(value) : value <= 35 ? Clear : value <= 47 ? Move(value, -18) : Clear;
}

Expectation Down(std::string_view tag, int value, int before) {
  if (tag == "SUBC" || IsGroupChannel(tag)) {
    return value <= 18 ? Keep(value) : value <= 36 ? Clear : value <= 48 ? Move(value, -18) : Clear;
  }
  if (tag == "OTCH") {
    return DownByIndex(value);
  }
  if (IsOneOf(tag, {"SDIG", "TEXT"})) {
    if (value <= 9) {
      return Keep(value);
    }
    if (value >= 16 && value <= 87) {
      return Move(value, -6);
    }
    return value >= 160 && value <= 207 ? Move(value, -78) : Clear;
  }
  if (IsOneOf(tag, {"A1RL", "A2RL", "A3RL", "A4RL", "CFFL", "BAAL"})) {
    return value > 28 ? Clear : Keep(value);
  }
  if (IsOneOf(tag, {"MTM2", "ETG1"})) {
    if (before == 1 || before == 2) {
      return value > 9 ? Clear : Keep(value);
    }
    return before == 3 || before == 4 ? DownByIndex(value) : Keep(value);
  }
  if (IsOperand(tag)) {
    const int kind = (value & 0xFFFF) / 256;
    const int number = value & 0xFF;
    constexpr std::array<int, 5> Last{0, 0, 9, 11, 19};
    if (kind > 4) {
      return Keep(value);
    }
    const Expectation expected = kind < 2                                        ? DownByIndex(number)
                                 : number > Last[static_cast<std::size_t>(kind)] ? Clear
                                                                                 : Keep(number);
    return {expected.outcome, kind * 256 + expected.value};
  }
  return Keep(value);
}

constexpr int Nowhere = -1;

int NewItemUp(std::string_view section, int item) {
  return IsOneOf(section, {"C", "A"}) && item >= 18 ? item + 18 : item;
}
int NewItemDown(std::string_view section, int item) {
  if (IsOneOf(section, {"C", "A"})) {
    return item < 18 ? item : item >= 36 && item < 48 ? item - 18 : Nowhere;
  }
  const int places = section == "O" ? 12 : section == "N" ? 20 : IsOneOf(section, {"G", "T", "B"}) ? 4 : 999;
  return item < places ? item : Nowhere;
}

// --- Random stores

constexpr std::array<int, 62> BorderValues{
    -32768, -1,  0,   1,   2,   3,   4,    5,    8,    9,    10,   11,    12,    15,   16,  17,
    18,     19,  20,  28,  29,  30,  31,   35,   36,   37,   47,   48,    49,    72,   81,  82,
    87,     88,  129, 130, 159, 160, 207,  208,  238,  255,  256,  273,   274,   291,  292, 303,
    304,    511, 521, 522, 779, 780, 1043, 1044, 1280, 1535, 5000, 32689, 32749, 32767};

void FillRandomly(unsigned seed) {
  std::mt19937 random(seed);
  for (ParamSection& section : ParamStore) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        if (random() % 4 != 0) {
          record.Value = static_cast<std::int16_t>(BorderValues[random() % BorderValues.size()]);
        }
      }
      for (ParamTextRecord& record : item.TextRecords) {
        if (random() % 4 != 0) {
          SetText(record, u"T " + DecimalText(random() % 1000), SlotValue);
        }
      }
    }
  }
}

// Lays one changed parameter over `ParamStore`, by the rules above, and tells its line of the report.
template <typename Record, typename Find, typename ValueOf, typename Lay>
ConvertedParameter Expect(std::string_view section, int item, const Record& old, int newItem, bool left,
                          Expectation expected, Find find, ValueOf valueOf, Lay lay) {
  ConvertedParameter line;
  line.section = section;
  line.item = item;
  line.tag = Trim(std::string_view(old.Tag));
  line.oldValue = valueOf(old);
  line.outcome = left ? Outcome::NotCarried : newItem == Nowhere ? Outcome::Dropped : expected.outcome;
  const StoreIndex index = gFFindSection(section);
  const int items = static_cast<int>(ParamStore[index].Items.size());
  if (newItem == Nowhere || newItem >= items) {
    return line;
  }
  line.newItem = newItem;
  Record* target = find(section, newItem, old.Tag);
  if (line.outcome != Outcome::NotCarried) {
    lay(*target, expected.value);
  }
  line.newValue = valueOf(*target);
  return line;
}

ConversionReport ExpectOver(bool up) {
  ConversionReport report;
  for (const ParamSection& part : ParamStoreBackup) {
    const std::string section(Trim(std::string_view(part.Code)));
    const bool left = IsOneOf(section, {"I", "L", "Y"});
    for (int i = 0; i < part.ItemCount; ++i) {
      const ParamItem& item = part.Items[static_cast<std::size_t>(i)];
      const int newItem = up ? NewItemUp(section, i) : NewItemDown(section, i);
      for (const ParamTextRecord& old : item.TextRecords) {
        if (old.Value != old.DefaultValue) {
          report.push_back(Expect(
              section, i, old, newItem, left, {Outcome::Carried, 0}, FindTextRecord,
              [](const ParamTextRecord& record) {
                return ParameterValue(std::u16string(TrimRight(record.Value)));
              },
              [&old](ParamTextRecord& target, int) { target.Value = old.Value; }));
        }
      }
      for (std::size_t n = 0; n < item.NumRecords.size(); ++n) {
        const ParamNumRecord& old = item.NumRecords[n];
        if (old.Value != old.DefaultValue) {
          const std::string tag(Trim(std::string_view(old.Tag)));
          const int before = n == 0 ? 0 : item.NumRecords[n - 1].Value;
          report.push_back(Expect(
              section, i, old, newItem, left, up ? Up(tag, old.Value) : Down(tag, old.Value, before),
              FindNumRecord, [](const ParamNumRecord& record) { return ParameterValue(record.Value); },
              [](ParamNumRecord& target, int value) { target.Value = static_cast<std::int16_t>(value); }));
        }
      }
    }
  }
  return report;
}

struct Change {
  const char* from;
  const char* to;
};
class RandomStores : public Conversion, public testing::WithParamInterface<int> {
protected:
  void Check(const Change& change) {
    Start(change.from);
    FillRandomly(static_cast<unsigned>(GetParam()));
    Prepare(change.to);
    const ParamStoreTable fresh = ParamStore;
    const ConversionReport expected = ExpectOver(std::string_view(change.to) == "RUG");
    const std::vector<std::int16_t> numbers = AllNumbers();
    const std::vector<std::u16string> texts = AllTexts();
    ParamStore = fresh;
    const ConversionReport report = ModelCode == "KOV" ? ConvertToKov() : ConvertToRug();
    EXPECT_EQ(numbers, AllNumbers());
    EXPECT_EQ(texts, AllTexts());
    EXPECT_GT(report.size(), 1000U);
    ASSERT_EQ(expected.size(), report.size());
    for (std::size_t n = 0; n < report.size(); ++n) {
      ASSERT_EQ(expected[n], report[n]) << n;
    }
  }
};
INSTANTIATE_TEST_SUITE_P(Seeds, RandomStores, testing::Range(0, 25));

TEST_P(RandomStores, AreTakenToRugAsTheRulesSay) {
  Check({"KOV", "RUG"});
}
TEST_P(RandomStores, AreTakenToKovAsTheRulesSay) {
  Check({"RUG", "KOV"});
}

} // namespace
} // namespace loader::test
