#include "devices/ComPort.h"

#include <algorithm>

#include "core/Text.h"
#include "platform/RunTimeFailure.h"

namespace loader {

namespace {

BYTE ParityByte(Parity parity) {
  switch (parity) {
  case Parity::Odd:
    return ODDPARITY;
  case Parity::Even:
    return EVENPARITY;
  default:
    return NOPARITY;
  }
}

// All that a port can be told is told: what the last program left in it counts for nothing.
DCB ControlBlock(const SerialSettings& settings, bool hardwareHandshake) {
  DCB block{};
  block.DCBlength = sizeof block;
  block.BaudRate = static_cast<DWORD>(settings.baud);
  block.ByteSize = static_cast<BYTE>(settings.dataBits);
  block.Parity = ParityByte(settings.parity);
  block.StopBits = settings.stopBits == 1 ? ONESTOPBIT : TWOSTOPBITS;
  block.fBinary = TRUE;
  block.fParity = settings.parity == Parity::None ? FALSE : TRUE;
  block.fOutxCtsFlow = hardwareHandshake ? TRUE : FALSE;
  block.fRtsControl = hardwareHandshake ? RTS_CONTROL_HANDSHAKE : RTS_CONTROL_ENABLE;
  block.fDtrControl = DTR_CONTROL_ENABLE;
  block.XonLim = 2048; // unused, but a driver may check them
  block.XoffLim = 512;
  block.XonChar = 0x11;
  block.XoffChar = 0x13;
  return block;
}

// A read ends with what is there, and where nothing is there with the first byte that comes. A write takes as
// long as the line does; who waits for it says how long.
constexpr COMMTIMEOUTS FirstByteEndsARead{MAXDWORD, MAXDWORD, MAXDWORD - 1, 0, 0};

// As long as is left of a wait, in what the system's waits take.
class Deadline {
public:
  explicit Deadline(int milliseconds)
      : end_(GetTickCount64() + static_cast<ULONGLONG>(std::max(0, milliseconds))) {}
  [[nodiscard]] DWORD Left() const {
    const ULONGLONG now = GetTickCount64();
    return now >= end_ ? 0 : static_cast<DWORD>(end_ - now);
  }

private:
  ULONGLONG end_;
};

} // namespace

std::u16string SystemReason(DWORD failure) {
  std::array<wchar_t, 512> text{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      failure, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
  std::u16string reason(text.begin(), text.begin() + length);
  while (!reason.empty() && reason.back() <= u' ') {
    reason.pop_back(); // the line end that the system puts behind it
  }
  if (reason.empty()) {
    const std::string number = "error " + std::to_string(failure);
    reason.assign(number.begin(), number.end());
  }
  return reason;
}

std::u16string DeviceNameOf(std::u16string_view port) {
  return port.starts_with(u"\\\\") ? std::u16string(port) : u"\\\\.\\" + std::u16string(port);
}

ComPort::Transfer::Transfer() {
  done.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
}
ComPort::Transfer::~Transfer() {
  CloseHandle(done.hEvent);
}

ComPort::ComPort(std::u16string_view name, const SerialSettings& settings, bool hardwareHandshake)
    : name_(name) {
  Open();
  if (Lost() || !SetUp(settings, hardwareHandshake)) {
    Tell(GetLastError());
    Close();
    throw RunTimeFailure("the port " + Narrow(name_) + " can't be opened");
  }
  read_.bytes.resize(4096);
  StartRead();
  if (Lost()) {
    throw RunTimeFailure("the port " + Narrow(name_) + " can't be opened");
  }
}

ComPort::~ComPort() {
  Close();
}

void ComPort::Open() {
  constexpr DWORD ForNobodyElse = 0;
  const std::u16string name = DeviceNameOf(name_);
  port_ = CreateFileW(reinterpret_cast<const wchar_t*>(name.c_str()), GENERIC_READ | GENERIC_WRITE,
                      ForNobodyElse, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
}

bool ComPort::SetUp(const SerialSettings& settings, bool hardwareHandshake) {
  DCB block = ControlBlock(settings, hardwareHandshake);
  COMMTIMEOUTS timeouts = FirstByteEndsARead;
  constexpr DWORD QueueBytes = 4096;
  before_.DCBlength = sizeof before_;
  if (GetCommState(port_, &before_) == FALSE) {
    return false;
  }
  (void)SetupComm(port_, QueueBytes, QueueBytes); // a recommendation: a driver may know better
  return SetCommState(port_, &block) != FALSE && SetCommTimeouts(port_, &timeouts) != FALSE;
}

// For as many bytes as are there, at least for one: this ends with the first byte whatever a driver makes of
// the time-outs.
void ComPort::StartRead() {
  COMSTAT status{};
  DWORD lineErrors = 0;
  if (ClearCommError(port_, &lineErrors, &status) == FALSE) {
    Lose(GetLastError());
    return;
  }
  const DWORD count = std::clamp<DWORD>(status.cbInQue, 1, static_cast<DWORD>(read_.bytes.size()));
  read_.underWay = true;
  if (ReadFile(port_, read_.bytes.data(), count, nullptr, &read_.done) == FALSE &&
      GetLastError() != ERROR_IO_PENDING) {
    read_.underWay = false;
    Lose(GetLastError());
  }
}

int ComPort::Finished(Transfer& transfer) {
  if (!transfer.underWay) {
    return -1;
  }
  DWORD moved = 0;
  if (GetOverlappedResult(port_, &transfer.done, &moved, FALSE) == FALSE) {
    const DWORD failure = GetLastError();
    if (failure != ERROR_IO_INCOMPLETE) {
      transfer.underWay = false;
      Lose(failure);
    }
    return -1;
  }
  transfer.underWay = false;
  return static_cast<int>(moved);
}

// The byte that was waited for, and what stood behind it. What came since makes the next read end at once,
// and so wakes the next time: a sender that never stops gets nobody stuck here.
void ComPort::Advance() {
  constexpr int ByteAndRest = 2;
  for (int read = 0; read < ByteAndRest && !Lost(); ++read) {
    const int came = Finished(read_);
    if (came < 0) {
      return;
    }
    input_.insert(input_.end(), read_.bytes.begin(), read_.bytes.begin() + came);
    StartRead();
  }
}

// Without time-outs a driver writes all or fails. One that does neither must not pass for one that wrote.
void ComPort::DropWritten() {
  while (!Lost() && !writes_.empty()) {
    const auto all = static_cast<int>(writes_.front()->bytes.size());
    const int written = Finished(*writes_.front());
    if (written < 0) {
      return;
    }
    if (written < all) {
      Lose(ERROR_WRITE_FAULT);
      return;
    }
    writes_.erase(writes_.begin());
  }
}

void ComPort::Write(std::span<const std::uint8_t> bytes) {
  DropWritten();
  if (Lost()) {
    throw RunTimeFailure("the device is gone");
  }
  if (bytes.empty()) {
    return;
  }
  Transfer& write = *writes_.emplace_back(std::make_unique<Transfer>());
  write.bytes.assign(bytes.begin(), bytes.end());
  write.underWay = true;
  if (WriteFile(port_, write.bytes.data(), static_cast<DWORD>(write.bytes.size()), nullptr, &write.done) ==
          FALSE &&
      GetLastError() != ERROR_IO_PENDING) {
    write.underWay = false;
    Lose(GetLastError());
    throw RunTimeFailure("the device takes nothing");
  }
}

Bytes ComPort::Take(int count) {
  const auto end = input_.begin() + std::clamp(count, 0, Waiting());
  Bytes taken;
  taken.assign(input_.begin(), end);
  input_.erase(input_.begin(), end);
  return taken;
}

bool ComPort::WaitForBytes(int milliseconds) {
  const int before = Waiting();
  const Deadline deadline(milliseconds);
  while (!Lost() && Waiting() == before && WaitForSingleObject(Arrived(), deadline.Left()) == WAIT_OBJECT_0) {
    Advance();
  }
  return Waiting() > before;
}

bool ComPort::WaitUntilWritten(int milliseconds) {
  const Deadline deadline(milliseconds);
  DropWritten();
  while (!Lost() && !writes_.empty() &&
         WaitForSingleObject(writes_.front()->done.hEvent, deadline.Left()) == WAIT_OBJECT_0) {
    DropWritten();
  }
  return !Lost() && writes_.empty();
}

void ComPort::Tell(DWORD failure) const {
  if (WhenDeviceFails) {
    WhenDeviceFails(name_, SystemReason(failure));
  }
}

void ComPort::Lose(DWORD failure) {
  Close();
  Tell(failure);
}

void ComPort::Cancel(Transfer& transfer) {
  if (transfer.underWay) {
    CancelIoEx(port_, &transfer.done);
    DWORD moved = 0;
    GetOverlappedResult(port_, &transfer.done, &moved, TRUE); // until then the system writes into it
    transfer.underWay = false;
  }
  ResetEvent(transfer.done.hEvent); // or a port that is lost would wake the event loop for ever
}

void ComPort::Close() {
  if (Lost()) {
    return;
  }
  PurgeComm(port_, PURGE_TXABORT | PURGE_RXABORT | PURGE_TXCLEAR | PURGE_RXCLEAR);
  Cancel(read_);
  for (const std::unique_ptr<Transfer>& write : writes_) {
    Cancel(*write);
  }
  writes_.clear();
  SetCommState(port_, &before_);
  CloseHandle(port_);
  port_ = INVALID_HANDLE_VALUE;
}

} // namespace loader
