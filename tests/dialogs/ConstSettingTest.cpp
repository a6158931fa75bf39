// Constants: the value and, from what is typed, its position.
#include <cstdlib>

#include "tests/dialogs/DialogFixture.h"

namespace loader::test {
namespace {

class Constant : public OnBothModels {
protected:
  void Put(int value, int position) {
    test::Put("N", 0, "CONS", value);
    test::Put("N", 0, "CONP", position);
  }
  // Types a text over the value 9 at position 3 and applies it.
  void Apply(std::u16string_view typed, const std::function<void(ConstSettingScreen&)>& then = {}) {
    Put(9, 3);
    InConstants(0, [&](ConstSettingScreen& screen) {
      user.Type(screen.txtMessage, typed);
      user.Click(screen.browsing.apply);
      if (then) {
        then(screen);
      }
    });
    platform.time.Advance(100); // the guard
  }
};
LOADER_DIALOGS_OF_BOTH_MODELS(Constant);

TEST_P(Constant, HasItsCaptions) {
  InConstants(0, [](ConstSettingScreen& screen) {
    ExpectCaption(screen, "lblMessage", "定数値");
    ExpectCaption(screen, "lblSelectNo", "選択No");
  });
}

// The digits of a stored value, with `position` of them behind the point.
std::string NumberText(int value, int position) {
  std::string digits = std::to_string(std::abs(value));
  while (static_cast<int>(digits.size()) <= position) {
    digits.insert(0, "0");
  }
  if (position > 0) {
    digits.insert(digits.size() - static_cast<std::size_t>(position), ".");
  }
  return (value < 0 ? "-" : "") + digits;
}

TEST_P(Constant, ShowsEveryStoredValueAtItsPositionAndKeepsIt) {
  EXPECT_EQ("-0.0230", NumberText(-230, 4));
  InConstants(0, [&](ConstSettingScreen& screen) {
    for (int value = -32767; value <= 32767; ++value) {
      const int position = (value + 32767) % 5;
      Put(value, position);
      user.Click(screen.browsing.btnReset);
      ASSERT_EQ(NumberText(value, position), ToUtf8(screen.txtMessage.text));
      user.Click(screen.browsing.apply);
      ASSERT_EQ(value, Stored("N", 0, "CONS"));
      ASSERT_EQ(position, Stored("N", 0, "CONP"));
    }
  });
}

TEST_P(Constant, StoresEveryValueThatCanBeTyped) {
  InConstants(0, [&](ConstSettingScreen& screen) {
    for (int position = 0; position <= 4; ++position) {
      for (int value = -32767; value <= 32767; value += value > -32700 && value < 32700 ? 13 : 1) {
        Put(value == 1 ? 2 : 1, position);
        user.Click(screen.browsing.btnReset);
        user.Type(screen.txtMessage, FromUtf8(NumberText(value, position)));
        user.Click(screen.browsing.apply);
        ASSERT_EQ(value, Stored("N", 0, "CONS"));
        ASSERT_EQ(position, Stored("N", 0, "CONP"));
        ASSERT_EQ(NumberText(value, position), ToUtf8(screen.txtMessage.text));
      }
    }
  });
}

TEST_P(Constant, TakesItsPositionFromWhatIsTyped) {
  struct Row {
    std::u16string_view typed;
    int value;
    int position;
    std::u16string_view shown;
  };
  for (const Row& row : {Row{u"1.50", 150, 2, u"1.50"},
                         {u"1.5", 15, 1, u"1.5"},
                         {u"5", 5, 0, u"5"},
                         {u"5.", 5, 0, u"5"},
                         {u".5", 5, 1, u"0.5"},
                         {u"0.12345", 1234, 4, u"0.1234"}, // cut, not rounded
                         {u"-0.99999", -9999, 4, u"-0.9999"},
                         {u"3.27679", 32767, 4, u"3.2767"},
                         {u"-1.2", -12, 1, u"-1.2"},
                         {u"+1.2", 12, 1, u"1.2"},
                         {u"  7.25  ", 725, 2, u"7.25"},
                         {u"1e2", 100, 0, u"100"},
                         {u"007", 7, 0, u"7"},
                         {u"-0", 0, 0, u"0"},
                         {u"－１．５０", -150, 2, u"-1.50"},
                         {u" ２．５ ", 25, 1, u"2.5"},
                         {u"0.0000", 0, 4, u"0.0000"},
                         {u"32767", 32767, 0, u"32767"},
                         {u"-32767", -32767, 0, u"-32767"},
                         {u"3276.7", 32767, 1, u"3276.7"},
                         {u"-327.67", -32767, 2, u"-327.67"},
                         {u"32.767", 32767, 3, u"32.767"},
                         {u"-3.2767", -32767, 4, u"-3.2767"}}) {
    Apply(row.typed,
          [&](ConstSettingScreen& screen) { EXPECT_EQ(ToUtf8(row.shown), ToUtf8(screen.txtMessage.text)); });
    EXPECT_EQ(row.value, Stored("N", 0, "CONS")) << ToUtf8(row.typed);
    EXPECT_EQ(row.position, Stored("N", 0, "CONP")) << ToUtf8(row.typed);
  }
}

// The characters behind the point are counted as they stand: 15 at position 3.
TEST_P(Constant, TakesAnExponentBehindThePointForDigits) {
  Apply(u"1.5e1", [](ConstSettingScreen& screen) { EXPECT_EQ(u"15.000", screen.txtMessage.text); });
  EXPECT_EQ(15000, Stored("N", 0, "CONS"));
  EXPECT_EQ(3, Stored("N", 0, "CONP"));
}

TEST_P(Constant, RefusesWhatDoesNotFitAtItsPosition) {
  struct Row {
    std::u16string_view typed;
    std::u16string_view from;
    std::u16string_view to;
  };
  for (const Row& row : {Row{u"32768", u"-32767", u"32767"},
                         {u"-32768", u"-32767", u"32767"},
                         {u"1e5", u"-32767", u"32767"},
                         {u"3276.8", u"-3276.7", u"3276.7"},
                         {u"-327.68", u"-327.67", u"327.67"},
                         {u"32.768", u"-32.767", u"32.767"},
                         {u"3.2768", u"-3.2767", u"3.2767"},
                         {u"12.34567", u"-3.2767", u"3.2767"}, // no position is lowered to make it fit
                         {u"40000.0", u"-3276.7", u"3276.7"}}) {
    Put(9, 3);
    const StoreWatch store;
    ExpectMessage(std::u16string(row.from) + u"から" + std::u16string(row.to) + u"の値を入力してください");
    Apply(row.typed, [&](ConstSettingScreen& screen) {
      EXPECT_EQ(row.typed, screen.txtMessage.text);
      ExpectAllSelected(screen.txtMessage);
    });
    EXPECT_TRUE(store.Untouched()) << ToUtf8(row.typed);
  }
}

TEST_P(Constant, RefusesWhatIsNoNumber) {
  for (const std::u16string_view typed : {u"abc", u"", u"1,5", u".", u"1.2.3", u"１一", u"-"}) {
    Put(9, 3);
    const StoreWatch store;
    ExpectMessage(u"数字ではありません。");
    Apply(typed, [&](ConstSettingScreen& screen) {
      EXPECT_EQ(typed, screen.txtMessage.text);
      ExpectAllSelected(screen.txtMessage);
    });
    EXPECT_TRUE(store.Untouched()) << ToUtf8(typed);
  }
}

// No message of its own; the focus is back all the same.
TEST_P(Constant, RefusesWhatCannotBeComputed) {
  Put(9, 3);
  const StoreWatch store;
  Apply(u"1e999", [&](ConstSettingScreen& screen) { ExpectAllSelected(screen.txtMessage); });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Constant, TrimsTheFieldAlsoWhenItIsRefused) {
  ExpectMessage(u"数字ではありません。");
  Apply(u"  a b ", [&](ConstSettingScreen& screen) {
    EXPECT_EQ(u"a b", screen.txtMessage.text);
    ExpectSelected(screen.txtMessage, 0, 3);
  });
}

TEST_P(Constant, ChecksItsValueOnApplyAlone) {
  const StoreWatch store;
  InConstants(0, [&](ConstSettingScreen& screen) {
    user.Type(screen.txtMessage, u"abc");
    EXPECT_TRUE(user.Leave(screen.txtMessage));
    EXPECT_EQ(u"abc", screen.txtMessage.text);
    EXPECT_TRUE(user.MoveTo(screen.browsing.number));
    EXPECT_TRUE(user.Click(screen.browsing.btnReset));
    EXPECT_EQ(u"0", screen.txtMessage.text);
    user.Type(screen.txtMessage, u"abc");
    EXPECT_TRUE(user.Click(screen.browsing.close));
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Constant, ARefusedValueStartsTheGuard) {
  InConstants(0, [&](ConstSettingScreen& screen) {
    user.Type(screen.txtMessage, u"abc");
    EXPECT_FALSE(WaitTimer2.Enabled);
    ExpectMessage(u"数字ではありません。");
    user.Click(screen.browsing.apply);
    EXPECT_TRUE(WaitTimer2.Enabled);
    // While it is on nothing is checked, said or stored.
    user.Type(screen.txtMessage, u"5");
    user.Click(screen.browsing.apply);
    EXPECT_EQ(0, Stored("N", 0, "CONS"));
    platform.time.Advance(99);
    user.Click(screen.browsing.apply);
    EXPECT_EQ(0, Stored("N", 0, "CONS"));
    platform.time.Advance(1);
    user.Click(screen.browsing.apply);
    EXPECT_EQ(5, Stored("N", 0, "CONS"));
  });
}

// The same digits at another position are another constant.
TEST_P(Constant, StoresAPositionAlone) {
  Put(0, 0);
  const StoreWatch store;
  InConstants(0, [&](ConstSettingScreen& screen) {
    user.Type(screen.txtMessage, u"0.00");
    user.Click(screen.browsing.apply);
    EXPECT_EQ(u"0.00", screen.txtMessage.text);
  });
  EXPECT_EQ(Texts{"N0 CONP 2"}, store.Changes());
}

// What counts is what is stored now, not what the entry was opened with.
TEST_P(Constant, StoresTheFirstValueAgain) {
  Put(15, 1);
  InConstants(0, [&](ConstSettingScreen& screen) {
    for (const std::u16string_view typed : {u"2", u"1.5"}) {
      user.Type(screen.txtMessage, typed);
      user.Click(screen.browsing.apply);
    }
  });
  EXPECT_EQ(15, Stored("N", 0, "CONS"));
  EXPECT_EQ(1, Stored("N", 0, "CONP"));
}

// From a file or a recorder.
TEST_P(Constant, ShowsAValueOutsideItsLimitsAsBlankAndKeepsIt) {
  Put(-32768, 2);
  const StoreWatch store;
  InConstants(0, [&](ConstSettingScreen& screen) {
    EXPECT_EQ(u"", screen.txtMessage.text);
    user.Click(screen.browsing.btnNext);
    user.Click(screen.browsing.apply);
    user.Click(screen.browsing.btnPrev);
    EXPECT_EQ(u"", screen.txtMessage.text);
    ExpectMessage(u"数字ではありません。");
    user.Click(screen.browsing.apply);
  });
  EXPECT_TRUE(store.Untouched());
}

TEST_P(Constant, ShowsAtPositionZeroWhatStandsAtAPositionThatDoesNotExist) {
  for (const int position : {5, -1, 32767, -32768}) {
    Put(1234, position);
    const StoreWatch store;
    InConstants(0, [&](ConstSettingScreen& screen) {
      EXPECT_EQ(u"1234", screen.txtMessage.text);
      user.Click(screen.browsing.apply);
    });
    EXPECT_TRUE(store.Untouched()) << position;
  }
}

TEST_P(Constant, TakesTheLimitsOfItsRecord) {
  PutLimits("N", 0, "CONS", -100, 200);
  ExpectMessage(u"-1.00から2.00の値を入力してください");
  Apply(u"2.01");
  Apply(u"2.00");
  EXPECT_EQ(200, Stored("N", 0, "CONS"));
}

TEST_P(Constant, OfAnotherEntryTakesItsOwnPosition) {
  test::Put("N", 1, "CONS", 55);
  test::Put("N", 1, "CONP", 1);
  Put(150, 2);
  InConstants(0, [&](ConstSettingScreen& screen) {
    EXPECT_EQ(u"1.50", screen.txtMessage.text);
    user.Click(screen.browsing.btnNext);
    EXPECT_EQ(u"5.5", screen.txtMessage.text);
    user.Type(screen.txtMessage, u"1.50"); // what the entry before has shown
    user.Click(screen.browsing.apply);
  });
  EXPECT_EQ(150, Stored("N", 1, "CONS"));
  EXPECT_EQ(2, Stored("N", 1, "CONP"));
}

TEST_P(Constant, NamesItsFieldForOthers) {
  ASSERT_EQ(1U, ConstantFields().size());
  EXPECT_EQ("txtMessage", ConstantFields().front().control);
  EXPECT_EQ("CONS", ConstantFields().front().tag);
}

} // namespace
} // namespace loader::test
