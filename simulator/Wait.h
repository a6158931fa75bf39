// The wait for whatever comes next on the lines.
#pragma once

#include <chrono>
#include <optional>
#include <vector>

namespace loader::simulator {

inline constexpr int NoDescriptor = -1;

struct Wait {
  int number = NoDescriptor; // not waited for when it is none
  bool forRoom = false;      // also until it takes bytes again
  // What has come:
  bool news = false; // it can be read, has ended or failed
  bool room = false; // it takes bytes again
};

// Waits until something comes or the time is over, and uses no processor time meanwhile. RunTimeFailure when
// the system refuses.
void WaitForAny(std::vector<Wait>& waits, std::optional<std::chrono::nanoseconds> timeout);

// Waits of this thread end as close to their time as the system can do it: the pace of a line is kept to the
// character.
void KeepTime();

} // namespace loader::simulator
