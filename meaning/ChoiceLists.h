// The lists of choices that stand for stored numbers: which entries of which catalogue a screen offers on the
// model in force, and which stored value each row stands for.
//
// A row and its stored value are often the same number, but not always: the report cycles are stored as 15,
// 0, 1, 3, 6; the colours count from 1; a group slot has five contents that are no channels. So nobody
// outside takes one for the other: RowOfValue and ValueOfRow are the only way between them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/modIni.h"
#include "platform/Controls.h"

namespace loader {

// How many rows a list has on the model in force.
enum class Extent {
  Whole,                 // to the end of the catalogue
  Values,                // one for each of `values`
  AlarmOutputs,          // none, then the alarm outputs
  OtherChannels,         // the channels that a channel may take its input from
  Channels,              // measuring and operation channels
  NoneAndChannels,       // the same behind "none"
  TriggerInputs,         // the digital inputs that a message or a mail may wait for
  ExternalInputs,        // the digital inputs, then the four alarms of each channel
  NoneAndExternalInputs, // the same behind "none"
  PairedInputKinds,      // by the channel and the one before it: OfferedInputTypes (channel/InputTypeRules)
};

// Values that are no rows of their own and are shown at rows that stand for other values.
struct SpecialContents {
  int first = 0;
  int last = -1;
  int firstRow = 0;
};

struct ChoiceList {
  std::string_view name;         // for documents: "alarm outputs"
  const Catalogue* catalogue;    // nullptr: the rows are numbered
  Extent extent = Extent::Whole; //
  int firstEntry = 0;            // the catalogue's entry of row 0
  int firstValue = 0;            // the stored value of row 0
  int headText = 0;              // id of a text that stands in row 0 in place of an entry; 0: none
  int numberedText = 0;          // without a catalogue: id of the text before the row's number (from 1)
  std::span<const std::int16_t> values = {};  // by row, where the values do not run on from firstValue
  std::span<const std::int16_t> entries = {}; // by row, where the entries do not run on from firstEntry
  SpecialContents specials = {};
  bool sixteenInputs = false; // the catalogue has sixteen digital inputs; a model with ten steps over six
  bool ownRowsOnly = false;   // a value behind the model's last row has no text, though the catalogue goes on
  int otherRow = -1;          // the row of every value that is no row's; -1: such a value has none
};

[[nodiscard]] int RowCount(const ChoiceList& list);
// The row of a stored value among the rows of the model; empty when no row stands for it.
[[nodiscard]] std::optional<int> RowOfValue(const ChoiceList& list, int value);
// The stored value of a row from 0.
[[nodiscard]] std::int16_t ValueOfRow(const ChoiceList& list, int row);
[[nodiscard]] std::optional<std::u16string> RowText(const ChoiceList& list, int row);
// The text of a stored value; empty when the list has none. Catalogues are built for the larger model: a
// value that only that one offers has its text all the same, unless ownRowsOnly.
[[nodiscard]] std::optional<std::u16string> ValueText(const ChoiceList& list, int value);

// The rows of the model into a control, each with its stored value as item data; selects nothing.
void FillChoices(ListBox& control, const ChoiceList& list);

// Entry of the external input lists for the n-th external input of the model, from 0: the lists always have
// sixteen digital inputs, and a model with fewer steps over the last six.
[[nodiscard]] int ExternalInputEntry(int number);
// The tag of a data slot of a group, from 1: "GC01".
[[nodiscard]] std::string GroupSlotTag(int slot);

} // namespace loader
