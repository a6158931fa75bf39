// The platform of a program without a window that talks to a recorder: made after the application object
// (QCoreApplication will do) and before anything of the logic.
#pragma once

#include <filesystem>

#include "devices/QtEventLoop.h"
#include "devices/QtSerial.h"
#include "devices/QtSocket.h"
#include "devices/QtUsb.h"
#include "platform/BarePlatform.h"

namespace loader {

// The folder of the executable where none is wanted.
[[nodiscard]] std::filesystem::path ProgramFolderOr(const std::filesystem::path& wanted);

struct DevicePlatformOptions {
  // Empty: the folder of the executable.
  std::filesystem::path programFolder;
  PortMap portMap = {};
  ChosenLine serialLine = {}; // of a user who names the device himself
  QString usbDevice = {};
};

class DevicePlatform {
public:
  // Sets the platform in force, until it goes.
  explicit DevicePlatform(DevicePlatformOptions options = {});
  DevicePlatform(const DevicePlatform&) = delete;
  DevicePlatform& operator=(const DevicePlatform&) = delete;

private:
  DevicePlatformOptions options_;

public:
  QtTimers timers;
  QtEventLoop eventLoop;
  QtSerial serial{options_.programFolder, options_.serialLine};
  QtSocket socket{options_.portMap};
  QtUsb usb{options_.programFolder, options_.usbDevice};
  BarePlatform bare;
  Platform& platform = bare.platform;
};

} // namespace loader
