// Pairs of channels: who leads, what a dependent channel may take, and the leader's check.
#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include "channel/InputTypeRules.h"
#include "core/ModelProfile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

class ChannelPairs : public ChannelRules {
protected:
  void SetUp() override { gFInitCatalogues(); }

  void SetType(int channelIndex, std::int16_t type) { Put("C", channelIndex, "TYPE", type); }
};

// --- Pair kinds

const std::set<int> Leaders{1, 3, 5, 7, 10, 12, 14, 16, 19, 21, 23, 25, 28, 30, 32, 34};
const std::set<int> Dependents{2, 4, 6, 8, 11, 13, 15, 17, 20, 22, 24, 26, 29, 31, 33, 35};

TEST_F(ChannelPairs, ChannelsOneTo72HaveTheirPairKindOnBothModels) {
  for (const char* model : {"KOV", "RUG"}) {
    ModelCode = model;
    for (int number = 1; number <= 72; ++number) {
      const int expected = Leaders.contains(number)      ? PairLeader
                           : Dependents.contains(number) ? PairDependent
                                                         : PairIndependent;
      EXPECT_EQ(expected, ChannelPairKind(number - 1)) << model << " channel " << number;
    }
  }
}

TEST_F(ChannelPairs, OnBiqOnlyChannelsFourAndFiveArePaired) {
  ModelCode = "BIQ";
  for (int number = 1; number <= 72; ++number) {
    const int expected = number == 4 ? PairLeader : number == 5 ? PairDependent : PairIndependent;
    EXPECT_EQ(expected, ChannelPairKind(number - 1)) << "channel " << number;
  }
}

TEST_F(ChannelPairs, AnIndexOutsideOfTheChannelsIsIndependent) {
  for (const int index : {-1, -2, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(PairIndependent, ChannelPairKind(index)) << index;
  }
}

// --- The list of kinds

const std::vector<int> EveryNamedKind{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 20, 21, 30, 31, 32, 33, 40};

TEST_F(ChannelPairs, AnIndependentChannelAndALeaderMayTakeEveryNamedKindWhateverIsBefore) {
  for (int previous = 0; previous < InputKinds; ++previous) {
    EXPECT_EQ(EveryNamedKind, OfferedInputTypes(PairIndependent, previous));
    EXPECT_EQ(EveryNamedKind, OfferedInputTypes(PairLeader, previous));
  }
}

struct OfferFacts {
  std::vector<int> previous;
  std::vector<int> between;
};
const std::vector<OfferFacts> Offers{
    {{0, 40}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 20, 21, 30, 31, 32, 33}},
    {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 30}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 30}},
    {{20, 21}, {20, 21}},
    {{31}, {31}},
    {{32, 33}, {32, 33}},
    {{13, 14, 15, 16, 17, 18, 19, 22, 23, 24, 25, 26, 27, 28, 29, 34, 35, 36, 37, 38, 39, 41}, {}},
    {{-1, -32768, 42, 32767}, {}}, // from a damaged file
};

TEST_F(ChannelPairs, ADependentChannelMayTakeWhatItsPredecessorAllows) {
  for (const OfferFacts& offer : Offers) {
    std::vector<int> expected{0};
    expected.insert(expected.end(), offer.between.begin(), offer.between.end());
    expected.push_back(40);
    for (const int previous : offer.previous) {
      EXPECT_EQ(expected, OfferedInputTypes(PairDependent, previous)) << "after " << previous;
    }
  }
}

TEST_F(ChannelPairs, TheListShowsTheNamesWithTheKindAsItemData) {
  StartWithModel(platform, "KOV");
  Screen screen("frmSample");
  ListBox list(screen, "cmbInputType");
  list.onChange = [] { FAIL() << "filling the list runs no handler"; };
  SetType(0, 1);
  FillInputTypeList(list, 1);
  EXPECT_EQ((std::vector<std::u16string>{u"ｽｷｯﾌﾟ", u"K熱電対", u"E熱電対", u"J熱電対", u"T熱電対", u"R熱電対",
                                         u"S熱電対", u"B熱電対", u"N熱電対", u"W熱電対", u"L熱電対",
                                         u"U熱電対", u"PN熱電対", u"50mV", u"他ﾁｬﾈﾙ"}),
            list.items);
  EXPECT_EQ((std::vector<std::int32_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 30, 40}), list.itemData);
  EXPECT_EQ(-1, list.index);
}

