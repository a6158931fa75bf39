// Ctrl+C while a recorder is talked to, typed on a console: the first one is noted and wakes the event loop,
// the second one ends the program.
#include "paramtool/Interrupt.h"

#include <QCoreApplication>
#include <cstdlib>
#include <gtest/gtest.h>
#include <windows.h>

namespace loader::test {
namespace {

using paramtool::Interrupt;

// Each in a process of its own, with a console of its own: a Ctrl+C that was asked for stays so to the end of
// the program, and reaches each program of the console.
void TakeConsole() {
  FreeConsole();
  AllocConsole();
}

void TypeCtrlC() {
  if (GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) == 0) {
    std::_Exit(2);
  }
}

[[noreturn]] void EndWith(bool good) {
  std::_Exit(good ? 0 : 1);
}

// It comes on a thread of the system's own.
void WaitUntilWoken(const int& woken) {
  while (woken == 0) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

TEST(InterruptDeathTest, TheFirstOneWakesTheEventLoop) {
  EXPECT_EXIT(
      {
        TakeConsole();
        int argc = 0;
        const QCoreApplication application(argc, nullptr);
        int woken = 0;
        const Interrupt interrupt([&woken] { ++woken; });
        const bool before = Interrupt::Asked();
        TypeCtrlC();
        WaitUntilWoken(woken);
        QCoreApplication::processEvents();
        EndWith(!before && Interrupt::Asked() && woken == 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(InterruptDeathTest, TheSecondOneEndsTheProgram) {
  constexpr DWORD LongEnough = 30000; // milliseconds
  EXPECT_EXIT(
      {
        TakeConsole();
        int argc = 0;
        const QCoreApplication application(argc, nullptr);
        int woken = 0;
        const Interrupt interrupt([&woken] { ++woken; });
        TypeCtrlC();
        WaitUntilWoken(woken);
        TypeCtrlC();
        WaitForSingleObject(GetCurrentProcess(), LongEnough);
        EndWith(false);
      },
      [](int status) { return status == static_cast<int>(STATUS_CONTROL_C_EXIT) || status == 0; }, // Wine: 0
      "");
}

} // namespace
} // namespace loader::test
