// The status line: which recorder a flow would talk to, and what was done last.
#include "mainwindow/StatusLine.h"

#include <fstream>

#include "comm/frmIPSetting.h"
#include "comm/frmTimeChange.h"
#include "tests/mainwindow/ReadingWindow.h"

namespace loader::test {
namespace {

std::string Recorder() {
  return ToUtf8(Window().statusRecorder.caption);
}
std::string Done() {
  return ToUtf8(Window().statusDone.caption);
}

// --- Which recorder

struct Way {
  CommSettings settings;
  const char* text;
};
TEST(RecorderText, NamesModelLinkPlaceAndStation) {
  for (const Way& way :
       {Way{{.ConfiguredLink = 0}, "通信先: KOV USB ｽﾃｰｼｮﾝ No. 1"},
        Way{{.ConfiguredLink = 1, .StationSetting = 17, .RecorderIpAddress = u"10.0.0.7"},
            "通信先: KOV イーサネット 10.0.0.7 ｽﾃｰｼｮﾝ No. 17"},
        Way{{.ConfiguredLink = 2, .ComPortIndex = 4}, "通信先: KOV RS-232C COM5 ｽﾃｰｼｮﾝ No. 1"},
        Way{{.ConfiguredLink = 9, .ComPortIndex = 99}, "通信先: KOV RS-232C COM5 ｽﾃｰｼｮﾝ No. 1"},
        Way{{.ConfiguredLink = -1, .ComPortIndex = -1}, "通信先: KOV RS-232C COM1 ｽﾃｰｼｮﾝ No. 1"}}) {
    EXPECT_EQ(way.text, ToUtf8(RecorderText(way.settings, "KOV")));
  }
}

class StatusOfWindow : public ReadingWindow {
protected:
  // `failure`: the message of one that fails.
  void Read(int failure = 0) {
    platform.ExpectBox(20104);
    if (failure != 0) {
      platform.ExpectBox(failure);
    }
    user.Click(Window().btnRegRead);
  }
};

TEST_F(StatusOfWindow, FollowsTheMenusAndTheScreenOfTheAddress) {
  user.Click(Window().menuRScomunicationf(2));
  user.Click(Window().smenuCOM(2));
  EXPECT_EQ("通信先: KOV RS-232C COM3 ｽﾃｰｼｮﾝ No. 1", Recorder());
  user.Click(Window().menuRScomunicationf(1));
  EXPECT_EQ("通信先: KOV イーサネット 192.168.1.1 ｽﾃｰｼｮﾝ No. 1", Recorder());
  platform.screens.Expect<IpSettingScreen>("frmIPSetting", [&](IpSettingScreen& screen) {
    user.Type(screen.txtIP(3), u"44");
    user.Type(screen.txtStationNo, u"5");
    user.Click(screen.cmdOK);
  });
  user.Click(Window().menuRSipaddr);
  EXPECT_EQ("通信先: KOV イーサネット 192.168.1.44 ｽﾃｰｼｮﾝ No. 5", Recorder());
  platform.ExpectBox(11016);
  user.Choose(Window().cmbType, 1);
  EXPECT_EQ("通信先: RUG イーサネット 192.168.1.44 ｽﾃｰｼｮﾝ No. 5", Recorder());
}

TEST_F(StatusOfWindow, NothingHasBeenDoneAtTheStart) {
  EXPECT_EQ("", Done());
  EXPECT_EQ("通信先: KOV イーサネット 192.168.1.1 ｽﾃｰｼｮﾝ No. 1", Recorder());
}

// --- What was done

TEST_F(StatusOfWindow, AReadTellsItsEndAndTheRecordersOwnName) {
  platform.time.now = {2026, 11, 21, 9, 5, 59};
  Read();
  EXPECT_EQ("09:05 読み出し KOV V50A 192.168.1.1", Done());
}

TEST_F(StatusOfWindow, AReadThatIsNotWantedLeavesTheLineAsItIs) {
  Read();
  platform.time.now = {2026, 11, 21, 23, 59, 0};
  platform.ExpectBox(20104, BoxAnswer::Cancel);
  user.Click(Window().btnRegRead);
  EXPECT_EQ("12:00 読み出し KOV V50A 192.168.1.1", Done());
}

TEST_F(StatusOfWindow, IsSetWhenTheExchangeIsOverAndNeverDuringIt) {
  int looks = 0;
  for (int after = 1; after < 20; ++after) {
    platform.time.After(after, [&] {
      looks += ExchangeUnderWay(Window()) ? 1 : 0;
      EXPECT_TRUE(!ExchangeUnderWay(Window()) || Done().empty());
    });
  }
  platform.time.After(2, [&] { platform.time.now = {2026, 11, 21, 12, 7, 0}; });
  Read();
  EXPECT_GT(looks, 5);
  EXPECT_EQ("12:07 読み出し KOV V50A 192.168.1.1", Done());
}

TEST_F(StatusOfWindow, AFailureHasTheWordsOfItsMessages) {
  platform.socket.connectDelay = -1;
  Read(11000);
  EXPECT_EQ("12:00 読み出し KOV 192.168.1.1 失敗: タイムアウトエラー", Done());
  platform.socket.connectDelay = 1;
  recorder.PutIdentity("RUG", "V20W");
  platform.ExpectBox(20104);
  platform.ExpectBox(11015);
  platform.ExpectBox(11013);
  user.Click(Window().btnRegRead);
  EXPECT_EQ("12:00 読み出し KOV 192.168.1.1 失敗: パラメータローダと本体のモードが正しくありません。"
            "正しい本体又はモードを使用して下さい。 データ読み出し処理が中断されました",
            Done());
}

// What the user does during an exchange is answered by boxes too; none of them is the exchange's.
TEST_F(StatusOfWindow, ABoxOfTheUsersOwnDoingIsNoMessageOfTheExchange) {
  platform.time.After(3, [&] {
    platform.ExpectBox(20102);
    EXPECT_FALSE(user.CloseWindow(Window()));
  });
  Read();
  EXPECT_EQ("12:00 読み出し KOV V50A 192.168.1.1", Done());
}

TEST_F(StatusOfWindow, AnotherRecorderThatIsChosenMeanwhileIsNotTheOneThatWasRead) {
  platform.time.After(3, [&] {
    ASSERT_TRUE(ExchangeUnderWay(Window()));
    user.Click(Window().menuRScomunicationf(2));
  });
  Read();
  EXPECT_EQ("12:00 読み出し KOV V50A 192.168.1.1", Done());
  EXPECT_EQ("通信先: KOV RS-232C COM1 ｽﾃｰｼｮﾝ No. 1", Recorder());
}

TEST_F(StatusOfWindow, AWriteIsDoneByItsMessageAlone) {
  platform.ExpectBox(20106);
  platform.ExpectBox(62701);
  user.Click(Window().btnRegWrite);
  EXPECT_EQ("12:00 書き込み KOV V50A 192.168.1.1", Done());
}

TEST_F(StatusOfWindow, AWriteThatEndsWithoutAWordHasFailed) {
  ParamStore[gFFindSection("C")].BaseAddress = 0; // cannot be written at all
  platform.ExpectBox(20106);
  user.Click(Window().btnRegWrite);
  EXPECT_EQ("12:00 書き込み KOV 192.168.1.1 失敗", Done());
}

TEST_F(StatusOfWindow, ABusyRecorderIsToldInItsMessagesWords) {
  recorder.PutState(1);
  platform.ExpectBox(20106);
  platform.ExpectBox(20107);
  user.Click(Window().btnRegWrite);
  EXPECT_EQ("12:00 書き込み KOV 192.168.1.1 失敗: 現在記録または演算中のため書き込みできません", Done());
}

TEST_F(StatusOfWindow, AStoreIsDoneByItsMessageAlone) {
  platform.ExpectBox(20108);
  platform.ExpectBox(62702);
  user.Click(Window().cmdFIX);
  EXPECT_EQ("12:00 設定値記憶 KOV 192.168.1.1", Done());
  platform.socket.connectDelay = -1;
  platform.ExpectBox(20108);
  platform.ExpectBox(11000);
  user.Click(Window().cmdFIX);
  EXPECT_EQ("12:00 設定値記憶 KOV 192.168.1.1 失敗: タイムアウトエラー", Done());
}

TEST_F(StatusOfWindow, TheClockTellsWhatNoMessageTells) {
  platform.screens.Expect<TimeChangeScreen>("frmTimeChange", [&](TimeChangeScreen& screen) {
    user.Type(screen.txtMonth, u"13"); // refused by the screen: nothing was done yet
    platform.boxes.Expect(u"1から12の値を入力してください");
    user.Leave(screen.txtMonth);
    platform.time.Advance(100); // the guard
    EXPECT_EQ("", Done());
    user.Type(screen.txtMonth, u"11");
    user.Click(screen.cmdOK);
    EXPECT_EQ("12:00 時刻設定 KOV V50A 192.168.1.1", Done());
  });
  user.Click(Window().cmdTime);
}

TEST_F(StatusOfWindow, AClockThatTheRecorderHasNotTakenHasFailed) {
  platform.screens.Expect<TimeChangeScreen>("frmTimeChange", [&](TimeChangeScreen& screen) {
    recorder.FaultAt(Fault::ErrorReply, 2); // behind state and identity
    platform.ExpectBox(11000);
    user.Click(screen.cmdOK);
  });
  user.Click(Window().cmdTime);
  EXPECT_EQ("12:00 時刻設定 KOV 192.168.1.1 失敗: タイムアウトエラー", Done());
}

TEST_F(StatusOfWindow, TheClockOfTheFirstFirmwareIsNotSet) {
  recorder.PutIdentity("KOV", "V00A");
  platform.screens.Expect<TimeChangeScreen>("frmTimeChange", [&](TimeChangeScreen& screen) {
    platform.ExpectBox(62501);
    user.Click(screen.cmdOK);
  });
  user.Click(Window().cmdTime);
  EXPECT_EQ("12:00 時刻設定 KOV 192.168.1.1 失敗: ﾊﾞｰｼﾞｮﾝ1.0のため書き込みできません。", Done());
}

// --- Files

class StatusOfFiles : public KovWindow {
protected:
  void Choose(std::string_view name) { platform.fileDialogs.answers.push_back(platform.folder / name); }
};

TEST_F(StatusOfFiles, SaveOpenAndTextOutputTellTheFile) {
  Choose("BOILER.KOV");
  user.Click(Window().smenuOverWrite);
  EXPECT_EQ("12:00 パラメータファイルの保存 BOILER.KOV", Done());
  Choose("BOILER.KOV");
  user.Click(Window().V(1));
  EXPECT_EQ("12:00 開く BOILER.KOV", Done());
  std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "TextKOV.Ini",
                             platform.folder / "TextKOV.Ini");
  Choose("BOILER.Txt");
  user.Click(Window().smenuTextWrite);
  EXPECT_EQ("12:00 パラメータテキスト出力 BOILER.Txt", Done());
}

TEST_F(StatusOfFiles, ADialogThatIsGivenUpLeavesTheLineAsItIs) {
  for (MenuEntry* entry : {&Window().smenuOpen, &Window().smenuOverWrite, &Window().smenuTextWrite}) {
    platform.fileDialogs.answers.emplace_back();
    user.Click(*entry);
    EXPECT_EQ("", Done());
  }
}

TEST_F(StatusOfFiles, AFailureHasTheWordsOfItsMessage) {
  platform.WriteFile("bad.KOV", "no comma\r\n");
  Choose("bad.KOV");
  platform.ExpectBox(11003);
  user.Click(Window().smenuOpen);
  EXPECT_EQ("12:00 開く bad.KOV 失敗: 読み込みに失敗しました", Done());
  Choose("none/there.KOV");
  platform.ExpectBox(11002);
  user.Click(Window().smenuOverWrite);
  EXPECT_EQ("12:00 パラメータファイルの保存 there.KOV 失敗: 保存に失敗しました", Done());
}

// The save itself says nothing of a disk that fills up.
TEST_F(StatusOfFiles, ASaveThatLeavesLessThanTheWholeFileHasFailed) {
  const DeedAction shortened = [&] {
    CommonDialog dialog;
    Choose("short.KOV");
    EXPECT_EQ(0, ThePlatform().fileDialogs.ShowSave(dialog));
    platform.WriteFile("short.KOV", "LOADER ,V210\r\n");
    return DeedResult{};
  };
  std::string told;
  DoAndTell(Deed::Save, shortened, [&](const DeedDone& done) { told = ToUtf8(DoneText(done)); });
  EXPECT_EQ("12:00 パラメータファイルの保存 short.KOV 失敗: ファイルが途中までしか書かれていません", told);
}

TEST_F(StatusOfFiles, AFailureThatPassesThroughIsToldAsOne) {
  std::string told;
  const auto tell = [&](const DeedDone& done) { told = ToUtf8(DoneText(done)); };
  EXPECT_THROW(DoAndTell(
                   Deed::Open, []() -> DeedResult { throw RunTimeFailure("broken"); }, tell),
               RunTimeFailure);
  EXPECT_EQ("12:00 開く 失敗: broken", told);
  EXPECT_EQ(&platform.boxes, &ThePlatform().boxes) << "the platform is the one from before";
}

} // namespace
} // namespace loader::test
