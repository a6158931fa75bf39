#include "comm/RecorderCommands.h"

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "comm/ParameterTelegram.h"
#include "comm/RecorderCheck.h"
#include "comm/modComunication.h"
#include "core/TextTable.h"
#include "core/modMain.h"

namespace loader {

namespace {

constexpr std::int16_t GenerationWithoutClock = 0;

// Writes the values from the record's register on, one in each low byte. False when the store has no such
// record or no frame can hold its register, as after a request that failed.
bool WriteCommand(std::string_view sectionCode, std::string_view tag, std::span<const std::uint8_t> values) {
  const StoreIndex section = gFFindSection(sectionCode);
  const ParamNumRecord* record = FindNumRecord(sectionCode, 0, tag);
  if (record == nullptr) {
    return false;
  }
  CommLink.RegCount = static_cast<std::int16_t>(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    CommLink.TxWords.at(2 * i) = values[i];
    CommLink.TxWords.at(2 * i + 1) = 0;
  }
  try {
    CommLink.RegAddress =
        RegisterNumber(std::int64_t{ParamStore[section].BaseAddress} + std::int64_t{2} * record->WordOffset);
    return gFWriteRegs();
  } catch (const RunTimeFailure&) {
    return false;
  }
}

} // namespace

void FixSettings(const FlowCallbacks& window) {
  if (!AskOkCancel(LoadText(20108)) || !gFLinkOpen()) {
    return;
  }
  FlowFrame frame(window);
  static_cast<void>(gFFixSettings());
  frame.CloseLink();
  frame.StopLamp();
  frame.EnableControls();
}

bool gFFixSettings() {
  constexpr std::array<std::uint8_t, 1> Store{1};
  if (!WriteCommand("F", "FIX", Store)) {
    return false;
  }
  ShowMessage(LoadText(62702));
  return true;
}

namespace {

// Empty when the check of the recorder failed; otherwise whether the clock was set.
std::optional<bool> TryToSetClock(const ClockSetting& clock) {
  if (!gFCheckRecorder()) {
    return std::nullopt;
  }
  if (RecorderGeneration == GenerationWithoutClock) {
    ShowMessage(LoadText(62501), BoxIcon::Exclamation);
    return false;
  }
  const std::array<std::uint8_t, 6> registers{1,         clock.year, clock.month,
                                              clock.day, clock.hour, clock.minute};
  return WriteCommand("H", "TIMS", registers); // deliberately: no message follows, either way
}

} // namespace

bool SetRecorderClock(const ClockSetting& clock, const FlowCallbacks& window) {
  if (!gFLinkOpen()) {
    return false;
  }
  FlowFrame frame(window);
  const std::int16_t status = gFRecorderBusy();
  const bool set = status == RecorderFree && TryToSetClock(clock).value_or(false);
  frame.CloseLink();
  if (status == RecorderBusy) {
    // Deliberately with the lamp still on and in other words than the bulk write.
    ShowMessage(LoadText(62502));
  }
  frame.StopLamp();
  frame.EnableControls();
  return set;
}

bool gFSetClock(const ClockSetting& clock) {
  return TryToSetClock(clock).has_value();
}

} // namespace loader
