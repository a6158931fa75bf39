#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#include "paramtool/StandardStreams.h"

namespace loader::paramtool {

namespace {

// The number of a standard stream that was closed before the program began goes to the next file or socket
// that is opened, and messages would go into a recorder or a backup. So something stands there that nothing
// can be read from or written to: what could not be told is still a failed output.
void KeepStandardStreams() {
  constexpr std::array<int, 3> OtherWay{O_WRONLY, O_RDONLY, O_RDONLY}; // than each is used
  for (int stream = 0; stream < static_cast<int>(OtherWay.size()); ++stream) {
    if (::fcntl(stream, F_GETFD) < 0) {
      static_cast<void>(
          ::open("/dev/null", OtherWay.at(static_cast<std::size_t>(stream)))); // the lowest free one
    }
  }
}

} // namespace

void PrepareStandardStreams() {
  KeepStandardStreams();
  // A reader that has gone is told by the failed write: a transfer is never cut short by it.
  std::signal(SIGPIPE, SIG_IGN);
}

bool ErrorsGoToATerminal() {
  return ::isatty(STDERR_FILENO) != 0;
}

bool WriteToOutput(std::string_view text) {
  const bool all = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  return std::fflush(stdout) == 0 && all;
}

void WriteToErrors(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

} // namespace loader::paramtool
