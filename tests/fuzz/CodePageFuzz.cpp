// The texts and numbers at the edges: the input as bytes of code page 932, as UTF-8 and as UTF-16.
#include <algorithm>
#include <string>

#include "core/Text.h"
#include "core/modFile.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzPlatform.h"

namespace loader::fuzz {

namespace {

void CheckCodePage(std::string_view bytes) {
  const std::u16string text = FromCodePage(bytes);
  Require(text.size() <= bytes.size(), "a byte is one character at most");
  const std::string encoded = ToCodePage(text);
  Require(encoded.size() == CodePageLength(text), "a length is counted in bytes of the code page");
  Require(FromCodePage(encoded) == text, "every character that was decoded has its code");
}

void CheckEncoding(std::u16string_view text) {
  const std::string encoded = ToCodePage(text);
  Require(encoded.size() <= 2 * text.size(), "a character takes two bytes at most");
  const std::u16string decoded = FromCodePage(encoded);
  Require(decoded.size() <= text.size() && ToCodePage(decoded) == encoded, "what was encoded is stable");
}

void CheckUtf8(std::string_view bytes, std::u16string_view text) {
  const std::u16string decoded = FromUtf8(bytes);
  Require(FromUtf8(ToUtf8(decoded)) == decoded, "decoded UTF-8 is stable");
  const std::string encoded = ToUtf8(text);
  Require(ToUtf8(FromUtf8(encoded)) == encoded, "encoded UTF-8 is stable");
  const bool surrogates =
      std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit >= 0xD800 && unit < 0xE000; });
  Require(surrogates || FromUtf8(encoded) == text, "UTF-8 holds every character");
}

template <typename Action> bool Fails(const Action& action) {
  try {
    action();
    return false;
  } catch (const RunTimeFailure&) {
    return true;
  }
}

void CheckNumbers(std::u16string_view text) {
  const auto small = ParseInt16(text);
  const auto large = ParseInt32(text);
  Require(!small || (large && *large == *small), "a small number is a number");
  Require(!large || ParseInt32(DecimalText(*large)) == large, "a number is printed as it is read");
  Require(Fails([&] { static_cast<void>(RequireInt16(text)); }) == !small.has_value(),
          "a failure is a number that is none");
  Require(Fails([&] { static_cast<void>(RequireInt32(text)); }) == !large.has_value(),
          "a failure is a number that is none");
  if (large) {
    Require(ParseInt32(PaddedDecimal(*large, 12)) == large, "zeros in front change nothing");
  }
}

void CheckCuts(std::u16string_view text) {
  const std::u16string_view trimmed = Trim(text);
  Require(Trim(trimmed) == trimmed && TrimLeft(TrimRight(text)) == trimmed, "a trim is whole");
  Require(trimmed.empty() || (trimmed.front() != u' ' && trimmed.back() != u' '), "a trim is whole");
  const std::string narrow = Narrow(text);
  Require(Trim(std::string_view(narrow)) == Narrow(trimmed), "bytes are trimmed like characters");
  std::size_t characters = 0;
  for (const std::u16string_view line : SplitLines(text)) {
    Require(line.find_first_of(u"\r\n") == std::u16string_view::npos, "a line is one line");
    characters += line.size();
  }
  const auto ends =
      std::count_if(text.begin(), text.end(), [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
  Require(characters + static_cast<std::size_t>(ends) == text.size(), "no character is lost between lines");
  const std::u16string replaced = Replace(text, u"ab", u"-");
  Require(replaced.size() <= text.size() && replaced.find(u"ab") == std::u16string::npos,
          "every placeholder is replaced");
}

void RunOne(FuzzInput input) {
  const std::string_view bytes = input.RestText();
  std::u16string text;
  for (FuzzInput units(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()); !units.Empty();) {
    text.push_back(static_cast<char16_t>(units.Number16()));
  }
  CheckCodePage(bytes);
  CheckEncoding(text);
  CheckUtf8(bytes, text);
  for (const std::u16string& each : {text, FromCodePage(bytes)}) {
    CheckNumbers(each);
    CheckCuts(each);
  }
  Require(Widen(Narrow(text)).size() == text.size(), "a character is one character");
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
