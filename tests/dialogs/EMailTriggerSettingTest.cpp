// E-mail triggers: what they wait for, what the mail says, who gets it.
#include <tuple>

#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

// What the two decided lists offer and what they are called at a timing; no rows: hidden.
struct Decided {
  Texts sources;
  Texts details;
  const char* sourceLabel = "";
  const char* detailLabel = "";
};

class Trigger : public OnBothModels {
protected:
  [[nodiscard]] Decided At(int timing) const {
    switch (timing) {
    case 1:
    case 2:
      return {Numbered("DI", model.digitalInputs), {}, "DI No."};
    case 3:
    case 4:
      return {Numbered("ﾁｬﾈﾙ", model.channels), {"1", "2", "3", "4"}, "チャネル", "警報No."};
    case 5:
      return {{"全Ch警報論理和出力", "全状態異常論理和出力", "バッテリー無し", "メモリカードフル"},
              {},
              "本体異常警報ﾀｲﾌﾟ"};
    case 6:
      return {{"1時間", "2時間", "3時間", "4時間", "6時間", "12時間", "1日"},
              Numbered("", 24, 0),
              "時間周期",
              "基準時間"};
    default:
      return {};
    }
  }
  static int Row(const Texts& rows, int value) {
    return value >= 0 && value < static_cast<int>(rows.size()) ? value : -1;
  }
  void ExpectDecided(EMailTriggerSettingScreen& screen, int timing) {
    SCOPED_TRACE(timing);
    const Decided decided = At(timing);
    ExpectRows(ListNamed(screen, "cmbTimingSetting1"), decided.sources);
    ExpectRows(ListNamed(screen, "cmbTimingSetting2"), decided.details);
    for (const char* control : {"cmbTimingSetting1", "lblTimingSetting1"}) {
      EXPECT_EQ(!decided.sources.empty(), Shown(screen, control)) << control;
    }
    for (const char* control : {"cmbTimingSetting2", "lblTimingSetting2"}) {
      EXPECT_EQ(!decided.details.empty(), Shown(screen, control)) << control;
    }
    if (!decided.sources.empty()) {
      ExpectCaption(screen, "lblTimingSetting1", decided.sourceLabel);
    }
    if (!decided.details.empty()) {
      ExpectCaption(screen, "lblTimingSetting2", decided.detailLabel);
    }
  }
};
LOADER_DIALOGS_OF_BOTH_MODELS(Trigger);

TEST_P(Trigger, HasItsCaptions) {
  InTriggers(0, [](EMailTriggerSettingScreen& screen) {
    ExpectCaption(screen, "lblTriggerTiming", "ﾄﾘｶﾞｰﾀｲﾐﾝｸﾞ");
    ExpectCaption(screen, "lblTitle", "タイトル");
    ExpectCaption(screen, "lblComment1", "テキスト１");
    ExpectCaption(screen, "lblComment2", "テキスト２");
    ExpectCaption(screen, "lblPvValueAffixation", "測定値添付");
    ExpectCaption(screen, "lblRecvMailAddNo", "送信先アドレス№");
    ExpectCaption(screen, "lblSelectNo", "選択No");
    ExpectRows(ListNamed(screen, "cmbTriggerTiming"),
               {"無し", "DI ON", "DI OFF", "警報発生", "警報解除", "本体異常警報", "定周期"});
    ExpectRows(ListNamed(screen, "cmbPvValueAffixation"), {"無し", "有り"});
  });
}

TEST_P(Trigger, ShowsTheListsOfTheStoredTiming) {
  for (int timing = 0; timing <= 6; ++timing) {
    Put("X", timing, "ETRG", timing);
  }
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    for (const int timing : {0, 1, 2, 3, 4, 5, 6, 3, 0, 6, 1, 5}) {
      LoadEntry(screen.browsing, timing);
      EXPECT_EQ(timing, ListNamed(screen, "cmbTriggerTiming").index);
      ExpectDecided(screen, timing);
    }
  });
}

