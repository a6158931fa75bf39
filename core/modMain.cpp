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

ParamItem* ItemAt(StoreIndex sectionIndex, int itemNumber) {
  if (sectionIndex >= ParamStore.size() || itemNumber < 0) {
    return nullptr;
  }
  std::vector<ParamItem>& items = ParamStore[sectionIndex].Items;
  return static_cast<std::size_t>(itemNumber) < items.size() ? &items[static_cast<std::size_t>(itemNumber)]
                                                             : nullptr;
}

// Whether a padded name of the store is `sought`, which is trimmed.
bool IsName(std::string_view padded, std::string_view sought) {
  if (padded.starts_with(' ')) {
    padded = Trim(padded);
  }
  if (!padded.empty() && !sought.empty() && padded.front() != sought.front()) {
    return false; // the usual answer, without a call
  }
  return padded.starts_with(sought) && padded.find_first_not_of(' ', sought.size()) == std::string_view::npos;
}

// A name that is sought among the store's, which are padded to `Width` characters: one comparison of a number
// each, since a whole read compares some hundred thousand tags and a window asks for thousands of sections.
template <std::size_t Width> class SoughtName {
public:
  explicit SoughtName(std::string_view name) : name_(Trim(name)) {
    for (std::size_t at = 0; at < Width; ++at) {
      number_ |= Shifted(at < name_.size() ? name_[at] : ' ', at);
    }
  }
  [[nodiscard]] bool Is(std::string_view padded) const {
    const bool usual = padded.size() == Width && padded.front() != ' ';
    return usual ? Packed(padded.data()) == number_ && name_.size() <= Width : IsName(padded, name_);
  }

private:
  static_assert(Width <= sizeof(std::uint32_t));
  // In registers: a number that is put together in memory from smaller pieces is waited for when it is
  // loaded.
  static constexpr std::uint32_t Shifted(char character, std::size_t at) {
    return std::uint32_t{static_cast<unsigned char>(character)} << (8U * at);
  }
  static std::uint32_t Packed(const char* characters) {
    std::uint32_t packed = 0;
    for (std::size_t at = 0; at < Width; ++at) {
      packed |= Shifted(characters[at], at);
    }
    return packed;
  }
  std::string_view name_;
  std::uint32_t number_ = 0;
};

template <typename Record> StoreIndex IndexOfTag(const std::vector<Record>& records, std::string_view tag) {
  const SoughtName<TagWidth> sought(tag);
  const auto found = std::find_if(records.begin(), records.end(),
                                  [&](const Record& record) { return sought.Is(record.Tag); });
  return found == records.end() ? NotFound : static_cast<StoreIndex>(found - records.begin());
}

} // namespace

StoreIndex gFFindSection(std::string_view sectionCode) {
  const SoughtName<CodeWidth> sought(sectionCode);
  const auto found = std::find_if(ParamStore.begin(), ParamStore.end(),
                                  [&](const ParamSection& section) { return sought.Is(section.Code); });
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
  const StoreIndex section = gFFindSection(sectionCode);
  ParamItem* item = ItemAt(section, itemNumber);
  if (item == nullptr) {
    return false;
  }
  if (const StoreIndex text = IndexOfTag(item->TextRecords, tag); text != NotFound) {
    SetText(item->TextRecords[text], value, slot);
    return true;
  }
  if (const StoreIndex number = IndexOfTag(item->NumRecords, tag); number != NotFound) {
    SetNumber(item->NumRecords[number], RequireInt16(value), slot);
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

bool SetNumValue(std::string_view sectionCode, int itemNumber, std::string_view tag, std::int16_t value) {
  ParamNumRecord* record = FindNumRecord(sectionCode, itemNumber, tag);
  if (record == nullptr) {
    return false;
  }
  SetNumber(*record, value, SlotValue);
  return true;
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

void TakeStartValues() {
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
}

bool Main(const std::function<void()>& showMainWindow) {
  TakeStartValues();
  if (!gFLoadInitSetteiData()) {
    ShowMessage(LoadText(11005));
    return false;
  }
  showMainWindow();
  return true;
}

} // namespace loader
