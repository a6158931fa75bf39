// How parameters lie in the recorder's registers, and the transfer of a whole section.
//
// A section is (number of items) x ItemWords registers from BaseAddress up, moved through CommLink.BlockBuf:
// register k is byte 2k (low) and 2k + 1 (high). Item i starts at byte i x ItemWords x 2, a record at
// WordOffset x 2 behind it. A number is one register, signed; a text is ByteLength bytes of code page 932.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "comm/TransferResult.h"
#include "core/modMain.h"

namespace loader {

// The whole section into BlockBuf (from BlockBuf) in requests of up to 64 registers, lowest addresses first,
// from BaseAddress + registerOffset up. False at the first request that fails; the link has told it. A
// section that the store does not hold, or that does not fit BlockBuf (5000 registers), is a RunTimeFailure.
[[nodiscard]] bool gFReadBlock(StoreIndex sectionIndex, std::int16_t registerOffset);
[[nodiscard]] bool gFWriteBlock(StoreIndex sectionIndex, std::int16_t registerOffset);

// The request that such a transfer has failed at.
[[nodiscard]] FailedRequest RequestUnderWay(bool writing);

// Every record of one item from BlockBuf into the store, as value and as read value. False when the store has
// no such item.
bool gFParseItem(std::string_view sectionCode, std::int32_t byteStart, StoreIndex sectionIndex,
                 int itemIndex);

// One field of BlockBuf. A field that is not wholly inside of BlockBuf is a RunTimeFailure.
[[nodiscard]] std::int16_t gFBlockGetWord(std::int32_t bytePosition);
void gFBlockPutWord(std::int16_t value, std::int32_t bytePosition);
// Ends at the first NUL, blanks in front of it included; a field without a NUL is taken whole.
[[nodiscard]] std::u16string gFBlockGetText(std::int32_t bytePosition, std::int32_t byteLength);
// Cut at byteLength bytes, which can halve a full-width character, or filled up with NULs.
void gFBlockPutText(std::u16string_view text, std::int32_t bytePosition, std::int32_t byteLength);

// A register number that was computed; RunTimeFailure when it does not fit RegAddress.
[[nodiscard]] std::int32_t RegisterNumber(std::int64_t number);

// The byte of BlockBuf where an item starts.
[[nodiscard]] std::int32_t ItemByteStart(const ParamSection& section, int itemIndex);

// A value that was read from the recorder goes into the store as value and as read value: right after a read
// nothing counts as changed. A tag that the store does not hold is passed over.
void StoreRead(std::string_view sectionCode, int itemIndex, std::string_view tag, std::u16string_view value);
// A number passes the store as decimal text; outside of 16 bits it is a RunTimeFailure.
void StoreRead(std::string_view sectionCode, int itemIndex, std::string_view tag, std::int32_t value);

} // namespace loader
