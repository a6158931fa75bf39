// The parameter file: a byte for the model and for whether the round trip is tried, then the file, laid over
// the shipped store.
#include <algorithm>
#include <fstream>
#include <string>

#include "core/ModelProfile.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

bool EveryLineHasAComma(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    if (bytes.substr(0, end).find(',') == std::string_view::npos) {
      return false;
    }
    bytes.remove_prefix(end);
    bytes.remove_prefix(bytes.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, bytes.size()));
  }
  return true;
}

bool EveryValueIsItsDefault() {
  bool same = true;
  ForEachRecord(
      ParamStore, [&](const ParamNumRecord& record) { same &= record.Value == record.DefaultValue; },
      [&](const ParamTextRecord& record) { same &= record.Value == record.DefaultValue; });
  return same;
}

void RequireOnlyValuesChanged() {
  ForEachRecord(
      ParamStore,
      [](const ParamNumRecord& record) {
        Require(record.ReadValue == record.DefaultValue, "a file changes values alone");
      },
      [](const ParamTextRecord& record) {
        Require(record.ReadValue == record.DefaultValue, "a file changes values alone");
      });
}

std::string Saved(const std::filesystem::path& file) {
  Require(gFSaveParamFile(file), "a file is saved");
  return ReadWholeFile(file);
}

// A time of older files is hours and minutes, and the loader makes minutes of it whenever it reads them:
// hours that stand alone in a file are stored as they are, and too many of them do not load again.
bool OldTimesFit() {
  const auto fits = [](std::string_view hours, std::string_view minutes) {
    const int ofHours = 60 * NumValue("E", 0, hours);
    const int sum = ofHours + NumValue("E", 0, minutes);
    return ofHours >= -32768 && ofHours <= 32767 && sum >= -32768 && sum <= 32767;
  };
  return fits("TTSH", "TTSM") && fits("TTEH", "TTEM");
}

// The key rules change a file of older versions once; what they have made of it they leave alone.
void CheckRoundTrip(std::string_view model, const std::filesystem::path& file) {
  const std::string first = Saved(file);
  StartWithShippedStore(model);
  Require(LoadParamBytes(first), "what was saved loads");
  const std::string second = Saved(file);
  StartWithShippedStore(model);
  Require(LoadParamBytes(second) && Saved(file) == second, "a saved file that was loaded saves the same");
}

// Open and Save as the menu has them, on a file of these bytes.
void CheckMenu(std::string_view model, std::string_view bytes, FuzzPlatform& platform,
               const std::filesystem::path& folder) {
  std::ofstream(folder / "LOADER.INI", std::ios::binary)
      << (model == "RUG" ? "[LOADER]\r\nTYPE=1\r\n" : "[LOADER]\r\nTYPE=0\r\n");
  const std::filesystem::path file = folder / "opened.KOV";
  std::ofstream(file, std::ios::binary) << bytes;
  platform.fileDialogs.chosen = file;
  platform.boxes.shown.clear();
  int refreshed = 0;
  OpenParameterFile([&] { ++refreshed; });
  Require(refreshed == 1, "what was opened is shown");
  const bool failed = platform.BoxesOf(11003) == 1;
  Require(platform.boxes.Count() == (failed ? 1 : 0), "a file that does not load is told once");
  Require(!failed || EveryValueIsItsDefault(), "a file that does not load leaves the defaults");
  RequireSoundStore(ParamStore);
  SaveParameterFile();
  Require(platform.boxes.Count() == (failed ? 1 : 0) && !ReadWholeFile(file).empty(), "a file is saved");
  platform.fileDialogs.chosen = folder; // no file
  SaveParameterFile();
  Require(platform.BoxesOf(11002) == 1, "a file that is not saved is told");
  OpenParameterFile([&] { ++refreshed; });
  Require(refreshed == 2 && EveryValueIsItsDefault(), "what is no file does not load");
  platform.fileDialogs.chosen.clear(); // cancelled
  OpenParameterFile([&] { ++refreshed; });
  SaveParameterFile();
  Require(refreshed == 2, "a dialog that is cancelled changes nothing");
  std::ofstream(folder / "LOADER.INI", std::ios::binary) << "[LOADER]\r\nTYPE=none\r\n";
  platform.fileDialogs.chosen = file;
  platform.screens.programEnded = false;
  OpenParameterFile([&] { ++refreshed; });
  Require(refreshed == 2 && platform.screens.programEnded, "without a store the program ends");
}

void RunOne(FuzzInput input) {
  static FuzzPlatform platform;
  static const std::filesystem::path folder = [] {
    const std::filesystem::path& made = platform.MakeFolder();
    std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "InitSet.Ini", made / "InitSet.Ini");
    return made;
  }();
  const int way = input.Choice(16);
  const std::string_view model = (way & 1) != 0 ? "RUG" : "KOV";
  const bool menu = way >= 14;
  const bool roundTrip = way == 12 || way == 13;
  const std::string_view bytes = input.RestText();
  StartWithShippedStore(model);
  if (menu) {
    CheckMenu(model, bytes, platform, folder);
    return;
  }
  const bool loaded = LoadParamBytes(bytes);
  RequireSoundStore(ParamStore);
  RequireOnlyValuesChanged();
  if (!EveryLineHasAComma(bytes)) {
    Require(!loaded && EveryValueIsItsDefault(), "a file with a line without a comma changes nothing");
  }
  if (loaded && roundTrip && OldTimesFit()) {
    CheckRoundTrip(model, folder / "saved.KOV");
  }
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
