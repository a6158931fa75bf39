// The screen that sets the recorder's clock, on its records alone.
#include "comm/frmTimeChange.h"

#include "channel/modUtil.h"
#include "core/TextTable.h"
#include "tests/comm/CommFixture.h"

namespace loader::test {
namespace {

struct TimeChange : RecorderFixture {
  TimeChange() { StopTimer(WaitTimer2); }
  void StartOn(Line line, std::string_view version = "V40A") {
    Start("KOV", version);
    Configure(line);
  }
  void Show(const std::function<void(TimeChangeScreen&)>& act) {
    platform.screens.Expect<TimeChangeScreen>("frmTimeChange", act);
    ShowTimeChange(window);
  }
  static void SetFields(TimeChangeScreen& screen, std::u16string_view year, std::u16string_view month,
                        std::u16string_view day) {
    screen.txtYear.text = year;
    screen.txtMonth.text = month;
    screen.txtDay.text = day;
  }
  ScriptedUser user;
};

TEST_F(TimeChange, HasItsCaptions) {
  Show([](TimeChangeScreen& screen) {
    EXPECT_EQ(screen.caption, u"時間設定");
    EXPECT_EQ(screen.Label3.caption, u"時間は２４時制で入力してください");
    EXPECT_EQ(screen.lblYear.caption, u"年");
    EXPECT_EQ(screen.lblMonth.caption, u"月");
    EXPECT_EQ(screen.lblDay.caption, u"日");
    EXPECT_EQ(screen.lblHour.caption, u"時");
    EXPECT_EQ(screen.lblMinute.caption, u"分");
    EXPECT_EQ(screen.cmdOK.caption, u"変更");
    EXPECT_EQ(screen.cmdCancel.caption, u"キャンセル");
  });
}

TEST_F(TimeChange, NamesItsControls) {
  Show([](TimeChangeScreen& screen) {
    for (const char* name : {"Label3", "txtYear", "txtMonth", "txtDay", "txtHour", "txtMinute", "lblYear",
                             "lblMonth", "lblDay", "lblHour", "lblMinute", "cmdOK", "cmdCancel"}) {
      EXPECT_NE(screen.Find(name), nullptr) << name;
    }
  });
}

TEST_F(TimeChange, OpensWithTheComputersDateAndTime) {
  platform.time.now = {2026, 11, 21, 13, 45, 59};
  Show([](TimeChangeScreen& screen) {
    EXPECT_EQ(screen.txtYear.text, u"26");
    EXPECT_EQ(screen.txtMonth.text, u"11");
    EXPECT_EQ(screen.txtDay.text, u"21");
    EXPECT_EQ(screen.txtHour.text, u"13");
    EXPECT_EQ(screen.txtMinute.text, u"45");
  });
}

TEST_F(TimeChange, OpensWithPlainNumbersButAYearOfTwoDigits) {
  platform.time.now = {2007, 2, 3, 4, 5, 6};
  Show([](TimeChangeScreen& screen) {
    EXPECT_EQ(screen.txtYear.text, u"07");
    EXPECT_EQ(screen.txtMonth.text, u"2");
    EXPECT_EQ(screen.txtDay.text, u"3");
    EXPECT_EQ(screen.txtHour.text, u"4");
    EXPECT_EQ(screen.txtMinute.text, u"5");
  });
}

TEST_F(TimeChange, OpensInAYearOfTheCenturysTurn) {
  platform.time.now = {2100, 1, 1, 0, 0, 0};
  Show([](TimeChangeScreen& screen) { EXPECT_EQ(screen.txtYear.text, u"00"); });
}

TEST_F(TimeChange, OkSetsTheRecordersClock) {
  StartOn(Line::Serial);
  platform.time.now = {2025, 7, 4, 13, 5, 30};
  Show([&](TimeChangeScreen& screen) { user.Click(screen.cmdOK); });
  EXPECT_EQ(ToHex(platform.serial.wire.sent.at(2)),
            "01 10 00 0A 00 06 0C 00 01 00 19 00 07 00 04 00 0D 00 05 F9 DC");
}

TEST_F(TimeChange, OkSendsWhatWasTyped) {
  StartOn(Line::Ethernet);
  Show([&](TimeChangeScreen& screen) {
    user.Type(screen.txtYear, u"7");
    user.Type(screen.txtMonth, u"02");
    user.Type(screen.txtDay, u"28");
    user.Type(screen.txtHour, u"0");
    user.Type(screen.txtMinute, u"59");
    user.Click(screen.cmdOK);
  });
  EXPECT_EQ(recorder.Register(40011), 1);
  EXPECT_EQ(recorder.Register(40012), 7);
  EXPECT_EQ(recorder.Register(40013), 2);
  EXPECT_EQ(recorder.Register(40014), 28);
  EXPECT_EQ(recorder.Register(40015), 0);
  EXPECT_EQ(recorder.Register(40016), 59);
}

TEST_F(TimeChange, TheScreenStaysOpenAndOnlyCancelClosesIt) {
  StartOn(Line::Ethernet);
  Show([&](TimeChangeScreen& screen) {
    user.Click(screen.cmdOK);
    EXPECT_TRUE(platform.screens.closed.empty());
    user.Click(screen.cmdCancel);
    EXPECT_EQ(platform.screens.closed, std::vector<Screen*>{&screen});
  });
}

TEST_F(TimeChange, ADateThatIsNoneIsToldWithoutAnyTraffic) {
  StartOn(Line::Serial);
  Show([&](TimeChangeScreen& screen) {
    SetFields(screen, u"7", u"2", u"30");
    platform.ExpectBox(62500);
    user.Click(screen.cmdOK);
  });
  EXPECT_TRUE(platform.serial.opened.empty());
  EXPECT_TRUE(log.steps.empty());
  EXPECT_TRUE(platform.screens.closed.empty());
}

TEST_F(TimeChange, TheMessageOfABadDateEndsInABlank) {
  EXPECT_EQ(LoadText(62500), u"日付が不正です。 ");
}

struct DateRow {
  const char16_t* year;
  const char16_t* month;
  const char16_t* day;
  bool good;
};
void PrintTo(const DateRow& row, std::ostream* out) {
  *out << ToUtf8(row.year) << "/" << ToUtf8(row.month) << "/" << ToUtf8(row.day);
}
struct Dates : TimeChange, ::testing::WithParamInterface<DateRow> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, Dates,
    ::testing::Values(DateRow{u"00", u"2", u"29", true}, DateRow{u"24", u"2", u"29", true},
                      DateRow{u"25", u"2", u"29", false}, DateRow{u"96", u"2", u"29", true},
                      DateRow{u"99", u"12", u"31", true}, DateRow{u"25", u"4", u"31", false},
                      DateRow{u"25", u"4", u"30", true}, DateRow{u"25", u"13", u"1", false},
                      DateRow{u"25", u"0", u"1", false}, DateRow{u"25", u"1", u"0", false},
                      DateRow{u"25", u"1", u"32", false}, DateRow{u" 25 ", u" 1", u"1 ", true},
                      DateRow{u"", u"1", u"1", false}, DateRow{u"25", u"", u"1", false},
                      DateRow{u"25", u"1", u"", false}, DateRow{u"2025", u"1", u"1", false},
                      DateRow{u"12.9", u"1", u"1", false}, DateRow{u"-1", u"1", u"1", false},
                      DateRow{u"1e1", u"1", u"1", false}, DateRow{u"abc", u"1", u"1", false}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST_P(Dates, AreThoseOfTheCalendarOfThisCentury) {
  StartOn(Line::Ethernet);
  Show([&](TimeChangeScreen& screen) {
    SetFields(screen, GetParam().year, GetParam().month, GetParam().day);
    if (!GetParam().good) {
      platform.ExpectBox(62500);
    }
    user.Click(screen.cmdOK);
  });
  EXPECT_EQ(recorder.requests.size(), GetParam().good ? 3U : 0U);
}

struct RangeRow {
  const char* field;
  int lowest;
  int highest;
};
void PrintTo(const RangeRow& row, std::ostream* out) {
  *out << row.field;
}
struct FieldRanges : TimeChange, ::testing::WithParamInterface<RangeRow> {
  static TextField& Field(Screen& screen) { return static_cast<TextField&>(*screen.Find(GetParam().field)); }
};
INSTANTIATE_TEST_SUITE_P(Rows, FieldRanges,
                         ::testing::Values(RangeRow{"txtYear", 0, 99}, RangeRow{"txtMonth", 1, 12},
                                           RangeRow{"txtDay", 1, 31}, RangeRow{"txtHour", 0, 23},
                                           RangeRow{"txtMinute", 0, 59}),
                         [](const auto& row) { return std::string(row.param.field); });

TEST_P(FieldRanges, TheEndsAreGood) {
  Show([&](TimeChangeScreen& screen) {
    for (const int value : {GetParam().lowest, GetParam().highest}) {
      user.Type(Field(screen), DecimalText(value));
      EXPECT_TRUE(user.Leave(Field(screen))) << value;
    }
  });
}

TEST_P(FieldRanges, BeyondTheEndsTheRangeIsToldAndTheFieldTakesTheFocusBack) {
  for (const int value : {GetParam().lowest - 1, GetParam().highest + 1}) {
    Show([&](TimeChangeScreen& screen) {
      TextField& field = Field(screen);
      user.Type(field, DecimalText(value));
      platform.boxes.Expect(DecimalText(GetParam().lowest) + u"から" + DecimalText(GetParam().highest) +
                            u"の値を入力してください");
      EXPECT_FALSE(user.Leave(field));
      EXPECT_EQ(field.selStart, 0);
      EXPECT_EQ(field.selLength, static_cast<int>(field.text.size()));
      EXPECT_TRUE(WaitTimer2.Enabled);
    });
    StopTimer(WaitTimer2);
  }
}

TEST_P(FieldRanges, AfterABadFieldNoOtherFieldReportsForAMoment) {
  Show([&](TimeChangeScreen& screen) {
    TextField& field = Field(screen);
    TextField& other = &field == &screen.txtHour ? screen.txtMinute : screen.txtHour;
    user.Type(field, u"999");
    platform.boxes.Expect(DecimalText(GetParam().lowest) + u"から" + DecimalText(GetParam().highest) +
                          u"の値を入力してください");
    EXPECT_FALSE(user.Leave(field));
    other.text = u"999";
    user.Leave(other);
    EXPECT_EQ(platform.boxes.shown.size(), 1U);
    EXPECT_EQ(other.text, u"999");
  });
}

TEST_F(TimeChange, AFieldThatIsNoNumberIsRefused) {
  Show([&](TimeChangeScreen& screen) {
    user.Type(screen.txtMonth, u"abc");
    platform.ExpectBox(62200);
    EXPECT_FALSE(user.Leave(screen.txtMonth));
  });
}

TEST_F(TimeChange, TheFieldsButTheYearAreRewrittenInNormalForm) {
  Show([&](TimeChangeScreen& screen) {
    user.Type(screen.txtMonth, u"03");
    user.Type(screen.txtHour, u"9.7");
    user.Type(screen.txtYear, u"7");
    user.Leave(screen.txtYear);
    EXPECT_EQ(screen.txtMonth.text, u"3");
    EXPECT_EQ(screen.txtHour.text, u"9");
    EXPECT_EQ(screen.txtYear.text, u"07");
  });
}

TEST_F(TimeChange, TheYearKeepsWhatWasTyped) {
  Show([&](TimeChangeScreen& screen) {
    user.Type(screen.txtYear, u"12.9");
    EXPECT_TRUE(user.Leave(screen.txtYear));
    EXPECT_EQ(screen.txtYear.text, u"12.9");
  });
}

// Only a digit is filled up to two; what is no number is refused as a month is.
TEST_F(TimeChange, AYearOfOneCharacterThatIsNoDigitIsRefusedAsItIs) {
  StartOn(Line::Ethernet);
  for (const char16_t* text : {u" ", u"x", u"-", u".", u"年"}) {
    Show([&](TimeChangeScreen& screen) {
      user.Type(screen.txtYear, text);
      platform.ExpectBox(62200);
      EXPECT_FALSE(user.Leave(screen.txtYear));
      EXPECT_EQ(screen.txtYear.text, text);
      // The click that follows sends no year 00 either.
      platform.ExpectBox(62500);
      user.Click(screen.cmdOK);
    });
    platform.time.Advance(100); // the guard behind the message
  }
  EXPECT_TRUE(recorder.requests.empty());
}

// A field that is left within the guard behind another field's message is not checked by that.
TEST_F(TimeChange, ATimeThatPassedItsCheckByIsNeverSent) {
  struct Slip {
    TextField TimeChangeScreen::*field;
    const char16_t* text;
    const char16_t* message;
  };
  const Slip slips[] = {
      {&TimeChangeScreen::txtHour, u"abc", u"数字ではありません。"},
      {&TimeChangeScreen::txtHour, u"99", u"0から23の値を入力してください"},
      {&TimeChangeScreen::txtMinute, u"", u"数字ではありません。"},
      {&TimeChangeScreen::txtMinute, u"60", u"0から59の値を入力してください"},
  };
  StartOn(Line::Ethernet);
  for (const Slip& slip : slips) {
    Show([&](TimeChangeScreen& screen) {
      (screen.*slip.field).text = slip.text;
      platform.boxes.Expect(slip.message);
      user.Click(screen.cmdOK);
    });
    platform.time.Advance(100); // the guard behind the message
  }
  EXPECT_TRUE(recorder.requests.empty());
}

TEST_F(TimeChange, StaysOpenUntilItsExchangeHasEnded) {
  StartOn(Line::Ethernet);
  platform.socket.connectDelay = 2000;
  Show([&](TimeChangeScreen& screen) {
    const auto cancel = [&] {
      platform.ExpectBox(20102);
      user.Click(screen.cmdCancel);
    };
    platform.time.After(1000, cancel); // while the link is being opened
    recorder.onRequest = [&](int request) {
      if (request == 1) {
        cancel();
      }
    };
    user.Click(screen.cmdOK);
    EXPECT_TRUE(platform.screens.closed.empty());
    user.Click(screen.cmdCancel);
    EXPECT_EQ(platform.screens.closed, std::vector<Screen*>{&screen});
  });
  EXPECT_EQ(platform.boxes.shown.size(), 2U);
  EXPECT_EQ(recorder.requests.size(), 3U);
}

TEST_F(TimeChange, ABusyRecorderIsRefused) {
  StartOn(Line::Ethernet);
  recorder.PutState(0x0080);
  Show([&](TimeChangeScreen& screen) {
    platform.ExpectBox(62502);
    user.Click(screen.cmdOK);
  });
  EXPECT_EQ(recorder.requests.size(), 1U);
}

TEST_F(TimeChange, ALinkThatDoesNotOpenLeavesTheScreenOpen) {
  StartOn(Line::Serial);
  platform.serial.failOpen = true;
  Show([&](TimeChangeScreen& screen) {
    platform.ExpectBox(11004);
    user.Click(screen.cmdOK);
  });
  EXPECT_TRUE(platform.screens.closed.empty());
  EXPECT_TRUE(log.steps.empty());
}

TEST_F(TimeChange, ASecondClickDuringTheExchangeStartsNothing) {
  StartOn(Line::Ethernet);
  Show([&](TimeChangeScreen& screen) {
    recorder.onRequest = [&](int) { platform.time.After(0, [&] { user.Click(screen.cmdOK); }); };
    user.Click(screen.cmdOK);
  });
  EXPECT_EQ(recorder.requests.size(), 3U);
  EXPECT_EQ(platform.socket.connected.size(), 1U);
}

TEST_F(TimeChange, TheNextClickAfterTheExchangeWorksAgain) {
  StartOn(Line::Ethernet);
  Show([&](TimeChangeScreen& screen) {
    user.Click(screen.cmdOK);
    user.Click(screen.cmdOK);
  });
  EXPECT_EQ(recorder.requests.size(), 6U);
}

TEST_F(TimeChange, FullWidthDigitsAreTakenAndShownAsPlainOnes) {
  StartOn(Line::Ethernet);
  Show([&](TimeChangeScreen& screen) {
    user.Type(screen.txtYear, u"７");
    user.Type(screen.txtMonth, u"０２");
    EXPECT_EQ(screen.txtYear.text, u"07");
    user.Type(screen.txtDay, u"２８");
    user.Click(screen.cmdOK);
    EXPECT_EQ(screen.txtMonth.text, u"2");
  });
  EXPECT_EQ(recorder.Register(40012), 7);
  EXPECT_EQ(recorder.Register(40013), 2);
  EXPECT_EQ(recorder.Register(40014), 28);
}

// Behind another message no field is checked: the year is as it was typed.
TEST_F(TimeChange, AFullWidthYearThatWasNotCheckedIsANumberToo) {
  StartOn(Line::Ethernet);
  Show([&](TimeChangeScreen& screen) {
    SetFields(screen, u"２５", u"２", u"３");
    user.Click(screen.cmdOK);
  });
  EXPECT_EQ(recorder.Register(40012), 25);
  EXPECT_EQ(recorder.Register(40014), 3);
}

} // namespace
} // namespace loader::test
