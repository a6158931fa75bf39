// A program of its own, for a plugin that another test has loaded stays.
#include <gtest/gtest.h>

#include <QPixmap>
#include <QWidget>
#include <fstream>

#include "qt/Forms.h"

namespace loader::test {
namespace {

// Reads which files this process has mapped.
std::string MappedFiles() {
  std::ifstream maps("/proc/self/maps");
  return {std::istreambuf_iterator<char>(maps), {}};
}

// Each of them is looked for, read and linked before the window is seen.
TEST(PicturePlugins, TheMainWindowIsPaintedWithoutAny) {
  ASSERT_NE(std::string::npos, MappedFiles().find("/platforms/")) << "how a plugin in use is told";
  const auto window = MakeForm("frmParamLoader");
  window->show();
  ASSERT_FALSE(window->grab().isNull());
  for (const char* folder : {"/iconengines/", "/imageformats/"}) {
    EXPECT_EQ(std::string::npos, MappedFiles().find(folder)) << folder;
  }
}

} // namespace
} // namespace loader::test
