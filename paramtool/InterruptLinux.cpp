#include "paramtool/Interrupt.h"

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <utility>

namespace loader::paramtool {

namespace {

constexpr std::array<int, 2> Signals{SIGINT, SIGTERM};

volatile std::sig_atomic_t asked = 0;
std::atomic<int> wakingEnd{-1}; // of the pipe that wakes the event loop; lock-free, so good in a handler
static_assert(std::atomic<int>::is_always_lock_free);

void Note(int /*signal*/) {
  asked = 1;
  for (const int signal : Signals) {
    std::signal(signal, SIG_DFL);
  }
  const char byte = 0;
  const int before = errno;
  static_cast<void>(::write(wakingEnd, &byte, 1) == 1);
  errno = before;
}

} // namespace

struct Interrupt::Inside {
  explicit Inside(std::function<void()> wakeUp) : wake(std::move(wakeUp)) {
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
      wakingEnd = ends[1];
      notifier = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
      QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] {
        notifier->setEnabled(false); // the byte stays: once is enough
        wake();
      });
    }
    for (std::size_t i = 0; i < Signals.size(); ++i) {
      before[i] = std::signal(Signals[i], Note);
      if (before[i] == SIG_IGN) {
        std::signal(Signals[i], SIG_IGN); // who started the program keeps it from them (nohup)
      }
    }
  }
  ~Inside() {
    for (std::size_t i = 0; i < Signals.size(); ++i) {
      std::signal(Signals[i], before[i]);
    }
    notifier.reset();
    wakingEnd = -1;
    for (const int end : ends) {
      if (end >= 0) {
        ::close(end);
      }
    }
  }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;

  std::function<void()> wake;
  std::array<void (*)(int), Signals.size()> before{};
  std::array<int, 2> ends{-1, -1};
  std::unique_ptr<QSocketNotifier> notifier;
};

Interrupt::Interrupt(std::function<void()> wake) : inside_(std::make_unique<Inside>(std::move(wake))) {}
Interrupt::~Interrupt() = default;

bool Interrupt::Asked() {
  return asked != 0;
}

} // namespace loader::paramtool
