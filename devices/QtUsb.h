// USBOCX1: the recorder's USB device, a serial device of the communication class. It is opened and closed
// for each exchange.
#pragma once

#include <QString>
#include <filesystem>
#include <memory>

#include "platform/Devices.h"

namespace loader {

class SerialDevice;

class QtUsb final : public UsbControl {
public:
  // `device`: the one that a user names himself, in place of the one that is found.
  explicit QtUsb(std::filesystem::path programFolder, QString device = {});
  ~QtUsb() override;

  // A device that was left open is closed first.
  [[nodiscard]] std::int32_t Open(std::int32_t windowProperty) override;
  void Close(std::int32_t handle) override;
  // Sleeps until `count` bytes have come or the time is over. 0 with a wrong handle or a device that has
  // gone.
  [[nodiscard]] std::int32_t Read(std::int32_t& handle, std::span<std::int32_t> words, std::int32_t count,
                                  std::int32_t timeoutMs) override;
  [[nodiscard]] std::int32_t Write(std::int32_t& handle, std::span<const std::int32_t> words,
                                   std::int32_t count, std::int32_t timeoutMs) override;

private:
  [[nodiscard]] bool Holds(std::int32_t handle) const;

  std::filesystem::path programFolder_;
  QString chosen_;
  std::unique_ptr<SerialDevice> device_;
  std::int32_t handle_ = 0; // of the last opening
};

} // namespace loader
