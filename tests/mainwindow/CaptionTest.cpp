// Every fixed text of the window, control by control.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

struct CaptionRow {
  const char* control;
  const char* text;
};
void PrintTo(const CaptionRow& row, std::ostream* out) {
  *out << row.control << ": " << row.text;
}
const auto NameByControl = [](const auto& tested) { return TestName(tested.param.control); };

template <typename Kind> const Kind& ControlNamed(std::string_view name, ControlKind kind) {
  const Control* control = Window().Find(name);
  if (control == nullptr || control->kind != kind) {
    throw std::logic_error("no such control: " + std::string(name));
  }
  return static_cast<const Kind&>(*control);
}

class CaptionTest : public MainWindow, public testing::WithParamInterface<CaptionRow> {
protected:
  void SetUp() override { Open("KOV"); }
};

// --- The window and its pages

TEST_F(KovWindow, IsCalledParameterLoader) {
  EXPECT_EQ("パラメータローダ", ToUtf8(Window().caption));
}

TEST_F(KovWindow, StartsWith800By650Pixels) {
  EXPECT_EQ(800, Window().widthPixels);
  EXPECT_EQ(650, Window().heightPixels);
}

using Pages = EitherWindow;
TEST_P(Pages, AreSixInTheirOrderAndAllVisible) {
  const std::vector<std::string> captions{"チャネル設定", "演算設定",         "本体設定",
                                          "画面設定",     "イーサネット設定", "メール設定"};
  const auto& pages = Window().tbsParameter.pages;
  ASSERT_EQ(captions.size(), pages.size());
  for (std::size_t page = 0; page < captions.size(); ++page) {
    EXPECT_EQ(captions[page], ToUtf8(pages[page].caption)) << page;
    EXPECT_TRUE(pages[page].visible) << page;
  }
}
LOADER_FOR_BOTH_MODELS(Pages);

// --- Menus

using MenuCaption = CaptionTest;
TEST_P(MenuCaption, IsThatOfTheTextTable) {
  EXPECT_EQ(GetParam().text,
            ToUtf8(ControlNamed<MenuEntry>(GetParam().control, ControlKind::MenuEntry).caption));
}
INSTANTIATE_TEST_SUITE_P(
    Menus, MenuCaption,
    testing::Values(
        CaptionRow{"menuFile", "ファイル(&F)"}, CaptionRow{"smenuOpen", "開く(O)"},
        CaptionRow{"smenuOverWrite", "ファイルに保存(S)"}, CaptionRow{"smenuTextWrite", "テキスト出力(T)"},
        CaptionRow{"menuLine", "-"}, CaptionRow{"smenuEnd", "終了(&X)"}, CaptionRow{"menuEdit", "編集(&E)"},
        CaptionRow{"smenuCopy", "コピー(C)"}, CaptionRow{"smenuPaste", "貼り付け(V)"},
        CaptionRow{"menuRS", "通信(&R)"}, CaptionRow{"menuRScomunication", "通信方法"},
        CaptionRow{"menuRScomunicationf(0)", "USB"}, CaptionRow{"menuRScomunicationf(1)", "イーサネット"},
        CaptionRow{"menuRScomunicationf(2)", "RS-232C"}, CaptionRow{"menuRSipaddr", "IP アドレス"},
        CaptionRow{"smenuTermset", "ポート(&P)"}, CaptionRow{"smenuCOM(0)", "COM1"},
        CaptionRow{"smenuCOM(1)", "COM2"}, CaptionRow{"smenuCOM(2)", "COM3"},
        CaptionRow{"smenuCOM(3)", "COM4"}, CaptionRow{"smenuCOM(4)", "COM5"},
        CaptionRow{"menuHelp", "ヘルプ(&H)"}, CaptionRow{"menuVersion", "バージョン情報"}),
    NameByControl);

// --- Toolbar

using ToolTip = CaptionTest;
TEST_P(ToolTip, IsThatOfTheTextTable) {
  EXPECT_EQ(GetParam().text,
            ToUtf8(ControlNamed<ToolButton>(GetParam().control, ControlKind::ToolButton).toolTip));
}
INSTANTIATE_TEST_SUITE_P(Buttons, ToolTip,
                         testing::Values(CaptionRow{"V(1)", "開く"}, CaptionRow{"V(2)", "コピー"},
                                         CaptionRow{"V(3)", "貼り付け"}, CaptionRow{"V(4)", "ヘルプ"}),
                         NameByControl);

