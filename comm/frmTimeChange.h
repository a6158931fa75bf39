// The screen that sets the recorder's clock.
#pragma once

#include <functional>

#include "comm/FlowCallbacks.h"
#include "comm/RecorderCommands.h"
#include "platform/Controls.h"

namespace loader {

using ClockFlow = std::function<void(const ClockSetting&, const FlowCallbacks&)>;

struct TimeChangeScreen : Screen {
  // `mainWindow` is told what the flow does. Both have to outlive the screen.
  TimeChangeScreen(const FlowCallbacks& mainWindow, const ClockFlow& setClock);
  Label Label3{*this, "Label3"};
  TextField txtYear{*this, "txtYear"};
  Label lblYear{*this, "lblYear"};
  TextField txtMonth{*this, "txtMonth"};
  Label lblMonth{*this, "lblMonth"};
  TextField txtDay{*this, "txtDay"};
  Label lblDay{*this, "lblDay"};
  TextField txtHour{*this, "txtHour"};
  Label lblHour{*this, "lblHour"};
  TextField txtMinute{*this, "txtMinute"};
  Label lblMinute{*this, "lblMinute"};
  Button cmdOK{*this, "cmdOK"};
  Button cmdCancel{*this, "cmdCancel"};

  // The screen stays open and alive while its flow runs: a second click on cmdOK is passed over.
  bool flowUnderWay = false;
};

// Shows it modally, filled with the computer's date and time. `setClock` is the flow that it starts.
void ShowTimeChange(const FlowCallbacks& mainWindow, const ClockFlow& setClock = SetRecorderClock);

} // namespace loader
