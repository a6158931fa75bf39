#include "comm/ParameterTelegram.h"

#include <algorithm>
#include <span>
#include <utility>

#include "comm/TransferWatch.h"
#include "comm/modComunication.h"
#include "core/Text.h"

namespace loader {

TransferWatch WatchOfTransfers;

namespace {

enum class Transfer { Read, Write };

const ParamSection& SectionOf(StoreIndex sectionIndex) {
  if (sectionIndex >= ParamStore.size()) {
    throw RunTimeFailure("no such section in the store");
  }
  return ParamStore[sectionIndex];
}

std::int32_t RegistersOf(const ParamSection& section) {
  const std::int64_t total = static_cast<std::int64_t>(section.Items.size()) * section.ItemWords;
  if (total < 0 || total > MaxBlockRegisters) {
    throw RunTimeFailure("section " + section.Code + " does not fit the block buffer");
  }
  return static_cast<std::int32_t>(total);
}

// `byteLength` bytes of BlockBuf.
std::span<std::uint8_t> Field(std::int32_t bytePosition, std::int32_t byteLength) {
  const auto size = static_cast<std::int32_t>(CommLink.BlockBuf.size());
  if (bytePosition < 0 || byteLength < 0 || bytePosition > size - byteLength) {
    throw RunTimeFailure("a field outside of the block buffer");
  }
  return std::span(CommLink.BlockBuf)
      .subspan(static_cast<std::size_t>(bytePosition), static_cast<std::size_t>(byteLength));
}

bool TransferRequest(Transfer transfer, std::span<std::uint8_t> block) {
  if (transfer == Transfer::Write) {
    std::copy(block.begin(), block.end(), CommLink.TxWords.begin());
    return gFWriteRegs();
  }
  if (!gFReadRegs()) {
    return false;
  }
  std::copy_n(CommLink.RxWords.begin(), block.size(), block.begin());
  return true;
}

bool MayGo(const BlockStep& step) {
  if (WatchOfTransfers.mayGo && !WatchOfTransfers.mayGo(step)) {
    CommLink.ResultCode = ResultStopped;
    return false;
  }
  return true;
}

bool TransferBlock(Transfer transfer, StoreIndex sectionIndex, std::int16_t registerOffset) {
  const ParamSection& section = SectionOf(sectionIndex);
  const bool writing = transfer == Transfer::Write;
  const std::int32_t all = RegistersOf(section);
  std::int32_t left = all;
  std::int64_t nextRegister = std::int64_t{section.BaseAddress} + registerOffset;
  std::int32_t byteIndex = 0;
  do {
    const std::int32_t count = std::min(left, MaxRegisters);
    CommLink.RegCount = static_cast<std::int16_t>(count);
    CommLink.RegAddress = RegisterNumber(nextRegister);
    if (!MayGo({Trim(section.Code), writing, all - left, all}) ||
        !TransferRequest(transfer, Field(byteIndex, 2 * count))) {
      return false;
    }
    byteIndex += 2 * count;
    nextRegister += count;
    left -= count;
  } while (left > 0);
  if (WatchOfTransfers.whole) {
    WatchOfTransfers.whole({sectionIndex, registerOffset, writing, Field(0, 2 * all)});
  }
  return true;
}

} // namespace

std::int32_t RegisterNumber(std::int64_t number) {
  if (!std::in_range<std::int32_t>(number)) {
    throw RunTimeFailure("no such register: " + std::to_string(number));
  }
  return static_cast<std::int32_t>(number);
}

bool gFReadBlock(StoreIndex sectionIndex, std::int16_t registerOffset) {
  return TransferBlock(Transfer::Read, sectionIndex, registerOffset);
}

bool gFWriteBlock(StoreIndex sectionIndex, std::int16_t registerOffset) {
  return TransferBlock(Transfer::Write, sectionIndex, registerOffset);
}

FailedRequest RequestUnderWay(bool writing) {
  return {writing, CommLink.RegAddress, CommLink.RegCount, CommLink.ResultCode};
}

bool gFParseItem(std::string_view sectionCode, std::int32_t byteStart, StoreIndex sectionIndex,
                 int itemIndex) {
  if (sectionIndex >= ParamStore.size() || itemIndex < 0 ||
      static_cast<std::size_t>(itemIndex) >= ParamStore[sectionIndex].Items.size()) {
    return false;
  }
  const ParamItem& item = ParamStore[sectionIndex].Items[static_cast<std::size_t>(itemIndex)];
  for (const ParamTextRecord& record : item.TextRecords) {
    StoreRead(sectionCode, itemIndex, record.Tag,
              gFBlockGetText(byteStart + 2 * record.WordOffset, record.ByteLength));
  }
  for (const ParamNumRecord& record : item.NumRecords) {
    StoreRead(sectionCode, itemIndex, record.Tag, gFBlockGetWord(byteStart + 2 * record.WordOffset));
  }
  return true;
}

std::int16_t gFBlockGetWord(std::int32_t bytePosition) {
  const std::span<const std::uint8_t> bytes = Field(bytePosition, 2);
  return static_cast<std::int16_t>(bytes[0] | bytes[1] << 8);
}

void gFBlockPutWord(std::int16_t value, std::int32_t bytePosition) {
  const std::span<std::uint8_t> bytes = Field(bytePosition, 2);
  bytes[0] = static_cast<std::uint8_t>(value & 0xFF);
  bytes[1] = static_cast<std::uint8_t>(value >> 8 & 0xFF);
}

std::u16string gFBlockGetText(std::int32_t bytePosition, std::int32_t byteLength) {
  const std::span<const std::uint8_t> bytes = Field(bytePosition, byteLength);
  const std::u16string text = FromCodePage(std::string(bytes.begin(), bytes.end()));
  // Deliberately no trim: blanks in front of the NUL, and those of a full field, belong to the value.
  return text.substr(0, text.find(u'\0'));
}

void gFBlockPutText(std::u16string_view text, std::int32_t bytePosition, std::int32_t byteLength) {
  const std::span<std::uint8_t> field = Field(bytePosition, byteLength);
  const std::string bytes = ToCodePage(text);
  const std::size_t count = std::min(bytes.size(), field.size());
  std::fill(field.begin(), field.end(), std::uint8_t{0});
  std::transform(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count), field.begin(),
                 [](char byte) { return static_cast<std::uint8_t>(byte); });
}

std::int32_t ItemByteStart(const ParamSection& section, int itemIndex) {
  return itemIndex * section.ItemWords * 2;
}

void StoreRead(std::string_view sectionCode, int itemIndex, std::string_view tag, std::u16string_view value) {
  gFParamValue(sectionCode, itemIndex, tag, value, SlotBoth);
}

void StoreRead(std::string_view sectionCode, int itemIndex, std::string_view tag, std::int32_t value) {
  StoreRead(sectionCode, itemIndex, tag, std::u16string_view(DecimalText(value)));
}

} // namespace loader
