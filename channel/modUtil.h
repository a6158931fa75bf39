// Value rules: how a stored number becomes the text of a field and back, and the checks of a field that is
// left.
//
// Every numeric parameter is a signed 16-bit integer with a decimal point position beside it: the shown value
// is the stored value / 10^position. Limits are stored integers in the same position as their value. These
// functions are the only way between a field and a stored number. A point is always ".", whatever the locale.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/TextTable.h"
#include "platform/Controls.h"
#include "platform/Platform.h"

namespace loader {

// 10^position for positions 1 to 4, otherwise 1: positions above 4 do not exist and scale nothing.
[[nodiscard]] std::int16_t ValuePow10(int position);
// `count` characters "0"; empty for a count of 0 or less.
[[nodiscard]] std::u16string ZeroText(int count);
// "." and `position` zeros; empty for a position of 0 or less.
[[nodiscard]] std::u16string DecimalMask(int position);

// A number as it is typed under a Japanese input method, "－１２．５", in the characters that numbers are
// shown in: digits, signs and the point, one for one. A text that is no number then either stays as it is.
[[nodiscard]] std::u16string HalfWidthNumber(std::u16string_view text);

// The general numeric test: blanks, a sign, digits with an optional point among or around them, an exponent
// ("e" or "E", a sign, digits), blanks; digits, signs and point may be full-width. Empty when the text fails
// it. A number beyond the range of double is an infinity.
[[nodiscard]] std::optional<double> NumericText(std::u16string_view text);

// The canonical field text: at least one digit before the point, exactly `position` digits behind it, no
// point at position 0. Empty for a value outside the limits (both inclusive), which is shown as a blank
// field.
[[nodiscard]] std::u16string StoredToText(std::int32_t value, int position, int minimum, int maximum);

// What a typed text is as a stored value.
struct NumberReading {
  std::optional<std::int16_t> stored; // empty: refused
  std::u16string text;                // as typed, of a number half-width and cut behind the position
  std::u16string message;             // why it was refused; empty for a refusal without a word
};
// TextToStored without its message box: a text that is refused says why. `text` is cut when it is numeric.
[[nodiscard]] NumberReading ReadNumber(std::u16string_view text, int minimum, int maximum, int position);

// The digits behind the point of a typed number, 4 at most: the position of a value that brings its own.
[[nodiscard]] int TypedPosition(std::u16string_view text);

// The typed text as a stored value. Digits behind the position are cut off, never rounded, and with them
// whatever stands there; `text` keeps the cut form. On failure `stored` is unchanged, and a message (text
// 62200 or 62201) has been shown with one exception: a number that cannot be computed (what is left after the
// cut is none, or the product does not fit 32 bits) fails without a word.
[[nodiscard]] bool TextToStored(std::u16string& text, std::int16_t& stored, int minimum, int maximum,
                                int position);

// The whole check of a number field that is left. A failed field has shown its message, takes the focus back
// and has its text selected; a good one shows the canonical text, except the field `txtYear`, which keeps
// the digits that were typed. A disabled field shows its message and leaves the focus where it is. While
// WaitTimer2 runs nothing is checked and the result is false. The caller answers a false result with WaitChk.
[[nodiscard]] bool CheckValueField(int position, int minimum, int maximum, TextField& field);

// The re-entry guard of the field checks: a failed check moves the focus, so other fields are left in turn;
// for 100 milliseconds none of them reports as well. The timer is a one-shot.
extern Timer WaitTimer2;
// Counts the firings of WaitTimer2 since WaitChk: 0 while the guard is on, 2 after its one firing.
extern int WaitTimer2Count;
void WaitChk();

// CheckValueField with its guard: a value that was refused starts it; `onRefused` runs before that. False
// also while the guard is on and nothing was checked: then nothing moves, and it is not started anew.
[[nodiscard]] bool CheckGuardedField(int position, int minimum, int maximum, TextField& field,
                                     const std::function<void(TextField&)>& onRefused = {});

// Common logarithm, as the natural logarithm of the value divided by that of 10.
[[nodiscard]] double Log10(double value);
// The stored alarm value of mantissa x 10^exponent on the scale that runs from the stored minimum at
// 10^exponent minimum to the stored maximum at 10^exponent maximum; the stored minimum where the two
// exponents are one. Rounded to even; -32768, which a recorder reads as something else, becomes -32767. Empty
// when the result does not fit 16 bits or is no number.
[[nodiscard]] std::optional<std::int16_t> AlarmValueToStored(double mantissa, int exponent,
                                                             std::int32_t storedMinimum,
                                                             std::int32_t storedMaximum, int exponentMinimum,
                                                             int exponentMaximum);

// The text of a channel with a logarithmic scale: "3.16E2". `value` and the measuring limits are stored
// integers of one position; the exponents are whole numbers. Exponents are clamped to -9 to 9.
// AlarmValueToStored is the way back.
[[nodiscard]] std::u16string LogValueText(std::int32_t value, std::int32_t measuringMinimum,
                                          std::int32_t measuringMaximum, std::int32_t exponentMinimum,
                                          std::int32_t exponentMaximum);

// A message with the limits of a value in it (62201, 20115).
[[nodiscard]] std::u16string RangeMessage(TextId text, std::u16string_view lowest,
                                          std::u16string_view highest);

// What a text field takes: at most `byteLimit` bytes in code page 932 (the ByteLength of its record); no
// comma where `forbidden` has a text, because it separates the fields of the parameter file.
struct TextRule {
  int byteLimit;
  TextId tooLong;                  // with @LEN@
  std::optional<TextId> forbidden; // with @MID@
  bool trimBoth = false;           // the field is trimmed at both ends before it is measured
  bool selectRefused = true;       // what is wrong is selected; false: the field gets the focus alone
};
struct TextReading {
  bool good;
  std::u16string message; // why it was refused
  int selectFrom;         // what of it is wrong
  int selectLength;
};
[[nodiscard]] TextReading ReadText(std::u16string_view text, const TextRule& rule);
// The check of a text field that is left. A refused field has shown its message, takes the focus back and has
// its text, or the comma, selected.
[[nodiscard]] bool CheckTextField(TextField& field, const TextRule& rule);
// The same for the tag of a channel, which is measured as it was typed.
[[nodiscard]] bool CheckTagField(TextField& field, int byteLimit, TextId tooLong, TextId forbidden);

// The number of an entry that is typed into a browsing screen: each screen has its own texts.
struct EntryNumberRule {
  int first;
  int last;
  TextId notANumber;
  TextId outOfRange;
  std::u16string_view placeholder = {}; // in outOfRange, for `last`
  bool wholeOnly = false;               // "1.5" is out of range; otherwise it is rounded
  std::optional<int> current = {};      // comes back, with the focus, in place of a text that is no number
};
// The number, or empty after a message: the entry shown stays. A number out of range takes the focus back
// with its text selected.
[[nodiscard]] std::optional<int> CheckEntryNumber(TextField& field, const EntryNumberRule& rule);
// The channel number of a measuring channel, 1 to channelCount (62102, 62103).
[[nodiscard]] std::optional<int> CheckChannelNumber(TextField& field, int channelCount);

} // namespace loader
