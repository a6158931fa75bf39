// The version screen.
#pragma once

#include "platform/Controls.h"

namespace loader {

struct AboutScreen : Screen {
  AboutScreen();
  Label lblTitle{*this, "lblTitle"};
  Label lblVersion{*this, "lblVersion"};
  Button cmdOK{*this, "cmdOK"};
};

// Shows it modally.
void ShowAbout();

} // namespace loader
