// LOADER.INI: the selected model and the communication settings between runs.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace loader {

// The file's only section.
inline constexpr std::string_view LoaderSection = "LOADER";
// What GetIniValue gives when the file, the section or the key is absent.
constexpr std::u16string_view IniValueAbsent = u"ERROR";

// At most 254 bytes of the value.
[[nodiscard]] std::u16string GetIniValue(std::string_view section, std::string_view key,
                                         const std::filesystem::path& file);
// False when the file could not be written.
bool SetIniValue(std::string_view section, std::string_view key, std::u16string_view value,
                 const std::filesystem::path& file);

// Reads ConfiguredLink, ComPortIndex, StationSetting and RecorderIpAddress. Without the file the start values
// 0, 0, 1 and "192.168.1.1" are taken. False at the first value that is no signed 16-bit number: what was
// read before it stays, that value and the ones behind it keep their start values. A missing IP leaves the
// text "ERROR" as the address.
bool LoadCommSettings();
// Writes the four keys; a failing write is ignored (a read-only folder).
void SaveCommSettings();

// <program folder>/LOADER.INI.
[[nodiscard]] std::filesystem::path LoaderIniPath();

} // namespace loader
