// Ctrl+C while a recorder is talked to, typed on a console: the first one is noted and wakes the event loop,
// the second one ends the program.
#include "paramtool/Interrupt.h"

#include <QCoreApplication>
#include <QEventLoop>
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

// What is typed comes on a thread of the system's own, and from there to the event loop. A loop that is told
// to quit: one call of processEvents gives an event out and may sleep then.
struct WokenLoop {
  QEventLoop loop;
  int woken = 0;
  Interrupt interrupt{[this] {
    ++woken;
    loop.quit();
  }};
  void TypeCtrlCAndWait() {
    TypeCtrlC();
    loop.exec();
  }
};

TEST(InterruptDeathTest, TheFirstOneWakesTheEventLoop) {
  EXPECT_EXIT(
      {
        TakeConsole();
        int argc = 0;
        const QCoreApplication application(argc, nullptr);
        WokenLoop loop;
        const bool before = Interrupt::Asked();
        loop.TypeCtrlCAndWait();
        QCoreApplication::processEvents();
        EndWith(!before && Interrupt::Asked() && loop.woken == 1);
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
        WokenLoop loop;
        loop.TypeCtrlCAndWait();
        TypeCtrlC();
        WaitForSingleObject(GetCurrentProcess(), LongEnough);
        EndWith(false);
      },
      [](int status) { return status == static_cast<int>(STATUS_CONTROL_C_EXIT) || status == 0; }, // Wine: 0
      "");
}

} // namespace
} // namespace loader::test
