// One e-mail trigger: what it waits for, what the mail says, who gets it.
#pragma once

#include <functional>

#include "dialogs/Browsing.h"
#include "meaning/ParameterText.h"

namespace loader {

struct EMailTriggerSettingScreen : EntryDialog {
  explicit EMailTriggerSettingScreen(std::function<void(int number)> rowChanged);

  ControlArray<CheckBox> chkRecvMailAddNo{*this, "chkRecvMailAddNo", MailAddresses};
  ControlArray<Label> lblRecvMailAdd{*this, "lblRecvMailAdd", MailAddresses}; // the addresses themselves
};

// Modal; `trigger` counts from 0. `rowChanged`, which may be empty, gets the number, from 1, of each trigger
// that was applied, while the dialog is open.
void ShowEMailTriggerSetting(int trigger, std::function<void(int number)> rowChanged);

// The fields and their parameters; the boxes of the addresses (EADD) are none.
[[nodiscard]] std::span<const FieldRow> MailTriggerFields();

} // namespace loader
