#include <winsock2.h>

#include <algorithm>
#include <string>

#include "platform/RunTimeFailure.h"
#include "simulator/Wait.h"

namespace loader::simulator {

namespace {

// Rounded up: a wait that ends early would be followed by another one of no time at all.
int WholeMilliseconds(std::chrono::nanoseconds time) {
  constexpr std::int64_t Longest = 3'600'000; // then it is asked again
  const std::int64_t rounded = std::chrono::ceil<std::chrono::milliseconds>(time).count();
  return static_cast<int>(std::min(rounded, Longest));
}

} // namespace

void WaitForAny(std::vector<Wait>& waits, std::optional<std::chrono::nanoseconds> timeout) {
  std::vector<WSAPOLLFD> polled;
  std::vector<Wait*> owners; // a descriptor that is none would be told as failed
  for (Wait& wait : waits) {
    wait.news = wait.room = false;
    if (wait.number != NoDescriptor) {
      polled.push_back({static_cast<SOCKET>(wait.number),
                        static_cast<SHORT>(POLLRDNORM | (wait.forRoom ? POLLWRNORM : 0)), 0});
      owners.push_back(&wait);
    }
  }
  constexpr INT Forever = -1;
  if (::WSAPoll(polled.data(), static_cast<ULONG>(polled.size()),
                timeout ? WholeMilliseconds(*timeout) : Forever) == SOCKET_ERROR) {
    throw RunTimeFailure("poll: Windows error " + std::to_string(::WSAGetLastError()));
  }
  for (std::size_t i = 0; i < owners.size(); ++i) {
    owners[i]->news = (polled[i].revents & ~POLLWRNORM) != 0;
    owners[i]->room = (polled[i].revents & POLLWRNORM) != 0;
  }
}

void KeepTime() {
  // Waits are in whole milliseconds here, and only RTU lines, which Windows has none of, have a pace.
}

} // namespace loader::simulator
