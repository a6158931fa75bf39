// The layouts that the bulk write knows, as tables: for each generation its sections, and in each section the
// tags that do not simply go with their value to their own place.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "comm/GenerationLayout.h"

namespace loader {

enum class WriteRule {
  Untouched, // the recorder keeps what it has
  Value,     // to its own place, as all of the following where nothing else is said
  Zero,
  Default,          // the record's default instead of its value
  ZeroFrom,         // a value from `argument` up goes as 0
  AtByte,           // the value at byte `argument` of the item
  InputKind,        // an input kind as older recorders number it
  InputKind0,       // the same for the oldest firmware
  TotalKind,        // at byte `argument`: 1 when SEKI is 1 and STYP is 0, else 0
  TriggerChannel,   // see TriggerLimits: `argument` is an index
  HoursThenMinutes, // at byte `argument` the hours, in the next word the minutes of a value in minutes
};

struct TagWrite {
  std::string_view tag;
  WriteRule rule;
  std::int16_t argument = 0;
};

struct SectionWrite {
  std::string_view section;
  int items = AllItems;               // the others are not touched
  WriteRule texts = WriteRule::Value; // of a tag that `tags` does not name
  TagWrite numbers = {{}, WriteRule::Value};
  std::span<const TagWrite> tags = {};
  bool oldTotalizer = false; // section Z into OldTotalizerWords
};

struct GenerationWrite {
  int generation; // for the block shifts
  std::span<const SectionWrite> sections;
  SectionWrite others; // of a section that `sections` does not name
};

inline constexpr TagWrite UntouchedNumbers{{}, WriteRule::Untouched};

// The number of a trigger's channel or digital input depends on the trigger's timing, which is the record in
// front of it: a number from the limit up goes as 0.
struct TriggerLimit {
  std::int16_t inputs; // timing 1 and 2: digital input on, off
  std::int16_t alarms; // timing 3 and 4: alarm of a channel
};
inline constexpr std::int16_t NoLimit = 32767;
inline constexpr std::array<TriggerLimit, 3> TriggerLimits{{
    {NoLimit, 18}, // generations 3 and 4
    {5, 18},       // generation 2
    {5, 9},        // generations 0 and 1
}};
inline constexpr std::int16_t TriggerG34 = 0;
inline constexpr std::int16_t TriggerG2 = 1;
inline constexpr std::int16_t TriggerG01 = 2;

// Today's input kinds as the older recorders number them. Any other kind goes unchanged.
struct OldInputKind {
  std::int16_t kind;
  std::int16_t old;
  std::int16_t oldest; // generation 0
};
inline constexpr std::array<OldInputKind, 7> OldInputKinds{{
    {20, 13, 13},
    {21, 14, 14},
    {30, 15, 15},
    {31, 16, 16},
    {32, 17, 17},
    {33, 18, 17}, // the oldest firmware lacks this kind and gets its neighbour
    {40, 0, 0},
}};

// --- Generation 20

inline constexpr std::array<TagWrite, 1> WriteTagsG20{{{"TAIS", WriteRule::Default}}};
inline constexpr GenerationWrite WriteLayoutG20{20, {}, {.section = {}, .tags = WriteTagsG20}};

// --- Generations 4 and 3

inline constexpr int OlderChannels = 18; // items of C and A that generations 2 to 4 have

inline constexpr std::array<TagWrite, 5> WriteTagsC4{{
    {"SUBC", WriteRule::ZeroFrom, 19},
    {"OTCH", WriteRule::ZeroFrom, 18},
    {"TAIS", WriteRule::Zero},
    {"SRIN", WriteRule::Zero},
    {"SDIG", WriteRule::ZeroFrom, 82},
}};
inline constexpr std::array<TagWrite, 1> WriteTagsE4{{{"TEXT", WriteRule::ZeroFrom, 82}}};
inline constexpr std::array<TagWrite, 3> WriteTagsH4{{
    {"PAS1", WriteRule::Zero},
    {"PAS2", WriteRule::Zero},
    {"RPAS", WriteRule::Zero},
}};
inline constexpr std::array<TagWrite, 4> WriteTagsH3{{
    {"PAS1", WriteRule::Zero},
    {"PAS2", WriteRule::Zero},
    {"RPAS", WriteRule::Zero},
    {"BETU", WriteRule::Zero},
}};
inline constexpr std::array<TagWrite, 1> WriteTagsM4{{{"MTM2", WriteRule::TriggerChannel, TriggerG34}}};
inline constexpr std::array<TagWrite, 1> WriteTagsX4{{{"ETG1", WriteRule::TriggerChannel, TriggerG34}}};

inline constexpr SectionWrite WriteChannels4{.section = "C", .items = OlderChannels, .tags = WriteTagsC4};
inline constexpr SectionWrite WriteAlarms4{.section = "A", .items = OlderChannels};
// Also of generation 2.
inline constexpr SectionWrite WriteGroups4{.section = "G", .numbers = {{}, WriteRule::ZeroFrom, 19}};
inline constexpr SectionWrite WriteTotalizer4{.section = "E", .tags = WriteTagsE4};
inline constexpr SectionWrite WriteMessages4{.section = "M", .tags = WriteTagsM4};

inline constexpr std::array<SectionWrite, 7> WriteSectionsG4{{
    WriteChannels4,
    WriteAlarms4,
    WriteGroups4,
    WriteTotalizer4,
    {.section = "H", .tags = WriteTagsH4},
    WriteMessages4,
    {.section = "X", .tags = WriteTagsX4},
}};
inline constexpr GenerationWrite WriteLayoutG4{4, WriteSectionsG4, {}};

// As generation 4, without X and with one tag more in H.
inline constexpr std::array<SectionWrite, 6> WriteSectionsG3{{
    WriteChannels4,
    WriteAlarms4,
    WriteGroups4,
    WriteTotalizer4,
    {.section = "H", .tags = WriteTagsH3},
    WriteMessages4,
}};
inline constexpr GenerationWrite WriteLayoutG3{3, WriteSectionsG3, {}};

// --- Generation 2

inline constexpr std::array<TagWrite, 29> WriteTagsC2{{
    {"TAG", WriteRule::Value},       {"COLR", WriteRule::Value},         {"FILT", WriteRule::Value},
    {"UNIT", WriteRule::Value},      {"SCAL", WriteRule::Value},         {"MMIN", WriteRule::Value},
    {"MMAX", WriteRule::Value},      {"SMIN", WriteRule::Value},         {"SMAX", WriteRule::Value},
    {"POIN", WriteRule::Value},      {"ROOT", WriteRule::Value},         {"SUBC", WriteRule::ZeroFrom, 19},
    {"PVSI", WriteRule::Value},      {"PVKA", WriteRule::Value},         {"NIPO", WriteRule::Value},
    {"RECO", WriteRule::Value},      {"RMIN", WriteRule::Value},         {"RMAX", WriteRule::Value},
    {"DSPM", WriteRule::Value},      {"ZMB1", WriteRule::Value},         {"ZMB2", WriteRule::Value},
    {"ZMP1", WriteRule::Value},      {"ZMP2", WriteRule::Value},         {"TAIS", WriteRule::Default},
    {"TYPE", WriteRule::InputKind},  {"FTIO", WriteRule::AtByte, 84},    {"SEUN", WriteRule::AtByte, 80},
    {"SECU", WriteRule::AtByte, 82}, {"SEKI", WriteRule::TotalKind, 70},
}};
// Also of generations 1 and 0.
inline constexpr std::array<TagWrite, 16> WriteTagsA2{{
    {"A1TY", WriteRule::Value},
    {"A1VL", WriteRule::Value},
    {"A1HC", WriteRule::Value},
    {"A1RL", WriteRule::ZeroFrom, 11},
    {"A2TY", WriteRule::Value},
    {"A2VL", WriteRule::Value},
    {"A2HC", WriteRule::Value},
    {"A2RL", WriteRule::ZeroFrom, 11},
    {"A3TY", WriteRule::Value},
    {"A3VL", WriteRule::Value},
    {"A3HC", WriteRule::Value},
    {"A3RL", WriteRule::ZeroFrom, 11},
    {"A4TY", WriteRule::Value},
    {"A4VL", WriteRule::Value},
    {"A4HC", WriteRule::Value},
    {"A4RL", WriteRule::ZeroFrom, 11},
}};
// Also of generation 1.
inline constexpr std::array<TagWrite, 17> WriteTagsH2{{
    {"TIMS", WriteRule::Value},
    {"YEAR", WriteRule::Value},
    {"MONT", WriteRule::Value},
    {"DAYS", WriteRule::Value},
    {"HOUR", WriteRule::Value},
    {"MINT", WriteRule::Value},
    {"KLOC", WriteRule::Value},
    {"MSMP", WriteRule::Value},
    {"SSMP", WriteRule::Value},
    {"ASBY", WriteRule::Value},
    {"FSTN", WriteRule::Value},
    {"FZTI", WriteRule::Value},
    {"FPOI", WriteRule::Value},
    {"FTIR", WriteRule::Value},
    {"ALMH", WriteRule::Value},
    {"ALML", WriteRule::Value},
    {"BETU", WriteRule::Zero},
}};
inline constexpr std::array<TagWrite, 5> WriteTagsM2{{
    {"MCOR", WriteRule::Value},
    {"MITI", WriteRule::Value},
    {"MTM1", WriteRule::Value},
    {"MTM2", WriteRule::TriggerChannel, TriggerG2},
    {"MTM3", WriteRule::Value},
}};
inline constexpr std::array<TagWrite, 1> WriteTagsD2{{{"DIKI", WriteRule::ZeroFrom, 4}}};
inline constexpr std::array<TagWrite, 3> WriteTagsE2{{
    {"TCYC", WriteRule::AtByte, 4},
    {"TSTR", WriteRule::HoursThenMinutes, 12},
    {"TSTO", WriteRule::HoursThenMinutes, 16},
}};

inline constexpr std::array<SectionWrite, 7> WriteSectionsG2{{
    {.section = "C",
     .items = OlderChannels,
     .texts = WriteRule::Untouched,
     .numbers = UntouchedNumbers,
     .tags = WriteTagsC2},
    {.section = "A", .items = OlderChannels, .numbers = UntouchedNumbers, .tags = WriteTagsA2},
    WriteGroups4,
    {.section = "H", .numbers = UntouchedNumbers, .tags = WriteTagsH2},
    {.section = "M", .numbers = UntouchedNumbers, .tags = WriteTagsM2},
    {.section = "D", .items = OldDigitalInputs, .numbers = UntouchedNumbers, .tags = WriteTagsD2},
    {.section = "E", .numbers = UntouchedNumbers, .tags = WriteTagsE2, .oldTotalizer = true},
}};
inline constexpr GenerationWrite WriteLayoutG2{2, WriteSectionsG2, {}};

// --- Generation 1

inline constexpr std::array<TagWrite, 24> WriteTagsC1{{
    {"TAG", WriteRule::Value},    {"COLR", WriteRule::Value},     {"FILT", WriteRule::Value},
    {"UNIT", WriteRule::Value},   {"SCAL", WriteRule::Value},     {"MMIN", WriteRule::Value},
    {"MMAX", WriteRule::Value},   {"SMIN", WriteRule::Value},     {"SMAX", WriteRule::Value},
    {"POIN", WriteRule::Value},   {"PVSI", WriteRule::Value},     {"PVKA", WriteRule::Value},
    {"NIPO", WriteRule::Value},   {"RECO", WriteRule::Value},     {"RMIN", WriteRule::Value},
    {"RMAX", WriteRule::Value},   {"DSPM", WriteRule::Value},     {"ZMB1", WriteRule::Value},
    {"ZMB2", WriteRule::Value},   {"ZMP1", WriteRule::Value},     {"ZMP2", WriteRule::Value},
    {"TAIS", WriteRule::Default}, {"TYPE", WriteRule::InputKind}, {"SUBC", WriteRule::ZeroFrom, 10},
}};
// Also of generation 0.
inline constexpr std::array<TagWrite, 5> WriteTagsM1{{
    {"MCOR", WriteRule::Value},
    {"MITI", WriteRule::Value},
    {"MTM1", WriteRule::Value},
    {"MTM2", WriteRule::TriggerChannel, TriggerG01},
    {"MTM3", WriteRule::Value},
}};
inline constexpr std::array<TagWrite, 1> WriteTagsD1{{{"DIKI", WriteRule::ZeroFrom, 2}}};

inline constexpr SectionWrite WriteAlarms1{
    .section = "A", .items = OldChannels, .numbers = UntouchedNumbers, .tags = WriteTagsA2};
inline constexpr SectionWrite WriteGroups1{.section = "G", .numbers = {{}, WriteRule::ZeroFrom, 10}};
inline constexpr SectionWrite WriteMessages1{
    .section = "M", .numbers = UntouchedNumbers, .tags = WriteTagsM1};
inline constexpr SectionWrite WriteInputs1{
    .section = "D", .items = OldDigitalInputs, .numbers = UntouchedNumbers, .tags = WriteTagsD1};

inline constexpr std::array<SectionWrite, 6> WriteSectionsG1{{
    {.section = "C",
     .items = OldChannels,
     .texts = WriteRule::Untouched,
     .numbers = UntouchedNumbers,
     .tags = WriteTagsC1},
    WriteAlarms1,
    WriteGroups1,
    {.section = "H", .numbers = UntouchedNumbers, .tags = WriteTagsH2},
    WriteMessages1,
    WriteInputs1,
}};
inline constexpr GenerationWrite WriteLayoutG1{1, WriteSectionsG1, {}};

// --- Generation 0

inline constexpr std::array<TagWrite, 24> WriteTagsC0{{
    {"TAG", WriteRule::Value},    {"COLR", WriteRule::Default},    {"FILT", WriteRule::Value},
    {"UNIT", WriteRule::Value},   {"SCAL", WriteRule::Value},      {"MMIN", WriteRule::Value},
    {"MMAX", WriteRule::Value},   {"SMIN", WriteRule::Value},      {"SMAX", WriteRule::Value},
    {"POIN", WriteRule::Value},   {"PVSI", WriteRule::Value},      {"PVKA", WriteRule::Value},
    {"NIPO", WriteRule::Value},   {"RECO", WriteRule::Value},      {"RMIN", WriteRule::Value},
    {"RMAX", WriteRule::Value},   {"DSPM", WriteRule::Value},      {"ZMB1", WriteRule::Value},
    {"ZMB2", WriteRule::Value},   {"ZMP1", WriteRule::Value},      {"ZMP2", WriteRule::Value},
    {"TAIS", WriteRule::Default}, {"TYPE", WriteRule::InputKind0}, {"SUBC", WriteRule::Zero},
}};
inline constexpr std::array<TagWrite, 3> WriteTagsT0{{
    {"THOU", WriteRule::Value},
    {"TMCH", WriteRule::Value},
    {"TBUN", WriteRule::Value},
}};
inline constexpr std::array<TagWrite, 3> WriteTagsB0{{
    {"BHOU", WriteRule::Value},
    {"BPVD", WriteRule::Value},
    {"BPVM", WriteRule::Value},
}};
// Deliberately without ALML, although the read takes it from byte 38: the recorder keeps its own.
inline constexpr std::array<TagWrite, 5> WriteTagsH0{{
    {"KLOC", WriteRule::Value},
    {"BETU", WriteRule::Zero},
    {"MSMP", WriteRule::AtByte, 4},
    {"SSMP", WriteRule::AtByte, 6},
    {"ALMH", WriteRule::AtByte, 36},
}};

inline constexpr std::array<SectionWrite, 8> WriteSectionsG0{{
    {.section = "C",
     .items = OldChannels,
     .texts = WriteRule::Untouched,
     .numbers = UntouchedNumbers,
     .tags = WriteTagsC0},
    WriteAlarms1,
    WriteGroups1,
    {.section = "T", .numbers = UntouchedNumbers, .tags = WriteTagsT0},
    {.section = "B", .numbers = UntouchedNumbers, .tags = WriteTagsB0},
    {.section = "H", .numbers = UntouchedNumbers, .tags = WriteTagsH0},
    WriteMessages1,
    WriteInputs1,
}};
inline constexpr GenerationWrite WriteLayoutG0{0, WriteSectionsG0, {}};

// --- Today's layout: generations 5 and 21

inline constexpr GenerationWrite WriteLayoutPlain{5, {}, {}};

} // namespace loader
