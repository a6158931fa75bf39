// Input type rules: the table of input kinds, the pairing of channels, and what follows from both.
//
// The kind is the value of TYPE: 0 to 41. It decides the decimal point and the limits of a measuring
// channel's values, their unit, and the kinds of the neighbour that shares its terminals. Display names are
// InputTypeNames (core/modIni.h); a kind without a name is never offered, but a file or a recorder may hold
// it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "core/TextTable.h"
#include "core/modMain.h"
#include "platform/Controls.h"

namespace loader {

constexpr int InputKinds = 42;
constexpr int KindSkip = 0;
constexpr int FirstOtherKind = 30; // the kinds below are temperatures
constexpr int KindOtherChannel = 40;

// --- The table of kinds

// Values of one kind in one temperature unit. Limits and defaults are stored integers at position Point.
struct InputRangeEntry {
  std::int16_t UnitNo; // entry of UnitNames
  std::int16_t Point;
  std::int16_t MinValue; // inclusive
  std::int16_t MaxValue; // inclusive
  std::int16_t DefMin;
  std::int16_t DefMax;
  bool operator==(const InputRangeEntry&) const = default;
};
// Column 0 degrees Celsius, column 1 degrees Fahrenheit. UnitNo of column 1 is read by no rule.
using InputRangeRow = std::array<InputRangeEntry, 2>;

namespace detail {

constexpr InputRangeRow NoKind{};

struct TwoValues {
  std::int16_t celsius;
  std::int16_t fahrenheit;
};

constexpr InputRangeRow Temperature(TwoValues minValue, TwoValues maxValue, TwoValues defMin,
                                    TwoValues defMax) {
  return {{{0, 1, minValue.celsius, maxValue.celsius, defMin.celsius, defMax.celsius},
           {0, 1, minValue.fahrenheit, maxValue.fahrenheit, defMin.fahrenheit, defMax.fahrenheit}}};
}

// The same in both columns, but for the unit.
constexpr InputRangeRow Plain(std::int16_t unit, std::int16_t point, std::int16_t minValue,
                              std::int16_t maxValue, std::int16_t defMin, std::int16_t defMax,
                              std::int16_t unusedUnit = 0) {
  return {{{unit, point, minValue, maxValue, defMin, defMax},
           {unusedUnit, point, minValue, maxValue, defMin, defMax}}};
}

} // namespace detail

// Indexed by kind.
inline constexpr std::array<InputRangeRow, InputKinds> InputRangeTable{{
    detail::NoKind, // 0: skipped
    detail::Temperature({-2300, -3820}, {14000, 25520}, {0, 320}, {12000, 21920}),
    detail::Temperature({-2300, -3820}, {8300, 15260}, {0, 320}, {8000, 14720}),
    detail::Temperature({-2300, -3820}, {11300, 20660}, {0, 320}, {6000, 11120}),
    detail::Temperature({-2300, -3820}, {4300, 8060}, {0, 320}, {3000, 5720}),
    detail::Temperature({-300, -220}, {17900, 32540}, {0, 320}, {16000, 29120}), // 5
    detail::Temperature({-300, -220}, {17900, 32540}, {0, 320}, {16000, 29120}),
    detail::Temperature({3700, 6980}, {17900, 32540}, {6000, 11120}, {17000, 30920}),
    detail::Temperature({-300, -220}, {13300, 24260}, {0, 320}, {13000, 23720}),
    detail::Temperature({-300, -220}, {17900, 32540}, {0, 320}, {17000, 30920}),
    detail::Temperature({-2300, -3820}, {9300, 17060}, {0, 320}, {9000, 16520}), // 10
    detail::Temperature({-2300, -3820}, {4300, 8060}, {0, 320}, {4000, 7520}),
    detail::Temperature({-300, -220}, {13300, 24260}, {0, 320}, {13000, 23720}),
    detail::NoKind, // 13
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::Temperature({-2300, -3820}, {6300, 11660}, {0, 320}, {5000, 9320}), // 20
    detail::Temperature({-2300, -3820}, {6300, 11660}, {0, 320}, {5000, 9320}),
    // 2732 is no conversion of 150.0; the recorder's own table holds it (also for 24).
    detail::Temperature({-900, -1300}, {2100, 4100}, {0, 320}, {1500, 2732}),
    detail::Temperature({-2300, -3820}, {6300, 11660}, {0, 320}, {5000, 9320}),
    detail::Temperature({-800, -1120}, {2300, 4460}, {0, 320}, {1500, 2732}),
    detail::NoKind, // 25
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::Plain(114, 2, -1000, 5500, 0, 5000), // 30
    detail::Plain(114, 1, -100, 5500, 0, 5000),
    detail::Plain(115, 3, 500, 5500, 1000, 5000),
    detail::Plain(115, 3, -100, 5500, 0, 5000, 116),
    detail::Plain(115, 2, -100, 5500, 0, 5000),
    detail::Plain(0, 1, -32767, 32767, -32767, 32767, 1), // 35
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::NoKind,
    detail::Plain(4, 0, -32767, 32767, 0, 5000), // 40: another channel
    detail::NoKind,
}};

// The row of a kind; a row of zeros for a kind outside of the table, which a file or a recorder may hold.
[[nodiscard]] const InputRangeRow& InputRangeRowOf(int kind);

struct InputRange {
  int Point = 0;
  int MinValue = 0;
  int MaxValue = 0;
  int DefMin = 0;
  int DefMax = 0;
  bool operator==(const InputRange&) const = default;
};

// The values of a kind for a temperature selector, which is the channel's unit number: below kind 30 unit 0
// gives the Celsius column and any other unit the Fahrenheit column. Kind 40 leaves range.Point as it is: it
// takes its position from the channel that it refers to.
void InputRangeLookup(int kind, int selector, InputRange& range);

// --- Pairs of channels

constexpr int PairIndependent = 0;
constexpr int PairLeader = 1;
constexpr int PairDependent = 2; // on the channel before it

// By the model in force; the index counts from 0.
[[nodiscard]] int ChannelPairKind(int channelIndex);

// The kinds that a channel may take, in the order of its list. `previousType` is the TYPE of the channel
// before it; it counts only for a dependent channel.
[[nodiscard]] std::vector<int> OfferedInputTypes(int pairKind, int previousType);
// The list of a channel, by the store: display names, with the kind as item data. Selects nothing.
void FillInputTypeList(ListBox& list, int channelIndex);

// The class of a kind for the paste of a channel: two channels of a pair need equal classes, or one of them
// 0, which goes with anything. Finer than the families of the lists, deliberately: 1-5 V and 0-5 V differ
// here. 0 for a kind outside of the code.
[[nodiscard]] int PairClass(int kind);

// What a leader's new kind does to a next channel that cannot share it.
struct LeaderConflict {
  int newKind;    // what the next channel becomes
  TextId message; // what the user is asked
};
[[nodiscard]] std::optional<LeaderConflict> FindLeaderConflict(int chosenType, int nextType);

// The check of a pair leader before its kind is stored. On a conflict the user is asked; on OK `tableChanged`
// becomes true and the next channel is initialised. False, with nothing changed, when the user cancels.
[[nodiscard]] bool CheckPairLeader(int channelIndex, int chosenType, bool& tableChanged);

// Brings a channel's parameters in the store (sections C and A) in line with a kind: TYPE, UNIT, POIN, then
// each range value takes its default where the kind's limits admit it. Tags that the model does not have are
// skipped; a kind outside the table changes nothing.
void ChannelInit(int channelIndex, int kind);

// --- Limits and positions of a channel's values

struct Limits {
  int minimum;
  int maximum;
  bool operator==(const Limits&) const = default;
};

// What of a channel decides the limits of its values, as a dialog shows it or the store holds it. An
// operation channel has the rules of kind 40.
struct ChannelState {
  int kind = 0;           // TYPE
  int unit = 0;           // UNIT: the selector of InputRangeLookup
  bool scalingOn = false; // SCAL
  bool logOn = false;     // TAIS
};
// Whether the model's channels have a logarithm. TAIS of another model, from a file of hand, counts as off
// wherever it is read, and its record stays.
[[nodiscard]] bool HasLogarithm();
// The state that the store holds; what is absent is 0.
[[nodiscard]] ChannelState StoredChannelState(int channelIndex);

// Whether the kind (and not the parameter's own record) limits the values that are on the channel's scale.
[[nodiscard]] bool KindLimited(int kind, bool scalingOn);

[[nodiscard]] Limits KindLimits(int kind, int unit);
[[nodiscard]] Limits RecordLimits(const ParamNumRecord& record);

// MMIN, MMAX in their fields: the terminals take the same signal whatever the kind.
[[nodiscard]] Limits MeasuringLimits(int kind);
// SMIN, SMAX, RMIN, RMAX. The exponents -9 to 9 of the logarithm stand in place of the record's limits.
[[nodiscard]] Limits EngineeringLimits(const ChannelState& channel, const ParamNumRecord& record);
// SECU and A1VL to A4VL.
[[nodiscard]] Limits AlarmLimits(const ChannelState& channel, const ParamNumRecord& record);

// Position of MMIN, MMAX: that of the kind, for kind 40 that of the kind of the channel referred to.
[[nodiscard]] int MeasuringPoint(int kind, int otherKind);
// Position of the engineering value, and of the record range and the alarms without F value: `chosenPoint`
// (POIN, or its list) under scaling and for kind 40, else that of the kind.
[[nodiscard]] int EngineeringPoint(int kind, bool scalingOn, int chosenPoint);

} // namespace loader
