// What the tests of the side dialogs share: the counts of the two models, the dialogs shown to a script, what
// of the store has changed.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "dialogs/frmConstSetting.h"
#include "dialogs/frmEMailTriggerSetting.h"
#include "dialogs/frmGroupSetting.h"
#include "dialogs/frmMsgSetting.h"
#include "dialogs/frmUnitSetting.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader::test {

using Texts = std::vector<std::string>;

// --- The models, as their manuals have them

struct ModelFacts {
  const char* code;
  int groups;
  int messages;
  int units;
  int constants;
  int triggers;
  int channels;      // measuring and operation channels
  int digitalInputs; // that a message or a mail may wait for
};
inline constexpr ModelFacts Kov{"KOV", 4, 10, 12, 20, 8, 30, 10};
inline constexpr ModelFacts Rug{"RUG", 8, 10, 12, 60, 8, 72, 16};
inline void PrintTo(const ModelFacts& model, std::ostream* out) {
  *out << model.code;
}

// --- What the lists offer, written out

// 12 in full-width digits.
inline std::string WideNumber(int number) {
  std::string text;
  for (const char digit : std::to_string(number)) {
    text += ToUtf8(std::u16string(1, static_cast<char16_t>(u'０' + (digit - '0'))));
  }
  return text;
}
// "DI1" to "DI10".
inline Texts Numbered(std::string_view before, int count, int first = 1) {
  Texts texts;
  for (int n = first; n < first + count; ++n) {
    texts.push_back(std::string(before) + std::to_string(n));
  }
  return texts;
}
inline Texts Behind(std::string_view head, Texts texts) {
  texts.insert(texts.begin(), std::string(head));
  return texts;
}
inline Texts GroupChannelTexts(const ModelFacts& model) {
  Texts texts{"ﾁｬﾈﾙ無し"};
  for (int channel = 1; channel <= model.channels; ++channel) {
    texts.push_back("ﾁｬﾈﾙ" + WideNumber(channel));
  }
  return texts;
}

inline Texts Items(const ListBox& list) {
  Texts items;
  for (const std::u16string& item : list.items) {
    items.push_back(ToUtf8(item));
  }
  return items;
}
// Rows and their values: 0, 1, 2, ... from `first`.
inline void ExpectRows(const ListBox& list, const Texts& texts, int first = 0) {
  EXPECT_EQ(texts, Items(list)) << list.name;
  ASSERT_EQ(texts.size(), list.itemData.size()) << list.name;
  for (std::size_t row = 0; row < texts.size(); ++row) {
    ASSERT_EQ(first + static_cast<int>(row), list.itemData[row]) << list.name;
  }
}

// --- What of the store has changed

class StoreWatch {
public:
  StoreWatch() : before_(ParamStore) {}
  // "M3 MTM1 4" for each record with another value, in the order of the store.
  [[nodiscard]] Texts Changes() const {
    Texts changes;
    EXPECT_EQ(before_.size(), ParamStore.size());
    for (std::size_t s = 0; s < before_.size(); ++s) {
      const std::string code(Trim(std::string_view(before_[s].Code)));
      for (std::size_t i = 0; i < before_[s].Items.size(); ++i) {
        const std::string where = code + std::to_string(i) + " ";
        Compare(where, before_[s].Items[i], ParamStore[s].Items[i], changes);
      }
    }
    return changes;
  }
  [[nodiscard]] bool Untouched() const { return Changes().empty(); }

private:
  static void Compare(const std::string& where, const ParamItem& was, const ParamItem& is, Texts& changes) {
    for (std::size_t r = 0; r < was.NumRecords.size(); ++r) {
      const ParamNumRecord& before = was.NumRecords[r];
      const ParamNumRecord& now = is.NumRecords[r];
      if (before.Value != now.Value) {
        changes.push_back(where + before.Tag + " " + std::to_string(now.Value));
      }
      if (before.ReadValue != now.ReadValue || before.DefaultValue != now.DefaultValue ||
          before.MinValue != now.MinValue || before.MaxValue != now.MaxValue) {
        changes.push_back(where + before.Tag + ": more than its value");
      }
    }
    for (std::size_t r = 0; r < was.TextRecords.size(); ++r) {
      const ParamTextRecord& before = was.TextRecords[r];
      const ParamTextRecord& now = is.TextRecords[r];
      if (before.Value != now.Value) {
        changes.push_back(where + before.Tag + " " + ToUtf8(TrimRight(now.Value)));
        EXPECT_EQ(TextWidth, now.Value.size()) << where << before.Tag;
      }
      if (before.ReadValue != now.ReadValue || before.DefaultValue != now.DefaultValue ||
          before.ByteLength != now.ByteLength) {
        changes.push_back(where + before.Tag + ": more than its value");
      }
    }
  }
  ParamStoreTable before_;
};

// --- The dialogs

class Dialogs : public testing::Test {
protected:
  void TearDown() override {
    StopTimer(WaitTimer2); // outlives the test
    WaitTimer2Count = 0;
  }
  void Start(const ModelFacts& facts) {
    model = facts;
    StartWithModel(platform, facts.code);
  }

