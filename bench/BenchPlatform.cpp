#include "bench/BenchPlatform.h"

#include <sys/resource.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"

namespace loader::bench {

namespace fs = std::filesystem;

double Median(std::vector<double> values) {
  if (values.empty()) {
    throw std::logic_error("a median of nothing");
  }
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double LowestTenth(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values.at(values.size() / 10);
}

double Milliseconds(const std::function<void()>& work) {
  constexpr double NanosecondsInOne = 1e6;
  QElapsedTimer elapsed;
  elapsed.start();
  work();
  return static_cast<double>(elapsed.nsecsElapsed()) / NanosecondsInOne;
}

double ProcessorMilliseconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto milliseconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

bool Report(const char* what, double figure, double bar) {
  const bool held = figure <= bar;
  std::printf("  %-58s %8.4f  bar %.3f  %s\n", what, figure, bar, held ? "held" : "MISSED");
  std::fflush(stdout);
  return held;
}

bool ReportRatio(const std::string& what, const std::vector<double>& ours, const std::vector<double>& theirs,
                 double bar, bool medians) {
  const bool held = Report(what.c_str(), Median(ours) / Median(theirs), bar);
  const bool undisturbed =
      Report("  the same of the rounds that nothing disturbed", LowestTenth(ours) / LowestTenth(theirs), bar);
  return medians ? held : undisturbed;
}

bool Holds(bool shortForm, const std::function<bool()>& work) {
  constexpr int TriesOfShortForm = 3;
  bool held = false;
  for (int tries = shortForm ? TriesOfShortForm : 1; tries > 0 && !held; --tries) {
    held = work();
  }
  return held;
}

RecorderProcess::RecorderProcess(const std::vector<std::string>& arguments) {
  QStringList words;
  for (const std::string& argument : arguments) {
    words << QString::fromStdString(argument);
  }
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/recorder-sim"), words);
  constexpr int Patience = 10000;
  if (!process_.waitForStarted() || !process_.waitForReadyRead(Patience)) {
    throw std::runtime_error("recorder-sim does not start");
  }
  const QString line = QString::fromUtf8(process_.readLine()).trimmed();
  port_ = line.section(u':', -1).toInt(); // 0 of a pseudo-terminal
}

RecorderProcess::~RecorderProcess() {
  process_.terminate();
  process_.waitForFinished();
}

BenchPlatform::BenchPlatform()
    : qt({.programFolder = Folder(), .makeForm = MakeForm, .portMap = [this](int) { return tcpPort; }}),
      platform(WithParts(qt.platform, {.boxes = &boxes})) {
  boxes.answer = BoxAnswer::Ok;
  const fs::path data = QCoreApplication::applicationDirPath().toStdString();
  fs::copy_file(data / "InitSet.Ini", Folder() / "InitSet.Ini");
  SetPlatform(&platform);
}

void BenchPlatform::Start(std::string_view model, bool withWindow) {
  std::ofstream(Folder() / "LOADER.INI", std::ios::binary)
      << "[LOADER]\r\nTYPE=" << (model == "RUG" ? 1 : 0)
      << "\r\nCOMMUNICATION=1\r\nCOM=0\r\nSTNO=1\r\nIP=127.0.0.1\r\n";
  if (!Main([withWindow] {
        if (withWindow) {
          OpenMainWindow();
        }
      })) {
    throw std::runtime_error("the program does not start");
  }
  Settle();
}

void BenchPlatform::CloseWindow() {
  if (frmParamLoader) {
    qt.screens.Close(*frmParamLoader);
    Settle();
  }
}

void BenchPlatform::Settle() {
  qt.userInterface.Refresh();
  QCoreApplication::processEvents();
}

} // namespace loader::bench
