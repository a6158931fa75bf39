#include "tests/fuzz/FuzzStore.h"

#include <filesystem>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "tests/fuzz/FuzzInput.h"

namespace loader::fuzz {

namespace {

void TakeProfileOf(std::string_view model) {
  if (model == "RUG") {
    TakeRugProfile();
  } else {
    TakeKovProfile();
  }
}

ParamStoreTable ShippedStore(std::string_view model) {
  // What the entry routine sets before any model is selected.
  Profile.MessageCount = 10;
  Profile.UnitCount = 12;
  Profile.OperationResultCount = 3;
  gFInitCatalogues();
  TakeProfileOf(model);
  const std::filesystem::path file = std::filesystem::path(LOADER_DATA_DIR) / "InitSet.Ini";
  std::int32_t modeCheckOff = 0;
  ParamStore = BuildStore(ReadInitBlock(FromCodePage(ReadWholeFile(file)), Widen(VersionTag)), modeCheckOff);
  ApplyItemDefaults();
  return ParamStore;
}

} // namespace

void StartWithShippedStore(std::string_view model) {
  static const ParamStoreTable kov = ShippedStore("KOV");
  static const ParamStoreTable rug = ShippedStore("RUG");
  TakeProfileOf(model);
  ModeCheckOff = 0;
  ParamStore = model == "RUG" ? rug : kov;
}

void RequireSoundStore(const ParamStoreTable& store) {
  for (const ParamSection& section : store) {
    Require(section.Code.size() == CodeWidth, "a section code is padded");
    Require(section.Items.size() == static_cast<std::size_t>(section.ItemCount), "a section holds its items");
    const ParamItem& first = section.Items.front();
    for (const ParamItem& item : section.Items) {
      Require(item.NumRecords.size() == first.NumRecords.size() &&
                  item.TextRecords.size() == first.TextRecords.size(),
              "the items of a section are alike");
      for (const ParamTextRecord& record : item.TextRecords) {
        Require(record.Tag.size() == TagWidth && record.Value.size() == TextWidth &&
                    record.ReadValue.size() == TextWidth && record.DefaultValue.size() == TextWidth,
                "a text is held at full width");
      }
    }
  }
}

} // namespace loader::fuzz
