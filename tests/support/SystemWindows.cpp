#include <cstdlib>
#include <process.h>

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

} // namespace loader::test
