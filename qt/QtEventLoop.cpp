#include "qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QDateTime>

#include "qt/UserInterface.h"

namespace loader {

void QtEventLoop::DoEvents() {
  userInterface_.Refresh();
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtTimers::Changed(Timer& timer) {
  if (!timer.Enabled || timer.Interval <= 0) {
    if (const auto found = running_.find(&timer); found != running_.end()) {
      found->second->stop();
      running_.erase(found);
    }
    return;
  }
  std::unique_ptr<QTimer, DeleteLater>& running = running_[&timer];
  if (running == nullptr) {
    running.reset(new QTimer);
    running->setTimerType(Qt::PreciseTimer);
    QObject::connect(running.get(), &QTimer::timeout, running.get(),
                     [this, &timer] { userInterface_.Run(timer.onTimer); });
  }
  running->start(timer.Interval);
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
