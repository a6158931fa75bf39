#include "devices/QtSerial.h"

#include <algorithm>

#include "devices/DeviceNames.h"
#include "devices/SerialDevice.h"
#include "platform/RunTimeFailure.h"

namespace loader {

QtSerial::QtSerial(std::filesystem::path programFolder, ChosenLine chosen)
    : programFolder_(std::move(programFolder)), chosen_(std::move(chosen)) {}
QtSerial::~QtSerial() = default;

bool QtSerial::PortOpen() const {
  return device_ != nullptr;
}

void QtSerial::SetPortOpen(bool open) {
  device_.reset();
  if (!open) {
    return;
  }
  constexpr int LastPort = 16;
  std::optional<SerialSettings> settings = ParseSerialSettings(Settings);
  if (CommPort < 1 || CommPort > LastPort || !settings) {
    throw RunTimeFailure("no such port or settings");
  }
  if (chosen_.baud > 0) {
    settings->baud = chosen_.baud;
  }
  constexpr int RtsHandshake = 2;
  const QString path = chosen_.device.isEmpty() ? SerialPortPath(programFolder_, CommPort) : chosen_.device;
  device_ = std::make_unique<SerialDevice>(path, *settings, Handshaking == RtsHandshake);
}

SerialDevice& QtSerial::Device() const {
  if (device_ == nullptr) {
    throw RunTimeFailure("the port is closed");
  }
  return *device_;
}

void QtSerial::Output(std::span<const std::uint8_t> bytes) {
  Device().Write(bytes);
}

int QtSerial::InBufferCount() const {
  return Device().Waiting();
}

Bytes QtSerial::Input() {
  const int waiting = Device().Waiting();
  return Device().Take(InputLen <= 0 ? waiting : std::min(InputLen, waiting));
}

} // namespace loader
