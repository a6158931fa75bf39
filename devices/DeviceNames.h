// Which device stands behind a port of the program.
#pragma once

#include <QString>
#include <filesystem>

namespace loader {

// Port 1 up. On Windows "COMn"; elsewhere the entry "COMn" of the program folder when there is one (a
// symbolic link to the device), else /dev/ttyS(n-1).
[[nodiscard]] QString SerialPortPath(const std::filesystem::path& programFolder, int port);
// On Windows the USB serial port with the lowest number; elsewhere the entry "USB" of the program folder when
// there is one, else the first /dev/ttyACM*. Empty when there is none.
[[nodiscard]] QString UsbPath(const std::filesystem::path& programFolder);

} // namespace loader
