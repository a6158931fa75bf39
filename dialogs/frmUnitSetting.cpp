#include "dialogs/frmUnitSetting.h"

#include <array>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"

namespace loader {

namespace {

constexpr auto Fields = std::to_array<FieldRow>({
    {.control = "txtMessage", .section = "U", .tag = "UNIT", .tooLong = 62600, .forbidden = 62601},
});

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblMessage", 18003},
    {"lblSelectNo", 18004},
});

} // namespace

UnitSettingScreen::UnitSettingScreen()
    : EntryDialog("frmUnitSetting", 10004, {.last = Profile.UnitCount - 1},
                  EntryTexts{62602, 62603, u"@UNISU@"}, Fields, Labels) {
  // Tables and lists show the new name at once.
  onApplied = [this] {
    const std::u16string_view typed = Trim(FieldNamed(*this, "txtMessage").text);
    UnitNames.at(UserUnitIndex(browsing.entry + 1, Profile.UnitCount)) = typed;
  };
}

std::span<const FieldRow> UnitFields() {
  return Fields;
}

void ShowUnitSetting(int unit) {
  UnitSettingScreen screen;
  ShowEntryDialog(screen, unit);
}

} // namespace loader
