#include "comm/RecorderCommands.h"

#include <array>
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

void SetRecorderClock(const ClockSetting& clock, const FlowCallbacks& window) {
  if (!gFLinkOpen()) {
    return;
  }
  FlowFrame frame(window);
  const std::int16_t status = gFRecorderBusy();
  if (status == RecorderFree) {
    gFSetClock(clock);
  }
  frame.CloseLink();
  if (status == RecorderBusy) {
    // Deliberately with the lamp still on and in other words than the bulk write.
    ShowMessage(LoadText(62502));
  }
  frame.StopLamp();
  frame.EnableControls();
}

bool gFSetClock(const ClockSetting& clock) {
  if (!gFCheckRecorder()) {
    return false;
  }
  if (RecorderGeneration == GenerationWithoutClock) {
    ShowMessage(LoadText(62501), BoxIcon::Exclamation);
    return true;
  }
  const std::array<std::uint8_t, 6> registers{1,         clock.year, clock.month,
                                              clock.day, clock.hour, clock.minute};
  static_cast<void>(WriteCommand("H", "TIMS", registers)); // deliberately: no message follows, either way
  return true;
}

} // namespace loader
