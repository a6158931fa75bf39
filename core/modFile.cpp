#include "core/modFile.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "core/ModelProfile.h"
#include "core/PathText.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modIni.h"
#include "core/modIniReadWrite.h"
#include "platform/FileName.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr std::size_t RowFields = 9;
constexpr std::size_t HeaderColumns = 4;
// Sections, items and records of a store, taken together, stay below this. No recorder has registers for as
// many, and every place in the store is then one that a look-up can return.
constexpr std::size_t StoreEntries = NotFound;
// Opens a block for whichever model is selected.
constexpr std::u16string_view AnyModelTag = u"V01L";

struct ModelNumbers {
  std::string_view code;
  std::string_view versionTag;
  std::int16_t channels, operationChannels, firstOperationChannel, constants, digitalInputs, triggerDIs,
      commInputs, totalizers, alarmOutputs, otherChannels, groups, groupChannelLast;
};
constexpr ModelNumbers KovNumbers{"KOV", "V00L", 18, 12, 19, 20, 10, 10, 12, 30, 29, 30, 4, 9};
constexpr ModelNumbers RugNumbers{"RUG", "V00W", 36, 36, 37, 60, 16, 16, 36, 72, 37, 72, 8, 9};
constexpr std::array Models{KovNumbers, RugNumbers};

void TakeProfile(const ModelNumbers& numbers) {
  ModelCode = numbers.code;
  VersionTag = numbers.versionTag;
  Profile.ChannelCount = numbers.channels;
  Profile.OperationChannelCount = numbers.operationChannels;
  Profile.FirstOperationChannel = numbers.firstOperationChannel;
  Profile.ConstantCount = numbers.constants;
  Profile.DigitalInputCount = numbers.digitalInputs;
  Profile.TriggerDIListSize = numbers.triggerDIs;
  Profile.CommInputCount = numbers.commInputs;
  Profile.TotalizerCount = numbers.totalizers;
  Profile.AlarmOutputListSize = numbers.alarmOutputs;
  Profile.OtherChannelListSize = numbers.otherChannels;
  Profile.GroupCount = numbers.groups;
  Profile.GroupChannelLast = numbers.groupChannelLast;
  // MessageCount, UnitCount and OperationResultCount keep their start values: they are the same for both
  // models.
}

struct FileDefault {
  std::string_view key;
  std::u16string_view value;
};
constexpr std::array<FileDefault, 5> NewLoaderIni{
    {{"TYPE", u"0"}, {"COMMUNICATION", u"0"}, {"COM", u"0"}, {"STNO", u"1"}, {"IP", u"192.168.1.1"}}};

// Trimmed first, then every quote removed; not trimmed again, so that a quoted value keeps its inner blanks.
std::u16string InitField(std::u16string_view raw) {
  std::u16string field(Trim(raw));
  std::erase(field, u'"');
  return field;
}

// The growing table of rows; a row is as long as its highest stored field.
class RowTable {
public:
  void Restart() { rows_.assign(1, {}); }
  void Store(std::size_t field, std::u16string text) {
    if (field >= RowFields) {
      throw RunTimeFailure("a row of the initial settings file has more than nine fields");
    }
    InitRow& row = rows_.back();
    if (row.size() <= field) {
      row.resize(field + 1);
    }
    row[field] = std::move(text);
  }
  void NextRow() { rows_.emplace_back(); }
  std::vector<InitRow> Take() {
    rows_.pop_back(); // the row that the next line would have filled
    return std::move(rows_);
  }

private:
  std::vector<InitRow> rows_ = std::vector<InitRow>(1);
};

const std::u16string& FieldOf(const InitRow& row, std::size_t field) {
  static const std::u16string empty;
  return field < row.size() ? row[field] : empty;
}

std::string Padded(std::u16string_view text, std::size_t width) {
  std::string padded = Narrow(text.substr(0, width));
  padded.resize(width, ' ');
  return padded;
}

ParamSection SectionOf(const InitRow& row) {
  ParamSection section;
  section.Code = Padded(FieldOf(row, 1), CodeWidth);
  section.BaseAddress = RequireInt32(FieldOf(row, 2));
  section.ItemWords = RequireInt16(FieldOf(row, 3));
  section.ItemCount = RequireInt16(FieldOf(row, 4));
  if (section.ItemCount < 1) {
    throw RunTimeFailure("a section without items");
  }
  section.Items.resize(1); // item 0; its copies follow when it is whole
  return section;
}

ParamNumRecord NumRecordOf(const InitRow& row) {
  ParamNumRecord record;
  record.Tag = Padded(FieldOf(row, 1), TagWidth);
  record.WordOffset = RequireInt16(FieldOf(row, 2));
  record.Value = record.ReadValue = record.DefaultValue = RequireInt16(FieldOf(row, 4));
  record.MinValue = RequireInt16(FieldOf(row, 5));
  record.MaxValue = RequireInt16(FieldOf(row, 6));
  return record;
}

