#include <array>
#include <cstdio>
#include <vector>
#include <windows.h>

#include "paramtool/StopEventWindows.h"
#include "tests/paramtool/FleetChild.h"
#include "tests/paramtool/GateNameWindows.h"

namespace loader::test {

namespace {

WhenAsked asked;

// Null for one that nobody could ask.
HANDLE StopEvent() {
  std::array<char, 256> name{};
  const DWORD length =
      ::GetEnvironmentVariableA(paramtool::StopEventVariable, name.data(), static_cast<DWORD>(name.size()));
  return length == 0 ? nullptr : ::OpenEventA(SYNCHRONIZE, FALSE, name.data());
}

// Until the event is set (without one: for ever), or until it is asked to end.
void WaitFor(HANDLE event) {
  const HANDLE stop = asked.deaf ? nullptr : StopEvent();
  std::vector<HANDLE> events;
  for (const HANDLE each : {stop, event}) {
    if (each != nullptr) {
      events.push_back(each);
    }
  }
  if (events.empty()) {
    ::Sleep(INFINITE);
  }
  const auto count = static_cast<DWORD>(events.size());
  if (::WaitForMultipleObjects(count, events.data(), FALSE, INFINITE) == WAIT_OBJECT_0 && stop != nullptr) {
    std::fputs(asked.text.c_str(), stdout);
    std::fflush(stdout);
    ::ExitProcess(static_cast<UINT>(asked.status));
  }
}

HANDLE GateAt(const std::filesystem::path& gate) {
  const HANDLE event = ::OpenEventW(SYNCHRONIZE | EVENT_MODIFY_STATE, FALSE, GateName(gate).c_str());
  if (event == nullptr) {
    ::ExitProcess(97);
  }
  return event;
}

} // namespace

void PrepareToBeAsked(const WhenAsked& when) {
  asked = when;
}

void AwaitGate(const std::filesystem::path& gate) {
  WaitFor(GateAt(gate));
}

void TellGate(const std::filesystem::path& gate) {
  ::SetEvent(GateAt(gate));
}

void Hang() {
  WaitFor(nullptr);
  ::ExitProcess(96);
}

// Without the system's box and without a debugger.
void Crash() {
  ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(STATUS_ACCESS_VIOLATION));
  ::ExitProcess(96);
}

// As the task manager does it.
void EndFromOutside() {
  ::TerminateProcess(::GetCurrentProcess(), 1);
  ::ExitProcess(96);
}

} // namespace loader::test
