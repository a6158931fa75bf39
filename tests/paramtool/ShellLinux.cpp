#include <cstdlib>

#include "tests/paramtool/Shell.h"

namespace loader::test {

Ended RunInShell(const std::string& line, const std::filesystem::path& programs) {
  return RunProcess("/bin/sh", {"-c", line},
                    {.environment = {"PATH=" + programs.string() + ":" + std::getenv("PATH")}});
}

} // namespace loader::test
