#include <cstdlib>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/System.h"

namespace loader::test {

bool MakePipe(const std::filesystem::path& file) {
  constexpr mode_t OfTheUser = 0600;
  return ::mkfifo(file.c_str(), OfTheUser) == 0;
}

void SetEnvironment(const std::string& name, const std::string& value) {
  ::setenv(name.c_str(), value.c_str(), 1);
}

void RemoveEnvironment(const std::string& name) {
  ::unsetenv(name.c_str());
}

std::string TemporaryFolderVariable() {
  return "TMPDIR";
}

long ProcessId() {
  return ::getpid();
}

std::vector<std::string> LoadedLibraries() {
  std::vector<std::string> names;
  dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* all) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(info->dlpi_name);
        return 0;
      },
      &names);
  return names;
}

} // namespace loader::test
