// A serial line of a test's own: a device of the system, and its far end in the hands of the test.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "platform/Devices.h"

namespace loader::test {

// On Linux a pseudo-terminal; under wine a COM port that is one (WineLines.cpp runs the tests there).
class SerialLine {
public:
  // A device that a user has to name.
  SerialLine();
  // The port of a program with that folder: "COM1" up, or "USB". In the place of a line that was it before.
  SerialLine(const std::filesystem::path& programFolder, const std::string& port);
  ~SerialLine();
  SerialLine(const SerialLine&) = delete;
  SerialLine& operator=(const SerialLine&) = delete;

  // As the system calls it.
  [[nodiscard]] const std::string& Device() const;
  void Unplug();
  void Send(std::span<const std::uint8_t> bytes) const;
  // Sleeps until so many bytes have arrived at the far end.
  [[nodiscard]] Bytes Receive(std::size_t count) const;
  // What the device was set to: SettingsText.
  [[nodiscard]] std::string Settings() const;

private:
  struct FarEnd;
  std::unique_ptr<FarEnd> far_;
};

} // namespace loader::test
