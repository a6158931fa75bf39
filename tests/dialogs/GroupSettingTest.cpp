// Display groups: screen, ten data slots, trend.
#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

using Group = OnBothModels;
LOADER_DIALOGS_OF_BOTH_MODELS(Group);

std::string Slot(int slot) {
  return ElementName("cmbGC", slot);
}
std::string SlotTag(int slot) {
  return slot == 9 ? "GC10" : "GC0" + std::to_string(slot + 1);
}

TEST_P(Group, HasItsCaptions) {
  InGroups(0, [](GroupSettingScreen& screen) {
    ExpectCaption(screen, "lblHyoji", "ﾊﾞｰｸﾞﾗﾌ/ｱﾅﾛｸﾞﾒｰﾀ選択");
    ExpectCaption(screen, "lblTrend", "カラーバー表示選択");
    ExpectCaption(screen, "lblDispNameTag", "画面名称");
    ExpectCaption(screen, "lblScale", "トレンドの目盛表示");
    ExpectCaption(screen, "lblTrendDirec", "トレンド方向");
    ExpectCaption(screen, "lblTrendDivision", "画面分割数");
    ExpectCaption(screen, "lblSelectNo", "選択ｸﾞﾙｰﾌﾟ№");
    for (int slot = 0; slot < 10; ++slot) {
      ExpectCaption(screen, ElementName("lblGC", slot), "データ" + WideNumber(slot + 1));
    }
    const auto expectFrame = [&](const char* name, const char* caption) {
      const Control& control = ControlNamed(screen, name);
      ASSERT_EQ(ControlKind::Frame, control.kind) << name;
      EXPECT_EQ(caption, ToUtf8(static_cast<const Frame&>(control).caption));
    };
    expectFrame("fraDispSet", "画面設定");
    expectFrame("fraTrend", "トレンド表示");
    expectFrame("Frame1", "画面構成内容");
  });
}

TEST_P(Group, OffersItsLists) {
  InGroups(0, [&](GroupSettingScreen& screen) {
    ExpectRows(ListNamed(screen, "cmbHyoji"), {"バーグラフ", "アナログメータ"});
    ExpectRows(ListNamed(screen, "cmbTrend"), {"ﾁｬﾈﾙNo.表示", "ﾀｸﾞNo.表示", "単位表示"});
    ExpectRows(ListNamed(screen, "cmbScale"), {"OFF", "ON"});
    ExpectRows(ListNamed(screen, "cmbTrendDirec"), {"上下", "左右"});
    ExpectRows(ListNamed(screen, "cmbTrendDivision"), Numbered("", 20), 1);
    ExpectRows(ListNamed(screen, "cmbScaleCh"), GroupChannelTexts(model));
    for (int slot = 0; slot < 10; ++slot) {
      ExpectRows(ListNamed(screen, Slot(slot)), GroupChannelTexts(model));
    }
  });
}

TEST_P(Group, ShowsEverythingOnEveryModelButOne) {
  for (const int channels : {10, 4}) {
    Profile.GroupChannelLast = static_cast<std::int16_t>(channels - 1);
    InGroups(0, [](GroupSettingScreen& screen) {
      for (const Control* control : screen.controls) {
        EXPECT_TRUE(control->visible) << control->name;
      }
    });
  }
}

TEST_P(Group, OfTheModelWithBarsAloneHidesWhatItDoesNotHave) {
  ModelCode = "BIQ";
  for (const int slots : {6, 10, 1}) {
    Profile.GroupChannelLast = static_cast<std::int16_t>(slots - 1);
    const StoreWatch store;
    InGroups(0, [&](GroupSettingScreen& screen) {
      const auto expectAll = [&] {
        EXPECT_FALSE(Shown(screen, "cmbHyoji"));
        EXPECT_FALSE(Shown(screen, "lblHyoji"));
        for (int slot = 0; slot < 10; ++slot) {
          EXPECT_EQ(slot < slots, Shown(screen, Slot(slot))) << slots << ": " << slot;
          EXPECT_EQ(slot < slots, Shown(screen, ElementName("lblGC", slot))) << slots << ": " << slot;
        }
        EXPECT_TRUE(Shown(screen, "cmbTrend"));
        EXPECT_TRUE(Shown(screen, "lblTrend"));
        EXPECT_TRUE(Shown(screen, "cmbScaleCh"));
      };
      expectAll();
      user.Click(screen.browsing.btnNext);
      expectAll();
      user.Type(FieldNamed(screen, "txtDispNameTag"), u"bars");
      user.Click(screen.browsing.apply);
      expectAll();
    });
    EXPECT_EQ(Texts{"G1 GNEM bars"}, store.Changes()); // what is hidden is kept
    PutText("G", 1, "GNEM", "");
  }
}

