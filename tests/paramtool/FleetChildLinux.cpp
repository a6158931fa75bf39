#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "tests/paramtool/FleetChild.h"

namespace loader::test {

namespace {

WhenAsked asked; // not changed while a handler may run

void EndAsAsked(int /*signal*/) {
  (void)!::write(STDOUT_FILENO, asked.text.data(), asked.text.size());
  ::_exit(asked.status);
}

// With a byte in it for each who waits.
void Pass(const std::filesystem::path& gate, int how) {
  char byte = 0;
  const int file = ::open(gate.c_str(), how);
  if (file < 0 || (how == O_RDONLY ? ::read(file, &byte, 1) : ::write(file, &byte, 1)) != 1) {
    ::_exit(97);
  }
  ::close(file);
}

} // namespace

void PrepareToBeAsked(const WhenAsked& when) {
  std::signal(SIGTERM, SIG_IGN);
  asked = when;
  if (!when.deaf) {
    std::signal(SIGTERM, EndAsAsked);
  }
}

void AwaitGate(const std::filesystem::path& gate) {
  Pass(gate, O_RDONLY);
}

void TellGate(const std::filesystem::path& gate) {
  Pass(gate, O_WRONLY);
}

void Hang() {
  for (;;) {
    ::pause();
  }
}

void Crash() {
  std::signal(SIGSEGV, SIG_DFL);
  std::raise(SIGSEGV);
  ::_exit(96);
}

void EndFromOutside() {
  std::raise(SIGKILL);
  ::_exit(96);
}

} // namespace loader::test
