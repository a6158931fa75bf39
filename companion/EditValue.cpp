#include "companion/EditValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "channel/modUtil.h"
#include "core/Text.h"

namespace loader {

namespace {

constexpr char16_t StoredMark = u'#';
constexpr Limits AnyStored{std::numeric_limits<std::int16_t>::min(),
                           std::numeric_limits<std::int16_t>::max()};

TypedReading Refused(std::u16string reason) {
  return {std::nullopt, std::move(reason)};
}
TypedReading Refused(Phrase reason, Language language) {
  return Refused(std::u16string(PhraseText(reason, language)));
}
TypedReading Good(int value) {
  return {static_cast<std::int16_t>(value), {}};
}

// --- Widths

constexpr char16_t FirstHalfKana = 0xFF61;
constexpr char16_t LastHalfKana = 0xFF9F;
constexpr std::u16string_view FullKana =
    u"\u3002\u300C\u300D\u3001\u30FB\u30F2\u30A1\u30A3\u30A5\u30A7\u30A9\u30E3\u30E5\u30E7\u30C3\u30FC"
    u"\u30A2\u30A4\u30A6\u30A8\u30AA\u30AB\u30AD\u30AF\u30B1\u30B3\u30B5\u30B7\u30B9\u30BB\u30BD\u30BF"
    u"\u30C1\u30C4\u30C6\u30C8\u30CA\u30CB\u30CC\u30CD\u30CE\u30CF\u30D2\u30D5\u30D8\u30DB\u30DE\u30DF"
    u"\u30E0\u30E1\u30E2\u30E4\u30E6\u30E8\u30E9\u30EA\u30EB\u30EC\u30ED\u30EF\u30F3\u309B\u309C";
static_assert(FullKana.size() == LastHalfKana - FirstHalfKana + 1);

// The voiced kana stand behind the plain ones, the half-voiced ones behind these.
bool AddMark(std::u16string& folded, char16_t mark) {
  constexpr char16_t Voiced = 0xFF9E;
  constexpr char16_t HalfVoiced = 0xFF9F;
  if (folded.empty() || (mark != Voiced && mark != HalfVoiced)) {
    return false;
  }
  const char16_t before = folded.back();
  const bool h = before >= 0x30CF && before <= 0x30DB && (before - 0x30CF) % 3 == 0;
  const bool k = before >= 0x30AB && before <= 0x30C8;
  if (!h && (!k || mark == HalfVoiced)) {
    return false;
  }
  folded.back() = static_cast<char16_t>(before + (mark == Voiced ? 1 : 2));
  return true;
}

char16_t FoldedCharacter(char16_t c) {
  constexpr char16_t FirstFull = 0xFF01;
  constexpr char16_t LastFull = 0xFF5E;
  if (c >= FirstFull && c <= LastFull) {
    c = static_cast<char16_t>(c - FirstFull + u'!');
  } else if (c >= FirstHalfKana && c <= LastHalfKana) {
    c = FullKana[static_cast<std::size_t>(c - FirstHalfKana)];
  }
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

// --- Lists

std::vector<Choice> WithText(const std::vector<Choice>& choices, std::u16string_view typed, bool folded) {
  std::vector<Choice> found;
  const std::u16string wanted = FoldedText(typed);
  for (const Choice& choice : choices) {
    const bool hit = folded ? FoldedText(choice.text) == wanted : choice.text == typed;
    const bool known = std::ranges::find(found, choice.value, &Choice::value) != found.end();
    if (hit && !known) {
      found.push_back(choice);
    }
  }
  return found;
}

std::u16string NumbersOf(const std::vector<Choice>& choices) {
  std::u16string text;
  for (const Choice& choice : choices) {
    text += (text.empty() ? u"" : u", ") + std::u16string(1, StoredMark) + DecimalText(choice.value);
  }
  return text;
}

TypedReading ReadChoice(const ParameterRef& ref, const ParamNumRecord& record, std::u16string_view typed,
                        Language language) {
  const std::vector<Choice> choices = ChoicesFor(ref);
  std::vector<Choice> found = WithText(choices, typed, false);
  if (found.empty()) {
    found = WithText(choices, typed, true);
  }
  if (found.size() == 1) {
    return Good(found.front().value);
  }
  if (ReadableValue(ref, {language, true}) == typed) {
    return Good(record.Value); // as it reads, so it stays
  }
  if (found.size() > 1) {
    return Refused(Say(Phrase::EditAmbiguous, language, {{u"CANDIDATES", NumbersOf(found)}}));
  }
  if (const std::optional<std::int16_t> number = ParseInt16(typed)) {
    return Good(*number);
  }
  return choices.empty()
             ? Refused(Phrase::EditMeaningless, language)
             : Refused(Say(Phrase::EditNotInList, language, {{u"CHOICES", TextOfChoices(choices)}}));
}

// --- Numbers

// "3.16E2" as the two fields take it: 1.00 to 9.99, and -9 to 9.
struct Power {
  int hundredths;
  int exponent;
};
std::optional<Power> PowerOf(std::u16string_view typed) {
  constexpr int HighestExponent = 9;
  const std::size_t at = typed.find_first_of(u"eE");
  if (at == std::u16string_view::npos) {
    return std::nullopt;
  }
  const auto mantissa = NumericText(typed.substr(0, at));
  const auto exponent = ParseInt16(typed.substr(at + 1));
  const double hundredths = mantissa.value_or(0.0) * 100.0;
  if (!mantissa || !exponent || std::abs(*exponent) > HighestExponent ||
      std::abs(hundredths - std::nearbyint(hundredths)) > 1e-6 || hundredths < 100.0 || hundredths > 999.0 ||
      (*exponent == HighestExponent && hundredths > 100.0)) {
    return std::nullopt;
  }
  return Power{static_cast<int>(std::nearbyint(hundredths)), *exponent};
}

TypedReading ReadAlarmPower(const ParameterRef& ref, std::u16string_view typed, Language language) {
  const std::optional<Power> power = PowerOf(typed);
  if (!power) {
    return Refused(Phrase::EditNoPower, language);
  }
  const std::optional<std::int16_t> stored = AlarmValueToStored(
      power->hundredths / 100.0, power->exponent, NumValue("C", ref.item, "MMIN"),
      NumValue("C", ref.item, "MMAX"), NumValue("C", ref.item, "SMIN"), NumValue("C", ref.item, "SMAX"));
  return stored ? Good(*stored) : Refused(Phrase::EditBeyond16Bits, language);
}

TypedReading ReadAtPosition(std::u16string_view typed, const NumberInForce& force, Language language) {
  const std::optional<double> number = NumericText(typed);
  if (!number) {
    return Refused(Phrase::EditNotANumber, language);
  }
  const NumberReading reading = ReadNumber(typed, AnyStored.minimum, AnyStored.maximum, force.position);
  const double exact = *number * ValuePow10(force.position);
  if (std::abs(exact) > AnyStored.maximum) {
    return Refused(LimitsText(force, language));
  }
  // A field cuts what its position does not hold and shows what is left. Nobody sees it here.
  if (!reading.stored || std::abs(exact - *reading.stored) > 1e-6) {
    return Refused(Say(Phrase::EditTooManyDigits, language, {{u"DIGITS", DecimalText(force.position)}}));
  }
  return Good(*reading.stored);
}

TypedReading ReadNumberOf(const MeaningRow& row, const ParameterRef& ref, const ParamNumRecord& record,
                          std::u16string_view typed, const ChannelRow* channel, Language language) {
  const Form& screen = FormIn(row, View::Screen);
  const Form& table = FormIn(row, View::Table);
  const bool logOn = channel != nullptr && channel->state.logOn;
  if (logOn && screen.number.logarithm == UnderLogarithm::Scaled) {
    return ReadAlarmPower(ref, typed, language);
  }
  const std::optional<Power> power = PowerOf(typed);
  if (logOn && power && table.number.logarithm == UnderLogarithm::Power) {
    return power->hundredths == 100 ? Good(power->exponent) : Refused(Phrase::EditWholePower, language);
  }
  const NumberInForce force = InForce(screen.number, record, ref.item, channel);
  const int shown = InForce(table.number, record, ref.item, channel).position;
  if (shown != force.position) {
    return Refused(Say(Phrase::EditTwoPositions, language,
                       {{u"TYPED", DecimalText(force.position)}, {u"SHOWN", DecimalText(shown)}}));
  }
  return ReadAtPosition(typed, force, language);
}

// --- The others

TypedReading ReadTime(std::u16string_view typed, Language language) {
  const std::size_t colon = typed.find(u':');
  if (colon == std::u16string_view::npos || !std::ranges::all_of(typed.substr(0, colon), IsDigit) ||
      typed.size() != colon + 3 || !std::ranges::all_of(typed.substr(colon + 1), IsDigit)) {
    return Refused(Phrase::EditNoTime, language);
  }
  const auto hours = ParseInt16(typed.substr(0, colon));
  const auto minutes = ParseInt16(typed.substr(colon + 1));
  constexpr int LastHour = 23;
  if (!hours || !minutes || *hours > LastHour || *minutes >= MinutesOfHour) {
    return Refused(Phrase::EditNoTime, language);
  }
  return Good(*hours * MinutesOfHour + *minutes);
}

TypedReading ReadMask(std::u16string_view typed, Language language) {
  int mask = 0;
  std::u16string_view rest = Trim(typed);
  if (rest == u"0" || rest.empty()) {
    return Good(0);
  }
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(u" ,"), rest.size());
    const auto address = ParseInt16(rest.substr(0, end));
    if (!address || *address < 1 || *address > MailAddresses) {
      return Refused(Say(Phrase::EditNoMask, language, {{u"LAST", DecimalText(MailAddresses)}}));
    }
    mask |= 1 << (*address - 1);
    rest = Trim(rest.substr(std::min(end + 1, rest.size())));
  }
  return Good(mask);
}

TypedReading ReadWhole(std::u16string_view typed, Language language) {
  const std::optional<std::int16_t> number = ParseInt16(typed);
  return number ? Good(*number) : Refused(Phrase::EditNotANumber, language);
}

// A number that reads as its own digits because it has no other text may mean something else when it is
// typed.
bool IsItsOwnText(const ParameterRef& ref, const ParamNumRecord& record, std::u16string_view typed) {
  const std::u16string shown = ReadableValue(ref, {Language::Japanese, true});
  return typed == shown && shown != DecimalText(record.Value);
}

TypedReading ReadRecord(const MeaningRow& row, const ParameterRef& ref, const ParamNumRecord& record,
                        std::u16string_view typed, ChannelRows& rows, Language language) {
  if (typed.starts_with(StoredMark)) {
    return ReadWhole(typed.substr(1), language);
  }
  const Sense sense = FormIn(row, View::Screen).sense;
  if (sense == Sense::Choice || sense == Sense::ColourNumber) {
    return ReadChoice(ref, record, typed, language);
  }
  if (IsItsOwnText(ref, record, typed)) {
    return Good(record.Value);
  }
  switch (sense) {
  case Sense::Number:
    return ReadNumberOf(row, ref, record, typed, rows.Of(ref), language);
  case Sense::TimeOfDay:
    return ReadTime(typed, language);
  case Sense::AddressMask:
    return ReadMask(typed, language);
  case Sense::FormulaWord:
    return typed == DecimalText(record.Value) ? Good(record.Value) : Refused(Phrase::EditFormula, language);
  case Sense::Octet: {
    const NumberReading reading = ReadTyped(row, View::Screen, typed, record, ref.item);
    return reading.stored ? Good(*reading.stored) : Refused(LimitsText({0, RecordLimits(record)}, language));
  }
  default:
    return ReadWhole(typed, language);
  }
}

} // namespace

