#include "fields/Fields.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "channel/InputTypeRules.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "meaning/Lists.h"

namespace loader {

namespace {

// --- Controls: the screen's own, or made here

ListBox& ListOn(FieldSet& set, const std::string& name) {
  return set.screen.Find(name) != nullptr ? ListNamed(set.screen, name)
                                          : set.lists.emplace_back(set.screen, name);
}
TextField& TextOn(FieldSet& set, const std::string& name) {
  return set.screen.Find(name) != nullptr ? FieldNamed(set.screen, name)
                                          : set.texts.emplace_back(set.screen, name);
}

// --- Records

ParamNumRecord* NumRecordOf(const FieldSet& set, const Field& field) {
  return FindNumRecord(field.row->section, set.entry + field.item, field.tag);
}
ParamTextRecord* TextRecordOf(const FieldSet& set, const Field& field) {
  return FindTextRecord(field.row->section, set.entry + field.item, field.tag);
}
bool SameParameter(const Field& one, const Field& other) {
  return one.row->section == other.row->section && one.item == other.item && one.tag == other.tag;
}
const ChannelRow* ChannelOf(const FieldSet& set) {
  return set.channel ? set.channel() : nullptr;
}

// --- Rows to fields

FieldShape ShapeOf(const FieldRow& row, const MeaningRow& meaning) {
  if (row.asNumber) {
    if (!meaning.meaning.alsoTyped) {
      throw std::logic_error(std::string(row.control) + ": the list of the parameter is all that it takes");
    }
    return FieldShape::Number;
  }
  switch (FormIn(meaning, View::Screen).sense) {
  case Sense::Choice:
  case Sense::ColourNumber:
    return FieldShape::List;
  case Sense::TimeOfDay:
    return FieldShape::TimeOfDay;
  case Sense::Octet:
    return FieldShape::Octet;
  case Sense::Text:
    return FieldShape::Text;
  case Sense::Number:
  case Sense::Plain:
    return FieldShape::Number;
  case Sense::AddressMask:
  case Sense::FormulaWord:
    break;
  }
  throw std::logic_error(std::string(row.control) + ": no single field");
}

bool Decides(const Field& deciding, const Field& other) {
  return other.meaning->meaning.decidedBy == deciding.tag && other.item == deciding.item &&
         other.row->section == deciding.row->section;
}

// "IPA#" and 3: "IPA3"; "GC##" and 3: "GC03". A tag without a '#' stays.
std::string ElementTag(std::string_view pattern, int number) {
  const std::size_t first = pattern.find('#');
  if (first == std::string_view::npos) {
    return std::string(pattern);
  }
  return std::string(pattern.substr(0, first)) +
         Narrow(PaddedDecimal(number, static_cast<int>(pattern.size() - first)));
}

void AddField(FieldSet& set, const FieldRow& row, const std::string& control, const std::string& tag,
              int item) {
  const MeaningRow& meaning = MeaningOf(row.section, tag);
  Field& field = set.fields.emplace_back(Field{&row, &meaning, ShapeOf(row, meaning), tag, item});
  if (field.shape == FieldShape::Text && meaning.meaning.text.commaRefused != (row.forbidden != 0)) {
    throw std::logic_error(control + ": its message for a comma and its meaning do not agree");
  }
  if (std::ranges::any_of(set.fields, [&](const Field& before) { return Decides(field, before); })) {
    throw std::logic_error(control + ": stands behind what it decides");
  }
  if (field.shape == FieldShape::List || field.shape == FieldShape::TimeOfDay) {
    field.list = &ListOn(set, control);
  } else {
    field.text = &TextOn(set, control);
  }
  if (field.shape == FieldShape::TimeOfDay) {
    field.minutes = &ListOn(set, std::string(row.minutes));
  }
}

void AddRow(FieldSet& set, const FieldRow& row) {
  if (row.elements == 0) {
    AddField(set, row, std::string(row.control), std::string(row.tag), row.item);
    return;
  }
  const bool byTag = row.tag.find('#') != std::string_view::npos;
  for (int n = 0; n < row.elements; ++n) {
    AddField(set, row, ElementName(row.control, n), ElementTag(row.tag, n + 1),
             byTag ? row.item : row.item + n);
  }
}

// --- Lists

// The stored value of the row that a list shows; nothing when it shows none.
std::optional<std::int16_t> ShownValue(const ListBox& list) {
  const auto row = static_cast<std::size_t>(list.index);
  return list.index < 0 || row >= list.itemData.size()
             ? std::nullopt
             : std::optional(static_cast<std::int16_t>(list.itemData[row]));
}

const ChoiceList* ListOf(const FieldSet& set, const Field& field) {
  if (field.row->otherList) {
    return field.meaning->meaning.otherChoices;
  }
  if (set.storeTime == StoreTime::OnApply) { // what decides the list may not have been stored yet
    for (const Field& deciding : set.fields) {
      if (deciding.list != nullptr && Decides(deciding, field)) {
        return ChoicesBy(*field.meaning, View::Screen, ShownValue(*deciding.list).value_or(-1)).list;
      }
    }
  }
  return ChoicesOf(*field.meaning, View::Screen, set.entry + field.item).list;
}

bool DiffersByEntry(const Field& field) {
  const Meaning& meaning = field.meaning->meaning;
  return !meaning.byDecider.empty() ||
         (meaning.choices != nullptr && meaning.choices->extent == Extent::PairedInputKinds);
}

// The row of a stored value among those that the control offers.
int RowOfStored(const FieldSet& set, const Field& field, int value) {
  const ChoiceList* choices = ListOf(set, field);
  if (choices != nullptr && choices->specials.first <= value && value <= choices->specials.last) {
    return RowOfValue(*choices, value).value_or(-1); // shown at a row that stands for another value
  }
  const std::vector<std::int32_t>& data = field.list->itemData;
  const auto found = std::ranges::find(data, value);
  return found == data.end() ? -1 : static_cast<int>(found - data.begin());
}

std::int16_t ShownMinutes(const Field& field) {
  const int hours = ShownValue(*field.list).value_or(0);
  return static_cast<std::int16_t>(hours * MinutesOfHour + ShownValue(*field.minutes).value_or(0));
}

// --- Numbers

NumberInForce ForceOf(const FieldSet& set, const Field& field, const ParamNumRecord& record) {
  const NumberRule rule = field.row->asNumber ? NumberRule{} : FormIn(*field.meaning, View::Screen).number;
  return InForce(rule, record, set.entry + field.item, ChannelOf(set));
}

void ShowNumber(const FieldSet& set, const Field& field, const ParamNumRecord& record) {
  const NumberInForce force = ForceOf(set, field, record);
  field.text->text = StoredToText(record.Value, force.position, force.limits.minimum, force.limits.maximum);
}

// False also while the guard is on and nothing was checked.
bool CheckNumber(FieldSet& set, const Field& field, const ParamNumRecord& record) {
  const NumberInForce force = ForceOf(set, field, record);
  return CheckGuardedField(force.position, force.limits.minimum, force.limits.maximum, *field.text,
                           set.onRefusedNumber);
}

bool CheckOctet(const Field& field, const ParamNumRecord& record) {
  const NumberReading reading = ReadTyped(*field.meaning, View::Screen, field.text->text, record, 0);
  field.text->text = reading.text;
  if (!reading.stored) {
    ShowMessage(reading.message);
    RequestFocus(*field.text);
  }
  return reading.stored.has_value();
}

// --- Texts

bool IsTrimmed(const Field& field) {
  return field.meaning->meaning.text.form != TextForm::AsTyped;
}

bool CheckText(const FieldSet& set, const Field& field, const ParamTextRecord& record) {
  const FieldRow& row = *field.row;
  return CheckTextField(*field.text,
                        {record.ByteLength, TextId::At(row.tooLong),
                         row.forbidden == 0 ? std::nullopt : std::optional(TextId::At(row.forbidden)),
                         IsTrimmed(field), set.selectRefusedText});
}

bool StoresZero(const Field& field) {
  const bool offersNothing = field.list->items.empty() && !field.meaning->meaning.byDecider.empty();
  return field.list->index < 0 && (field.row->noneIsZero || offersNothing);
}

// A check alone changes nothing: the blanks that it takes off were not taken off by the user.
bool ShowsWhatWasFilled(const Field& field) {
  const std::u16string& text = field.text->text;
  return text == field.shownText || (IsTrimmed(field) && text == Trim(field.shownText));
}

void TrimWhileTyped(TextField& text) {
  const std::u16string trimmed(Trim(text.text));
  if (trimmed != text.text) {
    text.text = trimmed;
    text.selStart = 0;
    text.selLength = 0;
    text.selectionPending = true;
  }
}

// --- Handlers

// Some lists and fields are one setting. What one of them has stored the others show at once, lest a look at
// one writes its stale value back.
void ShowOnTheOthers(FieldSet& set, const Field& stored, const ParamNumRecord& record) {
  for (const Field& other : set.fields) {
    if (&other == &stored || !SameParameter(other, stored)) {
      continue;
    }
    if (other.shape == FieldShape::Number) {
      ShowNumber(set, other, record);
    } else if (other.shape == FieldShape::List) {
      ShowRow(*other.list, RowOfStored(set, other, record.Value));
    }
  }
}

void StoreAtOnce(FieldSet& set, const Field& field) {
  if (!StoreField(set, field)) {
    return;
  }
  if (const ParamNumRecord* record = NumRecordOf(set, field)) {
    ShowOnTheOthers(set, field, *record);
  }
}

void LeaveField(FieldSet& set, const Field& field) {
  const bool stands = field.shape == FieldShape::Text ? TextRecordOf(set, field) != nullptr
                                                      : NumRecordOf(set, field) != nullptr;
  if (stands && CheckField(set, field) && set.storeTime == StoreTime::AtOnce) {
    StoreAtOnce(set, field);
  }
}

void Picked(FieldSet& set, Field& field) {
  if (field.list->index == field.list->indexBefore) {
    return; // the row that stood already
  }
  field.shownRow = Field::NoFill;
  for (Field& other : set.fields) {
    if (Decides(field, other)) {
      FillList(set, other);
      ShowRow(*other.list, 0);
    }
  }
  if (set.onPicked) {
    set.onPicked(field);
  }
}

void TieHandlers(FieldSet& set, Field& field) {
  if (field.text != nullptr) {
    field.text->onLostFocus = [&set, &field] { LeaveField(set, field); };
    if (field.shape == FieldShape::Text && field.meaning->meaning.text.form == TextForm::TrimmedAsTyped) {
      field.text->onChange = [&text = *field.text] { TrimWhileTyped(text); };
    }
    return;
  }
  if (set.storeTime == StoreTime::AtOnce) {
    field.list->onChange = [&set, &field] { StoreAtOnce(set, field); };
  } else {
    field.list->onChange = [&set, &field] { Picked(set, field); };
  }
  if (field.minutes != nullptr && set.storeTime == StoreTime::AtOnce) {
    field.minutes->onChange = field.list->onChange;
  }
}

// Both rows first, then nothing to write: a handler that ran between them would store half a time.
void ShowTime(const FieldSet& set, const Field& field, int minutesOfDay) {
  const bool shown = ShowRow(*field.list, minutesOfDay / MinutesOfHour);
  const bool minutesShown = ShowRow(*field.minutes, minutesOfDay % MinutesOfHour);
  if (set.storeTime == StoreTime::OnApply && !(shown && minutesShown)) {
    field.list->index = -1;
    field.minutes->index = -1;
  }
}

void ShowChoice(const FieldSet& set, const Field& field, int value) {
  const int row = RowOfStored(set, field, value);
  if (set.storeTime == StoreTime::AtOnce) {
    SelectRow(*field.list, row);
  } else if (!ShowRow(*field.list, row)) {
    field.list->index = -1;
  }
}

} // namespace

FieldSet::FieldSet(Screen& owner, std::span<const FieldRow> rows, StoreTime storing)
    : screen(owner), storeTime(storing) {
  for (const FieldRow& row : rows) {
    AddRow(*this, row);
  }
  for (Field& field : fields) {
    TieHandlers(*this, field);
  }
}

void FillList(FieldSet& set, Field& field) {
  field.shownRow = Field::NoFill;
  if (field.shape == FieldShape::TimeOfDay) {
    FillChoices(*field.list, lists::Hours);
    FillChoices(*field.minutes, lists::Minutes);
    return;
  }
  const ChoiceList* choices = ListOf(set, field);
  if (choices == nullptr) {
    ClearList(*field.list);
  } else if (choices->extent == Extent::PairedInputKinds) {
    FillInputTypeList(*field.list, set.entry + field.item);
  } else {
    FillChoices(*field.list, *choices);
  }
}

void FillLists(FieldSet& set) {
  for (Field& field : set.fields) {
    if (field.list != nullptr) {
      FillList(set, field);
    }
  }
}

void FillField(FieldSet& set, Field& field) {
  if (field.shape == FieldShape::Text) {
    if (const ParamTextRecord* record = TextRecordOf(set, field)) {
      // A field that is trimmed as it is typed into loses its leading blanks at once.
      const bool both = field.meaning->meaning.text.form == TextForm::TrimmedAsTyped;
      field.text->text = std::u16string(both ? Trim(record->Value) : TrimRight(record->Value));
      field.shownText = field.text->text;
    }
    return;
  }
  const ParamNumRecord* record = NumRecordOf(set, field);
  if (record == nullptr) {
    return;
  }
  switch (field.shape) {
  case FieldShape::List:
    if (set.storeTime == StoreTime::OnApply && DiffersByEntry(field)) {
      FillList(set, field);
    }
    ShowChoice(set, field, record->Value);
    break;
  case FieldShape::TimeOfDay:
    ShowTime(set, field, record->Value);
    break;
  case FieldShape::Number:
    ShowNumber(set, field, *record);
    break;
  case FieldShape::Octet:
    field.text->text = DecimalText(record->Value);
    break;
  case FieldShape::Text:
    break;
  }
  if (field.list != nullptr) {
    field.shownRow = field.list->index;
  } else {
    field.shownText = field.text->text;
  }
}

void FillFields(FieldSet& set) {
  FillFieldsWhere(set, [](const Field&) { return true; });
}

bool CheckField(FieldSet& set, const Field& field) {
  if (field.shape == FieldShape::Text) {
    const ParamTextRecord* record = TextRecordOf(set, field);
    return record == nullptr || CheckText(set, field, *record);
  }
  const ParamNumRecord* record = NumRecordOf(set, field);
  if (record == nullptr || field.text == nullptr) {
    return true;
  }
  return field.shape == FieldShape::Octet ? CheckOctet(field, *record) : CheckNumber(set, field, *record);
}

bool CheckFields(FieldSet& set) {
  return std::ranges::all_of(set.fields, [&](const Field& field) { return CheckField(set, field); });
}

bool IsChanged(const FieldSet& set, const Field& field) {
  switch (field.shape) {
  case FieldShape::List: // one that the model does not have was never filled
    return field.list->index != field.shownRow && NumRecordOf(set, field) != nullptr;
  case FieldShape::TimeOfDay: {
    const ParamNumRecord* record = NumRecordOf(set, field);
    return field.list->index >= 0 && record != nullptr && ShownMinutes(field) != record->Value;
  }
  case FieldShape::Text:
    return !ShowsWhatWasFilled(field);
  case FieldShape::Number:
  case FieldShape::Octet:
    break;
  }
  return field.text->text != field.shownText;
}

bool AnyChanged(const FieldSet& set) {
  return std::ranges::any_of(set.fields, [&](const Field& field) { return IsChanged(set, field); });
}

bool StoreField(FieldSet& set, const Field& field) {
  const bool dialog = set.storeTime == StoreTime::OnApply;
  if (field.shape == FieldShape::Text) {
    ParamTextRecord* record = TextRecordOf(set, field);
    if (record != nullptr && !(dialog && ShowsWhatWasFilled(field))) {
      SetText(*record, field.text->text, SlotValue);
    }
    return true;
  }
  ParamNumRecord* record = NumRecordOf(set, field);
  if (record == nullptr) {
    return true;
  }
  std::optional<std::int16_t> value;
  switch (field.shape) {
  case FieldShape::List:
    if (dialog && StoresZero(field)) {
      value = 0;
    } else {
      value = dialog && !IsChanged(set, field) ? record->Value : ShownValue(*field.list);
    }
    break;
  case FieldShape::TimeOfDay:
    if (!dialog || field.list->index >= 0) {
      value = ShownMinutes(field);
    }
    break;
  case FieldShape::Octet:
    value = ReadTyped(*field.meaning, View::Screen, field.text->text, *record, 0).stored;
    break;
  case FieldShape::Number: {
    const NumberInForce force = ForceOf(set, field, *record);
    value = ReadNumber(field.text->text, force.limits.minimum, force.limits.maximum, force.position).stored;
    break;
  }
  case FieldShape::Text:
    break;
  }
  if (value) {
    SetNumber(*record, *value, SlotValue);
  }
  return value.has_value() || field.text == nullptr;
}

bool StoreFields(FieldSet& set) {
  bool all = true;
  for (const Field& field : set.fields) {
    all = StoreField(set, field) && all;
  }
  return all;
}

Field& FieldOf(FieldSet& set, std::string_view control) {
  const auto found = std::ranges::find_if(set.fields, [&](const Field& field) {
    const Control* own = field.text != nullptr ? static_cast<const Control*>(field.text) : field.list;
    return own->name == control || (field.minutes != nullptr && field.minutes->name == control);
  });
  if (found == set.fields.end()) {
    throw std::logic_error("no field " + std::string(control) + " on " + set.screen.name);
  }
  return *found;
}

} // namespace loader
