// The whole of code page 932 against one table, made once: both systems' converters have to come to it.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "core/Text.h"
#include "tests/core/HexText.h"

namespace loader {
namespace {

constexpr std::string_view TableFile = LOADER_SOURCE_DIR "/tests/core/golden/CodePage932.txt";
constexpr unsigned RowLength = 16;

std::string HexOf(std::u16string_view text) {
  std::string hex;
  for (const char16_t character : text) {
    hex += Hex(character, 4);
  }
  return hex;
}

std::string HexOf(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) {
    hex += Hex(static_cast<unsigned char>(byte), 2);
  }
  return hex;
}

// "HEAD VALUE VALUE ..." for each row of codes; a row whose values are all the plain one is left out, which
// is as good as written: a value that is another brings the row back.
template <typename Value, typename Plain>
std::string Rows(unsigned first, unsigned last, int digits, Value value, Plain plain) {
  std::string text;
  for (unsigned row = first; row <= last; row += RowLength) {
    std::string line = Hex(row, digits);
    bool allPlain = true;
    for (unsigned code = row; code < row + RowLength; ++code) {
      const std::string is = value(code);
      allPlain = allPlain && is == plain(code);
      line += " " + is;
    }
    text += allPlain ? "" : line + "\n";
  }
  return text;
}

std::string Single(unsigned byte) {
  return HexOf(FromCodePage(std::string(1, static_cast<char>(byte))));
}

std::string Pair(unsigned code) {
  return HexOf(FromCodePage(std::string{static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)}));
}

std::string Back(unsigned character) {
  const std::u16string text(1, static_cast<char16_t>(character));
  const std::string bytes = ToCodePage(text);
  EXPECT_EQ(bytes.size(), CodePageLength(text)) << Hex(character, 4);
  return HexOf(bytes);
}

std::string WholeTable() {
  const auto none = [](unsigned) { return std::string(); };
  const auto isLead = [](unsigned byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
  };
  std::string text = "bytes to characters\n" + Rows(0, 0xFF, 2, Single, none);
  text += "pairs to characters\n" + Rows(0, 0xFFFF, 4, Pair, [&](unsigned code) {
            return isLead(code >> 8) ? std::string("30FB") : Single(code >> 8) + Single(code & 0xFF);
          });
  text += "characters to bytes\n" + Rows(0, 0xFFFF, 4, Back, [](unsigned) { return std::string("3F"); });
  return text;
}

TEST(CodePageTable, HoldsEveryByteEveryPairAndEveryCharacter) {
  std::ifstream in{std::filesystem::path(TableFile), std::ios::binary};
  ASSERT_TRUE(in.is_open()) << TableFile;
  std::istringstream wanted(
      std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>()));
  std::istringstream given(WholeTable());
  std::string wantedLine;
  std::string givenLine;
  int lines = 0;
  int differing = 0;
  while (std::getline(wanted, wantedLine)) {
    ++lines;
    ASSERT_TRUE(std::getline(given, givenLine)) << "ends before " << wantedLine;
    EXPECT_EQ(wantedLine, givenLine);
    differing += wantedLine == givenLine ? 0 : 1;
    ASSERT_LT(differing, 5);
  }
  EXPECT_FALSE(std::getline(given, givenLine)) << "has more: " << givenLine;
  EXPECT_LT(1000, lines);
}

} // namespace
} // namespace loader
