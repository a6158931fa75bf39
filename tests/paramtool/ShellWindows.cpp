#include <cstdlib>
#include <fstream>

#include "tests/paramtool/Shell.h"

namespace loader::test {

// From a file: as a word of cmd.exe's own command line its quotes would be doubled.
Ended RunInShell(const std::string& line, const std::filesystem::path& programs) {
  const TemporaryFolder folder("loader-shell-");
  const std::filesystem::path file = (folder / "line.bat").make_preferred();
  std::ofstream(file, std::ios::binary) << "@" << line << "\r\n";
  return RunProcess(std::getenv("COMSPEC"), {"/d", "/c", file.string()},
                    {.environment = {"PATH=" + std::filesystem::path(programs).make_preferred().string() +
                                     ";" + std::getenv("PATH")}});
}

} // namespace loader::test
