#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/paramtool/FleetGate.h"

namespace loader::test {

// A pipe among the files: who opens the one end waits for the other.
struct FleetGate::Inside {};

FleetGate::FleetGate(const std::filesystem::path& gate) {
  EXPECT_EQ(::mkfifo(gate.c_str(), 0600), 0);
}

FleetGate::~FleetGate() = default;

void InterruptThisProgram() {
  std::raise(SIGINT);
}

} // namespace loader::test
