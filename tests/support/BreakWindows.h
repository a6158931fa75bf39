// Ctrl+Break for a program, as Windows itself gives it. A console would send it to programs of its own only,
// and a test may have none.
#pragma once

#include <windows.h>

#include <cstdint>

namespace loader::test {

// The thread in the process on which it is told, whose end is the end of the telling; null where it can't be
// begun. The caller closes it.
[[nodiscard]] inline HANDLE BeginBreak(HANDLE process) {
  const FARPROC routine = ::GetProcAddress(::GetModuleHandleW(L"kernelbase"), "CtrlRoutine");
  return routine == nullptr ? nullptr
                            : ::CreateRemoteThread(
                                  process, nullptr, 0,
                                  reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(routine)),
                                  reinterpret_cast<void*>(std::uintptr_t{CTRL_BREAK_EVENT}), 0, nullptr);
}

} // namespace loader::test
