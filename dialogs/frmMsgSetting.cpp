#include "dialogs/frmMsgSetting.h"

#include <array>

#include "core/ModelProfile.h"

namespace loader {

namespace {

constexpr auto Fields = std::to_array<FieldRow>({
    {.control = "txtMessage", .section = "M", .tag = "MESS", .tooLong = 62300, .forbidden = 62301},
    {"cmbTiming", "M", "MTM1"},
    {.control = "cmbTiming1", .section = "M", .tag = "MTM2", .noneIsZero = true},
    {.control = "cmbTiming2", .section = "M", .tag = "MTM3", .noneIsZero = true},
});

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblMessage", 18082},
    {"lblTiming", 18083},
    {.control = "lblTiming1", .text = 18084, .field = "cmbTiming1"},
    {.control = "lblTiming2", .text = 18085, .field = "cmbTiming2"},
    {"lblSelectNo", 18086},
});

} // namespace

MsgSettingScreen::MsgSettingScreen()
    : EntryDialog("frmMsgSetting", 10003, {.last = Profile.MessageCount - 1},
                  EntryTexts{62302, 62303, u"@MSGSU@"}, Fields, Labels) {}

std::span<const FieldRow> MessageFields() {
  return Fields;
}

void ShowMsgSetting(int message) {
  MsgSettingScreen screen;
  ShowEntryDialog(screen, message);
}

} // namespace loader
