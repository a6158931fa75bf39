#include "channel/modUtil.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>
#include <utility>

#include "core/Text.h"

namespace loader {

namespace {

// Runs once for each WaitChk.
void OnWaitTimer2() {
  WaitTimer2Count = 2;
  StopTimer(WaitTimer2);
}

// The picture of a stored value, without a look at limits.
std::u16string ValuePicture(std::int32_t value, int position) {
  const std::int64_t magnitude = value < 0 ? -std::int64_t{value} : std::int64_t{value};
  const std::int64_t scale = ValuePow10(position);
  std::u16string text = value < 0 ? u"-" : u"";
  text += DecimalText(magnitude / scale);
  if (position > 0) {
    text += u'.';
    text += PaddedDecimal(magnitude % scale, position);
  }
  return text;
}

std::size_t DigitsAt(std::string_view text, std::size_t at) {
  std::size_t end = at;
  while (end < text.size() && IsDigit(static_cast<char16_t>(text[end]))) {
    ++end;
  }
  return end - at;
}

// The half-width character of a full-width one that numbers are typed in. Two of them are a minus: that of
// code page 932 and that of other input methods.
char16_t HalfWidth(char16_t character) {
  constexpr char16_t FirstDigit = u'\uFF10';
  constexpr char16_t LastDigit = u'\uFF19';
  if (character >= FirstDigit && character <= LastDigit) {
    return static_cast<char16_t>(u'0' + (character - FirstDigit));
  }
  switch (character) {
  case u'\uFF0B':
    return u'+';
  case u'\uFF0D':
  case u'\u2212':
    return u'-';
  case u'\uFF0E':
    return u'.';
  default:
    return character;
  }
}

std::u16string InHalfWidth(std::u16string_view text) {
  std::u16string half(text);
  std::transform(half.begin(), half.end(), half.begin(), HalfWidth);
  return half;
}

// Digits, point, digits, exponent; a digit before the exponent and one in it are required.
bool IsUnsignedNumber(std::string_view text) {
  std::size_t at = DigitsAt(text, 0);
  std::size_t digits = at;
  if (at < text.size() && text[at] == '.') {
    const std::size_t behind = DigitsAt(text, at + 1);
    digits += behind;
    at += 1 + behind;
  }
  if (digits == 0) {
    return false;
  }
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
      ++at;
    }
    const std::size_t exponentDigits = DigitsAt(text, at);
    if (exponentDigits == 0) {
      return false;
    }
    at += exponentDigits;
  }
  return at == text.size();
}

// Whether an unsigned number that double cannot hold is too large (and not too small).
bool IsTooLarge(std::string_view number) {
  const std::size_t exponentAt = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, exponentAt);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
  // The power of ten of the first digit that counts, within one; the number itself is hundreds away from 1.
  const std::int64_t magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);

  std::string_view exponentText = number.substr(std::min(exponentAt + 1, number.size()));
  if (exponentText.starts_with('+')) {
    exponentText.remove_prefix(1);
  }
  constexpr std::int64_t Bound = std::int64_t{1} << 60; // more than any text has digits
  std::int64_t exponent = 0;
  const std::from_chars_result read =
      std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  if (read.ec == std::errc::result_out_of_range) {
    exponent = exponentText.starts_with('-') ? -Bound : Bound;
  }
  return magnitude + std::clamp(exponent, -Bound, Bound) > 0;
}

// 10^fraction x 100, whole part. The fraction lies from 0 below 1, so the result lies from 100 to 999; the
// clamp takes what the rounding of pow leaves beside it.
int Mantissa(double fraction) {
  return std::clamp(static_cast<int>(std::pow(10.0, fraction) * 100.0), 100, 999);
}

} // namespace

std::u16string RangeMessage(TextId text, std::u16string_view lowest, std::u16string_view highest) {
  return Replace(Replace(LoadText(text), u"@FORMIN@", lowest), u"@FORMAX@", highest);
}

Timer WaitTimer2{0, false, OnWaitTimer2};
int WaitTimer2Count = 0;

std::int16_t ValuePow10(int position) {
  constexpr std::array<std::int16_t, 5> Powers{1, 10, 100, 1000, 10000};
  return position >= 1 && position <= 4 ? Powers[static_cast<std::size_t>(position)] : std::int16_t{1};
}

std::u16string ZeroText(int count) {
  return count > 0 ? std::u16string(static_cast<std::size_t>(count), u'0') : std::u16string{};
}

