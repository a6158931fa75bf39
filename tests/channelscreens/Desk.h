// The screen of the measuring channels with a user before it, on the scripted platform.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "channelscreens/frmChSetting.h"
#include "core/ModelProfile.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {

struct Desk {
  explicit Desk(std::string_view model = "KOV") {
    StartWithModel(platform, model);
    StopTimer(WaitTimer2); // a test before may have ended with a refused field
  }

  // A fresh screen on the channel, counted from 0.
  void Open(int channel = 0) {
    screen = std::make_unique<ChSettingScreen>([this] { ++applied; });
    LoadEntry(screen->browsing, channel);
  }
  // Section C of channel 0 from pairs of tag and value, then the screen on it.
  void OpenWith(std::initializer_list<std::pair<std::string_view, int>> values) {
    for (const auto& [tag, value] : values) {
      Put(tag[0] == 'A' && tag.ends_with("VL") ? "A" : "C", 0, tag, value);
    }
    Open(0);
  }

  TextField& Text(std::string_view name) { return FieldNamed(*screen, name); }
  ListBox& List(std::string_view name) { return ListNamed(*screen, name); }
  bool Enabled(std::string_view name) { return ControlNamed(*screen, name).enabled; }
  std::string Shown(std::string_view name) { return ToUtf8(Text(name).text); }
  std::string Caption(std::string_view name) { return ToUtf8(LabelNamed(*screen, name).caption); }
  int Row(std::string_view name) { return List(name).index; }

  // What the user does.
  bool Pick(std::string_view name, int row) { return user.Choose(List(name), row); }
  bool PickKind(int kind) {
    const auto& data = List("cmbInputType").itemData;
    const auto found = std::find(data.begin(), data.end(), kind);
    EXPECT_NE(data.end(), found) << kind;
    return Pick("cmbInputType", static_cast<int>(found - data.begin()));
  }
  // Types and leaves the field.
  bool Type(std::string_view name, std::string_view text) {
    return user.Type(Text(name), FromUtf8(text)) && user.Leave(Text(name));
  }
  bool Apply() { return user.Click(screen->browsing.apply); }
  void ExpectMessage(std::string_view text) { platform.boxes.Expect(FromUtf8(text)); }

  ScriptedPlatform platform;
  ScriptedUser user;
  std::unique_ptr<ChSettingScreen> screen;
  int applied = 0;
};

// What each control shows: text, row, caption; and, with `marks`, whether it can be used.
inline std::map<std::string, std::string> ShownOf(const Screen& screen) {
  std::map<std::string, std::string> shown;
  for (const Control* control : screen.controls) {
    switch (control->kind) {
    case ControlKind::TextField:
      shown[control->name] = ToUtf8(static_cast<const TextField*>(control)->text);
      break;
    case ControlKind::ListBox:
      shown[control->name] = std::to_string(static_cast<const ListBox*>(control)->index);
      break;
    case ControlKind::Label:
      shown[control->name] = ToUtf8(static_cast<const Label*>(control)->caption);
      break;
    default:
      break;
    }
  }
  return shown;
}

// The same without the units beside the numbers, which follow from the rest (UnitsBesideTest).
inline std::map<std::string, std::string> FieldsShownOf(const Screen& screen) {
  std::map<std::string, std::string> shown = ShownOf(screen);
  for (const char* unit : {"lblStUnit", "lblIndUnit", "lblRecUnit", "lblAlarmUnit"}) {
    EXPECT_EQ(1U, shown.erase(unit)) << unit;
  }
  return shown;
}

// Numbers and texts of the whole store.
struct WholeStore {
  std::vector<std::int16_t> numbers = AllNumbers();
  std::vector<std::u16string> texts;
  WholeStore() {
    for (const ParamSection& section : ParamStore) {
      for (const ParamItem& item : section.Items) {
        for (const ParamTextRecord& record : item.TextRecords) {
          texts.push_back(record.Value);
        }
      }
    }
  }
  bool operator==(const WholeStore&) const = default;
};

} // namespace loader::test
