// What is told of a transfer with an older recorder, held against transfers that really happen.
#include "companion/Losses.h"

#include <map>
#include <set>

#include "core/Text.h"
#include "tests/companion/RecorderTest.h"

namespace loader::test {
namespace {

struct OfGeneration : CompanionRecorder, testing::WithParamInterface<Generation> {};
INSTANTIATE_TEST_SUITE_P(All, OfGeneration, testing::ValuesIn(Generations),
                         [](const auto& row) { return GenerationName(row.param); });

// An older total is one of two kinds, whatever the recorder's word: SEKI is always 1.
bool IsAlwaysTheSame(const Generation& generation, const ParameterRef& ref) {
  return generation.number == 2 && ref.section == "C" && (ref.tag == "SEKI" || ref.tag == "STYP");
}

TEST_P(OfGeneration, AReadTellsWhatItFilledFromDefaultsAndNothingElse) {
  Prepare(GetParam());
  WholeSetUp initial = InitialSetUp(GetParam().model, line.language);
  const std::vector<StoredValue> defaults = ValuesOf(initial);
  RecorderRead read = ReadRecorder(line, {});
  EXPECT_EQ(read.recorder.generation, GetParam().number);
  EXPECT_EQ(read.recorder.model, GetParam().model);
  const std::vector<StoredValue> values = ValuesOf(read.setUp);
  const SetUpInForce inForce(read.setUp);
  std::set<ParameterRef> filled;
  for (const FilledParameter& parameter : FilledByRead(GetParam().number)) {
    EXPECT_NE(parameter.fate, ReadFate::Read);
    filled.insert(parameter.ref);
  }
  const std::vector<ParameterRef> refs = AllParameters();
  for (std::size_t i = 0; i < refs.size(); ++i) {
    if (filled.contains(refs[i])) {
      EXPECT_EQ(values[i], defaults[i]) << KeyOf(refs[i]);
    } else if (!IsAlwaysTheSame(GetParam(), refs[i])) {
      // No default of the shape file is made of the letters in the memory, but for model and version.
      EXPECT_TRUE(values[i] != defaults[i] || refs[i].section == "P") << KeyOf(refs[i]);
    }
  }
}

TEST_P(OfGeneration, AForecastIsWhatAWriteAndAReadThenGive) {
  Prepare(GetParam());
  for (unsigned seed = 1; seed <= 8; ++seed) {
    FillMemory(GetParam(), seed);
    WholeSetUp setUp = Filled(GetParam().model, seed);
    const std::vector<StoredValue> wanted = ValuesOf(setUp);
    RecorderRead present = ReadRecorder(line, {});
    const std::vector<StoredValue> before = ValuesOf(present.setUp);
    WriteForecast forecast = ForecastWrite(setUp, present);
    ASSERT_EQ(WriteAndVerify(line, setUp, false).end, WriteEnd::Verified);
    RecorderRead again = ReadRecorder(line, {});
    const std::vector<StoredValue> after = ValuesOf(again.setUp);
    EXPECT_EQ(ValuesOf(forecast.after), after);

    std::map<ParameterRef, LostParameter> lost;
    for (const LostParameter& parameter : forecast.losses) {
      lost.emplace(parameter.ref, parameter);
    }
    std::set<ParameterRef> changed;
    for (const ChangedParameter& change : forecast.changes) {
      changed.insert(change.ref);
    }
    const std::vector<ParameterRef> refs = WithSetUp(setUp, AllParameters);
    for (std::size_t i = 0; i < refs.size(); ++i) {
      const auto told = lost.find(refs[i]);
      ASSERT_EQ(told != lost.end(), wanted[i] != after[i]) << KeyOf(refs[i]) << " seed " << seed;
      EXPECT_EQ(changed.contains(refs[i]), before[i] != after[i]) << KeyOf(refs[i]);
      if (told != lost.end()) {
        EXPECT_EQ(told->second.wanted, wanted[i]);
        EXPECT_EQ(told->second.comes, after[i]);
        // A number is never lost without a reason; a text may be too long for its registers.
        EXPECT_TRUE(told->second.fate != WriteFate::Goes || std::holds_alternative<std::u16string>(wanted[i]))
            << KeyOf(refs[i]);
      }
    }
  }
}

// The reason that is told is the right one: it says what comes, or what the recorder keeps.
TEST_P(OfGeneration, AReasonSaysWhatComes) {
  Prepare(GetParam());
  WholeSetUp setUp = Filled(GetParam().model, 3);
  RecorderRead present = ReadRecorder(line, {});
  const WriteForecast forecast = ForecastWrite(setUp, present);
  WholeSetUp initial = InitialSetUp(GetParam().model, line.language);
  for (const LostParameter& lost : forecast.losses) {
    const auto value = [&lost] { return *ValueOf(lost.ref); };
    const StoredValue kept = WithSetUp(present.setUp, value);
    const StoredValue initially = WithSetUp(initial, value);
    const StoredValue zero = std::int16_t{0};
    switch (lost.fate) {
    case WriteFate::NoSection:
    case WriteFate::NoItem:
    case WriteFate::NotWritten:
    case WriteFate::NotMoved:
      EXPECT_EQ(lost.comes, kept) << KeyOf(lost.ref);
      break;
    case WriteFate::Zero:
    case WriteFate::Limited: // an older firmware may have no register to read it from
      EXPECT_TRUE(lost.comes == zero || lost.comes == initially) << KeyOf(lost.ref);
      break;
    case WriteFate::Default:
    case WriteFate::NotReadBack:
      EXPECT_EQ(lost.comes, initially) << KeyOf(lost.ref);
      break;
    case WriteFate::Mapped:
      EXPECT_TRUE(lost.ref.tag == "TYPE" || lost.ref.tag == "SEKI" || lost.ref.tag == "STYP");
      break;
    case WriteFate::Overlaid: // where a firmware has its own places
      EXPECT_TRUE(GetParam().number == 0 || GetParam().number == 2) << KeyOf(lost.ref);
      break;
    case WriteFate::Goes:
      break;
    }
  }
  // Section N came with generation 3 and is not written before generation 5.
  const bool lostConstants = std::ranges::any_of(
      forecast.losses, [](const LostParameter& lost) { return lost.fate == WriteFate::NoSection; });
  EXPECT_EQ(lostConstants, GetParam().number < 5);
}

// Every register that a write changes is owned by a parameter that is told to change, or told by itself.
TEST_P(OfGeneration, EveryRegisterThatChangesIsTold) {
  Prepare(GetParam());
  WholeSetUp setUp = Filled(GetParam().model, 5);
  RecorderRead present = ReadRecorder(line, {});
  const std::vector<std::uint16_t> before = Memory();
  const WriteForecast forecast = ForecastWrite(setUp, present);
  ASSERT_EQ(WriteAndVerify(line, setUp, false).end, WriteEnd::Verified);
  const std::vector<std::uint16_t> after = Memory();
  std::set<ParameterRef> changed;
  for (const ChangedParameter& change : forecast.changes) {
    changed.insert(change.ref);
  }
  std::map<int, RegisterDifference> unseen;
  for (const RegisterDifference& different : forecast.unseen) {
    EXPECT_NE(different.tag, "") << different.number;
    unseen.emplace(different.number, different);
  }
  std::size_t registers = 0;
  for (const SectionBlock& block : forecast.blocks) {
    const auto old = std::ranges::find(present.blocks, block.section, &SectionBlock::section);
    const SetUpInForce inForce(setUp);
    for (const RegisterDifference& different : DifferentRegisters(GetParam().number, block, *old)) {
      ++registers;
      EXPECT_TRUE(changed.contains({different.section, different.item, different.tag}) ||
                  unseen.contains(different.number))
          << different.number;
    }
  }
  std::size_t really = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    really += before[i] != after[i] ? 1U : 0U;
  }
  EXPECT_EQ(registers, really);
  EXPECT_GT(really, 100U);
}

struct Ranges : CompanionRecorder {
  WholeSetUp setUp = [this] {
    StartWithModel(platform, "KOV");
    return InitialSetUp("KOV", Language::English);
  }();
  SetUpInForce inForce{setUp};
};

TEST_F(Ranges, AreConsecutiveItemsOfOneTagOrOfAll) {
  std::vector<ParameterRef> refs;
  for (const ParameterRef& ref : AllParameters()) {
    const bool wholeItem = ref.section == "T" && ref.item > 0;
    const bool oneTag = ref.section == "C" && ref.tag == "MMAX" && ref.item != 4 && ref.item < 7;
    if (wholeItem || oneTag || ref.section == "J") {
      refs.push_back(ref);
    }
  }
  const std::vector<ParameterRange> ranges = RangesOf(refs);
  ASSERT_EQ(ranges.size(), 4U);
  EXPECT_EQ(ranges[0], (ParameterRange{"C", 0, 3, "MMAX", 4}));
  EXPECT_EQ(ranges[1], (ParameterRange{"C", 5, 6, "MMAX", 2}));
  EXPECT_EQ(ranges[2], (ParameterRange{"T", 1, 3, "", 15}));
  EXPECT_EQ(ranges[3].tag, "");
  EXPECT_EQ(RangeName(ranges[0], Language::English), u"CH 1 to CH 4 Measuring range, upper limit");
  EXPECT_EQ(RangeName(ranges[1], Language::Japanese).substr(0, 9), u"CH 6～CH 7");
  EXPECT_EQ(RangeName(ranges[2], Language::English), u"trend displays Group 2 to Group 4: all (15)");
  EXPECT_EQ(RangeName(ranges[3], Language::English), u"network and mail settings: all (34)");
}

TEST_F(Ranges, SayEveryParameterOnce) {
  const std::vector<ParameterRef> all = AllParameters();
  std::size_t count = 0;
  for (const ParameterRange& range : RangesOf(all)) {
    count += range.count;
  }
  EXPECT_EQ(count, all.size());
}

TEST_F(Ranges, EverySectionHasAName) {
  for (const ParamSection& section : ParamStore) {
    for (const Language language : {Language::Japanese, Language::English}) {
      EXPECT_FALSE(SectionName(Trim(section.Code), language).empty()) << section.Code;
    }
  }
}

} // namespace
} // namespace loader::test
