#include "qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QDateTime>
#include <algorithm>

#include "qt/Application.h"
#include "qt/UserInterface.h"

namespace loader {

namespace {

// 0 with an application that does not count them: then every event ends a wait.
std::uint64_t EventsGiven() {
  const auto* application = dynamic_cast<const Application*>(QCoreApplication::instance());
  return application == nullptr ? 0 : application->EventsGiven();
}

} // namespace

QtEventLoop::QtEventLoop(UserInterface& userInterface) : userInterface_(userInterface) {
  later_.setSingleShot(true);
  QObject::connect(&later_, &QTimer::timeout, &later_, [this] {
    Show();
    shownLater_ = true;
  });
}

void QtEventLoop::Show() {
  later_.stop();
  userInterface_.Refresh();
  sinceShown_.start();
}

void QtEventLoop::DoEvents() {
  if (!sinceShown_.isValid() || sinceShown_.hasExpired(ShowEvery)) {
    Show();
  } else if (!later_.isActive()) {
    later_.start(ShowEvery);
  }
  bool nothingElse = false;
  do {
    shownLater_ = false;
    const std::uint64_t before = EventsGiven();
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
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
  QObject::connect(&slot.ticks, &QTimer::timeout, &slot.ticks,
                   [this, &slot] { userInterface_.Run(slot.timer->onTimer); });
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

float QtClock::SecondsSinceMidnight() {
  constexpr float MillisecondsPerSecond = 1000;
  return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / MillisecondsPerSecond;
}

DateAndTime QtClock::Now() {
  const QDateTime now = QDateTime::currentDateTime();
  return {now.date().year(), now.date().month(),  now.date().day(),
          now.time().hour(), now.time().minute(), now.time().second()};
}

} // namespace loader
