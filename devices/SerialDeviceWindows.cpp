#include <QWinEventNotifier>

#include "devices/ComPort.h"
#include "devices/QtText.h"
#include "devices/SerialDevice.h"
#include "platform/RunTimeFailure.h"

namespace loader {

// The port, and what wakes the event loop when something came.
struct SerialDevice::Port {
  Port(const QString& path, const SerialSettings& settings, bool hardwareHandshake)
      : com(FromQt(path), settings, hardwareHandshake) {
    QObject::connect(&arrived, &QWinEventNotifier::activated, &arrived, [this] { com.Advance(); });
  }

  ComPort com;
  QWinEventNotifier arrived{com.Arrived()};
};

SerialDevice::SerialDevice(const QString& path, const SerialSettings& settings, bool hardwareHandshake)
    : port_(std::make_unique<Port>(path, settings, hardwareHandshake)) {}

SerialDevice::~SerialDevice() = default;

SerialDevice::Port& SerialDevice::Device() const {
  if (port_->com.Lost()) {
    throw RunTimeFailure("the device is gone");
  }
  return *port_;
}

void SerialDevice::Write(std::span<const std::uint8_t> bytes) {
  Device().com.Write(bytes);
}

int SerialDevice::Waiting() const {
  return Device().com.Waiting();
}

Bytes SerialDevice::Take(int count) {
  return Device().com.Take(count);
}

bool SerialDevice::WaitForBytes(int milliseconds) {
  return Device().com.WaitForBytes(milliseconds);
}

bool SerialDevice::WaitUntilWritten(int milliseconds) {
  return Device().com.WaitUntilWritten(milliseconds);
}

} // namespace loader
