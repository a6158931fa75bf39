// Messages: their texts, and what brings them up.
#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

class Message : public OnBothModels {
protected:
  // What the two decided lists offer at a timing; empty: hidden.
  [[nodiscard]] Texts Sources(int timing) const {
    return timing == 1 || timing == 2   ? Numbered("DI", model.digitalInputs)
           : timing == 3 || timing == 4 ? Behind("無し", Numbered("チャネル", model.channels))
                                        : Texts{};
  }
  [[nodiscard]] static Texts Alarms(int timing) {
    return timing == 3 || timing == 4 ? Texts{"1", "2", "3", "4"} : Texts{};
  }
  void ExpectDecided(MsgSettingScreen& screen, int timing) {
    SCOPED_TRACE(timing);
    ExpectRows(ListNamed(screen, "cmbTiming1"), Sources(timing));
    ExpectRows(ListNamed(screen, "cmbTiming2"), Alarms(timing));
    for (const char* control : {"cmbTiming1", "lblTiming1"}) {
      EXPECT_EQ(!Sources(timing).empty(), Shown(screen, control)) << control;
    }
    for (const char* control : {"cmbTiming2", "lblTiming2"}) {
      EXPECT_EQ(!Alarms(timing).empty(), Shown(screen, control)) << control;
    }
  }
  static int Row(const Texts& rows, int value) {
    return value >= 0 && value < static_cast<int>(rows.size()) ? value : -1;
  }
};
LOADER_DIALOGS_OF_BOTH_MODELS(Message);

TEST_P(Message, HasItsCaptions) {
  InMessages(0, [](MsgSettingScreen& screen) {
    ExpectCaption(screen, "lblMessage", "メッセージ");
    ExpectCaption(screen, "lblTiming", "タイミング");
    ExpectCaption(screen, "lblTiming1", "ＤＩ№/警報ﾁｬﾈﾙ");
    ExpectCaption(screen, "lblTiming2", "警報　No.");
    ExpectCaption(screen, "lblSelectNo", "選択　No.");
    ExpectRows(ListNamed(screen, "cmbTiming"), {"無し", "DI ON", "DI OFF", "警報発生", "警報解除"});
  });
}

TEST_P(Message, ShowsTheListsOfTheStoredTiming) {
  for (int timing = 0; timing <= 4; ++timing) {
    Put("M", timing, "MTM1", timing);
  }
  InMessages(0, [&](MsgSettingScreen& screen) {
    for (const int timing : {0, 1, 2, 3, 4}) {
      LoadEntry(screen.browsing, timing);
      EXPECT_EQ(timing, ListNamed(screen, "cmbTiming").index);
      ExpectDecided(screen, timing);
    }
    for (const int timing : {4, 3, 2, 1, 0}) {
      LoadEntry(screen.browsing, timing);
      ExpectDecided(screen, timing);
    }
  });
}

TEST_P(Message, APickedTimingRefillsTheListsAndShowsTheirFirstRows) {
  InMessages(0, [&](MsgSettingScreen& screen) {
    ListBox& timing = ListNamed(screen, "cmbTiming");
    ListBox& source = ListNamed(screen, "cmbTiming1");
    ListBox& alarm = ListNamed(screen, "cmbTiming2");
    for (const int from : {0, 1, 2, 3, 4}) {
      for (const int to : {0, 1, 2, 3, 4}) {
        if (from == to) {
          continue;
        }
        user.Choose(timing, from);
        SelectRow(source, 2);
        SelectRow(alarm, 2);
        user.Choose(timing, to);
        ExpectDecided(screen, to);
        EXPECT_EQ(Sources(to).empty() ? -1 : 0, source.index) << from << to;
        EXPECT_EQ(Alarms(to).empty() ? -1 : 0, alarm.index) << from << to;
      }
    }
  });
}

