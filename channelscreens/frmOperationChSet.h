// The screen of one operation channel: what it shares with a measuring channel, and four formulas in place of
// the input kind.
#pragma once

#include <deque>
#include <functional>

#include "channelscreens/ChannelScreen.h"
#include "operation/Formula.h"

namespace loader {

struct OperationChSetScreen : ChannelScreen {
  explicit OperationChSetScreen(std::function<void()> applied = {});

  // The formulas of the channel as they are being edited: loaded with the channel, stored by "適用".
  FormulaTable FormulaWork{};
  // By formula, from 0: "lblFormula1" up.
  std::deque<Label> lblFormula;
  std::deque<Button> cmdFormulaSet;
  std::deque<Button> cmdFormulaDel;
};

// Modal; `channel` is the item of section C, from 0. `applied` runs after each "適用" that may have written
// to the store, while the screen is open.
void ShowOperationChSet(int channel, std::function<void()> applied = {});

// The fields and their parameters; the two units (UNIT, SEUN) and the formulas are none.
[[nodiscard]] std::span<const FieldRow> OperationChannelFields();

} // namespace loader
