#include "qt/FormTexts.h"

#include <QLabel>
#include <QString>
#include <array>
#include <stdexcept>
#include <string>

#include "core/OwnTexts.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "qt/QtText.h"

namespace loader {

namespace {

// A text of one of the two tables; empty when made from nothing.
class Part {
public:
  constexpr Part() = default;
  // NOLINTNEXTLINE(google-explicit-constructor): a row of the table names its texts as they are.
  consteval Part(int textId) : caption_(TextId(textId).value) {}
  // NOLINTNEXTLINE(google-explicit-constructor)
  consteval Part(OwnTextId id) : own_(id), isOwn_(true) {}

  [[nodiscard]] std::u16string_view Text() const {
    if (isOwn_) {
      return OwnText(own_);
    }
    return caption_ == 0 ? std::u16string_view() : LoadText(TextId::At(caption_));
  }

private:
  int caption_ = 0;
  OwnTextId own_{};
  bool isOwn_ = false;
};

struct FormText {
  std::string_view form;
  std::string_view widget; // of an array without its "_n"
  Part text;
  int number = 0; // behind the text; of an array's first element
  Part more{};    // behind the number
  // The elements of an array that have such a name; -1: a single widget.
  int firstElement = -1;
  int lastElement = -1;
};

using enum OwnTextId;

constexpr std::string_view Main = "frmParamLoader";
constexpr std::string_view Channel = "frmParamLoader.pageChannel";
constexpr std::string_view Operation = "frmParamLoader.pageOperation";
constexpr std::string_view Recorder = "frmParamLoader.pageRecorder";
constexpr std::string_view Display = "frmParamLoader.pageDisplay";
constexpr std::string_view Ethernet = "frmParamLoader.pageEthernet";
constexpr std::string_view Mail = "frmParamLoader.pageMail";
constexpr std::string_view BothChannelScreens = "frmChSetting, frmOperationChSet";
constexpr std::string_view Operations = "frmOperationChSet";

// A field whose caption stands before another one has that caption with a number or with what sets it apart.
constexpr auto Names = std::to_array<FormText>({
    {Main, "cmbType", Model},
    {Main, "picCommStatus_0", CommunicationStatus},
    {Channel, "fgrCh", 18094},
    {Operation, "fgrOperationChSet", 18157},
    {Operation, "fgrConst", 18171},
    {Recorder, "cmbBetsu", 18107, 2},
    {Recorder, "cmbShoto", 18103, 2},
    {Recorder, "txtLCDShoto", 18103, 3},
    {Recorder, "cmbKeyLock", KeyLock},
    {Recorder, "txtTtsh", 18122, 0, 18091},
    {Recorder, "txtTtsm", 18122, 0, 18092},
    {Recorder, "txtTteh", 18123, 0, 18091},
    {Recorder, "txtTtem", 18123, 0, 18092},
    {Recorder, "cmbTwdy", Weekday},
    {Recorder, "cmbTsbah", 18114, 0, 18091},
    {Recorder, "cmbTsbam", 18114, 0, 18092},
    {Recorder, "cmbTstrm", 18122, 0, 18092},
    {Recorder, "cmbTstom", 18123, 0, 18092},
    {Recorder, "fgrDI", 18129},
    {Display, "fgrGroup", 18130},
    {Display, "fgrMess", 18132},
    {Display, "fgrUnit", 18133},
    {Ethernet, "cmbEtherFunc", 18134},
    {Ethernet, "txtEtherIPAdd", 18135, 2, {}, 1, 3},
    {Ethernet, "txtEtherSubMask", 18136, 2, {}, 1, 3},
    {Ethernet, "txtEtherDefGate", 18137, 2, {}, 1, 3},
    {Ethernet, "cmbWebSrvControl", WebServerAccessControl},
    {Ethernet, "cmbWebSrvMsgFunc", WebServerMessages},
    {Ethernet, "txtUserName", User, 1, {}, 0, 7},
    {Ethernet, "lblUserPass", User, 1, 18140, 0, 7},
    {Ethernet, "cmbUserLevel", User, 1, 18141, 0, 7},
    {Mail, "txtSmtpIPAdd", 18152, 2, {}, 1, 3},
    {Mail, "txtRecvMailAdd", 18155, 2, {}, 1, 7},
    {Mail, "flxEMailTriggerSetting", 18156},
    {"frmIPSetting", "txtIP", 18080, 2, {}, 1, 3},
    {"frmGroupSetting", "cmbScaleCh", 18064, 0, 18053},
    {"frmSelectUnit", "fgrUnit", 10006},
    {"frmAlarmSetting", "txtAlarmSet", 18046, 0, Mantissa},
    {"frmAlarmSetting", "cmbAlarmSet", 18046, 0, Exponent},
    {"frmEMailTriggerSetting", "chkRecvMailAddNo", 18059, 1, {}, 0, 7},
    {BothChannelScreens, "cmdUnitSelect", 18042, 0, 18035},
    {BothChannelScreens, "txtStMin", 18024, 0, 18022},
    {BothChannelScreens, "txtStMax", 18024, 0, 18023},
    {BothChannelScreens, "txtIndMin", 18021, 0, 18022},
    {BothChannelScreens, "txtIndMax", 18021, 0, 18023},
    {BothChannelScreens, "txtPVSlope", 18032, 0, 18033},
    {BothChannelScreens, "txtRecRangeMin", 18028, 0, 18022},
    {BothChannelScreens, "txtRecRangeMax", 18028, 0, 18023},
    {BothChannelScreens, "cmdSekiUnitSelect", 18017, 0, 18035},
    {BothChannelScreens, "lblColor", 18039},
    {BothChannelScreens, "cmbAlarmType1", 18044, 0, 18045},
    {BothChannelScreens, "cmbAlarmType2", 18048, 0, 18045},
    {BothChannelScreens, "cmbAlarmType3", 18049, 0, 18045},
    {BothChannelScreens, "cmbAlarmType4", 18050, 0, 18045},
    {BothChannelScreens, "txtAlarmSet1", 18044, 0, 18046},
    {BothChannelScreens, "txtAlarmSet2", 18048, 0, 18046},
    {BothChannelScreens, "txtAlarmSet3", 18049, 0, 18046},
    {BothChannelScreens, "txtAlarmSet4", 18050, 0, 18046},
    {BothChannelScreens, "lblAlarmSetInput1", 18044, 0, 18046},
    {BothChannelScreens, "lblAlarmSetInput2", 18048, 0, 18046},
    {BothChannelScreens, "lblAlarmSetInput3", 18049, 0, 18046},
    {BothChannelScreens, "lblAlarmSetInput4", 18050, 0, 18046},
    {BothChannelScreens, "cmbAlarmOut1", 18044, 0, 18047},
    {BothChannelScreens, "cmbAlarmOut2", 18048, 0, 18047},
    {BothChannelScreens, "cmbAlarmOut3", 18049, 0, 18047},
    {BothChannelScreens, "cmbAlarmOut4", 18050, 0, 18047},
    {Operations, "cmdFormulaSet1", 18160, 0, 19622},
    {Operations, "cmdFormulaSet2", 18161, 0, 19622},
    {Operations, "cmdFormulaSet3", 18162, 0, 19622},
    {Operations, "cmdFormulaSet4", 18163, 0, 19622},
    {Operations, "cmdFormulaDel1", 18160, 0, 19627},
    {Operations, "cmdFormulaDel2", 18161, 0, 19627},
    {Operations, "cmdFormulaDel3", 18162, 0, 19627},
    {Operations, "cmdFormulaDel4", 18163, 0, 19627},
    {"frmOpSetting", "cmbOpContents", Function},
});

constexpr auto Signs = std::to_array<FormText>({
    {Recorder, "colonTts", HourMinuteColon},
    {Recorder, "waveTt", FromToWave},
    {Recorder, "colonTte", HourMinuteColon},
    {Recorder, "colonTsba", HourMinuteColon},
});

// "開始時間 時", "ユーザー 3 パスワード".
std::u16string TextOf(const FormText& row, int element) {
  std::u16string text(row.text.Text());
  if (row.number > 0) {
    text += u' ' + DecimalText(row.number + element - row.firstElement);
  }
  if (!row.more.Text().empty()) {
    text.append(1, u' ').append(row.more.Text());
  }
  return text;
}

bool IsOf(const FormText& row, std::string_view form) {
  return row.form == form ||
         (row.form == BothChannelScreens && (form == "frmChSetting" || form == Operations));
}

template <typename Widget> Widget& WidgetOf(const QWidget& form, const FormText& row, int element) {
  std::string name(row.widget);
  if (element >= 0) {
    name += "_" + std::to_string(element);
  }
  auto* widget = form.findChild<Widget*>(QString::fromStdString(name));
  if (widget == nullptr) {
    throw std::logic_error("no widget " + name + " on the form " + std::string(row.form));
  }
  return *widget;
}

} // namespace

void GiveFormTexts(QWidget& form, std::string_view name) {
  for (const FormText& row : Names) {
    for (int element = row.firstElement; IsOf(row, name) && element <= row.lastElement; ++element) {
      WidgetOf<QWidget>(form, row, element).setAccessibleName(ToQt(TextOf(row, element)));
    }
  }
  for (const FormText& row : Signs) {
    if (row.form == name) {
      WidgetOf<QLabel>(form, row, -1).setText(ToQt(row.text.Text()));
    }
  }
}

} // namespace loader
