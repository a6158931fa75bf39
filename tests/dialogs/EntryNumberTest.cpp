// The number of the entry as the user types it: messages, units, constants.
#include <tuple>

#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

class EntryNumber : public Dialogs,
                    public testing::WithParamInterface<std::tuple<BrowsedDialog, ModelFacts>> {
protected:
  void SetUp() override {
    Start(std::get<1>(GetParam()));
    dialog = std::get<0>(GetParam());
    entries = model.*dialog.entries;
  }
  void Show(int entry, const std::function<void()>& act) {
    platform.screens.Expect(dialog.screen, [&](Screen& shown) {
      screen = &shown;
      frame = &dialog.frame(shown);
      act();
    });
    dialog.show(entry);
  }
  TextField& Field() { return FieldNamed(*screen, dialog.field); }
  void ExpectRangeMessage() {
    ExpectMessage(u"1 ～ " + FromUtf8(std::to_string(entries)) + u"の範囲で入力してください");
  }

  BrowsedDialog dialog = Messages;
  int entries = 0;
  Screen* screen = nullptr;
  BrowsingFrame* frame = nullptr;
};
INSTANTIATE_TEST_SUITE_P(Dialogs, EntryNumber,
                         testing::Combine(testing::Values(Messages, Units, Constants),
                                          testing::Values(Kov, Rug)),
                         [](const auto& tested) {
                           return std::string(std::get<0>(tested.param).name) +
                                  std::get<1>(tested.param).code;
                         });

TEST_P(EntryNumber, ShowsItsEntry) {
  Show(0, [&] {
    for (int number = 1; number <= entries; ++number) {
      user.Type(frame->number, FromUtf8(std::to_string(number)));
      EXPECT_EQ(number == 1 ? 0 : number - 2, frame->entry); // not before the field is left
      EXPECT_TRUE(user.Leave(frame->number));
      EXPECT_EQ(number - 1, frame->entry);
      EXPECT_EQ(std::to_string(number), ToUtf8(frame->number.text));
    }
  });
}

TEST_P(EntryNumber, MayBeWrittenInAnyWayThatIsAWholeNumber) {
  for (const std::u16string_view typed :
       {u"3", u" 3 ", u"3.0", u"+3", u"03", u"0.3e1", u"3.", u"３", u"＋３．０"}) {
    Show(0, [&] {
      user.Type(frame->number, typed);
      EXPECT_TRUE(user.Leave(frame->number)) << ToUtf8(typed);
      EXPECT_EQ(2, frame->entry) << ToUtf8(typed);
      EXPECT_EQ(u"3", frame->number.text);
    });
  }
}

TEST_P(EntryNumber, OutOfRangeIsRefusedWithTheFocusBackAndAllOfItSelected) {
  const std::u16string behind = FromUtf8(std::to_string(entries + 1));
  for (const std::u16string_view typed :
       {std::u16string_view(u"0"), std::u16string_view(behind), std::u16string_view(u"-1"),
        std::u16string_view(u"1.5"), std::u16string_view(u"0.999999"), std::u16string_view(u"1e99"),
        std::u16string_view(u"-1e999"), std::u16string_view(u"1e999"), std::u16string_view(u"32768"),
        std::u16string_view(u"4294967297")}) {
    const StoreWatch store;
    Show(1, [&] {
      user.Type(Field(), u"7");
      user.Type(frame->number, typed);
      ExpectRangeMessage();
      EXPECT_FALSE(user.Click(frame->apply)) << ToUtf8(typed);
      EXPECT_EQ(1, frame->entry);
      EXPECT_EQ(typed, frame->number.text);
      ExpectAllSelected(frame->number);
      EXPECT_EQ(u"7", Field().text);
      // It stays wrong for as long as it stands.
      ExpectRangeMessage();
      EXPECT_FALSE(user.Click(frame->btnNext));
      EXPECT_EQ(1, frame->entry);
    });
    EXPECT_TRUE(store.Untouched());
  }
}

