#include "companion/EditRules.h"

#include <algorithm>

#include "channel/Adjustable.h"
#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "meaning/Lists.h"
#include "operation/Formula.h"

namespace loader {

namespace {

using Reason = std::optional<std::u16string>;

bool IsOperation(int item) {
  return item >= Profile.ChannelCount;
}

Reason Say1(Phrase phrase, Language language) {
  return std::u16string(PhraseText(phrase, language));
}

bool Within(const Limits& limits, int value) {
  return value >= limits.minimum && value <= limits.maximum;
}

bool IsList(Sense sense) {
  return sense == Sense::Choice || sense == Sense::ColourNumber;
}

void AddChoices(const ChoiceList* list, std::vector<Choice>& choices) {
  for (int row = 0; list != nullptr && row < RowCount(*list); ++row) {
    const std::optional<std::u16string> text = RowText(*list, row);
    if (text && !text->empty()) {
      choices.push_back({ValueOfRow(*list, row), *text});
    }
  }
}

bool IsDecidedAway(const MeaningRow& row, int item) {
  return ChoicesOf(row, View::Screen, item).meaningless;
}

// Contents that stand at rows of other values: a group's slot that shows no channel.
bool IsSpecial(const MeaningRow& row, int item, int value) {
  const ChoiceList* list = ChoicesOf(row, View::Screen, item).list;
  return list != nullptr && value >= list->specials.first && value <= list->specials.last;
}

// The minutes of the backlight may be typed as well as chosen.
bool IsTypedToo(const MeaningRow& row) {
  return row.meaning.otherChoices == &lists::ScreenOff;
}

// --- Objections, one for each sense

Reason ObjectionToKind(int item, int kind, Language language) {
  const int pairKind = ChannelPairKind(item);
  const int previous = pairKind == PairDependent ? NumValue("C", item - 1, "TYPE") : 0;
  const std::vector<int> offered = OfferedInputTypes(pairKind, previous);
  if (std::ranges::find(offered, kind) != offered.end()) {
    return std::nullopt;
  }
  const std::u16string* name = CatalogueEntry(InputTypeNames, kind);
  if (pairKind != PairDependent || name == nullptr || name->empty()) {
    return Say1(Phrase::EditNoSuchChoice, language);
  }
  const std::u16string* leader = CatalogueEntry(InputTypeNames, previous);
  return Say(Phrase::EditNotBesideLeader, language,
             {{u"CHANNEL", DecimalText(item)},
              {u"KIND", leader == nullptr || leader->empty() ? DecimalText(previous) : *leader}});
}

// It measures nothing: its unit and its ranges stand for nothing either.
bool IsSkipped(const ParameterRef& ref) {
  const bool ofChannel = ref.section == "C" || ref.section == "A";
  return ofChannel && !IsOperation(ref.item) && NumValue("C", ref.item, "TYPE") == KindSkip;
}

Reason ObjectionToChoice(const MeaningRow& row, const ParameterRef& ref, const ParamNumRecord& record,
                         Language language) {
  if (IsDecidedAway(row, ref.item) || IsSpecial(row, ref.item, record.Value)) {
    return std::nullopt;
  }
  if (ref.section == "C" && ref.tag == "TYPE") {
    return ObjectionToKind(ref.item, record.Value, language);
  }
  if (ref.section == "C" && ref.tag == "UNIT" && !IsSkipped(ref) && !IsOperation(ref.item) &&
      !OffersUnit(NumValue("C", ref.item, "TYPE"), record.Value)) {
    return Say1(Phrase::EditNoTemperatureUnit, language);
  }
  const ChoiceList* list = ChoicesOf(row, View::Screen, ref.item).list;
  const ChoiceList* other = row.meaning.otherChoices;
  const bool offered = (list != nullptr && RowOfValue(*list, record.Value)) ||
                       (other != nullptr && RowOfValue(*other, record.Value)) ||
                       (IsTypedToo(row) && Within(RecordLimits(record), record.Value));
  return offered ? std::nullopt : Say1(Phrase::EditNoSuchChoice, language);
}

Reason ObjectionToNumber(const MeaningRow& row, const ParameterRef& ref, const ParamNumRecord& record,
                         const ChannelRow* channel, Language language) {
  const NumberInForce typed = InForce(FormIn(row, View::Screen).number, record, ref.item, channel);
  const NumberInForce shown = InForce(FormIn(row, View::Table).number, record, ref.item, channel);
  const bool skipped = IsSkipped(ref) && Within(RecordLimits(record), record.Value);
  if (skipped || Within(typed.limits, record.Value) || Within(shown.limits, record.Value)) {
    return std::nullopt;
  }
  return LimitsText(typed, language);
}

Reason ObjectionToRecord(const ParamNumRecord& record, Language language) {
  return Within(RecordLimits(record), record.Value) ? std::nullopt
                                                    : Reason(LimitsText({0, RecordLimits(record)}, language));
}

Reason ObjectionToText(const ParamTextRecord& record, Language language) {
  const std::u16string_view text = TrimRight(record.Value);
  // The rules of the field first; a comma is refused everywhere, because a file loses the text.
  const TextReading reading = ReadText(text, {record.ByteLength, 20117, TextId(62101)});
  if (!reading.good) {
    return text.find(u',') != std::u16string_view::npos
               ? Say1(Phrase::EditComma, language)
               : Say(Phrase::EditTooLong, language, {{u"BYTES", DecimalText(record.ByteLength)}});
  }
  if (std::ranges::any_of(text, [](char16_t c) { return c < u' ' || c == 0x7F; })) {
    return Say1(Phrase::EditControlCharacter, language);
  }
  return FromCodePage(ToCodePage(text)) == text ? std::nullopt : Say1(Phrase::EditNoCodePage, language);
}

Reason ObjectionToTime(const ParamNumRecord& record, Language language) {
  constexpr int MinutesOfDay = 24 * MinutesOfHour;
  return record.Value >= 0 && record.Value < MinutesOfDay ? std::nullopt : Say1(Phrase::EditNoTime, language);
}

// One AVG or SUM in a formula; it is told at the word of its first function.
Reason ObjectionToFormula(const ParameterRef& ref, Language language) {
  if (!ref.tag.starts_with("OP") || !ref.tag.ends_with('1') || ref.tag.size() != TagWidth ||
      ref.tag[2] < '1' || ref.tag[2] > '0' + FormulaCount) {
    return std::nullopt;
  }
  const int formula = ref.tag[2] - '0';
  FormulaTable table;
  static_cast<void>(FormulaText(table, ref.item, FormulaModeStore, formula));
  return AveragesAndSums(table, formula) > 1 ? Say1(Phrase::EditTwoAverages, language) : std::nullopt;
}

} // namespace

const ChannelRow* ChannelRows::Of(const ParameterRef& ref) {
  if (ref.section != "C" && ref.section != "A") {
    return nullptr;
  }
  const auto found = rows_.find(ref.item);
  return found != rows_.end()
             ? &found->second
             : &rows_.emplace(ref.item, LookUpChannelRow(ref.item, IsOperation(ref.item))).first->second;
}

std::optional<std::u16string> WhyNeverSet(const ParameterRef& ref, Language language) {
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  if (row == nullptr) {
    return Say1(Phrase::EditUnknown, language);
  }
  if (row->meaning.kovOnly && ModelCode != "KOV") {
    return Say1(Phrase::EditOtherModels, language);
  }
  const bool ofTerminals = ref.tag == "TYPE" || ref.tag == "OTCH" || ref.tag == "SCAL";
  if (ref.section == "C" && ofTerminals && IsOperation(ref.item)) {
    return Say1(Phrase::EditNotOfOperation, language);
  }
  switch (row->meaning.use) {
  case Use::Clock:
    return Say1(Phrase::EditClock, language);
  case Use::Command:
    return Say1(Phrase::EditCommand, language);
  case Use::Identity:
    return Say1(Phrase::EditIdentity, language);
  case Use::Setting:
  case Use::Unshown:
    break;
  }
  return std::nullopt;
}

std::optional<std::u16string> Objection(const ParameterRef& ref, ChannelRows& rows, Language language) {
  const StoredParameter stored = FindParameter(ref);
  if (stored.text != nullptr) {
    return ObjectionToText(*stored.text, language);
  }
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  if (stored.number == nullptr || row == nullptr) {
    return std::nullopt;
  }
  if (row->meaning.use == Use::Unshown) {
    return ObjectionToRecord(*stored.number, language);
  }
  const Sense sense = FormIn(*row, View::Screen).sense;
  if (IsList(sense)) {
    return ObjectionToChoice(*row, ref, *stored.number, language);
  }
  switch (sense) {
  case Sense::Number:
    return ObjectionToNumber(*row, ref, *stored.number, rows.Of(ref), language);
  case Sense::TimeOfDay:
    return ObjectionToTime(*stored.number, language);
  case Sense::Octet:
  case Sense::AddressMask:
    return ObjectionToRecord(*stored.number, language);
  case Sense::FormulaWord:
    return ObjectionToFormula(ref, language);
  default:
    return std::nullopt;
  }
}

std::optional<std::u16string> NamelessObjection(const ParameterRef& ref, Language language) {
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  const StoredParameter stored = FindParameter(ref);
  if (row == nullptr || stored.number == nullptr || row->meaning.use == Use::Unshown ||
      !IsList(FormIn(*row, View::Screen).sense) || IsTypedToo(*row) ||
      IsSpecial(*row, ref.item, stored.number->Value)) {
    return std::nullopt;
  }
  if (IsDecidedAway(*row, ref.item)) { // what its list leaves without an entry is stored as 0
    return stored.number->Value == 0 ? std::nullopt : Say1(Phrase::EditMeaningless, language);
  }
  const std::vector<Choice> choices = ChoicesFor(ref);
  return std::ranges::find(choices, stored.number->Value, &Choice::value) != choices.end()
             ? std::nullopt
             : Say1(Phrase::EditNoSuchChoice, language);
}

std::optional<std::u16string> WhyNotAdjustable(const ParameterRef& ref, Language language) {
  if (ref.section != "C") {
    return std::nullopt;
  }
  ChannelState state = StoredChannelState(ref.item);
  if (IsOperation(ref.item)) {
    state.kind = KindOtherChannel;
    state.scalingOn = false;
  }
  if (IsAdjustable(ref.tag, state)) {
    return std::nullopt;
  }
  const std::u16string* kind = CatalogueEntry(InputTypeNames, state.kind);
  return Say(Phrase::EditNotAdjustable, language,
             {{u"KIND", kind == nullptr || kind->empty() ? DecimalText(state.kind) : *kind}});
}

std::optional<std::u16string> PairObjection(const ParameterRef& ref, Language language) {
  if (ref.section != "C" || ref.tag != "TYPE" || ChannelPairKind(ref.item) != PairLeader) {
    return std::nullopt;
  }
  const int next = NumValue("C", ref.item + 1, "TYPE", KindSkip);
  const std::optional<LeaderConflict> conflict = FindLeaderConflict(NumValue("C", ref.item, "TYPE"), next);
  if (!conflict) {
    return std::nullopt;
  }
  const std::u16string* kind = CatalogueEntry(InputTypeNames, next);
  return Say(Phrase::EditNotBesideNext, language,
             {{u"CHANNEL", DecimalText(ref.item + 2)},
              {u"KIND", kind == nullptr ? DecimalText(next) : *kind},
              {u"BOX", LoadText(conflict->message)}});
}

std::vector<Choice> ChoicesFor(const ParameterRef& ref) {
  std::vector<Choice> choices;
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  if (row != nullptr && IsList(FormIn(*row, View::Screen).sense)) {
    AddChoices(ChoicesOf(*row, View::Screen, ref.item).list, choices);
    AddChoices(row->meaning.otherChoices, choices);
  }
  return choices;
}

std::u16string TextOfChoices(const std::vector<Choice>& choices) {
  constexpr std::size_t Most = 8;
  std::u16string text;
  for (std::size_t i = 0; i < std::min(choices.size(), Most); ++i) {
    text += (text.empty() ? u"" : u", ") + choices[i].text;
  }
  return choices.size() > Most ? text + u", ..." : text;
}

std::u16string LimitsText(const NumberInForce& force, Language language) {
  const auto [minimum, maximum] = force.limits;
  return Say(Phrase::EditOutOfRange, language,
             {{u"MINIMUM", StoredToText(minimum, force.position, minimum, maximum)},
              {u"MAXIMUM", StoredToText(maximum, force.position, minimum, maximum)}});
}

} // namespace loader
