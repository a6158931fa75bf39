#include "meaning/ChoiceLists.h"

#include <algorithm>
#include <iterator>

#include "channel/InputTypeRules.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"

namespace loader {

namespace {

constexpr int AlarmsOfChannel = 4;

// The row of a value, whether the model offers it or not; below 0: none.
int AnyRowOfValue(const ChoiceList& list, int value) {
  if (!list.values.empty()) {
    const auto found = std::ranges::find(list.values, value);
    return found == list.values.end() ? -1 : static_cast<int>(std::distance(list.values.begin(), found));
  }
  if (value >= list.specials.first && value <= list.specials.last) {
    return list.specials.firstRow + (value - list.specials.first);
  }
  return value - list.firstValue;
}

int EntryOfRow(const ChoiceList& list, int row) {
  const auto at = static_cast<std::size_t>(row);
  if (at < list.entries.size()) {
    return list.entries[at];
  }
  const int entry = list.firstEntry + row;
  return list.sixteenInputs ? ExternalInputEntry(entry) : entry;
}

} // namespace

int RowCount(const ChoiceList& list) {
  const int externalInputs = Profile.DigitalInputCount + AlarmsOfChannel * AllChannels();
  switch (list.extent) {
  case Extent::PairedInputKinds:
    return KindOtherChannel + 1;
  case Extent::Whole:
    return list.catalogue == nullptr ? 0 : static_cast<int>(list.catalogue->size()) - list.firstEntry;
  case Extent::Values:
    return static_cast<int>(list.values.size());
  case Extent::AlarmOutputs:
    return Profile.AlarmOutputListSize;
  case Extent::OtherChannels:
    return Profile.OtherChannelListSize;
  case Extent::Channels:
    return AllChannels();
  case Extent::NoneAndChannels:
    return AllChannels() + 1;
  case Extent::TriggerInputs:
    return Profile.TriggerDIListSize;
  case Extent::ExternalInputs:
    return externalInputs;
  case Extent::NoneAndExternalInputs:
    return externalInputs + 1;
  }
  return 0;
}

std::optional<int> RowOfValue(const ChoiceList& list, int value) {
  const int row = AnyRowOfValue(list, value);
  if (row >= 0 && row < RowCount(list)) {
    return row;
  }
  return list.otherRow < 0 ? std::nullopt : std::optional(list.otherRow);
}

std::int16_t ValueOfRow(const ChoiceList& list, int row) {
  const auto at = static_cast<std::size_t>(row);
  return at < list.values.size() ? list.values[at] : static_cast<std::int16_t>(row + list.firstValue);
}

std::optional<std::u16string> RowText(const ChoiceList& list, int row) {
  if (row < 0) {
    return std::nullopt;
  }
  if (row == 0 && list.headText != 0) {
    return std::u16string(LoadText(TextId::At(list.headText)));
  }
  if (list.catalogue == nullptr) {
    const int number = list.headText == 0 ? row + 1 : row; // behind a head the rows count from 1 anyway
    return std::u16string(LoadText(TextId::At(list.numberedText))) + DecimalText(number);
  }
  const std::u16string* entry = CatalogueEntry(*list.catalogue, EntryOfRow(list, row));
  return entry == nullptr ? std::nullopt : std::optional(*entry);
}

std::optional<std::u16string> ValueText(const ChoiceList& list, int value) {
  int row = AnyRowOfValue(list, value);
  if (row < 0 || (list.ownRowsOnly && row >= RowCount(list))) {
    row = list.otherRow;
  }
  std::optional<std::u16string> text = RowText(list, row);
  return text || list.otherRow < 0 ? text : RowText(list, list.otherRow);
}

void FillChoices(ListBox& control, const ChoiceList& list) {
  ClearList(control);
  const int rows = RowCount(list);
  for (int row = 0; row < rows; ++row) {
    if (const std::optional<std::u16string> text = RowText(list, row)) {
      AddItem(control, *text, ValueOfRow(list, row));
    }
  }
}

int ExternalInputEntry(int number) {
  constexpr int ListDIs = 16;
  constexpr int LastCommonDI = 9;
  constexpr int SteppedOver = 6;
  return Profile.DigitalInputCount == ListDIs || number <= LastCommonDI ? number : number + SteppedOver;
}

std::string GroupSlotTag(int slot) {
  return "GC" + Narrow(PaddedDecimal(slot, 2));
}

} // namespace loader