// --- Communication

using ButtonCaption = CaptionTest;
TEST_P(ButtonCaption, IsThatOfTheTextTable) {
  EXPECT_EQ(GetParam().text, ToUtf8(ControlNamed<Button>(GetParam().control, ControlKind::Button).caption));
}
INSTANTIATE_TEST_SUITE_P(Communication, ButtonCaption,
                         testing::Values(CaptionRow{"btnRegRead", "読み出し"},
                                         CaptionRow{"btnRegWrite", "書き込み"},
                                         CaptionRow{"cmdFIX", "設定値記憶"},
                                         CaptionRow{"cmdTime", "時刻設定"}),
                         NameByControl);

// --- Frames

using FrameCaption = CaptionTest;
TEST_P(FrameCaption, IsThatOfTheTextTable) {
  EXPECT_EQ(GetParam().text, ToUtf8(ControlNamed<Frame>(GetParam().control, ControlKind::Frame).caption));
}
INSTANTIATE_TEST_SUITE_P(
    Pages, FrameCaption,
    testing::Values(CaptionRow{"fraBodySet", "本体設定"}, CaptionRow{"fraModbus", "通信設定"},
                    CaptionRow{"fraTotalizeSetting", "積算設定"},
                    CaptionRow{"fraFvalueSetting", "F値演算設定"}, CaptionRow{"fraDI", "DI機能"},
                    CaptionRow{"fraGamenG", "画面グループ"}, CaptionRow{"fraMessUnit", "メッセージ/単位"},
                    CaptionRow{"fraMess", "メッセージ"}, CaptionRow{"fraUnit", "単位"},
                    CaptionRow{"fraEthernetSetting", "イーサネット設定"},
                    CaptionRow{"fraFtpServerSetting", "FTP ｻｰﾊﾞｰ設定"},
                    CaptionRow{"fraWebServerSetting", "Web ｻｰﾊﾞｰ設定"},
                    CaptionRow{"fraE_MailSetting", "E-mail 設定"},
                    CaptionRow{"fraModbusTcpIpSetting", "MODBUS TCP/IP 設定"},
                    CaptionRow{"fraEMailSetting", "E-maiｌ設定"},
                    CaptionRow{"fraEMailTriggerSetting", "E-mail トリガー設定"},
                    CaptionRow{"fraConstant", "定数設定"}, CaptionRow{"fraTimer", "演算タイマー（分）"}),
    NameByControl);

// --- Labels

