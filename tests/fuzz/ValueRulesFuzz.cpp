// The value rules: any value, limits and position, any text in a field; then the rules of the input kinds on
// the channels of the shipped store.
#include <algorithm>
#include <string>

#include "channel/InputTypeRules.h"
#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

struct FieldScreen : Screen {
  FieldScreen() : Screen("screen") {}
  TextField field{*this, "txtValue"};
  TextField year{*this, "txtYear"};
};

// One stored number in its limits, as a record of the store and a dialog hand it on.
struct Value {
  std::int32_t value;
  int position;
  int minimum;
  int maximum;
};

Value TakeValue(FuzzInput& input) {
  const bool wide = input.Choice(4) == 3;
  const auto number = [&] { return wide ? input.Number32() : std::int32_t{input.Number16()}; };
  Value taken{};
  const std::uint8_t position = input.Byte();
  taken.position = position < 250 ? position % 6 : input.Number16();
  taken.minimum = number();
  taken.maximum = number();
  taken.value = number();
  return taken;
}

bool FitsStore(std::int32_t value) {
  return value >= -32768 && value <= 32767;
}

void CheckShownValue(const Value& it) {
  std::u16string text = StoredToText(it.value, it.position, it.minimum, it.maximum);
  const bool inside = it.value >= it.minimum && it.value <= it.maximum;
  Require(text.empty() == !inside, "a value outside of its limits is blank, and no other");
  if (!inside) {
    return;
  }
  Require(NumericText(text).has_value(), "a value is shown as a number");
  if (it.position > 0) {
    const std::size_t point = text.find(u'.');
    Require(point != std::u16string::npos && text.size() - point - 1 == static_cast<std::size_t>(it.position),
            "a value is shown with the digits of its position");
  }
  if (FitsStore(it.value)) {
    const std::u16string shown = text;
    std::int16_t stored = 0;
    Require(TextToStored(text, stored, it.minimum, it.maximum, it.position), "a shown value can be typed");
    Require(stored == it.value && text == shown, "a shown value is the stored one");
  }
}

void CheckTypedText(std::u16string text, const Value& it, FuzzPlatform& platform) {
  constexpr std::int16_t Before = 12345;
  const std::u16string typed = text;
  std::int16_t stored = Before;
  const int boxes = platform.boxes.Count();
  const bool taken = TextToStored(text, stored, it.minimum, it.maximum, it.position);
  Require(text == typed.substr(0, text.size()) || text == HalfWidthNumber(typed).substr(0, text.size()),
          "a typed text is cut and not changed, but for the width of a number");
  Require(platform.boxes.Count() - boxes <= (taken ? 0 : 1), "a typed text is judged once");
  Require(taken || stored == Before, "a refused text changes nothing");
  Require(!taken || (stored >= it.minimum && stored <= it.maximum), "a stored value is within its limits");
  Require(!taken || NumericText(typed).has_value(), "what is stored is a number");
}

void CheckLeftField(const std::u16string& text, const Value& it, FuzzPlatform& platform) {
  FieldScreen screen;
  for (TextField* field : {&screen.field, &screen.year}) {
    field->text = text;
    const int boxes = platform.boxes.Count();
    const bool passed = CheckValueField(it.position, it.minimum, it.maximum, *field);
    if (passed) {
      const bool year = field == &screen.year;
      Require(year ? field->text == HalfWidthNumber(text) : NumericText(field->text).has_value(),
              "a good field shows its value, the year what was typed");
      Require(screen.focusRequest == nullptr, "a good field lets the focus go");
    } else {
      Require(field->text == text, "a bad field keeps its text");
      Require(screen.focusRequest == field && field->selLength == static_cast<int>(text.size()),
              "a bad field takes the focus back");
      WaitChk();
      const int told = platform.boxes.Count();
      Require(told <= boxes + 1, "a bad field is told once");
      Require(!CheckValueField(it.position, it.minimum, it.maximum, screen.field) &&
                  platform.boxes.Count() == told,
              "while the guard is on nothing is checked");
      platform.time.Advance(100);
      Require(!WaitTimer2.Enabled && WaitTimer2Count == 2, "the guard ends by itself");
    }
    screen.focusRequest = nullptr;
  }
}

