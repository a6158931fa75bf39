// The frames of the link: requests built from CommLink into SendBuf, registers taken from RecvBuf.
#pragma once

#include <cstddef>
#include <cstdint>

namespace loader {

// The offset of the function in a frame.
constexpr std::size_t RtuFunctionAt = 1;
constexpr std::size_t TcpFunctionAt = 7;
// The offset of the first register in a reply to a read.
constexpr std::size_t RtuReplyRegisters = 3;
constexpr std::size_t TcpReplyRegisters = 9;

// Build SendBuf, SendLen and ExpectLen; the RTU ones leave the last two bytes to PutCheckValue.
// RunTimeFailure for a RegCount or a RegAddress that no frame can hold.
void BuildRtuRead();
void BuildTcpRead();
// False, with nothing built, for an input register (3xxxx): it cannot be written. The TCP one takes its
// transaction number first, also for a write that is refused.
[[nodiscard]] bool BuildRtuWrite();
[[nodiscard]] bool BuildTcpWrite();

// RegCount registers from RecvBuf to RxWords.
void TakeRegisters(std::size_t firstByte);

// The check value of SendBuf at its end, low byte first.
void PutCheckValue();
// Deliberately lenient: a reply counts as damaged only when BOTH check bytes differ. A reply too short to
// hold them is damaged.
[[nodiscard]] bool ReplyDamaged();
// The request's function plus 128, whatever the length.
[[nodiscard]] bool HasErrorFunction(std::size_t functionAt);
// The same on serial and USB, where the length has to be that of an error reply as well.
[[nodiscard]] bool IsRtuErrorReply();

// 0 to 255, else RunTimeFailure.
[[nodiscard]] std::uint8_t ToByte(std::int64_t value);

} // namespace loader
