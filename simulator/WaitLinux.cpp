#include <poll.h>
#include <sys/prctl.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "platform/RunTimeFailure.h"
#include "simulator/Wait.h"

namespace loader::simulator {

void WaitForAny(std::vector<Wait>& waits, std::optional<std::chrono::nanoseconds> timeout) {
  std::vector<pollfd> polled;
  polled.reserve(waits.size());
  for (const Wait& wait : waits) {
    polled.push_back({wait.number, static_cast<short>(POLLIN | (wait.forRoom ? POLLOUT : 0)), 0});
  }
  timespec time{};
  if (timeout) {
    time = {static_cast<time_t>(timeout->count() / 1'000'000'000),
            static_cast<long>(timeout->count() % 1'000'000'000)};
  }
  if (::ppoll(polled.data(), polled.size(), timeout ? &time : nullptr, nullptr) < 0 && errno != EINTR) {
    throw RunTimeFailure(std::string("poll: ") + std::strerror(errno));
  }
  for (std::size_t i = 0; i < waits.size(); ++i) {
    waits[i].news = (polled[i].revents & ~POLLOUT) != 0;
    waits[i].room = (polled[i].revents & POLLOUT) != 0;
  }
}

void KeepTime() {
  ::prctl(PR_SET_TIMERSLACK, 1UL); // nanoseconds
}

} // namespace loader::simulator
