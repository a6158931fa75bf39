#include <cstdint>
#include <windows.h>

#include "tests/support/ProcessorTime.h"

namespace loader::test {

double ProcessorMs() {
  FILETIME created{};
  FILETIME ended{};
  FILETIME kernel{};
  FILETIME user{};
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  const auto ms = [](const FILETIME& time) { // counts steps of 100 ns
    return static_cast<double>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime) / 1e4;
  };
  return ms(kernel) + ms(user);
}

} // namespace loader::test
