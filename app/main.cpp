// The parameter loader: builds the platform and calls Main. Nothing else.
#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "platform/Platform.h"
#include "qt/Application.h"
#include "qt/ProgramFolder.h"
#include "qt/QtPlatform.h"

int main(int argc, char** argv) {
  loader::Application application(argc, argv);
  const loader::ProgramFolder folder = loader::ChooseProgramFolder();
  loader::QtPlatform platform({.programFolder = folder.path});
  bool started = false;
  const int code = platform.screens.Run([&] {
    if (!folder.problem.empty()) {
      loader::ShowMessage(folder.problem, loader::BoxIcon::Exclamation);
    }
    started = loader::Main(loader::OpenMainWindow);
  });
  loader::frmParamLoader.reset(); // its timers end while there is a platform
  return started ? code : 1;
}
