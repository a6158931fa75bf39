// The frame of the dialogs that show one entry at a time: over all five of them, and by itself.
#include "dialogs/Browsing.h"

#include <tuple>

#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

class Browsing : public Dialogs, public testing::WithParamInterface<std::tuple<BrowsedDialog, ModelFacts>> {
protected:
  void SetUp() override {
    Start(std::get<1>(GetParam()));
    dialog = std::get<0>(GetParam());
    last = model.*dialog.entries - 1;
    for (int entry = 0; entry <= last; ++entry) {
      if (IsNumber()) {
        Put("N", entry, "CONS", 100 + entry);
      } else {
        PutText(dialog.section, entry, dialog.tag, TextOf(entry));
      }
    }
  }
  [[nodiscard]] bool IsNumber() const { return std::string_view(dialog.tag) == "CONS"; }
  // What the entry's field shows.
  static std::string TextOf(int entry) { return std::to_string(100 + entry); }

  void Show(int entry, const std::function<void()>& act) {
    platform.screens.Expect(dialog.screen, [&](Screen& shown) {
      screen = &shown;
      frame = &dialog.frame(shown);
      act();
    });
    dialog.show(entry);
  }
  TextField& Field() { return FieldNamed(*screen, dialog.field); }
  void ExpectEntry(int entry) {
    EXPECT_EQ(dialog.beforeNumber + std::to_string(entry + 1), ToUtf8(frame->number.text));
    EXPECT_EQ(TextOf(entry), ToUtf8(Field().text));
  }

  BrowsedDialog dialog = Groups;
  int last = 0;
  Screen* screen = nullptr;
  BrowsingFrame* frame = nullptr;
};
const auto NameOfCase = [](const auto& tested) {
  return std::string(std::get<0>(tested.param).name) + std::get<1>(tested.param).code;
};
INSTANTIATE_TEST_SUITE_P(Dialogs, Browsing,
                         testing::Combine(testing::Values(Groups, Messages, Units, Constants, Triggers),
                                          testing::Values(Kov, Rug)),
                         NameOfCase);

TEST_P(Browsing, HasItsCaptionsAndOneRowOfButtons) {
  Show(0, [&] {
    EXPECT_EQ(dialog.caption, ToUtf8(screen->caption));
    const auto expect = [&](const char* name, const char* caption) {
      const Control& control = ControlNamed(*screen, name);
      ASSERT_EQ(ControlKind::Button, control.kind) << name;
      EXPECT_EQ(caption, ToUtf8(static_cast<const Button&>(control).caption));
    };
    expect("btnTop", "トップ");
    expect("btnPrev", "前");
    expect("btnNext", "次");
    expect("btnReset", "元に戻す");
    expect("btnOk", "適用");
    expect("btnCancel", "終了");
    EXPECT_EQ(&frame->number, screen->Find("txtSelectNo"));
    EXPECT_EQ(dialog.numberTyped, !frame->number.readOnly);
    EXPECT_EQ(0, frame->range.first);
    EXPECT_EQ(0, frame->range.top);
    EXPECT_EQ(last, frame->range.last);
  });
}

TEST_P(Browsing, OpensAtTheEntryOfTheCaller) {
  for (int entry = 0; entry <= last; ++entry) {
    Show(entry, [&] { ExpectEntry(entry); });
  }
}

