#include <QProcessEnvironment>
#include <windows.h>

#include "paramtool/ChildProcess.h"
#include "paramtool/StopEventWindows.h"

namespace loader::paramtool {

namespace {

// Its processes end when the last handle to it is closed, which the system does for a program that was
// killed.
HANDLE JobOfThisProgram() {
  static const HANDLE job = [] {
    const HANDLE made = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return made;
  }();
  return job;
}

QString NewEventName() {
  static int count = 0;
  return QStringLiteral("Local\\paramtool-stop-%1-%2").arg(GetCurrentProcessId()).arg(++count);
}

} // namespace

struct ChildProcess::Inside {
  explicit Inside(QProcess& child) : process(child) {}
  QProcess& process;
  HANDLE stop = nullptr;
};

// An event and not Ctrl+Break: that reaches a child of the same console alone, and a scheduled task has none.
ChildProcess::ChildProcess(QProcess& process) : inside_(std::make_unique<Inside>(process)) {
  const QString name = NewEventName();
  inside_->stop = CreateEventW(nullptr, TRUE, FALSE, reinterpret_cast<const wchar_t*>(name.utf16()));
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QLatin1String(StopEventVariable), name);
  process.setProcessEnvironment(environment);
  process.setCreateProcessArgumentsModifier(
      [](QProcess::CreateProcessArguments* arguments) { arguments->flags |= CREATE_NEW_PROCESS_GROUP; });
}

ChildProcess::~ChildProcess() {
  if (inside_->stop != nullptr) {
    CloseHandle(inside_->stop);
  }
}

void ChildProcess::Started() {
  const auto id = static_cast<DWORD>(inside_->process.processId());
  const HANDLE child = id == 0 ? nullptr : OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, id);
  if (child != nullptr) {
    AssignProcessToJobObject(JobOfThisProgram(), child);
    CloseHandle(child);
  }
}

void ChildProcess::AskToEnd() {
  SetEvent(inside_->stop);
}

bool ChildProcess::WasEndedByAnother(int exit) {
  return exit == 1;
}

} // namespace loader::paramtool
