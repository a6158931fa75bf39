// LOADER.INI: a byte for what is in its place, a section, a key and a value (each with a byte for its length)
// and a byte for the size of the reader's buffer, then the file.
#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIniReadWrite.h"
#include "platform/PrivateProfile.h"
#include "platform/RunTimeFailure.h"
#include "tests/fuzz/FuzzPlatform.h"

namespace loader::fuzz {

namespace {

// A name or a value that a line can hold and give back: no control character, no blank at an end.
bool IsPlain(std::string_view text) {
  for (const char character : text) {
    if (static_cast<unsigned char>(character) < 0x20) {
      return false;
    }
  }
  return text.empty() || (text.front() != ' ' && text.back() != ' ');
}
bool IsPlainKey(std::string_view text) {
  return IsPlain(text) && !text.empty() && text.front() != ';' && text.front() != '[' &&
         text.find('=') == std::string_view::npos;
}
bool IsPlainSection(std::string_view text) {
  return IsPlain(text) && text.find(']') == std::string_view::npos;
}
bool IsPlainValue(std::string_view text) {
  return IsPlain(text) && (text.empty() || (text.front() != '"' && text.front() != '\''));
}

// Without their ends and without those of the file.
std::vector<std::string> LinesOf(const std::filesystem::path& file) {
  const std::string bytes = ReadWholeFile(file);
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
    std::string line = bytes.substr(start, end - start);
    line.erase(line.find_last_not_of('\r') + 1);
    lines.push_back(std::move(line));
    start = end + 1;
  }
  return lines;
}

// A write replaces one line or adds one, two for a section that was not there.
void RequireOtherLinesKept(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  Require(after.size() >= before.size() && after.size() <= before.size() + 2, "a write adds a key at most");
  std::size_t front = 0;
  while (front < before.size() && before[front] == after[front]) {
    ++front;
  }
  std::size_t back = 0;
  while (back + front < before.size() && before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
    ++back;
  }
  Require(front + back + 1 >= before.size(), "a write keeps the other lines");
}

void CheckPlainWrite(std::string_view section, std::string_view key, std::string_view value,
                     const std::filesystem::path& file) {
  if (!IsPlainSection(section) || !IsPlainKey(key) || !IsPlainValue(value)) {
    static_cast<void>(WritePrivateProfileStringA(section, key, value, file));
    return;
  }
  const std::vector<std::string> before = LinesOf(file);
  Require(WritePrivateProfileStringA(section, key, value, file), "a file is written");
  Require(GetPrivateProfileStringA(section, key, "absent", 300, file) == value.substr(0, 299),
          "what was written is read");
  RequireOtherLinesKept(before, LinesOf(file));
}

void CheckModel(const std::filesystem::path& file) {
  const std::u16string type = GetIniValue("LOADER", "TYPE", file);
  const bool valid = type == IniValueAbsent || ParseInt16(type).has_value();
  try {
    SelectModel();
  } catch (const RunTimeFailure&) {
    Require(!valid, "only a model that is no number fails");
    return;
  }
  Require(valid, "a model that is no number fails");
  const bool rug = type != IniValueAbsent && *ParseInt16(type) != 0;
  Require(ModelCode == (rug ? "RUG" : "KOV"), "the model is that of the file");
  Require(ParseInt16(GetIniValue("LOADER", "TYPE", file)).has_value(), "the file names a model afterwards");
}

void CheckCommSettings(const std::filesystem::path& file) {
  const std::u16string type = GetIniValue("LOADER", "TYPE", file);
  Settings.RecorderIpAddress = u"not an address";
  const bool loaded = LoadCommSettings();
  if (!loaded) {
    Require(Settings.RecorderIpAddress == CommSettings{}.RecorderIpAddress,
            "what stands behind a bad value keeps its start value");
  }
  const CommSettings held = Settings;
  SaveCommSettings();
  Require(LoadCommSettings(), "saved settings load");
  Require(Settings.ConfiguredLink == held.ConfiguredLink && Settings.ComPortIndex == held.ComPortIndex &&
              Settings.StationSetting == held.StationSetting,
          "saved settings are the same");
  Require(GetIniValue("LOADER", "TYPE", file) == type, "saving the settings keeps the model");
}

// A folder stands where the file, or the new file beside it, should be: nothing can be written.
void CheckUnwritable(std::string_view section, std::string_view key, std::string_view value,
                     const std::filesystem::path& file) {
  Require(!WritePrivateProfileStringA(section, key, value, file), "a write that fails is told");
  static_cast<void>(GetPrivateProfileStringA(section, key, "ERROR", 255, file));
  try {
    SelectModel();
    Require(ModelCode == "KOV" || ModelCode == "RUG", "there is a model");
  } catch (const RunTimeFailure&) {
  }
  static_cast<void>(LoadCommSettings());
  SaveCommSettings();
}

void RunOne(FuzzInput input) {
  static FuzzPlatform platform;
  static const std::filesystem::path file = platform.MakeFolder() / "LOADER.INI";
  constexpr int Missing = 5;
  constexpr int FolderThere = 6;
  constexpr int FolderBeside = 7;
  const int place = input.Choice(8);
  const std::string section(input.ShortText());
  const std::string key(input.ShortText());
  const std::string value(input.ShortText());
  const std::size_t buffer = input.Byte();
  std::filesystem::path beside = file;
  beside += ".new";
  std::filesystem::remove(file);
  std::filesystem::remove(beside);
  if (place == FolderThere) {
    std::filesystem::create_directory(file);
    CheckUnwritable(section, key, value, file);
    return;
  }
  if (place != Missing) {
    std::ofstream(file, std::ios::binary) << input.RestText();
  }
  if (place == FolderBeside) {
    std::filesystem::create_directory(beside);
    const std::string before = ReadWholeFile(file);
    CheckUnwritable(section, key, value, file);
    Require(ReadWholeFile(file) == before, "a write that fails leaves the file");
    return;
  }
  const std::string read = GetPrivateProfileStringA(section, key, "ERROR", buffer, file);
  Require(read.size() < std::max<std::size_t>(buffer, 1), "a value fits the reader's buffer");
  Require(read.find('\0') == std::string::npos, "a value ends at the first NUL");
  if (place == Missing) {
    Require(LoadCommSettings() && Settings.StationSetting == 1, "without a file there are start values");
  }
  CheckModel(file);
  CheckCommSettings(file);
  CheckPlainWrite(section, key, value, file);
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
