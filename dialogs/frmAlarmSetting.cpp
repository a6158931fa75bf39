#include "dialogs/frmAlarmSetting.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>

#include "channel/InputTypeRules.h"
#include "channel/modUtil.h"
#include "core/Text.h"
#include "meaning/ParameterText.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr int LowestExponent = -9;
constexpr int HighestExponent = 9;
constexpr int MantissaPosition = 2;
constexpr int LowestMantissa = 100;
constexpr int HighestMantissa = 999;

// The scale of the caller's alarms: stored numbers, and the exponents that stand for them.
struct AlarmScale {
  int position;
  std::int32_t storedMinimum;
  std::int32_t storedMaximum;
  int exponentMinimum;
  int exponentMaximum;
};

std::optional<int> WholeNumber(std::u16string_view text, int position) {
  const std::optional<double> number = NumericText(text);
  const double scaled = std::nearbyint(number.value_or(0.0) * ValuePow10(position));
  constexpr double Most = std::numeric_limits<std::int32_t>::max();
  return number && std::abs(scaled) <= Most ? std::optional(static_cast<int>(scaled)) : std::nullopt;
}

// Nothing while one of the caller's fields is blank.
std::optional<AlarmScale> ScaleOf(const AlarmContract& caller) {
  const int position = AlarmPosition(caller);
  const std::optional<int> storedMinimum = WholeNumber(caller.txtStMin, position);
  const std::optional<int> storedMaximum = WholeNumber(caller.txtStMax, position);
  const std::optional<int> exponentMinimum = WholeNumber(caller.txtIndMin, 0);
  const std::optional<int> exponentMaximum = WholeNumber(caller.txtIndMax, 0);
  if (!storedMinimum || !storedMaximum || !exponentMinimum || !exponentMaximum) {
    return std::nullopt;
  }
  return AlarmScale{position, *storedMinimum, *storedMaximum, *exponentMinimum, *exponentMaximum};
}

std::optional<std::int16_t> StoredOn(const AlarmScale& scale, double mantissa, int exponent) {
  return AlarmValueToStored(mantissa, exponent, scale.storedMinimum, scale.storedMaximum,
                            scale.exponentMinimum, scale.exponentMaximum);
}

std::u16string ReadsAs(const AlarmScale& scale, int stored) {
  return LogValueText(stored, scale.storedMinimum, scale.storedMaximum, scale.exponentMinimum,
                      scale.exponentMaximum);
}

std::u16string PowerText(int hundredths, int exponent) {
  return StoredToText(hundredths, MantissaPosition, LowestMantissa, HighestMantissa) + u"E" +
         DecimalText(exponent);
}

// The smallest and the largest value that can be typed here and that fits a stored number.
std::u16string FittingRange(const std::optional<AlarmScale>& scale) {
  std::u16string smallest;
  std::u16string largest;
  for (int exponent = LowestExponent; exponent <= HighestExponent; ++exponent) {
    // 1.00E9 is the largest value of the range.
    const int last = exponent == HighestExponent ? LowestMantissa : HighestMantissa;
    for (int hundredths = LowestMantissa; hundredths <= last; ++hundredths) {
      if (scale && !StoredOn(*scale, hundredths / 100.0, exponent)) {
        continue;
      }
      largest = PowerText(hundredths, exponent);
      if (smallest.empty()) {
        smallest = largest;
      }
    }
  }
  // Where nothing fits the caller's exponents are none; the message is whole all the same.
  return smallest.empty() ? FittingRange(std::nullopt) : RangeMessage(62201, smallest, largest);
}

// The alarm's own value, while nobody has touched the fields and it reads as they do: a label has fewer
// digits than its value, and an apply without a change does not move the alarm to the next value of that
// label.
std::optional<std::int16_t> UntouchedValue(const AlarmSettingScreen& screen, const AlarmScale& scale) {
  const auto alarm = static_cast<std::size_t>(screen.caller.alarmNumber - 1);
  const std::optional<int> value = WholeNumber(screen.caller.txtAlarmSet.at(alarm), scale.position);
  constexpr int Most = std::numeric_limits<std::int16_t>::max(); // in either direction
  const bool untouched = !screen.edited && value && std::abs(*value) <= Most &&
                         ReadsAs(scale, *value) == screen.caller.lblAlarmSetInput.at(alarm);
  return untouched ? std::optional(static_cast<std::int16_t>(*value)) : std::nullopt;
}

