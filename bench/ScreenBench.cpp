// How long the window takes: from the start of the program to the painted window against a bare window with a
// table, refresh, page changes, dialogs, and the memory it holds; the parameter file besides, for
// information.
#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTabWidget>
#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/BenchPlatform.h"
#include "bench/StartUp.h"
#include "channelscreens/frmChSetting.h"
#include "channelscreens/frmOperationChSet.h"
#include "core/ModelProfile.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "dialogs/frmConstSetting.h"
#include "dialogs/frmEMailTriggerSetting.h"
#include "dialogs/frmGroupSetting.h"
#include "dialogs/frmMsgSetting.h"
#include "dialogs/frmSelectUnit.h"
#include "dialogs/frmUnitSetting.h"
#include "files/ParameterFile.h"
#include "mainwindow/ParameterTables.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/Application.h"

namespace loader::bench {
namespace {

struct Bars {
  double start;   // times a bare window with one table
  double refresh; // milliseconds, RefreshAll without painting
  double page;    // milliseconds, painting included
  double dialog;  // milliseconds, from the double click to the painted dialog
  double model;   // milliseconds, a change of model without painting
  double residentMegabytes;
  bool medians; // the bar of the start is for the medians; else for the undisturbed rounds
};
constexpr Bars Prescribed{1.5, 10, 20, 50, 50, 90, true};
// For the short form that runs with the tests: room in the ratio for a machine that has other things to do.
// The other bars lie far enough above what they measure.
constexpr Bars Wide{1.8, 10, 20, 50, 50, 90, false};

std::vector<double> Times(int rounds, const std::function<void()>& work) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    times.push_back(Milliseconds(work));
  }
  return times;
}

void Tell(const char* what, int rounds, const std::function<void()>& work) {
  std::printf("  %-58s %9.3f ms (median of %d)\n", what, Median(Times(rounds, work)), rounds);
  std::fflush(stdout);
}

std::string Figure(double milliseconds) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.2f ms", milliseconds);
  return text.data();
}

void Require(bool succeeded) {
  if (!succeeded) {
    throw std::runtime_error("a step of the bench failed");
  }
}

// A ratio without a bar.
void TellRatio(const char* what, const std::vector<double>& ours, const std::vector<double>& theirs) {
  std::printf("  %-58s %8.4f (undisturbed rounds %.4f)\n", what, Median(ours) / Median(theirs),
              LowestTenth(ours) / LowestTenth(theirs));
}

bool StartBench(BenchPlatform& bench, int rounds, const Bars& bars) {
  const std::string folder = bench.Folder().string();
  std::vector<double> bare;
  std::vector<double> oneCell;
  std::vector<double> empty;
  std::vector<double> ours;
  double resident = 0;
  for (int round = 0; round < rounds; ++round) {
    bare.push_back(MeasureStart({"bench-start-bare"}).milliseconds);
    oneCell.push_back(MeasureStart({"bench-start-bare", "--one-cell"}).milliseconds);
    empty.push_back(MeasureStart({"bench-start-bare", "--empty"}).milliseconds);
    const StartUp start = MeasureStart({"bench-start-loader", folder});
    ours.push_back(start.milliseconds);
    resident = std::max(resident, start.residentMegabytes);
  }
  std::printf("Start to the painted window, %d rounds: ours %.1f ms, bare window with as many cells %.1f ms, "
              "with one cell %.1f ms, with an empty table %.1f ms\n",
              rounds, Median(ours), Median(bare), Median(oneCell), Median(empty));
  TellRatio("ours / bare window with one Japanese cell", ours, oneCell);
  TellRatio("ours / bare window with an empty table", ours, empty);
  const bool fast =
      ReportRatio("start, ours / bare window with as many cells", ours, bare, bars.start, bars.medians);
  std::printf("  %-58s %8.1f MB\n", "resident once painted", resident);
  const double all = MeasureStart({"bench-start-loader", folder, "--all-pages"}).residentMegabytes;
  return Report("resident with all pages shown, MB", all, bars.residentMegabytes) && fast;
}

