// What may be set in the set-up in force, by the rules of the fields that the window has for it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "channel/InputTypeRules.h"
#include "companion/Parameters.h"
#include "meaning/ParameterText.h"

namespace loader {

// The number of a channel's row of values is looked up once for all of its parameters. Make a new one when
// the store has changed.
class ChannelRows {
public:
  // nullptr for a parameter that is none of a channel.
  [[nodiscard]] const ChannelRow* Of(const ParameterRef& ref);

private:
  std::map<int, ChannelRow> rows_;
};

// A parameter that no screen of this model sets: the clock, commands, what the recorder is, what this model
// does not show. The reason; empty for all others, those that no screen shows included.
[[nodiscard]] std::optional<std::u16string> WhyNeverSet(const ParameterRef& ref, Language language);

// What its field would say of the value that stands there; empty for a good one. A number is good within the
// limits that the screen takes and within those that the table shows. A parameter that no screen shows, and a
// number of a channel that is skipped, has the limits of its record alone.
[[nodiscard]] std::optional<std::u16string> Objection(const ParameterRef& ref, ChannelRows& rows,
                                                      Language language);

// A typed value has an entry with a name: neither a reserved unit nor a unit of the user that has none can be
// chosen, though a set-up may hold them.
[[nodiscard]] std::optional<std::u16string> NamelessObjection(const ParameterRef& ref, Language language);

// The field is disabled in the state of its channel (IsAdjustable); empty where it is not.
[[nodiscard]] std::optional<std::u16string> WhyNotAdjustable(const ParameterRef& ref, Language language);

// A leader of a pair whose kind the next channel cannot stand beside: what the window would ask.
[[nodiscard]] std::optional<std::u16string> PairObjection(const ParameterRef& ref, Language language);

// The entries that stand for values of a parameter: those of its list, then those of the list of another
// generation. Nothing for a parameter without a list, or where what decides the list leaves no meaning.
struct Choice {
  std::int16_t value;
  std::u16string text;
};
[[nodiscard]] std::vector<Choice> ChoicesFor(const ParameterRef& ref);

// The texts of the entries for a message, not more than a line.
[[nodiscard]] std::u16string TextOfChoices(const std::vector<Choice>& choices);

// "must be from 0.0 to 100.0", as a field says it.
[[nodiscard]] std::u16string LimitsText(const NumberInForce& force, Language language);

} // namespace loader
