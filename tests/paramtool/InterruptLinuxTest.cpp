// Ctrl+C while a recorder is talked to: the first one is noted and wakes the event loop, the second one ends
// the program.
#include "paramtool/Interrupt.h"

#include <QCoreApplication>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>

namespace loader::test {
namespace {

using paramtool::Interrupt;

// Each in a process of its own: a signal that was asked for stays so to the end of the program.
[[noreturn]] void EndWith(bool good) {
  std::_Exit(good ? 0 : 1);
}

TEST(InterruptDeathTest, TheFirstOneWakesTheEventLoop) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  for (const int signal : {SIGINT, SIGTERM}) {
    EXPECT_EXIT(
        {
          int argc = 0;
          const QCoreApplication application(argc, nullptr);
          int woken = 0;
          const Interrupt interrupt([&woken] { ++woken; });
          const bool before = Interrupt::Asked();
          std::raise(signal);
          const bool after = Interrupt::Asked();
          QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
          QCoreApplication::processEvents();
          EndWith(!before && after && woken == 1);
        },
        testing::ExitedWithCode(0), "");
  }
}

TEST(InterruptDeathTest, TheSecondOneEndsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        int argc = 0;
        const QCoreApplication application(argc, nullptr);
        const Interrupt interrupt([] {});
        std::raise(SIGINT);
        std::raise(SIGINT);
        EndWith(true);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST(InterruptDeathTest, ASignalThatIsIgnoredStaysIgnored) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        std::signal(SIGINT, SIG_IGN);
        int argc = 0;
        const QCoreApplication application(argc, nullptr);
        const Interrupt interrupt([] {});
        std::raise(SIGINT);
        EndWith(!Interrupt::Asked());
      },
      testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace loader::test
