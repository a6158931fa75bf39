#include "tests/support/Process.h"

#include <fstream>
#include <sstream>

namespace loader::test {

Ended RunProcess(const std::filesystem::path& program, std::vector<std::string> arguments,
                 const ProcessOptions& options) {
  return RunningProcess(program, std::move(arguments), options).Wait();
}

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

} // namespace loader::test
