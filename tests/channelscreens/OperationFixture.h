// The screen of an operation channel as a user has it before him, on the scripted platform.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "channelscreens/frmOperationChSet.h"
#include "core/Text.h"
#include "fields/NamedControls.h"
#include "tests/channelscreens/Desk.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {

class OperationScreen : public ::testing::Test {
protected:
  void SetUp() override { Start("KOV"); }
  void TearDown() override {
    ExpectNoneLeft();
    StopTimer(WaitTimer2); // the guard of the last refusal
  }
  void Start(std::string_view model) { StartWithModel(platform, model); }
  void ExpectNoneLeft() {
    platform.boxes.ExpectNoneLeft();
    platform.screens.ExpectNoneLeft();
  }
  // Opens the screen on a channel (its item of section C); what `act` does with it, then it is closed.
  template <typename Act> void Open(int channel, Act act) {
    platform.screens.Expect<OperationChSetScreen>("frmOperationChSet", act);
    ShowOperationChSet(channel, [this] { ++applied; });
  }
  void ExpectMessage(std::string_view text) { platform.boxes.Expect(FromUtf8(text)); }

  static std::string Shown(Screen& screen, std::string_view field) {
    return ToUtf8(FieldNamed(screen, field).text);
  }
  static std::string Caption(Screen& screen, std::string_view label) {
    return ToUtf8(LabelNamed(screen, label).caption);
  }
  static int Row(Screen& screen, std::string_view list) { return ListNamed(screen, list).index; }
  static bool Enabled(Screen& screen, std::string_view control) {
    return ControlNamed(screen, control).enabled;
  }
  static bool Visible(Screen& screen, std::string_view control) {
    return ControlNamed(screen, control).visible;
  }
  // Types into the field and leaves it.
  bool Enter(Screen& screen, std::string_view field, std::string_view text) {
    TextField& box = FieldNamed(screen, field);
    return user.Type(box, FromUtf8(text)) && user.Leave(box);
  }
  bool Pick(Screen& screen, std::string_view list, int row) {
    return user.Choose(ListNamed(screen, list), row);
  }
  bool Press(Screen& screen, std::string_view button) {
    return user.Click(static_cast<Button&>(ControlNamed(screen, button)));
  }

  ScriptedPlatform platform;
  ScriptedUser user;
  int applied = 0; // how often "適用" told that it has stored
};

} // namespace loader::test
