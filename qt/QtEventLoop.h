// Event loop, timers and clock.
#pragma once

#include <QTimer>
#include <memory>
#include <unordered_map>

#include "platform/Platform.h"

namespace loader {

class UserInterface;

class QtEventLoop final : public EventLoop {
public:
  explicit QtEventLoop(UserInterface& userInterface) : userInterface_(userInterface) {}
  // Sleeps in the kernel until something comes. Shows first what the waiting flow has written so far.
  void DoEvents() override;

private:
  UserInterface& userInterface_;
};

class QtTimers final : public Timers {
public:
  explicit QtTimers(UserInterface& userInterface) : userInterface_(userInterface) {}
  // A timer runs while it is enabled and its interval is above 0.
  void Changed(Timer& timer) override;

private:
  struct DeleteLater {
    void operator()(QTimer* timer) const { timer->deleteLater(); } // it may be the one that is firing
  };
  UserInterface& userInterface_;
  std::unordered_map<Timer*, std::unique_ptr<QTimer, DeleteLater>> running_;
};

class QtClock final : public Clock {
public:
  float SecondsSinceMidnight() override;
  DateAndTime Now() override;
};

} // namespace loader
