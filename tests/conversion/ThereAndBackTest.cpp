// A change of model and back, and the set-up of a plant on the way.
#include <array>
#include <random>

#include "tests/conversion/Fixture.h"

namespace loader::test {
namespace {

constexpr int ReferenceSeeds = 40;

bool IsKovOnly(std::string_view tag) {
  return tag == "SRIN" || tag == "TAIS" || tag == "TBKC" || tag == "HBKC";
}
bool IsNotConverted(std::string_view section) {
  return section == "I" || section == "L" || section == "Y";
}

int Within(std::mt19937& random, int first, int last) {
  return first + static_cast<int>(random() % static_cast<unsigned>(last - first + 1));
}

// A number that the KOV's screens can give: within its limits, and of a trigger or a formula what its lists
// offer.
int SensibleValue(std::mt19937& random, std::string_view section, std::string_view tag,
                  const ParamNumRecord& record) {
  if (tag == "MTM2" || tag == "ETG1") {
    const auto& before = (&record)[-1];
    const bool alarm = before.Value == 3 || before.Value == 4;
    return Within(random, 0, alarm ? 29 : 9);
  }
  if (section == "O" && tag.starts_with("S")) {
    constexpr std::array<int, 6> Counts{30, 30, 10, 12, 20, 3};
    const int kind = Within(random, 0, 5);
    return kind * 256 + Within(random, 0, Counts[static_cast<std::size_t>(kind)] - 1);
  }
  return Within(random, record.MinValue, record.MaxValue);
}

class ThereAndBack : public Conversion, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Seeds, ThereAndBack, testing::Range(0, ReferenceSeeds));

// Its numbers, that is. A value that the RUG has as its own default does not come back: on the way back it
// looks untouched.
TEST_P(ThereAndBack, KeepsTheSetUpOfAKov) {
  std::mt19937 random(static_cast<unsigned>(GetParam()));
  Start("KOV");
  for (ParamSection& section : ParamStore) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        record.Value = static_cast<std::int16_t>(SensibleValue(random, Trim(std::string_view(section.Code)),
                                                               Trim(std::string_view(record.Tag)), record));
      }
      for (ParamTextRecord& record : item.TextRecords) {
        SetText(record, u"T" + DecimalText(random() % 10000), SlotValue);
      }
    }
  }
  const ParamStoreTable before = ParamStore;
  const std::vector<std::u16string> texts = AllTexts();
  ChangeTo("RUG");
  const ParamStoreTable between = ParamStore;
  ChangeTo("KOV");
  EXPECT_EQ(texts, AllTexts());
  int kept = 0;
  int lost = 0;
  for (std::size_t s = 0; s < before.size(); ++s) {
    const std::string section(Trim(std::string_view(before[s].Code)));
    for (std::size_t i = 0; i < before[s].Items.size(); ++i) {
      const bool operates = (section == "C" || section == "A") && i >= 18;
      for (std::size_t n = 0; n < before[s].Items[i].NumRecords.size(); ++n) {
        const ParamNumRecord& old = before[s].Items[i].NumRecords[n];
        const std::string tag(Trim(std::string_view(old.Tag)));
        const ParamNumRecord& onTheWay = between[s].Items[operates ? i + 18 : i].NumRecords[n];
        ASSERT_EQ(old.Tag, onTheWay.Tag);
        const bool looksUntouched = onTheWay.Value == onTheWay.DefaultValue;
        const bool back = !IsKovOnly(tag) && !IsNotConverted(section) && !looksUntouched;
        EXPECT_EQ(back ? old.Value : old.DefaultValue, ParamStore[s].Items[i].NumRecords[n].Value)
            << section << i << tag << " " << old.Value << ", meanwhile " << onTheWay.Value;
        ++(back ? kept : lost);
      }
    }
  }
  EXPECT_GT(kept, 1000) << "most of it, and not its defaults only";
  EXPECT_LT(lost, kept);
}

