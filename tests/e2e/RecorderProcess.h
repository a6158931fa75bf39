// A simulated recorder of its own process, on a free port.
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QString>
#include <filesystem>
#include <map>
#include <string>

#include "tests/e2e/Guest.h"
#include "tests/support/MemoryDump.h"

namespace loader::tour {

using Memory = std::map<int, int>; // register number to value

class RecorderProcess {
public:
  // The memory is told by way of a file in `folder`.
  RecorderProcess(const QString& model, const std::filesystem::path& folder, const QStringList& more = {})
      : dump_(folder / "recorder-memory.txt") {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/recorder-sim"),
                   QStringList{QStringLiteral("--model"), model, QStringLiteral("--tcp"),
                               QStringLiteral("127.0.0.1:0"), QStringLiteral("--dump"),
                               QString::fromStdString(dump_.string())} +
                       more);
    if (!process_.waitForStarted() || !process_.waitForReadyRead(10000)) {
      throw TourFailure(QStringLiteral("the simulated recorder did not start"));
    }
    const QString line = QString::fromUtf8(process_.readLine()).trimmed();
    port_ = line.section(u':', -1).toInt();
    if (port_ == 0) {
      throw TourFailure(QStringLiteral("the simulated recorder says: ") + line);
    }
  }
  ~RecorderProcess() { End(); }
  [[nodiscard]] int Port() const { return port_; }

  // Ends the recorder and reads what it held.
  Memory End() {
    if (process_.state() != QProcess::NotRunning) {
      process_.terminate();
      process_.waitForFinished(5000);
    }
    return test::ReadMemoryDump(dump_);
  }

private:
  std::filesystem::path dump_;
  QProcess process_;
  int port_ = 0;
};

} // namespace loader::tour
