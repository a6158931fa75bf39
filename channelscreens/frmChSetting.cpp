#include "channelscreens/frmChSetting.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

#include "channel/InputTypeRules.h"
#include "channelscreens/ChannelCascades.h"
#include "channelscreens/SharedFields.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"

namespace loader {

namespace {

constexpr auto Fields = WithSharedFields(std::to_array<FieldRow>({
    {.control = "txtChannelTag", .section = "C", .tag = "TAG", .tooLong = 62100, .forbidden = 62101},
    {.control = "txtChannelTag2", .section = "C", .tag = "TAG2", .tooLong = 62100, .forbidden = 62101},
    {"cmbInputType", "C", "TYPE"},
    {"cmbInputOtch", "C", "OTCH"},
    {"cmbScale", "C", "SCAL"},
    {.control = "txtSekiTag", .section = "C", .tag = "STAG", .tooLong = 62107, .forbidden = 62108},
}));

constexpr auto Applied = std::to_array<std::string_view>({
    "TAG",  "TAG2", "TYPE", "OTCH", "UNIT", "POIN", "FTIO", "TAIS", "ROOT", "COLR", "FILT", "SCAL",
    "MMIN", "MMAX", "SMIN", "SMAX", "PVSI", "PVKA", "RMIN", "RMAX", "RECO", "RECM", "SUBC", "STAG",
    "SEKI", "STYP", "SDIG", "SBAS", "SRES", "SEUN", "SRIN", "SSCL", "SECU", "A1TY", "A2TY", "A3TY",
    "A4TY", "A1VL", "A2VL", "A3VL", "A4VL", "A1RL", "A2RL", "A3RL", "A4RL",
});

constexpr auto Labels = std::to_array<CaptionOf>({
    {"lblInputType", 18040},
    {"lblInputOtch", 18036},
    {"lblScale", 18026},
});

constexpr auto Frames = std::to_array<CaptionOf>({
    {"fraCh", 18007},
});

// --- cmbScale

// The position that a kind brings along: for kind 40 that of the reference.
int PointOfKind(const ChannelScreen& screen, const InputRange& range) {
  return screen.InputType == KindOtherChannel ? ReferencePoint(screen.browsing.entry, screen.OtherChannel)
                                              : range.Point;
}

std::int16_t DefaultOf(const ChannelScreen& screen, std::string_view tag) {
  const ParamNumRecord* record = FindNumRecord("C", screen.browsing.entry, tag);
  return record == nullptr ? std::int16_t{0} : record->DefaultValue;
}

// Row 0, the kind's own scale. Cascades meet here, those of cmbFtio, cmbDecimal and cmbTaisu; in sequence:
//   1. the unit of the kind
//   2. cmbFtio goes to its default row, cmbDecimal to the kind's position, cmbROOT and cmbTaisu to row 0,
//      each under LoadingFlag: their own cascades do not run. What these would move is rewritten in 4, and
//      OFF of cmbTaisu, which alone would enable cmbDecimal, leaves it disabled (SetEnabled goes by the kind)
//   3. the positions of these rows are in force (TakeShown): FtioOn, CurrentPoint, LogOn
//   4. measuring range, engineering value, PV shift, record range, alarms
// The low cut is none of them: its text stays as it is, deliberately; "適用" asks for one that the kind
// refuses.
void ShowOwnScale(ChannelScreen& screen) {
  if (screen.InputType >= FirstOtherKind && screen.InputType != KindOtherChannel) {
    screen.CurrentUnit = InputRangeRowOf(screen.InputType)[0].UnitNo;
  }
  InputRange range;
  InputRangeLookup(screen.InputType, screen.CurrentUnit, range);
  ShowDefaultRow(screen, "FTIO");
  ShowValueRow(screen, "POIN", PointOfKind(screen, range));
  ShowValueRow(screen, "ROOT", 0);
  ShowValueRow(screen, "TAIS", 0);
  TakeShown(screen);

  ShowValue(screen, "MMIN", range.DefMin);
  ShowValue(screen, "MMAX", range.DefMax);
  // Deliberate: the engineering value takes the defaults of the measuring range.
  ShowEngineering(screen, "SMIN", DefaultOf(screen, "MMIN"), range.DefMin);
  ShowEngineering(screen, "SMAX", DefaultOf(screen, "MMAX"), range.DefMax);
  ShowValue(screen, "PVSI", range.DefMin);
  ShowValue(screen, "RMIN", range.DefMin);
  ShowValue(screen, "RMAX", range.DefMax);
  for (const std::string_view alarm : {"A1VL", "A2VL", "A3VL", "A4VL"}) {
    ShowValue(screen, alarm, range.DefMin);
  }
}

// Row 1 only enables and rewrites nothing, deliberately.
void ScaleCascade(ChannelScreen& screen) {
  TakeShown(screen);
  if (!screen.ScalingOn) {
    ShowOwnScale(screen);
  }
}

// --- cmbInputType

int UnitOfKind(const ChannelScreen& screen) {
  constexpr int SkippedUnit = 5;
  if (screen.InputType == KindSkip) {
    return SkippedUnit;
  }
  return screen.InputType < FirstOtherKind ? DefaultOf(screen, "UNIT")
                                           : InputRangeRowOf(screen.InputType)[0].UnitNo;
}

// A new kind: its unit; cmbFtio, cmbDispColor and cmbScale to their defaults, which runs row 0 of cmbScale
// also where that stands already; then what has a default of its own. The measuring range takes that of its
// record and not the kind's, which no thermocouple could be applied with. What row 0 has written of record
// range and alarms stands.
void ApplyInputType(ChannelScreen& screen) {
  TakeShown(screen);
  screen.CurrentUnit = UnitOfKind(screen);
  for (const std::string_view tag : {"FTIO", "COLR", "SCAL"}) {
    ShowDefaultRow(screen, tag);
  }
  TakeShown(screen);
  if (!screen.ScalingOn) {
    ShowOwnScale(screen);
  }
  for (const std::string_view tag : {"MMIN", "MMAX", "PVKA"}) {
    ShowDefault(screen, tag);
  }
  for (const std::string_view tag :
       {"RECO", "RECM", "SUBC", "A1TY", "A2TY", "A3TY", "A4TY", "A1RL", "A2RL", "A3RL", "A4RL"}) {
    ShowDefaultRow(screen, tag);
  }
}

// --- cmbInputOtch

// The integer that the digits of a text show; nothing for one with more than four behind the point.
std::optional<std::int16_t> IntegerOfDigits(std::u16string_view typed) {
  constexpr std::size_t MostDigits = 4;
  const std::u16string half = HalfWidthNumber(typed);
  const std::u16string_view text = half;
  const std::size_t point = text.find(u'.');
  const std::u16string_view behind = point == std::u16string_view::npos ? u"" : text.substr(point + 1);
  if (behind.size() > MostDigits || !std::ranges::all_of(behind, IsDigit)) {
    return std::nullopt;
  }
  return ReadNumber(text, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max(),
                    static_cast<int>(behind.size()))
      .stored;
}

// Another reference: the measuring range keeps its integers and stands where the reference's point stands;
// under the logarithm the alarms go with it, which are numbers on its scale.
void ReferenceCascade(ChannelScreen& screen) {
  const ChannelRow before = RowOf(screen);
  TakeShown(screen);
  if (screen.InputType != KindOtherChannel) {
    return;
  }
  for (const std::string_view tag : {"MMIN", "MMAX"}) {
    const Field* field = FindField(screen, tag);
    if (const std::optional<std::int16_t> value = IntegerOfDigits(field->text->text)) {
      ShowValue(screen, tag, *value);
    }
  }
  if (screen.LogOn) {
    static_cast<void>(MoveFields(screen, before, {"A1VL", "A2VL", "A3VL", "A4VL"}));
  }
}

constexpr Cascade Cascades[] = {
    {"cmbInputType", ApplyInputType},
    {"cmbScale", ScaleCascade},
    {"cmbInputOtch", ReferenceCascade},
};

ChannelScreenDesign Design() {
  return {.name = "frmChSetting",
          .caption = 10001,
          .operation = false,
          .channels = {.last = Profile.ChannelCount - 1},
          .entryTexts = {62102, 62103, u"@CHASU@"},
          .subtraction = 62104,
          .fields = Fields,
          .applied = Applied,
          .labels = Labels,
          .frames = Frames,
          .cascades = Cascades};
}

} // namespace

ChSettingScreen::ChSettingScreen(std::function<void()> applied)
    : ChannelScreen(Design(), std::move(applied)) {
  const bool rug = ModelCode == "RUG";
  lblNote1.caption = LoadText(rug ? TextId(18208) : TextId(18051));
  lblNote2.caption = LoadText(rug ? TextId(18209) : TextId(18052));
  mayApply = [this] { return CheckPairLeader(browsing.entry, InputType, tableChanged); };
}

void ShowChSetting(int channel, std::function<void()> applied) {
  ChSettingScreen screen(std::move(applied));
  ShowChannelScreen(screen, channel);
}

std::span<const FieldRow> ChannelFields() {
  return Fields;
}

} // namespace loader
