// The parameter loader: builds the platform and calls Main. Nothing else.
#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/Application.h"
#include "qt/QtPlatform.h"

int main(int argc, char** argv) {
  loader::Application application(argc, argv);
  loader::QtPlatform platform;
  bool started = false;
  const int code = platform.screens.Run([&] { started = loader::Main(loader::OpenMainWindow); });
  loader::frmParamLoader.reset(); // its timers end while there is a platform
  return started ? code : 1;
}