TEST_F(ChannelPairs, TheListIsBuiltAnewAndNotAddedTo) {
  StartWithModel(platform, "KOV");
  Screen screen("frmSample");
  ListBox list(screen, "cmbInputType");
  FillInputTypeList(list, 0);
  SetType(0, 34);
  FillInputTypeList(list, 1);
  EXPECT_EQ((std::vector<std::u16string>{u"ｽｷｯﾌﾟ", u"他ﾁｬﾈﾙ"}), list.items);
}

TEST_F(ChannelPairs, ChannelNineOffersEveryKindWhateverChannelEightHolds) {
  StartWithModel(platform, "KOV");
  Screen screen("frmSample");
  ListBox list(screen, "cmbInputType");
  for (const std::int16_t type : {std::int16_t{1}, std::int16_t{31}, std::int16_t{34}}) {
    SetType(7, type);
    FillInputTypeList(list, 8);
    EXPECT_EQ(EveryNamedKind.size(), list.items.size());
  }
}

TEST_F(ChannelPairs, WithoutAStoreADependentChannelOffersEveryKind) {
  ModelCode = "KOV";
  Screen screen("frmSample");
  ListBox list(screen, "cmbInputType");
  FillInputTypeList(list, 1);
  EXPECT_EQ(EveryNamedKind.size(), list.items.size());
}

// --- The leader's check

struct LeaderFacts {
  std::vector<int> chosen;
  std::vector<int> kept; // besides 0 and 40
  int newKind;           // -1: the chosen one
  int message;
};

std::vector<int> Range(int first, int last) {
  std::vector<int> numbers;
  for (int number = first; number <= last; ++number) {
    numbers.push_back(number);
  }
  return numbers;
}
std::vector<int> With(std::vector<int> numbers, int another) {
  numbers.push_back(another);
  return numbers;
}

const std::vector<LeaderFacts> LeaderTable{
    {With(Range(1, 19), 30), With(Range(1, 19), 30), 1, 62105},
    {Range(20, 29), Range(20, 29), 20, 62106},
    {{31}, {31}, 31, 62106},
    {{32}, {32, 33, 34}, 32, 62106},
    {{33}, {33, 32, 34}, 33, 62106},
    {{34}, {34, 32, 33}, 34, 62106},
};

TEST_F(ChannelPairs, EveryChosenKindKeepsItsFamilyAndReplacesAnyOther) {
  for (const LeaderFacts& facts : LeaderTable) {
    for (const int chosen : facts.chosen) {
      for (int next = -1; next <= InputKinds; ++next) {
        const bool keeps = next == 0 || next == 40 || std::ranges::find(facts.kept, next) != facts.kept.end();
        const std::optional<LeaderConflict> conflict = FindLeaderConflict(chosen, next);
        ASSERT_EQ(!keeps, conflict.has_value()) << chosen << " beside " << next;
        if (conflict) {
          EXPECT_EQ(facts.newKind, conflict->newKind) << chosen << " beside " << next;
          EXPECT_EQ(facts.message, conflict->message.value) << chosen << " beside " << next;
        }
      }
    }
  }
}

TEST_F(ChannelPairs, AnyOtherChosenKindReplacesNothing) {
  for (const int chosen : {-1, 0, 35, 36, 37, 38, 39, 40, 41, 42, 32767}) {
    for (int next = -1; next <= InputKinds; ++next) {
      EXPECT_FALSE(FindLeaderConflict(chosen, next).has_value()) << chosen << " beside " << next;
    }
  }
}

constexpr std::u16string_view NextIsInitialised = u"このチャネルの次のチャネルが初期化されます";

class LeaderCheck : public ChannelPairs {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }
  bool tableChanged = false;
};

TEST_F(LeaderCheck, FiftyMillivoltsBesideAThermocoupleAsksNothing) {
  SetType(1, 1);
  EXPECT_TRUE(CheckPairLeader(0, 30, tableChanged));
  EXPECT_FALSE(tableChanged);
  EXPECT_EQ(1, NumValue("C", 1, "TYPE"));
}

