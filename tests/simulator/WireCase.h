// What a fault does to a line, and what the tests of both kinds of line share.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/Faults.h"
#include "tests/simulator/Clients.h"
#include "tests/simulator/RunningSimulator.h"

namespace loader::simulator {

enum class After { GoesOn, Ends, IsReset };

struct WireCase {
  const char* kind;
  Bytes reply;
  After after;
};

inline std::string NameOf(const testing::TestParamInfo<WireCase>& of) {
  std::string name = of.param.kind;
  name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
  return name;
}

inline std::vector<std::string> Arguments(const char* kind, std::vector<std::string> line) {
  line.insert(line.end(), {"--fault", std::string(kind) + "@1", "--late", "50"});
  return line;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

} // namespace loader::simulator
