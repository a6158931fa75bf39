// The tables of the settings pages: captions and fields. What each field offers, shows and takes is what its
// parameter means; the walks are those of every screen.
#include <array>

#include "mainwindow/SettingsPages.h"

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

// Fields that stand alone, in the order of their fill. Two pairs of lists share a tag (BETU, SHOU),
// deliberately: they stand for two generations of one setting, and the last one written wins.
constexpr auto Fields = std::to_array<FieldRow>({
    {"cmbMainSample", "H", "MSMP"},
    {"cmbAlarmLach", "H", "ALML"},
    {"cmbKirokuFile", "H", "ASBY"},
    {"cmbKeyLock", "H", "KLOC"},
    {.control = "cmbBetsu", .section = "H", .tag = "BETU", .otherList = true},
    {"CmbFileDiv", "H", "BETU"},
    {"cmbCFFull", "H", "CFFL"},
    {"cmbBatteryAlarm", "H", "BAAL"},
    {"cmbDateFormat", "H", "TIMF"},
    {.control = "cmbShoto", .section = "H", .tag = "SHOU", .otherList = true},
    {"cmbLCDShoto", "H", "SHOU"},
    {"cmbBaudrate", "H", "COMB"},
    {"cmbParity", "H", "COMP"},
    {"cmbCompression", "H", "CMPL"},
    {"cmbOverwrite", "H", "FIFO"},
    {"cmbLangage", "H", "LANG"},
    {"cmbSecurity", "H", "LOGO"},
    {"cmbTrend_backcolor", "H", "TBKC"},
    {"cmbHistorical_backcolor", "H", "HBKC"},
    {"cmbFpoi", "H", "FPOI"},
    {"txtAlarmHist", "H", "ALMH"},
    {.control = "txtLCDShoto", .section = "H", .tag = "SHOU", .asNumber = true},
    {"txtpPassword", "H", "PAS1"},
    {"txtcPassword", "H", "PAS2"},
    {"txtRpas", "H", "RPAS"},
    {"txtStationNo", "H", "COMS"},
    {"txtFstn", "H", "FSTN"},
    {"txtFzti", "H", "FZTI"},
    {"txtFreset", "H", "FTIT"},
    {"cmbTcyc", "E", "TCYC"},
    {"cmbTwdy", "E", "TWDY"},
    {"cmbTday", "E", "TDAY"},
    {"cmbText", "E", "TEXT"},
    {.control = "cmbTsbah", .section = "E", .tag = "TSBA", .minutes = "cmbTsbam"},
    {.control = "cmbTstrh", .section = "E", .tag = "TSTR", .minutes = "cmbTstrm"},
    {.control = "cmbTstoh", .section = "E", .tag = "TSTO", .minutes = "cmbTstom"},
    {"txtTtsh", "E", "TTSH"},
    {"txtTtsm", "E", "TTSM"},
    {"txtTteh", "E", "TTEH"},
    {"txtTtem", "E", "TTEM"},
    {"txtHPLP", "E", "TIMH"},
    {"txtAVG", "E", "TIMA"},
    {"txtSUM", "E", "TIMT"},
    {"cmbTota", "Z", "TOTA"},
    {"cmbTstm", "Z", "TSTM"},
    {"cmbTsig", "Z", "TSIG"},
    {"cmbEtherFunc", "J", "ETHE"},
    {"cmbEMailFunc", "J", "MAIL"},
    {"cmbFtpSrvFunc", "J", "FTPF"},
    {"cmbFtpSrvControl", "J", "FTPA"},
    {"cmbWebSrvFunc", "J", "WEBF"},
    {"cmbWebSrvControl", "J", "WEBA"},
    {"cmbWebSrvMsgFunc", "J", "WEBM"},
    {"cmbModbusTcpIpFunc", "J", "MOTC"},
    {"txtSendMailAdd", "J", "SDAD"},
    {"txtSendName", "J", "SDNM"},
    // Control arrays: an element for each number of an address, each mail address, each item.
    {.control = "cmbDI", .section = "D", .tag = "DIKI", .elements = 16},
    {.control = "txtEtherIPAdd", .section = "J", .tag = "IPA#", .elements = 4},
    {.control = "txtEtherSubMask", .section = "J", .tag = "SUB#", .elements = 4},
    {.control = "txtEtherDefGate", .section = "J", .tag = "DEF#", .elements = 4},
    {.control = "txtSmtpIPAdd", .section = "J", .tag = "SIP#", .elements = 4},
    {.control = "txtRecvMailAdd", .section = "J", .tag = "RAD#", .elements = 8},
    {.control = "txtUserName", .section = "K", .tag = "UNAM", .elements = 8},
    // An edit field, despite its name.
    {.control = "lblUserPass", .section = "K", .tag = "PASS", .elements = 8},
    {.control = "cmbUserLevel", .section = "K", .tag = "LVEL", .elements = 8},
});

} // namespace

std::span<const CaptionOf> PageLabels() {
  return Labels;
}
std::span<const CaptionOf> PageFrames() {
  return Frames;
}
std::span<const FieldRow> SettingsFields() {
  return Fields;
}

} // namespace loader
