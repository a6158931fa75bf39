#include "mainwindow/SettingsPages.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <utility>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/OwnTexts.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "mainwindow/ChannelCells.h"
#include "mainwindow/frmParamLoader.h"

namespace loader {

namespace {

constexpr int MinutesOfHour = 60;

ParamNumRecord* NumRecordOf(const SettingsField& field) {
  return FindNumRecord(field.section, field.item, field.tag);
}
ParamTextRecord* TextRecordOf(const SettingsField& field) {
  return FindTextRecord(field.section, field.item, field.tag);
}

// A value that is no row leaves the list as it was. No handler runs.
void ShowRow(ListBox& list, int row) {
  if (row >= 0 && std::cmp_less(row, list.items.size())) {
    list.index = row;
  }
}

void ShowNumber(const ParamLoaderScreen& window, const SettingsField& field, const ParamNumRecord& record) {
  FieldNamed(window, field.control).text = StoredToText(record.Value, 0, record.MinValue, record.MaxValue);
}

// Some lists and fields are one setting. What one of them has stored the others show at once, lest a look at
// one writes its stale value back.
void ShowOnTheOthers(const ParamLoaderScreen& window, const SettingsField& stored,
                     const ParamNumRecord& record) {
  for (const SettingsField& other : SettingsFields()) {
    if (other.control == stored.control || other.section != stored.section || other.item != stored.item ||
        other.tag != stored.tag) {
      continue;
    }
    if (other.shape == FieldShape::Number) {
      ShowNumber(window, other, record);
    } else if (other.shape == FieldShape::List) {
      ShowRow(ListNamed(window, other.control), record.Value);
    }
  }
}

void StoreListRow(const ParamLoaderScreen& window, const SettingsField& field, const ListBox& list) {
  if (ParamNumRecord* record = NumRecordOf(field)) {
    record->Value = static_cast<std::int16_t>(list.index);
    ShowOnTheOthers(window, field, *record);
  }
}

void StoreTime(const SettingsField& field, const ListBox& hours, const ListBox& minutes) {
  const auto number = [](const ListBox& list) -> int {
    return list.index < 0 ? 0 : ParseInt16(list.items[static_cast<std::size_t>(list.index)]).value_or(0);
  };
  if (ParamNumRecord* record = NumRecordOf(field)) {
    record->Value = static_cast<std::int16_t>(number(hours) * MinutesOfHour + number(minutes));
  }
}

void LeaveNumberField(ParamLoaderScreen& window, const SettingsField& field, TextField& text) {
  ParamNumRecord* record = NumRecordOf(field);
  if (record == nullptr) {
    return;
  }
  if (!CheckValueField(0, record->MinValue, record->MaxValue, text)) {
    // While the guard is on nothing was checked: no page moves, and the guard is not started anew.
    if (WaitTimer2.Enabled) {
      return;
    }
    // The page with most of these fields comes to the front, so that the field stands before the user; the
    // station number turns to another page than its own, deliberately.
    const int page = text.name == "txtStationNo" ? EthernetPage : RecorderPage;
    if (window.tbsParameter.current != page) {
      SelectPage(window.tbsParameter, page);
      RequestFocusAndSelectAll(text); // the page's own focus move comes second to the field
    }
    WaitChk();
    return;
  }
  std::u16string typed = text.text;
  std::int16_t stored = record->Value;
  if (TextToStored(typed, stored, record->MinValue, record->MaxValue, 0)) {
    record->Value = stored;
    ShowOnTheOthers(window, field, *record);
  }
}

std::optional<std::int16_t> OctetOf(std::u16string_view text, const ParamNumRecord& record) {
  for (const char16_t character : text) {
    if (character < u'0' || character > u'9') {
      return std::nullopt;
    }
  }
  const std::optional<std::int16_t> value = ParseInt16(text); // an empty box is no number
  return value && *value >= record.MinValue && *value <= record.MaxValue ? value : std::nullopt;
}

void LeaveOctetField(const SettingsField& field, TextField& text) {
  ParamNumRecord* record = NumRecordOf(field);
  if (record == nullptr) {
    return;
  }
  if (const auto value = OctetOf(text.text, *record)) {
    text.text = DecimalText(*value);
    record->Value = *value;
    return;
  }
  std::u16string message = Replace(LoadText(20115), u"@FORMIN@", DecimalText(record->MinValue));
  message = Replace(message, u"@FORMAX@", DecimalText(record->MaxValue));
  ShowMessage(message);
  RequestFocus(text);
}

void TrimMailText(TextField& text) {
  const std::u16string trimmed(Trim(text.text));
  if (trimmed != text.text) {
    text.text = trimmed;
    text.selStart = 0;
    text.selLength = 0;
    text.selectionPending = true;
  }
}

void LeaveTextField(const SettingsField& field, TextField& text) {
  ParamTextRecord* record = TextRecordOf(field);
  if (record == nullptr) {
    return;
  }
  if (field.shape == FieldShape::MailText) {
    text.text = std::u16string(Trim(text.text));
  }
  if (static_cast<int>(CodePageLength(text.text)) <= record->ByteLength) {
    SetText(*record, text.text, SlotValue);
    return;
  }
  ShowMessage(Replace(LoadText(20117), u"@LEN@", DecimalText(record->ByteLength)));
  RequestFocus(text);
}

void TieList(ParamLoaderScreen& window, const SettingsField& field) {
  ListBox& list = window.lists.emplace_back(window, std::string(field.control));
  if (field.shape == FieldShape::List) {
    list.onChange = [&window, &field, &list] { StoreListRow(window, field, list); };
    return;
  }
  ListBox& minutes = window.lists.emplace_back(window, std::string(field.second));
  list.onChange = minutes.onChange = [&field, &list, &minutes] { StoreTime(field, list, minutes); };
}

void TieField(ParamLoaderScreen& window, const SettingsField& field) {
  TextField& text = window.fields.emplace_back(window, std::string(field.control));
  switch (field.shape) {
  case FieldShape::Number:
    text.onLostFocus = [&window, &field, &text] { LeaveNumberField(window, field, text); };
    break;
  case FieldShape::Octet:
    text.onLostFocus = [&field, &text] { LeaveOctetField(field, text); };
    break;
  case FieldShape::MailText:
    text.onChange = [&text] { TrimMailText(text); };
    [[fallthrough]];
  case FieldShape::PlainText:
    text.onLostFocus = [&field, &text] { LeaveTextField(field, text); };
    break;
  case FieldShape::List:
  case FieldShape::Time:
    break;
  }
}

void FillField(const ParamLoaderScreen& window, const SettingsField& field) {
  switch (field.shape) {
  case FieldShape::List:
    if (const ParamNumRecord* record = NumRecordOf(field)) {
      SelectRow(ListNamed(window, field.control), record->Value);
    }
    break;
  case FieldShape::Time:
    if (const ParamNumRecord* record = NumRecordOf(field)) {
      // Both rows first, then nothing to write: a handler that ran between them would store half a time.
      const int minutesOfDay = record->Value;
      ShowRow(ListNamed(window, field.control), minutesOfDay / MinutesOfHour);
      ShowRow(ListNamed(window, field.second), minutesOfDay % MinutesOfHour);
    }
    break;
  case FieldShape::Number:
    if (const ParamNumRecord* record = NumRecordOf(field)) {
      ShowNumber(window, field, *record);
    }
    break;
  case FieldShape::Octet:
    if (const ParamNumRecord* record = NumRecordOf(field)) {
      FieldNamed(window, field.control).text = DecimalText(record->Value);
    }
    break;
  case FieldShape::MailText:
    if (const ParamTextRecord* record = TextRecordOf(field)) {
      // The text as it stands, less the blanks that its change handler removes from it at once.
      FieldNamed(window, field.control).text = std::u16string(Trim(record->Value));
    }
    break;
  case FieldShape::PlainText:
    if (const ParamTextRecord* record = TextRecordOf(field)) {
      FieldNamed(window, field.control).text = std::u16string(TrimRight(record->Value));
    }
    break;
  }
}

template <typename Wanted> void FillFieldsWhere(const Wanted& wanted) {
  for (const SettingsField& field : SettingsFields()) {
    if (wanted(field)) {
      FillField(*frmParamLoader, field);
    }
  }
}

bool IsMailField(const SettingsField& field) {
  return field.shape == FieldShape::MailText || field.tag.starts_with("SIP");
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

void FillExternalInputs(ListBox& list) {
  constexpr int AlarmsOfChannel = 4;
  const int alarms = AlarmsOfChannel * (Profile.ChannelCount + Profile.OperationChannelCount);
  for (int n = 0; n < Profile.DigitalInputCount + alarms; ++n) {
    if (const std::u16string* text = CatalogueEntry(AlarmSourceList, ExternalInputEntry(n))) {
      AddItem(list, *text);
    }
  }
}

void FillOneList(const ParamLoaderScreen& window, const SettingsList& source) {
  ListBox& list = ListNamed(window, source.control);
  ClearList(list);
  switch (source.extent) {
  case ListExtent::All:
    FillList(list, *source.list);
    break;
  case ListExtent::DOCount:
    FillList(list, *source.list, Profile.AlarmOutputListSize);
    if (!list.items.empty()) {
      list.items.front() = LoadText(TextId::At(source.headText));
    }
    break;
  case ListExtent::ExternalInput:
    FillExternalInputs(list);
    break;
  case ListExtent::UserLevels:
    AddItem(list, source.list->at(0));
    AddItem(list, source.list->at(3));
    break;
  case ListExtent::Today:
    for (const std::u16string& text : TodayPatterns()) {
      AddItem(list, text);
    }
    break;
  }
}

void SetVisible(const ParamLoaderScreen& window, std::span<const std::string_view> controls, bool visible) {
  for (const std::string_view name : controls) {
    Control* control = window.Find(name);
    if (control == nullptr) {
      throw std::logic_error("no control named " + std::string(name));
    }
    control->visible = visible;
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
  for (const CaptionOf& label : PageLabels()) {
    window.labels.emplace_back(window, std::string(label.control)).caption = LoadText(label.text);
  }
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
  for (const CaptionOf& frame : PageFrames()) {
    window.frames.emplace_back(window, std::string(frame.control)).caption = LoadText(frame.text);
  }
  for (const SettingsField& field : SettingsFields()) {
    if (field.shape == FieldShape::List || field.shape == FieldShape::Time) {
      TieList(window, field);
    } else {
      TieField(window, field);
    }
  }
  window.lists.emplace_back(window, "cmbTmove"); // filled with the others; stands for no parameter
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

void FillRecorderLists(ParamLoaderScreen& window) {
  for (const SettingsList& list : RecorderLists()) {
    FillOneList(window, list);
  }
}

void FillEthernetLists(ParamLoaderScreen& window) {
  for (const SettingsList& list : EthernetLists()) {
    FillOneList(window, list);
  }
}

void FillSettingsPages() {
  FillFieldsWhere([](const SettingsField& field) {
    return field.section == "H" || field.section == "E" || (field.section == "Z" && ModelCode == "KOV");
  });
}

void FillDigitalInputs() {
  FillFieldsWhere([](const SettingsField& field) {
    return field.section == "D" && field.item < Profile.DigitalInputCount;
  });
}

void FillEthernetPage() {
  FillFieldsWhere([](const SettingsField& field) { return field.section == "J" && !IsMailField(field); });
}

void FillUserAccounts() {
  FillFieldsWhere([](const SettingsField& field) { return field.section == "K"; });
}

void FillMailPage() {
  FillFieldsWhere([](const SettingsField& field) { return field.section == "J" && IsMailField(field); });
}

} // namespace loader
