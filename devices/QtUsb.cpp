#include "devices/QtUsb.h"

#include <QElapsedTimer>
#include <algorithm>
#include <limits>

#include "devices/DeviceNames.h"
#include "devices/SerialDevice.h"
#include "platform/RunTimeFailure.h"

namespace loader {

namespace {
constexpr std::int32_t NoHandle = -1;
// The line settings of the protocol. A device of the communication class has no line and ignores them.
constexpr SerialSettings ProtocolSettings{19200, Parity::Odd, 8, 1};
} // namespace

QtUsb::QtUsb(std::filesystem::path programFolder, QString device)
    : programFolder_(std::move(programFolder)), chosen_(std::move(device)) {}
QtUsb::~QtUsb() = default;

std::int32_t QtUsb::Open(std::int32_t /*windowProperty*/) {
  device_.reset();
  const QString path = chosen_.isEmpty() ? UsbPath(programFolder_) : chosen_;
  if (path.isEmpty()) {
    return NoHandle;
  }
  try {
    device_ = std::make_unique<SerialDevice>(path, ProtocolSettings, false);
  } catch (const RunTimeFailure&) {
    return NoHandle;
  }
  handle_ = handle_ == std::numeric_limits<std::int32_t>::max() ? 1 : handle_ + 1;
  return handle_;
}

void QtUsb::Close(std::int32_t handle) {
  if (Holds(handle)) {
    device_.reset();
  }
}

bool QtUsb::Holds(std::int32_t handle) const {
  return device_ != nullptr && handle == handle_;
}

std::int32_t QtUsb::Read(std::int32_t& handle, std::span<std::int32_t> words, std::int32_t count,
                         std::int32_t timeoutMs) {
  const auto wanted = std::min(static_cast<std::int64_t>(count), static_cast<std::int64_t>(words.size()));
  if (!Holds(handle) || wanted <= 0) {
    return 0;
  }
  Bytes bytes;
  try {
    QElapsedTimer waited;
    waited.start();
    while (device_->Waiting() < wanted) {
      const auto left = static_cast<int>(std::max<qint64>(0, timeoutMs - waited.elapsed()));
      if (left == 0 || !device_->WaitForBytes(left)) {
        break;
      }
    }
    bytes = device_->Take(static_cast<int>(wanted));
  } catch (const RunTimeFailure&) {
    return 0;
  }
  std::copy(bytes.begin(), bytes.end(), words.begin());
  return static_cast<std::int32_t>(bytes.size());
}

std::int32_t QtUsb::Write(std::int32_t& handle, std::span<const std::int32_t> words, std::int32_t count,
                          std::int32_t timeoutMs) {
  if (!Holds(handle) || count <= 0 || static_cast<std::size_t>(count) > words.size()) {
    return 0;
  }
  Bytes bytes;
  bytes.reserve(static_cast<std::size_t>(count));
  for (const std::int32_t word : words.first(static_cast<std::size_t>(count))) {
    bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
  }
  try {
    device_->Write(bytes);
    return device_->WaitUntilWritten(timeoutMs) ? count : 0;
  } catch (const RunTimeFailure&) {
    return 0;
  }
}

} // namespace loader