ParamTextRecord TextRecordOf(const InitRow& row) {
  ParamTextRecord record;
  record.Tag = Padded(FieldOf(row, 1), TagWidth);
  record.WordOffset = RequireInt16(FieldOf(row, 2));
  record.Value = record.ReadValue = record.DefaultValue = FixedText(FieldOf(row, 4));
  record.ByteLength = RequireInt16(FieldOf(row, 5));
  return record;
}

// `result` into all three copies; a record that the store lacks is passed over.
void SetDefault(std::string_view section, int item, std::string_view tag, std::int16_t result) {
  if (ParamNumRecord* record = FindNumRecord(section, item, tag)) {
    record->Value = record->ReadValue = record->DefaultValue = result;
  }
}

using TextRule = std::u16string (*)(std::u16string_view defaultText, int number);

void SetDefaultText(std::string_view section, int item, std::string_view tag, TextRule rule) {
  if (ParamTextRecord* record = FindTextRecord(section, item, tag)) {
    record->Value = record->ReadValue = record->DefaultValue =
        FixedText(rule(Trim(std::u16string_view(record->DefaultValue)), item + 1));
  }
}

std::u16string ChannelTag(std::u16string_view defaultText, int number) {
  return std::u16string(defaultText) + u" " + PaddedDecimal(number, 2);
}
std::u16string EmptyTag(std::u16string_view, int) {
  return {};
}
std::u16string GroupName(std::u16string_view defaultText, int number) {
  return std::u16string(defaultText) + DecimalText(number);
}

std::size_t EntriesOf(const ParamSection& section) {
  const ParamItem& item = section.Items.front();
  return 1 +
         static_cast<std::size_t>(section.ItemCount) * (1 + item.NumRecords.size() + item.TextRecords.size());
}

// A few lines of the file can ask for more items than the memory holds: the whole is counted before it is
// made.
void CopyFirstItems(ParamStoreTable& store) {
  std::size_t entries = 0;
  for (const ParamSection& section : store) {
    entries += EntriesOf(section);
  }
  if (entries >= StoreEntries) {
    throw RunTimeFailure("the initial settings file describes more than a recorder can hold");
  }
  for (ParamSection& section : store) {
    const ParamItem first = section.Items.front();
    section.Items.resize(static_cast<std::size_t>(section.ItemCount), first);
  }
}

struct ItemRange {
  int first;
  int count;
};

void SetDefaultTexts(std::string_view section, ItemRange items, std::string_view tag, TextRule rule) {
  for (int i = 0; i < items.count; ++i) {
    SetDefaultText(section, items.first + i, tag, rule);
  }
}

void SetColours(ItemRange items, const std::array<std::int16_t, 36>& order) {
  for (int i = 0; i < items.count && i < static_cast<int>(order.size()); ++i) {
    SetDefault("C", items.first + i, "COLR", order[static_cast<std::size_t>(i)]);
  }
}

} // namespace

void TakeKovProfile() {
  TakeProfile(KovNumbers);
}
void TakeRugProfile() {
  TakeProfile(RugNumbers);
}

void SelectModel() {
  const std::filesystem::path file = LoaderIniPath();
  std::error_code error; // a path that cannot be looked at counts as missing
  if (!std::filesystem::exists(file, error)) {
    TakeKovProfile();
    for (const FileDefault& entry : NewLoaderIni) {
      SetIniValue(LoaderSection, entry.key, entry.value, file);
    }
    return;
  }
  const std::u16string type = GetIniValue(LoaderSection, "TYPE", file);
  if (type == IniValueAbsent) {
    SetIniValue(LoaderSection, "TYPE", u"0", file);
    TakeKovProfile();
    return;
  }
  if (RequireInt16(type) != 0) {
    TakeRugProfile();
  } else {
    TakeKovProfile();
  }
}

std::vector<InitRow> ReadInitBlock(std::u16string_view fileText, std::u16string_view versionTag) {
  RowTable table;
  bool inBlock = false;
  bool tagMatched = false;
  for (const std::u16string_view line : SplitLines(fileText)) {
    if (line.empty() || line.front() == u';') {
      continue;
    }
    // The header of the next block: "2" alone in the first four columns. "2,V00W,0" does not end a block.
    if (inBlock && Trim(line.substr(0, HeaderColumns)) == u"2") {
      break;
    }
    std::size_t field = 0;
    std::size_t start = 0;
    for (std::size_t comma = line.find(u','); comma != std::u16string_view::npos;
         comma = line.find(u',', start)) {
      std::u16string text = InitField(line.substr(start, comma - start));
      if (!tagMatched && text == versionTag) {
        table.Restart();
        table.Store(0, u"2");
        inBlock = true;
        tagMatched = true;
      }
      table.Store(field++, std::move(text));
      start = comma + 1;
    }
    std::u16string last = InitField(line.substr(start));
    if (last == AnyModelTag) {
      table.Restart();
      inBlock = true;
      tagMatched = true;
    }
    // Outside a block the last field is dropped, so that section rows without a block lack their item count.
    if (inBlock) {
      table.Store(field, std::move(last));
    } else if (field >= RowFields) {
      throw RunTimeFailure("a row of the initial settings file has more than nine fields");
    }
    table.NextRow();
  }
  if (!inBlock) {
    throw RunTimeFailure("the initial settings file has no block of the selected model");
  }
  return table.Take();
}

