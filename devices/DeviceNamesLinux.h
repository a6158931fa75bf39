// Which device stands behind a port of the program, in a system's folder of devices.
#pragma once

#include "devices/DeviceNames.h"

namespace loader {

// The entry "USB" of the program folder when there is one, else the first ttyACM* of `devices`.
[[nodiscard]] QString UsbPath(const std::filesystem::path& programFolder,
                              const std::filesystem::path& devices);

} // namespace loader
