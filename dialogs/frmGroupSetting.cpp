#include "dialogs/frmGroupSetting.h"

#include <array>

#include "core/ModelProfile.h"
#include "core/Text.h"

namespace loader {

namespace {

constexpr int Slots = 10;

// One group is spread over three sections. A slot may hold one of five contents that are no channels: they
// are kept for as long as nobody picks another row.
constexpr auto Fields = std::to_array<FieldRow>({
    {"cmbHyoji", "B", "BBRM"},
    {"cmbTrend", "T", "TPVD"},
    {.control = "txtDispNameTag", .section = "G", .tag = "GNEM", .tooLong = 62202, .forbidden = 62203},
    {.control = "cmbGC", .section = "G", .tag = "GC##", .elements = Slots},
    {"cmbTrendDirec", "T", "THOU"},
    {"cmbTrendDivision", "T", "TBUN"},
    {"cmbScale", "T", "TMEM"},
    {"cmbScaleCh", "T", "TMCH"},
});

constexpr auto Labels = std::to_array<CaptionOf>({
    {.control = "lblHyoji", .text = 18061, .field = "cmbHyoji"},
    {"lblTrend", 18062},
    {"lblDispNameTag", 18063},
    {"lblScale", 18064},
    {"lblTrendDirec", 18066},
    {"lblTrendDivision", 18067},
    {"lblSelectNo", 18068},
    {.control = "lblGC", .text = 18070, .elements = Slots, .field = "cmbGC"},
});

constexpr auto Frames = std::to_array<CaptionOf>({
    {"fraDispSet", 18060},
    {"fraTrend", 18065},
    {"Frame1", 18069},
});

} // namespace

GroupSettingScreen::GroupSettingScreen()
    : EntryDialog("frmGroupSetting", 10007, {.last = Profile.GroupCount - 1}, std::nullopt, Fields, Labels,
                  Frames) {
  browsing.numberCaption = LoadText(26002);
  if (ModelCode == "BIQ") { // a model with bars alone, and with fewer slots
    ListNamed(*this, "cmbHyoji").visible = false;
    for (int slot = Profile.GroupChannelLast + 1; slot < Slots; ++slot) {
      ListNamed(*this, ElementName("cmbGC", slot)).visible = false;
    }
    ShowLabelsWithFields(*this, captions);
  }
}

std::span<const FieldRow> GroupFields() {
  return Fields;
}

void ShowGroupSetting(int group) {
  GroupSettingScreen screen;
  ShowEntryDialog(screen, group);
}

} // namespace loader