// The slowest page, by the median of its changes: the first visit makes the page, the others only show it.
bool PageBench(BenchPlatform& bench, const char* model, int rounds, const Bars& bars) {
  std::vector<std::vector<double>> first(PageCount);
  std::vector<std::vector<double>> again(PageCount);
  for (int round = 0; round < rounds; ++round) {
    bench.CloseWindow();
    bench.Start(model, true);
    QWidget& window = *bench.qt.screens.WindowOf(*frmParamLoader);
    (void)window.grab();
    auto& pages = *window.findChild<QTabWidget*>();
    for (const bool revisited : {false, true}) {
      for (int step = 1; step <= PageCount; ++step) {
        const int page = step % PageCount; // the window opens on page 0
        // grab() lays out and paints at once; what the event loop would paint at its next turn is let go
        // unmeasured.
        const double took = Milliseconds([&] {
          pages.setCurrentIndex(page);
          (void)window.grab();
        });
        bench.Settle();
        Require(pages.currentIndex() == page && pages.currentWidget()->isVisible());
        // The first page is made when the window opens.
        (revisited || page == 0 ? again : first)[static_cast<std::size_t>(page)].push_back(took);
      }
    }
  }
  double slowestFirst = 0;
  double slowestAgain = 0;
  for (std::size_t page = 0; page < again.size(); ++page) {
    const double made = first[page].empty() ? 0 : Median(first[page]);
    const std::string visit = first[page].empty() ? "made with the window" : Figure(made);
    std::printf("  page %zu: first visit %s, later %s\n", page, visit.c_str(),
                Figure(Median(again[page])).c_str());
    slowestFirst = std::max(slowestFirst, made);
    slowestAgain = std::max(slowestAgain, Median(again[page]));
  }
  const bool made = Report("page change with painting, first visit, ms", slowestFirst, bars.page);
  return Report("page change with painting, later, ms", slowestAgain, bars.page) && made;
}

struct Opening {
  const char* name;
  void (*show)(); // returns when the dialog has closed
};
constexpr std::array Dialogs{
    Opening{"frmGroupSetting", [] { ShowGroupSetting(1); }},
    Opening{"frmMsgSetting", [] { ShowMsgSetting(1); }},
    Opening{"frmUnitSetting", [] { ShowUnitSetting(1); }},
    Opening{"frmSelectUnit", [] { static_cast<void>(SelectUnit(38, 40, false)); }},
    Opening{"frmConstSetting", [] { ShowConstSetting(1); }},
    Opening{"frmEMailTriggerSetting", [] { ShowEMailTriggerSetting(1, {}); }},
    Opening{"frmChSetting", [] { ShowChSetting(1); }},
    Opening{"frmOperationChSet", [] { ShowOperationChSet(Profile.FirstOperationChannel); }},
};

// From the call to the dialog painted as its event loop finds it; the slowest one counts.
bool DialogBench(int rounds, const Bars& bars) {
  double slowest = 0;
  for (const Opening& opening : Dialogs) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
      QElapsedTimer clock;
      QMetaObject::invokeMethod(
          qApp,
          [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog != nullptr && dialog->objectName() == QLatin1String(opening.name)) {
              (void)dialog->grab();
              times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
            }
            if (dialog != nullptr) {
              dialog->close();
            }
          },
          Qt::QueuedConnection);
      clock.start();
      opening.show();
    }
    Require(times.size() == static_cast<std::size_t>(rounds));
    std::printf("  %-58s %9.3f ms (median of %d)\n", opening.name, Median(times), rounds);
    slowest = std::max(slowest, Median(times));
  }
  return Report("opening a dialog with painting, ms", slowest, bars.dialog);
}

bool RefreshBench(int rounds, const Bars& bars) {
  return Report("RefreshAll, painting off, ms", Median(Times(rounds, [] { RefreshAll(); })), bars.refresh);
}