TEST_P(EntryNumber, ThatIsNoNumberBringsTheOldOneBackAndKeepsTheFocus) {
  for (const std::u16string_view typed : {u"abc", u"", u" ", u"1,5", u"3a", u"１番", u"--1", u"1e"}) {
    const StoreWatch store;
    Show(1, [&] {
      user.Type(Field(), u"7");
      user.Type(frame->number, typed);
      ExpectMessage(FromUtf8(dialog.notANumber));
      EXPECT_FALSE(user.Click(frame->apply)) << ToUtf8(typed); // the click is not acted on
      EXPECT_EQ(u"2", frame->number.text);
      ExpectAllSelected(frame->number);
      EXPECT_EQ(1, frame->entry);
      EXPECT_EQ(u"7", Field().text);
    });
    EXPECT_TRUE(store.Untouched());
  }
}

// The old number has come back, and nobody has edited it since.
TEST_P(EntryNumber, ThatCameBackIsPassedThrough) {
  Show(1, [&] {
    user.Type(Field(), u"7");
    user.Type(frame->number, u"abc");
    ExpectMessage(FromUtf8(dialog.notANumber));
    EXPECT_FALSE(user.Click(frame->apply));
    EXPECT_TRUE(user.Click(frame->apply));
    EXPECT_EQ(u"7", Field().text);
  });
  if (dialog.tag == std::string_view("CONS")) {
    EXPECT_EQ(7, Stored("N", 1, "CONS"));
  } else {
    EXPECT_EQ("7", TrimmedText(dialog.section, 1, dialog.tag));
  }
}

TEST_P(EntryNumber, NobodyEditedIsPassedThrough) {
  Show(1, [&] {
    user.Type(Field(), u"7");
    user.MoveTo(frame->number);
    EXPECT_TRUE(user.Leave(frame->number));
    EXPECT_EQ(u"7", Field().text);
    user.MoveTo(frame->number);
    EXPECT_TRUE(user.Click(frame->apply));
    EXPECT_EQ(u"7", Field().text);
  });
}

TEST_P(EntryNumber, EditedToTheSameNumberBringsTheStoredEntryBack) {
  const StoreWatch store;
  Show(1, [&] {
    const std::u16string stored = Field().text;
    user.Type(Field(), u"7");
    user.Type(frame->number, u"2");
    EXPECT_TRUE(user.Click(frame->apply));
    EXPECT_EQ(stored, Field().text);
    EXPECT_EQ(1, frame->entry);
    // And from then on it is a number that nobody edited.
    user.Type(Field(), u"8");
    user.MoveTo(frame->number);
    EXPECT_TRUE(user.Leave(frame->number));
    EXPECT_EQ(u"8", Field().text);
  });
  EXPECT_TRUE(store.Untouched());
}

// The number was edited before another way led to an entry: nothing of the edit is left.
TEST_P(EntryNumber, LeftByAButtonShowsItsEntryFirst) {
  Show(1, [&] {
    user.Type(frame->number, u"5");
    EXPECT_TRUE(user.Click(frame->btnNext));
    EXPECT_EQ(5, frame->entry);
    EXPECT_EQ(u"6", frame->number.text);
    user.Type(Field(), u"7");
    user.MoveTo(frame->number);
    EXPECT_TRUE(user.Leave(frame->number));
    EXPECT_EQ(u"7", Field().text);
  });
}

class NumberOfReadOnlyEntry : public OnBothModels {};
LOADER_DIALOGS_OF_BOTH_MODELS(NumberOfReadOnlyEntry);

TEST_P(NumberOfReadOnlyEntry, TakesNoTextAndIsPassedThrough) {
  for (const BrowsedDialog& dialog : {Groups, Triggers}) {
    platform.screens.Expect(dialog.screen, [&](Screen& screen) {
      BrowsingFrame& frame = dialog.frame(screen);
      EXPECT_FALSE(user.Type(frame.number, u"3"));
      EXPECT_FALSE(frame.texts.has_value());
      TextField& field = FieldNamed(screen, dialog.field);
      user.Type(field, u"7");
      EXPECT_TRUE(user.MoveTo(frame.number));
      EXPECT_TRUE(user.Click(frame.apply));
      EXPECT_EQ(u"7", field.text);
    });
    dialog.show(2);
  }
}

} // namespace
} // namespace loader::test