TEST_F(Conversion, KovToRugAndBackKeepsChannelsOperationChannelsAndTheirReferences) {
  Start("KOV");
  PutText("C", 0, "TAG", "FURNACE");
  Put("C", 0, "TYPE", 40);
  Put("C", 0, "OTCH", 29);        // channel 30, an operation channel
  Put("C", 0, "SUBC", 19);        // channel 19, the first one
  PutText("C", 18, "TAG", "SUM"); // itself
  Put("C", 18, "SDIG", 129);      // alarm 4 of channel 30
  Put("G", 0, "GC01", 30);
  Put("O", 0, "S111", 29);       // channel 30
  Put("O", 0, "S211", 256 + 18); // its total
  Put("M", 0, "MTM1", 3);
  Put("M", 0, "MTM2", 18);
  ChangeTo("RUG");
  EXPECT_EQ("FURNACE", TrimmedText("C", 0, "TAG"));
  EXPECT_EQ(47, Stored("C", 0, "OTCH"));
  EXPECT_EQ(37, Stored("C", 0, "SUBC"));
  EXPECT_EQ("SUM", TrimmedText("C", 36, "TAG"));
  EXPECT_EQ("CH 19", TrimmedText("C", 18, "TAG"));
  EXPECT_EQ(207, Stored("C", 36, "SDIG"));
  EXPECT_EQ(48, Stored("G", 0, "GC01"));
  EXPECT_EQ(47, Stored("O", 0, "S111"));
  EXPECT_EQ(256 + 36, Stored("O", 0, "S211"));
  EXPECT_EQ(36, Stored("M", 0, "MTM2"));
  ChangeTo("KOV");
  EXPECT_EQ("FURNACE", TrimmedText("C", 0, "TAG"));
  EXPECT_EQ(40, Stored("C", 0, "TYPE"));
  EXPECT_EQ(29, Stored("C", 0, "OTCH"));
  EXPECT_EQ(19, Stored("C", 0, "SUBC"));
  EXPECT_EQ("SUM", TrimmedText("C", 18, "TAG"));
  EXPECT_EQ(129, Stored("C", 18, "SDIG"));
  EXPECT_EQ(30, Stored("G", 0, "GC01"));
  EXPECT_EQ(29, Stored("O", 0, "S111"));
  EXPECT_EQ(256 + 18, Stored("O", 0, "S211"));
  EXPECT_EQ(18, Stored("M", 0, "MTM2"));
}

TEST_F(Conversion, RugToKovAndBackLosesTheChannelsBeyondTheEighteenth) {
  Start("RUG");
  for (const int item : {17, 18, 35, 36, 47, 48}) {
    PutText("C", item, "TAG", "MINE");
    Put("C", item, "MMAX", 4000);
    Put("A", item, "A1VL", 400);
  }
  ChangeTo("KOV");
  ChangeTo("RUG");
  for (const int item : {17, 36, 47}) {
    EXPECT_EQ("MINE", TrimmedText("C", item, "TAG")) << item;
    EXPECT_EQ(4000, Stored("C", item, "MMAX")) << item;
    EXPECT_EQ(400, Stored("A", item, "A1VL")) << item;
  }
  for (const int item : {18, 35, 48}) {
    EXPECT_EQ("CH " + std::to_string(item + 1), TrimmedText("C", item, "TAG")) << item;
    EXPECT_EQ(5000, Stored("C", item, "MMAX")) << item;
    EXPECT_EQ(0, Stored("A", item, "A1VL")) << item;
  }
}

TEST_F(Conversion, TheLogarithmOfAKovIsLostOnTheWay) {
  Start("KOV");
  Put("C", 0, "TAIS", 1);
  ChangeTo("RUG");
  EXPECT_EQ(0, Stored("C", 0, "TAIS"));
  ChangeTo("KOV");
  EXPECT_EQ(0, Stored("C", 0, "TAIS"));
}

} // namespace
} // namespace loader::test
