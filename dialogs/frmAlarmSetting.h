// The alarm value of a channel whose logarithm is on: a mantissa and an exponent in place of the number that
// is stored.
#pragma once

#include <array>
#include <deque>
#include <string>

#include "platform/Controls.h"

namespace loader {

// What the dialog needs of the channel screen that opens it, as that screen shows it, and what it hands back.
// The names are those of the screen's fields.
struct AlarmContract {
  bool measuringChannel = true;        // opened by the screen of the measuring channels
  int alarmNumber = 1;                 // 1 to 4
  std::u16string txtStMin, txtStMax;   // the measuring range
  std::u16string txtIndMin, txtIndMax; // the exponents
  int cmbDecimal = 0;                  // its row: POIN of an operation channel
  int cmbInputType = 0;                // the kind, not the row; of a measuring channel
  int cmbInputOtch = 0;                // its row, from 0: the channel that kind 40 refers to
  int gnChNo = 0;                      // the channel itself, from 0
  // By alarm, from 0. Those of the alarm are rewritten by "適用" and by nothing else.
  std::array<std::u16string, 4> lblAlarmSetInput; // "3.16E2"
  std::array<std::u16string, 4> txtAlarmSet;      // the stored value at the position of the measuring range
};

// The position of an alarm under the logarithm, which is a number on the scale of the measuring range: that
// in which txtStMin and txtStMax stand.
[[nodiscard]] int AlarmPosition(const AlarmContract& caller);

struct AlarmSettingScreen : Screen {
  explicit AlarmSettingScreen(AlarmContract& contract);

  AlarmContract& caller;
  Label lblAlarmSet1{*this, "lblAlarmSet1"};
  TextField txtAlarmSet{*this, "txtAlarmSet"}; // 1.00 to 9.99
  Label lblE{*this, "lblE"};
  ListBox cmbAlarmSet{*this, "cmbAlarmSet"}; // -9 to 9
  Button btnOk{*this, "btnOk"};
  Button btnCancel{*this, "btnCancel"};
  bool edited = false; // mantissa or exponent, since they were shown
  bool applied = false;
};

// Modal. True when the caller's texts of the alarm were rewritten. Nothing reaches the store.
bool ShowAlarmSetting(AlarmContract& caller);

} // namespace loader