TEST_F(LeaderCheck, AResistanceThermometerBesideAThermocoupleMakesTheNextOneToo) {
  SetType(1, 1);
  platform.boxes.Expect(NextIsInitialised, BoxAnswer::Ok);
  EXPECT_TRUE(CheckPairLeader(0, 20, tableChanged));
  EXPECT_TRUE(tableChanged);
  EXPECT_EQ(20, NumValue("C", 1, "TYPE"));
  EXPECT_EQ(BoxButtons::OkCancel, platform.boxes.shown.front().buttons);
}

TEST_F(LeaderCheck, OneToFiveVoltsBesideZeroToFiveVoltsAsksNothing) {
  SetType(1, 33);
  EXPECT_TRUE(CheckPairLeader(0, 32, tableChanged));
  EXPECT_EQ(33, NumValue("C", 1, "TYPE"));
}

TEST_F(LeaderCheck, OneToFiveVoltsBesideFiftyMillivoltsMakesTheNextOneToo) {
  SetType(1, 30);
  platform.boxes.Expect(NextIsInitialised, BoxAnswer::Ok);
  EXPECT_TRUE(CheckPairLeader(0, 32, tableChanged));
  EXPECT_EQ(32, NumValue("C", 1, "TYPE"));
}

TEST_F(LeaderCheck, AThermocoupleBesideAResistanceThermometerMakesTheNextTypeK) {
  SetType(1, 20);
  platform.boxes.Expect(NextIsInitialised, BoxAnswer::Ok);
  EXPECT_TRUE(CheckPairLeader(0, 5, tableChanged));
  EXPECT_EQ(1, NumValue("C", 1, "TYPE"));
}

TEST_F(LeaderCheck, CancelStopsAndChangesNothing) {
  SetType(1, 1);
  const ParamStoreTable before = ParamStore;
  platform.boxes.Expect(NextIsInitialised, BoxAnswer::Cancel);
  EXPECT_FALSE(CheckPairLeader(0, 20, tableChanged));
  EXPECT_FALSE(tableChanged);
  EXPECT_EQ(1, NumValue("C", 1, "TYPE"));
  for (std::size_t i = 0; i < before.front().Items[1].NumRecords.size(); ++i) {
    EXPECT_EQ(before.front().Items[1].NumRecords[i].Value, ParamStore.front().Items[1].NumRecords[i].Value);
  }
}

TEST_F(LeaderCheck, TheLeaderItselfIsNotTouched) {
  SetType(0, 3);
  SetType(1, 1);
  platform.boxes.Expect(NextIsInitialised, BoxAnswer::Ok);
  EXPECT_TRUE(CheckPairLeader(0, 20, tableChanged));
  EXPECT_EQ(3, NumValue("C", 0, "TYPE"));
}

TEST_F(LeaderCheck, OnlyALeaderIsChecked) {
  SetType(2, 1);
  SetType(9, 1);
  EXPECT_TRUE(CheckPairLeader(1, 20, tableChanged)); // channel 2 depends
  EXPECT_TRUE(CheckPairLeader(8, 20, tableChanged)); // channel 9 stands alone
  EXPECT_FALSE(tableChanged);
}

TEST_F(LeaderCheck, ANextChannelThatDoesNotExistConflictsWithNothing) {
  ParamStore.clear();
  EXPECT_TRUE(CheckPairLeader(0, 20, tableChanged));
  EXPECT_FALSE(tableChanged);
}

// --- The classes of the paste

TEST_F(ChannelPairs, EachKindHasItsClass) {
  const std::vector<int> classes{0,  1,  1,  1,  1,  1,  1,  1,  1,  1, 1,  1,  1,  1,  1, 1, 1, 1, 1, 1, 13,
                                 13, 13, 13, 13, 13, 13, 13, 13, 13, 1, 16, 17, 18, 19, 0, 0, 0, 0, 0, 0};
  ASSERT_EQ(41U, classes.size());
  for (int kind = 0; kind <= 40; ++kind) {
    EXPECT_EQ(classes[static_cast<std::size_t>(kind)], PairClass(kind)) << kind;
  }
}

TEST_F(ChannelPairs, AKindOutsideOfTheCodeGoesWithAnything) {
  for (const int kind : {-32768, -1, 41, 42, 255, 32767}) {
    EXPECT_EQ(0, PairClass(kind)) << kind;
  }
}

} // namespace
} // namespace loader::test
