// The tables of the settings pages: captions, fields, lists. Their walks are in SettingsPages.cpp.
#include <array>
#include <deque>
#include <string>
#include <vector>

#include "mainwindow/SettingsPages.h"
#include "platform/Controls.h"

namespace loader {

namespace {

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblMainSample", 18099},
    {"lblAlarmHist", 18100},
    {"lblAlarmLach", 18101},
    {"lblKirokuFile", 18102},
    {"lblLCDShoto", 18103},
    {"lblCFFull", 18104},
    {"lblBatteryAlarm", 18105},
    {"lblDateFormat", 18106},
    {"lblFileDiv", 18107},
    {"lblStationNo", 18109},
    {"lblBaudrate", 18110},
    {"lblParity", 18111},
    {"lblTday", 18114},
    {"lblText", 18115},
    {"lblTitle(1)", 18116},
    {"lblTcyc", 18117},
    {"lblTitle(2)", 18118},
    {"lblTota", 18119},
    {"lblTstm", 18120},
    {"lblTsig", 18121},
    {"lblTts", 18122},
    {"lblTte", 18123},
    {"lblFstn", 18125},
    {"lblFzti", 18126},
    {"lblFpoi", 18127},
    {"lblFreset", 18128},
    {"lblEtherIPAdd", 18135},
    {"lblEtherSubMask", 18136},
    {"lblEtherDefGate", 18137},
    {"lblPasswordSetting(0)", 18138},
    {"lblPasswordSetting(1)", 18139},
    {"lblPasswordSetting(2)", 18141},
    {"lblPasswordSetting(3)", 18140},
    {"lblFtpSrvFunc", 18143},
    {"lblFtpSrvControl", 18144},
    {"lblWebSrvFunc", 18146},
    {"lblEMailFunc", 18148},
    {"lblModbusTcpIpFunc", 18150},
    {"lblSmtpIPAdd", 18152},
    {"lblSendMailAdd", 18153},
    {"lblSendName", 18154},
    {"lblRecvMailAdd", 18155},
    {"lblCompression", 18180},
    {"lblOverwrite", 18181},
    {"lblLangage", 18182},
    {"lblSecurity", 18183},
    {"lblpPassword", 18184},
    {"lblcPassword", 18185},
    {"lblRpas", 18186},
    {"lblHPLP", 18188},
    {"lblAVG", 18189},
    {"lblSUM", 18190},
    {"lblTrend_backcolor", 18210},
    {"lblHistorical_backcolor", 18211},
    {"Label6(0)", 18000},
    {"Label6(1)", 18000},
    {"Label6(2)", 18001},
    {"Label6(3)", 18002},
    {"Label6(4)", 18174},
});

constexpr auto Frames = std::to_array<CaptionOf>({
    {"fraBodySet", 18095},
    {"fraModbus", 18108},
    {"fraTotalizeSetting", 18112},
    {"fraFvalueSetting", 18124},
    {"fraDI", 18129},
    {"fraGamenG", 18130},
    {"fraMessUnit", 18131},
    {"fraMess", 18132},
    {"fraUnit", 18133},
    {"fraEthernetSetting", 18134},
    {"fraFtpServerSetting", 18142},
    {"fraWebServerSetting", 18145},
    {"fraE_MailSetting", 18147},
    {"fraModbusTcpIpSetting", 18149},
    {"fraEMailSetting", 18151},
    {"fraEMailTriggerSetting", 18156},
    {"fraConstant", 18171},
    {"fraTimer", 18187},
});

using enum FieldShape;

