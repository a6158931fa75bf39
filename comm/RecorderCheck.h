// Which recorder is at the other end: its model, the register layout of its firmware, and whether it is busy.
// The link has to be open. Both checks leave what they read of sections P and S in the store.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "comm/TransferResult.h"

namespace loader {

// The register layout of the recorder that was checked last: 0 to 5 KOV, 20 and 21 RUG. Starts at 0 and
// changes in gFCheckRecorder alone; it is neither reset between flows nor saved.
extern std::int16_t RecorderGeneration;

// What gFRecorderBusy returns.
constexpr std::int16_t RecorderFree = 0;
constexpr std::int16_t RecorderBusy = 1; // recording or computing
constexpr std::int16_t RecorderNotRead = 2;

// Reads the recorder's model and firmware tag from section P. False, after a message: 11012 when P cannot be
// read (behind the link's own message) or the tag has the wrong shape, 11015 when the model is not the one in
// force (a ModeCheckOff other than 0 lets it pass). The generation follows the model that the recorder
// reports; a model without version tags passes and leaves the generation as it stands.
[[nodiscard]] bool gFCheckRecorder();

// What the recorder says of itself, from section P, whatever it is: blanks at the ends taken off, the model
// in three characters, the tag in four.
struct RecorderIdentity {
  TransferResult result; // Done or IdentityNotRead
  std::string model;
  std::u16string versionTag;
};
[[nodiscard]] RecorderIdentity ReadIdentity();

// The same without the messages: Done, IdentityNotRead, OtherModel or NoVersion.
[[nodiscard]] TransferResult CheckRecorder();
// The message of a check that failed; none for any other end.
void TellCheck(const TransferResult& result);

// The recorder's state word, section S. Never throws a RunTimeFailure: it counts as not read.
[[nodiscard]] std::int16_t gFRecorderBusy();

// The same for a flow: Done for a recorder that is free, RecorderBusy or StateNotRead.
[[nodiscard]] TransferResult CheckState();

// The generation of a version tag ("V27A"), by the tables of the model that reports it. Empty for a tag of
// another shape.
[[nodiscard]] std::optional<std::int16_t> GenerationOfTag(std::string_view model, std::u16string_view tag);

} // namespace loader
