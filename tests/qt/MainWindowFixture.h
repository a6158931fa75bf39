// The real main window on the real platform, in a program folder of its own.
#pragma once

#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>

#include "core/modMain.h"
#include "mainwindow/frmParamLoader.h"
#include "qt/QtPlatform.h"

namespace loader::test {

struct MainWindowTest : testing::Test {
  QTemporaryDir folder;
  std::unique_ptr<QtPlatform> platform;

  ~MainWindowTest() override {
    if (platform != nullptr) {
      platform->screens.EndProgram();
      frmParamLoader.reset(); // its timers end while there is a platform
    }
  }
  // `model`: TYPE of LOADER.INI.
  void Start(const char* model) {
    const std::filesystem::path program = folder.path().toStdString();
    std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "InitSet.Ini",
                               program / "InitSet.Ini");
    std::ofstream(program / "LOADER.INI", std::ios::binary) << "[LOADER]\r\nTYPE=" << model << "\r\n";
    platform = std::make_unique<QtPlatform>(
        QtPlatformOptions{.programFolder = program, .makeForm = MakeForm, .portMap = {}});
    ASSERT_TRUE(Main(OpenMainWindow));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
  }
  QWidget& Window() { return *platform->screens.WindowOf(*frmParamLoader); }
  template <typename Widget> Widget& Find(const char* name) {
    return *Window().findChild<Widget*>(QString::fromLatin1(name));
  }
};

} // namespace loader::test