// Fields that stand alone, in the order of their fill. Two pairs of lists share a tag (BETU, SHOU),
// deliberately: they stand for two generations of one setting, and the last one written wins.
constexpr auto SingleFields = std::to_array<SettingsField>({
    {"cmbMainSample", List, "H", 0, "MSMP"},
    {"cmbAlarmLach", List, "H", 0, "ALML"},
    {"cmbKirokuFile", List, "H", 0, "ASBY"},
    {"cmbKeyLock", List, "H", 0, "KLOC"},
    {"cmbBetsu", List, "H", 0, "BETU"},
    {"CmbFileDiv", List, "H", 0, "BETU"},
    {"cmbCFFull", List, "H", 0, "CFFL"},
    {"cmbBatteryAlarm", List, "H", 0, "BAAL"},
    {"cmbDateFormat", List, "H", 0, "TIMF"},
    {"cmbShoto", List, "H", 0, "SHOU"},
    {"cmbLCDShoto", List, "H", 0, "SHOU"},
    {"cmbBaudrate", List, "H", 0, "COMB"},
    {"cmbParity", List, "H", 0, "COMP"},
    {"cmbCompression", List, "H", 0, "CMPL"},
    {"cmbOverwrite", List, "H", 0, "FIFO"},
    {"cmbLangage", List, "H", 0, "LANG"},
    {"cmbSecurity", List, "H", 0, "LOGO"},
    {"cmbTrend_backcolor", List, "H", 0, "TBKC"},
    {"cmbHistorical_backcolor", List, "H", 0, "HBKC"},
    {"cmbFpoi", List, "H", 0, "FPOI"},
    {"txtAlarmHist", Number, "H", 0, "ALMH"},
    {"txtLCDShoto", Number, "H", 0, "SHOU"},
    {"txtpPassword", Number, "H", 0, "PAS1"},
    {"txtcPassword", Number, "H", 0, "PAS2"},
    {"txtRpas", Number, "H", 0, "RPAS"},
    {"txtStationNo", Number, "H", 0, "COMS"},
    {"txtFstn", Number, "H", 0, "FSTN"},
    {"txtFzti", Number, "H", 0, "FZTI"},
    {"txtFreset", Number, "H", 0, "FTIT"},
    {"cmbTcyc", List, "E", 0, "TCYC"},
    {"cmbTwdy", List, "E", 0, "TWDY"},
    {"cmbTday", List, "E", 0, "TDAY"},
    {"cmbText", List, "E", 0, "TEXT"},
    {"cmbTsbah", Time, "E", 0, "TSBA", "cmbTsbam"},
    {"cmbTstrh", Time, "E", 0, "TSTR", "cmbTstrm"},
    {"cmbTstoh", Time, "E", 0, "TSTO", "cmbTstom"},
    {"txtTtsh", Number, "E", 0, "TTSH"},
    {"txtTtsm", Number, "E", 0, "TTSM"},
    {"txtTteh", Number, "E", 0, "TTEH"},
    {"txtTtem", Number, "E", 0, "TTEM"},
    {"txtHPLP", Number, "E", 0, "TIMH"},
    {"txtAVG", Number, "E", 0, "TIMA"},
    {"txtSUM", Number, "E", 0, "TIMT"},
    {"cmbTota", List, "Z", 0, "TOTA"},
    {"cmbTstm", List, "Z", 0, "TSTM"},
    {"cmbTsig", List, "Z", 0, "TSIG"},
    {"cmbEtherFunc", List, "J", 0, "ETHE"},
    {"cmbEMailFunc", List, "J", 0, "MAIL"},
    {"cmbFtpSrvFunc", List, "J", 0, "FTPF"},
    {"cmbFtpSrvControl", List, "J", 0, "FTPA"},
    {"cmbWebSrvFunc", List, "J", 0, "WEBF"},
    {"cmbWebSrvControl", List, "J", 0, "WEBA"},
    {"cmbWebSrvMsgFunc", List, "J", 0, "WEBM"},
    {"cmbModbusTcpIpFunc", List, "J", 0, "MOTC"},
    {"txtSendMailAdd", MailText, "J", 0, "SDAD"},
    {"txtSendName", MailText, "J", 0, "SDNM"},
});

// Control arrays: element n stands for tag stem + (n + 1) of item 0, or for item n of the tag itself.
struct FieldArray {
  std::string_view control;
  FieldShape shape;
  std::string_view section;
  std::string_view tag;
  int count;
  bool byItem;
};
constexpr auto FieldArrays = std::to_array<FieldArray>({
    {"cmbDI", List, "D", "DIKI", 16, true},
    {"txtEtherIPAdd", Octet, "J", "IPA", 4, false},
    {"txtEtherSubMask", Octet, "J", "SUB", 4, false},
    {"txtEtherDefGate", Octet, "J", "DEF", 4, false},
    {"txtSmtpIPAdd", Octet, "J", "SIP", 4, false},
    {"txtRecvMailAdd", MailText, "J", "RAD", 8, false},
    {"txtUserName", PlainText, "K", "UNAM", 8, true},
    {"lblUserPass", PlainText, "K", "PASS", 8, true}, // an edit field, despite its name
    {"cmbUserLevel", List, "K", "LVEL", 8, true},
});

struct FieldTable {
  std::deque<std::string> names; // of array elements and their tags: the rows point into it
  std::vector<SettingsField> rows;
};

