// What becomes of a changed number by its tag, at each border of each rule.
#include "tests/conversion/Fixture.h"

namespace loader::test {
namespace {

constexpr int OnlyTag = -1; // no other number of the item is set

struct Rule {
  const char* section;
  int item;
  const char* tag;
  int value;
  Outcome outcome;
  int newValue;
  const char* decider = ""; // the number before it
  int decided = OnlyTag;
};
void PrintTo(const Rule& rule, std::ostream* out) {
  *out << rule.section << rule.item << rule.tag << " " << rule.value;
  if (rule.decided != OnlyTag) {
    *out << " under " << rule.decider << " " << rule.decided;
  }
}

class TagRules : public Conversion, public testing::WithParamInterface<Rule> {
protected:
  void Check(const char* from) {
    const Rule& rule = GetParam();
    Start(from);
    Put(rule.section, rule.item, rule.tag, rule.value);
    if (rule.decided != OnlyTag) {
      Put(rule.section, rule.item, rule.decider, rule.decided);
    }
    const ConversionReport report = ChangeModel();
    EXPECT_EQ(rule.newValue, Stored(rule.section, rule.item, rule.tag));
    int found = 0;
    for (const ConvertedParameter& line : report) {
      if (line.tag == rule.tag) {
        ++found;
        EXPECT_EQ((ConvertedParameter{rule.section, rule.item, rule.tag, rule.outcome,
                                      static_cast<std::int16_t>(rule.value), rule.item,
                                      static_cast<std::int16_t>(rule.newValue)}),
                  line);
      }
    }
    EXPECT_EQ(1, found);
  }
};

constexpr auto Carried = Outcome::Carried;
constexpr auto Renumbered = Outcome::Renumbered;
constexpr auto Cleared = Outcome::Cleared;
constexpr auto NotCarried = Outcome::NotCarried;

std::string RuleName(const testing::TestParamInfo<Rule>& tested) {
  const Rule& rule = tested.param;
  const std::string sign = rule.value < 0 ? "Minus" : "";
  return rule.section + std::to_string(rule.item) + rule.tag + "_" + sign +
         std::to_string(std::abs(rule.value)) +
         (rule.decided == OnlyTag ? "" : "_" + std::string(rule.decider) + std::to_string(rule.decided));
}

// The number of a formula's input: kind, number.
constexpr int Input(int kind, int number) {
  return kind * 256 + number;
}

// --- KOV to RUG

class RulesToRug : public TagRules {};
TEST_P(RulesToRug, Hold) {
  Check("KOV");
}

constexpr Rule ChannelNumbersToRug[]{
    {"C", 0, "SUBC", 1, Carried, 1},
    {"C", 0, "SUBC", -3, Carried, -3},
    {"C", 17, "SUBC", 18, Carried, 18},
    {"C", 17, "SUBC", 19, Renumbered, 37},
    {"C", 17, "SUBC", 30, Renumbered, 48},
    {"C", 17, "SUBC", 31, Renumbered, 49},
    {"C", 17, "SUBC", 32749, Renumbered, 32767},
    {"C", 17, "SUBC", 32750, NotCarried, 0}, // beyond 16 bits: the default
    {"G", 0, "GC01", 18, Carried, 18},
    {"G", 0, "GC01", 19, Renumbered, 37},
    {"G", 0, "GC02", 30, Renumbered, 48},
    {"G", 0, "GC03", 30, Renumbered, 48},
    {"G", 0, "GC04", 30, Renumbered, 48},
    {"G", 0, "GC05", 30, Renumbered, 48},
    {"G", 0, "GC06", 30, Renumbered, 48},
    {"G", 0, "GC07", 30, Renumbered, 48},
    {"G", 0, "GC08", 30, Renumbered, 48},
    {"G", 0, "GC09", -32768, Carried, -32768},
    {"G", 3, "GC10", 30, Renumbered, 48},
    {"C", 0, "OTCH", 17, Carried, 17},
    {"C", 0, "OTCH", 18, Renumbered, 36},
    {"C", 0, "OTCH", 29, Renumbered, 47},
    {"C", 0, "OTCH", 32750, NotCarried, 0},
};
INSTANTIATE_TEST_SUITE_P(Channels, RulesToRug, testing::ValuesIn(ChannelNumbersToRug), RuleName);

// Whatever the timing is.
constexpr Rule TriggersToRug[]{
    {"M", 0, "MTM2", 17, Carried, 17},
    {"M", 0, "MTM2", 18, Renumbered, 36},
    {"M", 9, "MTM2", 29, Renumbered, 47},
    {"M", 0, "MTM2", 32749, Renumbered, 32767},
    {"M", 0, "MTM2", 32750, NotCarried, 0},
    {"M", 0, "MTM2", 18, Renumbered, 36, "MTM1", 1},
    {"M", 0, "MTM2", 18, Renumbered, 36, "MTM1", 2},
    {"M", 0, "MTM2", 17, Carried, 17, "MTM1", 3},
    {"M", 0, "MTM2", 18, Renumbered, 36, "MTM1", 3},
    {"M", 0, "MTM2", 18, Renumbered, 36, "MTM1", 4},
    {"X", 0, "ETG1", 17, Carried, 17},
    {"X", 0, "ETG1", 18, Renumbered, 36},
    {"X", 7, "ETG1", 29, Renumbered, 47},
    {"X", 7, "ETG1", 18, Renumbered, 36, "ETRG", 1},
    {"X", 7, "ETG1", 18, Renumbered, 36, "ETRG", 4},
    {"X", 7, "ETG1", 18, Renumbered, 36, "ETRG", 5},
    {"X", 7, "ETG1", 32750, NotCarried, 0},
};
INSTANTIATE_TEST_SUITE_P(Triggers, RulesToRug, testing::ValuesIn(TriggersToRug), RuleName);

constexpr Rule ExternalsToRug[]{
    {"C", 0, "SDIG", -1, Carried, -1},
    {"C", 0, "SDIG", 9, Carried, 9},
    {"C", 0, "SDIG", 10, Renumbered, 16},
    {"C", 0, "SDIG", 81, Renumbered, 87},
    {"C", 0, "SDIG", 82, Renumbered, 160},
    {"C", 0, "SDIG", 129, Renumbered, 207},
    {"C", 0, "SDIG", 32689, Renumbered, 32767},
    {"C", 0, "SDIG", 32690, NotCarried, 0},
    {"E", 0, "TEXT", 9, Carried, 9},
    {"E", 0, "TEXT", 10, Renumbered, 16},
    {"E", 0, "TEXT", 81, Renumbered, 87},
    {"E", 0, "TEXT", 82, Renumbered, 160},
};
INSTANTIATE_TEST_SUITE_P(ExternalInputs, RulesToRug, testing::ValuesIn(ExternalsToRug), RuleName);

constexpr Rule FormulasToRug[]{
    {"O", 0, "S111", Input(0, 17), Carried, Input(0, 17)},
    {"O", 0, "S111", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 11, "S111", Input(0, 29), Renumbered, Input(0, 47)},
    {"O", 0, "S111", Input(1, 17), Carried, Input(1, 17)},
    {"O", 0, "S111", Input(1, 18), Renumbered, Input(1, 36)},
    {"O", 0, "S111", Input(2, 18), Carried, Input(2, 18)},
    {"O", 0, "S111", Input(3, 18), Carried, Input(3, 18)},
    {"O", 0, "S111", Input(4, 18), Carried, Input(4, 18)},
    {"O", 0, "S111", Input(5, 18), Carried, Input(5, 18)},
    {"O", 0, "S111", -1, Carried, -1}, // kind 255
    {"O", 0, "S111", Input(0, 237), Renumbered, Input(0, 255)},
    // The number would run over into the kind, and name something else.
    {"O", 0, "S111", Input(0, 238), NotCarried, 0},
    {"O", 0, "S111", Input(1, 255), NotCarried, 0},
    {"O", 0, "S112", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S113", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S121", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S122", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S123", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S131", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S132", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S133", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S141", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S142", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S143", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S211", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S212", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S213", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S221", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S222", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S223", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S231", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S232", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S233", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S241", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 0, "S242", Input(0, 18), Renumbered, Input(0, 36)},
    {"O", 11, "S243", Input(1, 29), Renumbered, Input(1, 47)},
    {"O", 0, "OP11", Input(13, 18), Carried, Input(13, 18)}, // function and rule, no reference
};
INSTANTIATE_TEST_SUITE_P(Formulas, RulesToRug, testing::ValuesIn(FormulasToRug), RuleName);

// Settings of a KOV only; and what names a channel and is carried as it is all the same.
constexpr Rule OthersToRug[]{
    {"C", 0, "SRIN", 5, NotCarried, 0},       {"C", 0, "TAIS", 1, NotCarried, 0},
    {"H", 0, "TBKC", 1, NotCarried, 0},       {"H", 0, "HBKC", 1, NotCarried, 0},
    {"T", 0, "TMCH", 19, Carried, 19},        {"A", 0, "A1HC", 19, Carried, 19},
    {"A", 0, "A1RL", 30, Carried, 30},        {"H", 0, "CFFL", 29, Carried, 29},
    {"H", 0, "BAAL", 29, Carried, 29},        {"D", 15, "DIKI", 5, Carried, 5},
    {"C", 17, "MMAX", 32767, Carried, 32767}, {"C", 17, "TYPE", 40, Carried, 40},
    {"M", 0, "MTM3", 3, Carried, 3},          {"X", 0, "ETG2", 23, Carried, 23},
};
INSTANTIATE_TEST_SUITE_P(Others, RulesToRug, testing::ValuesIn(OthersToRug), RuleName);

// --- RUG to KOV

class RulesToKov : public TagRules {};
TEST_P(RulesToKov, Hold) {
  Check("RUG");
}

constexpr Rule ChannelNumbersToKov[]{
    {"C", 0, "SUBC", -1, Carried, -1},     {"C", 0, "SUBC", 18, Carried, 18},
    {"C", 0, "SUBC", 19, Cleared, 0},      {"C", 0, "SUBC", 36, Cleared, 0},
    {"C", 17, "SUBC", 37, Renumbered, 19}, {"C", 17, "SUBC", 48, Renumbered, 30},
    {"C", 17, "SUBC", 49, Cleared, 0},     {"C", 17, "SUBC", 32767, Cleared, 0},
    {"G", 0, "GC01", 18, Carried, 18},     {"G", 0, "GC01", 19, Cleared, 0},
    {"G", 0, "GC02", 36, Cleared, 0},      {"G", 0, "GC03", 37, Renumbered, 19},
    {"G", 0, "GC04", 37, Renumbered, 19},  {"G", 0, "GC05", 37, Renumbered, 19},
    {"G", 0, "GC06", 37, Renumbered, 19},  {"G", 0, "GC07", 37, Renumbered, 19},
    {"G", 0, "GC08", 48, Renumbered, 30},  {"G", 0, "GC09", 49, Cleared, 0},
    {"G", 3, "GC10", 37, Renumbered, 19},  {"C", 0, "OTCH", 17, Carried, 17},
    {"C", 0, "OTCH", 18, Cleared, 0},      {"C", 0, "OTCH", 35, Cleared, 0},
    {"C", 0, "OTCH", 36, Renumbered, 18},  {"C", 0, "OTCH", 47, Renumbered, 29},
    {"C", 0, "OTCH", 48, Cleared, 0},      {"C", 0, "OTCH", 71, Cleared, 0},
};
INSTANTIATE_TEST_SUITE_P(Channels, RulesToKov, testing::ValuesIn(ChannelNumbersToKov), RuleName);

constexpr Rule ExternalsToKov[]{
    {"C", 0, "SDIG", -1, Carried, -1},     {"C", 0, "SDIG", 9, Carried, 9},
    {"C", 0, "SDIG", 10, Cleared, 0},      {"C", 0, "SDIG", 15, Cleared, 0},
    {"C", 0, "SDIG", 16, Renumbered, 10},  {"C", 0, "SDIG", 87, Renumbered, 81},
    {"C", 0, "SDIG", 88, Cleared, 0},      {"C", 0, "SDIG", 159, Cleared, 0},
    {"C", 0, "SDIG", 160, Renumbered, 82}, {"C", 0, "SDIG", 207, Renumbered, 129},
    {"C", 0, "SDIG", 208, Cleared, 0},     {"C", 0, "SDIG", 303, Cleared, 0},
    {"E", 0, "TEXT", 9, Carried, 9},       {"E", 0, "TEXT", 10, Cleared, 0},
    {"E", 0, "TEXT", 16, Renumbered, 10},  {"E", 0, "TEXT", 88, Cleared, 0},
    {"E", 0, "TEXT", 160, Renumbered, 82}, {"E", 0, "TEXT", 208, Cleared, 0},
};
INSTANTIATE_TEST_SUITE_P(ExternalInputs, RulesToKov, testing::ValuesIn(ExternalsToKov), RuleName);

constexpr Rule RelaysToKov[]{
    {"A", 0, "A1RL", 28, Carried, 28}, {"A", 0, "A1RL", 29, Cleared, 0},   {"A", 0, "A1RL", 30, Cleared, 0},
    {"A", 0, "A2RL", 28, Carried, 28}, {"A", 0, "A2RL", 29, Cleared, 0},   {"A", 0, "A3RL", 28, Carried, 28},
    {"A", 0, "A3RL", 29, Cleared, 0},  {"A", 17, "A4RL", 28, Carried, 28}, {"A", 17, "A4RL", 29, Cleared, 0},
    {"H", 0, "CFFL", 28, Carried, 28}, {"H", 0, "CFFL", 29, Cleared, 0},   {"H", 0, "BAAL", 28, Carried, 28},
    {"H", 0, "BAAL", 29, Cleared, 0},  {"H", 0, "BAAL", -5, Carried, -5},
};
INSTANTIATE_TEST_SUITE_P(Relays, RulesToKov, testing::ValuesIn(RelaysToKov), RuleName);

// By the timing before it: 1 and 2 are of a DI, 3 and 4 of an alarm.
constexpr Rule TriggersToKov[]{
    {"M", 0, "MTM2", 9, Carried, 9, "MTM1", 1},
    {"M", 0, "MTM2", 10, Cleared, 0, "MTM1", 1},
    {"M", 0, "MTM2", 36, Cleared, 0, "MTM1", 1},
    {"M", 0, "MTM2", 9, Carried, 9, "MTM1", 2},
    {"M", 0, "MTM2", 10, Cleared, 0, "MTM1", 2},
    {"M", 0, "MTM2", 10, Carried, 10, "MTM1", 3},
    {"M", 0, "MTM2", 17, Carried, 17, "MTM1", 3},
    {"M", 0, "MTM2", 18, Cleared, 0, "MTM1", 3},
    {"M", 0, "MTM2", 35, Cleared, 0, "MTM1", 3},
    {"M", 0, "MTM2", 36, Renumbered, 18, "MTM1", 3},
    {"M", 0, "MTM2", 47, Renumbered, 29, "MTM1", 3},
    {"M", 0, "MTM2", 48, Cleared, 0, "MTM1", 3},
    {"M", 9, "MTM2", 17, Carried, 17, "MTM1", 4},
    {"M", 9, "MTM2", 18, Cleared, 0, "MTM1", 4},
    {"M", 9, "MTM2", 47, Renumbered, 29, "MTM1", 4},
    {"M", 9, "MTM2", 48, Cleared, 0, "MTM1", 4},
    {"M", 0, "MTM2", 72, Carried, 72},
    {"M", 0, "MTM2", 18, Carried, 18, "MTM1", 5},
    {"X", 0, "ETG1", 9, Carried, 9, "ETRG", 1},
    {"X", 0, "ETG1", 10, Cleared, 0, "ETRG", 1},
    {"X", 0, "ETG1", 9, Carried, 9, "ETRG", 2},
    {"X", 0, "ETG1", 10, Cleared, 0, "ETRG", 2},
    {"X", 0, "ETG1", 17, Carried, 17, "ETRG", 3},
    {"X", 0, "ETG1", 18, Cleared, 0, "ETRG", 3},
    {"X", 0, "ETG1", 35, Cleared, 0, "ETRG", 3},
    {"X", 0, "ETG1", 36, Renumbered, 18, "ETRG", 3},
    {"X", 0, "ETG1", 47, Renumbered, 29, "ETRG", 4},
    {"X", 0, "ETG1", 48, Cleared, 0, "ETRG", 4},
    {"X", 0, "ETG1", 71, Carried, 71},
    {"X", 7, "ETG1", 71, Carried, 71, "ETRG", 5},
    {"X", 7, "ETG1", 18, Carried, 18, "ETRG", 6},
};
INSTANTIATE_TEST_SUITE_P(Triggers, RulesToKov, testing::ValuesIn(TriggersToKov), RuleName);

// The number is cleared, the kind stays.
constexpr Rule FormulasToKov[]{
    {"O", 0, "S111", Input(0, 17), Carried, Input(0, 17)},
    {"O", 0, "S111", Input(0, 18), Cleared, 0},
    {"O", 0, "S111", Input(0, 35), Cleared, 0},
    {"O", 0, "S111", Input(0, 36), Renumbered, Input(0, 18)},
    {"O", 11, "S111", Input(0, 47), Renumbered, Input(0, 29)},
    {"O", 0, "S111", Input(0, 48), Cleared, 0},
    {"O", 0, "S111", Input(1, 17), Carried, Input(1, 17)},
    {"O", 0, "S111", Input(1, 18), Cleared, Input(1, 0)},
    {"O", 0, "S111", Input(1, 35), Cleared, Input(1, 0)},
    {"O", 0, "S111", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S111", Input(1, 47), Renumbered, Input(1, 29)},
    {"O", 0, "S111", Input(1, 48), Cleared, Input(1, 0)},
    {"O", 0, "S111", Input(1, 255), Cleared, Input(1, 0)},
    {"O", 0, "S111", Input(2, 9), Carried, Input(2, 9)},
    {"O", 0, "S111", Input(2, 10), Cleared, Input(2, 0)},
    {"O", 0, "S111", Input(3, 11), Carried, Input(3, 11)},
    {"O", 0, "S111", Input(3, 12), Cleared, Input(3, 0)},
    {"O", 0, "S111", Input(4, 19), Carried, Input(4, 19)},
    {"O", 0, "S111", Input(4, 20), Cleared, Input(4, 0)},
    {"O", 0, "S111", Input(5, 255), Carried, Input(5, 255)},
    {"O", 0, "S111", -1, Carried, -1},
    {"O", 0, "S112", Input(0, 18), Cleared, 0},
    {"O", 0, "S113", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S121", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S122", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S123", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S131", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S132", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S133", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S141", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S142", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S143", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S211", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S212", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S213", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S221", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S222", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S223", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S231", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S232", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S233", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S241", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 0, "S242", Input(1, 36), Renumbered, Input(1, 18)},
    {"O", 11, "S243", Input(4, 20), Cleared, Input(4, 0)},
};
INSTANTIATE_TEST_SUITE_P(Formulas, RulesToKov, testing::ValuesIn(FormulasToKov), RuleName);

constexpr Rule OthersToKov[]{
    {"D", 0, "DIKI", 5, Carried, 5},
    {"D", 15, "DIKI", 5, Carried, 5},
    {"T", 0, "TMCH", 37, Carried, 37},
    {"A", 0, "A1HC", 37, Carried, 37},
    {"C", 0, "SRIN", 300, Carried, 300},
    {"C", 0, "TAIS", 1, Carried, 1},
    {"H", 0, "TBKC", 1, Carried, 1},
    {"H", 0, "HBKC", 1, Carried, 1},
    {"N", 19, "CONS", -32767, Carried, -32767},
    {"M", 0, "MTM3", 3, Carried, 3},
};
INSTANTIATE_TEST_SUITE_P(Others, RulesToKov, testing::ValuesIn(OthersToKov), RuleName);

// --- Apart from the tables

TEST_F(Conversion, ATimingWithoutARecordBeforeItDecidesNothing) {
  Start("RUG");
  DropTag("M", "MCOR");
  DropTag("M", "MITI");
  DropTag("M", "MTM1");
  Put("M", 0, "MTM2", 72);
  ChangeModel();
  EXPECT_EQ(72, Stored("M", 0, "MTM2"));
}

TEST_F(Conversion, TheTimingIsTheRecordBeforeWhateverItsTag) {
  Start("RUG");
  DropTag("M", "MTM1");
  Put("M", 0, "MITI", 1); // stands before MTM2 now
  Put("M", 0, "MTM2", 10);
  ChangeModel();
  EXPECT_EQ(0, Stored("M", 0, "MTM2"));
}

// What equals its default is no change of the user: the new model keeps its own default.
TEST_F(Conversion, AValueAtItsDefaultIsNotCarriedEvenWhereTheDefaultsDiffer) {
  Start("KOV");
  NumRecord("C", 0, "MMAX").DefaultValue = 7;
  Put("C", 0, "MMAX", 7);
  const ConversionReport report = ChangeModel();
  EXPECT_EQ(5000, Stored("C", 0, "MMAX"));
  EXPECT_TRUE(report.empty());
}

TEST_F(Conversion, OnlyTheValueIsWritten) {
  Start("KOV");
  Put("C", 0, "MMAX", 7);
  NumRecord("C", 0, "MMAX").ReadValue = 9;
  PutText("C", 0, "TAG", "MINE");
  ChangeModel();
  EXPECT_EQ(7, NumRecord("C", 0, "MMAX").Value);
  EXPECT_EQ(5000, NumRecord("C", 0, "MMAX").ReadValue);
  EXPECT_EQ(5000, NumRecord("C", 0, "MMAX").DefaultValue);
  EXPECT_EQ(FixedText(u"MINE"), TextRecord("C", 0, "TAG").Value);
  EXPECT_EQ(FixedText(u"CH 01"), TextRecord("C", 0, "TAG").ReadValue);
  EXPECT_EQ(FixedText(u"CH 01"), TextRecord("C", 0, "TAG").DefaultValue);
}

} // namespace
} // namespace loader::test
