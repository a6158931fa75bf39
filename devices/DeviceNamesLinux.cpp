#include "devices/DeviceNamesLinux.h"

#include <QDir>
#include <QFile>
#include <string>

namespace loader {

namespace {

QString PathText(const std::filesystem::path& path) {
  return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

// What the entry of the program folder points at; empty when there is no such entry. A link whose device is
// gone stands for a device that is gone, never for another one.
QString EntryPath(const std::filesystem::path& entry) {
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::symlink_status(entry, error))) {
    return {};
  }
  const std::filesystem::path target = std::filesystem::canonical(entry, error);
  return PathText(error ? entry : target);
}

} // namespace

QString SerialPortPath(const std::filesystem::path& programFolder, int port) {
  const QString entry = EntryPath(programFolder / ("COM" + std::to_string(port)));
  return entry.isEmpty() ? QStringLiteral("/dev/ttyS%1").arg(port - 1) : entry;
}

QString UsbPath(const std::filesystem::path& programFolder) {
  return UsbPath(programFolder, "/dev");
}

QString UsbPath(const std::filesystem::path& programFolder, const std::filesystem::path& devices) {
  QString entry = EntryPath(programFolder / "USB");
  if (!entry.isEmpty()) {
    return entry;
  }
  const QDir folder(PathText(devices));
  const QStringList names =
      folder.entryList({QStringLiteral("ttyACM*")}, QDir::System | QDir::Files, QDir::Name);
  return names.isEmpty() ? QString() : folder.filePath(names.constFirst());
}

} // namespace loader
