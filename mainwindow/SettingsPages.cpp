#include "mainwindow/SettingsPages.h"

#include <array>

#include "core/ModelProfile.h"
#include "core/OwnTexts.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "mainwindow/frmParamLoader.h"
#include "platform/Platform.h"

namespace loader {

namespace {

// The page with most of the number fields comes to the front, so that the refused field stands before the
// user; the station number turns to another page than its own, deliberately.
void ShowPageOf(ParamLoaderScreen& window, TextField& field) {
  const int page = field.name == "txtStationNo" ? EthernetPage : RecorderPage;
  if (window.tbsParameter.current != page) {
    SelectPage(window.tbsParameter, page);
    RequestFocusAndSelectAll(field); // the page's own focus move comes second to the field
  }
}

template <typename Wanted> void FillWhere(const Wanted& wanted) {
  FillFieldsWhere(frmParamLoader->settings, wanted);
}

bool IsMailField(const Field& field) {
  const std::string_view tag = field.tag;
  return field.shape == FieldShape::Text || tag.starts_with("SIP");
}

std::array<std::u16string, 5> TodayPatterns() {
  constexpr std::array<std::u16string_view, 12> Months{u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                                       u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
  const DateAndTime now = ThePlatform().clock.Now();
  const std::u16string year = PaddedDecimal(now.year, 4);
  const std::u16string shortYear = PaddedDecimal(now.year % 100, 2);
  const std::u16string month = PaddedDecimal(now.month, 2);
  const std::u16string day = PaddedDecimal(now.day, 2);
  const std::u16string name(Months.at(static_cast<std::size_t>(now.month - 1)));
  return {year + u"/" + month + u"/" + day, day + u"/" + month + u"/" + year,
          day + u"- " + name + u"-" + shortYear, month + u"/" + day + u"/" + year,
          name + u"-" + day + u"-" + shortYear};
}

// The date format is shown by today's date.
void FillDateFormats(ListBox& list) {
  ClearList(list);
  for (const std::u16string& text : TodayPatterns()) {
    AddItem(list, text, static_cast<std::int32_t>(list.items.size()));
  }
}

void SetVisible(ParamLoaderScreen& window, std::span<const std::string_view> controls, bool visible) {
  for (const std::string_view name : controls) {
    ControlNamed(window, name).visible = visible;
  }
}

constexpr auto ShownForBothModels = std::to_array<std::string_view>(
    {"lblpPassword", "lblcPassword", "lblRpas", "txtpPassword", "txtcPassword", "txtRpas", "fraTimer",
     "fraConstant", "lblCompression", "cmbCompression", "lblOverwrite", "cmbOverwrite"});
constexpr auto ShownForKov = std::to_array<std::string_view>({"lblTitle(1)",
                                                              "lblTitle(2)",
                                                              "lblTota",
                                                              "lblTstm",
                                                              "lblTsig",
                                                              "lblTts",
                                                              "lblTte",
                                                              "Label3",
                                                              "Label2",
                                                              "cmbTota",
                                                              "cmbTstm",
                                                              "cmbTsig",
                                                              "cmbTstrh",
                                                              "cmbTstrm",
                                                              "cmbTstoh",
                                                              "cmbTstom",
                                                              "lblTrend_backcolor",
                                                              "cmbTrend_backcolor",
                                                              "lblHistorical_backcolor",
                                                              "cmbHistorical_backcolor"});
constexpr auto ShownForRug = std::to_array<std::string_view>(
    {"cmbDI(10)", "cmbDI(11)", "cmbDI(12)", "cmbDI(13)", "cmbDI(14)", "cmbDI(15)", "lblDI(10)", "lblDI(11)",
     "lblDI(12)", "lblDI(13)", "lblDI(14)", "lblDI(15)"});

} // namespace

void MakeSettingsControls(ParamLoaderScreen& window) {
  MakeLabels(window, window.labels, PageLabels());
  for (const std::string_view colon : {"Label2", "Label3"}) {
    window.labels.emplace_back(window, std::string(colon)).caption = OwnText(OwnTextId::HourMinuteColon);
  }
  for (int n = 0; n < 16; ++n) {
    window.labels.emplace_back(window, ElementName("lblDI", n)).caption =
        std::u16string(OwnText(OwnTextId::DigitalInput)) + DecimalText(n + 1);
  }
  for (int n = 0; n < 8; ++n) {
    window.labels.emplace_back(window, ElementName("lblUserNo", n)).caption = DecimalText(n + 1);
  }
  MakeFrames(window, window.frames, PageFrames());
  window.settings.onRefusedNumber = [&window](TextField& field) { ShowPageOf(window, field); };
  window.settings.selectRefusedText = false;
  window.settings.lists.emplace_back(window, "cmbTmove"); // filled with the others; stands for no parameter
}

int ModelRow() {
  return ModelCode == "KOV" ? 0 : 1;
}

void ApplyModelVisibility(ParamLoaderScreen& window) {
  // The date format is a setting that the screen never shows.
  LabelNamed(window, "lblDateFormat").visible = false;
  ListNamed(window, "cmbDateFormat").visible = false;
  const bool kov = ModelCode == "KOV";
  if (!kov && ModelCode != "RUG") {
    return;
  }
  window.cmbType.index = ModelRow();
  window.tbsParameter.pages[OperationPage].visible = true;
  SetVisible(window, ShownForBothModels, true);
  SetVisible(window, ShownForKov, kov);
  SetVisible(window, ShownForRug, !kov);
}

void FillPageLists(ParamLoaderScreen& window) {
  FillLists(window.settings);
  FillList(ListNamed(window, "cmbTmove"), MoveSwitchList);
  FillDateFormats(ListNamed(window, "cmbDateFormat"));
}

void FillSettingsPages() {
  FillWhere([](const Field& field) {
    const std::string_view section = field.row->section;
    return section == "H" || section == "E" || (section == "Z" && ModelCode == "KOV");
  });
}

void FillDigitalInputs() {
  FillWhere(
      [](const Field& field) { return field.row->section == "D" && field.item < Profile.DigitalInputCount; });
}

void FillEthernetPage() {
  FillWhere([](const Field& field) { return field.row->section == "J" && !IsMailField(field); });
}

void FillUserAccounts() {
  FillWhere([](const Field& field) { return field.row->section == "K"; });
}

void FillMailPage() {
  FillWhere([](const Field& field) { return field.row->section == "J" && IsMailField(field); });
}

} // namespace loader
