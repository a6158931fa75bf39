// The loader from its start to its painted window: its own main function with a watch.
//   bench-start-loader FOLDER             FOLDER holds InitSet.Ini and LOADER.INI
//   bench-start-loader FOLDER --all-pages goes through all pages before it tells its memory
#include <QTabWidget>
#include <string_view>

#include "bench/PaintedWatch.h"
#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/Application.h"
#include "qt/QtPlatform.h"

namespace {

void PaintAllPages(QWidget& window) {
  auto* pages = window.findChild<QTabWidget*>();
  for (int page = 0; pages != nullptr && page < pages->count(); ++page) {
    pages->setCurrentIndex(page);
    QCoreApplication::processEvents();
    (void)window.grab();
  }
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: bench-start-loader FOLDER [--all-pages]\n", stderr);
    return 2;
  }
  const bool allPages = argc > 2 && std::string_view(argv[2]) == "--all-pages";
  loader::Application application(argc, argv);
  loader::QtPlatform platform({.programFolder = argv[1], .makeForm = loader::MakeForm, .portMap = {}});
  const loader::bench::PaintedWatch watch([&] {
    if (allPages) {
      PaintAllPages(*platform.screens.WindowOf(*loader::frmParamLoader));
    }
    loader::bench::TellPaintedAndLeave();
  });
  (void)platform.screens.Run([] { (void)loader::Main(loader::OpenMainWindow); });
  return 1; // ended before anything was painted
}
