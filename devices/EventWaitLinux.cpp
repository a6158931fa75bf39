#include <QCoreApplication>

#include "devices/EventWait.h"

namespace loader {

// The dispatcher returns after what it has given out.
EventWait::EventWait() = default;

void EventWait::Wait() {
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

bool EventWait::eventFilter(QObject* watched, QEvent* event) {
  return QObject::eventFilter(watched, event);
}

} // namespace loader
