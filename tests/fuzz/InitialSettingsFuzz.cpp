// The initial settings file: a byte for the way of the load, then the file.
#include <algorithm>
#include <fstream>
#include <optional>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

constexpr std::int32_t OldMode = 77;
const ParamStoreTable OldStore{{"OLD", 1, 1, 1, {{}}}};

// Bits of the first byte.
constexpr unsigned ModelIsRug = 1;
constexpr unsigned NoLoaderIni = 2;
constexpr unsigned NoModel = 4; // LOADER.INI does not name one
constexpr unsigned NoInitSet = 8;
constexpr unsigned OrEnd = 16;      // through RebuildStoreOrEnd
constexpr unsigned AtTheStart = 32; // through the entry routine

void WriteFile(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

bool IsOldStore() {
  return ParamStore.size() == 1 && ParamStore[0].Code == "OLD" && ParamStore[0].Items.size() == 1;
}

// The three steps of a load as they stand for themselves; nothing when one of them fails.
std::optional<ParamStoreTable> LoadByHand(std::string_view bytes, std::int32_t& modeCheckOff) {
  try {
    const std::vector<InitRow> rows = ReadInitBlock(FromCodePage(bytes), Widen(VersionTag));
    for (const InitRow& row : rows) {
      Require(row.size() <= 9, "a row has nine fields at most");
      for (const std::u16string& field : row) {
        Require(field.find_first_of(u"\",\r\n") == std::u16string::npos, "a field is one field");
      }
    }
    ParamStore = BuildStore(rows, modeCheckOff);
    ApplyItemDefaults();
    return ParamStore;
  } catch (const RunTimeFailure&) {
    return std::nullopt;
  }
}

// What the defaults by item number make of any store, as far as it has the records.
void RequireItemDefaults() {
  for (int i = 0; i < Profile.ChannelCount; ++i) {
    if (const ParamNumRecord* colour = FindNumRecord("C", i, "COLR")) {
      Require(colour->Value == ColourOrderA[static_cast<std::size_t>(i)], "a channel has its colour");
    }
    if (const ParamTextRecord* tag = FindTextRecord("C", i, "TAG2")) {
      Require(Trim(std::u16string_view(tag->Value)).empty(), "the second tag is empty");
    }
  }
}

void RequireLookUps() {
  for (std::size_t i = 0; i < ParamStore.size(); ++i) {
    const ParamSection& section = ParamStore[i];
    const StoreIndex found = gFFindSection(section.Code);
    Require(found <= i &&
                Trim(std::string_view(ParamStore[found].Code)) == Trim(std::string_view(section.Code)),
            "a section is found by its code");
    const ParamItem& item = section.Items.back();
    for (std::size_t n = 0; n < item.NumRecords.size(); ++n) {
      const StoreIndex at =
          gFFindNumTag(static_cast<StoreIndex>(i), section.ItemCount - 1, item.NumRecords[n].Tag);
      Require(at <= n, "a number is found by its tag");
    }
    Require(gFFindNumTag(static_cast<StoreIndex>(i), section.ItemCount, "TAG") == NotFound,
            "an item behind the last one is not there");
  }
}

void PrepareFolder(unsigned way, std::string_view bytes, const std::filesystem::path& folder) {
  const auto put = [&](const char* name, bool there, std::string_view content) {
    if (there) {
      WriteFile(folder / name, content);
    } else {
      std::filesystem::remove(folder / name);
    }
  };
  put("LOADER.INI", (way & NoLoaderIni) == 0,
      (way & NoModel) != 0      ? "[LOADER]\r\nCOM=1\r\n"
      : (way & ModelIsRug) != 0 ? "[LOADER]\r\nTYPE=1\r\n"
                                : "[LOADER]\r\nTYPE=0\r\n");
  put("InitSet.Ini", (way & NoInitSet) == 0, bytes);
}

bool Load(unsigned way, FuzzPlatform& platform) {
  platform.boxes.shown.clear();
  platform.screens.programEnded = false;
  if ((way & AtTheStart) != 0) {
    bool windowShown = false;
    const bool started = Main([&] { windowShown = true; });
    Require(started == windowShown && platform.BoxesOf(11005) == (started ? 0 : 1),
            "a program that cannot start says so and shows no window");
    return started;
  }
  if ((way & OrEnd) != 0) {
    const bool rebuilt = RebuildStoreOrEnd();
    Require(platform.screens.programEnded == !rebuilt && platform.BoxesOf(11005) == (rebuilt ? 0 : 1),
            "a rebuild that fails says so and ends the program");
    return rebuilt;
  }
  return gFLoadInitSetteiData();
}

void RunOne(FuzzInput input) {
  static FuzzPlatform platform;
  static const std::filesystem::path folder = platform.MakeFolder();
  gFInitCatalogues();
  const unsigned way = input.Byte();
  const std::string_view bytes = input.RestText();
  PrepareFolder(way, bytes, folder);

  ParamStore = OldStore;
  ModeCheckOff = OldMode;
  const bool loaded = Load(way, platform);
  const bool rug = (way & (ModelIsRug | NoLoaderIni | NoModel)) == ModelIsRug;
  Require(VersionTag == (rug ? "V00W" : "V00L"), "the model is that of LOADER.INI");
  if (!loaded) {
    Require(IsOldStore() && ModeCheckOff == OldMode, "a failed load leaves the store as it was");
  }
  if ((way & NoInitSet) != 0) {
    Require(!loaded, "a file that is not there does not load");
    return;
  }
  const std::size_t sections = ParamStore.size();
  const std::int32_t mode = ModeCheckOff;

  std::int32_t modeByHand = OldMode;
  const auto byHand = LoadByHand(bytes, modeByHand);
  Require(byHand.has_value() == loaded, "a load is the sum of its steps");
  if (byHand) {
    Require(byHand->size() == sections && modeByHand == mode, "a load is the sum of its steps");
    RequireSoundStore(ParamStore);
    RequireItemDefaults();
    RequireLookUps();
  }
}

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::RunOne(loader::fuzz::FuzzInput(data, size));
  return 0;
}
