// Whole sheets, byte for byte: a fresh store and a plant in operation, of both models.
//
// A sheet that differs is left in the folder "printed" of the build's tests. Look at it; when the change is
// meant, copy it over the one in tests/files/golden.
#include "files/TextOutput.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/UserUnits.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "simulator/Plant.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

struct Sheet {
  const char* model;
  const char* setup;
  bool plant;
};

class PrintedSheets : public testing::TestWithParam<Sheet> {
protected:
  void SetUp() override {
    const auto [model, setup, plant] = GetParam();
    StartWithModel(platform, model);
    const std::string name = std::string("Text") + model + ".Ini";
    std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / name, platform.folder / name);
    if (plant) {
      const bool kov = ModelCode == "KOV";
      ParamStore = simulator::PlantSetup(ParamStore, kov ? simulator::Model::Kov : simulator::Model::Rug);
      UpdateUserUnitNames();
    }
    platform.time.now = {2026, 11, 21, 9, 5, 7};
  }
  static std::string Name() { return std::string(GetParam().model) + "-" + GetParam().setup + ".txt"; }
  ScriptedPlatform platform;
};

INSTANTIATE_TEST_SUITE_P(Setups, PrintedSheets,
                         testing::Values(Sheet{"KOV", "fresh", false}, Sheet{"KOV", "plant", true},
                                         Sheet{"RUG", "fresh", false}, Sheet{"RUG", "plant", true}),
                         [](const auto& tested) {
                           return std::string(tested.param.model) + "_" + tested.param.setup;
                         });

TEST_P(PrintedSheets, AreAsTheyWere) {
  ASSERT_TRUE(gFTextOutput(platform.folder / "sheet.txt"));
  const std::string printed = platform.ReadFile("sheet.txt");
  const std::filesystem::path golden =
      std::filesystem::path(LOADER_SOURCE_DIR) / "tests/files/golden" / Name();
  const std::string expected = std::filesystem::exists(golden) ? ReadWholeFile(golden) : std::string();
  if (printed != expected) {
    std::filesystem::create_directories(PRINTED_FOLDER);
    std::ofstream(std::filesystem::path(PRINTED_FOLDER) / Name(), std::ios::binary) << printed;
  }
  // Not as two texts: the lines are told by a look at both files.
  EXPECT_TRUE(printed == expected) << PRINTED_FOLDER << "/" << Name() << " is not " << golden;
}

TEST_P(PrintedSheets, ChangeNothingInTheStore) {
  const auto numbersAndTexts = [] {
    std::u16string all;
    for (const ParamSection& section : ParamStore) {
      for (const ParamItem& item : section.Items) {
        for (const ParamNumRecord& record : item.NumRecords) {
          all += DecimalText(record.Value) + u"," + DecimalText(record.ReadValue) + u",";
        }
        for (const ParamTextRecord& record : item.TextRecords) {
          all += record.Value + record.ReadValue;
        }
      }
    }
    return all;
  };
  const std::u16string before = numbersAndTexts();
  ASSERT_TRUE(gFTextOutput(platform.folder / "sheet.txt"));
  EXPECT_EQ(before, numbersAndTexts());
}

TEST_P(PrintedSheets, AreTextOfTheCodePageWithinThePage) {
  constexpr std::size_t PageColumns = 160;
  ASSERT_TRUE(gFTextOutput(platform.folder / "sheet.txt"));
  const std::string printed = platform.ReadFile("sheet.txt");
  EXPECT_EQ(ToCodePage(FromCodePage(printed)), printed);
  std::string_view rest = printed;
  for (int line = 1; !rest.empty(); ++line) {
    const std::string_view text = TakeLine(rest);
    EXPECT_LE(text.size(), PageColumns) << "line " << line;
    EXPECT_EQ(text.find('"'), std::string_view::npos) << "line " << line;
  }
}

} // namespace
} // namespace loader::test
