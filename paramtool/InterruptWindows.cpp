#include "paramtool/Interrupt.h"

#include <QWinEventNotifier>
#include <QtGlobal>
#include <array>
#include <atomic>
#include <memory>
#include <utility>
#include <windows.h>

#include "paramtool/StopEventWindows.h"

namespace loader::paramtool {

namespace {

std::atomic<bool> asked = false;
std::atomic<HANDLE> waking{nullptr};

// On a thread of the system's own. Where the console is closed or the session ends, the program is ended when
// this returns: it has a few seconds to end the transfer where it stands.
BOOL WINAPI Note(DWORD what) {
  if (asked.exchange(true)) {
    return FALSE; // the second one ends the program
  }
  SetEvent(waking);
  if (what == CTRL_CLOSE_EVENT || what == CTRL_LOGOFF_EVENT || what == CTRL_SHUTDOWN_EVENT) {
    WaitForSingleObject(GetCurrentProcess(), INFINITE);
  }
  return TRUE;
}

// Of the program that runs this one, if any.
HANDLE StopEventOfParent() {
  const QString name = qEnvironmentVariable(StopEventVariable);
  return name.isEmpty() ? nullptr
                        : OpenEventW(SYNCHRONIZE, FALSE, reinterpret_cast<const wchar_t*>(name.utf16()));
}

} // namespace

struct Interrupt::Inside {
  explicit Inside(std::function<void()> wakeUp) : wake(std::move(wakeUp)) {
    waking = events[0];
    for (std::size_t i = 0; i < events.size(); ++i) {
      if (events.at(i) != nullptr) {
        notifiers.at(i) = std::make_unique<QWinEventNotifier>(events.at(i));
        QWinEventNotifier* const notifier = notifiers.at(i).get();
        QObject::connect(notifier, &QWinEventNotifier::activated, notifier,
                         [this, notifier](HANDLE /*event*/) {
                           notifier->setEnabled(false); // the event stays: once is enough
                           asked = true;
                           wake();
                         });
      }
    }
    SetConsoleCtrlHandler(Note, TRUE);
  }
  ~Inside() {
    SetConsoleCtrlHandler(Note, FALSE);
    waking = nullptr;
    for (std::size_t i = 0; i < events.size(); ++i) {
      notifiers.at(i).reset();
      if (events.at(i) != nullptr) {
        CloseHandle(events.at(i));
      }
    }
  }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;

  std::function<void()> wake;
  std::array<HANDLE, 2> events{CreateEventW(nullptr, TRUE, FALSE, nullptr), StopEventOfParent()};
  std::array<std::unique_ptr<QWinEventNotifier>, 2> notifiers;
};

Interrupt::Interrupt(std::function<void()> wake) : inside_(std::make_unique<Inside>(std::move(wake))) {}
Interrupt::~Interrupt() = default;

bool Interrupt::Asked() {
  return asked;
}

} // namespace loader::paramtool
