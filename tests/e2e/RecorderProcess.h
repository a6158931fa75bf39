// A simulated recorder of its own process, on a free port.
#pragma once

#include <QCoreApplication>
#include <QStandardPaths>
#include <QString>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "core/Text.h"
#include "tests/e2e/Guest.h"
#include "tests/support/MemoryDump.h"
#include "tests/support/Process.h"

namespace loader::tour {

using Memory = std::map<int, int>; // register number to value

class RecorderProcess {
public:
  // The memory is told by way of a file in `folder`.
  RecorderProcess(const QString& model, const std::filesystem::path& folder, const QStringList& more = {})
      : dump_(folder / "recorder-memory.txt"), process_(Program(), Arguments(model, more)) {
    const QString line = QString::fromStdString(process_.ReadLines(1)).trimmed();
    port_ = line.section(u':', -1).toInt();
    if (port_ == 0) {
      throw TourFailure(QStringLiteral("the simulated recorder says: ") + line);
    }
  }
  ~RecorderProcess() { End(); }
  [[nodiscard]] int Port() const { return port_; }

  // Ends the recorder and reads what it held.
  Memory End() {
    if (runs_) {
      runs_ = false;
      process_.Signal(test::Terminate);
      (void)process_.Wait();
    }
    return test::ReadMemoryDump(dump_);
  }

private:
  static std::filesystem::path Program() {
    const QString program = QStandardPaths::findExecutable(QStringLiteral("recorder-sim"),
                                                           {QCoreApplication::applicationDirPath()});
    if (program.isEmpty()) {
      throw TourFailure(QStringLiteral("there is no recorder-sim beside this program"));
    }
    return program.toStdU16String();
  }
  [[nodiscard]] std::vector<std::string> Arguments(const QString& model, const QStringList& more) const {
    std::vector<std::string> arguments{"--model", model.toStdString(),      "--tcp", "127.0.0.1:0",
                                       "--dump",  ToUtf8(dump_.u16string())};
    for (const QString& word : more) {
      arguments.push_back(word.toStdString());
    }
    return arguments;
  }

  std::filesystem::path dump_;
  test::RunningProcess process_;
  bool runs_ = true;
  int port_ = 0;
};

} // namespace loader::tour
