#include "core/Text.h"
#include "tests/core/HexText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <set>
#include <string>

namespace loader {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

// --- Code page 932: every code

// Codes of the code page: single bytes, and pairs of a lead byte and a trail byte.
std::vector<std::string> AllCodes() {
  std::vector<std::string> codes;
  const auto isLead = [](unsigned byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
  };
  for (unsigned byte = 0; byte < 0x100; ++byte) {
    if (!isLead(byte)) {
      codes.push_back(std::string(1, static_cast<char>(byte)));
      continue;
    }
    for (unsigned trail = 0x40; trail <= 0xFC; ++trail) {
      if (trail != 0x7F) {
        codes.push_back({static_cast<char>(byte), static_cast<char>(trail)});
      }
    }
  }
  return codes;
}

// U+30FB is what a code without a character decodes to, and the character of 0x8145 itself.
bool IsAssigned(const std::string& code) {
  return FromCodePage(code) != u"\u30FB" || code == "\x81\x45";
}

// The assigned codes and their characters, taken from the table of a converter that is not the one used here:
// how many there are, and the FNV-1a sum over "CODE CHARACTER\n" (both in hexadecimal, four digits the
// character) in ascending order.
constexpr std::size_t AssignedCodes = 9800;
constexpr std::uint64_t AssignedSum = 0xA457A38E640D7198U;

TEST(CodePage, DecodesEveryCodeAsAnotherConverterDoes) {
  std::size_t count = 0;
  std::uint64_t sum = 0xCBF29CE484222325U;
  for (const std::string& code : AllCodes()) {
    if (!IsAssigned(code)) {
      continue;
    }
    ++count;
    const std::u16string character = FromCodePage(code);
    ASSERT_EQ(1U, character.size());
    std::string line;
    for (const char byte : code) {
      line += Hex(static_cast<unsigned char>(byte), 2);
    }
    line += " " + Hex(character[0], 4) + "\n";
    for (const char byte : line) {
      sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
  }
  EXPECT_EQ(AssignedCodes, count);
  EXPECT_EQ(AssignedSum, sum);
}

TEST(CodePage, GivesBackTheCharacterOfEveryAssignedCode) {
  for (const std::string& code : AllCodes()) {
    if (!IsAssigned(code)) {
      continue;
    }
    const std::u16string character = FromCodePage(code);
    const std::string encoded = ToCodePage(character);
    EXPECT_EQ(character, FromCodePage(encoded)) << Hex(character[0], 4);
    EXPECT_EQ(code.size(), encoded.size()) << Hex(character[0], 4);
    EXPECT_EQ(encoded, ToCodePage(FromCodePage(encoded))) << Hex(character[0], 4);
  }
}

TEST(CodePage, GivesBackTheCodeUnlessAnotherCodeHoldsTheSameCharacter) {
  std::set<std::u16string> seen;
  std::set<std::u16string> shared;
  for (const std::string& code : AllCodes()) {
    if (IsAssigned(code) && !seen.insert(FromCodePage(code)).second) {
      shared.insert(FromCodePage(code));
    }
  }
  EXPECT_EQ(396U, shared.size()); // extensions of two makers overlap
  for (const std::string& code : AllCodes()) {
    if (IsAssigned(code) && !shared.contains(FromCodePage(code))) {
      EXPECT_EQ(code, ToCodePage(FromCodePage(code)));
    }
  }
}

struct SharedCharacter {
  char16_t character;
  std::string_view preferred;
  std::string_view other;
};

TEST(CodePage, PrefersOneOfTheCodesThatShareACharacter) {
  for (const SharedCharacter& row : {SharedCharacter{u'\u2252', "\x81\xE0"sv, "\x87\x90"sv},
                                     {u'\u2235', "\x81\xE6"sv, "\xFA\x5B"sv},
                                     {u'\uFFE2', "\x81\xCA"sv, "\xFA\x54"sv},
                                     {u'\u2160', "\x87\x54"sv, "\xFA\x4A"sv},
                                     {u'\u2116', "\x87\x82"sv, "\xFA\x59"sv},
                                     {u'\u3231', "\x87\x8A"sv, "\xFA\x58"sv},
                                     {u'\u2170', "\xFA\x40"sv, "\xEE\xEF"sv},
                                     {u'\u7E8A', "\xFA\x5C"sv, "\xED\x40"sv}}) {
    EXPECT_EQ(row.preferred, ToCodePage(std::u16string(1, row.character))) << Hex(row.character, 4);
    EXPECT_EQ(std::u16string(1, row.character), FromCodePage(row.preferred)) << Hex(row.character, 4);
    EXPECT_EQ(std::u16string(1, row.character), FromCodePage(row.other)) << Hex(row.character, 4);
  }
}

// --- Code page 932: the codes that are easily lost

TEST(CodePage, KeepsASCIIAsItIs) {
  for (char16_t c = 0; c < 0x80; ++c) {
    const std::u16string text(1, c);
    EXPECT_EQ(std::string(1, static_cast<char>(c)), ToCodePage(text)) << static_cast<int>(c);
    EXPECT_EQ(text, FromCodePage(ToCodePage(text))) << static_cast<int>(c);
  }
}

TEST(CodePage, KeepsBackslashAndTildeApartFromYenAndOverline) {
  EXPECT_EQ(u"\\~", FromCodePage("\x5C\x7E"));
  EXPECT_EQ("\x5C\x7E", ToCodePage(u"\\~"));
}

TEST(CodePage, HoldsTrailBytesThatAreBackslashOrBarByThemselves) {
  EXPECT_EQ(u"表ソ能ポл", FromCodePage("\x95\x5C\x83\x5C\x94\x5C\x83\x7C\x84\x7C"));
  EXPECT_EQ("\x95\x5C\x83\x5C\x94\x5C\x83\x7C\x84\x7C", ToCodePage(u"表ソ能ポл"));
}

TEST(CodePage, HasTheFullWidthTildeAt8160) {
  EXPECT_EQ(u"\uFF5E", FromCodePage("\x81\x60"));
  EXPECT_EQ("\x81\x60", ToCodePage(u"\uFF5E"));
}

TEST(CodePage, HasTheFullWidthSignsOfThePlatform) {
  EXPECT_EQ(u"\u2015\uFF3C\u2225\uFF0D\uFFE0\uFFE1\uFFE2",
            FromCodePage("\x81\x5C\x81\x5F\x81\x61\x81\x7C\x81\x91\x81\x92\x81\xCA"));
  EXPECT_EQ("\x81\x5C\x81\x5F\x81\x61\x81\x7C\x81\x91\x81\x92\x81\xCA",
            ToCodePage(u"\u2015\uFF3C\u2225\uFF0D\uFFE0\uFFE1\uFFE2"));
}

// Input methods of other systems type these for the full-width signs.
TEST(CodePage, EncodesTheSignsOfOtherSystemsAlike) {
  EXPECT_EQ("\x81\x5C\x81\x60\x81\x61\x81\x7C\x81\x91\x81\x92\x81\xCA\xFA\x55",
            ToCodePage(u"\u2014\u301C\u2016\u2212\u00A2\u00A3\u00AC\u00A6"));
}

TEST(CodePage, HoldsHalfWidthKatakanaInOneByte) {
  std::string bytes;
  std::u16string text;
  for (int i = 0; i < 63; ++i) {
    bytes += static_cast<char>(0xA1 + i);
    text += static_cast<char16_t>(0xFF61 + i);
  }
  EXPECT_EQ(text, FromCodePage(bytes));
  EXPECT_EQ(bytes, ToCodePage(text));
  EXPECT_EQ(63U, CodePageLength(text));
}

TEST(CodePage, KeepsBytesThatNoStandardAssigns) {
  EXPECT_EQ("\x80\xA0\xFD\xFE\xFF", ToCodePage(FromCodePage("\x80\xA0\xFD\xFE\xFF")));
}

TEST(CodePage, KeepsNULs) {
  EXPECT_EQ(u"a\0b\0"s, FromCodePage("a\0b\0"sv));
  EXPECT_EQ("a\0b\0"s, ToCodePage(u"a\0b\0"sv));
}

TEST(CodePage, EncodesWhatItLacksAsAQuestionMark) {
  EXPECT_EQ("a?b", ToCodePage(u"a\u00E9b"));
  EXPECT_EQ("?", ToCodePage(u"\uAC00"));
  EXPECT_EQ("?", ToCodePage(u"\uFFFD"));
}

TEST(CodePage, EncodesACharacterBeyond16BitsAsOneQuestionMark) {
  EXPECT_EQ("a?b", ToCodePage(u"a\U00020BB7b"));
}

TEST(CodePage, EncodesHalfASurrogatePairAsAQuestionMark) {
  EXPECT_EQ("?", ToCodePage(std::u16string{0xD842}));
  EXPECT_EQ("?a", ToCodePage(std::u16string{0xDFB7, u'a'}));
  EXPECT_EQ("?\x82\xA0", ToCodePage(std::u16string{0xD842, u'あ'}));
}

TEST(CodePage, DecodesALoneLeadByteAtTheEndAsAMiddleDot) {
  EXPECT_EQ(u"a\u30FB", FromCodePage("a\x83"));
}

TEST(CodePage, DecodesALeadByteBeforeANULAsAMiddleDotAndKeepsTheNUL) {
  EXPECT_EQ(u"\u30FB\0a"s, FromCodePage("\x83\0a"sv));
}

TEST(CodePage, DecodesAPairWithoutACharacterAsOneMiddleDot) {
  EXPECT_EQ(u"\u30FBa", FromCodePage("\x85\x40"
                                     "a"));
  EXPECT_EQ(u"\u30FBa", FromCodePage("\x83\x7F"
                                     "a"));
  EXPECT_EQ(u"\u30FBa", FromCodePage("\x83\xFF"
                                     "a"));
}

TEST(CodePage, CountsBytes) {
  EXPECT_EQ(0U, CodePageLength(u""));
  EXPECT_EQ(3U, CodePageLength(u"CH1"));
  EXPECT_EQ(4U, CodePageLength(u"ﾁｬﾈﾙ"));
  EXPECT_EQ(6U, CodePageLength(u"温度１"));
  EXPECT_EQ(5U, CodePageLength(u"温 度"));
}

// --- Trims

TEST(Trims, RemoveBlanks) {
  EXPECT_EQ(u"  a b", TrimRight(u"  a b  "));
  EXPECT_EQ(u"a b  ", TrimLeft(u"  a b  "));
  EXPECT_EQ(u"a b", Trim(u"  a b  "));
  EXPECT_EQ("a b", Trim("  a b  "sv));
}

TEST(Trims, LeaveNothingOfBlanks) {
  EXPECT_EQ(u"", TrimRight(u"   "));
  EXPECT_EQ(u"", TrimLeft(u"   "));
  EXPECT_EQ(u"", Trim(u"   "));
  EXPECT_EQ("", Trim("   "sv));
  EXPECT_EQ(u"", Trim(u""));
  EXPECT_EQ("", Trim(""sv));
}

TEST(Trims, LeaveEveryOtherCharacter) {
  for (const std::u16string& text : {u"\u3000a\u3000"s, u"\ta\t"s, u"\na\r"s, u"\0a\0"s, u"\u00A0a\u00A0"s}) {
    EXPECT_EQ(text, Trim(text));
    EXPECT_EQ(text, TrimLeft(text));
    EXPECT_EQ(text, TrimRight(text));
  }
  EXPECT_EQ("\ta\t", Trim("\ta\t"sv));
}

// --- Numbers

struct NumberText {
  std::u16string text;
  int value;
};

TEST(Numbers, AreBlanksASignAndDigits) {
  for (const NumberText& row : {NumberText{u"0", 0},
                                {u"5", 5},
                                {u"-5", -5},
                                {u"+5", 5},
                                {u" 5", 5},
                                {u"5 ", 5},
                                {u"  -5  ", -5},
                                {u"007", 7},
                                {u"-0", 0},
                                {u"32767", 32767},
                                {u"-32768", -32768},
                                {u"0000000000000000000000000012", 12}}) {
    EXPECT_EQ(row.value, ParseInt16(row.text)) << ToUtf8(row.text);
    EXPECT_EQ(row.value, ParseInt32(row.text)) << ToUtf8(row.text);
    EXPECT_EQ(row.value, RequireInt16(row.text)) << ToUtf8(row.text);
    EXPECT_EQ(row.value, RequireInt32(row.text)) << ToUtf8(row.text);
  }
}

TEST(Numbers, AreNothingElse) {
  for (const std::u16string& text : {u""s,
                                     u" "s,
                                     u"-"s,
                                     u"+"s,
                                     u"- 5"s,
                                     u"+-5"s,
                                     u"--5"s,
                                     u"5-"s,
                                     u"1.5"s,
                                     u"1,5"s,
                                     u"1e2"s,
                                     u"&H10"s,
                                     u"0x10"s,
                                     u"abc"s,
                                     u"5a"s,
                                     u"a5"s,
                                     u"1 2"s,
                                     u"\t5"s,
                                     u"5\r"s,
                                     u"\u3000"
                                     u"5"s,
                                     u"\uFF15"s,
                                     u"\u0665"s,
                                     u"5\0"s,
                                     u"ERROR"s,
                                     u"\u2212"
                                     u"5"s}) {
    EXPECT_FALSE(ParseInt16(text)) << ToUtf8(text);
    EXPECT_FALSE(ParseInt32(text)) << ToUtf8(text);
    EXPECT_THROW(static_cast<void>(RequireInt16(text)), RunTimeFailure) << ToUtf8(text);
    EXPECT_THROW(static_cast<void>(RequireInt32(text)), RunTimeFailure) << ToUtf8(text);
  }
}

TEST(Numbers, HoldTheRangeOf16Bits) {
  for (const std::u16string& text :
       {u"32768"s, u"-32769"s, u"40001"s, u"65535"s, u"70000"s, u"4294967296"s}) {
    EXPECT_FALSE(ParseInt16(text)) << ToUtf8(text);
    EXPECT_THROW(static_cast<void>(RequireInt16(text)), RunTimeFailure) << ToUtf8(text);
  }
}

TEST(Numbers, HoldTheRangeOf32Bits) {
  EXPECT_EQ(2147483647, ParseInt32(u"2147483647"));
  EXPECT_EQ(-2147483647 - 1, ParseInt32(u"-2147483648"));
  EXPECT_EQ(49901, ParseInt32(u"49901"));
  for (const std::u16string& text : {u"2147483648"s, u"-2147483649"s, u"9223372036854775808"s,
                                     std::u16string(1000, u'9'), u"-" + std::u16string(1000, u'9')}) {
    EXPECT_FALSE(ParseInt32(text)) << ToUtf8(text).substr(0, 40);
    EXPECT_FALSE(ParseInt16(text)) << ToUtf8(text).substr(0, 40);
  }
}

TEST(Numbers, AreWrittenAsPlainDecimals) {
  EXPECT_EQ(u"0", DecimalText(0));
  EXPECT_EQ(u"12", DecimalText(12));
  EXPECT_EQ(u"-32768", DecimalText(-32768));
  EXPECT_EQ(u"1234567", DecimalText(1234567));
}

TEST(Numbers, ArePaddedToAtLeastTheDigits) {
  EXPECT_EQ(u"00", PaddedDecimal(0, 2));
  EXPECT_EQ(u"07", PaddedDecimal(7, 2));
  EXPECT_EQ(u"12", PaddedDecimal(12, 2));
  EXPECT_EQ(u"123", PaddedDecimal(123, 2));
  EXPECT_EQ(u"-07", PaddedDecimal(-7, 2));
  EXPECT_EQ(u"7", PaddedDecimal(7, 0));
}

TEST(Numbers, DoNotDependOnTheLocale) {
  struct Grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
  const std::u16string written = DecimalText(1234567);
  const std::u16string padded = PaddedDecimal(1234, 2);
  const auto parsed = ParseInt32(u"1234567");
  std::locale::global(before);
  EXPECT_EQ(u"1234567", written);
  EXPECT_EQ(u"1234", padded);
  EXPECT_EQ(1234567, parsed);
}

// --- ASCII and placeholders

TEST(Ascii, IsWidenedAndNarrowed) {
  EXPECT_EQ(u"C00TAG ", Widen("C00TAG "));
  EXPECT_EQ("C00TAG ", Narrow(u"C00TAG "));
  EXPECT_EQ("a??\x7F", Narrow(u"a\u0080\u8868\x7F"));
}

TEST(Placeholders, AreReplacedWhereverTheyStand) {
  EXPECT_EQ(u"半角16文字以下で入力してください",
            Replace(u"半角@LEN@文字以下で入力してください", u"@LEN@", u"16"));
  EXPECT_EQ(u"ﾁｬﾈﾙ3 = ﾁｬﾈﾙ3 - 設定ﾁｬﾈﾙ", Replace(u"ﾁｬﾈﾙ@CHNO@ = ﾁｬﾈﾙ@CHNO@ - 設定ﾁｬﾈﾙ", u"@CHNO@", u"3"));
  EXPECT_EQ(u"", Replace(u"@A@", u"@A@", u""));
}

TEST(Placeholders, OfAnotherNameStay) {
  EXPECT_EQ(u"@LEN@", Replace(u"@LEN@", u"@MID@", u"x"));
  EXPECT_EQ(u"abc", Replace(u"abc", u"", u"x"));
}

TEST(Placeholders, AreNotSoughtInWhatReplacedThem) {
  EXPECT_EQ(u"@A@@A@", Replace(u"@A@", u"@A@", u"@A@@A@"));
}

// --- UTF-8

TEST(Utf8, HoldsEveryLength) {
  EXPECT_EQ("a\xC3\xA9\xE8\xA1\xA8\xF0\xA0\xAE\xB7", ToUtf8(u"a\u00E9\u8868\U00020BB7"));
  EXPECT_EQ(u"a\u00E9\u8868\U00020BB7", FromUtf8("a\xC3\xA9\xE8\xA1\xA8\xF0\xA0\xAE\xB7"));
}

TEST(Utf8, GivesBackEveryCharacter) {
  for (char32_t code = 0; code < 0x11000; ++code) {
    if (code >= 0xD800 && code < 0xE000) {
      continue;
    }
    std::u16string text;
    if (code < 0x10000) {
      text = static_cast<char16_t>(code);
    } else {
      text = {static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)),
              static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF))};
    }
    ASSERT_EQ(text, FromUtf8(ToUtf8(text))) << static_cast<unsigned>(code);
  }
  EXPECT_EQ(u"\U0010FFFF", FromUtf8("\xF4\x8F\xBF\xBF"));
}