TEST_P(Trigger, APickedTimingRefillsTheListsAndShowsTheirFirstRows) {
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    ListBox& timing = ListNamed(screen, "cmbTriggerTiming");
    ListBox& source = ListNamed(screen, "cmbTimingSetting1");
    ListBox& detail = ListNamed(screen, "cmbTimingSetting2");
    for (int from = 0; from <= 6; ++from) {
      for (int to = 0; to <= 6; ++to) {
        if (from == to) {
          continue;
        }
        user.Choose(timing, from);
        SelectRow(source, 2);
        SelectRow(detail, 2);
        user.Choose(timing, to);
        ExpectDecided(screen, to);
        EXPECT_EQ(At(to).sources.empty() ? -1 : 0, source.index) << from << to;
        EXPECT_EQ(At(to).details.empty() ? -1 : 0, detail.index) << from << to;
      }
    }
  });
}

TEST_P(Trigger, TheTimingThatStandsIsNoChange) {
  Put("X", 0, "ETRG", 6);
  Put("X", 0, "ETG1", 5);
  Put("X", 0, "ETG2", 23);
  const StoreWatch store;
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    user.Choose(ListNamed(screen, "cmbTriggerTiming"), 6);
    EXPECT_EQ(5, ListNamed(screen, "cmbTimingSetting1").index);
    EXPECT_EQ(23, ListNamed(screen, "cmbTimingSetting2").index);
    user.Click(screen.browsing.apply);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Trigger, ThereAndBackRefillsBothLists) {
  Put("X", 0, "ETRG", 3);
  Put("X", 0, "ETG1", 7);
  Put("X", 0, "ETG2", 2);
  const StoreWatch store;
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    user.Choose(ListNamed(screen, "cmbTriggerTiming"), 5);
    user.Choose(ListNamed(screen, "cmbTriggerTiming"), 3);
    EXPECT_EQ(0, ListNamed(screen, "cmbTimingSetting1").index);
    EXPECT_EQ(0, ListNamed(screen, "cmbTimingSetting2").index);
    user.Click(screen.browsing.apply);
  });
  EXPECT_EQ((Texts{"X0 ETG1 0", "X0 ETG2 0"}), store.Changes());
}

TEST_P(Trigger, AHiddenListStoresZero) {
  for (const auto& [timing, changes] : {std::pair{0, Texts{"X0 ETRG 0", "X0 ETG1 0", "X0 ETG2 0"}},
                                        {1, Texts{"X0 ETRG 1", "X0 ETG1 0", "X0 ETG2 0"}},
                                        {5, Texts{"X0 ETRG 5", "X0 ETG1 0", "X0 ETG2 0"}}}) {
    Put("X", 0, "ETRG", 6);
    Put("X", 0, "ETG1", 5);
    Put("X", 0, "ETG2", 23);
    const StoreWatch store;
    InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
      user.Choose(ListNamed(screen, "cmbTriggerTiming"), timing);
      user.Click(screen.browsing.apply);
    });
    EXPECT_EQ(changes, store.Changes());
  }
}

TEST_P(Trigger, ShowsAndKeepsEveryStoredValue) {
  InTriggers(1, [&](EMailTriggerSettingScreen& screen) {
    for (int timing = -2; timing <= 8; ++timing) {
      const Decided decided = At(timing);
      Put("X", 1, "ETRG", timing);
      for (int value = -3; value <= model.channels + 2; ++value) {
        const int detail = value % 27 - 1;
        const int attached = value % 5 - 1;
        Put("X", 1, "ETG1", value);
        Put("X", 1, "ETG2", detail);
        Put("X", 1, "EPVA", attached);
        const StoreWatch store;
        user.Click(screen.browsing.btnReset);
        ASSERT_EQ(timing >= 0 && timing <= 6 ? timing : -1, ListNamed(screen, "cmbTriggerTiming").index);
        ASSERT_EQ(Row(decided.sources, value), ListNamed(screen, "cmbTimingSetting1").index)
            << timing << " " << value;
        ASSERT_EQ(Row(decided.details, detail), ListNamed(screen, "cmbTimingSetting2").index)
            << timing << " " << detail;
        ASSERT_EQ(attached == 0 || attached == 1 ? attached : -1,
                  ListNamed(screen, "cmbPvValueAffixation").index);
        user.Click(screen.browsing.apply);
        ASSERT_TRUE(store.Untouched()) << timing << " " << value;
      }
    }
  });
}

