#include "channel/Adjustable.h"

#include <algorithm>
#include <array>

namespace loader {

namespace {

// What of a kind decides it, with scaling where that does.
enum class Class { Skip, Temperature, Unscaled, Scaled, OtherChannel };

struct AdjustRow {
  std::string_view tag;
  std::array<bool, 5> byClass; // Skip, Temperature, Unscaled, Scaled, OtherChannel
  bool offUnderLog = false;
  bool otherWithLogarithmAlone = false; // under OtherChannel
};

constexpr std::array<bool, 5> Always{true, true, true, true, true};
constexpr std::array<bool, 5> OnOwnScale{false, false, false, true, true};

constexpr AdjustRow AdjustRows[] = {
    {"SCAL", {false, false, true, true, false}},
    {"MMIN", OnOwnScale},
    {"MMAX", OnOwnScale},
    {"SMIN", OnOwnScale},
    {"SMAX", OnOwnScale},
    {.tag = "POIN", .byClass = OnOwnScale, .offUnderLog = true},
    {"ROOT", OnOwnScale},
    {"OTCH", {false, false, false, false, true}},
    {.tag = "TAIS", .byClass = OnOwnScale, .otherWithLogarithmAlone = true},
    {"UNIT", {false, true, false, true, true}},
    {.tag = "SUBC", .byClass = Always, .offUnderLog = true},
    {.tag = "FTIO", .byClass = Always, .offUnderLog = true},
};

Class ClassOf(const ChannelState& state) {
  if (state.kind == KindOtherChannel) {
    return Class::OtherChannel;
  }
  if (state.kind >= FirstOtherKind) {
    return state.scalingOn ? Class::Scaled : Class::Unscaled;
  }
  return state.kind > KindSkip ? Class::Temperature : Class::Skip;
}

} // namespace

bool IsAdjustable(std::string_view tag, const ChannelState& state) {
  const auto* row = std::ranges::find(AdjustRows, tag, &AdjustRow::tag);
  if (row == std::ranges::end(AdjustRows)) {
    return true;
  }
  const Class kind = ClassOf(state);
  if (row->offUnderLog && state.logOn) {
    return false;
  }
  if (row->otherWithLogarithmAlone && kind == Class::OtherChannel && !HasLogarithm()) {
    return false;
  }
  return row->byClass.at(static_cast<std::size_t>(kind));
}

bool OffersUnit(int kind, int unit) {
  return kind >= FirstOtherKind || (unit >= 0 && unit < TemperatureUnits);
}

} // namespace loader
