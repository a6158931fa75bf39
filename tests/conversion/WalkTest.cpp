// Which items of which sections are walked, what goes where, and what the report says of the rest.

#include <algorithm>

#include "tests/conversion/Fixture.h"

namespace loader::test {
namespace {

constexpr int NoItem = -1;
constexpr auto Carried = Outcome::Carried;
constexpr auto Dropped = Outcome::Dropped;
constexpr auto NotCarried = Outcome::NotCarried;

// One number or text of an item, and where it goes.
struct ItemCase {
  const char* from;
  const char* section;
  int item;
  const char* tag;
  bool text;
  Outcome outcome;
  int newItem; // NoItem: the new model does not have it
};
void PrintTo(const ItemCase& tested, std::ostream* out) {
  *out << tested.from << " " << tested.section << tested.item << tested.tag;
}

class Walked : public Conversion, public testing::WithParamInterface<ItemCase> {};
TEST_P(Walked, GoesToItsItemOrNowhere) {
  const ItemCase& tested = GetParam();
  constexpr std::int16_t Number = 3;
  const std::u16string Text = u"mine";
  Start(tested.from);
  if (tested.text) {
    PutText(tested.section, tested.item, tested.tag, "mine");
  } else {
    Put(tested.section, tested.item, tested.tag, Number);
  }
  Prepare(std::string_view(tested.from) == "KOV" ? "RUG" : "KOV");
  const ParamStoreTable fresh = ParamStore;
  const std::vector<std::int16_t> numbers = AllNumbers();
  const std::vector<std::u16string> texts = AllTexts();

  const ConversionReport report = ModelCode == "KOV" ? ConvertToKov() : ConvertToRug();

  ASSERT_EQ(1U, report.size());
  const ConvertedParameter& line = report.front();
  EXPECT_EQ(tested.section, line.section);
  EXPECT_EQ(tested.item, line.item);
  EXPECT_EQ(tested.tag, line.tag);
  EXPECT_EQ(tested.outcome, line.outcome);
  EXPECT_EQ(tested.text ? ParameterValue(Text) : ParameterValue(Number), line.oldValue);
  EXPECT_EQ(tested.newItem == NoItem ? std::nullopt : std::optional(tested.newItem), line.newItem);
  EXPECT_EQ(tested.newItem != NoItem, line.newValue.has_value());
  if (tested.outcome == Carried) {
    EXPECT_EQ(line.oldValue, line.newValue);
    if (tested.text) {
      EXPECT_EQ("mine", TrimmedText(tested.section, tested.newItem, tested.tag));
      PutText(tested.section, tested.newItem, tested.tag,
              ToUtf8(TextRecord(tested.section, tested.newItem, tested.tag).DefaultValue));
    } else {
      EXPECT_EQ(Number, Stored(tested.section, tested.newItem, tested.tag));
      ParamNumRecord& record = NumRecord(tested.section, tested.newItem, tested.tag);
      record.Value = record.DefaultValue;
    }
  }
  EXPECT_EQ(numbers, AllNumbers()) << "nothing else";
  EXPECT_EQ(texts, AllTexts()) << "nothing else";
}

constexpr ItemCase ToRug[]{
    {"KOV", "C", 0, "FILT", false, Carried, 0},      {"KOV", "C", 17, "FILT", false, Carried, 17},
    {"KOV", "C", 18, "FILT", false, Carried, 36},    {"KOV", "C", 29, "FILT", false, Carried, 47},
    {"KOV", "C", 0, "TAG", true, Carried, 0},        {"KOV", "C", 17, "TAG2", true, Carried, 17},
    {"KOV", "C", 18, "TAG", true, Carried, 36},      {"KOV", "C", 29, "STAG", true, Carried, 47},
    {"KOV", "A", 17, "A1VL", false, Carried, 17},    {"KOV", "A", 18, "A1VL", false, Carried, 36},
    {"KOV", "A", 29, "A1VL", false, Carried, 47},    {"KOV", "G", 3, "GC01", false, Carried, 3},
    {"KOV", "G", 3, "GNEM", true, Carried, 3},       {"KOV", "T", 3, "TBUN", false, Carried, 3},
    {"KOV", "B", 3, "BHOU", false, Carried, 3},      {"KOV", "H", 0, "ALMH", false, Carried, 0},
    {"KOV", "M", 9, "MCOR", false, Carried, 9},      {"KOV", "M", 9, "MESS", true, Carried, 9},
    {"KOV", "U", 11, "UNIT", true, Carried, 11},     {"KOV", "D", 15, "DIKI", false, Carried, 15},
    {"KOV", "E", 0, "TSTR", false, Carried, 0},      {"KOV", "N", 19, "CONS", false, Carried, 19},
    {"KOV", "O", 11, "OP43", false, Carried, 11},    {"KOV", "J", 0, "IPA4", false, Carried, 0},
    {"KOV", "J", 0, "SDAD", true, Carried, 0},       {"KOV", "K", 7, "LVEL", false, Carried, 7},
    {"KOV", "K", 7, "PASS", true, Carried, 7},       {"KOV", "X", 7, "EADD", false, Carried, 7},
    {"KOV", "X", 7, "ECM1", true, Carried, 7},       {"KOV", "P", 0, "PVER", true, Carried, 0},
    {"KOV", "Z", 0, "TSIG", false, Carried, 0},      {"KOV", "F", 0, "FIX", false, Carried, 0},
    {"KOV", "S", 0, "SYS1", false, Carried, 0},      {"KOV", "I", 0, "DCOL", false, NotCarried, 0},
    {"KOV", "I", 9, "DRMX", false, NotCarried, 9},   {"KOV", "L", 0, "RECY", false, NotCarried, 0},
    {"KOV", "Y", 11, "SLST", false, NotCarried, 11},
};
constexpr ItemCase ToKov[]{
    {"RUG", "C", 0, "FILT", false, Carried, 0},          {"RUG", "C", 17, "FILT", false, Carried, 17},
    {"RUG", "C", 18, "FILT", false, Dropped, NoItem},    {"RUG", "C", 35, "FILT", false, Dropped, NoItem},
    {"RUG", "C", 36, "FILT", false, Carried, 18},        {"RUG", "C", 47, "FILT", false, Carried, 29},
    {"RUG", "C", 48, "FILT", false, Dropped, NoItem},    {"RUG", "C", 71, "FILT", false, Dropped, NoItem},
    {"RUG", "C", 17, "TAG", true, Carried, 17},          {"RUG", "C", 18, "TAG", true, Dropped, NoItem},
    {"RUG", "C", 35, "TAG", true, Dropped, NoItem},      {"RUG", "C", 36, "TAG", true, Carried, 18},
    {"RUG", "C", 47, "TAG", true, Carried, 29},          {"RUG", "C", 48, "TAG", true, Dropped, NoItem},
    {"RUG", "A", 17, "A1VL", false, Carried, 17},        {"RUG", "A", 18, "A1VL", false, Dropped, NoItem},
    {"RUG", "A", 35, "A1VL", false, Dropped, NoItem},    {"RUG", "A", 36, "A1VL", false, Carried, 18},
    {"RUG", "A", 47, "A1VL", false, Carried, 29},        {"RUG", "A", 48, "A1VL", false, Dropped, NoItem},
    {"RUG", "O", 11, "OP11", false, Carried, 11},        {"RUG", "O", 12, "OP11", false, Dropped, NoItem},
    {"RUG", "O", 35, "OP11", false, Dropped, NoItem},    {"RUG", "N", 19, "CONS", false, Carried, 19},
    {"RUG", "N", 20, "CONS", false, Dropped, NoItem},    {"RUG", "N", 59, "CONS", false, Dropped, NoItem},
    {"RUG", "G", 3, "GC01", false, Carried, 3},          {"RUG", "G", 4, "GC01", false, Dropped, NoItem},
    {"RUG", "G", 7, "GC01", false, Dropped, NoItem},     {"RUG", "G", 3, "GNEM", true, Carried, 3},
    {"RUG", "G", 4, "GNEM", true, Dropped, NoItem},      {"RUG", "T", 3, "TBUN", false, Carried, 3},
    {"RUG", "T", 4, "TBUN", false, Dropped, NoItem},     {"RUG", "B", 3, "BHOU", false, Carried, 3},
    {"RUG", "B", 4, "BHOU", false, Dropped, NoItem},     {"RUG", "H", 0, "ALMH", false, Carried, 0},
    {"RUG", "M", 9, "MCOR", false, Carried, 9},          {"RUG", "M", 9, "MESS", true, Carried, 9},
    {"RUG", "U", 11, "UNIT", true, Carried, 11},         {"RUG", "D", 15, "DIKI", false, Carried, 15},
    {"RUG", "E", 0, "TSTR", false, Carried, 0},          {"RUG", "J", 0, "IPA4", false, Carried, 0},
    {"RUG", "J", 0, "RAD8", true, Carried, 0},           {"RUG", "K", 7, "LVEL", false, Carried, 7},
    {"RUG", "K", 7, "UNAM", true, Carried, 7},           {"RUG", "X", 7, "EADD", false, Carried, 7},
    {"RUG", "X", 7, "ETTL", true, Carried, 7},           {"RUG", "P", 0, "PVER", true, Carried, 0},
    {"RUG", "Z", 0, "TSIG", false, Carried, 0},          {"RUG", "F", 0, "FIX", false, Carried, 0},
    {"RUG", "S", 0, "SYS1", false, Carried, 0},          {"RUG", "I", 9, "DCOL", false, NotCarried, 9},
    {"RUG", "I", 10, "DCOL", false, NotCarried, NoItem}, {"RUG", "L", 0, "RECY", false, NotCarried, 0},
    {"RUG", "Y", 11, "SLST", false, NotCarried, 11},     {"RUG", "Y", 12, "SLST", false, NotCarried, NoItem},
};
std::string ItemName(const testing::TestParamInfo<ItemCase>& tested) {
  return tested.param.section + std::to_string(tested.param.item) + tested.param.tag;
}
INSTANTIATE_TEST_SUITE_P(ToRug, Walked, testing::ValuesIn(ToRug), ItemName);
INSTANTIATE_TEST_SUITE_P(ToKov, Walked, testing::ValuesIn(ToKov), ItemName);

class FreshSetUp : public Conversion, public testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Models, FreshSetUp, testing::Values("KOV", "RUG"));
TEST_P(FreshSetUp, BecomesThePlainDefaultsOfTheOtherModel) {
  Start(GetParam());
  Prepare(ModelCode == "KOV" ? "RUG" : "KOV");
  const std::vector<std::int16_t> numbers = AllNumbers();
  const std::vector<std::u16string> texts = AllTexts();
  EXPECT_TRUE((ModelCode == "KOV" ? ConvertToKov() : ConvertToRug()).empty());
  EXPECT_EQ(numbers, AllNumbers());
  EXPECT_EQ(texts, AllTexts());
}

TEST_F(Conversion, TheOldSetUpStaysAsItWas) {
  Start("KOV");
  Put("C", 18, "SUBC", 20);
  PutText("C", 18, "TAG", "MINE");
  const std::vector<std::int16_t> numbers = AllNumbers();
  const std::vector<std::u16string> texts = AllTexts();
  ChangeModel();
  std::swap(ParamStore, ParamStoreBackup);
  EXPECT_EQ(numbers, AllNumbers());
  EXPECT_EQ(texts, AllTexts());
}

// A model number above the list is a RUG as well: its list then offers the change from RUG to RUG.
TEST_F(Conversion, FromRugToRugPassesOverItemsOutsideTheSection) {
  Start("RUG");
  Put("C", 17, "FILT", 1);
  Put("C", 18, "FILT", 2);
  Put("C", 53, "FILT", 3);
  Put("C", 54, "FILT", 4);
  Put("C", 71, "FILT", 5);
  const ConversionReport report = ChangeTo("RUG");
  EXPECT_EQ(1, Stored("C", 17, "FILT"));
  EXPECT_EQ(2, Stored("C", 36, "FILT"));
  EXPECT_EQ(3, Stored("C", 71, "FILT"));
  EXPECT_EQ(0, Stored("C", 53, "FILT"));
  ASSERT_EQ(5U, report.size());
  EXPECT_EQ(Dropped, report[3].outcome);
  EXPECT_EQ(Dropped, report[4].outcome);
  EXPECT_FALSE(report[4].newItem.has_value());
}

// Dropped means dropped: not even an item of the same number takes it.
TEST_F(Conversion, ADroppedItemGoesNowhereAlsoWhereTheNewSetUpHasRoom) {
  struct Item {
    const char* section;
    int item;
    const char* tag;
  };
  constexpr Item Items[]{{"C", 18, "FILT"}, {"C", 35, "FILT"}, {"C", 48, "FILT"}, {"C", 71, "FILT"},
                         {"A", 18, "A1VL"}, {"A", 48, "A1VL"}, {"O", 12, "OP11"}, {"O", 35, "OP11"},
                         {"N", 20, "CONS"}, {"N", 59, "CONS"}, {"G", 4, "GC01"},  {"G", 7, "GC01"},
                         {"T", 4, "TBUN"},  {"T", 7, "TBUN"},  {"B", 4, "BHOU"},  {"B", 7, "BHOU"}};
  Start("RUG");
  for (const Item& item : Items) {
    Put(item.section, item.item, item.tag, 1);
  }
  Prepare("RUG");
  const std::vector<std::int16_t> numbers = AllNumbers();
  const ConversionReport report = ConvertToKov();
  EXPECT_EQ(numbers, AllNumbers());
  ASSERT_EQ(std::size(Items), report.size());
  for (const ConvertedParameter& line : report) {
    EXPECT_EQ(Dropped, line.outcome);
    EXPECT_FALSE(line.newItem.has_value());
    EXPECT_FALSE(line.newValue.has_value());
  }
}

// --- Stores that do not fit together: an edited initial settings file

TEST_F(Conversion, ATagThatTheNewModelDoesNotHaveIsPassedOver) {
  Start("KOV");
  Put("C", 0, "FILT", 5);
  PutText("C", 0, "TAG2", "SECOND");
  Put("C", 0, "POIN", 3);
  Prepare("RUG");
  DropTag("C", "FILT");
  DropTag("C", "TAG2");
  const ConversionReport report = ConvertToRug();
  EXPECT_EQ(3, Stored("C", 0, "POIN"));
  EXPECT_EQ((ConversionReport{{"C", 0, "TAG2", NotCarried, u"SECOND", 0, std::nullopt},
                              {"C", 0, "FILT", NotCarried, std::int16_t{5}, 0, std::nullopt},
                              {"C", 0, "POIN", Carried, std::int16_t{3}, 0, std::int16_t{3}}}),
            report);
}

TEST_F(Conversion, ASectionThatTheNewModelDoesNotHaveIsDropped) {
  Start("RUG");
  Put("M", 0, "MCOR", 5);
  PutText("M", 0, "MESS", "HELLO");
  Prepare("KOV");
  DropSection("M");
  EXPECT_EQ((ConversionReport{{"M", 0, "MESS", Dropped, u"HELLO", std::nullopt, std::nullopt},
                              {"M", 0, "MCOR", Dropped, std::int16_t{5}, std::nullopt, std::nullopt}}),
            ConvertToKov());
}

// The place of a record in its item is not the same in all files.
TEST_F(Conversion, TagsAreLookedUpAndNotCounted) {
  Start("KOV");
  Put("H", 0, "ALMH", 55);
  Prepare("RUG");
  ParamItem& item = ParamStore[gFFindSection("H")].Items.front();
  std::reverse(item.NumRecords.begin(), item.NumRecords.end());
  ConvertToRug();
  EXPECT_EQ(55, Stored("H", 0, "ALMH"));
}

TEST_F(Conversion, TextsOfASectionWhoseNumbersAreCarriedAreReportedAsLeft) {
  Start("KOV");
  ParamTextRecord added = TextRecord("U", 0, "UNIT");
  SetText(added, u"odd", SlotValue);
  ParamStore[gFFindSection("Z")].Items.front().TextRecords.push_back(added);
  ParamNumRecord number = NumRecord("Z", 0, "TOTA");
  number.Value = 1;
  ParamStore[gFFindSection("U")].Items.front().NumRecords.push_back(number);
  EXPECT_EQ((ConversionReport{
                {"U", 0, "TOTA", NotCarried, std::int16_t{1}, 0, std::nullopt},
                {"Z", 0, "UNIT", NotCarried, u"odd", 0, std::nullopt},
            }),
            ChangeModel());
}

TEST_F(Conversion, AnEmptyOldStoreCarriesNothing) {
  Start("KOV");
  ParamStoreBackup.clear();
  EXPECT_TRUE(ConvertToKov().empty());
  EXPECT_TRUE(ConvertToRug().empty());
}

// --- The steps on their own

TEST_F(Conversion, AStepForAnItemThatDoesNotExistDoesNothing) {
  Start("KOV");
  ParamStoreBackup = ParamStore;
  ConversionReport report;
  for (const int section : {-1, 0, 999}) {
    for (const int item : {-1, 999}) {
      CopyTextRecords(section, item, 0, 'C', report);
      CarryNumRecordsUp(section, item, 0, 'C', report);
      CarryNumRecordsDown(section, item, 0, 'C', report);
    }
  }
  EXPECT_TRUE(report.empty());
}

TEST_F(Conversion, DigitalInputKindsGoToTheSameItemWhateverTheOffset) {
  Start("RUG");
  Put("D", 2, "DIKI", 5);
  const int section = gFFindSection("D");
  Prepare("KOV");
  ConversionReport report;
  CarryNumRecordsDown(section, 2, 3, 'D', report);
  EXPECT_EQ(5, Stored("D", 2, "DIKI"));
  EXPECT_EQ(0, Stored("D", 5, "DIKI"));
  CarryNumRecordsUp(section, 2, 3, 'D', report);
  EXPECT_EQ(5, Stored("D", 5, "DIKI"));
}

TEST_F(Conversion, TheStepsWriteToTheSectionOfTheirLetter) {
  Start("KOV");
  PutText("C", 1, "TAG", "MINE");
  Put("C", 1, "FILT", 5);
  const int section = gFFindSection("C");
  Prepare("RUG");
  ConversionReport report;
  CopyTextRecords(section, 1, 10, 'C', report);
  CarryNumRecordsUp(section, 1, 11, 'C', report);
  EXPECT_EQ("MINE", TrimmedText("C", 11, "TAG"));
  EXPECT_EQ(5, Stored("C", 12, "FILT"));
  CarryNumRecordsUp(section, 1, 0, 'G', report); // has no such tag
  ASSERT_EQ(3U, report.size());
  EXPECT_EQ(NotCarried, report[2].outcome);
}

} // namespace
} // namespace loader::test
