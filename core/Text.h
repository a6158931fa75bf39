// Texts and numbers at the edges: code page 932, number syntax, trims.
//
// Inside the program a text is UTF-16 (one unit = one character, which is how the 64-character records
// count); bytes of code page 932 exist only in files, in telegrams and where a length is counted in bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/RunTimeFailure.h"

namespace loader {

// Code page 932. What cannot be encoded becomes "?"; a byte pair without a character becomes U+30FB, as the
// platforms of this code page decode it; a lone lead byte at the end is dropped to the same character.
[[nodiscard]] std::string ToCodePage(std::u16string_view text);
[[nodiscard]] std::u16string FromCodePage(std::string_view bytes);
// Bytes that the text takes in code page 932: 1 for a half-width, 2 for a full-width character.
[[nodiscard]] std::size_t CodePageLength(std::u16string_view text);

// Trims remove blanks (U+0020) only: the full-width blank is text.
[[nodiscard]] std::u16string_view TrimRight(std::u16string_view text);
[[nodiscard]] std::u16string_view TrimLeft(std::u16string_view text);
[[nodiscard]] std::u16string_view Trim(std::u16string_view text);
[[nodiscard]] std::string_view Trim(std::string_view text);

// "0" to "9"; the full-width digits are text.
[[nodiscard]] constexpr bool IsDigit(char16_t character) {
  return character >= u'0' && character <= u'9';
}

// A whole number as the files write it: blanks, an optional sign, decimal digits, blanks; nothing else.
// Empty when the text is no such number or lies outside the type's range.
[[nodiscard]] std::optional<std::int16_t> ParseInt16(std::u16string_view text);
[[nodiscard]] std::optional<std::int32_t> ParseInt32(std::u16string_view text);
// The same, with a RunTimeFailure in place of an empty result.
[[nodiscard]] std::int16_t RequireInt16(std::u16string_view text);
[[nodiscard]] std::int32_t RequireInt32(std::u16string_view text);

// Decimal text without padding, with "-" when negative; independent of the locale.
[[nodiscard]] std::u16string DecimalText(std::int64_t value);
// At least `digits` digits ("00" format for 2).
[[nodiscard]] std::u16string PaddedDecimal(std::int64_t value, int digits);

// ASCII to text; tags and codes are ASCII. Text to ASCII: anything above 0x7F becomes "?".
[[nodiscard]] std::u16string Widen(std::string_view ascii);
[[nodiscard]] std::string Narrow(std::u16string_view text);

// `text` with every occurrence of `placeholder` replaced ("@LEN@", "@FORMIN@", ...).
[[nodiscard]] std::u16string Replace(std::u16string_view text, std::u16string_view placeholder,
                                     std::u16string_view with);

// A caption as one line: a run of blanks in it is where a narrow label once broke the line, and counts as
// one.
[[nodiscard]] std::u16string OneLine(std::u16string_view caption);

// UTF-8, for the companion programs and for file names; the loader's own files are code page 932.
[[nodiscard]] std::string ToUtf8(std::u16string_view text);
[[nodiscard]] std::u16string FromUtf8(std::string_view bytes);
// The file of a name that a file dialog gave.
[[nodiscard]] std::filesystem::path PathOf(std::u16string_view fileName);

} // namespace loader
