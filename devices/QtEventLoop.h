// Event loop and timers.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "devices/EventWait.h"
#include "devices/RunHandler.h"
#include "platform/Platform.h"

namespace loader {

// How a window shows what a waiting flow has written. A program without one has nothing to show.
struct ShownWhileWaiting {
  std::function<void()> show;
  // How many events have been given out so far, to whomever. Empty: they are not counted, and every event
  // ends a wait.
  std::function<std::uint64_t()> eventsGiven;
};

// A flow calls DoEvents for every few bytes of a reply and has mostly written nothing meanwhile, and looking
// through all records of a window takes longer than the bytes. So what it has written is shown at once when
// nothing was shown for a while, and otherwise within ShowEvery.
class QtEventLoop final : public EventLoop {
public:
  static constexpr int ShowEvery = 50; // milliseconds: as often as the lamp blinks

  explicit QtEventLoop(ShownWhileWaiting shown = {});
  // Sleeps in the kernel until something comes. Showing what the waiting flow has written is nothing that
  // comes.
  void DoEvents() override;

private:
  void Show();
  void ShowInTime();
  [[nodiscard]] std::uint64_t EventsGiven() const;

  EventWait wait_;
  ShownWhileWaiting shown_;
  QElapsedTimer sinceShown_; // by this loop
  QTimer later_;
  bool shownLater_ = false;
};

class QtTimers final : public Timers {
public:
  // `run` runs the handler of a timer.
  explicit QtTimers(std::function<void(const Handler&)> run = RunHandler) : run_(std::move(run)) {}
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

  std::function<void(const Handler&)> run_;
  std::vector<std::unique_ptr<Slot>> slots_;
};

} // namespace loader
