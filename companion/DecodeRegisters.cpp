#include "companion/DecodeRegisters.h"

#include <algorithm>

#include "comm/BulkRead.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "meaning/ParameterText.h"

namespace loader {

namespace {

constexpr std::string_view SameEverywhere = "PFS";
constexpr int WordsOfTime = 2;

// The fields of one section, gathered.
struct SectionFields {
  std::vector<RegisterField>& fields;
  std::string code;
  SectionRead layout;
  int base;
  int itemWords;

  void Add(int item, int word, const ParameterRef& ref, RegisterSense sense, int words = 1,
           int bytes = 0) const {
    fields.push_back({base + item * itemWords + word, words, bytes, sense, ref});
  }

  void AddItem(const ParamItem& records, int item) const {
    for (const ParamTextRecord& record : records.TextRecords) {
      const std::string tag(Trim(record.Tag));
      if (RuleOf(layout, tag, layout.texts).rule != ReadRule::Default) {
        Add(item, record.WordOffset, {code, item, tag}, RegisterSense::Text, (record.ByteLength + 1) / 2,
            record.ByteLength);
      }
    }
    for (const ParamNumRecord& record : records.NumRecords) {
      AddNumber(record, item);
    }
    if (layout.oldTotalizer) {
      AddOldTotalizer(item);
    }
  }

  void AddNumber(const ParamNumRecord& record, int item) const {
    const std::string tag(Trim(record.Tag));
    const TagRead entry = RuleOf(layout, tag, layout.numbers);
    const ParameterRef ref{code, item, tag};
    switch (entry.rule) {
    case ReadRule::Plain:
      return Add(item, record.WordOffset, ref, RegisterSense::Number);
    case ReadRule::AtByte:
      return Add(item, entry.byte / 2, ref, RegisterSense::Number);
    case ReadRule::TotalKind:
      return Add(item, entry.byte / 2, ref, RegisterSense::TotalKind);
    case ReadRule::InputKind:
      return Add(item, record.WordOffset, ref, RegisterSense::InputKind);
    case ReadRule::InputKind0:
      return Add(item, record.WordOffset, ref, RegisterSense::InputKind0);
    case ReadRule::Default:
    case ReadRule::SetByOther:
      break;
    }
  }

  void AddOldTotalizer(int item) const {
    for (const OldTotalizerWord& word : OldTotalizerWords) {
      Add(item, word.byte / 2, {"Z", item, std::string(word.tagOfZ)}, RegisterSense::Number);
    }
    for (const OldTime& time : OldTimes) {
      Add(item, time.hourByte / 2, {code, item, std::string(time.tag)}, RegisterSense::OldTime, WordsOfTime);
    }
  }
};

bool StandsForItself(const MeaningRow& row) {
  const Form& form = FormIn(row, View::Table);
  switch (form.sense) {
  case Sense::Choice:
  case Sense::ColourNumber:
    return row.meaning.byDecider.empty();
  case Sense::TimeOfDay:
  case Sense::AddressMask:
    return true;
  default:
    return false;
  }
}

std::u16string TextOfBytes(const std::vector<std::uint16_t>& registers, int bytes) {
  std::string text;
  for (const std::uint16_t word : registers) { // the first byte lies in the low half
    text += static_cast<char>(word & 0xFF);
    text += static_cast<char>(word >> 8);
  }
  text.resize(std::min(text.size(), static_cast<std::size_t>(bytes)));
  const std::u16string decoded = FromCodePage(text.substr(0, text.find('\0')));
  return std::u16string(TrimRight(decoded));
}

} // namespace

std::vector<RegisterField> FieldsOfGeneration(int generation) {
  const ReadPlan* plan = FindReadPlan(generation);
  const GenerationRead& layout = plan == nullptr ? ReadLayoutPlain : plan->layout;
  std::vector<RegisterField> fields;
  for (const ParamSection& section : ParamStore) {
    const std::string code(Trim(section.Code));
    const bool same = SameEverywhere.find(code) != std::string_view::npos;
    const SectionFields of{fields, code, same ? SectionRead{} : LayoutOf(layout, code),
                           section.BaseAddress + (same ? 0 : RegisterOffset(code, layout.generation)),
                           section.ItemWords};
    const int items = std::min(static_cast<int>(section.Items.size()), of.layout.items);
    for (int item = 0; item < items; ++item) {
      of.AddItem(section.Items[static_cast<std::size_t>(item)], item);
    }
  }
  std::ranges::stable_sort(fields, {}, &RegisterField::address);
  return fields;
}

std::optional<std::vector<std::uint16_t>> RegisterImage::Of(const RegisterField& field) const {
  std::vector<std::uint16_t> registers;
  int newest = 0;
  int oldest = 0;
  for (int word = 0; word < field.words; ++word) {
    const auto found = seen_.find(field.address + word);
    if (found == seen_.end()) {
      return std::nullopt;
    }
    oldest = word == 0 ? found->second.exchange : std::min(oldest, found->second.exchange);
    newest = std::max(newest, found->second.exchange);
    registers.push_back(found->second.value);
  }
  return newest - oldest <= 1 ? std::optional(registers) : std::nullopt;
}

StoredValue ValueOfRegisters(const RegisterField& field, const std::vector<std::uint16_t>& registers) {
  const auto first = static_cast<std::int16_t>(registers.front());
  switch (field.sense) {
  case RegisterSense::Text:
    return TextOfBytes(registers, field.bytes);
  case RegisterSense::InputKind:
    return InputKindToday(first, InputKindOfOld.size());
  case RegisterSense::InputKind0:
    return InputKindToday(first, OldestInputKinds);
  case RegisterSense::OldTime:
    return static_cast<std::int16_t>(MinutesOfHour * first + static_cast<std::int16_t>(registers.back()));
  case RegisterSense::TotalKind:
  case RegisterSense::Number:
    break;
  }
  return first;
}

std::u16string TextOfItself(const ParameterRef& ref, const StoredValue& value, const Speech& speech) {
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  const StoredParameter stored = FindParameter(ref);
  const auto* number = std::get_if<std::int16_t>(&value);
  if (row == nullptr || stored.number == nullptr || number == nullptr || !StandsForItself(*row)) {
    return {};
  }
  const std::int16_t before = stored.number->Value;
  stored.number->Value = *number;
  std::u16string text = ReadableValue(ref, speech);
  stored.number->Value = before;
  return text == DecimalText(*number) ? std::u16string() : text;
}

} // namespace loader
