#include "channelscreens/ChannelScreen.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "channel/InputTypeRules.h"
#include "channelscreens/ChannelCascades.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "dialogs/frmAlarmSetting.h"
#include "dialogs/frmSelectUnit.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblChannel", 18053},
    {"lblChannelTag", 18038},
    {"lblChannelTag2", 18037},
    {"lblDispColor", 18039},
    {"lblInputFilter", 18041},
    {"lblDecimal", 18027},
    {.control = "lblTaisu", .text = 18172, .field = "cmbTaisu"},
    {"lblROOT", 18025},
    {"lblStMin", 18022},
    {"lblStMax", 18023},
    {"lblIndMin", 18022},
    {"lblIndMax", 18023},
    {"lblPVShift", 18034},
    {"lblPVSlope", 18033},
    {"lblRecRangeMin", 18022},
    {"lblRecRangeMax", 18023},
    {"lblRecMode", 18029},
    {"lblRecM", 18030},
    {"lblSUBCh", 18020},
    {"lblFtio", 18006},
    {"lblSekiTag", 18014},
    {"lblSeki", 18018},
    {"lblStyp", 18012},
    {"lblSdig", 18011},
    {"lblSbas", 18010},
    {"lblSres", 18009},
    {"lblSekiUnit", 18017},
    {.control = "lblSrin", .text = 18173, .field = "cmbSri"},
    {"lblSekiScale", 18013},
    {"lblSecu", 18016},
    {"lblAlarm1", 18044},
    {"lblAlarm2", 18048},
    {"lblAlarm3", 18049},
    {"lblAlarm4", 18050},
    {"lblAlarmType", 18045},
    {"lblAlarmSet", 18046},
    {"lblAlarmOut", 18047},
});

constexpr auto Frames = std::to_array<CaptionOf>({
    {"fraUnit", 18042},
    {"fraSt", 18024},
    {"fraInd", 18021},
    {"fraPVShift", 18032},
    {"fraRecRange", 18028},
    {"fraRecMode", 18031},
    {"fraSUBCh", 18019},
    {"fraFTI", 18005},
    {"fraSEKI", 18008},
    {"fraAlarm", 18043},
});

constexpr Cascade SharedCascades[] = {
    {"cmbDecimal", DecimalCascade},
    {"cmbTaisu", LogarithmCascade},
    {"cmbFtio", FValueCascade},
};

// The rows of a measuring or engineering field; under the logarithm they move the alarms as they are typed.
constexpr std::string_view ScaleFields[] = {"txtStMin", "txtStMax", "txtIndMin", "txtIndMax"};

// --- What is shown

std::u16string UnitText(int unit) {
  const std::u16string* text = CatalogueEntry(UnitNames, unit);
  return text == nullptr ? std::u16string() : *text;
}

// What the terminals measure: a temperature in the channel's own unit, a voltage in that of the kind, another
// channel in the unit that this one has in the store. Nothing of a kind that measures nothing or has no name,
// nor of an operation channel, whose formula tells no unit.
std::u16string MeasuringUnit(const ChannelScreen& screen) {
  if (screen.design.operation || screen.InputType == KindSkip) {
    return {};
  }
  if (screen.InputType == KindOtherChannel) {
    return screen.OtherChannel < 0 ? std::u16string()
                                   : UnitText(NumValue("C", screen.OtherChannel, "UNIT", NoUnitChosen));
  }
  const std::u16string* name = CatalogueEntry(InputTypeNames, screen.InputType);
  if (name == nullptr || name->empty()) {
    return {};
  }
  constexpr int Celsius = 0;
  constexpr int Fahrenheit = 1; // in force for any other unit of a temperature
  if (screen.InputType < FirstOtherKind) {
    return UnitText(screen.CurrentUnit == Celsius ? Celsius : Fahrenheit);
  }
  return UnitText(InputRangeRowOf(screen.InputType)[0].UnitNo);
}

// Under the logarithm engineering value and record range are exponents, under the F value record range and
// alarms are F values: neither is a number in the channel's unit.
void ShowUnitsBeside(ChannelScreen& screen) {
  const std::u16string unit = UnitText(screen.CurrentUnit);
  const bool fValue = screen.FtioOn && !screen.LogOn;
  screen.lblStUnit.caption = MeasuringUnit(screen);
  screen.lblIndUnit.caption = screen.LogOn ? u"" : unit;
  screen.lblRecUnit.caption = screen.LogOn || fValue ? u"" : unit;
  screen.lblAlarmUnit.caption = fValue ? u"" : unit;
}

