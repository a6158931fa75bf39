#include "core/modMain.h"

#include <algorithm>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modIni.h"
#include "platform/Platform.h"

namespace loader {

ParamStoreTable ParamStore;
ParamStoreTable ParamStoreBackup;
ModelProfile Profile;
std::string ModelCode;
std::string VersionTag;
std::int32_t ModeCheckOff = 0;

namespace {

const ParamItem* ItemAt(StoreIndex sectionIndex, int itemNumber) {
  if (sectionIndex >= ParamStore.size() || itemNumber < 0) {
    return nullptr;
  }
  const std::vector<ParamItem>& items = ParamStore[sectionIndex].Items;
  return static_cast<std::size_t>(itemNumber) < items.size() ? &items[static_cast<std::size_t>(itemNumber)]
                                                             : nullptr;
}

template <typename Record> StoreIndex IndexOfTag(const std::vector<Record>& records, std::string_view tag) {
  const std::string_view sought = Trim(tag);
  const auto found = std::find_if(records.begin(), records.end(), [&](const Record& record) {
    return Trim(std::string_view(record.Tag)) == sought;
  });
  return found == records.end() ? NotFound : static_cast<StoreIndex>(found - records.begin());
}

} // namespace

StoreIndex gFFindSection(std::string_view sectionCode) {
  const std::string_view sought = Trim(sectionCode);
  const auto found = std::find_if(ParamStore.begin(), ParamStore.end(), [&](const ParamSection& section) {
    return Trim(std::string_view(section.Code)) == sought;
  });
  return found == ParamStore.end() ? NotFound : static_cast<StoreIndex>(found - ParamStore.begin());
}

StoreIndex gFFindNumTag(StoreIndex sectionIndex, int itemNumber, std::string_view tag) {
  const ParamItem* item = ItemAt(sectionIndex, itemNumber);
  return item == nullptr ? NotFound : IndexOfTag(item->NumRecords, tag);
}

StoreIndex gFFindTextTag(StoreIndex sectionIndex, int itemNumber, std::string_view tag) {
  const ParamItem* item = ItemAt(sectionIndex, itemNumber);
  return item == nullptr ? NotFound : IndexOfTag(item->TextRecords, tag);
}

bool gFParamValue(std::string_view sectionCode, int itemNumber, std::string_view tag,
                  std::u16string_view value, ValueSlot slot) {
  if (ParamTextRecord* text = FindTextRecord(sectionCode, itemNumber, tag)) {
    SetText(*text, value, slot);
    return true;
  }
  if (ParamNumRecord* number = FindNumRecord(sectionCode, itemNumber, tag)) {
    SetNumber(*number, RequireInt16(value), slot);
    return true;
  }
  return false;
}

ParamNumRecord* FindNumRecord(std::string_view sectionCode, int itemNumber, std::string_view tag) {
  const StoreIndex section = gFFindSection(sectionCode);
  const StoreIndex index = gFFindNumTag(section, itemNumber, tag);
  return index == NotFound
             ? nullptr
             : &ParamStore[section].Items[static_cast<std::size_t>(itemNumber)].NumRecords[index];
}

ParamTextRecord* FindTextRecord(std::string_view sectionCode, int itemNumber, std::string_view tag) {
  const StoreIndex section = gFFindSection(sectionCode);
  const StoreIndex index = gFFindTextTag(section, itemNumber, tag);
  return index == NotFound
             ? nullptr
             : &ParamStore[section].Items[static_cast<std::size_t>(itemNumber)].TextRecords[index];
}

std::int16_t NumValue(std::string_view sectionCode, int itemNumber, std::string_view tag,
                      std::int16_t absent) {
  const ParamNumRecord* record = FindNumRecord(sectionCode, itemNumber, tag);
  return record == nullptr ? absent : record->Value;
}

std::u16string FixedText(std::u16string_view text) {
  std::u16string fixed(text.substr(0, TextWidth));
  fixed.resize(TextWidth, u' ');
  return fixed;
}

void SetText(ParamTextRecord& record, std::u16string_view text, ValueSlot slot) {
  if (slot != SlotReadValue) {
    record.Value = FixedText(text);
  }
  if (slot != SlotValue) {
    record.ReadValue = FixedText(text);
  }
}

void SetNumber(ParamNumRecord& record, std::int16_t value, ValueSlot slot) {
  if (slot != SlotReadValue) {
    record.Value = value;
  }
  if (slot != SlotValue) {
    record.ReadValue = value;
  }
}

bool Main(const std::function<void()>& showMainWindow) {
  // Some start values are those of one model, some of the other: the model selection then overwrites four of
  // them and leaves the other three, which are the same for both.
  Profile = ModelProfile{};
  Profile.ConstantCount = 20;
  Profile.MessageCount = 10;
  Profile.UnitCount = 12;
  Profile.DigitalInputCount = 16;
  Profile.CommInputCount = 12;
  Profile.TotalizerCount = 72;
  Profile.OperationResultCount = 3;
  gFInitCatalogues();
  if (!gFLoadInitSetteiData()) {
    ShowMessage(LoadText(11005));
    return false;
  }
  showMainWindow();
  return true;
}

} // namespace loader
