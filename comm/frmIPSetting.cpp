#include "comm/frmIPSetting.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr int Lowest = 0; // of an address part and of a station number
constexpr int Highest = 255;

std::optional<std::int16_t> InRange(std::optional<double> number) {
  if (!number) {
    return std::nullopt;
  }
  const double rounded = std::nearbyint(*number);
  return rounded >= Lowest && rounded <= Highest ? std::optional(static_cast<std::int16_t>(rounded))
                                                 : std::nullopt;
}

bool AddressPartIsGood(std::u16string_view text) {
  const std::u16string digits = HalfWidthNumber(text);
  return std::all_of(digits.begin(), digits.end(), IsDigit) && InRange(NumericText(digits));
}

std::optional<std::int16_t> StationOf(std::u16string_view text) {
  return HalfWidthNumber(text).find_first_of(u",.") == std::u16string::npos ? InRange(NumericText(text))
                                                                            : std::nullopt;
}

void Refuse(TextField& field) {
  ShowMessage(
      Replace(Replace(LoadText(20115), u"@FORMIN@", DecimalText(Lowest)), u"@FORMAX@", DecimalText(Highest)));
  RequestFocusAndSelectAll(field);
}

// A field that is left: a good number in half-width characters, as the address is sent and kept.
void CheckNumber(TextField& field, bool good) {
  if (good) {
    field.text = HalfWidthNumber(field.text);
  } else {
    Refuse(field);
  }
}

void ShowAddress(IpSettingScreen& screen, std::u16string_view address) {
  for (TextField& part : screen.txtIP) {
    const std::size_t dot = std::min(address.find(u'.'), address.size());
    part.text = address.substr(0, dot);
    address.remove_prefix(std::min(dot + 1, address.size()));
  }
}

// Takes the fields as they stand; each was checked when it was left.
void TakeSettings(IpSettingScreen& screen) {
  std::u16string address = screen.txtIP(0).text;
  for (int part = 1; part < screen.txtIP.Count(); ++part) {
    address += u"." + screen.txtIP(part).text;
  }
  Settings.RecorderIpAddress = address;
  Settings.StationSetting = StationOf(screen.txtStationNo.text).value_or(Settings.StationSetting);
}

} // namespace

IpSettingScreen::IpSettingScreen() : Screen("frmIPSetting") {
  caption = LoadText(10019);
  Label1.caption = LoadText(18080);
  lblStationNo.caption = LoadText(18081);
  cmdOK.caption = LoadText(19621);

  ShowAddress(*this, Settings.RecorderIpAddress);
  txtStationNo.text = DecimalText(Settings.StationSetting);

  for (TextField& part : txtIP) {
    part.onLostFocus = [&part] { CheckNumber(part, AddressPartIsGood(part.text)); };
  }
  txtStationNo.onLostFocus = [this] { CheckNumber(txtStationNo, StationOf(txtStationNo.text).has_value()); };
  cmdOK.onClick = [this] {
    TakeSettings(*this);
    ThePlatform().screens.Close(*this);
  };
}

void ShowIpSetting() {
  IpSettingScreen screen;
  ThePlatform().screens.ShowModal(screen);
}

} // namespace loader
