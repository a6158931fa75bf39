// What the tests of the channel rules share.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "channel/modUtil.h"
#include "core/Text.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {

class ChannelRules : public ::testing::Test {
protected:
  void TearDown() override {
    StopTimer(WaitTimer2); // outlives the test
    WaitTimer2Count = 0;
  }

  void ExpectRangeMessage(std::u16string_view from, std::u16string_view to) {
    platform.boxes.Expect(std::u16string(from) + u"から" + std::u16string(to) + u"の値を入力してください");
  }
  void ExpectNotNumeric() { platform.boxes.Expect(u"数字ではありません。"); }

  ScriptedPlatform platform;
};

// A screen of one field.
struct FieldScreen : Screen {
  explicit FieldScreen(std::string fieldName = "txtStMin")
      : Screen("frmSample"), field(*this, std::move(fieldName)) {}
  TextField field;
};

} // namespace loader::test
