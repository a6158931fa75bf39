#include <link.h>
#include <sys/socket.h>

#include <algorithm>

#include "tests/devices/TestSystem.h"

namespace loader::test {

namespace {
int AddQtLibrary(dl_phdr_info* info, std::size_t, void* libraries) {
  const std::string path = info->dlpi_name;
  const std::size_t name = path.find("libQt6");
  if (name != std::string::npos) {
    static_cast<std::vector<std::string>*>(libraries)->push_back(
        path.substr(name, path.find('.', name) - name));
  }
  return 0;
}
} // namespace

std::vector<std::string> LoadedQtLibraries() {
  std::vector<std::string> libraries;
  dl_iterate_phdr(AddQtLibrary, &libraries);
  std::sort(libraries.begin(), libraries.end());
  return libraries;
}

std::vector<std::string> QtLibrariesOfTheDevices() {
  return {"libQt6Core", "libQt6Network", "libQt6SerialPort"};
}

std::filesystem::path ThisProgram() {
  return std::filesystem::canonical("/proc/self/exe");
}

void ResetWhenClosed(qintptr socket) {
  const linger hard{1, 0};
  setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
}

bool PortsAreForOneProgram() {
  return true;
}

std::u16string NameOfPort16() {
  return u"/dev/ttyS15";
}

std::u16string ReasonForNoDevice() {
  return u"No such file or directory";
}

} // namespace loader::test
