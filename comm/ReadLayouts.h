// The layouts that the bulk read knows, as tables: for each generation its sections, and in each section the
// tags that are not simply read at their own place.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "comm/GenerationLayout.h"

namespace loader {

enum class ReadRule {
  Plain,      // from its own place
  Default,    // no register: value and read value take the default
  AtByte,     // from a fixed byte of the item
  TotalKind,  // the word at a fixed byte: SEKI becomes 1, STYP 0 for 1 and 15 for anything else
  SetByOther, // not read by itself
  InputKind,  // 13 to 18 become today's input kinds
  InputKind0, // the same without 18
};

struct TagRead {
  std::string_view tag;
  ReadRule rule;
  std::int16_t byte = 0; // of the item, for the rules at a fixed byte
};

// What becomes of the items behind the ones that a recorder has.
enum class ItemsBeyond { Default, Keep };

struct SectionRead {
  std::string_view section;
  int items = AllItems; // this many are read
  ItemsBeyond beyond = ItemsBeyond::Default;
  ReadRule texts = ReadRule::Plain; // of a tag that `tags` does not name
  ReadRule numbers = ReadRule::Plain;
  std::span<const TagRead> tags = {};
  bool oldTotalizer = false; // fixed words behind the walk of the tags, see OldTotalizerWords
};

struct GenerationRead {
  int generation; // for the block shifts
  std::span<const SectionRead> sections;
  SectionRead others; // of a section that `sections` does not name
};

constexpr SectionRead DefaultFilled(std::string_view section = {}) {
  return {.section = section, .items = 0};
}

// 13 up became these kinds; the oldest firmware has only the first five.
inline constexpr std::int16_t FirstOldInputKind = 13;
inline constexpr std::array<std::int16_t, 6> InputKindOfOld = {20, 21, 30, 31, 32, 33};
inline constexpr std::size_t OldestInputKinds = 5;

// A time of generation 2: the words of its hours and of its minutes.
struct OldTime {
  std::string_view tag;
  std::int16_t hourByte;
  std::int16_t minuteByte;
};
inline constexpr std::array<OldTime, 2> OldTimes{{{"TSTR", 12, 14}, {"TSTO", 16, 18}}};

// --- Generation 3

inline constexpr std::array<TagRead, 1> ReadTagsH3{{{"BETU", ReadRule::Default}}};
inline constexpr std::array<SectionRead, 6> ReadSectionsG3{{
    {.section = "H", .tags = ReadTagsH3},
    DefaultFilled("J"),
    DefaultFilled("K"),
    DefaultFilled("X"),
    DefaultFilled("L"),
    DefaultFilled("Y"),
}};
inline constexpr GenerationRead ReadLayoutG3{3, ReadSectionsG3, {}};

// --- Generation 2

// Also of generation 1.
inline constexpr std::array<TagRead, 11> ReadTagsH12{{
    {"SHOU", ReadRule::Default},
    {"BETU", ReadRule::Default},
    {"CFFL", ReadRule::Default},
    {"FTIT", ReadRule::Default},
    {"BAAL", ReadRule::Default},
    {"COMS", ReadRule::Default},
    {"COMB", ReadRule::Default},
    {"COMP", ReadRule::Default},
    {"PAS1", ReadRule::Default},
    {"PAS2", ReadRule::Default},
    {"RPAS", ReadRule::Default},
}};
inline constexpr std::array<TagRead, 14> ReadTagsC2{{
    {"TAG2", ReadRule::Default},
    {"STAG", ReadRule::Default},
    {"RECM", ReadRule::Default},
    {"OTCH", ReadRule::Default},
    {"SSCL", ReadRule::Default},
    {"SDIG", ReadRule::Default},
    {"SBAS", ReadRule::Default},
    {"SRES", ReadRule::Default},
    {"FTIO", ReadRule::AtByte, 84},
    {"SEUN", ReadRule::AtByte, 80},
    {"SECU", ReadRule::AtByte, 82},
    {"SEKI", ReadRule::TotalKind, 70},
    {"STYP", ReadRule::SetByOther},
    {"TYPE", ReadRule::InputKind},
}};
inline constexpr std::array<TagRead, 10> ReadTagsE2{{
    {"TSBA", ReadRule::Default},
    {"TWDY", ReadRule::Default},
    {"TDAY", ReadRule::Default},
    {"TSTR", ReadRule::Default},
    {"TSTO", ReadRule::Default},
    {"TEXT", ReadRule::Default},
    {"TIMH", ReadRule::Default},
    {"TIMA", ReadRule::Default},
    {"TIMT", ReadRule::Default},
    {"TCYC", ReadRule::AtByte, 4},
}};
// The digital inputs that an older recorder does not have keep what they held.
inline constexpr SectionRead ReadInputs{
    .section = "D", .items = OldDigitalInputs, .beyond = ItemsBeyond::Keep};
inline constexpr std::array<SectionRead, 10> ReadSectionsG2{{
    {.section = "A"},
    {.section = "G"},
    {.section = "T"},
    {.section = "B"},
    {.section = "M"},
    {.section = "U"},
    {.section = "H", .tags = ReadTagsH12},
    ReadInputs,
    {.section = "C", .tags = ReadTagsC2},
    {.section = "E", .tags = ReadTagsE2, .oldTotalizer = true},
}};
inline constexpr GenerationRead ReadLayoutG2{2, ReadSectionsG2, DefaultFilled()};

// --- Generation 1

inline constexpr std::array<TagRead, 15> ReadTagsC1{{
    {"TAG2", ReadRule::Default},
    {"STAG", ReadRule::Default},
    {"ROOT", ReadRule::Default},
    {"RECM", ReadRule::Default},
    {"OTCH", ReadRule::Default},
    {"FTIO", ReadRule::Default},
    {"SEKI", ReadRule::Default},
    {"SEUN", ReadRule::Default},
    {"SECU", ReadRule::Default},
    {"SSCL", ReadRule::Default},
    {"STYP", ReadRule::Default},
    {"SDIG", ReadRule::Default},
    {"SBAS", ReadRule::Default},
    {"SRES", ReadRule::Default},
    {"TYPE", ReadRule::InputKind},
}};
inline constexpr std::array<SectionRead, 9> ReadSectionsG1{{
    {.section = "G"},
    {.section = "T"},
    {.section = "B"},
    {.section = "M"},
    {.section = "U"},
    {.section = "H", .tags = ReadTagsH12},
    ReadInputs,
    {.section = "A", .items = OldChannels},
    {.section = "C", .items = OldChannels, .tags = ReadTagsC1},
}};
inline constexpr GenerationRead ReadLayoutG1{1, ReadSectionsG1, DefaultFilled()};

// --- Generation 0

inline constexpr std::array<TagRead, 26> ReadTagsH0{{
    {"TIMS", ReadRule::Default},    {"YEAR", ReadRule::Default},    {"MONT", ReadRule::Default},
    {"DAYS", ReadRule::Default},    {"HOUR", ReadRule::Default},    {"MINT", ReadRule::Default},
    {"SHOU", ReadRule::Default},    {"BETU", ReadRule::Default},    {"CFFL", ReadRule::Default},
    {"ASBY", ReadRule::Default},    {"FSTN", ReadRule::Default},    {"FZTI", ReadRule::Default},
    {"FPOI", ReadRule::Default},    {"FTIR", ReadRule::Default},    {"FTIT", ReadRule::Default},
    {"BAAL", ReadRule::Default},    {"COMS", ReadRule::Default},    {"COMB", ReadRule::Default},
    {"COMP", ReadRule::Default},    {"PAS1", ReadRule::Default},    {"PAS2", ReadRule::Default},
    {"RPAS", ReadRule::Default},    {"MSMP", ReadRule::AtByte, 4},  {"SSMP", ReadRule::AtByte, 6},
    {"ALMH", ReadRule::AtByte, 36}, {"ALML", ReadRule::AtByte, 38},
}};
inline constexpr std::array<TagRead, 1> ReadTagsB0{{{"BBRM", ReadRule::Default}}};
inline constexpr std::array<TagRead, 2> ReadTagsT0{
    {{"TPVD", ReadRule::Default}, {"TMEM", ReadRule::Default}}};
inline constexpr std::array<TagRead, 16> ReadTagsC0{{
    {"TAG2", ReadRule::Default},
    {"STAG", ReadRule::Default},
    {"ROOT", ReadRule::Default},
    {"SUBC", ReadRule::Default},
    {"RECM", ReadRule::Default},
    {"OTCH", ReadRule::Default},
    {"FTIO", ReadRule::Default},
    {"SEKI", ReadRule::Default},
    {"SEUN", ReadRule::Default},
    {"SECU", ReadRule::Default},
    {"SSCL", ReadRule::Default},
    {"STYP", ReadRule::Default},
    {"SDIG", ReadRule::Default},
    {"SBAS", ReadRule::Default},
    {"SRES", ReadRule::Default},
    {"TYPE", ReadRule::InputKind0},
}};
inline constexpr std::array<SectionRead, 9> ReadSectionsG0{{
    {.section = "M"},
    {.section = "U"},
    ReadInputs,
    {.section = "H", .tags = ReadTagsH0},
    {.section = "B", .items = 1, .tags = ReadTagsB0},
    {.section = "T", .items = 1, .tags = ReadTagsT0},
    {.section = "G", .items = 1, .numbers = ReadRule::Default},
    {.section = "A", .items = OldChannels},
    {.section = "C", .items = OldChannels, .tags = ReadTagsC0},
}};
inline constexpr GenerationRead ReadLayoutG0{0, ReadSectionsG0, DefaultFilled()};

// --- Today's layout: generations 4, 5, 20, 21

inline constexpr GenerationRead ReadLayoutPlain{5, {}, {}};

// An older recorder's number of an input kind as today's; `kinds` of them are known.
[[nodiscard]] constexpr std::int16_t InputKindToday(std::int16_t value, std::size_t kinds) {
  const int index = value - FirstOldInputKind;
  return index >= 0 && static_cast<std::size_t>(index) < kinds
             ? InputKindOfOld[static_cast<std::size_t>(index)]
             : value;
}

} // namespace loader
