// What every list of the settings pages offers.
#include "tests/mainwindow/Fixture.h"

namespace loader::test {
namespace {

using Texts = std::vector<std::string>;

struct Offer {
  const char* list;
  Texts entries;
};
void PrintTo(const Offer& offer, std::ostream* out) {
  *out << offer.list;
}
const auto NameByList = [](const auto& tested) { return TestName(tested.param.list); };

const Texts OffOn{"OFF", "ON"};
const Texts WhiteBlack{"白", "黒"};
const Texts DIFunctions{"機能無し",       "記録開始／停止", "Ｆ値演算リセット",
                        "積算開始／停止", "積算リセット",   "画面点灯"};

Texts Numbers(int first, int last) {
  Texts numbers;
  for (int n = first; n <= last; ++n) {
    numbers.push_back(std::to_string(n));
  }
  return numbers;
}

class OfferedList : public MainWindow, public testing::WithParamInterface<Offer> {};
TEST_P(OfferedList, HoldsItsEntriesOnKov) {
  Open("KOV");
  EXPECT_EQ(GetParam().entries, Items(GetParam().list));
}
TEST_P(OfferedList, HoldsItsEntriesOnRug) {
  Open("RUG");
  EXPECT_EQ(GetParam().entries, Items(GetParam().list));
}
TEST_P(OfferedList, IsEmptiedBeforeItIsRefilled) {
  Open("KOV");
  AddItem(List(GetParam().list), u"left over");
  BuildTables();
  EXPECT_EQ(GetParam().entries, Items(GetParam().list));
  EXPECT_EQ(-1, List(GetParam().list).index);
}

INSTANTIATE_TEST_SUITE_P(
    Recorder, OfferedList,
    testing::Values(
        Offer{"cmbMainSample",
              {"1秒", "2秒", "3秒",  "5秒",  "10秒", "15秒", "20秒",  "30秒",  "1分",   "2分",
               "3分", "5分", "10分", "15分", "20分", "30分", "1時間", "2時間", "6時間", "12時間"}},
        Offer{"cmbAlarmLach", OffOn}, Offer{"cmbKirokuFile", {"アスキー", "バイナリ"}},
        Offer{"cmbKeyLock", {"OFF", "パラメータロック", "記録キーロック"}},
        Offer{"cmbBetsu", {"作成しない", "１日", "２日", "３日", "４日", "５日", "６日", "７日", "８日"}},
        Offer{"CmbFileDiv", {"分割しない", "1時間", "1日", "1週間", "1ヶ月"}},
        Offer{"cmbShoto",
              {"常時消灯", "１分", "２分", "３分", "５分", "１０分", "２０分", "３０分", "１時間"}},
        Offer{"cmbLCDShoto",
              {"常時点灯", "１分", "２分", "３分", "５分", "１０分", "２０分", "３０分", "１時間"}},
        Offer{"cmbBaudrate", {"9600", "19200"}}, Offer{"cmbParity", {"無し", "奇数", "偶数"}},
        Offer{"cmbTmove", OffOn}, Offer{"cmbCompression", {"1/1", "1/10", "1/30", "1/60"}},
        Offer{"cmbOverwrite", OffOn}, Offer{"cmbLangage", {"English", "French"}},
        Offer{"cmbSecurity", {"Password", "Logon"}}, Offer{"cmbTrend_backcolor", WhiteBlack},
        Offer{"cmbHistorical_backcolor", WhiteBlack}, Offer{"cmbFpoi", {"0", "1", "2", "3", "4"}}),
    NameByList);

INSTANTIATE_TEST_SUITE_P(
    Totals, OfferedList,
    testing::Values(Offer{"cmbTcyc",
                          {"10分", "20分", "30分", "1時間", "2時間", "3時間", "6時間", "8時間", "12時間",
                           "24時間"}},
                    Offer{"cmbTwdy", {"日曜日", "月曜日", "火曜日", "水曜日", "木曜日", "金曜日", "土曜日"}},
                    Offer{"cmbTday", Numbers(1, 31)}, Offer{"cmbTota", OffOn},
                    Offer{"cmbTstm", {"/s", "/min", "/h", "/day"}},
                    Offer{"cmbTsig", {"常時動作", "記録状態", "DI", "時間"}},
                    Offer{"cmbTsbah", Numbers(0, 23)}, Offer{"cmbTsbam", Numbers(0, 59)},
                    Offer{"cmbTstrh", Numbers(0, 23)}, Offer{"cmbTstrm", Numbers(0, 59)},
                    Offer{"cmbTstoh", Numbers(0, 23)}, Offer{"cmbTstom", Numbers(0, 59)}),
    NameByList);

INSTANTIATE_TEST_SUITE_P(DigitalInputs, OfferedList,
                         testing::Values(Offer{"cmbDI(0)", DIFunctions}, Offer{"cmbDI(1)", DIFunctions},
                                         Offer{"cmbDI(2)", DIFunctions}, Offer{"cmbDI(3)", DIFunctions},
                                         Offer{"cmbDI(4)", DIFunctions}, Offer{"cmbDI(5)", DIFunctions},
                                         Offer{"cmbDI(6)", DIFunctions}, Offer{"cmbDI(7)", DIFunctions},
                                         Offer{"cmbDI(8)", DIFunctions}, Offer{"cmbDI(9)", DIFunctions},
                                         Offer{"cmbDI(10)", DIFunctions}, Offer{"cmbDI(11)", DIFunctions},
                                         Offer{"cmbDI(12)", DIFunctions}, Offer{"cmbDI(13)", DIFunctions},
                                         Offer{"cmbDI(14)", DIFunctions}, Offer{"cmbDI(15)", DIFunctions}),
                         NameByList);

INSTANTIATE_TEST_SUITE_P(Ethernet, OfferedList,
                         testing::Values(Offer{"cmbEtherFunc", OffOn}, Offer{"cmbEMailFunc", OffOn},
                                         Offer{"cmbFtpSrvFunc", OffOn}, Offer{"cmbFtpSrvControl", OffOn},
                                         Offer{"cmbWebSrvFunc", OffOn}, Offer{"cmbWebSrvControl", OffOn},
                                         Offer{"cmbWebSrvMsgFunc", OffOn},
                                         Offer{"cmbModbusTcpIpFunc", OffOn}),
                         NameByList);

// The first and the fourth of the user levels.
const Texts Levels{"管理者", "ゲスト"};
INSTANTIATE_TEST_SUITE_P(Users, OfferedList,
                         testing::Values(Offer{"cmbUserLevel(0)", Levels}, Offer{"cmbUserLevel(1)", Levels},
                                         Offer{"cmbUserLevel(2)", Levels}, Offer{"cmbUserLevel(3)", Levels},
                                         Offer{"cmbUserLevel(4)", Levels}, Offer{"cmbUserLevel(5)", Levels},
                                         Offer{"cmbUserLevel(6)", Levels}, Offer{"cmbUserLevel(7)", Levels}),
                         NameByList);

// --- Lists that depend on the model

Texts Relays(int last) {
  Texts relays{"   無し"};
  for (const std::string& number : Numbers(1, last)) {
    relays.push_back(number);
  }
  return relays;
}
TEST_F(KovWindow, RelayListsHave29Entries) {
  EXPECT_EQ(Relays(28), Items("cmbCFFull"));
  EXPECT_EQ(Relays(28), Items("cmbBatteryAlarm"));
}
TEST_F(RugWindow, RelayListsHave37Entries) {
  EXPECT_EQ(Relays(36), Items("cmbCFFull"));
  EXPECT_EQ(Relays(36), Items("cmbBatteryAlarm"));
}

Texts ExternalInputs(int digitalInputs, int channels) {
  Texts inputs;
  for (const std::string& number : Numbers(1, digitalInputs)) {
    inputs.push_back("DI" + number);
  }
  for (const std::string& channel : Numbers(1, channels)) {
    for (const std::string& alarm : Numbers(1, 4)) {
      inputs.push_back("ﾁｬﾈﾙ" + channel + " 警報" + alarm);
    }
  }
  return inputs;
}
TEST_F(KovWindow, ExternalInputListHas10InputsAndTheAlarmsOf30Channels) {
  EXPECT_EQ(ExternalInputs(10, 30), Items("cmbText"));
  EXPECT_EQ(130U, List("cmbText").items.size());
}
TEST_F(RugWindow, ExternalInputListHas16InputsAndTheAlarmsOf72Channels) {
  EXPECT_EQ(ExternalInputs(16, 72), Items("cmbText"));
  EXPECT_EQ(304U, List("cmbText").items.size());
}

// --- The date formats

using DateFormats = MainWindow;
TEST_F(DateFormats, ShowThePresentDateInFivePatterns) {
  StartWithModel(platform, "KOV");
  platform.time.now = {2026, 3, 9, 12, 0, 0};
  OpenMainWindow();
  EXPECT_EQ((Texts{"2026/03/09", "09/03/2026", "09- Mar-26", "03/09/2026", "Mar-09-26"}),
            Items("cmbDateFormat"));
}
TEST_F(DateFormats, AreThoseOfTheDayOfTheLayout) {
  StartWithModel(platform, "RUG");
  platform.time.now = {2007, 12, 31, 23, 59, 59};
  OpenMainWindow();
  EXPECT_EQ((Texts{"2007/12/31", "31/12/2007", "31- Dec-07", "12/31/2007", "Dec-31-07"}),
            Items("cmbDateFormat"));
  platform.time.now = {2008, 1, 1, 0, 0, 0};
  BuildTables();
  EXPECT_EQ("2008/01/01", Items("cmbDateFormat").at(0));
}

} // namespace
} // namespace loader::test
