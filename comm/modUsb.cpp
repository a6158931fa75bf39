#include "comm/modUsb.h"

#include <algorithm>

#include "comm/ModbusFrames.h"
#include "comm/modComunication.h"
#include "core/TextTable.h"

namespace loader {

std::int32_t UsbHandle = NoUsbHandle;
std::uint32_t UsbFailuresTakenForSuccess = 0;
std::array<std::int32_t, 256> UsbSendWords{};
std::array<std::int32_t, 256> UsbRecvWords{};

namespace {

constexpr std::int32_t TimeOutMilliseconds = 1000; // of the device's own read and write
constexpr std::int32_t NoWindowProperty = 0;       // the device asks for a number of the window and uses none

std::uint8_t JudgeReply() {
  if (ReplyDamaged()) {
    return ResultDamaged;
  }
  if (IsRtuErrorReply()) {
    return ResultErrorReply;
  }
  return CommLink.RecvLen == CommLink.ExpectLen ? ResultOk : ResultWrongLength;
}

// Reads what comes within the time-out and closes the device.
void ReadAndClose(UsbControl& usb) {
  RunEventLoopOnce();
  const std::int32_t count = usb.Read(UsbHandle, UsbRecvWords, CommLink.ExpectLen, TimeOutMilliseconds);
  CommLink.RecvLen = static_cast<std::uint8_t>(count & 0xFF);
  usb.Close(UsbHandle);
}

} // namespace

void gFUsbRead() {
  BuildRtuRead();
  gFUsbExchange();
  if (CommLink.ResultCode == ResultOk) {
    TakeRegisters(RtuReplyRegisters);
  }
}

void gFUsbWrite() {
  CommLink.ResultCode = ResultRefused;
  if (BuildRtuWrite()) {
    gFUsbExchange();
  }
}

void gFUsbExchange() {
  try {
    CommLink.ResultCode = gFUsbSendWait();
  } catch (const RunTimeFailure&) {
    // Deliberately no code of its own, unlike the other two links: a call that fails counts as success, with
    // the registers of the exchange before.
    CommLink.ResultCode = ResultOk;
    ++UsbFailuresTakenForSuccess;
  }
}

std::uint8_t gFUsbSendWait() {
  UsbControl& usb = ThePlatform().USBOCX1;
  PutCheckValue();
  std::copy_n(CommLink.SendBuf.begin(), CommLink.SendLen, UsbSendWords.begin());
  std::uint8_t code = ResultOk;
  for (int attempt = 1; attempt <= LastAttempt; ++attempt) {
    UsbHandle = NoUsbHandle;
    UsbHandle = usb.Open(NoWindowProperty);
    if (UsbHandle == NoUsbHandle) {
      ShowMessage(LoadText(11004));
      return ResultNoAnswer;
    }
    CommLink.RecvLen = 0;
    if (usb.Write(UsbHandle, UsbSendWords, CommLink.SendLen, TimeOutMilliseconds) == 0) {
      ShowMessage(LoadText(11000));
      return ResultNoAnswer; // deliberately without closing the device
    }
    ReadAndClose(usb);
    if (CommLink.RecvLen == 0) {
      ShowMessage(LoadText(11000));
      return ResultRefused;
    }
    std::transform(UsbRecvWords.begin(), UsbRecvWords.begin() + CommLink.RecvLen, CommLink.RecvBuf.begin(),
                   [](std::int32_t word) { return static_cast<std::uint8_t>(word & 0xFF); });
    code = JudgeReply();
    if (code == ResultOk) {
      break;
    }
    PauseAfterBadReply();
  }
  if (code != ResultOk) {
    ShowMessage(LoadText(11001));
  }
  return code;
}

} // namespace loader