void ShowSwatch(ChannelScreen& screen) {
  const ListBox& colours = ListNamed(screen, "cmbDispColor");
  const int colour =
      colours.index < 0 ? 0 : static_cast<int>(colours.itemData[static_cast<std::size_t>(colours.index)]);
  screen.lblColor.hasBackColour = colour >= 1 && colour < static_cast<int>(ColourTable.size());
  screen.lblColor.backColour =
      screen.lblColor.hasBackColour ? ColourTable[static_cast<std::size_t>(colour)] : White;
}

void ShowAlarmPowers(ChannelScreen& screen) {
  for (int alarm = 0; alarm < ChannelScreen::Alarms; ++alarm) {
    screen.lblAlarmSetInput[static_cast<std::size_t>(alarm)].caption = AlarmPower(screen, alarm);
  }
}

// The value of the row that a list of the screen shows; the stored one where it shows none.
int ShownNumber(const ChannelScreen& screen, std::string_view control, std::string_view tag,
                std::int16_t absent = 0) {
  if (const Control* found = screen.Find(control); found != nullptr && found->kind == ControlKind::ListBox) {
    const auto& list = static_cast<const ListBox&>(*found);
    if (list.index >= 0) {
      return static_cast<int>(list.itemData[static_cast<std::size_t>(list.index)]);
    }
  }
  return NumValue("C", screen.browsing.entry, tag, absent);
}

bool IsNumber(const Field& field) {
  return field.shape == FieldShape::Number;
}

// The kind first, lists and units before the numbers: they decide how those are shown. Nothing that is shown
// here has been picked, so no cascade runs, and every field equals the store.
void Load(ChannelScreen& screen) {
  for (Control* control : screen.controls) {
    control->marked = false;
  }
  const int channel = screen.browsing.entry;
  screen.fields.entry = channel;
  screen.LoadingFlag = true;
  if (screen.onLoad) {
    screen.onLoad();
  }
  screen.FPoint = PositionOf(NumValue("H", 0, "FPOI"));
  screen.CurrentUnit = NumValue("C", channel, "UNIT");
  screen.CurrentSekiUnit = NumValue("C", channel, "SEUN");
  FillFieldsWhere(screen.fields, [](const Field& field) { return !IsNumber(field); });
  TakeShown(screen);
  FillFieldsWhere(screen.fields, IsNumber);
  screen.lblSUB.caption = Replace(LoadText(screen.design.subtraction), u"@CHNO@", DecimalText(channel + 1));
  ShowDerived(screen);
  SetEnabled(screen);
  screen.LoadingFlag = false;
}

// --- "適用"

bool IsUnit(std::string_view tag) {
  return tag == "UNIT" || tag == "SEUN";
}
int ShownUnit(const ChannelScreen& screen, std::string_view tag) {
  return tag == "UNIT" ? screen.CurrentUnit : screen.CurrentSekiUnit;
}

// What a model does not show it does not store either: a file of hand may hold it.
bool IsStored(const Field& field) {
  return !field.meaning->meaning.kovOnly || ModelCode == "KOV";
}

bool IsChanged(ChannelScreen& screen, std::string_view tag) {
  if (IsUnit(tag)) {
    return ShownUnit(screen, tag) != NumValue("C", screen.browsing.entry, tag);
  }
  const Field* field = FindField(screen, tag);
  return field != nullptr && IsStored(*field) && IsChanged(screen.fields, *field);
}

// A range that the user cannot reach and that shows nothing: a neighbour that was brought in line with its
// pair may hold values outside its limits, and cannot be asked for them.
bool IsPassedOver(const Field& field) {
  const bool range = field.tag == "MMIN" || field.tag == "MMAX" || field.tag == "SMIN" || field.tag == "SMAX";
  return range && !field.text->enabled && Trim(field.text->text).empty();
}

// False when the value is refused.
bool ApplyTag(ChannelScreen& screen, std::string_view tag, bool changed) {
  if (IsUnit(tag)) {
    SetNumValue("C", screen.browsing.entry, tag, static_cast<std::int16_t>(ShownUnit(screen, tag)));
    return true;
  }
  Field* field = FindField(screen, tag);
  if (field == nullptr || !IsStored(*field) || (IsNumber(*field) && IsPassedOver(*field))) {
    return true;
  }
  if (tag == "OTCH" && changed && screen.InputType != KindOtherChannel) {
    ShowRow(*field->list, 0); // only kind 40 refers to another channel
  }
  if (!CheckField(screen.fields, *field) || !StoreField(screen.fields, *field)) {
    return false;
  }
  if (field->shape == FieldShape::Text && IsChanged(screen.fields, *field)) {
    field->shownText =
        field->text->text; // a later field may be refused: the old text is a change from now on
  }
  return true;
}

