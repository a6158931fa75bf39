// The three ways to the recorder, as the link layer sees them: a serial port, a TCP socket, the recorder's
// USB device. One implementation drives the real devices, one is scripted for tests.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace loader {

using Bytes = std::vector<std::uint8_t>;

// Hears why a device failed (opened, or while it was in use), in the system's words: "/dev/ttyUSB0",
// "Permission denied". The flows go by what they see themselves; this is for a person who asks why. Set by
// the program; empty: nobody listens.
extern std::function<void(std::u16string_view device, std::u16string_view reason)> WhenDeviceFails;

// A serial port. The plain fields are set before the port is opened. Any operation may throw RunTimeFailure
// (no such port, a device that was unplugged).
struct SerialControl {
  std::int16_t CommPort = 1;            // 1 to 16: COM1 up
  std::string Settings = "19200,O,8,1"; // baud, parity (N, O, E), data bits, stop bits
  int Handshaking = 0;                  // 0: none
  int InputMode = 1;                    // 1: binary
  int InputLen = 0;                     // 0: Input returns all that is waiting

  virtual ~SerialControl() = default;
  [[nodiscard]] virtual bool PortOpen() const = 0;
  virtual void SetPortOpen(bool open) = 0;
  virtual void Output(std::span<const std::uint8_t> bytes) = 0;
  [[nodiscard]] virtual int InBufferCount() const = 0;
  [[nodiscard]] virtual Bytes Input() = 0;
};

// A TCP connection. `State` 0 is closed; anything above has to be closed before the next Connect.
struct SocketControl {
  std::u16string RemoteHost;
  int RemotePort = 0;
  // The one event that is handled: the connection stands.
  std::function<void()> onConnect;
  // The connection could not be made, or has gone: for a program that wants to know at once. The window has
  // none and waits for its five seconds.
  std::function<void()> onFailure;

  virtual ~SocketControl() = default;
  [[nodiscard]] virtual int State() const = 0;
  virtual void Close() = 0;
  // Starts connecting and returns; onConnect and onFailure run from the event loop. The window is told of a
  // refused connection by nothing.
  virtual void Connect() = 0;
  virtual void SendData(std::span<const std::uint8_t> bytes) = 0;
  [[nodiscard]] virtual int BytesReceived() const = 0;
  // All that is waiting.
  [[nodiscard]] virtual Bytes GetData() = 0;
};

// The recorder's USB device: it is opened and closed for each exchange, and takes a frame as 32-bit words,
// one byte of the frame in each.
struct UsbControl {
  virtual ~UsbControl() = default;
  // The handle, or -1.
  [[nodiscard]] virtual std::int32_t Open(std::int32_t windowProperty) = 0;
  virtual void Close(std::int32_t handle) = 0;
  // Up to `count` bytes into `words` within `timeoutMs`; returns how many came.
  [[nodiscard]] virtual std::int32_t Read(std::int32_t& handle, std::span<std::int32_t> words,
                                          std::int32_t count, std::int32_t timeoutMs) = 0;
  // Non-zero after success.
  [[nodiscard]] virtual std::int32_t Write(std::int32_t& handle, std::span<const std::int32_t> words,
                                           std::int32_t count, std::int32_t timeoutMs) = 0;
};

} // namespace loader
