// Event loop, timers and clock.
#pragma once

#include <QTimer>
#include <memory>
#include <vector>

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
  // How many timers there are inside, running or free: as many as ever ran at the same time.
  [[nodiscard]] std::size_t SlotCount() const { return slots_.size(); }

private:
  // A slot is kept and used again: a watchdog starts and stops with each exchange of a flow, and an object
  // that is deleted later piles up until the flow is over.
  struct Slot {
    Timer* timer = nullptr; // null while the slot is free
    QTimer ticks;
  };
  [[nodiscard]] Slot* SlotOf(const Timer* timer) const;
  Slot& NewSlot();

  UserInterface& userInterface_;
  std::vector<std::unique_ptr<Slot>> slots_;
};

class QtClock final : public Clock {
public:
  float SecondsSinceMidnight() override;
  DateAndTime Now() override;
};

} // namespace loader
