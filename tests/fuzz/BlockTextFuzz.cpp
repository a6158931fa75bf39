// The fields of the block image: its content, then reads and writes at any position with any length.
#include <algorithm>
#include <string>

#include "comm/ParameterTelegram.h"
#include "comm/modComunication.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

using Image = decltype(CommLink.BlockBuf);

bool Fits(std::int64_t position, std::int64_t length) {
  return position >= 0 && length >= 0 && position + length <= std::int64_t{Image{}.size()};
}

template <typename Action> bool Fails(const Action& action) {
  try {
    action();
    return false;
  } catch (const RunTimeFailure&) {
    return true;
  }
}

// Near the image's ends as often as anywhere.
std::int32_t Place(FuzzInput& input) {
  switch (input.Choice(4)) {
  case 0:
    return input.Byte();
  case 1:
    return static_cast<std::int32_t>(Image{}.size()) - input.Byte();
  case 2:
    return input.Number16();
  default:
    return input.Number32();
  }
}

void RequireChangedOnlyWithin(const Image& before, std::int32_t position, std::int32_t length) {
  const auto& after = CommLink.BlockBuf;
  const auto end = static_cast<std::ptrdiff_t>(position) + length;
  Require(std::equal(before.begin(), before.begin() + position, after.begin()) &&
              std::equal(before.begin() + end, before.end(), after.begin() + end),
          "a write stays inside of its field");
}

void ReadText(std::int32_t position, std::int32_t length) {
  std::u16string text;
  const bool failed = Fails([&] { text = gFBlockGetText(position, length); });
  Require(failed == !Fits(position, length), "a field outside of the image fails, and no other");
  Require(text.find(u'\0') == std::u16string::npos, "a text ends at its first NUL");
  Require(failed || text.size() <= static_cast<std::size_t>(length), "a text is no longer than its field");
}

void WriteText(std::int32_t position, std::int32_t length, std::string_view bytes) {
  const std::u16string text = FromCodePage(bytes);
  const Image before = CommLink.BlockBuf;
  const bool failed = Fails([&] { gFBlockPutText(text, position, length); });
  Require(failed == !Fits(position, length), "a field outside of the image fails, and no other");
  if (failed) {
    Require(CommLink.BlockBuf == before, "a write that failed changes nothing");
    return;
  }
  RequireChangedOnlyWithin(before, position, length);
  const bool whole = CodePageLength(text) <= static_cast<std::size_t>(length);
  if (whole) {
    Require(gFBlockGetText(position, length) == text.substr(0, text.find(u'\0')),
            "a text that fits is read as it was written");
  }
}

void MoveWord(std::int32_t position, std::int16_t value) {
  const Image before = CommLink.BlockBuf;
  const bool failed = Fails([&] { gFBlockPutWord(value, position); });
  Require(failed == !Fits(position, 2), "a word outside of the image fails, and no other");
  Require(Fails([&] { static_cast<void>(gFBlockGetWord(position)); }) == failed, "read and write agree");
  if (!failed) {
    RequireChangedOnlyWithin(before, position, 2);
    Require(gFBlockGetWord(position) == value, "a word is read as it was written");
  }
}

void ParseItem(std::size_t section, int item, std::int32_t start) {
  const ParamSection& parsed = ParamStore[section % ParamStore.size()];
  const auto index = static_cast<StoreIndex>(section % ParamStore.size());
  bool result = false;
  const bool failed = Fails([&] { result = gFParseItem(parsed.Code, start, index, item); });
  Require(failed || result == (item >= 0 && item < parsed.ItemCount), "an item is parsed if it is there");
  RequireSoundStore(ParamStore);
}

void RunOne(FuzzInput input) {
  const std::string_view content = input.ShortText();
  for (std::size_t i = 0; i < CommLink.BlockBuf.size(); ++i) {
    CommLink.BlockBuf[i] = content.empty() ? 0 : static_cast<std::uint8_t>(content[i % content.size()]);
  }
  bool storeBuilt = false;
  for (int steps = 0; !input.Empty() && steps < 64; ++steps) {
    const int kind = input.Choice(8);
    const std::int32_t position = Place(input);
    switch (kind) {
    case 0:
    case 1:
    case 2:
      ReadText(position, Place(input));
      break;
    case 3:
    case 4:
    case 5: {
      const std::int32_t length = Place(input);
      WriteText(position, length, input.ShortText());
      break;
    }
    case 6:
      MoveWord(position, input.Number16());
      break;
    default:
      if (!storeBuilt) {
        StartWithShippedStore("KOV");
        storeBuilt = true;
      }
      // A start of an item is a place inside of the image.
      ParseItem(input.Byte(), input.Number16(), std::clamp(position, 0, 10001));
    }
  }
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