  template <typename Act> void InGroups(int entry, Act act) {
    platform.screens.Expect<GroupSettingScreen>("frmGroupSetting", act);
    ShowGroupSetting(entry);
  }
  template <typename Act> void InMessages(int entry, Act act) {
    platform.screens.Expect<MsgSettingScreen>("frmMsgSetting", act);
    ShowMsgSetting(entry);
  }
  template <typename Act> void InUnits(int entry, Act act) {
    platform.screens.Expect<UnitSettingScreen>("frmUnitSetting", act);
    ShowUnitSetting(entry);
  }
  template <typename Act> void InConstants(int entry, Act act) {
    platform.screens.Expect<ConstSettingScreen>("frmConstSetting", act);
    ShowConstSetting(entry);
  }
  // `told` gets the numbers of the triggers whose rows are to be written anew.
  template <typename Act> void InTriggers(int entry, Act act) {
    platform.screens.Expect<EMailTriggerSettingScreen>("frmEMailTriggerSetting", act);
    ShowEMailTriggerSetting(entry, [this](int number) { told.push_back(number); });
  }

  void ExpectMessage(std::u16string_view text) { platform.boxes.Expect(text); }
  // The field has, or is about to get, the focus.
  bool HasFocus(const TextField& field) {
    const Screen& screen = field.screen;
    return screen.focusRequest != nullptr ? screen.focusRequest == &field
                                          : platform.screens.FocusedField(screen) == &field;
  }
  void ExpectSelected(const TextField& field, int start, int length) {
    EXPECT_TRUE(HasFocus(field)) << field.name;
    EXPECT_TRUE(field.selectionPending) << field.name;
    EXPECT_EQ(start, field.selStart) << field.name;
    EXPECT_EQ(length, field.selLength) << field.name;
  }
  void ExpectAllSelected(const TextField& field) {
    ExpectSelected(field, 0, static_cast<int>(field.text.size()));
  }
  static void ExpectCaption(Screen& screen, std::string_view label, std::string_view caption) {
    EXPECT_EQ(caption, ToUtf8(LabelNamed(screen, label).caption)) << label;
  }
  static bool Shown(Screen& screen, std::string_view control) {
    return ControlNamed(screen, control).visible;
  }

  ScriptedPlatform platform;
  ScriptedUser user;
  ModelFacts model = Kov;
  std::vector<int> told;
};

// For rules that hold for both models alike.
class OnBothModels : public Dialogs, public testing::WithParamInterface<ModelFacts> {
protected:
  void SetUp() override { Start(GetParam()); }
};
#define LOADER_DIALOGS_OF_BOTH_MODELS(suite)                                                                 \
  INSTANTIATE_TEST_SUITE_P(Models, suite, ::testing::Values(Kov, Rug),                                       \
                           [](const auto& tested) { return std::string(tested.param.code); })

// --- The five that browse, for what they have in common

struct BrowsedDialog {
  const char* name; // of the test
  const char* screen;
  const char* caption;
  const char* section; // of the text or number that `field` shows
  const char* tag;
  const char* field;
  int ModelFacts::*entries;
  void (*show)(int entry);
  BrowsingFrame& (*frame)(Screen& screen);
  const char* beforeNumber; // in its field
  bool numberTyped;         // the user may type one
  const char* notANumber = "数値のみで入力してください";
};
inline void PrintTo(const BrowsedDialog& dialog, std::ostream* out) {
  *out << dialog.name;
}
template <typename ScreenType> BrowsingFrame& FrameOf(Screen& screen) {
  return static_cast<ScreenType&>(screen).browsing;
}
inline const BrowsedDialog Groups{"Groups",
                                  "frmGroupSetting",
                                  "グループ設定",
                                  "G",
                                  "GNEM",
                                  "txtDispNameTag",
                                  &ModelFacts::groups,
                                  ShowGroupSetting,
                                  FrameOf<GroupSettingScreen>,
                                  "ｸﾞﾙｰﾌﾟ No.",
                                  false};
inline const BrowsedDialog Messages{"Messages",
                                    "frmMsgSetting",
                                    "メッセージ設定",
                                    "M",
                                    "MESS",
                                    "txtMessage",
                                    &ModelFacts::messages,
                                    ShowMsgSetting,
                                    FrameOf<MsgSettingScreen>,
                                    "",
                                    true};
inline const BrowsedDialog Units{
    "Units",         "frmUnitSetting",           "単位作成", "U", "UNIT", "txtMessage", &ModelFacts::units,
    ShowUnitSetting, FrameOf<UnitSettingScreen>, "",         true};
inline const BrowsedDialog Constants{"Constants",
                                     "frmConstSetting",
                                     "定数設定",
                                     "N",
                                     "CONS",
                                     "txtMessage",
                                     &ModelFacts::constants,
                                     ShowConstSetting,
                                     FrameOf<ConstSettingScreen>,
                                     "",
                                     true};
inline const BrowsedDialog Triggers{"Triggers",
                                    "frmEMailTriggerSetting",
                                    "E-mail トリガー設定",
                                    "X",
                                    "ETTL",
                                    "txtTitle",
                                    &ModelFacts::triggers,
                                    [](int entry) { ShowEMailTriggerSetting(entry, [](int) {}); },
                                    FrameOf<EMailTriggerSettingScreen>,
                                    "",
                                    false};

} // namespace loader::test
