// What the benches share: the program's own platform with boxes that answer themselves, a recorder of its own
// process, and plain statistics.
#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/BarePlatform.h"
#include "qt/QtPlatform.h"

namespace loader::bench {

[[nodiscard]] double Median(std::vector<double> values);
// The value that one in ten lies below: what the work takes while nobody else wants the processor.
[[nodiscard]] double LowestTenth(std::vector<double> values);
// Wall clock time of a piece of work in milliseconds.
[[nodiscard]] double Milliseconds(const std::function<void()>& work);
// Processor time of this process so far, user and system, in milliseconds.
[[nodiscard]] double ProcessorMilliseconds();

// Tells the figure against its bar; whether it holds it.
bool Report(const char* what, double figure, double bar);
// Tells ours against theirs, by the medians and by the rounds that nothing disturbed; whether the one that
// the bar is for holds it.
bool ReportRatio(const std::string& what, const std::vector<double>& ours, const std::vector<double>& theirs,
                 double bar, bool medians);
// Whether a bench held its bars. The short forms run with the tests, on machines that have other things to
// do: what misses a bar there is measured again before it counts.
[[nodiscard]] bool Holds(bool shortForm, const std::function<bool()>& work);

// recorder-sim, from the folder of this program.
class RecorderProcess {
public:
  // std::runtime_error when it doesn't start.
  explicit RecorderProcess(const std::vector<std::string>& arguments);
  ~RecorderProcess();
  [[nodiscard]] int Port() const { return port_; } // of its TCP line

private:
  QProcess process_;
  int port_ = 0;
};

// The program's platform on a program folder of its own, with the model's store.
class BenchPlatform {
public:
  BenchPlatform();
  // Starts the program for the model, with or without its window.
  void Start(std::string_view model, bool withWindow);
  void CloseWindow();
  // Everything that is waiting in the event loop is done.
  void Settle();

  [[nodiscard]] std::filesystem::path Folder() const { return folder_.path().toStdString(); }

private:
  QTemporaryDir folder_;

public:
  int tcpPort = 0;
  QtPlatform qt;
  BareBoxes boxes; // every box is answered with OK
  Platform platform;
};

} // namespace loader::bench