FieldTable MakeFieldTable() {
  FieldTable table;
  table.rows.assign(SingleFields.begin(), SingleFields.end());
  for (const FieldArray& array : FieldArrays) {
    for (int n = 0; n < array.count; ++n) {
      const std::string& control = table.names.emplace_back(ElementName(array.control, n));
      const std::string& tag = table.names.emplace_back(
          array.byItem ? std::string(array.tag) : std::string(array.tag) + std::to_string(n + 1));
      table.rows.push_back({control, array.shape, array.section, array.byItem ? n : 0, tag});
    }
  }
  return table;
}

struct ListTable {
  std::deque<std::string> names;
  std::vector<SettingsList> recorder;
  std::vector<SettingsList> ethernet;
};

ListTable MakeListTable() {
  ListTable table;
  table.recorder = {
      {"cmbAlarmLach", &AlarmLatchList},
      {"cmbKirokuFile", &CommCodeList},
      {"cmbShoto", &ScreenOffList},
      {"cmbKeyLock", &KeyLockList},
      {"cmbBetsu", &DailyFileList},
      {"cmbCFFull", &RelayList, ListExtent::DOCount, 52000},
      {"cmbBatteryAlarm", &RelayList, ListExtent::DOCount, 52001},
      {"cmbDateFormat", nullptr, ListExtent::Today},
      {"cmbMainSample", &SampleCycleList},
      {"cmbBaudrate", &BaudList},
      {"cmbParity", &ParityList},
      {"cmbTmove", &MoveSwitchList},
      {"CmbFileDiv", &FileSplitList},
  };
  for (int n = 0; n < 16; ++n) {
    table.recorder.push_back({table.names.emplace_back(ElementName("cmbDI", n)), &DIFunctionList});
  }
  table.recorder.insert(table.recorder.end(), {
                                                  {"cmbTrend_backcolor", &TrendBackgroundList},
                                                  {"cmbHistorical_backcolor", &HistoryBackgroundList},
                                                  {"cmbCompression", &CompressionList},
                                                  {"cmbOverwrite", &OverwriteList},
                                                  {"cmbTota", &TotalSwitchList},
                                                  {"cmbTstm", &TotalUnitTimeList},
                                                  {"cmbTsbah", &HourList},
                                                  {"cmbTsbam", &MinuteList},
                                                  {"cmbTcyc", &TotalCycleList},
                                                  {"cmbTwdy", &WeekdayList},
                                                  {"cmbTday", &DayList},
                                                  {"cmbTstrh", &HourList},
                                                  {"cmbTstrm", &MinuteList},
                                                  {"cmbTstoh", &HourList},
                                                  {"cmbTstom", &MinuteList},
                                                  {"cmbText", &AlarmSourceList, ListExtent::ExternalInput},
                                                  {"cmbTsig", &OperationKindList},
                                                  {"cmbFpoi", &DecimalPointList},
                                              });
  // The screen definition of these three holds their entries; they are the same for every model.
  table.recorder.insert(table.recorder.end(), {
                                                  {"cmbLangage", &LanguageList},
                                                  {"cmbSecurity", &LoginModeList},
                                                  {"cmbLCDShoto", &BacklightList},
                                              });
  table.ethernet = {
      {"cmbEtherFunc", &EthernetSwitchLists[0]},
      {"cmbEMailFunc", &EthernetSwitchLists[1]},
  };
  for (int n = 0; n < 8; ++n) {
    table.ethernet.push_back(
        {table.names.emplace_back(ElementName("cmbUserLevel", n)), &UserLevelList, ListExtent::UserLevels});
  }
  table.ethernet.insert(table.ethernet.end(), {
                                                  {"cmbFtpSrvFunc", &EthernetSwitchLists[2]},
                                                  {"cmbFtpSrvControl", &EthernetSwitchLists[3]},
                                                  {"cmbWebSrvFunc", &EthernetSwitchLists[4]},
                                                  {"cmbWebSrvControl", &EthernetSwitchLists[5]},
                                                  {"cmbWebSrvMsgFunc", &EthernetSwitchLists[6]},
                                                  {"cmbModbusTcpIpFunc", &EthernetSwitchLists[7]},
                                              });
  return table;
}

const ListTable& Lists() {
  static const ListTable table = MakeListTable();
  return table;
}

} // namespace

std::span<const CaptionOf> PageLabels() {
  return Labels;
}
std::span<const CaptionOf> PageFrames() {
  return Frames;
}

std::span<const SettingsField> SettingsFields() {
  static const FieldTable table = MakeFieldTable();
  return table.rows;
}

std::span<const SettingsList> RecorderLists() {
  return Lists().recorder;
}
std::span<const SettingsList> EthernetLists() {
  return Lists().ethernet;
}

} // namespace loader