// --- What it shows

TEST_P(Group, ShowsWhatTheSectionsHold) {
  const int group = model.groups - 1;
  Put("B", group, "BBRM", 1);
  Put("T", group, "TPVD", 2);
  Put("T", group, "TMEM", 1);
  Put("T", group, "TMCH", model.channels);
  Put("T", group, "THOU", 1);
  Put("T", group, "TBUN", 20);
  PutText("G", group, "GNEM", "pump");
  for (int slot = 0; slot < 10; ++slot) {
    Put("G", group, SlotTag(slot), slot * 3);
  }
  InGroups(group, [&](GroupSettingScreen& screen) {
    EXPECT_EQ("ｸﾞﾙｰﾌﾟ No." + std::to_string(model.groups), ToUtf8(screen.browsing.number.text));
    EXPECT_EQ(1, ListNamed(screen, "cmbHyoji").index);
    EXPECT_EQ(2, ListNamed(screen, "cmbTrend").index);
    EXPECT_EQ(1, ListNamed(screen, "cmbScale").index);
    EXPECT_EQ(model.channels, ListNamed(screen, "cmbScaleCh").index);
    EXPECT_EQ(1, ListNamed(screen, "cmbTrendDirec").index);
    EXPECT_EQ(19, ListNamed(screen, "cmbTrendDivision").index);
    EXPECT_EQ(u"pump", FieldNamed(screen, "txtDispNameTag").text);
    for (int slot = 0; slot < 10; ++slot) {
      EXPECT_EQ(slot * 3, ListNamed(screen, Slot(slot)).index);
    }
  });
}

// The row that a slot shows for a stored number.
int RowOfSlot(int value, int channels) {
  if (value >= 0 && value <= channels) {
    return value;
  }
  switch (value) {
  case -32768:
    return 19;
  case -32767:
    return 20;
  case -32766:
    return 21;
  case -32765:
    return 22;
  case -32764:
    return 23;
  default:
    return -1;
  }
}

// All that a slot can hold by its limits, ten at a time, and what lies beyond; none of it is touched by an
// apply, and none shows the row of the one before.
TEST_P(Group, ShowsEveryContentOfASlotAndLeavesItAsItIs) {
  InGroups(0, [&](GroupSettingScreen& screen) {
    const auto sweep = [&](int from, int to) {
      for (int value = from; value <= to; value += 10) {
        for (int slot = 0; slot < 10; ++slot) {
          Put("G", 0, SlotTag(slot), value + slot);
        }
        user.Click(screen.browsing.btnReset);
        for (int slot = 0; slot < 10; ++slot) {
          ASSERT_EQ(RowOfSlot(value + slot, model.channels), ListNamed(screen, Slot(slot)).index)
              << value + slot;
        }
        user.Click(screen.browsing.apply);
        for (int slot = 0; slot < 10; ++slot) {
          ASSERT_EQ(value + slot, Stored("G", 0, SlotTag(slot)));
        }
      }
    };
    sweep(-32768, 99);
    sweep(32750, 32758);
  });
}

TEST_P(Group, StoresTheRowThatIsPickedInASlot) {
  for (int slot = 0; slot < 10; ++slot) {
    for (int row = 0; row <= model.channels; ++row) {
      Put("G", 0, SlotTag(slot), row == 5 ? 6 : 5);
      const StoreWatch store;
      InGroups(0, [&](GroupSettingScreen& screen) {
        user.Choose(ListNamed(screen, Slot(slot)), row);
        user.Click(screen.browsing.apply);
        EXPECT_EQ(row, ListNamed(screen, Slot(slot)).index);
      });
      ASSERT_EQ(Texts{"G0 " + SlotTag(slot) + " " + std::to_string(row)}, store.Changes());
    }
  }
}

