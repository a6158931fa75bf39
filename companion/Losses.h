// What a transfer between a set-up and a recorder of older firmware leaves behind. Told by the tables of the
// layouts, in the words of reports.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "companion/Parameters.h"

namespace loader {

// What a whole read makes of a parameter.
enum class ReadFate {
  Read,      // it is the recorder's
  NoTag,     // the firmware does not have it: the default stands there
  NoItem,    // the firmware has fewer items: the same
  NoSection, // the firmware does not have the section: the same
  NotMoved,  // no read of the model takes it: commands, state, what belongs to the recorder alone
};
// Of a parameter of the set-up in force, read from a recorder of that generation.
[[nodiscard]] ReadFate FateOfRead(int generation, const ParameterRef& ref);

struct FilledParameter {
  ParameterRef ref;
  ReadFate fate = ReadFate::Read;
};
// Those of the set-up in force that a read did not take from the recorder, in the order of the parameter
// file.
[[nodiscard]] std::vector<FilledParameter> FilledByRead(int generation);

// Parameters that are told together: one tag of consecutive items, or all of consecutive items.
struct ParameterRange {
  std::string section;
  int first = 0; // items
  int last = 0;
  std::string tag; // empty: all of them
  std::size_t count = 0;
  bool operator==(const ParameterRange&) const = default;
};
// The same parameters in as few ranges as say it, in the order of the parameter file; `refs` are of the
// set-up in force, in that order.
[[nodiscard]] std::vector<ParameterRange> RangesOf(std::span<const ParameterRef> refs);
// "CH 10 ～ CH 30 タグ 2", "CH 10 ～ CH 30 警報: すべて (320)".
[[nodiscard]] std::u16string RangeName(const ParameterRange& range, Language language);

// "チャネル", "alarms".
[[nodiscard]] std::u16string_view SectionName(std::string_view section, Language language);

} // namespace loader
