// A serial device that is open: what the serial port and the recorder's USB device have in common.
#pragma once

#include <QSerialPort>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "platform/Devices.h"

namespace loader {

struct SerialSettings {
  int baud;
  QSerialPort::Parity parity;
  QSerialPort::DataBits dataBits;
  QSerialPort::StopBits stopBits;
};

// "19200,O,8,1": baud, parity (N, O, E), data bits (5 to 8), stop bits (1, 2); empty when it is no such text.
[[nodiscard]] std::optional<SerialSettings> ParseSerialSettings(std::string_view settings);

// Opened by its constructor, closed by its destructor. After the device has gone (unplugged, its other end
// closed) every operation throws RunTimeFailure.
class SerialDevice {
public:
  // RunTimeFailure when the device can't be opened or refuses the settings. A pseudo-terminal has no parity
  // on its line and may refuse it; it is taken without.
  SerialDevice(const QString& path, const SerialSettings& settings, bool hardwareHandshake);

  void Write(std::span<const std::uint8_t> bytes);
  [[nodiscard]] int Waiting() const;
  // At most `count` of the bytes that are waiting.
  [[nodiscard]] Bytes Take(int count);
  // Sleeps until something comes, at most so long; false when nothing came.
  bool WaitForBytes(int milliseconds);
  // Sleeps until all is written, at most so long.
  bool WaitUntilWritten(int milliseconds);

private:
  void RequireDevice() const;

  QSerialPort port_;
  bool lost_ = false;
};

} // namespace loader
