// What the tests of the companion's reports share: a program without a window, and files of its own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "companion/SetUps.h"
#include "core/ModelProfile.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"
#include "platform/BarePlatform.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {

class CompanionTest : public testing::Test {
protected:
  CompanionTest() { TakeStartValues(); }

  std::u16string WriteFile(std::string_view name, std::string_view bytes) const { // NOLINT
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return (folder / name).u16string();
  }
  // The parameter file of the initial settings of a model: "default:KOV".
  static std::string BytesOf(std::string_view name) {
    WholeSetUp setUp = InitialSetUp(name.substr(name.find(':') + 1), Language::English);
    return WithSetUp(setUp, [] { return ParamFileBytes(); });
  }

  TemporaryFolder folder{"companion-test-"};
  BarePlatform platform{{.programFolder = LOADER_DATA_DIR}};
};

} // namespace loader::test
