// The parameter loader: builds the platform and calls Main. Nothing else.
#include <cstdio>

#include "core/Text.h"
#include "core/modMain.h"
#include "mainwindow/UserGuide.h"
#include "mainwindow/frmParamLoader.h"
#include "platform/Platform.h"
#include "qt/Application.h"
#include "qt/ProgramFolder.h"
#include "qt/QtPlatform.h"
#include "qt/System.h"

namespace {

// Beside the message of the window: what the system says of the device.
void PrintDeviceFailure(std::u16string_view device, std::u16string_view reason) {
  std::fprintf(stderr, "parameter-loader: %s: %s\n", loader::ToUtf8(device).c_str(),
               loader::ToUtf8(reason).c_str());
}

} // namespace

int main(int argc, char** argv) {
  loader::PrepareDesktop();
  loader::Application application(argc, argv);
  const loader::ProgramFolder folder = loader::ChooseProgramFolder();
  loader::InstalledGuides = folder.guides;
  loader::WhenDeviceFails = PrintDeviceFailure;
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
