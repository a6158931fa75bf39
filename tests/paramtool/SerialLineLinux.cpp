#include "tests/paramtool/SerialLine.h"

namespace loader::test {

std::vector<std::string> SerialLineOfRecorder(const std::string& file) {
  return {"--rtu", file};
}

} // namespace loader::test
