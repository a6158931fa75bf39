#include <gtest/gtest.h>
#include <windows.h>

#include "tests/paramtool/FleetGate.h"
#include "tests/paramtool/GateNameWindows.h"
#include "tests/support/BreakWindows.h"

namespace loader::test {

struct FleetGate::Inside {
  HANDLE event;
};

FleetGate::FleetGate(const std::filesystem::path& gate)
    : inside_(new Inside{::CreateEventW(nullptr, FALSE, FALSE, GateName(gate).c_str())}) {
  EXPECT_NE(inside_->event, nullptr);
}

FleetGate::~FleetGate() {
  ::CloseHandle(inside_->event);
}

void InterruptThisProgram() {
  const HANDLE thread = BeginBreak(::GetCurrentProcess());
  ASSERT_NE(thread, nullptr);
  ::WaitForSingleObject(thread, INFINITE);
  ::CloseHandle(thread);
}

} // namespace loader::test