std::u16string DecimalMask(int position) {
  return position > 0 ? u"." + ZeroText(position) : std::u16string{};
}

std::u16string HalfWidthNumber(std::u16string_view text) {
  return NumericText(text) ? InHalfWidth(text) : std::u16string(text);
}

std::optional<double> NumericText(std::u16string_view text) {
  const std::string ascii = Narrow(Trim(InHalfWidth(text)));
  std::string_view number = ascii;
  const bool negative = number.starts_with('-');
  if (negative || number.starts_with('+')) {
    number.remove_prefix(1);
  }
  if (!IsUnsignedNumber(number)) {
    return std::nullopt;
  }
  double value = 0.0;
  const std::from_chars_result read = std::from_chars(number.data(), number.data() + number.size(), value);
  if (read.ec == std::errc::result_out_of_range) {
    value = IsTooLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return negative ? -value : value;
}

std::u16string StoredToText(std::int32_t value, int position, int minimum, int maximum) {
  if (value < minimum || value > maximum) {
    return {};
  }
  return ValuePicture(value, position);
}

NumberReading ReadNumber(std::u16string_view text, int minimum, int maximum, int position) {
  NumberReading reading{std::nullopt, std::u16string(text), {}};
  if (!NumericText(text)) {
    reading.message = LoadText(62200);
    return reading;
  }
  reading.text = InHalfWidth(text);
  if (const std::size_t point = reading.text.find(u'.'); point != std::u16string::npos) {
    // The cut is blind on purpose: an exponent behind the last digit goes with it, wholly or in part.
    reading.text.resize(std::min(text.size(), point + DecimalMask(position).size()));
  }
  const std::optional<double> number = NumericText(reading.text);
  if (!number) {
    return reading; // nothing, a lone sign or half an exponent is left: no message of its own
  }
  const double product = std::nearbyint(*number * ValuePow10(position)); // ties to even
  constexpr double Smallest = std::numeric_limits<std::int32_t>::min();
  constexpr double Largest = std::numeric_limits<std::int32_t>::max();
  if (!(product >= Smallest && product <= Largest)) {
    return reading; // does not fit 32 bits: no message of its own
  }
  const auto rounded = static_cast<std::int32_t>(product);
  if (rounded < minimum || rounded > maximum) {
    reading.message = RangeMessage(62201, ValuePicture(minimum, position), ValuePicture(maximum, position));
    return reading;
  }
  if (rounded >= std::numeric_limits<std::int16_t>::min() &&
      rounded <= std::numeric_limits<std::int16_t>::max()) { // the limits may be wider than a stored value
    reading.stored = static_cast<std::int16_t>(rounded);
  }
  return reading;
}

int TypedPosition(std::u16string_view text) {
  constexpr int MostDigits = 4;
  const std::size_t point = text.find(u'.');
  return point == std::u16string_view::npos ? 0
                                            : std::min(static_cast<int>(text.size() - point) - 1, MostDigits);
}

bool TextToStored(std::u16string& text, std::int16_t& stored, int minimum, int maximum, int position) {
  NumberReading reading = ReadNumber(text, minimum, maximum, position);
  text = std::move(reading.text);
  if (!reading.message.empty()) {
    ShowMessage(reading.message);
  }
  stored = reading.stored.value_or(stored);
  return reading.stored.has_value();
}

bool CheckValueField(int position, int minimum, int maximum, TextField& field) {
  if (WaitTimer2.Enabled) {
    return false;
  }
  std::u16string text = field.text;
  std::int16_t stored = 0;
  if (!TextToStored(text, stored, minimum, maximum, position)) {
    if (field.enabled) { // a whole screen is checked with its disabled fields
      RequestFocusAndSelectAll(field);
    }
    return false;
  }
  // Deliberate: the year alone keeps the digits as they were typed.
  field.text = field.name == "txtYear" ? HalfWidthNumber(field.text)
                                       : StoredToText(stored, position, minimum, maximum);
  return true;
}

void WaitChk() {
  WaitTimer2Count = 0;
  StartTimer(WaitTimer2, 100);
}

bool CheckGuardedField(int position, int minimum, int maximum, TextField& field,
                       const std::function<void(TextField&)>& onRefused) {
  if (CheckValueField(position, minimum, maximum, field)) {
    return true;
  }
  if (!WaitTimer2.Enabled) {
    if (onRefused) {
      onRefused(field);
    }
    WaitChk();
  }
  return false;
}

double Log10(double value) {
  return std::log(value) / std::log(10.0);
}

std::optional<std::int16_t> AlarmValueToStored(double mantissa, int exponent, std::int32_t storedMinimum,
                                               std::int32_t storedMaximum, int exponentMinimum,
                                               int exponentMaximum) {
  double stored = storedMinimum;
  if (exponentMaximum != exponentMinimum) {
    const double span = static_cast<double>(storedMaximum) - storedMinimum;
    const double exponents = static_cast<double>(exponentMaximum) - exponentMinimum;
    stored += (Log10(mantissa) + exponent - exponentMinimum) * span / exponents;
  }
  const double rounded = std::nearbyint(stored);
  if (!(rounded >= std::numeric_limits<std::int16_t>::min() &&
        rounded <= std::numeric_limits<std::int16_t>::max())) {
    return std::nullopt;
  }
  return std::max(static_cast<std::int16_t>(rounded), std::int16_t{-32767});
}

std::u16string LogValueText(std::int32_t value, std::int32_t measuringMinimum, std::int32_t measuringMaximum,
                            std::int32_t exponentMinimum, std::int32_t exponentMaximum) {
  const std::int64_t span = std::int64_t{measuringMaximum} - measuringMinimum;
  const std::int64_t part = std::int64_t{value} - measuringMinimum;
  const std::int64_t exponents = std::int64_t{exponentMaximum} - exponentMinimum;
  double exponent = exponentMinimum;
  if (span != 0) {
    exponent += static_cast<double>(part) * static_cast<double>(exponents) / static_cast<double>(span);
  }
  exponent = std::clamp(exponent, -9.0, 9.0);
  const double whole = std::floor(exponent);
  const std::u16string digits = DecimalText(Mantissa(exponent - whole));
  return digits.substr(0, 1) + u"." + digits.substr(1) + u"E" + DecimalText(static_cast<std::int64_t>(whole));
}

TextReading ReadText(std::u16string_view text, const TextRule& rule) {
  TextReading reading{false, {}, 0, static_cast<int>(text.size())};
  if (std::cmp_greater(CodePageLength(text), rule.byteLimit)) {
    reading.message = Replace(LoadText(rule.tooLong), u"@LEN@", DecimalText(rule.byteLimit));
    return reading;
  }
  if (const std::size_t comma = text.find(u','); rule.forbidden && comma != std::u16string_view::npos) {
    reading.message = Replace(LoadText(*rule.forbidden), u"@MID@", u",");
    reading.selectFrom = static_cast<int>(comma);
    reading.selectLength = 1;
    return reading;
  }
  reading.good = true;
  return reading;
}

bool CheckTextField(TextField& field, const TextRule& rule) {
  if (rule.trimBoth) {
    field.text = std::u16string(Trim(field.text));
  }
  const TextReading reading = ReadText(field.text, rule);
  if (!reading.good) {
    ShowMessage(reading.message);
    if (rule.selectRefused) {
      RequestFocusAndSelect(field, reading.selectFrom, reading.selectLength);
    } else {
      RequestFocus(field);
    }
  }
  return reading.good;
}

bool CheckTagField(TextField& field, int byteLimit, TextId tooLong, TextId forbidden) {
  return CheckTextField(field, {byteLimit, tooLong, forbidden, false});
}

std::optional<int> CheckEntryNumber(TextField& field, const EntryNumberRule& rule) {
  const std::optional<double> number = NumericText(field.text);
  if (!number) {
    ShowMessage(LoadText(rule.notANumber));
    if (rule.current) {
      field.text = DecimalText(*rule.current);
      RequestFocusAndSelectAll(field);
    }
    return std::nullopt;
  }
  const bool whole = !rule.wholeOnly || *number == std::nearbyint(*number);
  if (!whole || *number < rule.first || *number > rule.last) {
    const std::u16string text(LoadText(rule.outOfRange));
    ShowMessage(rule.placeholder.empty() ? text : Replace(text, rule.placeholder, DecimalText(rule.last)));
    RequestFocusAndSelectAll(field);
    return std::nullopt;
  }
  return static_cast<int>(std::nearbyint(*number));
}

std::optional<int> CheckChannelNumber(TextField& field, int channelCount) {
  return CheckEntryNumber(field, {.first = 1,
                                  .last = channelCount,
                                  .notANumber = 62102,
                                  .outOfRange = 62103,
                                  .placeholder = u"@CHASU@"});
}

} // namespace loader