TEST_P(Trigger, StoresEveryRowThatIsPicked) {
  for (int timing = 0; timing <= 6; ++timing) {
    const Decided decided = At(timing);
    Put("X", 2, "ETRG", timing == 0 ? 1 : 0);
    InTriggers(2, [&](EMailTriggerSettingScreen& screen) {
      user.Choose(ListNamed(screen, "cmbTriggerTiming"), timing);
      const auto count = static_cast<int>(std::max(decided.sources.size(), decided.details.size()));
      for (int row = 0; row < std::max(count, 1); ++row) {
        const auto rowOf = [row](const Texts& rows) {
          return rows.empty() ? 0 : row % static_cast<int>(rows.size());
        };
        user.Choose(ListNamed(screen, "cmbTimingSetting1"), rowOf(decided.sources));
        user.Choose(ListNamed(screen, "cmbTimingSetting2"), rowOf(decided.details));
        user.Click(screen.browsing.apply);
        ASSERT_EQ(timing, Stored("X", 2, "ETRG"));
        ASSERT_EQ(rowOf(decided.sources), Stored("X", 2, "ETG1"));
        ASSERT_EQ(rowOf(decided.details), Stored("X", 2, "ETG2"));
      }
    });
  }
}

// Hidden: 0 with the first change. Shown with nothing selected: kept.
TEST_P(Trigger, AValueThatIsNoRowIsKeptUnlessItsListIsHidden) {
  struct Row {
    int timing, source, detail;
    Texts changes;
  };
  for (const Row& row : std::vector<Row>{{3, 99, 9, {"X0 EPVA 1"}},
                                         {1, 99, 9, {"X0 ETG2 0", "X0 EPVA 1"}},
                                         {0, 99, 9, {"X0 ETG1 0", "X0 ETG2 0", "X0 EPVA 1"}},
                                         {5, 4, 9, {"X0 ETG2 0", "X0 EPVA 1"}},
                                         {6, 7, 24, {"X0 EPVA 1"}},
                                         {7, 7, 24, {"X0 ETG1 0", "X0 ETG2 0", "X0 EPVA 1"}}}) {
    Put("X", 0, "ETRG", row.timing);
    Put("X", 0, "ETG1", row.source);
    Put("X", 0, "ETG2", row.detail);
    Put("X", 0, "EPVA", 0);
    const StoreWatch store;
    InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
      user.Click(screen.browsing.apply);
      EXPECT_TRUE(store.Untouched());
      user.Choose(ListNamed(screen, "cmbPvValueAffixation"), 1);
      user.Click(screen.browsing.apply);
    });
    EXPECT_EQ(row.changes, store.Changes()) << row.timing;
  }
}

// --- The addresses

TEST_P(Trigger, ShowsAndStoresEveryMaskOfAddresses) {
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    for (int mask = 0; mask <= 255; ++mask) {
      Put("X", 0, "EADD", mask);
      const StoreWatch store;
      user.Click(screen.browsing.btnReset);
      for (int box = 0; box < 8; ++box) {
        ASSERT_EQ((mask / (1 << box)) % 2 == 1, screen.chkRecvMailAddNo(box).checked) << mask;
      }
      user.Click(screen.browsing.apply);
      ASSERT_TRUE(store.Untouched()) << mask;
      for (int box = 0; box < 8; ++box) {
        user.Click(screen.chkRecvMailAddNo(box));
      }
      user.Click(screen.browsing.apply);
      ASSERT_EQ(Texts{"X0 EADD " + std::to_string(255 - mask)}, store.Changes());
    }
  });
}

TEST_P(Trigger, EachBoxIsItsBit) {
  constexpr int Bits[] = {1, 2, 4, 8, 16, 32, 64, 128};
  for (int box = 0; box < 8; ++box) {
    Put("X", 0, "EADD", 0);
    InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
      user.Click(screen.chkRecvMailAddNo(box));
      EXPECT_EQ(0, Stored("X", 0, "EADD"));
      user.Click(screen.browsing.apply);
    });
    EXPECT_EQ(Bits[box], Stored("X", 0, "EADD"));
  }
}

// Bits beyond the eight boxes: kept until a box is changed.
TEST_P(Trigger, AMaskBeyondTheBoxesIsKeptUntilABoxChanges) {
  for (const int mask : {256, 511, -1, -32768, 32767}) {
    Put("X", 0, "EADD", mask);
    const StoreWatch store;
    InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
      user.Click(screen.chkRecvMailAddNo(0));
      user.Click(screen.chkRecvMailAddNo(0)); // and back
      user.Type(FieldNamed(screen, "txtTitle"), u"x");
      user.Click(screen.browsing.apply);
      EXPECT_EQ(Texts{"X0 ETTL x"}, store.Changes());
      user.Click(screen.chkRecvMailAddNo(7));
      user.Click(screen.browsing.apply);
    });
    const int boxes = (mask == -1 || mask == 511 || mask == 32767) ? 127 : 128;
    EXPECT_EQ(boxes, Stored("X", 0, "EADD")) << mask;
    PutText("X", 0, "ETTL", "");
  }
}

