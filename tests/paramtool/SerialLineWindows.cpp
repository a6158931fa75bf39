#include "tests/paramtool/SerialLine.h"

namespace loader::test {

std::vector<std::string> SerialLineOfRecorder(const std::string& /*file*/) {
  return {};
}

} // namespace loader::test
