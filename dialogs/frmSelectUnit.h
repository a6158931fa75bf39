// The choice of a unit from the list of all units.
#pragma once

#include "platform/Controls.h"

namespace loader {

constexpr int NoUnitChosen = -1;

struct SelectUnitScreen : Screen {
  // `unit` is the one in force. The two temperature units alone are offered for `temperatureOnly` and for an
  // input kind below 30.
  SelectUnitScreen(int unit, int inputType, bool temperatureOnly);

  Grid fgrUnit{*this, "fgrUnit"};
  Button btnOk{*this, "btnOk"};
  Button btnCancel{*this, "btnCancel"};
  int chosen = NoUnitChosen; // its number in the unit list
  bool refused = false;      // a cell without a text was taken: the screen has stayed open
};

// Modal. The number of the unit, or NoUnitChosen.
[[nodiscard]] int SelectUnit(int unit, int inputType, bool temperatureOnly);

} // namespace loader
