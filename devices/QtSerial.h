// MSComm1: the serial port.
#pragma once

#include <QString>
#include <filesystem>
#include <memory>

#include "platform/Devices.h"

namespace loader {

class SerialDevice;

// A line that a user names himself, in place of the program's own ports.
struct ChosenLine {
  QString device; // as the system calls it: "/dev/ttyUSB0", "COM3"; empty for the program's ports
  int baud = 0;   // 0: as the settings of the port say
};

class QtSerial final : public SerialControl {
public:
  explicit QtSerial(std::filesystem::path programFolder, ChosenLine chosen = {});
  ~QtSerial() override;

  [[nodiscard]] bool PortOpen() const override;
  // Opening throws RunTimeFailure for a port outside 1 to 16, settings that say nothing, and a device that
  // can't be opened; closing never fails, with the device gone neither.
  void SetPortOpen(bool open) override;
  // These throw RunTimeFailure when the port is closed or the device has gone.
  void Output(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] int InBufferCount() const override;
  [[nodiscard]] Bytes Input() override;

private:
  SerialDevice& Device() const;

  std::filesystem::path programFolder_;
  ChosenLine chosen_;
  std::unique_ptr<SerialDevice> device_;
};

} // namespace loader
