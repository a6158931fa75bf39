// Closing the window, and what an exchange with the recorder does to it.
#include "core/modIniReadWrite.h"
#include "tests/mainwindow/ReadingWindow.h"

namespace loader::test {
namespace {

constexpr std::u16string_view Question = u"アプリケーションを終了しますか？";
constexpr std::u16string_view Refusal = u"通信中は終了できません";

// --- The two ways to close

struct CloseWay {
  const char* name;
  void (*close)(ScriptedPlatform& platform, ScriptedUser& user);
};
void PrintTo(const CloseWay& way, std::ostream* out) {
  *out << way.name;
}
class Closing : public MainWindow, public testing::WithParamInterface<CloseWay> {
protected:
  void SetUp() override { Open("KOV"); }
  void Close() { GetParam().close(platform, user); }
  bool Closed() const { return platform.screens.closed == std::vector<Screen*>{frmParamLoader.get()}; }
};
INSTANTIATE_TEST_SUITE_P(
    Ways, Closing,
    testing::Values(CloseWay{"Menu",
                             [](ScriptedPlatform&, ScriptedUser& user) { user.Click(Window().smenuEnd); }},
                    CloseWay{"CloseBox", [](ScriptedPlatform& platform,
                                            ScriptedUser&) { platform.screens.Close(Window()); }}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(Closing, AsksAndClosesOnOk) {
  platform.boxes.Expect(Question, BoxAnswer::Ok);
  Close();
  EXPECT_TRUE(Closed());
  ASSERT_EQ(1U, platform.boxes.shown.size());
  EXPECT_EQ(BoxButtons::OkCancel, platform.boxes.shown[0].buttons);
}

TEST_P(Closing, StaysOpenOnCancel) {
  Settings.ConfiguredLink = 2;
  platform.serial.open = true;
  platform.boxes.Expect(Question, BoxAnswer::Cancel);
  Close();
  EXPECT_TRUE(platform.screens.closed.empty());
  EXPECT_TRUE(platform.serial.open);
  EXPECT_EQ(u"1", GetIniValue("LOADER", "COMMUNICATION", LoaderIniPath())) << "saved";
}

TEST_P(Closing, ClosesAnOpenSerialPort) {
  platform.serial.open = true;
  platform.boxes.Expect(Question, BoxAnswer::Ok);
  Close();
  EXPECT_FALSE(platform.serial.open);
  EXPECT_TRUE(Closed());
}

TEST_P(Closing, SavesTheProgramsSettings) {
  user.Click(Window().menuRScomunicationf(2));
  user.Click(Window().smenuCOM(3));
  Settings.StationSetting = 200;
  Settings.RecorderIpAddress = u"10.1.2.3";
  platform.boxes.Expect(Question, BoxAnswer::Ok);
  Close();
  EXPECT_EQ(u"2", GetIniValue("LOADER", "COMMUNICATION", LoaderIniPath()));
  EXPECT_EQ(u"3", GetIniValue("LOADER", "COM", LoaderIniPath()));
  EXPECT_EQ(u"200", GetIniValue("LOADER", "STNO", LoaderIniPath()));
  EXPECT_EQ(u"10.1.2.3", GetIniValue("LOADER", "IP", LoaderIniPath()));
  EXPECT_EQ(u"0", GetIniValue("LOADER", "TYPE", LoaderIniPath()));
}

TEST_P(Closing, AsksNothingAboutUnsavedChanges) {
  user.Choose(List("cmbMainSample"), 5);
  platform.boxes.Expect(Question, BoxAnswer::Ok);
  Close();
  EXPECT_TRUE(Closed());
}

TEST_P(Closing, IsRefusedWhileReading) {
  Window().btnRegRead.enabled = false;
  platform.boxes.Expect(Refusal);
  Close();
  EXPECT_TRUE(platform.screens.closed.empty());
  EXPECT_EQ(BoxButtons::Ok, platform.boxes.shown.at(0).buttons);
}

TEST_P(Closing, IsRefusedWhileWriting) {
  Window().btnRegWrite.enabled = false;
  platform.boxes.Expect(Refusal);
  Close();
  EXPECT_TRUE(platform.screens.closed.empty());
}

TEST_P(Closing, IsRefusedDuringEachFlowAndOfferedAfterIt) {
  for (const Flow flow : {Flow::ReadOrWrite, Flow::StoreSettings, Flow::SetClock}) {
    const FlowCallbacks callbacks = CallbacksOf(Window(), flow);
    callbacks.setControlsEnabled(false);
    platform.boxes.Expect(Refusal);
    Close();
    EXPECT_TRUE(platform.screens.closed.empty());
    callbacks.setControlsEnabled(true);
  }
  platform.boxes.Expect(Question, BoxAnswer::Ok);
  Close();
  EXPECT_TRUE(Closed());
}

TEST_P(Closing, IsNoMatterOfTheOtherControls) {
  Window().cmdFIX.enabled = false;
  Window().cmdTime.enabled = false;
  Window().cmbType.enabled = false;
  platform.boxes.Expect(Question, BoxAnswer::Ok);
  Close();
  EXPECT_TRUE(Closed());
}

// --- The controls of a flow

struct FlowRow {
  const char* name;
  Flow flow;
  std::vector<std::string> disabled;
};
void PrintTo(const FlowRow& row, std::ostream* out) {
  *out << row.name;
}
class FlowControls : public MainWindow, public testing::WithParamInterface<FlowRow> {
protected:
  void SetUp() override { Open("KOV"); }
  static std::vector<std::string> Disabled() {
    std::vector<std::string> names;
    for (const Control* control : Window().controls) {
      if (!control->enabled) {
        names.push_back(control->name);
      }
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  // The controls that this flow keeps disabled, and the file commands and paste, which no exchange offers.
  static std::vector<std::string> Expected() {
    std::vector<std::string> names = GetParam().disabled;
    names.insert(names.end(),
                 {"V(1)", "V(3)", "smenuOpen", "smenuOverWrite", "smenuPaste", "smenuTextWrite"});
    std::sort(names.begin(), names.end());
    return names;
  }
};
TEST_P(FlowControls, AreDisabledDuringItAndEnabledAfterIt) {
  EXPECT_TRUE(Disabled().empty());
  const FlowCallbacks callbacks = CallbacksOf(Window(), GetParam().flow);
  callbacks.setControlsEnabled(false);
  EXPECT_EQ(Expected(), Disabled());
  callbacks.setControlsEnabled(true);
  EXPECT_TRUE(Disabled().empty());
}
INSTANTIATE_TEST_SUITE_P(
    Flows, FlowControls,
    testing::Values(
        FlowRow{
            "ReadOrWrite", Flow::ReadOrWrite, {"btnRegRead", "btnRegWrite", "cmbType", "cmdFIX", "cmdTime"}},
        FlowRow{"StoreSettings", Flow::StoreSettings, {"btnRegRead", "btnRegWrite", "cmdFIX", "cmdTime"}},
        FlowRow{"SetClock", Flow::SetClock, {"btnRegRead", "btnRegWrite", "cmdFIX"}}),
    [](const auto& tested) { return std::string(tested.param.name); });

// Paste changes the set-up and waits for the end of the exchange, and for a page with tables; copy only
// remembers a row.
struct PasteRow {
  int during;
  int after;
  bool offered;
};
class PasteInAnExchange : public ReadingWindow, public testing::WithParamInterface<PasteRow> {
protected:
  static bool IsOffered() {
    EXPECT_EQ(Window().smenuPaste.enabled, Window().V(3).enabled);
    return Window().smenuPaste.enabled;
  }
};
TEST_P(PasteInAnExchange, IsOfferedAfterItOnAPageWithTables) {
  bool seen = false;
  recorder.onRequest = [&](int) {
    if (!seen && !Window().btnRegRead.enabled) {
      seen = true;
      EXPECT_FALSE(IsOffered());
      user.ChoosePage(Window().tbsParameter, GetParam().during);
      EXPECT_FALSE(IsOffered());
      user.ChoosePage(Window().tbsParameter, GetParam().after);
      EXPECT_FALSE(IsOffered());
      EXPECT_EQ(GetParam().offered, Window().V(2).enabled);
    }
  };
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  EXPECT_TRUE(seen);
  EXPECT_EQ(GetParam().offered, IsOffered());
}
// The controls are free while the link is being opened; a link that cannot be opened leaves them so.
TEST_P(PasteInAnExchange, IsAsThePageHasItAfterALinkThatDoesNotOpen) {
  Window().flowUnderWay = true;
  user.ChoosePage(Window().tbsParameter, GetParam().during);
  user.ChoosePage(Window().tbsParameter, GetParam().after);
  Window().flowUnderWay = false;
  EXPECT_EQ(GetParam().offered, IsOffered());
}
INSTANTIATE_TEST_SUITE_P(
    Pages, PasteInAnExchange,
    testing::Values(PasteRow{RecorderPage, ChannelPage, true}, PasteRow{OperationPage, DisplayPage, true},
                    PasteRow{MailPage, OperationPage, true}, PasteRow{DisplayPage, RecorderPage, false},
                    PasteRow{OperationPage, EthernetPage, false}, PasteRow{DisplayPage, MailPage, false}),
    [](const auto& tested) {
      return "Page" + std::to_string(tested.param.during) + "Then" + std::to_string(tested.param.after);
    });

TEST_F(KovWindow, RefreshOfAFlowShowsTheStore) {
  PutText("C", 0, "TAG", "READ");
  CallbacksOf(Window(), Flow::ReadOrWrite).refresh();
  EXPECT_EQ("READ", ChannelCell(1, 2));
}

// --- The lamp

class Lamp : public KovWindow {
protected:
  FlowCallbacks Callbacks() { return CallbacksOf(Window(), Flow::ReadOrWrite); }
  Colour Shown() { return Window().picCommStatus(0).colour; }
};

TEST_F(Lamp, BlinksWithAPeriodOf100Milliseconds) {
  const FlowCallbacks callbacks = Callbacks();
  callbacks.setLamp(true);
  EXPECT_TRUE(Window().LampTimer.Enabled);
  EXPECT_EQ(50, Window().LampTimer.Interval);
  std::vector<Colour> colours;
  for (int i = 0; i < 4; ++i) {
    platform.time.Advance(50);
    colours.push_back(Shown());
  }
  EXPECT_EQ((std::vector<Colour>{0x000000, 0x800000, 0x000000, 0x800000}), colours);
  callbacks.setLamp(false);
}

TEST_F(Lamp, KeepsItsLastColourWhenStopped) {
  const FlowCallbacks callbacks = Callbacks();
  callbacks.setLamp(true);
  platform.time.Advance(100);
  callbacks.setLamp(false);
  EXPECT_FALSE(Window().LampTimer.Enabled);
  platform.time.Advance(200);
  EXPECT_EQ(0x800000U, Shown());
}

TEST_F(Lamp, GoesOnWhereItStoppedInTheNextFlow) {
  const FlowCallbacks callbacks = Callbacks();
  callbacks.setLamp(true);
  platform.time.Advance(50);
  callbacks.setLamp(false);
  callbacks.setLamp(true);
  platform.time.Advance(50);
  callbacks.setLamp(false);
  EXPECT_EQ(0x800000U, Shown());
}

TEST_F(Lamp, IsStoppedWithTheWindow) {
  Callbacks().setLamp(true);
  frmParamLoader.reset();
  platform.time.Advance(200);
  EXPECT_EQ(0, platform.time.eventsRun);
}

// --- A read from the window

TEST_F(ReadingWindow, CancelledReadSendsNothing) {
  platform.ExpectBox(20104, BoxAnswer::Cancel);
  user.Click(Window().btnRegRead);
  EXPECT_TRUE(recorder.requests.empty());
  EXPECT_TRUE(Window().btnRegRead.enabled);
}

TEST_F(ReadingWindow, FailedReadEnablesTheControlsAgain) {
  recorder.FaultAt(Fault::NoReply, 3);
  platform.ExpectBox(20104);
  platform.boxes.Expect(u"タイムアウトエラー");
  platform.boxes.Expect(u"データ読み出し処理が中断されました");
  user.Click(Window().btnRegRead);
  EXPECT_FALSE(ExchangeUnderWay(Window()));
  EXPECT_TRUE(Window().cmbType.enabled);
  EXPECT_FALSE(Window().LampTimer.Enabled);
}

TEST_F(ReadingWindow, IsLiveDuringTheExchangeAndCannotBeClosedOrStartedTwice) {
  bool seen = false;
  recorder.onRequest = [&](int request) {
    if (request != 5) {
      return;
    }
    seen = true;
    EXPECT_TRUE(ExchangeUnderWay(Window()));
    platform.boxes.Expect(Refusal);
    user.Click(Window().smenuEnd);
    EXPECT_FALSE(user.Click(Window().btnRegRead));
    EXPECT_FALSE(user.Choose(Window().cmbType, 1));
    user.Click(Window().smenuOpen);
    EXPECT_TRUE(user.ChoosePage(Window().tbsParameter, 2));
  };
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  EXPECT_TRUE(seen);
  EXPECT_TRUE(platform.screens.closed.empty());
  EXPECT_TRUE(platform.fileDialogs.shown.empty());
  EXPECT_FALSE(ExchangeUnderWay(Window()));
  EXPECT_EQ(2, Window().tbsParameter.current);
}

// While the link is being opened no control is disabled yet.
TEST_F(ReadingWindow, IsBusyFromTheFirstClickOn) {
  platform.socket.connectDelay = 2000;
  bool seen = false;
  platform.time.After(1000, [&] {
    seen = true;
    EXPECT_TRUE(Window().btnRegRead.enabled);
    EXPECT_TRUE(ExchangeUnderWay(Window()));
    platform.boxes.Expect(Refusal);
    user.Click(Window().smenuEnd);
    for (Button* flow : {&Window().btnRegRead, &Window().btnRegWrite, &Window().cmdFIX, &Window().cmdTime}) {
      user.Click(*flow);
    }
    user.Choose(Window().cmbType, 1);
    user.Click(Window().smenuOpen);
    user.Click(Window().smenuOverWrite);
  });
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  EXPECT_TRUE(seen);
  EXPECT_TRUE(platform.screens.closed.empty());
  EXPECT_TRUE(platform.screens.shownModally.empty());
  EXPECT_TRUE(platform.fileDialogs.shown.empty());
  EXPECT_EQ(1U, platform.socket.connected.size());
  EXPECT_EQ(0, Window().cmbType.index);
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ("FURNACE", ChannelCell(1, 2)) << "the read went on";
  EXPECT_FALSE(ExchangeUnderWay(Window()));
}

TEST_F(ReadingWindow, IsFreeAgainWhenNoLinkCameToStand) {
  platform.socket.connectDelay = -1;
  platform.ExpectBox(20104);
  platform.boxes.Expect(u"タイムアウトエラー");
  user.Click(Window().btnRegRead);
  EXPECT_FALSE(ExchangeUnderWay(Window()));
}

TEST_F(ReadingWindow, ShowsWhatWasRead) {
  recorder.PutText(40321, "kg/m", 8);  // user unit 1
  recorder.Register(44001 + 11) = 156; // unit of channel 1
  recorder.Register(40011 + 24) = 55;  // alarm hysteresis
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  EXPECT_EQ("FURNACE", ChannelCell(1, 2));
  EXPECT_EQ("kg/m", ChannelCell(1, 7));
  EXPECT_EQ("kg/m", CellText(Window().fgrUnit, 1, 1));
  EXPECT_EQ("55", TextOf(Field("txtAlarmHist")));
}

// --- What looks free during an exchange

TEST_F(ReadingWindow, KeepsTheOpenButtonDisabledThroughAPageChange) {
  bool seen = false;
  recorder.onRequest = [&](int request) {
    if (request != 5) {
      return;
    }
    seen = true;
    for (const int page : {RecorderPage, DisplayPage, ChannelPage}) {
      EXPECT_TRUE(user.ChoosePage(Window().tbsParameter, page));
      EXPECT_FALSE(Window().V(1).enabled) << page;
      EXPECT_TRUE(Window().V(4).enabled) << page;
    }
  };
  platform.ExpectBox(20104);
  user.Click(Window().btnRegRead);
  EXPECT_TRUE(seen);
  EXPECT_TRUE(Window().V(1).enabled);
}

// A page change in this phase must not leave the button disabled when no link comes to stand.
TEST_F(ReadingWindow, OffersTheOpenButtonAgainAfterAPageChangeWithoutALink) {
  platform.socket.connectDelay = -1;
  platform.time.After(1000, [&] { user.ChoosePage(Window().tbsParameter, RecorderPage); });
  platform.ExpectBox(20104);
  platform.boxes.Expect(u"タイムアウトエラー");
  user.Click(Window().btnRegRead);
  EXPECT_EQ(RecorderPage, Window().tbsParameter.current);
  EXPECT_TRUE(Window().V(1).enabled);
}

// The list stays enabled while the recorder stores its settings.
TEST_F(ReadingWindow, PutsAModelBackThatIsPickedWhileTheSettingsAreStored) {
  bool seen = false;
  recorder.onRequest = [&](int) {
    seen = true;
    platform.boxes.Expect(Refusal);
    EXPECT_TRUE(user.Choose(Window().cmbType, 1));
    EXPECT_EQ(0, Window().cmbType.index);
    platform.ExpectBox(62702);
  };
  platform.ExpectBox(20108);
  user.Click(Window().cmdFIX);
  EXPECT_TRUE(seen);
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ(3U, platform.boxes.shown.size());
}

TEST_F(ReadingWindow, PutsAModelBackThatIsPickedBeforeTheStoringHasItsLink) {
  platform.socket.connectDelay = 2000;
  platform.time.After(1000, [&] {
    platform.boxes.Expect(Refusal);
    EXPECT_TRUE(user.Choose(Window().cmbType, 1));
    EXPECT_EQ(0, Window().cmbType.index);
    platform.ExpectBox(62702);
  });
  platform.ExpectBox(20108);
  user.Click(Window().cmdFIX);
  EXPECT_EQ("KOV", ModelCode);
  EXPECT_EQ(3U, platform.boxes.shown.size());
}

} // namespace
} // namespace loader::test
