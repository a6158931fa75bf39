// The platform of the program: made after the application object and before anything of the logic.
#pragma once

#include <filesystem>
#include <optional>

#include "devices/DevicePlatform.h"
#include "qt/Forms.h"
#include "qt/QtBoxes.h"
#include "qt/QtFileDialogs.h"
#include "qt/QtScreens.h"
#include "qt/UserInterface.h"

namespace loader {

// What a test replaces; the program takes it as it is.
struct QtPlatformOptions {
  // Empty: the folder of the executable.
  std::filesystem::path programFolder = {};
  FormMaker makeForm = MakeForm;
  PortMap portMap = {};
};

class QtPlatform {
public:
  // Sets the platform in force, until it goes.
  explicit QtPlatform(QtPlatformOptions options = {});
  ~QtPlatform();
  QtPlatform(const QtPlatform&) = delete;
  QtPlatform& operator=(const QtPlatform&) = delete;

private:
  std::filesystem::path programFolder_;

public:
  UserInterface userInterface;
  QtBoxes boxes{userInterface};
  QtFileDialogs fileDialogs{userInterface};
  QtScreens screens;
  QtTimers timers;
  QtEventLoop eventLoop;
  SystemClock clock;
  QtSerial serial;
  QtSocket socket;
  QtUsb usb;
  Platform platform;
};

} // namespace loader