std::optional<std::int16_t> EnteredValue(const AlarmSettingScreen& screen, const AlarmScale& scale) {
  if (const std::optional<std::int16_t> value = UntouchedValue(screen, scale)) {
    return value;
  }
  const std::optional<double> mantissa = NumericText(screen.txtAlarmSet.text);
  const int row = screen.cmbAlarmSet.index;
  if (mantissa && *mantissa > 1.0 && row == HighestExponent - LowestExponent) {
    return std::nullopt; // beyond the range, where it would read as 1.00E9
  }
  return mantissa && row >= 0 ? StoredOn(scale, *mantissa, row + LowestExponent) : std::nullopt;
}

bool CheckMantissa(AlarmSettingScreen& screen) {
  return CheckGuardedField(MantissaPosition, LowestMantissa, HighestMantissa, screen.txtAlarmSet);
}

void Apply(AlarmSettingScreen& screen) {
  if (!CheckMantissa(screen)) {
    return;
  }
  const std::optional<AlarmScale> scale = ScaleOf(screen.caller);
  const std::optional<std::int16_t> stored = scale ? EnteredValue(screen, *scale) : std::nullopt;
  if (!stored) {
    ShowMessage(FittingRange(scale));
    RequestFocusAndSelectAll(screen.txtAlarmSet);
    return;
  }
  const auto alarm = static_cast<std::size_t>(screen.caller.alarmNumber - 1);
  screen.caller.lblAlarmSetInput.at(alarm) = ReadsAs(*scale, *stored);
  screen.caller.txtAlarmSet.at(alarm) =
      StoredToText(*stored, scale->position, std::numeric_limits<std::int16_t>::min(),
                   std::numeric_limits<std::int16_t>::max());
  screen.applied = true;
  ThePlatform().screens.Close(screen);
}

// "3.16E2" into its two fields.
void ShowPower(AlarmSettingScreen& screen, std::u16string_view power) {
  constexpr std::size_t MantissaLength = 4;
  screen.txtAlarmSet.text = power.substr(0, MantissaLength);
  const std::string exponent = Narrow(power.substr(std::min(power.size(), MantissaLength + 1)));
  int number = 0;
  const auto read = std::from_chars(exponent.data(), exponent.data() + exponent.size(), number);
  if (read.ec == std::errc()) {
    ShowRow(screen.cmbAlarmSet, long{number} - LowestExponent);
  }
}

} // namespace

int AlarmPosition(const AlarmContract& caller) {
  if (!caller.measuringChannel) {
    return PositionOf(caller.cmbDecimal);
  }
  return caller.cmbInputType == KindOtherChannel ? ReferencePoint(caller.gnChNo, caller.cmbInputOtch)
                                                 : MeasuringPoint(caller.cmbInputType, 0);
}

AlarmSettingScreen::AlarmSettingScreen(AlarmContract& contract)
    : Screen("frmAlarmSetting"), caller(contract) {
  caption = LoadText(18043);
  lblAlarmSet1.caption = LoadText(18046);
  lblE.caption = u"E";
  btnOk.caption = LoadText(19618);
  btnCancel.caption = LoadText(19620);
  for (int exponent = LowestExponent; exponent <= HighestExponent; ++exponent) {
    AddItem(cmbAlarmSet, DecimalText(exponent), exponent);
  }
  ShowPower(*this, caller.lblAlarmSetInput.at(static_cast<std::size_t>(caller.alarmNumber - 1)));

  txtAlarmSet.onLostFocus = [this] { static_cast<void>(CheckMantissa(*this)); };
  txtAlarmSet.onChange = [this] { edited = true; };
  cmbAlarmSet.onChange = [this] {
    if (cmbAlarmSet.index == cmbAlarmSet.indexBefore) {
      return; // the row that stood already
    }
    edited = true;
    if (cmbAlarmSet.index == HighestExponent - LowestExponent) {
      txtAlarmSet.text = u"1.00"; // 1.00E9 is the largest value of the range
    }
  };
  btnOk.onClick = [this] { Apply(*this); };
  btnCancel.onClick = [this] { ThePlatform().screens.Close(*this); };
}

bool ShowAlarmSetting(AlarmContract& caller) {
  AlarmSettingScreen screen(caller);
  ThePlatform().screens.ShowModal(screen);
  return screen.applied;
}

} // namespace loader
