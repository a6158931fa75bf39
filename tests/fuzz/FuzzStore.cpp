#include "tests/fuzz/FuzzStore.h"

#include <filesystem>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modFile.h"
#include "core/modIni.h"

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

// Numbers drawn from a seed, in one of several sizes: most rules turn at small ones.
class Draw {
public:
  Draw(std::uint32_t seed, int size) : state_(seed | 1U), size_(size) {}
  std::int16_t Next() {
    state_ ^= state_ << 13U;
    state_ ^= state_ >> 17U;
    state_ ^= state_ << 5U;
    const auto bits = static_cast<std::uint16_t>(state_ >> 8U);
    switch (size_) {
    case 0:
      return static_cast<std::int16_t>(bits % 8);
    case 1:
      return static_cast<std::int16_t>(bits % 128);
    case 2:
      return static_cast<std::int16_t>(bits % 128 - 64);
    default:
      return static_cast<std::int16_t>(bits);
    }
  }

private:
  std::uint32_t state_;
  int size_;
};

} // namespace

void StartWithShippedStore(std::string_view model) {
  static const ParamStoreTable kov = ShippedStore("KOV");
  static const ParamStoreTable rug = ShippedStore("RUG");
  TakeProfileOf(model);
  ModeCheckOff = 0;
  ParamStore = model == "RUG" ? rug : kov;
}

void FillStore(FuzzInput& input) {
  const int size = input.Choice(5);
  Draw draw(static_cast<std::uint32_t>(input.Number32()), size);
  const bool limits = input.Flag();
  const std::u16string text = FromCodePage(input.ShortText());
  if (size == 4) { // the shipped numbers
    return;
  }
  ForEachRecord(
      ParamStore,
      [&](ParamNumRecord& record) {
        record.Value = draw.Next();
        if (limits) {
          record.MinValue = draw.Next();
          record.MaxValue = draw.Next();
        }
      },
      [&](ParamTextRecord& record) { SetText(record, text, SlotValue); });
}

void PatchStore(FuzzInput& input) {
  const int patches = input.Choice(64);
  for (int patch = 0; patch < patches; ++patch) {
    ParamSection& section = ParamStore[input.Byte() % ParamStore.size()];
    auto& numbers = section.Items[input.Byte() % section.Items.size()].NumRecords;
    const std::size_t at = input.Byte();
    const std::int16_t value = input.Number16();
    if (!numbers.empty()) {
      numbers[at % numbers.size()].Value = value;
    }
  }
}

void DropFromStore(FuzzInput& input) {
  const int drops = input.Choice(8);
  for (int drop = 0; drop < drops && ParamStore.size() > 1; ++drop) {
    const std::size_t section = input.Byte() % ParamStore.size();
    const int kind = input.Choice(4);
    const std::size_t at = input.Byte();
    if (kind == 0) {
      ParamStore.erase(ParamStore.begin() + static_cast<std::ptrdiff_t>(section));
    } else if (kind == 1) {
      auto& items = ParamStore[section].Items;
      items.resize(at % items.size() + 1);
      ParamStore[section].ItemCount = static_cast<std::int16_t>(items.size());
    } else {
      const auto erase = [&](auto& records) {
        if (!records.empty()) {
          records.erase(records.begin() + static_cast<std::ptrdiff_t>(at % records.size()));
        }
      };
      for (ParamItem& item : ParamStore[section].Items) {
        kind == 2 ? erase(item.NumRecords) : erase(item.TextRecords);
      }
    }
  }
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
