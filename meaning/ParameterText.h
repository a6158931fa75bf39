// Stored values as texts and typed texts as stored values, by the meaning table: no message box, no control.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "channel/InputTypeRules.h"
#include "channel/modUtil.h"
#include "core/modMain.h"
#include "meaning/Meaning.h"

namespace loader {

// What the values of a channel depend on, looked up once for all of them: from the store, or as a screen
// shows it.
struct ChannelRow {
  int item = 0;           // of sections C and A, from 0
  bool operation = false; // an operation channel: its limits are those of kind 40 without a reference
  int storedType = 0;
  ChannelState state; // an operation channel: kind 40
  bool fValue = false;
  int point = 0;          // POIN
  int rowPoint = 0;       // FPOI of section H when the F value function is on, else POIN
  InputRange measuring;   // limits and position of MMIN and MMAX in a table
  int terminalsPoint = 0; // their position on a screen
};
[[nodiscard]] ChannelRow LookUpChannelRow(int item, bool operation);

// The position at which a screen shows the measuring range of channel `item` while it takes its input from
// channel `other` (both from 0): that of the other's kind, for an operation channel, which has no kind, its
// POIN. 0 for a channel that refers to itself or to none.
[[nodiscard]] int ReferencePoint(int item, int other);

// A position that a file or a recorder brought in: one that does not exist counts as 0, where it is read.
[[nodiscard]] int PositionOf(int stored);

// Position and limits of a number, in force now. `channel` is needed for what a channel decides; without it
// such numbers stand at position 0 within the limits of their record.
struct NumberInForce {
  int position;
  Limits limits;
};
[[nodiscard]] NumberInForce InForce(const NumberRule& rule, const ParamNumRecord& record, int item,
                                    const ChannelRow* channel);

// The list of a parameter in a view; for one that another parameter decides, by that one's value. Nothing
// where it has no list.
struct ChoicesInForce {
  const ChoiceList* list = nullptr;
  bool meaningless = false; // the deciding value leaves the parameter without a meaning
};
[[nodiscard]] ChoicesInForce ChoicesOf(const MeaningRow& row, View view, int item);
// The same by a deciding value that is not the store's: what a screen shows and has not stored yet.
[[nodiscard]] ChoicesInForce ChoicesBy(const MeaningRow& row, View view, int deciding);

// The text of a parameter of one item as a view shows it. Nothing when this model does not have it, or the
// value lies outside its list or is no time of day: a table leaves such a cell as it is. A number outside its
// limits is an empty text, and so is what the sheet leaves out. Give `channel` for the parameters of a
// channel (sections C and A).
[[nodiscard]] std::optional<std::u16string> ParameterText(const MeaningRow& row, View view, int item,
                                                          std::string_view tag,
                                                          const ChannelRow* channel = nullptr);
// The same for one parameter alone; a value that has no text reads as its number. For reports.
[[nodiscard]] std::u16string ReportText(std::string_view section, int item, std::string_view tag,
                                        View view = View::Table);

// A typed number or octet as a stored value: whether it is good and, if not, why.
[[nodiscard]] NumberReading ReadTyped(const MeaningRow& row, View view, std::u16string_view text,
                                      const ParamNumRecord& record, int item,
                                      const ChannelRow* channel = nullptr);

// "8:05" for 485 minutes.
[[nodiscard]] std::u16string TimeOfDayText(int minutesOfDay);
// The addresses of a mask by their numbers: "1 3 8".
[[nodiscard]] std::u16string AddressMaskText(int mask);
constexpr int MailAddresses = 8;
[[nodiscard]] constexpr bool HasAddress(int mask, int address) {
  return (mask >> address & 1) != 0; // from 0
}

} // namespace loader
