// The pages that ship, printed with the longest values: none leaves its field.
#include "files/TextOutput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "simulator/Plant.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

class Pages : public testing::TestWithParam<const char*> {
protected:
  void SetUp() override {
    StartWithModel(platform, GetParam());
    page =
        ReadWholeFile(std::filesystem::path(LOADER_DATA_DIR) / (std::string("Text") + GetParam() + ".Ini"));
    for (int unit = 1; unit <= Profile.UnitCount; ++unit) {
      UnitNames.at(UserUnitIndex(unit, Profile.UnitCount)) = u"99999999"; // reads as a number
    }
  }
  static void SetAllNumbers(int value) {
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        for (ParamNumRecord& record : item.NumRecords) {
          record.Value = static_cast<std::int16_t>(value);
        }
      }
    }
  }
  static void SetAllTexts(char16_t character, int bytes) {
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        for (ParamTextRecord& record : item.TextRecords) {
          SetText(record, std::u16string(static_cast<std::size_t>(record.ByteLength / bytes), character),
                  SlotBoth);
        }
      }
    }
  }
  static void SetEverywhere(std::string_view tag, int value) {
    for (ParamSection& section : ParamStore) {
      for (ParamItem& item : section.Items) {
        for (ParamNumRecord& record : item.NumRecords) {
          if (Trim(record.Tag) == tag) {
            record.Value = static_cast<std::int16_t>(value);
          }
        }
      }
    }
  }
  // The column of each byte of the line that belongs to a field.
  static std::vector<bool> InFields(std::string_view line) {
    std::vector<bool> in(line.size());
    bool inside = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
      in[at] = inside || line[at] == '"';
      inside = inside != (line[at] == '"');
    }
    return in;
  }
  void ExpectEverythingInItsField(const std::string& what) const {
    const std::string sheet = PrintedSheet(page);
    std::string_view printed = sheet;
    std::string_view rest = page;
    for (int number = 1; !rest.empty(); ++number) {
      const std::string_view line = TakeLine(rest);
      std::string row(TakeLine(printed));
      ASSERT_EQ(line.size(), row.size()) << what << ", line " << number;
      const std::vector<bool> inField = InFields(line);
      for (std::size_t at = 0; at < line.size(); ++at) {
        row[at] = inField[at] ? line[at] : row[at];
      }
      ASSERT_EQ(line, row) << what << ", line " << number;
    }
    EXPECT_TRUE(printed.empty());
  }

  ScriptedPlatform platform;
  std::string page;
};

INSTANTIATE_TEST_SUITE_P(BothModels, Pages, testing::Values("KOV", "RUG"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(Pages, HoldEveryEntryOfEveryList) {
  for (int value = -1; value <= 310; ++value) {
    SetAllNumbers(value);
    ExpectEverythingInItsField("value " + std::to_string(value));
  }
}

TEST_P(Pages, HoldTheEntriesThatATimingDecides) {
  for (int timing = 0; timing <= 7; ++timing) {
    for (const int value : {-1, 0, 3, 6, 9, 15, 16, 23, 29, 30, 31, 71, 72, 73, 32767, -32768}) {
      SetAllNumbers(value);
      SetEverywhere("MTM1", timing);
      SetEverywhere("ETRG", timing);
      ExpectEverythingInItsField("timing " + std::to_string(timing) + ", value " + std::to_string(value));
    }
  }
}

struct Sort {
  int kind, scaled, logarithm, fValue;
};
TEST_P(Pages, HoldTheLongestNumbers) {
  for (const Sort& sort : {Sort{40, 1, 0, 0}, Sort{40, 0, 0, 1}, Sort{32, 1, 0, 0}, Sort{30, 0, 0, 0},
                           Sort{32, 1, 1, 0}, Sort{32, 1, 1, 1}, Sort{1, 0, 0, 0}}) {
    for (const int value : {-32768, -32767, -9999, -9, 9, 9999, 14000, 32767}) {
      for (int position = 0; position <= 4; ++position) {
        SetAllNumbers(value);
        SetEverywhere("TYPE", sort.kind);
        SetEverywhere("SCAL", sort.scaled);
        SetEverywhere("TAIS", sort.logarithm);
        SetEverywhere("FTIO", sort.fValue);
        for (const char* point : {"POIN", "FPOI", "CONP"}) {
          SetEverywhere(point, position);
        }
        if (sort.logarithm == 1 && value == 9999) {
          SetEverywhere("SMIN", -9);
          SetEverywhere("SMAX", 9);
          SetEverywhere("MMIN", 1000);
          SetEverywhere("MMAX", 5000);
        }
        ExpectEverythingInItsField("kind " + std::to_string(sort.kind) + ", value " + std::to_string(value));
      }
    }
  }
}

TEST_P(Pages, HoldTheLongestTexts) {
  for (const auto& [character, bytes] :
       {std::pair{u'表', 2}, std::pair{u'W', 1}, std::pair{u'9', 1}, std::pair{u'"', 1}}) {
    SetAllTexts(character, bytes);
    ExpectEverythingInItsField("texts of " + std::to_string(character));
  }
}

TEST_P(Pages, HoldEveryUnit) {
  for (int unit = 0; unit < 168; ++unit) {
    SetEverywhere("UNIT", unit);
    SetEverywhere("SEUN", unit);
    ExpectEverythingInItsField("unit " + std::to_string(unit));
  }
}

// The user waits for it.
TEST_P(Pages, ArePrintedInATenthOfASecond) {
  ParamStore =
      simulator::PlantSetup(ParamStore, ModelCode == "KOV" ? simulator::Model::Kov : simulator::Model::Rug);
  platform.WriteFile("Text" + ModelCode + ".Ini", page);
  auto fastest = std::chrono::steady_clock::duration::max();
  for (int time = 0; time < 5; ++time) {
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(gFTextOutput(platform.folder / "sheet.txt"));
    fastest = std::min(fastest, std::chrono::steady_clock::now() - start);
  }
  const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(fastest).count();
  RecordProperty("microseconds", static_cast<int>(microseconds));
  EXPECT_LT(microseconds, 100000);
}

} // namespace
} // namespace loader::test