// Picked there, row 19 is channel 19.
TEST_P(Group, KeepsASpecialContentUntilAnotherRowIsPicked) {
  for (int special = -32768; special <= -32764; ++special) {
    const int row = special + 32768 + 19;
    Put("G", 0, "GC04", special);
    const StoreWatch store;
    InGroups(0, [&](GroupSettingScreen& screen) {
      ListBox& list = ListNamed(screen, "cmbGC(3)");
      EXPECT_EQ(row, list.index);
      user.Choose(list, row); // stands there already
      user.Type(FieldNamed(screen, "txtDispNameTag"), u"x");
      user.Click(screen.browsing.apply);
      EXPECT_EQ(special, Stored("G", 0, "GC04"));
      user.Choose(list, 2);
      user.Choose(list, row);
      user.Click(screen.browsing.apply);
    });
    EXPECT_EQ((Texts{"G0 GC04 " + std::to_string(row), "G0 GNEM x"}), store.Changes());
    PutText("G", 0, "GNEM", "");
  }
}

// --- The other lists

struct ListCase {
  const char* list;
  const char* section;
  const char* tag;
  int first; // stored value of row 0
  int rows;  // 0: the channels
};
constexpr ListCase Lists[] = {{"cmbHyoji", "B", "BBRM", 0, 2},      {"cmbTrend", "T", "TPVD", 0, 3},
                              {"cmbScale", "T", "TMEM", 0, 2},      {"cmbScaleCh", "T", "TMCH", 0, 0},
                              {"cmbTrendDirec", "T", "THOU", 0, 2}, {"cmbTrendDivision", "T", "TBUN", 1, 20}};

TEST_P(Group, ShowsAndKeepsEveryValueOfItsListsAndStoresWhatIsPicked) {
  for (const ListCase& tested : Lists) {
    const int rows = tested.rows == 0 ? model.channels + 1 : tested.rows;
    InGroups(1, [&](GroupSettingScreen& screen) {
      ListBox& list = ListNamed(screen, tested.list);
      for (int value = -40; value <= 110; ++value) {
        Put(tested.section, 1, tested.tag, value);
        const StoreWatch store;
        user.Click(screen.browsing.btnReset);
        const int row = value - tested.first;
        EXPECT_EQ(row >= 0 && row < rows ? row : -1, list.index) << tested.tag << value;
        user.Click(screen.browsing.apply);
        ASSERT_TRUE(store.Untouched()) << tested.tag << value;
      }
      Put(tested.section, 1, tested.tag, -32764);
      user.Click(screen.browsing.btnReset);
      EXPECT_EQ(-1, list.index); // no special content here
      for (int row = 0; row < rows; ++row) {
        const StoreWatch store;
        user.Choose(list, row);
        user.Click(screen.browsing.apply);
        ASSERT_EQ(
            Texts{tested.section + std::string("1 ") + tested.tag + " " + std::to_string(row + tested.first)},
            store.Changes());
      }
    });
  }
}

// --- The name

TEST_P(Group, TakesANameOfSixteenBytes) {
  for (const std::u16string_view name :
       {u"1234567890123456", u"一二三四五六七八", u"ｱｲｳｴｵｶｷｸｹｺｱｲｳｴｵｶ", u""}) {
    InGroups(0, [&](GroupSettingScreen& screen) {
      user.Type(FieldNamed(screen, "txtDispNameTag"), name);
      EXPECT_TRUE(user.Click(screen.browsing.apply));
    });
    EXPECT_EQ(Padded64(ToUtf8(name)), StoredText("G", 0, "GNEM"));
  }
}