// There and back, of a set-up in which every number has been changed; the slower way counts. The
// question is answered at once.
bool ModelChangeBench(BenchPlatform& bench, int rounds, const Bars& bars) {
  QWidget& window = *bench.qt.screens.WindowOf(*frmParamLoader);
  std::array<std::vector<double>, 2> ways;
  std::array<std::vector<double>, 2> painted;
  for (int round = 0; round < 2 * rounds; ++round) {
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        for (ParamNumRecord& record : item.NumRecords) {
          record.Value = static_cast<std::int16_t>(record.DefaultValue + 1);
        }
      }
    }
    const std::string before = ModelCode;
    const auto way = static_cast<std::size_t>(round % 2);
    const double took =
        Milliseconds([] { SelectRow(frmParamLoader->cmbType, 1 - frmParamLoader->cmbType.index); });
    painted[way].push_back(took + Milliseconds([&] {
                             bench.qt.userInterface.Refresh();
                             (void)window.grab();
                           }));
    ways[way].push_back(took);
    bench.Settle();
    Require(ModelCode != before);
  }
  std::printf("  change of model with painting: %s\n",
              Figure(std::max(Median(painted[0]), Median(painted[1]))).c_str());
  return Report("change of model, painting off, ms", std::max(Median(ways[0]), Median(ways[1])), bars.model);
}

void TellTheRest(BenchPlatform& bench, const char* model) {
  Tell("store from InitSet.Ini, window open and painted", 10, [&] {
    bench.CloseWindow();
    bench.Start(model, true);
    (void)bench.qt.screens.WindowOf(*frmParamLoader)->grab();
  });
  Tell("RefreshAll, shown and painted", 50, [&] {
    RefreshAll();
    bench.Settle();
    (void)bench.qt.screens.WindowOf(*frmParamLoader)->grab();
  });
  Tell("nothing has changed: what DoEvents looks through", 200, [&] { bench.qt.userInterface.Refresh(); });
  const std::filesystem::path file = bench.Folder() / "bench.txt";
  Tell("gFSaveParamFile", 50, [&] { Require(gFSaveParamFile(file)); });
  Tell("gFLoadInitSetteiData", 50, [] { Require(gFLoadInitSetteiData()); });
  Tell("gFLoadParamFile", 50, [&] { Require(gFLoadParamFile(file)); });
}

// True when all bars are held.
bool RunAll(bool shortForm) {
  const Bars& bars = shortForm ? Wide : Prescribed;
  const auto measure = [&](const std::function<bool()>& work) { return Holds(shortForm, work); };
  bool held = true;
  BenchPlatform bench;
  for (const char* model : {"RUG", "KOV"}) {
    std::printf("%s\n", model);
    bench.Start(model, true); // writes the LOADER.INI that the started processes find
    held = measure([&] { return RefreshBench(shortForm ? 10 : 50, bars); }) && held;
    held = measure([&] { return PageBench(bench, model, shortForm ? 3 : 10, bars); }) && held;
    held = measure([&] { return DialogBench(shortForm ? 3 : 20, bars); }) && held;
    held = measure([&] { return ModelChangeBench(bench, shortForm ? 3 : 10, bars); }) && held;
    held = measure([&] { return StartBench(bench, shortForm ? 10 : 30, bars); }) && held;
    if (!shortForm) {
      TellTheRest(bench, model);
    }
    bench.CloseWindow();
    if (shortForm) {
      break; // RUG has the larger tables
    }
  }
  return held;
}

} // namespace
} // namespace loader::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const bool shortForm = argc == 2 && std::string_view(argv[1]) == "--short";
  if (argc > 1 && !shortForm) {
    std::fputs("usage: bench-screens [--short]\n", stderr);
    return 2;
  }
  const loader::Application application(argc, argv);
  try {
    return loader::bench::RunAll(shortForm) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::printf("bench-screens: FAILED: %s\n", failure.what());
    return 1;
  }
}
