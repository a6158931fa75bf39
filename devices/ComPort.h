// A COM port of Windows: its reads and writes are the system's own business (overlapped), so nothing here
// takes a thread or waits, but for the two waits.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "devices/SerialSettings.h"
#include "platform/Devices.h"

namespace loader {

// What the system says of the number of a failure, in the user's language.
[[nodiscard]] std::u16string SystemReason(DWORD failure);
// "COM12" is "\\.\COM12" to the system: without the prefix it knows no port above COM9. A name that has one
// stays as it is.
[[nodiscard]] std::u16string DeviceNameOf(std::u16string_view port);

// Opened by its constructor, closed by its destructor. A read waits for the next byte all the time; whoever
// finds `Arrived` signalled calls Advance. A port that has gone is closed at once, and its reason is told
// (WhenDeviceFails).
class ComPort {
public:
  // RunTimeFailure when the port can't be opened or refuses the settings. Nobody else may open it meanwhile.
  ComPort(std::u16string_view name, const SerialSettings& settings, bool hardwareHandshake);
  ~ComPort();
  ComPort(const ComPort&) = delete;
  ComPort& operator=(const ComPort&) = delete;

  // Signalled when bytes came, or the port went, since the last Advance.
  [[nodiscard]] HANDLE Arrived() const { return read_.done.hEvent; }
  // Takes over what came; never waits.
  void Advance();
  // Unplugged, or refused by its driver in another way.
  [[nodiscard]] bool Lost() const { return port_ == INVALID_HANDLE_VALUE; }

  // The system copies nothing: the bytes are kept here until they have gone out.
  void Write(std::span<const std::uint8_t> bytes);
  [[nodiscard]] int Waiting() const { return static_cast<int>(input_.size()); }
  // At most `count` of the bytes that are waiting.
  [[nodiscard]] Bytes Take(int count);
  // Sleeps until something comes, at most so long; false when nothing came.
  bool WaitForBytes(int milliseconds);
  // Sleeps until all is written, at most so long.
  bool WaitUntilWritten(int milliseconds);

private:
  // One read or write under way. The system writes into it until it is done or cancelled: it never moves.
  struct Transfer {
    Transfer();
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    OVERLAPPED done{};
    bool underWay = false;
    Bytes bytes;
  };

  void Open();
  bool SetUp(const SerialSettings& settings, bool hardwareHandshake);
  void StartRead();
  // How many bytes the transfer moved; -1 while it is under way, or when the port is lost by it.
  int Finished(Transfer& transfer);
  void DropWritten();
  void Lose(DWORD failure);
  void Tell(DWORD failure) const;
  void Close();
  void Cancel(Transfer& transfer);

  std::u16string name_;
  HANDLE port_ = INVALID_HANDLE_VALUE;
  DCB before_{}; // the port is left as it was found
  Transfer read_;
  // The driver sends them one after the other, in this order.
  std::vector<std::unique_ptr<Transfer>> writes_;
  Bytes input_;
};

} // namespace loader
