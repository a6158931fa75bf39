#include "core/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <memory>

#include "platform/CodePage.h"

namespace loader {

namespace {

constexpr char16_t NoCharacter = 0;
// What a byte pair without a character decodes to: the katakana middle dot.
constexpr char16_t Undecodable = 0x30FB;

constexpr bool IsLeadByte(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

struct CodePageTables {
  std::array<char16_t, 256> single{};        // by byte; NoCharacter for a lead byte and for NUL
  std::array<char16_t, 0x10000> pair{};      // by lead byte * 256 + trail byte
  std::array<std::uint16_t, 0x10000> back{}; // by character: one byte, or lead byte * 256 + trail byte
};

// Where converters differ, these hold: one that follows the standard instead of the platform of this code
// page decodes 0x8160 to the wave dash, 0x815F to the plain backslash, and the like.
struct PairOverride {
  std::uint16_t code;
  char16_t character;
};
constexpr std::array<PairOverride, 7> PairOverrides{{
    {0x815C, 0x2015}, // horizontal bar
    {0x815F, 0xFF3C}, // full-width backslash
    {0x8160, 0xFF5E}, // full-width tilde
    {0x8161, 0x2225}, // parallel to
    {0x817C, 0xFF0D}, // full-width hyphen-minus
    {0x8191, 0xFFE0}, // full-width cent
    {0x81CA, 0xFFE2}, // full-width not
}};

// Bytes that no standard assigns and that the platform of this code page keeps through a round trip all the
// same.
constexpr std::array<PairOverride, 5> SingleOverrides{
    {{0x80, 0x0080}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}}};

// What input methods of other systems produce for the characters above: encoded like these, never decoded to.
constexpr std::array<PairOverride, 8> EncodedAlike{{
    {0x815C, 0x2014}, // em dash
    {0x8160, 0x301C}, // wave dash
    {0x8161, 0x2016}, // double vertical line
    {0x817C, 0x2212}, // minus sign
    {0x8191, 0x00A2}, // cent
    {0x8192, 0x00A3}, // pound
    {0x81CA, 0x00AC}, // not
    {0xFA55, 0x00A6}, // broken bar
}};

// Of several codes with one character the way back takes the first, but for the rows that a maker selected
// from what another has further behind: there the others' code is the one. (0x81CA before 0xEEF9 and 0xFA54;
// 0xFA40 before 0xEEEF.)
constexpr bool IsSelectedRow(unsigned code) {
  return code >= 0xED00 && code < 0xEF00;
}

void DecodeSingles(CodePageTables& tables) {
  // ASCII stands for itself, the backslash included.
  std::string highBytes;
  for (unsigned code = 1; code < 256; ++code) {
    const auto byte = static_cast<unsigned char>(code);
    if (code < 0x80) {
      tables.single[code] = static_cast<char16_t>(code);
    } else if (!IsLeadByte(byte)) {
      highBytes.push_back(static_cast<char>(byte));
    }
  }
  const std::u16string highCharacters = CodePageCharacters(highBytes, 1);
  for (std::size_t i = 0; i < highBytes.size(); ++i) {
    tables.single[static_cast<unsigned char>(highBytes[i])] = highCharacters[i];
  }
  for (const PairOverride& entry : SingleOverrides) {
    tables.single[entry.code] = entry.character;
  }
}

void DecodePairs(CodePageTables& tables) {
  std::string codes;
  for (unsigned lead = 0x81; lead <= 0xFC; ++lead) {
    for (unsigned trail = 0x40; trail <= 0xFC && IsLeadByte(static_cast<unsigned char>(lead)); ++trail) {
      if (trail != 0x7F) {
        codes += {static_cast<char>(lead), static_cast<char>(trail)};
      }
    }
  }
  const std::u16string characters = CodePageCharacters(codes, 2);
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const auto byte = [&](std::size_t at) {
      return static_cast<std::size_t>(static_cast<unsigned char>(codes[at]));
    };
    tables.pair[byte(2 * i) * 256 + byte(2 * i + 1)] = characters[i];
  }
  for (const PairOverride& entry : PairOverrides) {
    tables.pair[entry.code] = entry.character;
  }
}

// The way back follows from the way in: no converter's own choice, nor its best fit, has a say.
void EncodeAll(CodePageTables& tables) {
  for (const bool selected : {false, true}) {
    for (unsigned code = 0; code < 0x10000; ++code) {
      const char16_t character = code < 256 ? tables.single[code] : tables.pair[code];
      if (character != NoCharacter && tables.back[character] == 0 && IsSelectedRow(code) == selected) {
        tables.back[character] = static_cast<std::uint16_t>(code);
      }
    }
  }
  for (const PairOverride& entry : EncodedAlike) {
    if (tables.back[entry.character] == 0) {
      tables.back[entry.character] = entry.code;
    }
  }
}

std::unique_ptr<const CodePageTables> BuildTables() {
  auto tables = std::make_unique<CodePageTables>();
  DecodeSingles(*tables);
  DecodePairs(*tables);
  EncodeAll(*tables);
  return tables;
}

// Built at the first text that isn't plain ASCII.
const CodePageTables& Tables() {
  static const std::unique_ptr<const CodePageTables> tables = BuildTables();
  return *tables;
}

template <typename Number> std::optional<Number> ParseWhole(std::u16string_view text) {
  std::u16string_view digits = Trim(text);
  bool negative = false;
  if (!digits.empty() && (digits.front() == u'+' || digits.front() == u'-')) {
    negative = digits.front() == u'-';
    digits.remove_prefix(1);
  }
  if (digits.empty()) {
    return std::nullopt;
  }
  std::int64_t value = 0;
  for (const char16_t digit : digits) {
    if (digit < u'0' || digit > u'9') {
      return std::nullopt;
    }
    value = value * 10 + (digit - u'0');
    if (value > std::int64_t{1} << 40) {
      return std::nullopt;
    }
  }
  value = negative ? -value : value;
  if (value < std::numeric_limits<Number>::min() || value > std::numeric_limits<Number>::max()) {
    return std::nullopt;
  }
  return static_cast<Number>(value);
}

template <typename Number> Number RequireWhole(std::u16string_view text) {
  const std::optional<Number> value = ParseWhole<Number>(text);
  if (!value) {
    throw RunTimeFailure("not a whole number in range: " + ToUtf8(text));
  }
  return *value;
}

void AppendUtf8(std::string& out, char32_t code) {
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

constexpr char32_t ReplacementCharacter = 0xFFFD;

template <typename Text> bool IsAscii(const Text& text) {
  return std::all_of(text.begin(), text.end(), [](auto unit) { return unit >= 0 && unit < 0x80; });
}

} // namespace

std::string ToCodePage(std::u16string_view text) {
  if (IsAscii(text)) {
    return {text.begin(), text.end()};
  }
  const CodePageTables& tables = Tables();
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t character = text[i];
    if (character == 0) {
      bytes.push_back('\0');
      continue;
    }
    if (character >= 0xD800 && character < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
        text[i + 1] < 0xE000) {
      ++i; // a character beyond 16 bits is one character: one "?"
    }
    const std::uint16_t code = tables.back[character];
    if (code == 0) {
      bytes.push_back('?');
    } else if (code < 256) {
      bytes.push_back(static_cast<char>(code));
    } else {
      bytes.push_back(static_cast<char>(code >> 8));
      bytes.push_back(static_cast<char>(code & 0xFF));
    }
  }
  return bytes;
}

