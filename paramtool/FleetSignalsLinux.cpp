#include "paramtool/FleetSignals.h"

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace loader::paramtool {

namespace {

constexpr std::array<int, 3> Signals{SIGINT, SIGTERM, SIGHUP};

// A handler may do little more than write a byte.
volatile std::sig_atomic_t WriteEnd = -1;

void Tell(int /*signal*/) {
  const int error = errno;
  const char byte = 0;
  (void)!::write(WriteEnd, &byte, 1); // a full pipe has told already
  errno = error;
}

} // namespace

struct FleetSignals::Inside {
  std::array<struct sigaction, Signals.size()> before{};
  std::array<int, 2> pipe{-1, -1};
  std::unique_ptr<QSocketNotifier> notifier;
};

FleetSignals::FleetSignals(std::function<void()> stop) : inside_(std::make_unique<Inside>()) {
  if (::pipe2(inside_->pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    return; // the signals end the program as ever
  }
  WriteEnd = inside_->pipe[1];
  inside_->notifier = std::make_unique<QSocketNotifier>(inside_->pipe[0], QSocketNotifier::Read);
  QObject::connect(inside_->notifier.get(), &QSocketNotifier::activated, [this, stop = std::move(stop)] {
    char byte = 0;
    if (::read(inside_->pipe[0], &byte, 1) == 1) {
      stop();
    }
  });
  for (std::size_t i = 0; i < Signals.size(); ++i) {
    struct sigaction action {};
    action.sa_handler = Tell;
    action.sa_flags = SA_RESTART;
    sigaction(Signals[i], nullptr, &inside_->before[i]);
    if (inside_->before[i].sa_handler != SIG_IGN) {
      sigaction(Signals[i], &action, nullptr);
    }
  }
}

FleetSignals::~FleetSignals() {
  if (inside_->notifier == nullptr) {
    return;
  }
  for (std::size_t i = 0; i < Signals.size(); ++i) {
    sigaction(Signals[i], &inside_->before[i], nullptr);
  }
  inside_->notifier.reset();
  ::close(inside_->pipe[0]);
  ::close(inside_->pipe[1]);
}

} // namespace loader::paramtool
