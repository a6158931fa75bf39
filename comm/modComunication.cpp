#include "comm/modComunication.h"

#include <algorithm>
#include <cmath>

#include "comm/ModbusFrames.h"
#include "comm/modEthernet.h"
#include "comm/modUsb.h"
#include "core/ModelProfile.h"
#include "core/TextTable.h"
#include "core/modIni.h"

namespace loader {

CommLinkRecord CommLink;
Timer WaitTimer{WaitMilliseconds, false, [] { StopTimer(WaitTimer); }};

namespace {

constexpr int BinaryInput = 1; // a value of InputMode

// A timer that is disarmed however the scope is left.
class ArmedTimer {
public:
  ArmedTimer(Timer& timer, int milliseconds) : timer_(timer) { StartTimer(timer_, milliseconds); }
  ~ArmedTimer() { StopTimer(timer_); }
  ArmedTimer(const ArmedTimer&) = delete;
  ArmedTimer& operator=(const ArmedTimer&) = delete;

private:
  Timer& timer_;
};

// A lost port shows as a time-out and not as a failure: each statement of the serial exchange stands alone.
template <typename Statement> void IgnoringFailure(Statement&& statement) {
  try {
    statement();
  } catch (const RunTimeFailure&) {
  }
}

bool OpenTransport() {
  switch (Settings.ConfiguredLink) {
  case LinkUsb:
    return true;
  case LinkEthernet:
    return gFEtherConnect();
  default:
    return gFSerialOpen();
  }
}

// A link number that no menu entry has counts as serial.
std::uint8_t ConfiguredLinkKind() {
  const std::int16_t link = Settings.ConfiguredLink;
  return link >= 0 && link <= 255 ? static_cast<std::uint8_t>(link) : LinkSerial;
}

} // namespace

bool OpenLink() {
  CommLink.LinkKind = ConfiguredLinkKind();
  try {
    // The station number is looked at first: nothing is opened that nobody would close.
    CommLink.StationNo = ToByte(Settings.StationSetting);
    return OpenTransport();
  } catch (const RunTimeFailure&) {
    return false;
  }
}

void TellLinkNotOpened() {
  ShowMessage(CommLink.LinkKind == LinkEthernet ? LoadText(11000) : LoadText(11004));
}

bool gFLinkOpen() {
  const bool opened = OpenLink();
  if (!opened) {
    TellLinkNotOpened();
  }
  return opened;
}

void gFLinkClose() {
  IgnoringFailure([] {
    if (CommLink.LinkKind == LinkEthernet) {
      gFEtherClose();
    } else if (CommLink.LinkKind != LinkUsb) {
      gFSerialClose();
    }
  });
}

bool gFReadRegs() {
  CommLink.ResultCode = ResultOk;
  switch (CommLink.LinkKind) {
  case LinkUsb:
    gFUsbRead();
    break;
  case LinkEthernet:
    gFEtherRead();
    break;
  default:
    gFSerialRead();
  }
  return CommLink.ResultCode == ResultOk;
}

bool gFWriteRegs() {
  CommLink.ResultCode = ResultOk;
  switch (CommLink.LinkKind) {
  case LinkUsb:
    gFUsbWrite();
    break;
  case LinkEthernet:
    gFEtherWrite();
    break;
  default:
    gFSerialWrite();
  }
  return CommLink.ResultCode == ResultOk;
}

std::int32_t gFCrc16(int selector) {
  const bool sending = selector != 0;
  const std::span<const std::uint8_t> buffer = sending ? CommLink.SendBuf : CommLink.RecvBuf;
  const std::size_t length = sending ? CommLink.SendLen : CommLink.RecvLen;
  std::uint16_t check = 0xFFFF;
  for (const std::uint8_t byte : buffer.first(length < 2 ? 0 : length - 2)) {
    check = static_cast<std::uint16_t>(check >> 8U ^ CrcTable[(check ^ byte) & 0xFFU]);
  }
  return static_cast<std::int16_t>(check);
}

bool gFSerialOpen() {
  SerialControl& port = ThePlatform().MSComm1;
  try {
    if (port.PortOpen()) {
      port.SetPortOpen(false);
    }
    port.CommPort = static_cast<std::int16_t>(Settings.ComPortIndex + 1);
    port.Settings = "19200,O,8,1";
    port.Handshaking = 0;
    port.InputMode = BinaryInput;
    port.SetPortOpen(true);
    return true;
  } catch (const RunTimeFailure&) {
    return false;
  }
}

void gFSerialClose() {
  SerialControl& port = ThePlatform().MSComm1;
  if (port.PortOpen()) {
    port.SetPortOpen(false);
  }
}

void gFSerialRead() {
  BuildRtuRead();
  gFSerialExchange();
  if (CommLink.ResultCode == ResultOk) {
    TakeRegisters(RtuReplyRegisters);
  }
}

void gFSerialWrite() {
  CommLink.ResultCode = ResultRefused;
  if (BuildRtuWrite()) {
    gFSerialExchange();
  }
}

void gFSerialExchange() {
  try {
    CommLink.ResultCode = gFSerialSendWait();
  } catch (const RunTimeFailure&) {
    CommLink.ResultCode = ResultRunTimeFailure;
    ShowMessage(LoadText(11000));
  }
}

std::uint8_t gFSerialSendWait() {
  SerialControl& port = ThePlatform().MSComm1;
  PutCheckValue();
  std::uint8_t code = ResultOk;
  for (int attempt = 1; attempt <= LastAttempt; ++attempt) {
    CommLink.RecvLen = 0;
    IgnoringFailure([&] { port.Output(FrameToSend()); });
    // Deliberately exact: a shorter error reply or a longer reply ends in the time-out, and nothing empties
    // the port's buffer.
    const bool arrived = WaitUntil([&] {
      bool complete = false;
      IgnoringFailure([&] { complete = port.InBufferCount() == CommLink.ExpectLen; });
      return complete;
    });
    if (!arrived) {
      ShowMessage(LoadText(11000));
      return ResultNoAnswer;
    }
    IgnoringFailure([&] { CommLink.RecvLen = ToByte(port.InBufferCount()); });
    port.InputLen = 0;
    IgnoringFailure([&] { TakeReply(port.Input()); });
    if (ReplyDamaged()) {
      code = ResultDamaged;
    } else if (IsRtuErrorReply()) {
      code = ResultErrorReply;
    } else {
      return ResultOk;
    }
    PauseAfterBadReply();
  }
  return code;
}

bool WaitUntil(const std::function<bool()>& met) {
  const ArmedTimer watchdog(WaitTimer, WaitMilliseconds);
  while (!met()) {
    if (!WaitTimer.Enabled) {
      return false;
    }
    DoEvents();
  }
  return true;
}

void RunEventLoopOnce() {
  // The event loop waits for an event: this one comes at once.
  Timer wake{1, false, [] {}};
  const ArmedTimer armed(wake, 1);
  DoEvents();
}

void PauseAfterBadReply() {
  constexpr float Pause = 0.1F;
  constexpr float Midnight = 86400.0F;
  constexpr float ClockStep = 1.0F / 128; // what single precision tells apart late in the day
  Clock& clock = ThePlatform().clock;
  Timer wake{1, false, [] {}};
  float start = clock.SecondsSinceMidnight();
  for (float now = start; now < start + Pause;) {
    // Awake at the end of the pause and, so that it is noticed, at midnight, where the clock starts anew.
    const float left = std::min(start + Pause, Midnight - ClockStep) - now;
    const ArmedTimer armed(wake, std::clamp(static_cast<int>(std::ceil(left * 1000.0F)), 1, 100));
    DoEvents();
    now = clock.SecondsSinceMidnight();
    start = start > now ? now : start;
  }
}

std::span<const std::uint8_t> FrameToSend() {
  return std::span<const std::uint8_t>(CommLink.SendBuf).first(CommLink.SendLen);
}

void TakeReply(std::span<const std::uint8_t> bytes) {
  if (bytes.size() > CommLink.RecvBuf.size()) {
    throw RunTimeFailure("a reply of " + std::to_string(bytes.size()) + " bytes");
  }
  std::copy(bytes.begin(), bytes.end(), CommLink.RecvBuf.begin());
}

} // namespace loader