std::u16string FromCodePage(std::string_view bytes) {
  if (IsAscii(bytes)) {
    return {bytes.begin(), bytes.end()};
  }
  const CodePageTables& tables = Tables();
  std::u16string text;
  text.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (byte == 0) {
      text.push_back(u'\0');
      continue;
    }
    if (!IsLeadByte(byte)) {
      const char16_t character = tables.single[byte];
      text.push_back(character == NoCharacter ? Undecodable : character);
      continue;
    }
    const bool whole = i + 1 < bytes.size() && bytes[i + 1] != '\0';
    if (!whole) {
      text.push_back(Undecodable); // half a character, as a field that is cut by bytes leaves it
      continue;
    }
    ++i;
    const char16_t character =
        tables.pair[static_cast<std::size_t>(byte) * 256 + static_cast<unsigned char>(bytes[i])];
    text.push_back(character == NoCharacter ? Undecodable : character);
  }
  return text;
}

std::size_t CodePageLength(std::u16string_view text) {
  return ToCodePage(text).size();
}

std::u16string_view TrimRight(std::u16string_view text) {
  const std::size_t last = text.find_last_not_of(u' ');
  return last == std::u16string_view::npos ? std::u16string_view{} : text.substr(0, last + 1);
}

std::u16string_view TrimLeft(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  return first == std::u16string_view::npos ? std::u16string_view{} : text.substr(first);
}

