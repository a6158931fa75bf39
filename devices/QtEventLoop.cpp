#include "devices/QtEventLoop.h"

#include <algorithm>
#include <utility>

namespace loader {

QtEventLoop::QtEventLoop(ShownWhileWaiting shown) : shown_(std::move(shown)) {
  later_.setSingleShot(true);
  QObject::connect(&later_, &QTimer::timeout, &later_, [this] {
    Show();
    shownLater_ = true;
  });
}

std::uint64_t QtEventLoop::EventsGiven() const {
  return shown_.eventsGiven ? shown_.eventsGiven() : 0;
}

void QtEventLoop::Show() {
  later_.stop();
  shown_.show();
  sinceShown_.start();
}

void QtEventLoop::ShowInTime() {
  if (!sinceShown_.isValid() || sinceShown_.hasExpired(ShowEvery)) {
    Show();
  } else if (!later_.isActive()) {
    later_.start(ShowEvery);
  }
}

void QtEventLoop::DoEvents() {
  if (shown_.show) {
    ShowInTime();
  }
  bool nothingElse = false;
  do {
    shownLater_ = false;
    const std::uint64_t before = EventsGiven();
    wait_.Wait();
    nothingElse = shownLater_ && EventsGiven() == before + 1;
  } while (nothingElse);
}

QtTimers::Slot* QtTimers::SlotOf(const Timer* timer) const {
  const auto found =
      std::find_if(slots_.begin(), slots_.end(), [&](const auto& slot) { return slot->timer == timer; });
  return found == slots_.end() ? nullptr : found->get();
}

QtTimers::Slot& QtTimers::NewSlot() {
  slots_.push_back(std::make_unique<Slot>());
  Slot& slot = *slots_.back();
  slot.ticks.setTimerType(Qt::PreciseTimer);
  QObject::connect(&slot.ticks, &QTimer::timeout, &slot.ticks, [this, &slot] { run_(slot.timer->onTimer); });
  return slot;
}

void QtTimers::Changed(Timer& timer) {
  Slot* slot = SlotOf(&timer);
  if (!timer.Enabled || timer.Interval <= 0) {
    if (slot != nullptr) {
      slot->ticks.stop();
      slot->timer = nullptr;
    }
    return;
  }
  if (slot == nullptr) {
    Slot* free = SlotOf(nullptr);
    slot = free != nullptr ? free : &NewSlot();
    slot->timer = &timer;
  }
  slot->ticks.start(timer.Interval);
}

} // namespace loader
