// The screen for the recorder's address and station number. It has no cancel: closing it otherwise changes
// nothing.
#pragma once

#include "platform/Controls.h"

namespace loader {

struct IpSettingScreen : Screen {
  IpSettingScreen();
  Label Label1{*this, "Label1"};
  ControlArray<TextField> txtIP{*this, "txtIP", 4};
  Label lblStationNo{*this, "lblStationNo"};
  TextField txtStationNo{*this, "txtStationNo"};
  Button cmdOK{*this, "cmdOK"};
};

// Shows it modally, filled from Settings.
void ShowIpSetting();

} // namespace loader
