#include <cstdint>
#include <gtest/gtest.h>
#include <windows.h>

#include "tests/paramtool/FleetGate.h"
#include "tests/paramtool/GateNameWindows.h"

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

// What Windows itself runs in a program on a Ctrl+Break.
void InterruptThisProgram() {
  const FARPROC routine = ::GetProcAddress(::GetModuleHandleW(L"kernelbase"), "CtrlRoutine");
  ASSERT_NE(routine, nullptr);
  const HANDLE thread =
      ::CreateThread(nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(routine)),
                     reinterpret_cast<void*>(std::uintptr_t{CTRL_BREAK_EVENT}), 0, nullptr);
  ASSERT_NE(thread, nullptr);
  ::WaitForSingleObject(thread, INFINITE);
  ::CloseHandle(thread);
}

} // namespace loader::test