ReadingStage StageOf(const ParameterRef& ref) {
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  if (row == nullptr || row->meaning.sense == Sense::Text) {
    return ReadingStage::Text;
  }
  if (!row->meaning.byDecider.empty()) {
    return ReadingStage::DecidedChoice;
  }
  if (row->meaning.sense == Sense::Number) {
    return ref.section == "A" ? ReadingStage::AlarmValue : ReadingStage::Number;
  }
  return ReadingStage::Choice;
}

TypedReading ReadTypedValue(const ParameterRef& ref, std::u16string_view typed, ChannelRows& rows,
                            Language language) {
  const StoredParameter stored = FindParameter(ref);
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  if (stored.text != nullptr) {
    const bool trimmed = row != nullptr && row->meaning.text.form != TextForm::AsTyped;
    const std::u16string_view text = trimmed ? Trim(typed) : TrimRight(typed);
    if (text == TrimRight(stored.text->Value)) {
      return {std::u16string(text), {}};
    }
    // A record holds so many characters, whatever its bytes: what is cut could not be judged any more.
    if (text.size() > TextWidth) {
      return Refused(Say(Phrase::EditTooLong, language, {{u"BYTES", DecimalText(stored.text->ByteLength)}}));
    }
    return {std::u16string(text), {}};
  }
  if (stored.number == nullptr || row == nullptr) {
    return Refused(Phrase::EditUnknown, language);
  }
  return ReadRecord(*row, ref, *stored.number, Trim(typed), rows, language);
}

std::u16string FoldedText(std::u16string_view text) {
  constexpr char16_t IdeographicBlank = 0x3000;
  std::u16string folded;
  for (const char16_t c : text) {
    if (c == u' ' || c == IdeographicBlank || AddMark(folded, c)) {
      continue;
    }
    folded += FoldedCharacter(c);
  }
  return folded;
}

} // namespace loader
