// The table of input kinds and its look-up.
#include <array>
#include <set>
#include <string>

#include "channel/InputTypeRules.h"
#include "core/modIni.h"
#include "tests/channel/Fixture.h"

namespace loader::test {
namespace {

// What the table has to hold, Celsius first.
struct KindFacts {
  int kind;
  std::u16string_view name;
  int point;
  std::array<int, 2> minValue;
  std::array<int, 2> maxValue;
  std::array<int, 2> defMin;
  std::array<int, 2> defMax;
  int unit;
};
constexpr KindFacts Facts[] = {
    {0, u"ｽｷｯﾌﾟ", 0, {0, 0}, {0, 0}, {0, 0}, {0, 0}, 0},
    {1, u"K熱電対", 1, {-2300, -3820}, {14000, 25520}, {0, 320}, {12000, 21920}, 0},
    {2, u"E熱電対", 1, {-2300, -3820}, {8300, 15260}, {0, 320}, {8000, 14720}, 0},
    {3, u"J熱電対", 1, {-2300, -3820}, {11300, 20660}, {0, 320}, {6000, 11120}, 0},
    {4, u"T熱電対", 1, {-2300, -3820}, {4300, 8060}, {0, 320}, {3000, 5720}, 0},
    {5, u"R熱電対", 1, {-300, -220}, {17900, 32540}, {0, 320}, {16000, 29120}, 0},
    {6, u"S熱電対", 1, {-300, -220}, {17900, 32540}, {0, 320}, {16000, 29120}, 0},
    {7, u"B熱電対", 1, {3700, 6980}, {17900, 32540}, {6000, 11120}, {17000, 30920}, 0},
    {8, u"N熱電対", 1, {-300, -220}, {13300, 24260}, {0, 320}, {13000, 23720}, 0},
    {9, u"W熱電対", 1, {-300, -220}, {17900, 32540}, {0, 320}, {17000, 30920}, 0},
    {10, u"L熱電対", 1, {-2300, -3820}, {9300, 17060}, {0, 320}, {9000, 16520}, 0},
    {11, u"U熱電対", 1, {-2300, -3820}, {4300, 8060}, {0, 320}, {4000, 7520}, 0},
    {12, u"PN熱電対", 1, {-300, -220}, {13300, 24260}, {0, 320}, {13000, 23720}, 0},
    {20, u"Pt100", 1, {-2300, -3820}, {6300, 11660}, {0, 320}, {5000, 9320}, 0},
    {21, u"JPt100", 1, {-2300, -3820}, {6300, 11660}, {0, 320}, {5000, 9320}, 0},
    {22, u"", 1, {-900, -1300}, {2100, 4100}, {0, 320}, {1500, 2732}, 0},
    {23, u"", 1, {-2300, -3820}, {6300, 11660}, {0, 320}, {5000, 9320}, 0},
    {24, u"", 1, {-800, -1120}, {2300, 4460}, {0, 320}, {1500, 2732}, 0},
    {30, u"50mV", 2, {-1000, -1000}, {5500, 5500}, {0, 0}, {5000, 5000}, 114},
    {31, u"500mV", 1, {-100, -100}, {5500, 5500}, {0, 0}, {5000, 5000}, 114},
    {32, u"1-5V", 3, {500, 500}, {5500, 5500}, {1000, 1000}, {5000, 5000}, 115},
    {33, u"0-5V", 3, {-100, -100}, {5500, 5500}, {0, 0}, {5000, 5000}, 115},
    {34, u"", 2, {-100, -100}, {5500, 5500}, {0, 0}, {5000, 5000}, 115},
    {35, u"", 1, {-32767, -32767}, {32767, 32767}, {-32767, -32767}, {32767, 32767}, 0},
    {40, u"他ﾁｬﾈﾙ", 0, {-32767, -32767}, {32767, 32767}, {0, 0}, {5000, 5000}, 4},
};

// The facts of any kind; zeros for one that is not listed.
KindFacts FactsOf(int kind) {
  for (const KindFacts& facts : Facts) {
    if (facts.kind == kind) {
      return facts;
    }
  }
  return {kind, u"", 0, {}, {}, {}, {}, 0};
}

class InputRanges : public ChannelRules {
protected:
  void SetUp() override { gFInitCatalogues(); }
  static InputRange Lookup(int kind, int selector, int pointBefore = 77) {
    InputRange range{.Point = pointBefore, .MinValue = 77, .MaxValue = 77, .DefMin = 77, .DefMax = 77};
    InputRangeLookup(kind, selector, range);
    return range;
  }
  static InputRange Expected(int kind, std::size_t column, int point) {
    const KindFacts facts = FactsOf(kind);
    return {point, facts.minValue[column], facts.maxValue[column], facts.defMin[column],
            facts.defMax[column]};
  }
};

TEST_F(InputRanges, EveryKindHoldsItsValuesInBothColumns) {
  for (int kind = 0; kind < InputKinds; ++kind) {
    SCOPED_TRACE(kind);
    const KindFacts facts = FactsOf(kind);
    for (std::size_t column = 0; column < 2; ++column) {
      const InputRangeEntry& entry = InputRangeTable[static_cast<std::size_t>(kind)][column];
      EXPECT_EQ(facts.point, entry.Point);
      EXPECT_EQ(facts.minValue[column], entry.MinValue);
      EXPECT_EQ(facts.maxValue[column], entry.MaxValue);
      EXPECT_EQ(facts.defMin[column], entry.DefMin);
      EXPECT_EQ(facts.defMax[column], entry.DefMax);
    }
  }
}

TEST_F(InputRanges, EveryKindHoldsItsUnit) {
  for (int kind = 0; kind < InputKinds; ++kind) {
    EXPECT_EQ(FactsOf(kind).unit, InputRangeTable[static_cast<std::size_t>(kind)][0].UnitNo) << kind;
  }
}

TEST_F(InputRanges, TheSecondUnitColumnHoldsItsTwoOddEntries) {
  for (int kind = 0; kind < InputKinds; ++kind) {
    const int expected = kind == 33 ? 116 : kind == 35 ? 1 : 0;
    EXPECT_EQ(expected, InputRangeTable[static_cast<std::size_t>(kind)][1].UnitNo) << kind;
  }
}

TEST_F(InputRanges, EveryKindHasItsNameOrNone) {
  for (int kind = 0; kind < InputKinds; ++kind) {
    EXPECT_EQ(ToUtf8(FactsOf(kind).name), ToUtf8(InputTypeNames[static_cast<std::size_t>(kind)])) << kind;
  }
}

TEST_F(InputRanges, TheUnitsOfTheKindsAreTheirTexts) {
  EXPECT_EQ(u"゜C", UnitNames[0]);
  EXPECT_EQ(u"゜F", UnitNames[1]);
  EXPECT_EQ(u"", UnitNames[4]);
  EXPECT_EQ(u"mV", UnitNames[114]);
  EXPECT_EQ(u"V", UnitNames[115]);
  EXPECT_EQ(u"kV", UnitNames[116]);
}

// Fahrenheit follows Celsius, but for the default maximum of two kinds, which is as the recorder has it.
TEST_F(InputRanges, FahrenheitFollowsCelsiusButForTwoDefaults) {
  const std::set<int> odd{22, 24};
  const auto fahrenheit = [](int celsius) { return celsius * 9 / 5 + 320; };
  for (const KindFacts& facts : Facts) {
    if (facts.kind == KindSkip || facts.kind >= 30) {
      continue;
    }
    const InputRangeRow& row = InputRangeRowOf(facts.kind);
    EXPECT_EQ(fahrenheit(row[0].MinValue), row[1].MinValue) << facts.kind;
    EXPECT_EQ(fahrenheit(row[0].MaxValue), row[1].MaxValue) << facts.kind;
    EXPECT_EQ(fahrenheit(row[0].DefMin), row[1].DefMin) << facts.kind;
    EXPECT_EQ(odd.contains(facts.kind) ? 2732 : fahrenheit(row[0].DefMax), row[1].DefMax) << facts.kind;
  }
}

TEST_F(InputRanges, UnitZeroSelectsCelsiusBelowKind30) {
  for (int kind = 0; kind < 30; ++kind) {
    EXPECT_EQ(Expected(kind, 0, FactsOf(kind).point), Lookup(kind, 0)) << kind;
  }
}

TEST_F(InputRanges, UnitOneSelectsFahrenheitBelowKind30) {
  for (int kind = 0; kind < 30; ++kind) {
    EXPECT_EQ(Expected(kind, 1, FactsOf(kind).point), Lookup(kind, 1)) << kind;
  }
}

TEST_F(InputRanges, AnyOtherUnitSelectsFahrenheitBelowKind30) {
  for (const int unit : {2, 4, 114, 167, -1, 32767, -32768}) {
    for (int kind = 0; kind < 30; ++kind) {
      EXPECT_EQ(Expected(kind, 1, FactsOf(kind).point), Lookup(kind, unit)) << kind << " unit " << unit;
    }
  }
}

TEST_F(InputRanges, TheKindsFrom30UpAreTheSameForEveryUnit) {
  for (const int unit : {0, 1, 4, 114, 115, -1}) {
    for (int kind = 30; kind < InputKinds; ++kind) {
      if (kind != KindOtherChannel) {
        EXPECT_EQ(Expected(kind, 1, FactsOf(kind).point), Lookup(kind, unit)) << kind << " unit " << unit;
      }
    }
  }
}

TEST_F(InputRanges, AnotherChannelHasItsLimitsForEveryUnitAndLeavesThePointAlone) {
  for (const int unit : {0, 1, 4, 167, -1}) {
    EXPECT_EQ(Expected(KindOtherChannel, 0, 3), Lookup(KindOtherChannel, unit, 3)) << unit;
  }
}

TEST_F(InputRanges, AKindWithoutANameStillHasItsLimits) {
  EXPECT_EQ((InputRange{1, -900, 2100, 0, 1500}), Lookup(22, 0));
  EXPECT_EQ((InputRange{2, -100, 5500, 0, 5000}), Lookup(34, 115));
  EXPECT_EQ((InputRange{1, -32767, 32767, -32767, 32767}), Lookup(35, 0));
}

TEST_F(InputRanges, AKindOutsideTheTableIsARowOfZeros) {
  for (const int kind : {-1, -32768, 42, 43, 255, 32767, 2147483647}) {
    for (const int unit : {0, 1, 114}) {
      EXPECT_EQ(InputRange{}, Lookup(kind, unit)) << kind;
    }
    EXPECT_EQ(InputRangeEntry{}, InputRangeRowOf(kind)[0]) << kind;
  }
}

} // namespace
} // namespace loader::test
