#include <QSerialPort>

#include "devices/QtText.h"
#include "devices/SerialDevice.h"
#include "platform/RunTimeFailure.h"

namespace loader {

struct SerialDevice::Port {
  QSerialPort serial;
  bool lost = false;
};

namespace {

QSerialPort::Parity QtParity(Parity parity) {
  switch (parity) {
  case Parity::Odd:
    return QSerialPort::OddParity;
  case Parity::Even:
    return QSerialPort::EvenParity;
  default:
    return QSerialPort::NoParity;
  }
}

bool IsPseudoTerminal(const QString& path) {
  return path.startsWith(QStringLiteral("/dev/pts/"));
}

bool Open(QSerialPort& serial, const QString& path, const SerialSettings& settings, bool hardwareHandshake) {
  serial.setPortName(path);
  serial.setBaudRate(settings.baud);
  serial.setDataBits(static_cast<QSerialPort::DataBits>(settings.dataBits));
  serial.setStopBits(settings.stopBits == 1 ? QSerialPort::OneStop : QSerialPort::TwoStop);
  serial.setFlowControl(hardwareHandshake ? QSerialPort::HardwareControl : QSerialPort::NoFlowControl);
  // Parity after opening: a pseudo-terminal refuses it, and that alone must not fail the opening.
  return serial.open(QIODevice::ReadWrite) &&
         (serial.setParity(QtParity(settings.parity)) || IsPseudoTerminal(path));
}

} // namespace

SerialDevice::SerialDevice(const QString& path, const SerialSettings& settings, bool hardwareHandshake)
    : port_(std::make_unique<Port>()) {
  QSerialPort& serial = port_->serial;
  if (!Open(serial, path, settings, hardwareHandshake)) {
    TellDeviceFailure(path, serial.errorString());
    throw RunTimeFailure("the port " + path.toStdString() + " can't be opened");
  }
  serial.clearError();
  QObject::connect(&serial, &QSerialPort::errorOccurred, &serial,
                   [port = port_.get()](QSerialPort::SerialPortError error) {
                     if (error == QSerialPort::NoError || error == QSerialPort::TimeoutError || port->lost) {
                       return;
                     }
                     port->lost = true;
                     TellDeviceFailure(port->serial.portName(), port->serial.errorString());
                     // A hung-up device is readable for ever; closed, it wakes nobody any more.
                     QMetaObject::invokeMethod(
                         &port->serial, [port] { port->serial.close(); }, Qt::QueuedConnection);
                   });
}

SerialDevice::~SerialDevice() = default;

SerialDevice::Port& SerialDevice::Device() const {
  if (port_->lost) {
    throw RunTimeFailure("the device is gone");
  }
  return *port_;
}

void SerialDevice::Write(std::span<const std::uint8_t> bytes) {
  QSerialPort& serial = Device().serial;
  const auto size = static_cast<qint64>(bytes.size());
  if (serial.write(reinterpret_cast<const char*>(bytes.data()), size) != size) {
    throw RunTimeFailure("the device takes nothing");
  }
  serial.flush();
  (void)Device();
}

int SerialDevice::Waiting() const {
  return static_cast<int>(Device().serial.bytesAvailable());
}

Bytes SerialDevice::Take(int count) {
  const QByteArray taken = Device().serial.read(count);
  return {taken.begin(), taken.end()};
}

bool SerialDevice::WaitForBytes(int milliseconds) {
  return Device().serial.waitForReadyRead(milliseconds);
}

bool SerialDevice::WaitUntilWritten(int milliseconds) {
  QSerialPort& serial = Device().serial;
  return serial.bytesToWrite() == 0 || serial.waitForBytesWritten(milliseconds);
}

} // namespace loader
