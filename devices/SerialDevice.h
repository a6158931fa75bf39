// A serial device that is open: what the serial port and the recorder's USB device have in common.
#pragma once

#include <QString>
#include <memory>
#include <span>

#include "devices/SerialSettings.h"
#include "platform/Devices.h"

namespace loader {

// Opened by its constructor, closed by its destructor. After the device has gone (unplugged, its other end
// closed) every operation throws RunTimeFailure.
class SerialDevice {
public:
  // RunTimeFailure when the device can't be opened or refuses the settings. A pseudo-terminal has no parity
  // on its line and may refuse it; it is taken without.
  SerialDevice(const QString& path, const SerialSettings& settings, bool hardwareHandshake);
  ~SerialDevice();

  void Write(std::span<const std::uint8_t> bytes);
  [[nodiscard]] int Waiting() const;
  // At most `count` of the bytes that are waiting.
  [[nodiscard]] Bytes Take(int count);
  // Sleeps until something comes, at most so long; false when nothing came.
  bool WaitForBytes(int milliseconds);
  // Sleeps until all is written, at most so long.
  bool WaitUntilWritten(int milliseconds);

private:
  struct Port; // the system's
  [[nodiscard]] Port& Device() const;

  std::unique_ptr<Port> port_;
};

} // namespace loader
