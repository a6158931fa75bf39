#include "dialogs/frmConstSetting.h"

#include <array>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "platform/Platform.h"

namespace loader {

namespace {

// The value and its position are one setting: the field can't be stored as its record alone, whose position
// is that of the value before.
constexpr auto Fields = std::to_array<FieldRow>({
    {"txtMessage", "N", "CONS"},
});

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblMessage", 18170},
    {"lblSelectNo", 18004},
});

void ShowConstant(ConstSettingScreen& screen) {
  const int item = screen.browsing.entry;
  screen.txtMessage.text =
      ParameterText(MeaningOf("N", "CONS"), View::Screen, item, "CONS").value_or(std::u16string());
  screen.shownText = screen.txtMessage.text;
}

void ApplyConstant(ConstSettingScreen& screen) {
  const int item = screen.browsing.entry;
  ParamNumRecord* value = FindNumRecord("N", item, "CONS");
  ParamNumRecord* position = FindNumRecord("N", item, "CONP");
  if (value == nullptr || position == nullptr) {
    return;
  }
  std::u16string& text = screen.txtMessage.text;
  text = HalfWidthNumber(Trim(text));
  const int digits = TypedPosition(text);
  if (!CheckGuardedField(digits, value->MinValue, value->MaxValue, screen.txtMessage)) {
    return;
  }
  std::int16_t stored = 0;
  if (text == screen.shownText || !TextToStored(text, stored, value->MinValue, value->MaxValue, digits)) {
    return; // nothing was changed
  }
  SetNumber(*value, stored, SlotValue);
  SetNumber(*position, static_cast<std::int16_t>(digits), SlotValue);
  LoadEntry(screen.browsing, item);
}

} // namespace

ConstSettingScreen::ConstSettingScreen()
    : Screen("frmConstSetting"),
      browsing(*this, {.last = Profile.ConstantCount - 1}, EntryTexts{62302, 62303, u"@MSGSU@"}) {
  caption = LoadText(10021);
  MakeLabels(*this, labels, Labels);
  browsing.onLoad = [this] { ShowConstant(*this); };
  browsing.onApply = [this] { ApplyConstant(*this); };
}

std::span<const FieldRow> ConstantFields() {
  return Fields;
}

void ShowConstSetting(int constant) {
  ConstSettingScreen screen;
  LoadEntry(screen.browsing, constant);
  ThePlatform().screens.ShowModal(screen);
}

} // namespace loader
