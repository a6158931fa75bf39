// Folders of a program, as an installation or an unpacked archive leaves them, for the tests of the program
// folder.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string_view>

#include "qt/ProgramFolder.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace fs = std::filesystem;

namespace loader::test {

class ProgramFolders : public testing::Test {
protected:
  static void Put(const fs::path& into, std::string_view content) {
    fs::create_directories(into);
    for (const char* name : {"InitSet.Ini", "TextKOV.Ini", "TextRUG.Ini"}) {
      std::ofstream(into / name) << content;
    }
  }

  TemporaryFolder folder{"program-folder-test-"};
  fs::path bin = folder / "プログラム 1/bin";
  fs::path share = folder / "プログラム 1/share/parameter-loader";
  fs::path home = folder / "data";
};

} // namespace loader::test
