#include <windows.h> // first: the next one builds on it

#include <array>
#include <cstdlib>
#include <process.h>
#include <psapi.h>

#include "tests/support/System.h"

namespace loader::test {

bool MakePipe(const std::filesystem::path& /*file*/) {
  return false;
}

void SetEnvironment(const std::string& name, const std::string& value) {
  ::_putenv_s(name.c_str(), value.c_str());
}

void RemoveEnvironment(const std::string& name) {
  ::_putenv_s(name.c_str(), "");
}

std::string TemporaryFolderVariable() {
  return "TMP";
}

long ProcessId() {
  return ::_getpid();
}

std::vector<std::string> LoadedLibraries() {
  std::array<HMODULE, 1024> modules{};
  DWORD bytes = 0;
  K32EnumProcessModules(GetCurrentProcess(), modules.data(), sizeof modules, &bytes);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < bytes / sizeof(HMODULE); ++i) {
    std::array<char, MAX_PATH> name{};
    GetModuleFileNameA(modules.at(i), name.data(), static_cast<DWORD>(name.size()));
    names.emplace_back(name.data());
  }
  return names;
}

} // namespace loader::test
