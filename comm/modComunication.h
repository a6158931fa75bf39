// The link layer: one block of at most 64 registers between the loader and the recorder, over USB, Ethernet
// or a serial port. The recorder is a Modbus slave: RTU frames on serial and USB, Modbus/TCP on Ethernet.
//
// Every flow calls gFLinkOpen, then any number of gFReadRegs and gFWriteRegs, then gFLinkClose, also after a
// failure. While an exchange waits the event loop runs, so that the window stays live; a second flow is kept
// out by the window's disabled controls alone.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>

#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace loader {

// Values of LinkKind. Anything else counts as serial.
constexpr std::uint8_t LinkUsb = 0;
constexpr std::uint8_t LinkEthernet = 1;
constexpr std::uint8_t LinkSerial = 2;

// Values of ResultCode.
constexpr std::uint8_t ResultOk = 0;
constexpr std::uint8_t ResultRefused = 1; // write to an input register, nothing sent; USB: no byte came
constexpr std::uint8_t ResultDamaged = 2; // both check bytes differ
constexpr std::uint8_t ResultErrorReply = 3;
constexpr std::uint8_t ResultWrongLength = 4;       // USB only
constexpr std::uint8_t ResultWrongTransaction = 10; // Ethernet only
constexpr std::uint8_t ResultRunTimeFailure = 100;  // escaped from a serial or Ethernet exchange
constexpr std::uint8_t ResultNoAnswer = 200;        // time-out; USB: no device, or the write failed
constexpr std::uint8_t ResultStopped = 201;         // not sent: who watches the transfer has ended it

constexpr int MaxRegisters = 64; // of one request: a whole frame then fits the byte-wide lengths
constexpr int MaxBlockRegisters = 5000;
constexpr int WaitMilliseconds = 5000;
// One attempt for each exchange and no retry.
constexpr int LastAttempt = 1;

// There is one record, because there is never more than one exchange under way.
struct CommLinkRecord {
  std::uint8_t LinkKind = LinkUsb;
  std::uint8_t StationNo = 0;
  std::int32_t RegAddress = 0;    // 3xxxx input register, anything else holding register; 1-based
  std::int16_t RegCount = 0;      // up to MaxRegisters
  std::int16_t TransactionNo = 0; // 0 to 32767, then 0 again; never reset
  std::uint8_t Connected = 0;     // 1 after the socket's connect event
  std::uint8_t ResultCode = ResultOk;
  // Register i: low byte at 2i, high byte at 2i + 1.
  std::array<std::uint8_t, 129> RxWords{};
  std::array<std::uint8_t, 129> TxWords{};
  std::array<std::uint8_t, 257> SendBuf{};
  std::array<std::uint8_t, 257> RecvBuf{};
  std::uint8_t SendLen = 0; // the check value included
  std::uint8_t RecvLen = 0;
  std::uint8_t ExpectLen = 0; // the complete reply
  // Image of one section, in the byte order of RxWords.
  std::array<std::uint8_t, 2 * MaxBlockRegisters + 1> BlockBuf{};
};
extern CommLinkRecord CommLink;

// The watchdog of every wait: 5000 ms; its one event disables it.
extern Timer WaitTimer;

// Opens the transport that is set up and takes over its kind and the station number. False after a failure,
// which has been told in a message: 11000 for Ethernet, 11004 for the others. A station number outside 0 to
// 255 counts as a failed opening. USB is opened by each exchange, so that its opening never fails here.
[[nodiscard]] bool gFLinkOpen();
// The same in two: the opening, which shows nothing, and the message of one that failed.
[[nodiscard]] bool OpenLink();
void TellLinkNotOpened();
// Never fails: a device that is gone needs no closing.
void gFLinkClose();

// One request of RegCount registers from RegAddress up. True when ResultCode is 0; RxWords then holds what
// was read. RunTimeFailure for a RegCount outside 0 to MaxRegisters and for an address that no frame can
// hold: a read address is taken modulo 10000, a write address is plain subtraction of 40001.
[[nodiscard]] bool gFReadRegs();
[[nodiscard]] bool gFWriteRegs();

// Modbus CRC-16 of SendBuf (selector not 0) or RecvBuf (0), leaving out the frame's last two bytes. The
// value is a signed 16-bit number: only its two low bytes count, the lower one goes first on the wire.
[[nodiscard]] std::int32_t gFCrc16(int selector);

[[nodiscard]] bool gFSerialOpen();
void gFSerialClose();
void gFSerialRead();
void gFSerialWrite();
void gFSerialExchange();
[[nodiscard]] std::uint8_t gFSerialSendWait();

// --- Shared by the three transports

// Runs the event loop until `met` holds; false when WaitTimer ran out first.
[[nodiscard]] bool WaitUntil(const std::function<bool()>& met);
// Lets the event loop run once, without waiting for anything.
void RunEventLoopOnce();
// The pause behind a bad reply: 0.1 s by the system's clock, with the event loop running.
void PauseAfterBadReply();
// SendBuf up to SendLen.
[[nodiscard]] std::span<const std::uint8_t> FrameToSend();
// Into RecvBuf from index 0; RunTimeFailure when they do not fit.
void TakeReply(std::span<const std::uint8_t> bytes);

} // namespace loader
