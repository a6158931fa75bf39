#include "core/modIniReadWrite.h"

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "platform/Platform.h"
#include "platform/PrivateProfile.h"

namespace loader {

namespace {
constexpr std::size_t IniBufferSize = 255;
} // namespace

CommSettings Settings;

std::u16string GetIniValue(std::string_view section, std::string_view key,
                           const std::filesystem::path& file) {
  return FromCodePage(GetPrivateProfileStringA(section, key, Narrow(IniValueAbsent), IniBufferSize, file));
}

bool SetIniValue(std::string_view section, std::string_view key, std::u16string_view value,
                 const std::filesystem::path& file) {
  return WritePrivateProfileStringA(section, key, ToCodePage(value), file);
}

bool LoadCommSettings() {
  Settings = CommSettings{};
  const std::filesystem::path file = LoaderIniPath();
  std::error_code error; // a path that cannot be looked at counts as missing
  if (!std::filesystem::exists(file, error)) {
    return true;
  }
  try {
    Settings.ConfiguredLink = RequireInt16(GetIniValue(LoaderSection, "COMMUNICATION", file));
    Settings.ComPortIndex = RequireInt16(GetIniValue(LoaderSection, "COM", file));
    Settings.StationSetting = RequireInt16(GetIniValue(LoaderSection, "STNO", file));
    Settings.RecorderIpAddress = GetIniValue(LoaderSection, "IP", file);
    return true;
  } catch (const RunTimeFailure&) {
    return false;
  }
}

void SaveCommSettings() {
  const std::filesystem::path file = LoaderIniPath();
  SetIniValue(LoaderSection, "COMMUNICATION", DecimalText(Settings.ConfiguredLink), file);
  SetIniValue(LoaderSection, "COM", DecimalText(Settings.ComPortIndex), file);
  SetIniValue(LoaderSection, "STNO", DecimalText(Settings.StationSetting), file);
  SetIniValue(LoaderSection, "IP", Settings.RecorderIpAddress, file);
}

std::filesystem::path LoaderIniPath() {
  return ThePlatform().programFolder / "LOADER.INI";
}

} // namespace loader
