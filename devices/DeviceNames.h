// Which device stands behind a port of the program.
#pragma once

#include <QString>
#include <filesystem>

namespace loader {

// Port 1 up. On Windows "COMn"; elsewhere the entry "COMn" of the program folder when there is one (a
// symbolic link to the device), else /dev/ttyS(n-1).
[[nodiscard]] QString SerialPortPath(const std::filesystem::path& programFolder, int port);
// The entry "USB" of the program folder when there is one, else the first /dev/ttyACM*; empty when there is
// neither. `devices` is the folder of the system's devices.
[[nodiscard]] QString UsbPath(const std::filesystem::path& programFolder,
                              const std::filesystem::path& devices = "/dev");

} // namespace loader