using LabelCaption = CaptionTest;
TEST_P(LabelCaption, IsThatOfTheTextTable) {
  EXPECT_EQ(GetParam().text, ToUtf8(ControlNamed<Label>(GetParam().control, ControlKind::Label).caption));
}
INSTANTIATE_TEST_SUITE_P(
    Pages, LabelCaption,
    testing::Values(
        CaptionRow{"lblCommStatus", "通信状態:"},
        CaptionRow{"Label6(0)", "編集するチャネルをダブルクリックしてください"},
        CaptionRow{"Label6(1)", "編集するチャネルをダブルクリックしてください"},
        CaptionRow{"Label6(2)", "変更したい項目をダブルクリックしてください"},
        CaptionRow{"Label6(3)",
                   "「ユーザアカウント設定」以外の設定を変更した場合は、記録計の電源を再投入してください"},
        CaptionRow{"Label6(4)", " "}, CaptionRow{"lblMainSample", "表示更新周期"},
        CaptionRow{"lblAlarmHist", "警報ヒステリシス(％)"}, CaptionRow{"lblAlarmLach", "警報ラッチ"},
        CaptionRow{"lblKirokuFile", "記録データ形式"}, CaptionRow{"lblLCDShoto", "LCD消灯時間設定(分)"},
        CaptionRow{"lblCFFull", "ﾒﾓﾘFULL警報　　　出力先　DO　№      DO No."},
        CaptionRow{"lblBatteryAlarm", "ﾊﾞｯﾃﾘｰ警報　　　　出力先  DO No."},
        CaptionRow{"lblDateFormat", "日付表示形式"}, CaptionRow{"lblFileDiv", "ﾌｧｲﾙ分割周期"},
        CaptionRow{"lblStationNo", "Modbus ｽﾃｰｼｮﾝNo."}, CaptionRow{"lblBaudrate", "Modbus 通信速度"},
        CaptionRow{"lblParity", "Modbus ﾊﾟﾘﾃｨｰ"}, CaptionRow{"lblTday", "基準日"},
        CaptionRow{"lblText", "外部入力"},
        CaptionRow{"lblTitle(1)", "本体のﾌﾟﾛｸﾞﾗﾑﾊﾞｰｼﾞｮﾝ:V14A　　　　　　　　　　と共用積算設定"},
        CaptionRow{"lblTcyc", "積算時間 or 積算記録周期"},
        CaptionRow{"lblTitle(2)", "本体のﾌﾟﾛｸﾞﾗﾑﾊﾞｰｼﾞｮﾝ:V14A　　　　　　　　　　　専用積算設定"},
        CaptionRow{"lblTota", "積算演算動作"}, CaptionRow{"lblTstm", "積算基準時間"},
        CaptionRow{"lblTsig", "開始/停止信号"}, CaptionRow{"lblTts", "開始時間"},
        CaptionRow{"lblTte", "終了時間"}, CaptionRow{"lblFstn", "基準温度（℃）"},
        CaptionRow{"lblFzti", "Z値（℃）"}, CaptionRow{"lblFpoi", "小数点位置"},
        CaptionRow{"lblFreset", "F値演算ﾘｾｯﾄ温度(℃)"}, CaptionRow{"lblEtherIPAdd", "IP アドレス"},
        CaptionRow{"lblEtherSubMask", "サブネットマスク"}, CaptionRow{"lblEtherDefGate", "ﾃﾞﾌｫﾙﾄｹﾞｰﾄｳｪｲ"},
        CaptionRow{"lblPasswordSetting(0)", "ユーザアカウント設定"},
        CaptionRow{"lblPasswordSetting(1)", "ユーザ名"}, CaptionRow{"lblPasswordSetting(3)", "パスワード"},
        CaptionRow{"lblPasswordSetting(2)", "ユーザレベル"}, CaptionRow{"lblFtpSrvFunc", "FTP ｻｰﾊﾞｰ機能"},
        CaptionRow{"lblFtpSrvControl", "ｱｸｾｽ管理"}, CaptionRow{"lblWebSrvFunc", "Web サーバー機能"},
        CaptionRow{"lblEMailFunc", "E-mail 機能"}, CaptionRow{"lblModbusTcpIpFunc", "MODBUS TCP/IP 機能"},
        CaptionRow{"lblSmtpIPAdd", "SMTPアドレス"}, CaptionRow{"lblSendMailAdd", "送信元ｱﾄﾞﾚｽ"},
        CaptionRow{"lblSendName", "送信者名"}, CaptionRow{"lblRecvMailAdd", "送信先アドレス"},
        CaptionRow{"lblCompression", "ﾄﾚﾝﾄﾞ表示圧縮率"}, CaptionRow{"lblOverwrite", "ﾌｧｲﾙ上書き設定"},
        CaptionRow{"lblLangage", "表示言語"}, CaptionRow{"lblSecurity", "ｾｷｭﾘﾃｨﾓｰﾄﾞ"},
        CaptionRow{"lblpPassword", "パラメータ設定       パスワード"},
        CaptionRow{"lblcPassword", "コンパクトフラッシュ操作パスワード"},
        CaptionRow{"lblRpas", "記録開始停止　　　   パスワード"},
        CaptionRow{"lblHPLP", "H-P,L-P         タイマー周期"},
        CaptionRow{"lblAVG", "AVG             タイマー周期"},
        CaptionRow{"lblSUM", "SUM             タイマー周期"},
        CaptionRow{"lblTrend_backcolor", "トレンド背景色"},
        CaptionRow{"lblHistorical_backcolor", "ヒストリカル背景色"}),
    NameByControl);

// No text of the table: the colons between hours and minutes.
INSTANTIATE_TEST_SUITE_P(Colons, LabelCaption,
                         testing::Values(CaptionRow{"Label2", "："}, CaptionRow{"Label3", "："}),
                         NameByControl);

TEST_F(KovWindow, NumbersTheDigitalInputs) {
  for (int n = 0; n < 16; ++n) {
    EXPECT_EQ("DI" + std::to_string(n + 1), ToUtf8(LabelNamed(Window(), ElementName("lblDI", n)).caption));
  }
}

TEST_F(KovWindow, NumbersTheUserAccounts) {
  for (int n = 0; n < 8; ++n) {
    EXPECT_EQ(std::to_string(n + 1), ToUtf8(LabelNamed(Window(), ElementName("lblUserNo", n)).caption));
  }
}

} // namespace
} // namespace loader::test
