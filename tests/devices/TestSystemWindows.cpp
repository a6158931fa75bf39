#include <winsock2.h>

#include <QString>
#include <algorithm>
#include <array>
#include <psapi.h>

#include "tests/devices/TestSystem.h"

namespace loader::test {

std::vector<std::string> LoadedQtLibraries() {
  std::array<HMODULE, 1024> modules{};
  DWORD size = 0;
  EnumProcessModules(GetCurrentProcess(), modules.data(), static_cast<DWORD>(sizeof modules), &size);
  std::vector<std::string> libraries;
  for (std::size_t i = 0; i < std::min<std::size_t>(size / sizeof(HMODULE), modules.size()); ++i) {
    std::array<char, MAX_PATH> name{};
    GetModuleBaseNameA(GetCurrentProcess(), modules[i], name.data(), static_cast<DWORD>(name.size()));
    const std::string library = name.data();
    if (library.starts_with("Qt6")) {
      libraries.push_back(library.substr(0, library.find('.')));
    }
  }
  std::sort(libraries.begin(), libraries.end());
  return libraries;
}

std::vector<std::string> QtLibrariesOfTheDevices() {
  return {"Qt6Core", "Qt6Network"};
}

std::filesystem::path ThisProgram() {
  std::array<wchar_t, 1024> path{};
  return std::wstring(path.data(), GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
}

void ResetWhenClosed(qintptr socket) {
  const linger hard{1, 0};
  setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&hard),
             sizeof hard);
}

bool PortsAreForOneProgram() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;
}

std::u16string NameOfPort16() {
  return u"COM16";
}

std::u16string ReasonForNoDevice() {
  return qt_error_string(ERROR_FILE_NOT_FOUND).trimmed().toStdU16String();
}

} // namespace loader::test