void CheckOtherFields(const std::u16string& text, int limit) {
  FieldScreen screen;
  screen.field.text = text;
  const bool tag = CheckTagField(screen.field, limit, 62200, 62201);
  const bool fits = static_cast<std::int64_t>(CodePageLength(text)) <= limit;
  Require(tag == (fits && text.find(u',') == std::u16string::npos), "a tag fits and has no comma");
  Require(screen.field.selStart + screen.field.selLength <= static_cast<int>(text.size()),
          "what is selected is there");
  const std::optional<int> channel = CheckChannelNumber(screen.field, limit);
  Require(!channel || (*channel >= 1 && *channel <= limit), "a channel number is one of the channels");
}

void CheckLogText(FuzzInput& input) {
  const bool wide = input.Flag();
  const auto number = [&] { return wide ? input.Number32() : std::int32_t{input.Number16()}; };
  const std::int32_t value = number();
  const std::int32_t minimum = number();
  const std::int32_t maximum = number();
  const std::int32_t low = number();
  const std::int32_t high = number();
  const std::u16string text = LogValueText(value, minimum, maximum, low, high);
  Require(text.size() >= 6 && text[0] >= u'1' && text[0] <= u'9' && text[1] == u'.' && text[4] == u'E',
          "a logarithmic value has three digits");
  const auto exponent = ParseInt16(text.substr(5));
  Require(exponent && *exponent >= -9 && *exponent <= 9, "an exponent is within its limits");
  Require(minimum != maximum || *exponent == std::clamp(low, -9, 9),
          "without a measuring range the lower exponent shows");
}

void CheckLimits(int channel, int kind) {
  const ChannelState state = StoredChannelState(channel);
  const ParamNumRecord record{"SMIN", 0, 0, 0, 0, -5, 5};
  const Limits engineering = EngineeringLimits(state, record);
  const Limits alarm = AlarmLimits(state, record);
  if (KindLimited(state.kind, state.scalingOn)) {
    Require(engineering == KindLimits(state.kind, state.unit) && alarm == engineering,
            "a kind limits its values");
  } else {
    Require(engineering == (state.logOn ? Limits{-9, 9} : RecordLimits(record)) && alarm == Limits{-5, 5},
            "the record limits its values");
  }
  Require(MeasuringLimits(kind).minimum < MeasuringLimits(kind).maximum, "a measuring range is a range");
  const int point = MeasuringPoint(kind, state.kind);
  Require(point >= 0 && point <= 4, "a kind has a position");
  Require(EngineeringPoint(kind, true, 3) == 3, "under scaling the chosen position counts");
}

void CheckChannels(FuzzInput& input, FuzzPlatform& platform) {
  const int model = input.Choice(4);
  StartWithShippedStore(model == 1 ? "RUG" : "KOV");
  if (model == 2) {
    ModelCode = "BIQ"; // some rules still know it
  }
  if (model == 3) {
    platform.boxes.answer = BoxAnswer::Cancel;
  }
  for (int steps = 0; !input.Empty() && steps < 16; ++steps) {
    const int channel = input.Choice(4) == 0 ? input.Number16() : input.Choice(36);
    const int kind = input.Choice(4) == 0 ? input.Number16() : input.Choice(InputKinds);
    if (ParamNumRecord* type = FindNumRecord("C", channel - 1, "TYPE")) {
      type->Value = input.Number16();
    }
    FieldScreen screen;
    ListBox list(screen, "cmbInputType");
    FillInputTypeList(list, channel);
    Require(list.items.size() == list.itemData.size() && list.items.size() >= 2 && list.index == -1,
            "a channel is offered kinds");
    bool changed = false;
    const int boxes = platform.boxes.Count();
    const bool kept = CheckPairLeader(channel, kind, changed);
    Require(kept || platform.boxes.answer == BoxAnswer::Cancel, "a user who says OK is followed");
    Require(platform.boxes.Count() - boxes == (changed || !kept ? 1 : 0), "a conflict is asked once");
    ChannelInit(channel, kind);
    CheckLimits(channel, kind);
    if (kind >= 0 && kind < InputKinds) {
      Require(NumValue("C", channel, "TYPE", static_cast<std::int16_t>(kind)) == kind, "a kind is taken");
    }
    RequireSoundStore(ParamStore);
  }
}

void RunOne(FuzzInput input) {
  FuzzPlatform platform;
  const Value it = TakeValue(input);
  const std::u16string text = FromCodePage(input.ShortText());
  CheckShownValue(it);
  CheckTypedText(text, it, platform);
  CheckLeftField(text, it, platform);
  CheckOtherFields(text, it.maximum);
  CheckLogText(input);
  if (!input.Empty()) {
    CheckChannels(input, platform);
  }
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
