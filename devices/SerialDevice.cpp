#include "devices/SerialDevice.h"

#include <charconv>
#include <vector>

#include "devices/QtText.h"
#include "platform/RunTimeFailure.h"

namespace loader {

namespace {

std::vector<std::string_view> Split(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t comma = text.find(','); comma != std::string_view::npos; comma = text.find(',')) {
    parts.push_back(text.substr(0, comma));
    text.remove_prefix(comma + 1);
  }
  parts.push_back(text);
  return parts;
}

std::optional<int> Number(std::string_view text, int lowest, int highest) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < lowest || value > highest) {
    return std::nullopt;
  }
  return value;
}

std::optional<QSerialPort::Parity> ParityOf(std::string_view letter) {
  if (letter == "N" || letter == "n") {
    return QSerialPort::NoParity;
  }
  if (letter == "O" || letter == "o") {
    return QSerialPort::OddParity;
  }
  if (letter == "E" || letter == "e") {
    return QSerialPort::EvenParity;
  }
  return std::nullopt;
}

bool IsPseudoTerminal(const QString& path) {
  return path.startsWith(QStringLiteral("/dev/pts/"));
}

} // namespace

std::optional<SerialSettings> ParseSerialSettings(std::string_view settings) {
  const std::vector<std::string_view> parts = Split(settings);
  if (parts.size() != 4) {
    return std::nullopt;
  }
  const std::optional<int> baud = Number(parts[0], 1, 4'000'000);
  const std::optional<QSerialPort::Parity> parity = ParityOf(parts[1]);
  const std::optional<int> dataBits = Number(parts[2], 5, 8);
  const std::optional<int> stopBits = Number(parts[3], 1, 2);
  if (!baud || !parity || !dataBits || !stopBits) {
    return std::nullopt;
  }
  return SerialSettings{*baud, *parity, static_cast<QSerialPort::DataBits>(*dataBits),
                        *stopBits == 1 ? QSerialPort::OneStop : QSerialPort::TwoStop};
}

SerialDevice::SerialDevice(const QString& path, const SerialSettings& settings, bool hardwareHandshake) {
  port_.setPortName(path);
  port_.setBaudRate(settings.baud);
  port_.setDataBits(settings.dataBits);
  port_.setStopBits(settings.stopBits);
  port_.setFlowControl(hardwareHandshake ? QSerialPort::HardwareControl : QSerialPort::NoFlowControl);
  // Parity after opening: a pseudo-terminal refuses it, and that alone must not fail the opening.
  if (!port_.open(QIODevice::ReadWrite) || (!port_.setParity(settings.parity) && !IsPseudoTerminal(path))) {
    TellDeviceFailure(path, port_.errorString());
    throw RunTimeFailure("the port " + path.toStdString() + " can't be opened");
  }
  port_.clearError();
  QObject::connect(&port_, &QSerialPort::errorOccurred, &port_, [this](QSerialPort::SerialPortError error) {
    if (error == QSerialPort::NoError || error == QSerialPort::TimeoutError || lost_) {
      return;
    }
    lost_ = true;
    TellDeviceFailure(port_.portName(), port_.errorString());
    // A hung-up device is readable for ever; closed, it wakes nobody any more.
    QMetaObject::invokeMethod(
        &port_, [this] { port_.close(); }, Qt::QueuedConnection);
  });
}

void SerialDevice::RequireDevice() const {
  if (lost_) {
    throw RunTimeFailure("the device is gone");
  }
}

void SerialDevice::Write(std::span<const std::uint8_t> bytes) {
  RequireDevice();
  const auto size = static_cast<qint64>(bytes.size());
  if (port_.write(reinterpret_cast<const char*>(bytes.data()), size) != size) {
    throw RunTimeFailure("the device takes nothing");
  }
  port_.flush();
  RequireDevice();
}

int SerialDevice::Waiting() const {
  RequireDevice();
  return static_cast<int>(port_.bytesAvailable());
}

Bytes SerialDevice::Take(int count) {
  RequireDevice();
  const QByteArray taken = port_.read(count);
  return {taken.begin(), taken.end()};
}

bool SerialDevice::WaitForBytes(int milliseconds) {
  RequireDevice();
  return port_.waitForReadyRead(milliseconds);
}

bool SerialDevice::WaitUntilWritten(int milliseconds) {
  RequireDevice();
  return port_.bytesToWrite() == 0 || port_.waitForBytesWritten(milliseconds);
}

} // namespace loader
