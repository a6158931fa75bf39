#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QMetaObject>
#include <QTest>
#include <QTimer>

#include "qt/QtPlatform.h"
#include "tests/support/ProcessorTime.h"

namespace loader::test {
namespace {

struct EventLoop : testing::Test {
  QtPlatform platform;
  Timer timer;
  ~EventLoop() override { StopTimer(timer); }
};

TEST_F(EventLoop, WaitsForATimerWithoutUsingTheProcessor) {
  bool fired = false;
  timer.onTimer = [&] { fired = true; };
  QElapsedTimer elapsed;
  elapsed.start();
  const double before = ProcessorMs();
  StartTimer(timer, 300);
  int rounds = 0;
  while (!fired) {
    DoEvents();
    ++rounds;
  }
  EXPECT_GE(elapsed.elapsed(), 299);
  EXPECT_LT(ProcessorMs() - before, 30);
  EXPECT_LE(rounds, 10);
}

TEST_F(EventLoop, ReturnsAfterTheEventThatCame) {
  bool ran = false;
  QMetaObject::invokeMethod(
      &platform.userInterface, [&] { ran = true; }, Qt::QueuedConnection);
  DoEvents();
  EXPECT_TRUE(ran);
}

TEST_F(EventLoop, ATimerRepeatsWhileItIsEnabled) {
  int fired = 0;
  timer.onTimer = [&] { ++fired; };
  StartTimer(timer, 1);
  while (fired < 3) {
    DoEvents();
  }
  SUCCEED();
}

TEST_F(EventLoop, AStoppedTimerFiresNoMore) {
  int fired = 0;
  timer.onTimer = [&] {
    ++fired;
    StopTimer(timer);
  };
  StartTimer(timer, 1);
  bool later = false;
  Timer after;
  after.onTimer = [&] { later = true; };
  StartTimer(after, 30);
  while (!later) {
    DoEvents();
  }
  StopTimer(after);
  EXPECT_EQ(1, fired);
}

TEST_F(EventLoop, StartingATimerAnewStartsItsIntervalAnew) {
  bool fired = false;
  timer.onTimer = [&] { fired = true; };
  StartTimer(timer, 10'000);
  StartTimer(timer, 1);
  QElapsedTimer elapsed;
  elapsed.start();
  while (!fired) {
    DoEvents();
  }
  EXPECT_LT(elapsed.elapsed(), 5'000);
}

TEST_F(EventLoop, ATimerWithoutIntervalNeverFires) {
  timer.onTimer = [] { FAIL() << "fired"; };
  StartTimer(timer, 0);
  bool later = false;
  Timer after;
  after.onTimer = [&] { later = true; };
  StartTimer(after, 20);
  while (!later) {
    DoEvents();
  }
  StopTimer(after);
  EXPECT_TRUE(timer.Enabled);
}

TEST_F(EventLoop, ATimerMayGoAwayInItsOwnHandler) {
  auto shortLived = std::make_unique<Timer>();
  bool fired = false;
  shortLived->onTimer = [&] {
    StopTimer(*shortLived);
    shortLived.reset();
    fired = true;
  };
  StartTimer(*shortLived, 1);
  while (!fired) {
    DoEvents();
  }
  EXPECT_EQ(nullptr, shortLived);
}

TEST_F(EventLoop, AWatchdogOfManyExchangesLeavesNothingBehind) {
  for (int exchange = 0; exchange < 100; ++exchange) {
    StartTimer(timer, 5'000);
    StopTimer(timer);
  }
  EXPECT_EQ(1U, platform.timers.SlotCount());
}

TEST_F(EventLoop, TimersThatRunTogetherFireEachForItself) {
  Timer other;
  int first = 0;
  int second = 0;
  timer.onTimer = [&] { ++first; };
  other.onTimer = [&] { ++second; };
  StartTimer(timer, 1);
  StartTimer(other, 1);
  while (first == 0 || second == 0) {
    DoEvents();
  }
  StopTimer(timer);
  const int before = first;
  const int others = second;
  while (second == others) {
    DoEvents();
  }
  StopTimer(other);
  EXPECT_EQ(before, first);
}

TEST_F(EventLoop, TheClockTellsTheTimeOfDay) {
  const QDateTime before = QDateTime::currentDateTime();
  const DateAndTime now = platform.clock.Now();
  const float seconds = platform.clock.SecondsSinceMidnight();
  EXPECT_EQ(before.date().year(), now.year);
  EXPECT_GE(now.month, 1);
  EXPECT_LE(now.month, 12);
  EXPECT_GE(seconds, 0.0F);
  EXPECT_LT(seconds, 86401.0F);
  if (before.time() < QTime(23, 59)) {
    EXPECT_NEAR(before.time().msecsSinceStartOfDay() / 1000.0, static_cast<double>(seconds), 5.0);
  }
}

} // namespace
} // namespace loader::test
