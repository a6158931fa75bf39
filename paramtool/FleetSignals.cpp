#include "paramtool/FleetSignals.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace loader::paramtool {

namespace {

// A handler may do little more than write a byte.
volatile std::sig_atomic_t WriteEnd = -1;

void Tell(int /*signal*/) {
  const int error = errno;
  const char byte = 0;
  (void)!::write(WriteEnd, &byte, 1); // a full pipe has told already
  errno = error;
}

} // namespace

FleetSignals::FleetSignals(std::function<void()> stop) {
  if (::pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    return; // the signals end the program as ever
  }
  WriteEnd = pipe_[1];
  notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this, stop = std::move(stop)] {
    char byte = 0;
    if (::read(pipe_[0], &byte, 1) == 1) {
      stop();
    }
  });
  for (std::size_t i = 0; i < Signals.size(); ++i) {
    struct sigaction action {};
    action.sa_handler = Tell;
    action.sa_flags = SA_RESTART;
    sigaction(Signals[i], nullptr, &before_[i]);
    if (before_[i].sa_handler != SIG_IGN) {
      sigaction(Signals[i], &action, nullptr);
    }
  }
}

FleetSignals::~FleetSignals() {
  if (notifier_ == nullptr) {
    return;
  }
  for (std::size_t i = 0; i < Signals.size(); ++i) {
    sigaction(Signals[i], &before_[i], nullptr);
  }
  notifier_.reset();
  ::close(pipe_[0]);
  ::close(pipe_[1]);
}

} // namespace loader::paramtool
