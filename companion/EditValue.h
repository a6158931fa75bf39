// A value as an engineer types it, read as the number or text that is stored, by the set-up in force.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "companion/EditRules.h"
#include "companion/Parameters.h"

namespace loader {

struct TypedReading {
  std::optional<StoredValue> value;
  std::u16string reason; // why there is none
};

// What a parameter is may depend on others: positions and limits on the kind of the channel, a list on the
// parameter that decides it. Edits are read in the order of these stages, each behind the store of those
// before.
enum class ReadingStage { Text, Choice, DecidedChoice, Number, AlarmValue };
inline constexpr int ReadingStages = 5;
[[nodiscard]] ReadingStage StageOf(const ParameterRef& ref);

// What is typed:
//   a number   at its position: "800.0"; digits that the position does not hold are refused, never cut
//   a list     an entry's text, in whatever width and case, or the stored number of an entry
//   a time     "8:05"; addresses of a mask "1 3 8", none "0"; under the logarithm a power "3.16E2"
//   #800       any number as it is stored, without its point
// The text that a report shows for the present value leaves the value as it is. A text is trimmed as its
// field does. Limits are Objection's, once all is stored.
[[nodiscard]] TypedReading ReadTypedValue(const ParameterRef& ref, std::u16string_view typed,
                                          ChannelRows& rows, Language language);

// Full-width letters, digits and blanks as half-width ones, half-width katakana as full-width ones, capitals
// as small letters, without blanks: what an engineer need not hit.
[[nodiscard]] std::u16string FoldedText(std::u16string_view text);

} // namespace loader
