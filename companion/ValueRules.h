// The rules of the fields for values that stand in the set-up in force: what a check of a file and an edit of
// a set-up judge by the same measure.
#pragma once

#include <map>
#include <string>

#include "channel/InputTypeRules.h"
#include "companion/Parameters.h"
#include "meaning/ParameterText.h"

namespace loader {

// Behind the measuring channels.
[[nodiscard]] bool IsOperationChannel(int item);

// A parameter of a channel, be it its input or its alarms.
[[nodiscard]] bool IsOfChannel(const ParameterRef& ref);

// The number of a channel's row of values is looked up once for all of its parameters. Make a new one when
// the store has changed.
class ChannelRows {
public:
  // nullptr for a parameter that is none of a channel.
  [[nodiscard]] const ChannelRow* Of(const ParameterRef& ref);

private:
  std::map<int, ChannelRow> rows_;
};

[[nodiscard]] bool IsList(Sense sense);
[[nodiscard]] constexpr bool Within(const Limits& limits, int value) {
  return value >= limits.minimum && value <= limits.maximum;
}

// Whether a value has a row in the list in force or in that of another generation, or stands at a row of
// others. Kinds of inputs are not judged by their rows: OfferedInputTypes.
[[nodiscard]] bool HasRow(const MeaningRow& row, int item, int value);

// A kind that the list of kinds offers: those without a name are none.
[[nodiscard]] bool IsKind(int type);

// A measuring channel that is skipped, or whose kind is none: its unit and its ranges stand for nothing.
[[nodiscard]] bool MeasuresNothing(const ParameterRef& ref);

// A unit that the kind of its channel does not take: a temperature has one of two.
[[nodiscard]] bool IsUnitOfOtherKind(const ParameterRef& ref, int value);

// The name of a kind of input; its number for a kind without a name.
[[nodiscard]] std::u16string KindName(int kind);

} // namespace loader
