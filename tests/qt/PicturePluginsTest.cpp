// A program of its own, for a plugin that another test has loaded stays.
#include <gtest/gtest.h>

#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <filesystem>

#include "qt/Forms.h"
#include "tests/support/System.h"

namespace loader::test {
namespace {

// Whether a plugin of this kind is in use: it is named by its file, wherever that lies.
bool InUse(const std::string& kind) {
  const auto ofKind = [folder = std::filesystem::path(kind)](const std::string& library) {
    return std::filesystem::path(library).parent_path().filename() == folder;
  };
  const std::vector<std::string> loaded = LoadedLibraries();
  return std::any_of(loaded.begin(), loaded.end(), ofKind);
}

// Each of them is looked for, read and linked before the window is seen.
TEST(PicturePlugins, TheMainWindowIsPaintedWithoutAny) {
  ASSERT_TRUE(InUse("platforms")) << "how a plugin in use is told";
  const auto window = MakeForm("frmParamLoader");
  window->show();
  ASSERT_FALSE(window->grab().isNull());
  for (const char* folder : {"iconengines", "imageformats"}) {
    EXPECT_FALSE(InUse(folder)) << folder;
  }
}

} // namespace
} // namespace loader::test
