#include "channelscreens/ChannelCascades.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "channel/Adjustable.h"
#include "channel/InputTypeRules.h"
#include "channel/modUtil.h"
#include "core/Text.h"

namespace loader {

namespace {

constexpr Limits AnyStored{std::numeric_limits<std::int16_t>::min(),
                           std::numeric_limits<std::int16_t>::max()};

// --- What can be used

enum class UnderLog { AsEver, Off, Only };

// A control follows the rule of its parameter (IsAdjustable); an alarm is a number, or a power under the
// logarithm.
struct EnableRow {
  std::string_view control;
  std::string_view tag;
  UnderLog underLog = UnderLog::AsEver;
};

// A control that a screen does not have, or that is not listed, is left alone.
constexpr EnableRow EnableRows[] = {
    {"cmbScale", "SCAL"},
    {"txtStMin", "MMIN"},
    {"txtStMax", "MMAX"},
    {"txtIndMin", "SMIN"},
    {"txtIndMax", "SMAX"},
    {"cmbDecimal", "POIN"},
    {"cmbROOT", "ROOT"},
    {"cmbInputOtch", "OTCH"},
    {"cmbTaisu", "TAIS"},
    {"lblSelUnit", "UNIT"},
    {"cmdUnitSelect", "UNIT"},
    {"cmbSUBCh", "SUBC"},
    {"cmbFtio", "FTIO"},
    {"txtAlarmSet1", "A1VL", UnderLog::Off},
    {"txtAlarmSet2", "A2VL", UnderLog::Off},
    {"txtAlarmSet3", "A3VL", UnderLog::Off},
    {"txtAlarmSet4", "A4VL", UnderLog::Off},
    {"lblAlarmSetInput1", "A1VL", UnderLog::Only},
    {"lblAlarmSetInput2", "A2VL", UnderLog::Only},
    {"lblAlarmSetInput3", "A3VL", UnderLog::Only},
    {"lblAlarmSetInput4", "A4VL", UnderLog::Only},
};

bool IsEnabled(const EnableRow& row, const ChannelState& state) {
  if (row.underLog != UnderLog::AsEver && (row.underLog == UnderLog::Only) != state.logOn) {
    return false;
  }
  return IsAdjustable(row.tag, state);
}

// --- Marks

// Text, row or caption of a control.
std::pair<std::u16string, int> ShownOn(const Control& control) {
  switch (control.kind) {
  case ControlKind::TextField:
    return {static_cast<const TextField&>(control).text, 0};
  case ControlKind::ListBox:
    return {{}, static_cast<const ListBox&>(control).index};
  case ControlKind::Label:
    return {static_cast<const Label&>(control).caption, 0};
  default:
    return {};
  }
}

// --- Fields

NumberInForce ForceOf(const Field& field, const ParamNumRecord& record, const ChannelRow& row) {
  return InForce(FormIn(*field.meaning, View::Screen).number, record, row.item, &row);
}

const ParamNumRecord* RecordOf(const ChannelScreen& screen, const Field& field) {
  return FindNumRecord(field.row->section, screen.fields.entry + field.item, field.tag);
}

// A number field with its record; both null where either is missing.
struct NumberOnScreen {
  Field* field = nullptr;
  const ParamNumRecord* record = nullptr;
  explicit operator bool() const { return field != nullptr; }
};
NumberOnScreen NumberOf(ChannelScreen& screen, std::string_view tag) {
  Field* field = FindField(screen, tag);
  const ParamNumRecord* record = field == nullptr ? nullptr : RecordOf(screen, *field);
  return record == nullptr || field->shape != FieldShape::Number ? NumberOnScreen{}
                                                                 : NumberOnScreen{field, record};
}

bool SameForce(const NumberInForce& one, const NumberInForce& other) {
  return one.position == other.position && one.limits == other.limits;
}

bool MoveField(const NumberOnScreen& number, const ChannelRow& before, const ChannelRow& after) {
  std::u16string& text = number.field->text->text;
  const NumberInForce from = ForceOf(*number.field, *number.record, before);
  const NumberInForce to = ForceOf(*number.field, *number.record, after);
  if (Trim(text).empty() || SameForce(from, to)) {
    return true;
  }
  // A kind may leave the low cut outside its limits, where nobody typed it: that is for "適用" to say.
  const bool anyStored =
      number.field->tag == "SECU" &&
      ReadNumber(text, AnyStored.minimum, AnyStored.maximum, from.position).stored.has_value();
  const Limits limits = anyStored ? AnyStored : from.limits;
  std::u16string typed = text;
  std::int16_t stored = 0;
  if (!TextToStored(typed, stored, limits.minimum, limits.maximum, from.position)) {
    return false;
  }
  text = StoredToText(stored, to.position, to.limits.minimum, to.limits.maximum);
  return true;
}

constexpr std::array<std::string_view, ChannelScreen::Alarms> AlarmTags{"A1VL", "A2VL", "A3VL", "A4VL"};

} // namespace

void SetEnabled(ChannelScreen& screen) {
  const ChannelState state{.kind = screen.InputType,
                           .unit = screen.CurrentUnit,
                           .scalingOn = screen.ScalingOn,
                           .logOn = screen.LogOn};
  for (const EnableRow& row : EnableRows) {
    if (Control* control = screen.Find(row.control)) {
      control->enabled = IsEnabled(row, state);
    }
  }
}

void RunCascade(ChannelScreen& screen, const Control& picked, const std::function<void()>& cascade) {
  std::vector<std::pair<std::u16string, int>> before;
  before.reserve(screen.controls.size());
  for (Control* control : screen.controls) {
    control->marked = false;
    before.push_back(ShownOn(*control));
  }
  cascade();
  SetEnabled(screen);
  ShowDerived(screen);
  const std::array<const Control*, 4> units{&screen.lblStUnit, &screen.lblIndUnit, &screen.lblRecUnit,
                                            &screen.lblAlarmUnit}; // lblSelUnit tells the change
  for (std::size_t i = 0; i < before.size(); ++i) {
    Control& control = *screen.controls[i];
    if (std::ranges::find(units, &control) != units.end()) {
      continue;
    }
    control.marked = &control != &picked && ShownOn(control) != before[i];
  }
}

// Every value keeps its integer: one whose position the list decides is rewritten in the new position, one
// that stands elsewhere (in FPoint, in the position of the kind or of the reference) is left. So the
// measuring range moves on the operation screen alone.
void DecimalCascade(ChannelScreen& screen) {
  const ChannelRow before = RowOf(screen);
  TakeShown(screen);
  static_cast<void>(MoveFields(
      screen, before,
      {"MMIN", "MMAX", "SMIN", "SMAX", "PVSI", "RMIN", "RMAX", "SECU", "A1VL", "A2VL", "A3VL", "A4VL"}));
}

// ON: the integers of the engineering value and of the record range read as exponents, which blanks those
// outside -9 to 9; the alarms go to the scale of the measuring range. OFF: the way back.
void LogarithmCascade(ChannelScreen& screen) {
  const ChannelRow before = RowOf(screen);
  TakeShown(screen);
  static_cast<void>(
      MoveFields(screen, before, {"SMIN", "SMAX", "RMIN", "RMAX", "A1VL", "A2VL", "A3VL", "A4VL"}));
}

// ON: from the position and the limits of the channel to FPoint and the limits of the records. OFF: back.
void FValueCascade(ChannelScreen& screen) {
  const ChannelRow before = RowOf(screen);
  TakeShown(screen);
  static_cast<void>(MoveFields(screen, before, {"RMIN", "RMAX", "SECU", "A1VL", "A2VL", "A3VL", "A4VL"}));
}

void ShowValue(ChannelScreen& screen, std::string_view tag, int value) {
  if (const NumberOnScreen number = NumberOf(screen, tag)) {
    const NumberInForce force = ForceOf(*number.field, *number.record, RowOf(screen));
    number.field->text->text =
        StoredToText(value, force.position, force.limits.minimum, force.limits.maximum);
  }
}

void ShowValueRow(ChannelScreen& screen, std::string_view tag, int value) {
  const Field* field = FindField(screen, tag);
  if (field == nullptr || field->list == nullptr) {
    return;
  }
  const auto found = std::ranges::find(field->list->itemData, value);
  if (found != field->list->itemData.end()) {
    screen.LoadingFlag = true; // the handler of the list runs as for a pick; its cascade does not
    SelectRow(*field->list, static_cast<long>(found - field->list->itemData.begin()));
    screen.LoadingFlag = false;
  }
}

void ShowDefaultRow(ChannelScreen& screen, std::string_view tag) {
  const Field* field = FindField(screen, tag);
  const ParamNumRecord* record = field == nullptr ? nullptr : RecordOf(screen, *field);
  if (record != nullptr) {
    ShowValueRow(screen, tag, record->DefaultValue);
  }
}

void ShowDefault(ChannelScreen& screen, std::string_view tag) {
  if (const NumberOnScreen number = NumberOf(screen, tag)) {
    ShowValue(screen, tag, number.record->DefaultValue);
  }
}

bool MoveFields(ChannelScreen& screen, const ChannelRow& before,
                std::initializer_list<std::string_view> tags) {
  const ChannelRow after = RowOf(screen);
  return std::ranges::all_of(tags, [&](std::string_view tag) {
    const NumberOnScreen number = NumberOf(screen, tag);
    return !number || MoveField(number, before, after);
  });
}

void ShowEngineering(ChannelScreen& screen, std::string_view tag, int value, int kindDefault) {
  ShowValue(screen, tag, value);
  const NumberOnScreen number = NumberOf(screen, tag);
  if (number && number.field->text->text.empty()) {
    ShowValue(screen, tag, kindDefault);
  }
}

void KeepEngineeringInside(ChannelScreen& screen) {
  InputRange range;
  InputRangeLookup(screen.InputType, screen.CurrentUnit, range);
  for (const auto& [tag, kindDefault] :
       {std::pair{std::string_view("SMIN"), range.DefMin}, {std::string_view("SMAX"), range.DefMax}}) {
    const NumberOnScreen number = NumberOf(screen, tag);
    const std::optional<std::int16_t> shown = ShownInteger(screen, tag);
    if (number && !number.field->text->enabled && shown) {
      ShowEngineering(screen, tag, *shown, kindDefault);
    }
  }
}

std::optional<std::int16_t> ShownInteger(ChannelScreen& screen, std::string_view tag) {
  const NumberOnScreen number = NumberOf(screen, tag);
  if (!number) {
    return std::nullopt;
  }
  const int position = ForceOf(*number.field, *number.record, RowOf(screen)).position;
  return ReadNumber(number.field->text->text, AnyStored.minimum, AnyStored.maximum, position).stored;
}

std::u16string AlarmPower(ChannelScreen& screen, int alarm) {
  if (!screen.LogOn) {
    return {};
  }
  const auto value = ShownInteger(screen, AlarmTags.at(static_cast<std::size_t>(alarm)));
  const auto measuringMinimum = ShownInteger(screen, "MMIN");
  const auto measuringMaximum = ShownInteger(screen, "MMAX");
  const auto exponentMinimum = ShownInteger(screen, "SMIN");
  const auto exponentMaximum = ShownInteger(screen, "SMAX");
  if (!value || !measuringMinimum || !measuringMaximum || !exponentMinimum || !exponentMaximum) {
    return {};
  }
  return LogValueText(*value, *measuringMinimum, *measuringMaximum, *exponentMinimum, *exponentMaximum);
}

} // namespace loader
