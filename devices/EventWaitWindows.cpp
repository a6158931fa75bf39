#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>

#include "devices/EventWait.h"

namespace loader {

// The dispatcher of Windows gives posted events (timers and serial lines among them) out before it looks for
// messages, and sleeps then although it has given something out; and it returns after the message that tells
// of posted events, before it has given them out. So a wait counts the events, and keeps the dispatcher from
// going to sleep over one.

struct EventWait::Round {
  std::uint64_t given;  // before it
  int loopLevel;        // a modal loop in a handler sleeps as it likes
  const Round* outside; // the wait whose handler has this one
};

EventWait::EventWait() {
  QCoreApplication::instance()->installEventFilter(this);
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                   [this] { GoOnWhenGiven(); });
}

bool EventWait::eventFilter(QObject* watched, QEvent* event) {
  ++given_;
  return QObject::eventFilter(watched, event);
}

void EventWait::GoOnWhenGiven() const {
  if (round_ != nullptr && given_ != round_->given &&
      QThread::currentThread()->loopLevel() == round_->loopLevel) {
    QAbstractEventDispatcher::instance()->wakeUp();
  }
}

void EventWait::Wait() {
  const Round round{given_, QThread::currentThread()->loopLevel(), round_};
  round_ = &round;
  bool interrupted = false;
  while (given_ == round.given && !interrupted) {
    interrupted = !QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents |
                                                                       QEventLoop::WaitForMoreEvents);
  }
  round_ = round.outside;
}

} // namespace loader
