// The model in force: its names, its counts, and the settings that are kept between runs.
#pragma once

#include <cstdint>
#include <string>

namespace loader {

// Signed 16-bit counts; the screens use them as list sizes and loop bounds.
struct ModelProfile {
  std::int16_t ChannelCount = 0;          // measuring channels: items 0 up in section C
  std::int16_t OperationChannelCount = 0; // operation channels, following the measuring channels in C
  std::int16_t FirstOperationChannel = 0; // channel number from 1; the item number is this minus 1
  std::int16_t ConstantCount = 0;         // section N
  std::int16_t MessageCount = 0;          // section M
  std::int16_t UnitCount = 0;             // section U
  std::int16_t DigitalInputCount = 0;     // the size of the DI lists
  std::int16_t TriggerDIListSize = 0;     // DI entries of the message and e-mail trigger lists
  std::int16_t CommInputCount = 0;        // formula inputs with prefix "M"
  std::int16_t TotalizerCount = 0;        // formula inputs with prefix "T"
  std::int16_t OperationResultCount = 0;  // formula inputs with prefix "B"
  std::int16_t AlarmOutputListSize = 0;   // entries of the alarm output lists
  std::int16_t OtherChannelListSize = 0;  // entries of the other-channel list
  std::int16_t GroupCount = 0;            // section G
  std::int16_t GroupChannelLast = 0;      // highest channel slot of a group, from 0
  bool operator==(const ModelProfile&) const = default;
};

// The profile in force. Constant between two model selections.
extern ModelProfile Profile;
// Measuring and operation channels of the model in force.
[[nodiscard]] inline int AllChannels() {
  return Profile.ChannelCount + Profile.OperationChannelCount;
}
// "KOV" or "RUG"; tests for other codes survive in some rules, no path sets one.
extern std::string ModelCode;
// "V00L" for KOV, "V00W" for RUG: the block of the initial settings file.
extern std::string VersionTag;
// From the initial settings file: not 0 lets the connection accept a recorder of another mode.
extern std::int32_t ModeCheckOff;

// Kept in LOADER.INI.
struct CommSettings {
  std::int16_t ConfiguredLink = 0; // 0 USB, 1 Ethernet, 2 (and anything else) serial
  std::int16_t ComPortIndex = 0;   // 0 to 4: COM1 to COM5
  std::int16_t StationSetting = 1; // 0 to 255
  std::u16string RecorderIpAddress = u"192.168.1.1";
};
extern CommSettings Settings;

} // namespace loader