TEST_P(Trigger, ChangedBoxesAreGoneWithTheNextEntry) {
  Put("X", 1, "EADD", 5);
  const StoreWatch store;
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    user.Click(screen.chkRecvMailAddNo(1));
    user.Click(screen.browsing.btnNext);
    EXPECT_TRUE(screen.chkRecvMailAddNo(0).checked);
    EXPECT_FALSE(screen.chkRecvMailAddNo(1).checked);
    user.Click(screen.browsing.apply);
    user.Click(screen.browsing.btnPrev);
    EXPECT_FALSE(screen.chkRecvMailAddNo(1).checked);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Trigger, HasTheAddressesOfTheMailPageBesideItsBoxes) {
  PutText("J", 0, "RAD1", "shift@plant.example");
  PutText("J", 0, "RAD8", "boss@plant.example");
  PutText("J", 0, "RAD2", "");
  InTriggers(0, [](EMailTriggerSettingScreen& screen) {
    for (int box = 0; box < 8; ++box) {
      EXPECT_EQ(std::to_string(box + 1), ToUtf8(screen.chkRecvMailAddNo(box).caption));
    }
    EXPECT_EQ(u"shift@plant.example", screen.lblRecvMailAdd(0).caption);
    EXPECT_EQ(u"", screen.lblRecvMailAdd(1).caption);
    EXPECT_EQ(u"boss@plant.example", screen.lblRecvMailAdd(7).caption);
  });
}

// --- The texts

struct TextCase {
  const char* field;
  const char* tag;
  int bytes;
};
constexpr TextCase TextFields[] = {
    {"txtTitle", "ETTL", 32}, {"txtComment1", "ECM1", 64}, {"txtComment2", "ECM2", 64}};

TEST_P(Trigger, TakesTextsOfTheirRecordsBytes) {
  for (const TextCase& tested : TextFields) {
    const std::u16string wide(static_cast<std::size_t>(tested.bytes / 2), u'湯');
    for (const std::u16string& text : {std::u16string(static_cast<std::size_t>(tested.bytes), u'a'), wide}) {
      const StoreWatch store;
      InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
        user.Type(FieldNamed(screen, tested.field), u"  " + text + u" "); // trimmed before it is measured
        EXPECT_TRUE(user.Click(screen.browsing.apply));
        EXPECT_EQ(text, FieldNamed(screen, tested.field).text);
      });
      EXPECT_EQ(Texts{std::string("X0 ") + tested.tag + " " + ToUtf8(text)}, store.Changes());
    }
    PutText("X", 0, tested.tag, "");
  }
}

TEST_P(Trigger, RefusesALongerTextAndAComma) {
  for (const TextCase& tested : TextFields) {
    const StoreWatch store;
    InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
      TextField& field = FieldNamed(screen, tested.field);
      user.Choose(ListNamed(screen, "cmbTriggerTiming"), 6);
      user.Click(screen.chkRecvMailAddNo(3));
      user.Type(field, std::u16string(static_cast<std::size_t>(tested.bytes), u'a') + u"b");
      ExpectMessage(u"半角" + FromUtf8(std::to_string(tested.bytes)) + u"文字以下で入力してください");
      EXPECT_FALSE(user.Click(screen.browsing.apply));
      ExpectAllSelected(field);
      user.Type(field, u" a,b ");
      ExpectMessage(u"「,」は入力できません");
      EXPECT_FALSE(user.Click(screen.browsing.apply));
      EXPECT_EQ(u"a,b", field.text);
      ExpectSelected(field, 1, 1);
    });
    EXPECT_TRUE(store.Untouched());
  }
  EXPECT_TRUE(told.empty());
}

