#include "qt/QtPlatform.h"
#include "tests/devices/DeviceTest.h"

namespace loader::test {

std::shared_ptr<void> TestedPlatform(const std::filesystem::path& programFolder, const PortMap& portMap) {
  return std::make_shared<QtPlatform>(
      QtPlatformOptions{.programFolder = programFolder, .makeForm = MakeForm, .portMap = portMap});
}

} // namespace loader::test
