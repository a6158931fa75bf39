// The plant set-ups: within the limits of the shipped initial settings file, and of one piece.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "core/Text.h"
#include "simulator/Plant.h"
#include "tests/simulator/TestRecorder.h"

namespace loader::simulator {
namespace {

struct ModelCase {
  Model model;
  int measuring, operation;
};

class Plants : public testing::TestWithParam<ModelCase> {
protected:
  ParamStoreTable shape = LoadShape(ShippedShape, GetParam().model);
  ParamStoreTable setup = PlantSetup(shape, GetParam().model);

  const ParamSection& Section(std::string_view code) const {
    for (const ParamSection& section : setup) {
      if (Trim(section.Code) == code) {
        return section;
      }
    }
    throw std::out_of_range("no section");
  }
  int Number(std::string_view code, int item, std::string_view tag) const {
    for (const ParamNumRecord& record : Section(code).Items.at(static_cast<std::size_t>(item)).NumRecords) {
      if (Trim(record.Tag) == tag) {
        return record.Value;
      }
    }
    throw std::out_of_range("no tag");
  }
  std::u16string Text(std::string_view code, int item, std::string_view tag) const {
    for (const ParamTextRecord& record : Section(code).Items.at(static_cast<std::size_t>(item)).TextRecords) {
      if (Trim(record.Tag) == tag) {
        return std::u16string(TrimRight(std::u16string_view(record.Value)));
      }
    }
    throw std::out_of_range("no tag");
  }
};

INSTANTIATE_TEST_SUITE_P(BothModels, Plants,
                         testing::Values(ModelCase{Model::Kov, 18, 12}, ModelCase{Model::Rug, 36, 36}),
                         [](const auto& of) { return std::string(ModelName(of.param.model)); });

TEST_P(Plants, EveryNumberLiesWithinItsLimits) {
  for (const ParamSection& section : setup) {
    for (std::size_t item = 0; item < section.Items.size(); ++item) {
      for (const ParamNumRecord& record : section.Items[item].NumRecords) {
        EXPECT_TRUE(record.Value >= record.MinValue && record.Value <= record.MaxValue)
            << section.Code << item << ' ' << record.Tag << ' ' << record.Value;
      }
    }
  }
}

TEST_P(Plants, EveryTextFitsItsFieldAndEncodes) {
  for (const ParamSection& section : setup) {
    for (std::size_t item = 0; item < section.Items.size(); ++item) {
      for (const ParamTextRecord& record : section.Items[item].TextRecords) {
        const auto text = TrimRight(std::u16string_view(record.Value));
        EXPECT_LE(CodePageLength(text), static_cast<std::size_t>(record.ByteLength))
            << section.Code << item << ' ' << record.Tag << ' ' << ToUtf8(text);
        EXPECT_EQ(FromCodePage(ToCodePage(text)), text) << section.Code << item << ' ' << record.Tag;
        EXPECT_EQ(text.find(u','), std::u16string_view::npos) << "a parameter file could not hold it";
      }
    }
  }
}

TEST_P(Plants, EveryValueOfThePlantHasItsPlaceInTheShape) {
  const Plant& plant = PlantOf(GetParam().model);
  for (const NumberRow& row : plant.numbers) {
    EXPECT_NO_THROW(EXPECT_EQ(Number(row.section, row.item, row.tag), row.value)
                    << row.section << row.item << row.tag)
        << row.section << row.item << row.tag;
  }
  for (const TextRow& row : plant.texts) {
    EXPECT_NO_THROW(EXPECT_EQ(Text(row.section, row.item, row.tag), row.text))
        << row.section << row.item << row.tag;
  }
}

TEST_P(Plants, NoValueIsNamedTwice) {
  std::set<std::string> names;
  const Plant& plant = PlantOf(GetParam().model);
  for (const NumberRow& row : plant.numbers) {
    EXPECT_TRUE(
        names.insert(std::string(row.section) + std::to_string(row.item) + std::string(row.tag)).second)
        << row.section << row.item << row.tag;
  }
  for (const TextRow& row : plant.texts) {
    EXPECT_TRUE(
        names.insert(std::string(row.section) + std::to_string(row.item) + std::string(row.tag)).second)
        << row.section << row.item << row.tag;
  }
}

// The kinds of input that the second channel of a terminal pair can have beside the first.
bool MayPair(int leader, int follower) {
  const auto thermocouple = [](int kind) { return (kind >= 1 && kind <= 12) || kind == 30; };
  if (follower == 0 || follower == 40 || leader == 0 || leader == 40) {
    return true;
  }
  if (thermocouple(leader)) {
    return thermocouple(follower);
  }
  if (leader == 20 || leader == 21) {
    return follower == 20 || follower == 21;
  }
  return leader == 31 ? follower == 31 : follower == 32 || follower == 33;
}

TEST_P(Plants, ChannelsThatShareAnInputPairAreOfOneFamily) {
  const std::set<int> leaders = {1, 3, 5, 7, 10, 12, 14, 16, 19, 21, 23, 25, 28, 30, 32, 34};
  for (int channel = 1; channel < GetParam().measuring; ++channel) {
    if (leaders.contains(channel)) {
      EXPECT_TRUE(MayPair(Number("C", channel - 1, "TYPE"), Number("C", channel, "TYPE"))) << channel;
    }
  }
}

// The limits of the input kinds in use, in their own decimal point position; Celsius.
struct KindLimits {
  int kind, low, high;
};
constexpr KindLimits Kinds[] = {{0, 0, 0},          {1, -2300, 14000}, {4, -2300, 4300},  {5, -300, 17900},
                                {8, -300, 13300},   {11, -2300, 4300}, {20, -2300, 6300}, {21, -2300, 6300},
                                {30, -1000, 5500},  {31, -100, 5500},  {32, 500, 5500},   {33, -100, 5500},
                                {40, -32767, 32767}};

TEST_P(Plants, RangesOfAMeasuringChannelSuitItsInputKind) {
  for (int item = 0; item < GetParam().measuring; ++item) {
    const int kind = Number("C", item, "TYPE");
    const auto* limits = std::find_if(std::begin(Kinds), std::end(Kinds),
                                      [&](const KindLimits& row) { return row.kind == kind; });
    ASSERT_NE(limits, std::end(Kinds)) << "channel " << item + 1 << " kind " << kind;
    if (kind == 0) {
      continue; // a skipped channel measures nothing
    }
    const bool limited = kind < 30 || (kind != 40 && Number("C", item, "SCAL") == 0);
    for (const char* tag : {"MMIN", "MMAX"}) {
      EXPECT_GE(Number("C", item, tag), limits->low) << item << tag;
      EXPECT_LE(Number("C", item, tag), std::min(limits->high, kind == 40 ? 32767 : 5500)) << item << tag;
    }
    for (const char* tag : {"SMIN", "SMAX", "RMIN", "RMAX", "SECU"}) {
      if (limited) {
        EXPECT_GE(Number("C", item, tag), limits->low) << item << tag;
        EXPECT_LE(Number("C", item, tag), limits->high) << item << tag;
      }
    }
    EXPECT_LT(Number("C", item, "RMIN"), Number("C", item, "RMAX")) << item;
    EXPECT_LT(Number("C", item, "SMIN"), Number("C", item, "SMAX")) << item;
    if (kind < 30) {
      EXPECT_EQ(Number("C", item, "UNIT"), 0) << "temperatures in Celsius, channel " << item + 1;
      EXPECT_EQ(Number("C", item, "POIN"), 1) << item;
    }
  }
}

TEST_P(Plants, AlarmsLieInsideTheRecordedRange) {
  for (int item = 0; item < GetParam().measuring; ++item) {
    for (const char* alarm : {"A1", "A2", "A3", "A4"}) {
      const std::string name(alarm);
      if (Number("A", item, name + "TY") != AlarmOff) {
        EXPECT_GE(Number("A", item, name + "VL"), Number("C", item, "SMIN")) << item << alarm;
        EXPECT_LE(Number("A", item, name + "VL"), Number("C", item, "SMAX")) << item << alarm;
      }
    }
  }
}

TEST_P(Plants, FormulasNameOnlyInputsThatTheModelHas) {
  const bool kov = GetParam().model == Model::Kov;
  const int channels = GetParam().measuring + GetParam().operation;
  const int counts[] = {channels, channels, kov ? 10 : 16, kov ? 12 : 36, kov ? 20 : 60, 3};
  for (const TermRow& term : PlantOf(GetParam().model).terms) {
    EXPECT_LE(term.number1, counts[term.kind1]) << term.channel << ' ' << term.formula << ' ' << term.term;
    EXPECT_LE(term.number2, counts[term.kind2]) << term.channel << ' ' << term.formula << ' ' << term.term;
    EXPECT_GE(term.number1, 1);
    EXPECT_GE(term.number2, 1);
    if (term.term == 1) {
      EXPECT_EQ(term.rule, Plus) << "marks a first term as used";
    } else {
      EXPECT_NE(term.rule, NoRule);
    }
  }
}

TEST_P(Plants, AFormulaIsTwoNumbersInARegister) {
  // Operation channel 1 of both: its result starts with an input by a plain term, marked by the rule Plus.
  EXPECT_EQ(Number("O", 0, "OP41"), 1);
  const int input = Number("O", 0, "S141");
  EXPECT_EQ(input, GetParam().model == Model::Kov ? 5 * 256 : 0) << "B01 of KOV, C01 of RUG";
}

TEST_P(Plants, EveryKindOfSettingIsInUse) {
  for (const char* code : {"C", "A", "G", "T", "B", "H", "M", "U", "D", "E", "N", "O", "J", "K", "X"}) {
    bool differs = false;
    for (const ParamItem& item : Section(code).Items) {
      for (const ParamNumRecord& record : item.NumRecords) {
        differs = differs || record.Value != record.DefaultValue;
      }
      for (const ParamTextRecord& record : item.TextRecords) {
        differs = differs || record.Value != record.DefaultValue;
      }
    }
    EXPECT_TRUE(differs) << code;
  }
}

TEST(PlantModels, AreTwoDifferentPlants) {
  const ParamStoreTable kov = PlantSetup(LoadShape(ShippedShape, Model::Kov), Model::Kov);
  const ParamStoreTable rug = PlantSetup(LoadShape(ShippedShape, Model::Rug), Model::Rug);

  EXPECT_EQ(ToUtf8(Trim(std::u16string_view(kov[0].Items[0].TextRecords[0].Value))), "1号炉 上段");
  EXPECT_EQ(ToUtf8(Trim(std::u16string_view(rug[0].Items[0].TextRecords[0].Value))), "取水流量 1系");
}

} // namespace
} // namespace loader::simulator
