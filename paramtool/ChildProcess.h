// A program that another one runs and may ask to end.
#pragma once

#include <QProcess>
#include <memory>

namespace loader::paramtool {

// Lives as long as the process. A Ctrl+C on the terminal does not reach the child: who runs it passes that on
// once.
class ChildProcess {
public:
  // Before it starts.
  explicit ChildProcess(QProcess& process);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Right after its start. On Windows it ends with this program from now on, however this one ends.
  void Started();
  // So that it can put its things in order: SIGTERM, or on Windows the event that its Interrupt waits for.
  void AskToEnd();

  // Whether a child that has given no report was ended by another program. A signal says so itself; on
  // Windows all that is left of it is the exit code, which who ends a program chooses: the task manager
  // takes 1.
  [[nodiscard]] static bool WasEndedByAnother(int exit);

private:
  struct Inside;
  std::unique_ptr<Inside> inside_;
};

} // namespace loader::paramtool
