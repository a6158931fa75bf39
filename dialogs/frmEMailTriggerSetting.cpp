#include "dialogs/frmEMailTriggerSetting.h"

#include <array>
#include <utility>

#include "core/Text.h"

namespace loader {

namespace {

constexpr auto Fields = std::to_array<FieldRow>({
    {"cmbTriggerTiming", "X", "ETRG"},
    {"cmbTimingSetting1", "X", "ETG1"},
    {"cmbTimingSetting2", "X", "ETG2"},
    {.control = "txtTitle", .section = "X", .tag = "ETTL", .tooLong = 62400, .forbidden = 62401},
    {.control = "txtComment1", .section = "X", .tag = "ECM1", .tooLong = 62400, .forbidden = 62401},
    {.control = "txtComment2", .section = "X", .tag = "ECM2", .tooLong = 62400, .forbidden = 62401},
    {"cmbPvValueAffixation", "X", "EPVA"},
});

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblTriggerTiming", 18054},
    {.control = "lblTimingSetting1", .text = 63538, .field = "cmbTimingSetting1"},
    {.control = "lblTimingSetting2", .text = 63537, .field = "cmbTimingSetting2"},
    {"lblTitle", 18055},
    {"lblComment1", 18056},
    {"lblComment2", 18057},
    {"lblPvValueAffixation", 18058},
    {"lblRecvMailAddNo", 18059},
    {"lblSelectNo", 18004},
});

// What the two lists are called, by the timing; where a list is hidden its text is not seen.
struct TimingTexts {
  TextId first;
  TextId second;
};
constexpr auto ByTiming = std::to_array<TimingTexts>({
    {63538, 63537}, // none
    {63538, 63537}, // a digital input goes on
    {63538, 63537}, // or off
    {63536, 63537}, // an alarm of a channel comes
    {63536, 63537}, // or goes
    {63535, 63537}, // an alarm of the recorder
    {63547, 63548}, // at intervals
});

void NameTheLists(EMailTriggerSettingScreen& screen) {
  const int timing = ListNamed(screen, "cmbTriggerTiming").index;
  if (timing >= 0 && timing < static_cast<int>(ByTiming.size())) {
    const TimingTexts& texts = ByTiming.at(static_cast<std::size_t>(timing));
    LabelNamed(screen, "lblTimingSetting1").caption = LoadText(texts.first);
    LabelNamed(screen, "lblTimingSetting2").caption = LoadText(texts.second);
  }
}

ParamNumRecord* AddressesOf(const EMailTriggerSettingScreen& screen) {
  return FindNumRecord("X", screen.browsing.entry, "EADD");
}

void ShowAddresses(EMailTriggerSettingScreen& screen) {
  const ParamNumRecord* record = AddressesOf(screen);
  for (int address = 0; address < MailAddresses; ++address) {
    screen.chkRecvMailAddNo(address).checked = record != nullptr && HasAddress(record->Value, address);
  }
}

bool AddressesChanged(EMailTriggerSettingScreen& screen) {
  const ParamNumRecord* record = AddressesOf(screen);
  bool changed = false;
  for (int address = 0; record != nullptr && address < MailAddresses; ++address) {
    changed = changed || screen.chkRecvMailAddNo(address).checked != HasAddress(record->Value, address);
  }
  return changed;
}

void StoreAddresses(EMailTriggerSettingScreen& screen) {
  ParamNumRecord* record = AddressesOf(screen);
  if (record == nullptr || !AddressesChanged(screen)) {
    return;
  }
  int mask = 0;
  for (int address = 0; address < MailAddresses; ++address) {
    mask |= (screen.chkRecvMailAddNo(address).checked ? 1 : 0) << address;
  }
  SetNumber(*record, static_cast<std::int16_t>(mask), SlotValue);
}

// The addresses of the mail page, each beside its box.
void ShowMailPageAddresses(EMailTriggerSettingScreen& screen) {
  for (int address = 0; address < MailAddresses; ++address) {
    const std::u16string number = DecimalText(address + 1);
    screen.chkRecvMailAddNo(address).caption = number;
    if (const ParamTextRecord* text = FindTextRecord("J", 0, "RAD" + Narrow(number))) {
      screen.lblRecvMailAdd(address).caption = TrimRight(text->Value);
    }
  }
}

int TriggerCount() {
  const StoreIndex section = gFFindSection("X");
  return section == NotFound ? 0 : static_cast<int>(ParamStore[section].Items.size());
}

} // namespace

EMailTriggerSettingScreen::EMailTriggerSettingScreen(std::function<void(int number)> rowChanged)
    : EntryDialog("frmEMailTriggerSetting", 10018, {.last = TriggerCount() - 1}, std::nullopt, Fields,
                  Labels) {
  ShowMailPageAddresses(*this);
  fields.onPicked = [this](Field& /*field*/) {
    ShowDecidedLists(*this);
    NameTheLists(*this);
  };
  onLoaded = [this] {
    NameTheLists(*this);
    ShowAddresses(*this);
  };
  othersChanged = [this] { return AddressesChanged(*this); };
  onStored = [this] { StoreAddresses(*this); };
  if (rowChanged) {
    onApplied = [this, changed = std::move(rowChanged)] { changed(browsing.entry + 1); };
  }
}

std::span<const FieldRow> MailTriggerFields() {
  return Fields;
}

void ShowEMailTriggerSetting(int trigger, std::function<void(int number)> rowChanged) {
  EMailTriggerSettingScreen screen(std::move(rowChanged));
  ShowEntryDialog(screen, trigger);
}

} // namespace loader
