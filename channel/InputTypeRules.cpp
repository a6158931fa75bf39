#include "channel/InputTypeRules.h"

#include <cstdint>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/modIni.h"
#include "platform/Platform.h"

namespace loader {

namespace {

// Numbers from first to last, both included; empty by default.
struct Span {
  int first = 1;
  int last = 0;
};
struct Spans {
  Span one;
  Span other = {};
};

constexpr bool Holds(Span span, std::int64_t number) {
  return number >= span.first && number <= span.last;
}

constexpr bool Holds(const Spans& spans, int number) {
  return Holds(spans.one, number) || Holds(spans.other, number);
}

constexpr bool IsOdd(std::int64_t number) {
  return number % 2 != 0;
}

// Runs of paired channels, numbered from 1; in each either the odd or the even numbers lead their pair.
struct PairRun {
  Span numbers;
  bool leaderIsOdd;
};
constexpr PairRun PairRuns[] = {
    {{1, 8}, true},
    {{10, 17}, false},
    {{19, 26}, true},
    {{28, 35}, false},
};

// What a dependent channel may take by the kind of the channel before it. A thermocouple shares its terminals
// with a thermocouple or with 50 mV, a resistance thermometer only with its like, and so on; any other kind
// shares with nothing.
struct OfferRow {
  Spans previous;
  Spans offered;
};
constexpr OfferRow OfferRows[] = {
    {{{0, 0}, {40, 40}}, {{1, 39}}},            // everything
    {{{1, 12}, {30, 30}}, {{1, 12}, {30, 30}}}, // thermocouples, 50 mV
    {{{20, 21}}, {{20, 21}}},                   // resistance thermometers
    {{{31, 31}}, {{31, 31}}},                   // 500 mV
    {{{32, 33}}, {{32, 33}}},                   // volts
};

void AppendNamed(std::vector<int>& kinds, Span span) {
  for (int kind = span.first; kind <= span.last; ++kind) {
    const std::u16string* name = CatalogueEntry(InputTypeNames, kind);
    if (name != nullptr && !name->empty()) {
      kinds.push_back(kind);
    }
  }
}

// Two decimal digits for each kind.
constexpr std::string_view PairClassCode =
    "0001010101010101010101010101010101010101131313131313131313130116171819000000000000";

// What a leader's chosen kind lets the next channel keep, and what it makes of any other.
struct LeaderRow {
  Spans chosen;
  Spans kept;
  int newKind; // of the next channel; ChosenKind: the kind of the leader
  TextId message;
};
constexpr int ChosenKind = -1;
constexpr LeaderRow LeaderRows[] = {
    {{{1, 19}, {30, 30}}, {{1, 19}, {30, 30}}, 1, 62105},
    {{{20, 29}}, {{20, 29}}, 20, 62106},
    {{{31, 31}}, {{31, 31}}, ChosenKind, 62106},
    {{{32, 34}}, {{32, 34}}, ChosenKind, 62106},
};

// The range values that follow a kind, in the order of the channel dialog. PVKA is no range value: it is a
// percentage, which no kind limits.
enum class Fallback {
  KindDefMin,     // DefMin of the kind
  KindDefMax,     // DefMax of the kind
  RecordMinValue, // lower limit of the record
  RecordMaxValue, // upper limit of the record
  RecordSide,     // the limit of the record on the side where its default lies outside the kind's limits
};
struct InitStep {
  std::string_view section;
  std::string_view tag;
  Fallback fallback;
};
constexpr InitStep InitSteps[] = {
    {"C", "FILT", Fallback::RecordSide},     {"C", "SCAL", Fallback::RecordSide},
    {"C", "MMIN", Fallback::KindDefMin},     {"C", "MMAX", Fallback::KindDefMax},
    {"C", "SMIN", Fallback::RecordMinValue}, {"C", "SMAX", Fallback::RecordMaxValue},
    {"C", "PVSI", Fallback::RecordSide},     {"C", "RMIN", Fallback::RecordMinValue},
    {"C", "RMAX", Fallback::RecordMaxValue}, {"C", "SSCL", Fallback::RecordSide},
    {"C", "SECU", Fallback::RecordSide},     {"A", "A1VL", Fallback::RecordSide},
    {"A", "A2VL", Fallback::RecordSide},     {"A", "A3VL", Fallback::RecordSide},
    {"A", "A4VL", Fallback::RecordSide},
};

int FallbackValue(Fallback fallback, const ParamNumRecord& record, const InputRange& range) {
  switch (fallback) {
  case Fallback::KindDefMin:
    return range.DefMin;
  case Fallback::KindDefMax:
    return range.DefMax;
  case Fallback::RecordMinValue:
    return record.MinValue;
  case Fallback::RecordMaxValue:
    return record.MaxValue;
  case Fallback::RecordSide:
    break;
  }
  return record.DefaultValue < range.MinValue ? record.MinValue : record.MaxValue;
}

} // namespace

const InputRangeRow& InputRangeRowOf(int kind) {
  return kind >= 0 && kind < InputKinds ? InputRangeTable[static_cast<std::size_t>(kind)] : detail::NoKind;
}

void InputRangeLookup(int kind, int selector, InputRange& range) {
  const InputRangeRow& row = InputRangeRowOf(kind);
  // Deliberate: any unit but 0 on a temperature kind selects Fahrenheit, and so do the kinds from 30 up,
  // whose columns are alike.
  const bool celsius = (selector == 0 && kind < 30) || kind == KindOtherChannel;
  const InputRangeEntry& entry = celsius ? row[0] : row[1];
  range.MinValue = entry.MinValue;
  range.MaxValue = entry.MaxValue;
  range.DefMin = entry.DefMin;
  range.DefMax = entry.DefMax;
  if (kind != KindOtherChannel) {
    range.Point = entry.Point;
  }
}

int ChannelPairKind(int channelIndex) {
  if (channelIndex < 0) {
    return PairIndependent;
  }
  const std::int64_t number = std::int64_t{channelIndex} + 1;
  if (ModelCode == "BIQ") {
    return number == 4 ? PairLeader : number == 5 ? PairDependent : PairIndependent;
  }
  for (const PairRun& run : PairRuns) {
    if (Holds(run.numbers, number)) {
      return IsOdd(number) == run.leaderIsOdd ? PairLeader : PairDependent;
    }
  }
  return PairIndependent;
}

std::vector<int> OfferedInputTypes(int pairKind, int previousType) {
  std::vector<int> kinds;
  if (pairKind != PairDependent) {
    AppendNamed(kinds, {KindSkip, KindOtherChannel});
    return kinds;
  }
  kinds.push_back(KindSkip);
  for (const OfferRow& row : OfferRows) {
    if (Holds(row.previous, previousType)) {
      AppendNamed(kinds, row.offered.one);
      AppendNamed(kinds, row.offered.other);
    }
  }
  kinds.push_back(KindOtherChannel);
  return kinds;
}

void FillInputTypeList(ListBox& list, int channelIndex) {
  ClearList(list);
  const int pairKind = ChannelPairKind(channelIndex);
  const int previousType = pairKind == PairDependent ? NumValue("C", channelIndex - 1, "TYPE") : 0;
  for (const int kind : OfferedInputTypes(pairKind, previousType)) {
    const std::u16string* name = CatalogueEntry(InputTypeNames, kind);
    AddItem(list, name != nullptr ? std::u16string_view(*name) : std::u16string_view{}, kind);
  }
}

int PairClass(int kind) {
  if (kind < 0 || static_cast<std::size_t>(kind) >= PairClassCode.size() / 2) {
    return 0;
  }
  const auto at = static_cast<std::size_t>(kind) * 2;
  return (PairClassCode[at] - '0') * 10 + (PairClassCode[at + 1] - '0');
}

std::optional<LeaderConflict> FindLeaderConflict(int chosenType, int nextType) {
  if (nextType == KindSkip || nextType == KindOtherChannel) {
    return std::nullopt;
  }
  for (const LeaderRow& row : LeaderRows) {
    if (Holds(row.chosen, chosenType)) {
      if (Holds(row.kept, nextType)) {
        return std::nullopt;
      }
      return LeaderConflict{row.newKind == ChosenKind ? chosenType : row.newKind, row.message};
    }
  }
  return std::nullopt;
}

bool CheckPairLeader(int channelIndex, int chosenType, bool& tableChanged) {
  if (ChannelPairKind(channelIndex) != PairLeader) {
    return true;
  }
  const int next = channelIndex + 1;
  const std::optional<LeaderConflict> conflict =
      FindLeaderConflict(chosenType, NumValue("C", next, "TYPE", KindSkip));
  if (!conflict) {
    return true;
  }
  if (!AskOkCancel(LoadText(conflict->message))) {
    return false;
  }
  tableChanged = true;
  ChannelInit(next, conflict->newKind);
  return true;
}

void ChannelInit(int channelIndex, int kind) {
  if (kind < 0 || kind >= InputKinds) {
    return;
  }
  const InputRangeEntry& celsius = InputRangeRowOf(kind)[0];
  SetNumValue("C", channelIndex, "TYPE", static_cast<std::int16_t>(kind));
  SetNumValue("C", channelIndex, "UNIT", celsius.UnitNo);
  InputRange range;
  InputRangeLookup(kind, celsius.UnitNo, range);
  if (ParamNumRecord* point = FindNumRecord("C", channelIndex, "POIN")) {
    // Deliberate: only the volt kinds bring their own position.
    const bool fromTable = Holds(Span{32, 34}, kind);
    SetNumber(*point, fromTable ? static_cast<std::int16_t>(range.Point) : point->DefaultValue, SlotValue);
  }
  for (const InitStep& row : InitSteps) {
    if (ParamNumRecord* record = FindNumRecord(row.section, channelIndex, row.tag)) {
      const bool inside =
          !StoredToText(record->DefaultValue, range.Point, range.MinValue, range.MaxValue).empty();
      // Deliberate: the record's limit may itself lie outside the kind's limits.
      const int value = inside ? record->DefaultValue : FallbackValue(row.fallback, *record, range);
      SetNumber(*record, static_cast<std::int16_t>(value), SlotValue);
    }
  }
}

bool HasLogarithm() {
  return ModelCode == "KOV";
}

ChannelState StoredChannelState(int channelIndex) {
  return {.kind = NumValue("C", channelIndex, "TYPE"),
          .unit = NumValue("C", channelIndex, "UNIT"),
          .scalingOn = NumValue("C", channelIndex, "SCAL") != 0,
          .logOn = HasLogarithm() && NumValue("C", channelIndex, "TAIS") == 1};
}

bool KindLimited(int kind, bool scalingOn) {
  return kind != KindOtherChannel && (Holds(Span{1, 29}, kind) || !scalingOn);
}

Limits KindLimits(int kind, int unit) {
  InputRange range;
  InputRangeLookup(kind, unit, range);
  return {range.MinValue, range.MaxValue};
}

Limits RecordLimits(const ParamNumRecord& record) {
  return {record.MinValue, record.MaxValue};
}

Limits MeasuringLimits(int kind) {
  return kind == KindOtherChannel ? Limits{-32767, 32767} : Limits{-1000, 5500};
}

Limits EngineeringLimits(const ChannelState& channel, const ParamNumRecord& record) {
  if (KindLimited(channel.kind, channel.scalingOn)) {
    return KindLimits(channel.kind, channel.unit);
  }
  return channel.logOn ? Limits{-9, 9} : RecordLimits(record);
}

Limits AlarmLimits(const ChannelState& channel, const ParamNumRecord& record) {
  return KindLimited(channel.kind, channel.scalingOn) ? KindLimits(channel.kind, channel.unit)
                                                      : RecordLimits(record);
}

int MeasuringPoint(int kind, int otherKind) {
  return InputRangeRowOf(kind == KindOtherChannel ? otherKind : kind)[0].Point;
}

int EngineeringPoint(int kind, bool scalingOn, int chosenPoint) {
  return scalingOn || kind == KindOtherChannel ? chosenPoint : InputRangeRowOf(kind)[0].Point;
}

} // namespace loader
