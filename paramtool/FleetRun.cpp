#include "paramtool/FleetRun.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <set>

#include "paramtool/ChildProcess.h"
#include "paramtool/FleetSignals.h"

namespace loader::paramtool {

namespace {

struct Child {
  QProcess process;
  ChildProcess control{process};
  QTimer watchdog;
  QTimer kill;
  QElapsedTimer sinceStart;
  ChildEnd why = ChildEnd::Ended; // why it was asked to end
  bool over = false;
};

class Runner {
public:
  Runner(const std::vector<ChildJob>& jobs, const ChildRun& run)
      : jobs_(jobs), run_(run), children_(jobs.size()) {
    all_.results.resize(jobs.size());
  }

  ChildResults Run() {
    const FleetSignals interrupts([this] { Interrupt(); });
    StartWhatMay();
    while (running_ > 0) {
      loop_.exec();
      StartWhatMay();
    }
    return std::move(all_);
  }

private:
  void StartWhatMay() {
    for (std::size_t job = 0; job < jobs_.size() && !all_.interrupted; ++job) {
      if (running_ < static_cast<std::size_t>(run_.jobs) && children_[job] == nullptr &&
          !busyWires_.contains(jobs_[job].wire)) {
        Start(job);
      }
    }
  }

  void Start(std::size_t job) {
    children_[job] = std::make_unique<Child>();
    Child& child = *children_[job];
    ++running_;
    busyWires_.insert(jobs_[job].wire);
    QProcess& process = child.process;
    QObject::connect(&process, &QProcess::finished, &process,
                     [this, job](int exit, QProcess::ExitStatus status) { Finished(job, exit, status); });
    QObject::connect(&process, &QProcess::errorOccurred, &process, [this, job](QProcess::ProcessError error) {
      if (error == QProcess::FailedToStart) {
        ChildResult result;
        result.end = ChildEnd::NotStarted;
        End(job, std::move(result));
      }
    });
    child.watchdog.setSingleShot(true);
    child.kill.setSingleShot(true);
    QObject::connect(&child.watchdog, &QTimer::timeout, &process,
                     [this, job] { AskToEnd(job, ChildEnd::TimedOut); });
    QObject::connect(&child.kill, &QTimer::timeout, &process, [&process] { process.kill(); });
    process.setStandardInputFile(QProcess::nullDevice());
    child.sinceStart.start();
    child.watchdog.start(run_.timeout);
    process.start(run_.program, jobs_[job].arguments);
    child.control.Started();
    TellRunning();
  }

  void AskToEnd(std::size_t job, ChildEnd why) {
    Child& child = *children_[job];
    if (child.why == ChildEnd::Ended) {
      child.why = why;
    }
    if (child.process.processId() > 0) {
      child.control.AskToEnd();
      child.kill.start(run_.grace);
    }
  }

  void Finished(std::size_t job, int exit, QProcess::ExitStatus status) {
    Child& child = *children_[job];
    ChildResult result;
    result.end = ChildEnd::Ended;
    result.exit = exit;
    result.report = QJsonDocument::fromJson(child.process.readAllStandardOutput()).object();
    result.errors = QString::fromUtf8(child.process.readAllStandardError());
    // One that had just done its work when it was asked to end has done it.
    const bool done = status == QProcess::NormalExit && exit == 0 && !result.report.isEmpty();
    if (!done && child.why != ChildEnd::Ended) {
      result.end = child.why;
    } else if (status == QProcess::CrashExit ||
               (result.report.isEmpty() && ChildProcess::WasEndedByAnother(exit))) {
      result.end = ChildEnd::Crashed;
    }
    End(job, std::move(result));
  }

  void End(std::size_t job, ChildResult result) {
    Child& child = *children_[job];
    constexpr double NanosecondsPerSecond = 1e9;
    result.seconds = static_cast<double>(child.sinceStart.nsecsElapsed()) / NanosecondsPerSecond;
    child.watchdog.stop();
    child.kill.stop();
    child.over = true;
    --running_;
    busyWires_.erase(jobs_[job].wire);
    all_.results[job] = std::move(result);
    if (run_.ended) {
      run_.ended(job, all_.results[job]);
    }
    TellRunning();
    loop_.quit();
  }

  void Interrupt() {
    const bool again = all_.interrupted;
    all_.interrupted = true;
    for (std::size_t job = 0; job < jobs_.size(); ++job) {
      if (children_[job] == nullptr || children_[job]->over) {
        continue;
      }
      if (again) {
        children_[job]->process.kill();
      } else {
        AskToEnd(job, ChildEnd::Interrupted);
      }
    }
    loop_.quit();
  }

  void TellRunning() const {
    if (run_.changed) {
      run_.changed(running_);
    }
  }

  const std::vector<ChildJob>& jobs_;
  const ChildRun& run_;
  ChildResults all_;
  std::vector<std::unique_ptr<Child>> children_; // one for each job that was started
  std::set<std::u16string> busyWires_;
  std::size_t running_ = 0;
  QEventLoop loop_;
};

} // namespace

ChildResults RunChildren(const std::vector<ChildJob>& jobs, const ChildRun& run) {
  return Runner(jobs, run).Run();
}

} // namespace loader::paramtool