std::u16string_view Trim(std::u16string_view text) {
  return TrimLeft(TrimRight(text));
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::optional<std::int16_t> ParseInt16(std::u16string_view text) {
  return ParseWhole<std::int16_t>(text);
}
std::optional<std::int32_t> ParseInt32(std::u16string_view text) {
  return ParseWhole<std::int32_t>(text);
}
std::int16_t RequireInt16(std::u16string_view text) {
  return RequireWhole<std::int16_t>(text);
}
std::int32_t RequireInt32(std::u16string_view text) {
  return RequireWhole<std::int32_t>(text);
}

std::u16string DecimalText(std::int64_t value) {
  return Widen(std::to_string(value));
}

std::u16string PaddedDecimal(std::int64_t value, int digits) {
  std::u16string text = DecimalText(value < 0 ? -value : value);
  if (digits > 0 && text.size() < static_cast<std::size_t>(digits)) {
    text.insert(0, static_cast<std::size_t>(digits) - text.size(), u'0');
  }
  return value < 0 ? u"-" + text : text;
}

std::u16string Widen(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

std::string Narrow(std::u16string_view text) {
  std::string ascii;
  ascii.reserve(text.size());
  for (const char16_t character : text) {
    ascii.push_back(character < 0x80 ? static_cast<char>(character) : '?');
  }
  return ascii;
}

std::u16string Replace(std::u16string_view text, std::u16string_view placeholder, std::u16string_view with) {
  std::u16string result(text);
  for (std::size_t at = result.find(placeholder); !placeholder.empty() && at != std::u16string::npos;
       at = result.find(placeholder, at + with.size())) {
    result.replace(at, placeholder.size(), with);
  }
  return result;
}

std::u16string OneLine(std::u16string_view caption) {
  const auto isBlank = [](char16_t character) { return character == u' ' || character == u'\u3000'; };
  std::u16string line;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    const bool inRun = isBlank(caption[i]) && i + 1 < caption.size() && isBlank(caption[i + 1]);
    const bool endsRun = isBlank(caption[i]) && i > 0 && isBlank(caption[i - 1]);
    if (!inRun) {
      line += endsRun ? u' ' : caption[i];
    }
  }
  return line;
}

std::string ToUtf8(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size() * 3);
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t code = text[i];
    const bool high = code >= 0xD800 && code < 0xDC00;
    if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00U);
    } else if (code >= 0xD800 && code < 0xE000) {
      code = ReplacementCharacter;
    }
    AppendUtf8(bytes, code);
  }
  return bytes;
}

std::u16string FromUtf8(std::string_view bytes) {
  std::u16string text;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    const std::size_t length = lead < 0x80                   ? 1
                               : lead >= 0xF0 && lead < 0xF5 ? 4
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xC2 && lead < 0xE0 ? 2
                                                             : 0;
    char32_t code = length == 1 ? lead : length == 0 ? ReplacementCharacter : lead & (0xFFU >> (length + 1));
    std::size_t used = 1;
    for (; used < length && i + used < bytes.size(); ++used) {
      const auto next = static_cast<unsigned char>(bytes[i + used]);
      if ((next & 0xC0U) != 0x80) {
        break;
      }
      code = code << 6 | (next & 0x3FU);
    }
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    if (length == 0 || used < length || code < smallest[length] || code > 0x10FFFF ||
        (code >= 0xD800 && code < 0xE000)) {
      code = ReplacementCharacter;
    }
    if (code >= 0x10000) {
      text.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
      text.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    } else {
      text.push_back(static_cast<char16_t>(code));
    }
    i += used;
  }
  return text;
}

std::filesystem::path PathOf(std::u16string_view fileName) {
  if constexpr (sizeof(std::filesystem::path::value_type) == sizeof(char16_t)) {
    return std::wstring(fileName.begin(), fileName.end()); // the system's own names: nothing is converted
  }
  const std::string utf8 = ToUtf8(fileName);
  return std::u8string(utf8.begin(), utf8.end());
}

} // namespace loader
