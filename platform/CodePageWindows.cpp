#include "platform/CodePage.h"

#include <array>
#include <stdexcept>
#include <windows.h>

namespace loader {

namespace {

constexpr UINT JapaneseCodePage = 932;
// What the converter decodes a pair without a character to unless it refuses it, and the one code that has
// it.
constexpr char16_t MiddleDot = 0x30FB;
constexpr std::string_view MiddleDotCode = "\x81\x45";

char16_t CharacterOf(std::string_view code) {
  std::array<wchar_t, 4> out{};
  const int length =
      MultiByteToWideChar(JapaneseCodePage, MB_ERR_INVALID_CHARS, code.data(), static_cast<int>(code.size()),
                          out.data(), static_cast<int>(out.size()));
  const auto character = static_cast<char16_t>(out[0]);
  const bool isNone = length != 1 || (character == MiddleDot && code.size() == 2 && code != MiddleDotCode);
  return isNone ? u'\0' : character;
}

} // namespace

std::u16string CodePageCharacters(std::string_view codes, std::size_t width) {
  if (IsValidCodePage(JapaneseCodePage) == 0) {
    throw std::runtime_error("the system has no converter for code page 932");
  }
  std::u16string characters;
  for (std::size_t at = 0; at + width <= codes.size(); at += width) {
    characters.push_back(CharacterOf(codes.substr(at, width)));
  }
  return characters;
}

} // namespace loader
