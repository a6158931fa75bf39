// How long the window takes: opening, refresh, and the parameter file. Figures for information, no bars.
#include <QPixmap>
#include <cstdio>
#include <stdexcept>

#include "bench/BenchPlatform.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"
#include "mainwindow/ParameterTables.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/Application.h"

namespace loader::bench {
namespace {

void Report(const char* what, int rounds, const std::function<void()>& work) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    times.push_back(Milliseconds(work));
  }
  std::printf("  %-52s %9.3f ms (median of %d)\n", what, Median(times), rounds);
  std::fflush(stdout);
}

void Require(bool succeeded) {
  if (!succeeded) {
    throw std::runtime_error("a step of the bench failed");
  }
}

void ScreensOf(BenchPlatform& bench, const char* model) {
  std::printf("%s\n", model);
  Report("store from InitSet.Ini, window open and painted", 10, [&] {
    bench.CloseWindow();
    bench.Start(model, true);
    (void)bench.qt.screens.WindowOf(*frmParamLoader)->grab();
  });
  Report("RefreshAll, the records", 50, [] { RefreshAll(); });
  Report("RefreshAll, shown and painted", 50, [&] {
    RefreshAll();
    bench.Settle();
    (void)bench.qt.screens.WindowOf(*frmParamLoader)->grab();
  });
  Report("nothing has changed: what DoEvents looks through", 200, [&] { bench.qt.userInterface.Refresh(); });
  const std::filesystem::path file = bench.Folder() / "bench.txt";
  Report("gFSaveParamFile", 50, [&] { Require(gFSaveParamFile(file)); });
  Report("gFLoadInitSetteiData", 50, [] { Require(gFLoadInitSetteiData()); });
  Report("gFLoadParamFile", 50, [&] { Require(gFLoadParamFile(file)); });
  bench.CloseWindow();
}

} // namespace
} // namespace loader::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const loader::Application application(argc, argv);
  try {
    loader::bench::BenchPlatform bench;
    for (const char* model : {"RUG", "KOV"}) {
      loader::bench::ScreensOf(bench, model);
    }
  } catch (const std::exception& failure) {
    std::printf("bench-screens: FAILED: %s\n", failure.what());
    return 1;
  }
  return 0;
}