TEST_P(Group, RefusesALongerNameWithAllOfItSelected) {
  const StoreWatch store;
  for (const std::u16string_view name : {u"12345678901234567", u"一二三四五六七八九", u"一二三四五六七八a"}) {
    InGroups(0, [&](GroupSettingScreen& screen) {
      TextField& field = FieldNamed(screen, "txtDispNameTag");
      user.Choose(ListNamed(screen, "cmbTrend"), 2);
      user.Choose(ListNamed(screen, "cmbGC(9)"), 7);
      user.Type(field, name);
      ExpectMessage(u"半角16文字以下で入力してください");
      EXPECT_FALSE(user.Click(screen.browsing.apply));
      EXPECT_EQ(name, field.text);
      ExpectAllSelected(field);
    });
  }
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Group, RefusesACommaAndSelectsIt) {
  const StoreWatch store;
  InGroups(0, [&](GroupSettingScreen& screen) {
    TextField& field = FieldNamed(screen, "txtDispNameTag");
    user.Choose(ListNamed(screen, "cmbTrend"), 2);
    for (const auto& [name, seen, at] : {std::tuple{u"ab,c,d", u"ab,c,d", 2}, {u"  ,x ", u",x", 0}}) {
      user.Type(field, name);
      ExpectMessage(u"「,」は入力できません");
      EXPECT_FALSE(user.Leave(field));
      EXPECT_EQ(seen, field.text);
      ExpectSelected(field, at, 1);
    }
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Group, OfTwoFaultsOfANameTellsTheLength) {
  InGroups(0, [&](GroupSettingScreen& screen) {
    TextField& field = FieldNamed(screen, "txtDispNameTag");
    user.Type(field, u"12345678,01234567");
    ExpectMessage(u"半角16文字以下で入力してください");
    EXPECT_FALSE(user.Leave(field));
    ExpectAllSelected(field);
  });
}

TEST_P(Group, TrimsANameInItsFieldBeforeItMeasures) {
  InGroups(0, [&](GroupSettingScreen& screen) {
    TextField& field = FieldNamed(screen, "txtDispNameTag");
    user.Type(field, u"    1234567890123456  ");
    EXPECT_TRUE(user.Leave(field));
    EXPECT_EQ(u"1234567890123456", field.text);
    EXPECT_TRUE(user.Click(screen.browsing.apply));
    user.Type(field, u" a b　"); // the full-width blank is text
    EXPECT_TRUE(user.Click(screen.browsing.apply));
    EXPECT_EQ(u"a b　", field.text);
  });
  EXPECT_EQ(Padded64("a b　"), StoredText("G", 0, "GNEM"));
}

// From a recorder or a file: nobody typed it, and it is refused all the same.
TEST_P(Group, RefusesAStoredNameThatItsCheckRefuses) {
  PutText("G", 0, "GNEM", "a,b");
  const StoreWatch store;
  InGroups(0, [&](GroupSettingScreen& screen) {
    EXPECT_EQ(u"a,b", FieldNamed(screen, "txtDispNameTag").text);
    ExpectMessage(u"「,」は入力できません");
    user.Click(screen.browsing.apply);
    ExpectSelected(FieldNamed(screen, "txtDispNameTag"), 1, 1);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Group, StoresAllItsFieldsWithOneApplyAndThoseOfItsGroupAlone) {
  const int group = model.groups - 1;
  const StoreWatch store;
  InGroups(0, [&](GroupSettingScreen& screen) {
    for (int n = 1; n < model.groups; ++n) {
      user.Click(screen.browsing.btnNext);
    }
    user.Choose(ListNamed(screen, "cmbHyoji"), 1);
    user.Choose(ListNamed(screen, "cmbTrend"), 1);
    user.Type(FieldNamed(screen, "txtDispNameTag"), u"new");
    user.Choose(ListNamed(screen, "cmbGC(0)"), 30);
    user.Choose(ListNamed(screen, "cmbGC(9)"), 29);
    user.Choose(ListNamed(screen, "cmbTrendDirec"), 1);
    user.Choose(ListNamed(screen, "cmbTrendDivision"), 0);
    user.Choose(ListNamed(screen, "cmbScale"), 1);
    user.Choose(ListNamed(screen, "cmbScaleCh"), 28);
    user.Click(screen.browsing.apply);
    user.Click(screen.browsing.close);
  });
  const std::string at = std::to_string(group) + " ";
  EXPECT_EQ((Texts{"G" + at + "GC01 30", "G" + at + "GC10 29", "G" + at + "GNEM new", "T" + at + "THOU 1",
                   "T" + at + "TMCH 28", "T" + at + "TBUN 1", "T" + at + "TPVD 1", "T" + at + "TMEM 1",
                   "B" + at + "BBRM 1"}),
            store.Changes());
}

TEST_P(Group, NamesItsFieldsForOthers) {
  Texts controls;
  for (const FieldRow& row : GroupFields()) {
    controls.emplace_back(row.control);
  }
  EXPECT_EQ((Texts{"cmbHyoji", "cmbTrend", "txtDispNameTag", "cmbGC", "cmbTrendDirec", "cmbTrendDivision",
                   "cmbScale", "cmbScaleCh"}),
            controls);
}

} // namespace
} // namespace loader::test
