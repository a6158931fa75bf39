#include "paramtool/FleetSignals.h"

#include <QWinEventNotifier>
#include <atomic>
#include <utility>
#include <windows.h>

namespace loader::paramtool {

namespace {

std::atomic<HANDLE> told{nullptr};
std::atomic<int> times{0}; // an event that is set twice is set once

// On a thread of the system's own. The program is ended when this returns from the closing of the console or
// the end of the session; it has a few seconds, and ends by itself.
BOOL WINAPI Tell(DWORD what) {
  ++times;
  SetEvent(told);
  if (what == CTRL_CLOSE_EVENT || what == CTRL_LOGOFF_EVENT || what == CTRL_SHUTDOWN_EVENT) {
    WaitForSingleObject(GetCurrentProcess(), INFINITE);
  }
  return TRUE;
}

} // namespace

struct FleetSignals::Inside {
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  std::unique_ptr<QWinEventNotifier> notifier;
};

FleetSignals::FleetSignals(std::function<void()> stop) : inside_(std::make_unique<Inside>()) {
  if (inside_->event == nullptr) {
    return; // they end the program as ever
  }
  told = inside_->event;
  times = 0;
  inside_->notifier = std::make_unique<QWinEventNotifier>(inside_->event);
  QObject::connect(inside_->notifier.get(), &QWinEventNotifier::activated,
                   [stop = std::move(stop)](HANDLE /*event*/) {
                     for (int left = times.exchange(0); left > 0; --left) {
                       stop();
                     }
                   });
  SetConsoleCtrlHandler(Tell, TRUE);
}

FleetSignals::~FleetSignals() {
  if (inside_->event == nullptr) {
    return;
  }
  SetConsoleCtrlHandler(Tell, FALSE);
  inside_->notifier.reset();
  told = nullptr;
  CloseHandle(inside_->event);
}

} // namespace loader::paramtool
