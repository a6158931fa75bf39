#include <signal.h>
#include <sys/signalfd.h>

#include "simulator/Program.h"
#include "simulator/Sockets.h"

namespace loader::simulator {

void PrepareOutput() {} // both hold by themselves

std::vector<std::string> ProgramArguments(int count, char** arguments) {
  return {arguments + 1, arguments + count};
}

std::filesystem::path FileOf(const std::string& argument) {
  return argument;
}

std::filesystem::path ProgramFile() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::string_view StopHelp() {
  return "SIGINT (Ctrl+C) or SIGTERM\nends it.";
}

int StopDescriptor() {
  static const Descriptor descriptor = [] {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    signal(SIGPIPE, SIG_IGN); // nobody reads the trace any more: no reason to end
    return Descriptor(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
  }();
  return descriptor.Number();
}

} // namespace loader::simulator
