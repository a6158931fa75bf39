#include "platform/DataFolder.h"

#include <system_error>

namespace loader {

std::filesystem::path DataFolder(const std::filesystem::path& executableFolder) {
  const auto holdsData = [](const std::filesystem::path& folder) {
    std::error_code error;
    return std::filesystem::exists(folder / InitialSettingsName, error);
  };
  const std::filesystem::path installed =
      (executableFolder / ".." / "share" / InstalledFolderName).lexically_normal();
  return !holdsData(executableFolder) && holdsData(installed) ? installed : executableFolder;
}

} // namespace loader