ParamStoreTable BuildStore(const std::vector<InitRow>& rows, std::int32_t& modeCheckOff) {
  ParamStoreTable store;
  const auto itemZero = [&]() -> ParamItem& {
    if (store.empty()) {
      throw RunTimeFailure("a field row before the first section row");
    }
    return store.back().Items.front();
  };
  for (const InitRow& row : rows) {
    const std::u16string& kind = FieldOf(row, 0);
    const std::u16string& recordKind = FieldOf(row, 3);
    if (kind == u"2") {
      modeCheckOff = RequireInt32(FieldOf(row, 2));
    } else if (kind == u"1") {
      store.push_back(SectionOf(row));
    } else if (kind == u"0" && recordKind == u"0") {
      itemZero().NumRecords.push_back(NumRecordOf(row));
    } else if (kind == u"0" && recordKind == u"1") {
      itemZero().TextRecords.push_back(TextRecordOf(row));
    }
  }
  CopyFirstItems(store);
  return store;
}

void ApplyItemDefaults() {
  const ItemRange measuring{0, Profile.ChannelCount};
  const ItemRange operation{Profile.FirstOperationChannel - 1, Profile.OperationChannelCount};
  SetColours(measuring, ColourOrderA);
  SetColours(operation, ModelCode == "KOV" ? ColourOrderB : ColourOrderA);
  SetDefaultTexts("C", operation, "TAG", ChannelTag);
  SetDefaultTexts("C", operation, "TAG2", EmptyTag);
  SetDefaultTexts("C", operation, "STAG", ChannelTag);
  SetDefaultTexts("C", measuring, "STAG", ChannelTag);
  SetDefaultTexts("C", measuring, "TAG", ChannelTag);
  SetDefaultTexts("C", measuring, "TAG2", EmptyTag);
  SetDefaultTexts("G", {0, Profile.GroupCount}, "GNEM", GroupName);
  for (int i = 0; i < operation.count; ++i) {
    SetDefault("C", operation.first + i, "RECO", 1);
  }
}

void LoadModelBlock() {
  const std::u16string text = FromCodePage(ReadRegularFile(ThePlatform().programFolder / "InitSet.Ini"));
  std::int32_t modeCheckOff = ModeCheckOff;
  ParamStoreTable store = BuildStore(ReadInitBlock(text, Widen(VersionTag)), modeCheckOff);
  ParamStore = std::move(store);
  ModeCheckOff = modeCheckOff;
  ApplyItemDefaults();
}

bool TakeProfileOf(std::string_view model) {
  const auto named = std::ranges::find(Models, model, &ModelNumbers::code);
  if (named == Models.end()) {
    return false;
  }
  TakeProfile(*named);
  return true;
}

void LoadModel(std::string_view model) {
  const ModelProfile profile = Profile;
  const std::string code = ModelCode;
  const std::string tag = VersionTag;
  try {
    if (!TakeProfileOf(model)) {
      throw RunTimeFailure("no such model: " + std::string(model));
    }
    LoadModelBlock();
  } catch (const RunTimeFailure&) {
    Profile = profile;
    ModelCode = code;
    VersionTag = tag;
    throw;
  }
}

bool gFLoadInitSetteiData() {
  // The whole load is one unit: any run-time failure inside it is a failed load.
  try {
    SelectModel();
    LoadModelBlock();
    return true;
  } catch (const RunTimeFailure&) {
    return false;
  }
}

bool RebuildStoreOrEnd() {
  if (gFLoadInitSetteiData()) {
    return true;
  }
  ShowMessage(LoadText(11005));
  ThePlatform().screens.EndProgram();
  return false;
}

std::string ReadWholeFile(const std::filesystem::path& file) {
  std::error_code error;
  std::ifstream in;
  if (IsFileName(file) && !std::filesystem::is_directory(file, error)) {
    in.open(file, std::ios::binary);
  }
  if (!in.is_open()) {
    throw RunTimeFailure("cannot open " + ToUtf8(PathText(file)));
  }
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) {
    throw RunTimeFailure("cannot read " + ToUtf8(PathText(file)));
  }
  return bytes;
}

std::string ReadRegularFile(const std::filesystem::path& file) {
  std::error_code error;
  if (!IsFileName(file) || !std::filesystem::is_regular_file(file, error)) {
    throw RunTimeFailure("not a regular file: " + ToUtf8(PathText(file)));
  }
  return ReadWholeFile(file);
}

std::vector<std::u16string_view> SplitLines(std::u16string_view text) {
  std::vector<std::u16string_view> lines;
  while (!text.empty()) {
    lines.push_back(TakeLine(text));
  }
  return lines;
}

} // namespace loader