TEST_P(Browsing, NextGoesToTheLastEntryAndStaysThere) {
  const StoreWatch store;
  Show(0, [&] {
    for (int entry = 1; entry <= last; ++entry) {
      EXPECT_TRUE(user.Click(frame->btnNext));
      ExpectEntry(entry);
    }
    EXPECT_TRUE(user.Click(frame->btnNext));
    ExpectEntry(last);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Browsing, PreviousGoesToTheFirstEntryAndStaysThere) {
  const StoreWatch store;
  Show(last, [&] {
    for (int entry = last - 1; entry >= 0; --entry) {
      EXPECT_TRUE(user.Click(frame->btnPrev));
      ExpectEntry(entry);
    }
    EXPECT_TRUE(user.Click(frame->btnPrev));
    ExpectEntry(0);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Browsing, TopGoesToTheFirstEntryFromWherever) {
  for (int entry = 0; entry <= last; ++entry) {
    Show(entry, [&] {
      EXPECT_TRUE(user.Click(frame->btnTop));
      ExpectEntry(0);
    });
  }
}

// At both ends too, where the entry stays.
TEST_P(Browsing, WhatWasTypedAndNotAppliedIsGoneWithTheNextEntry) {
  const StoreWatch store;
  Show(0, [&] {
    for (const int entry : {0, last}) {
      for (Button* button : {&frame->btnTop, &frame->btnPrev, &frame->btnNext, &frame->btnReset}) {
        LoadEntry(*frame, entry);
        user.Type(Field(), u"7");
        EXPECT_TRUE(user.Click(*button));
        ExpectEntry(frame->entry);
        EXPECT_TRUE(user.Click(frame->apply)); // the typed one does not come back
        ExpectEntry(frame->entry);
      }
    }
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Browsing, ResetBringsTheStoredEntryBack) {
  Show(1, [&] {
    user.Type(Field(), u"7");
    EXPECT_TRUE(user.Click(frame->btnReset));
    ExpectEntry(1);
  });
}

TEST_P(Browsing, ApplyStoresTheEntryAndStays) {
  const StoreWatch store;
  Show(1, [&] {
    user.Type(Field(), u"7");
    EXPECT_TRUE(store.Untouched()); // not before
    EXPECT_TRUE(user.Click(frame->apply));
    EXPECT_TRUE(platform.screens.Reachable(*screen));
    EXPECT_EQ(u"7", Field().text);
    EXPECT_EQ(1, frame->entry);
    EXPECT_TRUE(user.Click(frame->btnNext));
    EXPECT_TRUE(user.Click(frame->btnPrev));
    EXPECT_EQ(u"7", Field().text);
  });
  EXPECT_EQ(Texts{dialog.section + std::string("1 ") + dialog.tag + " 7"}, store.Changes());
}

TEST_P(Browsing, ClosingKeepsWhatWasAppliedAndDropsTheRest) {
  const StoreWatch store;
  Show(0, [&] {
    user.Type(Field(), u"7");
    EXPECT_TRUE(user.Click(frame->apply));
    user.Type(Field(), u"8");
    EXPECT_TRUE(user.Click(frame->close));
    EXPECT_EQ(std::vector<Screen*>{screen}, platform.screens.closed);
    EXPECT_FALSE(user.Type(Field(), u"9"));
  });
  EXPECT_EQ(Texts{dialog.section + std::string("0 ") + dialog.tag + " 7"}, store.Changes());
}

// A text that its check would refuse: nobody asks.
TEST_P(Browsing, EscapeAndTheCrossCloseWithoutACheckAndWithoutWriting) {
  const StoreWatch store;
  for (const bool byEscape : {true, false}) {
    Show(0, [&] {
      user.Type(Field(), u"a,b");
      EXPECT_TRUE(byEscape ? user.Escape(*screen) : user.CloseWindow(*screen));
    });
    if (dialog.numberTyped) {
      Show(0, [&] {
        user.Type(frame->number, u"abc");
        EXPECT_TRUE(byEscape ? user.Escape(*screen) : user.CloseWindow(*screen));
      });
    }
  }
  EXPECT_TRUE(store.Untouched());
}

// The value of a constant is checked by its apply alone.
class BrowsingOfTexts : public Browsing {};
INSTANTIATE_TEST_SUITE_P(Dialogs, BrowsingOfTexts,
                         testing::Combine(testing::Values(Groups, Messages, Units, Triggers),
                                          testing::Values(Kov, Rug)),
                         NameOfCase);
TEST_P(BrowsingOfTexts, AWrongTextHoldsUpEveryClickWithItsOneMessage) {
  const StoreWatch store;
  Show(1, [&] {
    user.Type(Field(), u"a,b");
    for (Button* button :
         {&frame->btnTop, &frame->btnPrev, &frame->btnNext, &frame->btnReset, &frame->apply, &frame->close}) {
      ExpectMessage(u"「,」は入力できません");
      EXPECT_FALSE(user.Click(*button)) << button->name;
      EXPECT_EQ(1, frame->entry);
      EXPECT_EQ(u"a,b", Field().text);
      ExpectSelected(Field(), 1, 1);
    }
    EXPECT_TRUE(platform.screens.closed.empty());
    user.Type(Field(), u"ab");
    EXPECT_TRUE(user.Click(frame->close));
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Browsing, AnApplyWithoutAChangeLeavesTheStoreInEveryEntry) {
  for (int entry = 0; entry <= last; ++entry) {
    if (!IsNumber()) {
      PutText(dialog.section, entry, dialog.tag, "  x" + std::to_string(entry));
    }
  }
  const StoreWatch store;
  Show(0, [&] {
    for (int entry = 0; entry <= last; ++entry) {
      EXPECT_TRUE(user.Click(frame->apply));
      user.MoveTo(Field());
      EXPECT_TRUE(user.Click(frame->apply));
      EXPECT_TRUE(user.Click(frame->btnNext));
    }
  });
  EXPECT_TRUE(store.Untouched());
}

// A dialog that is opened again knows nothing of the last time.
TEST_P(Browsing, EveryOpeningStartsAnew) {
  Show(1, [&] { user.Type(Field(), u"7"); });
  Show(1, [&] { ExpectEntry(1); });
}

// --- The frame by itself, with entries as a screen of operation channels has them

struct FramedScreen : Screen {
  explicit FramedScreen(BrowsingRange range)
      : Screen("frmSample"),
        browsing(*this, range, EntryTexts{62102, 62103, u"@CHASU@"},
                 {.number = "txtChannel", .apply = "OKButton", .close = "CancelButton"}) {
    browsing.onLoad = [this] { loaded.push_back(browsing.entry); };
    browsing.onApply = [this] { ++applied; };
  }
  BrowsingFrame browsing;
  std::vector<int> loaded;
  int applied = 0;
};

class Frame36To71 : public Dialogs {
protected:
  void Show(const std::function<void(FramedScreen&)>& act) {
    platform.screens.Expect<FramedScreen>("frmSample", act);
    FramedScreen screen({.first = 36, .last = 71, .top = 40});
    LoadEntry(screen.browsing, 50);
    platform.screens.ShowModal(screen);
  }
};

TEST_F(Frame36To71, HasTheNamesOfItsScreen) {
  Show([](FramedScreen& screen) {
    EXPECT_EQ(&screen.browsing.number, screen.Find("txtChannel"));
    EXPECT_EQ(&screen.browsing.apply, screen.Find("OKButton"));
    EXPECT_EQ(&screen.browsing.close, screen.Find("CancelButton"));
    EXPECT_EQ(nullptr, screen.Find("txtSelectNo"));
    EXPECT_EQ(nullptr, screen.Find("btnOk"));
    EXPECT_EQ(nullptr, screen.Find("btnCancel"));
  });
}

TEST_F(Frame36To71, MovesBetweenItsEndsAndTopGoesWhereItSays) {
  Show([&](FramedScreen& screen) {
    BrowsingFrame& frame = screen.browsing;
    EXPECT_EQ(u"51", frame.number.text);
    user.Click(frame.btnTop);
    EXPECT_EQ(40, frame.entry);
    EXPECT_EQ(u"41", frame.number.text);
    LoadEntry(frame, 37);
    user.Click(frame.btnPrev);
    user.Click(frame.btnPrev);
    EXPECT_EQ(36, frame.entry);
    LoadEntry(frame, 70);
    user.Click(frame.btnNext);
    user.Click(frame.btnNext);
    EXPECT_EQ(71, frame.entry);
    user.Click(frame.btnReset);
    EXPECT_EQ((std::vector<int>{50, 40, 37, 36, 36, 70, 71, 71, 71}), screen.loaded);
  });
}

TEST_F(Frame36To71, TakesTheNumbersOfItsEntries) {
  Show([&](FramedScreen& screen) {
    BrowsingFrame& frame = screen.browsing;
    for (const auto& [typed, entry] : {std::pair{u"37", 36}, {u"72", 71}, {u"40", 39}}) {
      user.Type(frame.number, typed);
      EXPECT_TRUE(user.Leave(frame.number));
      EXPECT_EQ(entry, frame.entry);
    }
    for (const std::u16string_view refused : {u"36", u"73", u"1", u"0"}) {
      user.Type(frame.number, refused);
      ExpectMessage(u"1～72の範囲で入力してください");
      EXPECT_FALSE(user.Leave(frame.number));
      EXPECT_EQ(39, frame.entry);
    }
  });
}

TEST_F(Frame36To71, ApplyIsItsScreens) {
  Show([&](FramedScreen& screen) {
    user.Click(screen.browsing.apply);
    EXPECT_EQ(1, screen.applied);
    user.Click(screen.browsing.close);
    EXPECT_EQ(std::vector<Screen*>{&screen}, platform.screens.closed);
  });
}

} // namespace
} // namespace loader::test
