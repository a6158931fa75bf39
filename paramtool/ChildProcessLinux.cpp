#include <csignal>
#include <unistd.h>

#include "paramtool/ChildProcess.h"

namespace loader::paramtool {

struct ChildProcess::Inside {
  explicit Inside(QProcess& child) : process(child) {}
  QProcess& process;
};

ChildProcess::ChildProcess(QProcess& process) : inside_(std::make_unique<Inside>(process)) {
  process.setChildProcessModifier([] { ::setpgid(0, 0); });
}

ChildProcess::~ChildProcess() = default;

void ChildProcess::Started() {}

void ChildProcess::AskToEnd() {
  if (const qint64 id = inside_->process.processId(); id > 0) {
    ::kill(static_cast<pid_t>(id), SIGTERM);
  }
}

bool ChildProcess::WasEndedByAnother(int /*exit*/) {
  return false;
}

} // namespace loader::paramtool