TEST(Utf8, ReplacesHalfASurrogatePair) {
  EXPECT_EQ("\xEF\xBF\xBD", ToUtf8(std::u16string{0xD842}));
  EXPECT_EQ("\xEF\xBF\xBD"
            "a",
            ToUtf8(std::u16string{0xDFB7, u'a'}));
}

TEST(Utf8, ReplacesWhatIsMalformed) {
  EXPECT_EQ(u"\uFFFD", FromUtf8("\xFF"));
  EXPECT_EQ(u"\uFFFD", FromUtf8("\x80"));
  EXPECT_EQ(u"\uFFFD", FromUtf8("\xE8\xA1")); // cut
  EXPECT_EQ(u"\uFFFD"
            u"a",
            FromUtf8("\xE8\xA1"
                     "a"));                           // interrupted
  EXPECT_EQ(u"\uFFFD\uFFFD", FromUtf8("\xC0\x80"));   // overlong
  EXPECT_EQ(u"\uFFFD", FromUtf8("\xE0\x80\x80"));     // overlong
  EXPECT_EQ(u"\uFFFD", FromUtf8("\xED\xA0\x80"));     // a surrogate
  EXPECT_EQ(u"\uFFFD", FromUtf8("\xF4\x90\x80\x80")); // beyond the last character
}

} // namespace
} // namespace loader
