// The set-up that a simulated recorder starts with: a plant in operation, one for each model.
//
// KOV stands in a heat treatment shop, RUG in a waterworks. Every value lies within the limits of the initial
// settings file and every text fits its field.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "core/modMain.h"
#include "simulator/Firmware.h"

namespace loader::simulator {

enum AlarmType { AlarmOff = 0, AlarmHigh = 1, AlarmLow = 2 };

struct AlarmRow {
  AlarmType type = AlarmOff;
  int value = 0; // in the channel's decimal point position
  int relay = 0; // 0: none
};

// Ranges are whole numbers in the decimal point position of the input kind (measure) or of the channel (the
// others).
struct RangeRow {
  int low = 0, high = 0;
};

struct ChannelRow {
  std::u16string_view tag, tag2, totalTag;
  int kind; // TYPE
  int unit;
  bool scaled; // SCAL
  int point;   // POIN
  RangeRow measure, scale, record;
  std::array<AlarmRow, 4> alarms{};
};

struct NumberRow {
  std::string_view section;
  int item; // from 0
  std::string_view tag;
  int value;
};

struct TextRow {
  std::string_view section;
  int item;
  std::string_view tag;
  std::u16string_view text;
};

enum FormulaInput { Channel = 0, Total = 1, Digital = 2, Received = 3, Constant = 4, Result = 5 };
enum FormulaRule { NoRule = 0, Plus = 1, Minus = 2, Times = 3, Over = 4 };
enum FormulaFunction {
  Plain = 0,
  Abs = 1,
  Power = 2,
  Root = 3,
  RelativeHumidity = 7,
  Highest = 8,
  Lowest = 9,
  Average = 12
};

// One term of a formula; an input is its kind and its number from 1.
struct TermRow {
  int channel;      // operation channel from 0: the item of section O
  int formula;      // 1 to 3 the intermediate results B01 to B03, 4 the result
  int term;         // 1 to 3
  FormulaRule rule; // of a first term: Plus, which marks the term as used
  FormulaFunction function;
  FormulaInput kind1;
  int number1;
  FormulaInput kind2 = Channel;
  int number2 = 1;
};

struct Plant {
  std::span<const ChannelRow> measuring;
  std::span<const ChannelRow> operation;
  std::span<const TermRow> terms;
  std::span<const NumberRow> numbers;
  std::span<const TextRow> texts;
  int measuringChannels; // of the model: operation channels follow in section C
  int operationChannels;
};

extern const Plant KovPlant;
extern const Plant RugPlant;
[[nodiscard]] const Plant& PlantOf(Model model);

// The shape with the plant's values in `Value`. A tag that the shape lacks is passed over.
[[nodiscard]] ParamStoreTable PlantSetup(const ParamStoreTable& shape, Model model);

} // namespace loader::simulator