TEST_P(Message, TheTimingThatStandsIsNoChange) {
  Put("M", 0, "MTM1", 3);
  Put("M", 0, "MTM2", 9);
  Put("M", 0, "MTM3", 2);
  const StoreWatch store;
  InMessages(0, [&](MsgSettingScreen& screen) {
    user.Choose(ListNamed(screen, "cmbTiming"), 3);
    EXPECT_EQ(9, ListNamed(screen, "cmbTiming1").index);
    EXPECT_EQ(2, ListNamed(screen, "cmbTiming2").index);
    user.Click(screen.browsing.apply);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Message, FromAnAlarmToAnInputStoresNoAlarmNumber) {
  Put("M", 0, "MTM1", 3);
  Put("M", 0, "MTM2", 9);
  Put("M", 0, "MTM3", 2);
  const StoreWatch store;
  InMessages(0, [&](MsgSettingScreen& screen) {
    user.Choose(ListNamed(screen, "cmbTiming"), 1);
    user.Click(screen.browsing.apply);
  });
  EXPECT_EQ((Texts{"M0 MTM1 1", "M0 MTM2 0", "M0 MTM3 0"}), store.Changes());
}

// Every timing over every stored number of the two that it decides, in its list and beside it: shown by its
// row or not at all, and kept by an apply.
TEST_P(Message, ShowsAndKeepsEveryStoredValue) {
  InMessages(1, [&](MsgSettingScreen& screen) {
    for (int timing = -2; timing <= 6; ++timing) {
      Put("M", 1, "MTM1", timing);
      for (int value = -3; value <= model.channels + 3; ++value) {
        const int alarm = value % 7 - 1;
        Put("M", 1, "MTM2", value);
        Put("M", 1, "MTM3", alarm);
        const StoreWatch store;
        user.Click(screen.browsing.btnReset);
        ASSERT_EQ(timing >= 0 && timing <= 4 ? timing : -1, ListNamed(screen, "cmbTiming").index);
        ASSERT_EQ(Row(Sources(timing), value), ListNamed(screen, "cmbTiming1").index)
            << timing << " " << value;
        ASSERT_EQ(Row(Alarms(timing), alarm), ListNamed(screen, "cmbTiming2").index)
            << timing << " " << alarm;
        user.Click(screen.browsing.apply);
        ASSERT_TRUE(store.Untouched()) << timing << " " << value;
      }
    }
  });
}

TEST_P(Message, HidesBothListsAtATimingThatItDoesNotKnow) {
  Put("M", 0, "MTM1", 3);
  for (const int timing : {5, -1, 32767, -32768}) {
    Put("M", 1, "MTM1", timing);
    InMessages(0, [&](MsgSettingScreen& screen) {
      ExpectDecided(screen, 3);
      user.Click(screen.browsing.btnNext);
      EXPECT_EQ(-1, ListNamed(screen, "cmbTiming").index);
      ExpectDecided(screen, 0);
    });
  }
}

TEST_P(Message, StoresEveryRowThatIsPicked) {
  for (int timing = 1; timing <= 4; ++timing) {
    Put("M", 2, "MTM1", 0);
    InMessages(2, [&](MsgSettingScreen& screen) {
      user.Choose(ListNamed(screen, "cmbTiming"), timing);
      for (std::size_t row = 0; row < Sources(timing).size(); ++row) {
        user.Choose(ListNamed(screen, "cmbTiming1"), static_cast<int>(row));
        user.Choose(ListNamed(screen, "cmbTiming2"), static_cast<int>(row % 4));
        user.Click(screen.browsing.apply);
        ASSERT_EQ(timing, Stored("M", 2, "MTM1"));
        ASSERT_EQ(static_cast<int>(row), Stored("M", 2, "MTM2"));
        ASSERT_EQ(Alarms(timing).empty() ? 0 : static_cast<int>(row % 4), Stored("M", 2, "MTM3"));
        ASSERT_EQ(static_cast<int>(row), ListNamed(screen, "cmbTiming1").index);
      }
    });
  }
}

// A list that shows nothing stores 0 as soon as anything of the entry is stored.
TEST_P(Message, AListThatSelectsNothingStoresZeroWithTheFirstChange) {
  struct Row {
    int timing, source, alarm;
    Texts changes;
  };
  for (const Row& row :
       std::vector<Row>{{3, 99, 7, {"M0 MTM2 0", "M0 MTM3 0", "M0 MESS x"}},
                        {3, 4, 7, {"M0 MTM3 0", "M0 MESS x"}},
                        {4, 99, 3, {"M0 MTM2 0", "M0 MESS x"}},
                        {1, 16, 3, {"M0 MTM2 0", "M0 MTM3 0", "M0 MESS x"}},
                        {0, 5, 3, {"M0 MTM2 0", "M0 MTM3 0", "M0 MESS x"}},
                        {9, 5, 3, {"M0 MTM2 0", "M0 MTM3 0", "M0 MESS x"}}, // the timing itself stays
                        {2, 4, 0, {"M0 MESS x"}}}) {
    Put("M", 0, "MTM1", row.timing);
    Put("M", 0, "MTM2", row.source);
    Put("M", 0, "MTM3", row.alarm);
    PutText("M", 0, "MESS", "");
    const StoreWatch store;
    InMessages(0, [&](MsgSettingScreen& screen) {
      user.Click(screen.browsing.apply);
      EXPECT_TRUE(store.Untouched()) << row.timing;
      user.Type(FieldNamed(screen, "txtMessage"), u"x");
      user.Click(screen.browsing.apply);
    });
    EXPECT_EQ(row.changes, store.Changes()) << row.timing;
  }
}

// A list that stands for nothing is no change: the zero of another one is not written for it.
TEST_P(Message, AnApplyWithoutAChangeLeavesAStoreThatLacksAParameter) {
  DropTag("M", "MTM3");
  Put("M", 0, "MTM1", 3);
  Put("M", 0, "MTM2", 99);
  const StoreWatch store;
  InMessages(0, [&](MsgSettingScreen& screen) {
    EXPECT_FALSE(Shown(screen, "cmbTiming2"));
    user.Click(screen.browsing.apply);
  });
  EXPECT_TRUE(store.Untouched());
}

// --- The text

TEST_P(Message, TakesATextOfItsRecordsBytesAndKeepsLeadingBlanks) {
  for (const std::u16string_view text :
       {u"12345678901234567890123456789012", u"一二三四五六七八九十一二三四五六", u"  blanks before",
        u"and behind  ", u"   ", u""}) {
    PutText("M", 0, "MESS", "old");
    const StoreWatch store;
    InMessages(0, [&](MsgSettingScreen& screen) {
      user.Type(FieldNamed(screen, "txtMessage"), text);
      EXPECT_TRUE(user.Click(screen.browsing.apply));
    });
    EXPECT_EQ(Padded64(ToUtf8(text)), StoredText("M", 0, "MESS"));
    EXPECT_EQ(Texts{"M0 MESS " + ToUtf8(TrimRight(text))}, store.Changes());
  }
}

TEST_P(Message, RefusesALongerTextWithAllOfItSelected) {
  const StoreWatch store;
  for (const std::u16string_view text :
       {u"123456789012345678901234567890123", u"一二三四五六七八九十一二三四五六a",
        u"12345678901234567890123456789012 ", u" 12345678901234567890123456789012"}) {
    InMessages(0, [&](MsgSettingScreen& screen) {
      TextField& field = FieldNamed(screen, "txtMessage");
      user.Choose(ListNamed(screen, "cmbTiming"), 3);
      user.Type(field, text);
      ExpectMessage(u"半角32文字以下で入力してください");
      EXPECT_FALSE(user.Click(screen.browsing.apply));
      EXPECT_EQ(text, field.text);
      ExpectAllSelected(field);
      user.Escape(screen);
    });
  }
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Message, RefusesACommaAndSelectsIt) {
  const StoreWatch store;
  InMessages(0, [&](MsgSettingScreen& screen) {
    TextField& field = FieldNamed(screen, "txtMessage");
    user.Choose(ListNamed(screen, "cmbTiming"), 3);
    user.Type(field, u"  a,b,");
    ExpectMessage(u"「,」は入力できません");
    EXPECT_FALSE(user.Click(screen.browsing.apply));
    EXPECT_EQ(u"  a,b,", field.text); // not trimmed
    ExpectSelected(field, 3, 1);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Message, ChecksItsTextOnApplyToo) {
  const StoreWatch store;
  InMessages(0, [&](MsgSettingScreen& screen) {
    TextField& field = FieldNamed(screen, "txtMessage");
    field.text = u",";
    ExpectMessage(u"「,」は入力できません");
    EXPECT_TRUE(user.Click(screen.browsing.apply));
    ExpectSelected(field, 0, 1);
  });
  EXPECT_TRUE(store.Untouched());
}

// The limit is the record's, not the dialog's.
TEST_P(Message, MeasuresByTheRecordsOwnLength) {
  TextRecord("M", 0, "MESS").ByteLength = 4;
  InMessages(0, [&](MsgSettingScreen& screen) {
    user.Type(FieldNamed(screen, "txtMessage"), u"12345");
    ExpectMessage(u"半角4文字以下で入力してください");
    EXPECT_FALSE(user.Click(screen.browsing.apply));
  });
}

TEST_P(Message, StoresAllItsFieldsWithOneApplyAndThoseOfItsMessageAlone) {
  const StoreWatch store;
  InMessages(9, [&](MsgSettingScreen& screen) {
    user.Type(FieldNamed(screen, "txtMessage"), u"hot");
    user.Choose(ListNamed(screen, "cmbTiming"), 4);
    user.Choose(ListNamed(screen, "cmbTiming1"), model.channels);
    user.Choose(ListNamed(screen, "cmbTiming2"), 3);
    user.Click(screen.browsing.apply);
    user.Click(screen.browsing.close);
  });
  EXPECT_EQ((Texts{"M9 MTM1 4", "M9 MTM2 " + std::to_string(model.channels), "M9 MTM3 3", "M9 MESS hot"}),
            store.Changes());
}

TEST_P(Message, NamesItsFieldsForOthers) {
  Texts controls;
  for (const FieldRow& row : MessageFields()) {
    controls.emplace_back(row.control);
  }
  EXPECT_EQ((Texts{"txtMessage", "cmbTiming", "cmbTiming1", "cmbTiming2"}), controls);
}

} // namespace
} // namespace loader::test