// Field by field into the store, up to the first that is refused: what stands before it stays stored,
// deliberately.
bool ApplyTags(ChannelScreen& screen, bool changed) {
  return std::ranges::all_of(screen.design.applied,
                             [&](std::string_view tag) { return ApplyTag(screen, tag, changed); });
}

void Apply(ChannelScreen& screen) {
  StopTimer(WaitTimer2); // the guard is for fields that are left in turn, not for a step that was asked for
  if (screen.mayApply && !screen.mayApply()) {
    return;
  }
  const bool others = screen.othersChanged && screen.othersChanged();
  const bool changed = others || std::ranges::any_of(screen.design.applied, [&](std::string_view tag) {
                         return IsChanged(screen, tag);
                       });
  if (others && screen.storeOthers) {
    screen.storeOthers();
  }
  const bool applied = ApplyTags(screen, changed);
  if (applied) {
    LoadEntry(screen.browsing, screen.browsing.entry); // the fields show what is stored now
  }
  if (screen.onApplied) {
    screen.onApplied();
  }
}

// --- What is clicked

void ChooseUnit(ChannelScreen& screen) {
  const int chosen = SelectUnit(screen.CurrentUnit, screen.InputType, false);
  if (chosen == NoUnitChosen) {
    return;
  }
  // Another temperature has other limits, and an engineering field of a temperature cannot be typed into.
  RunCascade(screen, screen.lblSelUnit, [&] {
    screen.CurrentUnit = chosen;
    KeepEngineeringInside(screen);
  });
}

// The whole list, whatever is measured: a sum is no temperature.
void ChooseSekiUnit(ChannelScreen& screen) {
  const int chosen = SelectUnit(screen.CurrentSekiUnit, KindOtherChannel, false);
  if (chosen != NoUnitChosen) {
    screen.CurrentSekiUnit = chosen;
    ShowDerived(screen);
  }
}

std::u16string& AlarmText(ChannelScreen& screen, int alarm) {
  return FieldNamed(screen, "txtAlarmSet" + std::to_string(alarm + 1)).text;
}

// As the labels read it: the exponents of a temperature stand at the position of its kind.
std::u16string ExponentText(ChannelScreen& screen, std::string_view tag) {
  const std::optional<std::int16_t> exponent = ShownInteger(screen, tag);
  return exponent ? DecimalText(*exponent) : std::u16string();
}

void SetAlarmPower(ChannelScreen& screen, int alarm) {
  AlarmContract contract;
  contract.measuringChannel = !screen.design.operation;
  contract.alarmNumber = alarm + 1;
  contract.txtStMin = FieldNamed(screen, "txtStMin").text;
  contract.txtStMax = FieldNamed(screen, "txtStMax").text;
  contract.txtIndMin = ExponentText(screen, "SMIN");
  contract.txtIndMax = ExponentText(screen, "SMAX");
  contract.cmbDecimal = screen.CurrentPoint;
  contract.cmbInputType = screen.InputType;
  contract.cmbInputOtch = screen.OtherChannel;
  contract.gnChNo = screen.browsing.entry;
  for (int n = 0; n < ChannelScreen::Alarms; ++n) {
    const auto at = static_cast<std::size_t>(n);
    contract.lblAlarmSetInput.at(at) = screen.lblAlarmSetInput[at].caption;
    contract.txtAlarmSet.at(at) = AlarmText(screen, n);
  }
  if (ShowAlarmSetting(contract)) {
    AlarmText(screen, alarm) = contract.txtAlarmSet.at(static_cast<std::size_t>(alarm));
    ShowDerived(screen);
  }
}

// --- Handlers

void Picked(ChannelScreen& screen, const Control& list) {
  if (screen.LoadingFlag) {
    return;
  }
  for (const std::span<const Cascade> cascades :
       {std::span<const Cascade>(SharedCascades), screen.design.cascades}) {
    for (const Cascade& cascade : cascades) {
      if (list.name == cascade.control) {
        RunCascade(screen, list, [&] { cascade.run(screen); });
        return;
      }
    }
  }
  ShowSwatch(screen);
}

void TieHandlers(ChannelScreen& screen) {
  screen.browsing.onLoad = [&screen] { Load(screen); };
  screen.browsing.onApply = [&screen] { Apply(screen); };
  screen.fields.onPicked = [&screen](const Field& field) { Picked(screen, *field.list); };
  screen.fields.channel = [&screen] {
    screen.row = RowOf(screen);
    return &screen.row;
  };
  screen.cmdUnitSelect.onClick = [&screen] { ChooseUnit(screen); };
  screen.cmdSekiUnitSelect.onClick = [&screen] { ChooseSekiUnit(screen); };
  for (int alarm = 0; alarm < ChannelScreen::Alarms; ++alarm) {
    screen.lblAlarmSetInput[static_cast<std::size_t>(alarm)].onClick = [&screen, alarm] {
      SetAlarmPower(screen, alarm);
    };
  }
  for (const std::string_view name : ScaleFields) {
    FieldNamed(screen, name).onChange = [&screen] { ShowAlarmPowers(screen); };
  }
}

