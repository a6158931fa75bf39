#include <cstdlib>
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

} // namespace loader::test
