#include "comm/ModbusFrames.h"

#include "comm/modComunication.h"

namespace loader {

namespace {

constexpr std::uint8_t ReadHolding = 3;
constexpr std::uint8_t ReadInput = 4;
constexpr std::uint8_t WriteMultiple = 16;
constexpr std::int32_t FirstHolding = 40001;
constexpr std::int32_t TableSize = 10000; // register numbers of one table: 3xxxx, 4xxxx
constexpr std::int32_t InputTable = 3;
constexpr std::size_t TcpHeader = 6; // in front of the station number
constexpr std::size_t CheckBytes = 2;
constexpr std::uint8_t RtuErrorReplyLength = 5;

bool IsInputRegister() {
  return CommLink.RegAddress / TableSize == InputTable;
}

void RequireFittingCount() {
  if (CommLink.RegCount < 0 || CommLink.RegCount > MaxRegisters) {
    throw RunTimeFailure("a request of " + std::to_string(CommLink.RegCount) + " registers");
  }
}

// Writes a frame from `next` on.
struct FrameWriter {
  std::size_t next = 0;
  void Byte(std::int64_t value) { CommLink.SendBuf.at(next++) = ToByte(value); }
  void Word(std::int64_t value) { // high byte first
    if (value < 0 || value > 0xFFFF) {
      throw RunTimeFailure("no such register address: " + std::to_string(value));
    }
    Byte(value >> 8);
    Byte(value & 0xFF);
  }
};

// The part of a request that RTU and TCP share: station, function, start address, count.
void PutReadRequest(FrameWriter& frame) {
  frame.Byte(CommLink.StationNo);
  frame.Byte(IsInputRegister() ? ReadInput : ReadHolding);
  frame.Word(CommLink.RegAddress % TableSize - 1);
  frame.Byte(0);
  frame.Byte(CommLink.RegCount);
}

void PutWriteRequest(FrameWriter& frame) {
  frame.Byte(CommLink.StationNo);
  frame.Byte(WriteMultiple);
  // Deliberately no modulo here, unlike a read: a number below 40001 is a run-time failure.
  frame.Word(std::int64_t{CommLink.RegAddress} - FirstHolding);
  frame.Byte(0);
  frame.Byte(CommLink.RegCount);
  frame.Byte(std::int64_t{2} * CommLink.RegCount);
  for (std::size_t i = 0; i < static_cast<std::size_t>(CommLink.RegCount); ++i) {
    frame.Byte(CommLink.TxWords.at(2 * i + 1));
    frame.Byte(CommLink.TxWords.at(2 * i));
  }
}

// Offsets 0 to 5 of a Modbus/TCP frame; the length comes in when the frame is complete.
void PutTcpHeader(FrameWriter& frame) {
  frame.Word(CommLink.TransactionNo);
  CommLink.TransactionNo = CommLink.TransactionNo == 32767
                               ? std::int16_t{0}
                               : static_cast<std::int16_t>(CommLink.TransactionNo + 1);
  frame.Word(0); // protocol
  frame.Word(0); // length
}

void FinishTcpFrame(const FrameWriter& frame, int expected) {
  CommLink.SendBuf.at(TcpHeader - 1) = ToByte(static_cast<std::int64_t>(frame.next - TcpHeader));
  CommLink.SendLen = ToByte(static_cast<std::int64_t>(frame.next));
  CommLink.ExpectLen = ToByte(expected);
}

void FinishRtuFrame(const FrameWriter& frame, int expected) {
  CommLink.SendLen = ToByte(static_cast<std::int64_t>(frame.next + CheckBytes));
  CommLink.ExpectLen = ToByte(expected);
}

} // namespace

std::uint8_t ToByte(std::int64_t value) {
  if (value < 0 || value > 0xFF) {
    throw RunTimeFailure("not a byte: " + std::to_string(value));
  }
  return static_cast<std::uint8_t>(value);
}

void BuildRtuRead() {
  RequireFittingCount();
  FrameWriter frame;
  PutReadRequest(frame);
  FinishRtuFrame(frame, 2 * CommLink.RegCount + 5);
}

void BuildTcpRead() {
  RequireFittingCount();
  FrameWriter frame;
  PutTcpHeader(frame);
  PutReadRequest(frame);
  FinishTcpFrame(frame, 2 * CommLink.RegCount + 9);
}

bool BuildRtuWrite() {
  RequireFittingCount();
  if (IsInputRegister()) {
    return false;
  }
  FrameWriter frame;
  PutWriteRequest(frame);
  FinishRtuFrame(frame, 8);
  return true;
}

bool BuildTcpWrite() {
  RequireFittingCount();
  FrameWriter frame;
  PutTcpHeader(frame);
  if (IsInputRegister()) {
    return false;
  }
  PutWriteRequest(frame);
  FinishTcpFrame(frame, 12);
  return true;
}

void TakeRegisters(std::size_t firstByte) {
  for (std::size_t i = 0; i < static_cast<std::size_t>(CommLink.RegCount); ++i) {
    CommLink.RxWords.at(2 * i) = CommLink.RecvBuf.at(firstByte + 2 * i + 1);
    CommLink.RxWords.at(2 * i + 1) = CommLink.RecvBuf.at(firstByte + 2 * i);
  }
}

void PutCheckValue() {
  const std::int32_t check = gFCrc16(1);
  CommLink.SendBuf.at(CommLink.SendLen - CheckBytes) = static_cast<std::uint8_t>(check & 0xFF);
  CommLink.SendBuf.at(CommLink.SendLen - 1U) = static_cast<std::uint8_t>(check >> 8 & 0xFF);
}

bool ReplyDamaged() {
  if (CommLink.RecvLen < CheckBytes) {
    return true;
  }
  const std::int32_t check = gFCrc16(0);
  const bool lowDiffers = CommLink.RecvBuf.at(CommLink.RecvLen - CheckBytes) != (check & 0xFF);
  const bool highDiffers = CommLink.RecvBuf.at(CommLink.RecvLen - 1U) != (check >> 8 & 0xFF);
  return lowDiffers && highDiffers;
}

bool HasErrorFunction(std::size_t functionAt) {
  return CommLink.RecvBuf.at(functionAt) == CommLink.SendBuf.at(functionAt) + 128;
}

bool IsRtuErrorReply() {
  return HasErrorFunction(RtuFunctionAt) && CommLink.RecvLen == RtuErrorReplyLength;
}

} // namespace loader