void HideWhatTheModelHasNot(ChannelScreen& screen) {
  for (const Field& field : screen.fields.fields) {
    if (field.list != nullptr && !IsStored(field)) {
      field.list->visible = false;
    }
  }
  for (Label& power : screen.lblAlarmSetInput) {
    power.visible = HasLogarithm();
  }
  ShowLabelsWithFields(screen, Labels);
  ShowLabelsWithFields(screen, screen.design.labels);
}

} // namespace

ChannelScreen::ChannelScreen(const ChannelScreenDesign& screenDesign, std::function<void()> applied)
    : Screen(std::string(screenDesign.name)), design(screenDesign),
      browsing(*this, design.channels, design.entryTexts,
               {.number = "txtChannel", .apply = "OKButton", .close = "CancelButton"}),
      fields(*this, design.fields, StoreTime::OnApply), onApplied(std::move(applied)) {
  caption = LoadText(design.caption);
  MakeLabels(*this, labels, Labels);
  MakeLabels(*this, labels, design.labels);
  MakeFrames(*this, frames, Frames);
  MakeFrames(*this, frames, design.frames);
  cmdUnitSelect.caption = LoadText(18035);
  cmdSekiUnitSelect.caption = LoadText(18035);
  for (int alarm = 1; alarm <= Alarms; ++alarm) {
    lblAlarmSetInput.emplace_back(*this, "lblAlarmSetInput" + std::to_string(alarm));
  }
  FillLists(fields);
  HideWhatTheModelHasNot(*this);
  TieHandlers(*this);
}

ChannelRow RowOf(const ChannelScreen& screen) {
  ChannelRow row;
  row.item = screen.browsing.entry;
  row.operation = screen.design.operation;
  row.storedType = NumValue("C", row.item, "TYPE");
  row.state = {.kind = screen.InputType,
               .unit = screen.CurrentUnit,
               .scalingOn = screen.ScalingOn,
               .logOn = screen.LogOn};
  row.fValue = screen.FtioOn;
  row.point = screen.CurrentPoint;
  row.rowPoint = screen.FtioOn ? screen.FPoint : screen.CurrentPoint;
  row.measuring.Point = row.point;
  InputRangeLookup(screen.InputType, screen.CurrentUnit, row.measuring);
  if (row.operation) {
    row.terminalsPoint = row.point;
  } else if (screen.InputType == KindOtherChannel) {
    row.terminalsPoint = ReferencePoint(row.item, screen.OtherChannel);
  } else {
    row.terminalsPoint = MeasuringPoint(screen.InputType, 0);
  }
  return row;
}

void TakeShown(ChannelScreen& screen) {
  const bool operation = screen.design.operation;
  screen.InputType = operation ? KindOtherChannel : ShownNumber(screen, "cmbInputType", "TYPE");
  screen.ScalingOn = !operation && ShownNumber(screen, "cmbScale", "SCAL") != 0;
  screen.LogOn = HasLogarithm() && ShownNumber(screen, "cmbTaisu", "TAIS") == 1;
  screen.FtioOn = ShownNumber(screen, "cmbFtio", "FTIO") == 1;
  screen.CurrentPoint = PositionOf(ShownNumber(screen, "cmbDecimal", "POIN"));
  screen.OtherChannel = ShownNumber(screen, "cmbInputOtch", "OTCH", -1);
}

void ShowDerived(ChannelScreen& screen) {
  screen.lblSelUnit.caption = UnitText(screen.CurrentUnit);
  screen.lblSelSekiUnit.caption = UnitText(screen.CurrentSekiUnit);
  ShowUnitsBeside(screen);
  ShowSwatch(screen);
  ShowAlarmPowers(screen);
}

Field* FindField(ChannelScreen& screen, std::string_view tag) {
  const auto found =
      std::ranges::find_if(screen.fields.fields, [&](const Field& field) { return field.tag == tag; });
  return found == screen.fields.fields.end() ? nullptr : &*found;
}

void ShowChannelScreen(ChannelScreen& screen, int channel) {
  LoadEntry(screen.browsing, channel);
  ThePlatform().screens.ShowModal(screen);
}

} // namespace loader
