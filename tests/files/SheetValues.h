// What the tests of the printed values share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "core/Text.h"
#include "files/TextOutput.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {

struct Said {
  const char* tag;
  int value;
  const char* text;
};

class SheetValues : public testing::Test {
protected:
  void SetUp() override { StartWithModel(platform, "KOV"); }

  static std::string Text(std::string_view section, int item, std::string_view tag) {
    const bool ofChannel = section == "C" || section == "A";
    return ToUtf8(ofChannel ? gFTextValueChannel(section, item, tag) : gFTextValueOther(section, item, tag));
  }
  static void Expect(std::string_view section, int item, const std::vector<Said>& rows) {
    for (const Said& row : rows) {
      Put(section, item, row.tag, row.value);
      EXPECT_EQ(row.text, Text(section, item, row.tag)) << section << row.tag << " " << row.value;
    }
  }
  ScriptedPlatform platform;
};

} // namespace loader::test
