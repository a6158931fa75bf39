#include "meaning/ParameterText.h"

#include <algorithm>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "operation/Formula.h"

namespace loader {

namespace {

constexpr int LastPosition = 4;
constexpr int MinutesOfDay = 24 * MinutesOfHour;

bool IsOperationChannel(int item) {
  return item >= Profile.ChannelCount;
}

// Limits and position of the measuring range of a channel that takes its input from another one.
InputRange PartnerRange(int item) {
  constexpr int FirstPartnerRangeItem = 18;
  InputRange range; // position 0
  InputRangeLookup(KindOtherChannel, 0, range);
  const int partner = NumValue("C", item, "OTCH", -1);
  // A reference to the channel itself is ignored.
  if (partner == item || FindNumRecord("C", partner, "TYPE") == nullptr) {
    return range;
  }
  if (item >= FirstPartnerRangeItem) {
    range.MinValue = NumValue("C", partner, "SMIN");
    range.MaxValue = NumValue("C", partner, "SMAX");
    range.Point = PositionOf(NumValue("C", partner, "POIN"));
    return range;
  }
  InputRangeLookup(NumValue("C", partner, "TYPE"), NumValue("C", partner, "UNIT"), range);
  return range;
}

int PositionInForce(Position position, int item, const ChannelRow* channel) {
  if (position == Position::Constant) {
    return PositionOf(NumValue("N", item, "CONP"));
  }
  if (channel == nullptr) {
    return 0;
  }
  const ChannelState& state = channel->state;
  switch (position) {
  case Position::Channel:
    return channel->point;
  case Position::FValue:
    return channel->rowPoint;
  case Position::Measuring:
    return channel->measuring.Point;
  case Position::Terminals:
    return channel->terminalsPoint;
  case Position::RecordRange:
    return channel->fValue ? channel->rowPoint
                           : EngineeringPoint(state.kind, state.scalingOn, channel->point);
  case Position::Engineering:
    return EngineeringPoint(state.kind, state.scalingOn, channel->point);
  case Position::Whole:
  case Position::Constant:
    break;
  }
  return 0;
}

Limits LimitsInForce(Within within, const ParamNumRecord& record, const ChannelRow* channel) {
  if (channel == nullptr) {
    return RecordLimits(record);
  }
  const bool byFValue = channel->fValue && !channel->state.logOn; // the logarithm goes before the F value
  switch (within) {
  case Within::Kind:
    return {channel->measuring.MinValue, channel->measuring.MaxValue};
  case Within::Terminals:
    return MeasuringLimits(channel->state.kind);
  case Within::Engineering:
    return EngineeringLimits(channel->state, record);
  case Within::RecordRange:
    return byFValue ? RecordLimits(record) : EngineeringLimits(channel->state, record);
  case Within::Alarm:
    return byFValue ? RecordLimits(record) : AlarmLimits(channel->state, record);
  case Within::Record:
    break;
  }
  return RecordLimits(record);
}

std::u16string NumberText(const NumberRule& rule, const ParamNumRecord& record, int item,
                          const ChannelRow* channel) {
  const bool logOn = channel != nullptr && channel->state.logOn;
  if (logOn && rule.logarithm == UnderLogarithm::Scaled) {
    return LogValueText(record.Value, NumValue("C", item, "MMIN"), NumValue("C", item, "MMAX"),
                        NumValue("C", item, "SMIN"), NumValue("C", item, "SMAX"));
  }
  const NumberInForce force = InForce(rule, record, item, channel);
  if (logOn && rule.logarithm == UnderLogarithm::Power) {
    const bool shown = record.Value >= force.limits.minimum && record.Value <= force.limits.maximum;
    return shown ? LogValueText(0, 0, 0, record.Value, record.Value) : std::u16string();
  }
  return StoredToText(record.Value, force.position, force.limits.minimum, force.limits.maximum);
}

// The four formulas stand in the sheet where their first terms do: OP11, OP21, OP31, OP41.
std::optional<std::u16string> FormulaWordText(const ParamNumRecord& record, View view, int item,
                                              std::string_view tag) {
  const std::string_view name = Trim(tag);
  if (view == View::Sheet && name.size() == TagWidth && name.starts_with("OP") && name.ends_with('1')) {
    return StoredFormulaText(item, name[2] - '0');
  }
  return DecimalText(record.Value);
}

std::optional<std::u16string> NumRecordText(const MeaningRow& row, View view, int item, std::string_view tag,
                                            const ParamNumRecord& record, const ChannelRow* channel) {
  const Form& form = FormIn(row, view);
  switch (form.sense) {
  case Sense::Choice:
  case Sense::ColourNumber: {
    const ChoicesInForce choices = ChoicesOf(row, view, item);
    if (choices.meaningless) {
      return std::u16string();
    }
    return choices.list == nullptr ? std::nullopt : ValueText(*choices.list, record.Value);
  }
  case Sense::Number:
    return NumberText(form.number, record, item, channel);
  case Sense::TimeOfDay:
    return record.Value >= 0 && record.Value < MinutesOfDay ? std::optional(TimeOfDayText(record.Value))
                                                            : std::nullopt;
  case Sense::AddressMask:
    return AddressMaskText(record.Value);
  case Sense::FormulaWord:
    return FormulaWordText(record, view, item, tag);
  case Sense::Plain:
  case Sense::Octet:
  case Sense::Text:
    break;
  }
  return DecimalText(record.Value);
}

NumberReading ReadOctet(std::u16string_view text, const ParamNumRecord& record) {
  NumberReading reading{std::nullopt, std::u16string(text), {}};
  const std::u16string half = HalfWidthNumber(text);
  const bool digits = std::ranges::all_of(half, IsDigit);
  const std::optional<std::int16_t> value = ParseInt16(half); // an empty box is no number
  if (digits && value && *value >= record.MinValue && *value <= record.MaxValue) {
    reading.stored = value;
    reading.text = DecimalText(*value);
    return reading;
  }
  reading.message = RangeMessage(20115, DecimalText(record.MinValue), DecimalText(record.MaxValue));
  return reading;
}

} // namespace

int PositionOf(int stored) {
  return stored >= 0 && stored <= LastPosition ? stored : 0;
}

ChannelRow LookUpChannelRow(int item, bool operation) {
  ChannelRow row;
  row.item = item;
  row.operation = operation;
  row.storedType = NumValue("C", item, "TYPE");
  row.state = StoredChannelState(item);
  if (operation) {
    row.state.kind = KindOtherChannel; // an operation channel has no kind: the limits are those of kind 40
  }
  row.fValue = NumValue("C", item, "FTIO") == 1;
  row.point = PositionOf(NumValue("C", item, "POIN"));
  row.rowPoint = row.fValue ? PositionOf(NumValue("H", 0, "FPOI")) : row.point;
  if (!operation && row.state.kind == KindOtherChannel) {
    row.measuring = PartnerRange(item);
  } else {
    row.measuring.Point = row.point; // stays where the kind has no position of its own
    InputRangeLookup(row.state.kind, row.state.unit, row.measuring);
  }
  row.terminalsPoint = operation || row.state.kind != KindOtherChannel
                           ? row.measuring.Point
                           : ReferencePoint(item, NumValue("C", item, "OTCH", -1));
  return row;
}

int ReferencePoint(int item, int other) {
  const ParamNumRecord* type = FindNumRecord("C", other, "TYPE");
  if (other == item || type == nullptr) {
    return 0;
  }
  return IsOperationChannel(other) ? PositionOf(NumValue("C", other, "POIN"))
                                   : MeasuringPoint(KindOtherChannel, type->Value);
}

NumberInForce InForce(const NumberRule& rule, const ParamNumRecord& record, int item,
                      const ChannelRow* channel) {
  // Under the logarithm these values are whole exponents, whatever the position of the channel; the scaling
  // range of a channel that its kind limits knows no logarithm.
  const bool logOn = channel != nullptr && channel->state.logOn && rule.logarithm != UnderLogarithm::AsEver;
  if (logOn && rule.logarithm == UnderLogarithm::Scaled) {
    return {channel->terminalsPoint, LimitsInForce(rule.within, record, channel)};
  }
  if (logOn && !KindLimited(channel->state.kind, channel->state.scalingOn)) {
    return {0, EngineeringLimits(channel->state, record)};
  }
  return {PositionInForce(rule.position, item, channel), LimitsInForce(rule.within, record, channel)};
}

ChoicesInForce ChoicesOf(const MeaningRow& row, View view, int item) {
  const Meaning& meaning = row.meaning;
  return ChoicesBy(row, view,
                   meaning.byDecider.empty() ? 0 : NumValue(meaning.section, item, meaning.decidedBy));
}

ChoicesInForce ChoicesBy(const MeaningRow& row, View view, int deciding) {
  const Meaning& meaning = row.meaning;
  if (meaning.byDecider.empty()) {
    return {FormIn(row, view).choices, false};
  }
  if (deciding < 0 || static_cast<std::size_t>(deciding) >= meaning.byDecider.size()) {
    return {};
  }
  const ChoiceList* list = meaning.byDecider[static_cast<std::size_t>(deciding)];
  return {list, list == nullptr};
}

std::optional<std::u16string> ParameterText(const MeaningRow& row, View view, int item, std::string_view tag,
                                            const ChannelRow* channel) {
  const bool printed = view != View::Sheet || IsPrinted(row.meaning);
  if (row.meaning.sense == Sense::Text) {
    const ParamTextRecord* record = FindTextRecord(row.meaning.section, item, tag);
    return record == nullptr ? std::nullopt
                             : std::optional(std::u16string(printed ? TrimRight(record->Value) : u""));
  }
  const ParamNumRecord* record = FindNumRecord(row.meaning.section, item, tag);
  if (record == nullptr) {
    return std::nullopt;
  }
  return printed ? NumRecordText(row, view, item, tag, *record, channel) : std::u16string();
}

std::u16string ReportText(std::string_view section, int item, std::string_view tag, View view) {
  const MeaningRow* row = FindMeaning(section, tag);
  const std::string_view code = Trim(section);
  const bool ofChannel = code == "C" || code == "A";
  const ChannelRow channel = ofChannel ? LookUpChannelRow(item, IsOperationChannel(item)) : ChannelRow{};
  if (row != nullptr) {
    if (const auto text = ParameterText(*row, view, item, tag, ofChannel ? &channel : nullptr)) {
      return *text;
    }
  }
  if (const ParamTextRecord* text = FindTextRecord(section, item, tag)) {
    return std::u16string(TrimRight(text->Value));
  }
  const ParamNumRecord* record = FindNumRecord(section, item, tag);
  return record == nullptr ? std::u16string() : DecimalText(record->Value);
}

NumberReading ReadTyped(const MeaningRow& row, View view, std::u16string_view text,
                        const ParamNumRecord& record, int item, const ChannelRow* channel) {
  const Form& form = FormIn(row, view);
  if (form.sense == Sense::Octet) {
    return ReadOctet(text, record);
  }
  const NumberInForce force = InForce(form.number, record, item, channel);
  return ReadNumber(text, force.limits.minimum, force.limits.maximum, force.position);
}

std::u16string TimeOfDayText(int minutesOfDay) {
  return DecimalText(minutesOfDay / MinutesOfHour) + u":" + PaddedDecimal(minutesOfDay % MinutesOfHour, 2);
}

std::u16string AddressMaskText(int mask) {
  std::u16string text;
  for (int address = 0; address < MailAddresses; ++address) {
    if (HasAddress(mask, address)) {
      text += (text.empty() ? u"" : u" ") + DecimalText(address + 1);
    }
  }
  return text;
}

} // namespace loader