// Also those that were not left, and of several wrong ones the first alone.
TEST_P(Trigger, ChecksAllItsTextsOnApply) {
  const StoreWatch store;
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    for (const TextCase& tested : TextFields) {
      FieldNamed(screen, tested.field).text = u",";
    }
    for (const TextCase& tested : TextFields) {
      screen.focusRequest = nullptr;
      ExpectMessage(u"「,」は入力できません");
      screen.browsing.apply.onClick();
      ExpectSelected(FieldNamed(screen, tested.field), 0, 1);
      FieldNamed(screen, tested.field).text = u"";
    }
  });
  EXPECT_TRUE(store.Untouched());
}

// --- What the caller is told

TEST_P(Trigger, TellsTheCallerOfEachAppliedRowWhileItIsOpen) {
  InTriggers(0, [&](EMailTriggerSettingScreen& screen) {
    user.Type(FieldNamed(screen, "txtTitle"), u"one");
    user.Click(screen.browsing.apply);
    EXPECT_EQ(std::vector<int>{1}, told);
    EXPECT_EQ("one", TrimmedText("X", 0, "ETTL")); // stored by then
    user.Click(screen.browsing.btnNext);
    user.Click(screen.browsing.btnNext);
    user.Type(FieldNamed(screen, "txtTitle"), u"three");
    user.Click(screen.browsing.apply);
    EXPECT_EQ((std::vector<int>{1, 3}), told);
    user.Type(FieldNamed(screen, "txtTitle"), u"nobody's");
    user.Click(screen.browsing.close);
  });
  EXPECT_EQ((std::vector<int>{1, 3}), told);
}

TEST_P(Trigger, TheCallerReadsWhatIsStoredWhenItIsTold) {
  platform.screens.Expect<EMailTriggerSettingScreen>("frmEMailTriggerSetting", [&](auto& screen) {
    user.Choose(ListNamed(screen, "cmbTriggerTiming"), 6);
    user.Click(screen.chkRecvMailAddNo(7));
    user.Click(screen.browsing.apply);
  });
  Texts seen;
  ShowEMailTriggerSetting(4, [&](int number) {
    seen = {std::to_string(number), std::to_string(Stored("X", 4, "ETRG")),
            std::to_string(Stored("X", 4, "EADD"))};
  });
  EXPECT_EQ((Texts{"5", "6", "128"}), seen);
}

TEST_P(Trigger, TheCallerNeedNotBeTold) {
  platform.screens.Expect<EMailTriggerSettingScreen>("frmEMailTriggerSetting", [&](auto& screen) {
    user.Choose(ListNamed(screen, "cmbTriggerTiming"), 6);
    user.Click(screen.browsing.apply);
  });
  ShowEMailTriggerSetting(0, {});
  EXPECT_EQ(6, Stored("X", 0, "ETRG"));
}

TEST_P(Trigger, StoresAllItsFieldsWithOneApplyAndThoseOfItsTriggerAlone) {
  const StoreWatch store;
  InTriggers(7, [&](EMailTriggerSettingScreen& screen) {
    user.Choose(ListNamed(screen, "cmbTriggerTiming"), 4);
    user.Choose(ListNamed(screen, "cmbTimingSetting1"), model.channels - 1);
    user.Choose(ListNamed(screen, "cmbTimingSetting2"), 3);
    user.Type(FieldNamed(screen, "txtTitle"), u"title");
    user.Type(FieldNamed(screen, "txtComment1"), u"one");
    user.Type(FieldNamed(screen, "txtComment2"), u"two");
    user.Choose(ListNamed(screen, "cmbPvValueAffixation"), 1);
    for (CheckBox& box : screen.chkRecvMailAddNo) {
      user.Click(box);
    }
    user.Click(screen.browsing.apply);
    user.Click(screen.browsing.close);
  });
  EXPECT_EQ((Texts{"X7 ETRG 4", "X7 ETG1 " + std::to_string(model.channels - 1), "X7 ETG2 3", "X7 EADD 255",
                   "X7 EPVA 1", "X7 ECM1 one", "X7 ECM2 two", "X7 ETTL title"}),
            store.Changes());
}

TEST_P(Trigger, NamesItsFieldsForOthers) {
  Texts controls;
  for (const FieldRow& row : MailTriggerFields()) {
    controls.emplace_back(row.control);
  }
  EXPECT_EQ((Texts{"cmbTriggerTiming", "cmbTimingSetting1", "cmbTimingSetting2", "txtTitle", "txtComment1",
                   "txtComment2", "cmbPvValueAffixation"}),
            controls);
}

} // namespace
} // namespace loader::test
