#include "conversion/modModelChng.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <string_view>

#include "core/Text.h"
#include "operation/Formula.h"

namespace loader {

namespace {

constexpr int Highest = std::numeric_limits<int>::max();

// --- What becomes of a number that refers to something

enum class Change { Keep, Move, Clear };

// Values up to `last`, from the end of the row before.
struct ValueBand {
  int last;
  Change change;
  int by = 0;
};
using Bands = std::span<const ValueBand>;

// RUG has 18 measuring channels more, before the operation channels.
constexpr ValueBand ChannelNumberUp[]{{18, Change::Keep}, {Highest, Change::Move, 18}};
constexpr ValueBand ChannelNumberDown[]{
    {18, Change::Keep}, {36, Change::Clear}, {48, Change::Move, -18}, {Highest, Change::Clear}};
// The same counted from 0.
constexpr ValueBand ChannelIndexUp[]{{17, Change::Keep}, {Highest, Change::Move, 18}};
constexpr ValueBand ChannelIndexDown[]{
    {17, Change::Keep}, {35, Change::Clear}, {47, Change::Move, -18}, {Highest, Change::Clear}};
// External inputs: the DI, 10 or 16, then four alarms of each channel.
constexpr ValueBand ExternalUp[]{{9, Change::Keep}, {81, Change::Move, 6}, {Highest, Change::Move, 72 + 6}};
constexpr ValueBand ExternalDown[]{{9, Change::Keep},    {15, Change::Clear},      {87, Change::Move, -6},
                                   {159, Change::Clear}, {207, Change::Move, -78}, {Highest, Change::Clear}};
constexpr ValueBand RelayDown[]{{28, Change::Keep}, {Highest, Change::Clear}};
constexpr ValueBand DigitalInputDown[]{{9, Change::Keep}, {Highest, Change::Clear}};
constexpr ValueBand CommInputDown[]{{11, Change::Keep}, {Highest, Change::Clear}};
constexpr ValueBand ConstantDown[]{{19, Change::Keep}, {Highest, Change::Clear}};

// --- The actions of the tags

// Which bands hold is decided by another number: the timing of a trigger, the kind of a formula's input. A
// number without a row here keeps the value as it is.
struct BandsOf {
  int first;
  int last;
  Bands bands;
};

constexpr BandsOf TimingDown[]{{1, 2, DigitalInputDown}, {3, 4, ChannelIndexDown}};
constexpr BandsOf InputKindUp[]{{0, 1, ChannelIndexUp}};
constexpr BandsOf InputKindDown[]{
    {0, 1, ChannelIndexDown}, {2, 2, DigitalInputDown}, {3, 3, CommInputDown}, {4, 4, ConstantDown}};

enum class Action {
  ByValue,      // bands
  ByTiming,     // choice, by the record just before in the item
  ByInputKind,  // choice: the high byte is the kind, the bands hold for the low one
  NotCarried,   // settings of a KOV only
  ToTheSameItem // unchanged, whatever the offset
};

struct TagAction {
  std::span<const std::string_view> tags;
  Action action;
  Bands bands = {};
  std::span<const BandsOf> choice = {};
};

constexpr std::string_view ChannelNumberTags[]{"SUBC", "GC01", "GC02", "GC03", "GC04", "GC05",
                                               "GC06", "GC07", "GC08", "GC09", "GC10"};
constexpr std::string_view ChannelIndexTags[]{"OTCH"};
constexpr std::string_view TriggerTags[]{"MTM2", "ETG1"};
constexpr std::string_view ExternalTags[]{"SDIG", "TEXT"};
constexpr std::string_view RelayTags[]{"A1RL", "A2RL", "A3RL", "A4RL", "CFFL", "BAAL"};
constexpr std::string_view OperandTags[]{"S111", "S112", "S113", "S121", "S122", "S123", "S131", "S132",
                                         "S133", "S141", "S142", "S143", "S211", "S212", "S213", "S221",
                                         "S222", "S223", "S231", "S232", "S233", "S241", "S242", "S243"};
constexpr std::string_view KovTags[]{"SRIN", "TAIS", "TBKC", "HBKC"};
constexpr std::string_view DigitalInputTags[]{"DIKI"};

// What is in no row is carried unchanged, deliberately also TMCH and A1HC to A4HC, which name channels.
constexpr TagAction ActionsUp[]{
    {ChannelNumberTags, Action::ByValue, ChannelNumberUp},
    {ChannelIndexTags, Action::ByValue, ChannelIndexUp},
    // Deliberately whatever the timing is.
    {TriggerTags, Action::ByValue, ChannelIndexUp},
    {ExternalTags, Action::ByValue, ExternalUp},
    {OperandTags, Action::ByInputKind, {}, InputKindUp},
    {KovTags, Action::NotCarried},
};
constexpr TagAction ActionsDown[]{
    {ChannelNumberTags, Action::ByValue, ChannelNumberDown},
    {ChannelIndexTags, Action::ByValue, ChannelIndexDown},
    {ExternalTags, Action::ByValue, ExternalDown},
    {RelayTags, Action::ByValue, RelayDown},
    {TriggerTags, Action::ByTiming, {}, TimingDown},
    {OperandTags, Action::ByInputKind, {}, InputKindDown},
    {DigitalInputTags, Action::ToTheSameItem},
};
using TagActions = std::span<const TagAction>;

// --- The walk

enum class Steps { None, Texts, Numbers, TextsAndNumbers };

constexpr int DroppedOffset = 99;

// Items up to `last`, from the end of the row before.
struct ItemBand {
  int last;
  int offset;
};

// The sections of these letters; the row without letters is for all others and stands last.
struct WalkRow {
  std::string_view letters;
  Steps steps;
  std::span<const ItemBand> items;
};

constexpr ItemBand SameItems[]{{Highest, 0}};
constexpr ItemBand ChannelsUp[]{{17, 0}, {Highest, 18}};
constexpr ItemBand ChannelsDown[]{{17, 0}, {35, DroppedOffset}, {47, -18}, {Highest, DroppedOffset}};
constexpr ItemBand FirstTwelve[]{{11, 0}, {Highest, DroppedOffset}};
constexpr ItemBand FirstTwenty[]{{19, 0}, {Highest, DroppedOffset}};
constexpr ItemBand FirstFour[]{{3, 0}, {Highest, DroppedOffset}};

constexpr WalkRow WalkUp[]{
    {"C", Steps::TextsAndNumbers, ChannelsUp},
    {"A", Steps::Numbers, ChannelsUp},
    {"GMJKX", Steps::TextsAndNumbers, SameItems},
    {"UP", Steps::Texts, SameItems},
    {"ILY", Steps::None, SameItems},
    {"", Steps::Numbers, SameItems},
};
constexpr WalkRow WalkDown[]{
    {"C", Steps::TextsAndNumbers, ChannelsDown},
    {"A", Steps::Numbers, ChannelsDown},
    {"O", Steps::Numbers, FirstTwelve},
    {"N", Steps::Numbers, FirstTwenty},
    {"G", Steps::TextsAndNumbers, FirstFour},
    {"TB", Steps::Numbers, FirstFour},
    {"MJKX", Steps::TextsAndNumbers, SameItems},
    {"UP", Steps::Texts, SameItems},
    {"ILY", Steps::None, SameItems},
    {"", Steps::Numbers, SameItems},
};

// --- One value

struct NewNumber {
  Outcome outcome;
  int value;
};

NewNumber InBands(Bands bands, int value) {
  for (const ValueBand& band : bands) {
    if (value <= band.last) {
      switch (band.change) {
      case Change::Keep:
        return {Outcome::Carried, value};
      case Change::Move:
        return {Outcome::Renumbered, value + band.by};
      case Change::Clear:
        return {Outcome::Cleared, 0};
      }
    }
  }
  return {Outcome::Carried, value};
}

Bands BandsFor(std::span<const BandsOf> choice, int decider) {
  for (const BandsOf& row : choice) {
    if (decider >= row.first && decider <= row.last) {
      return row.bands;
    }
  }
  return {};
}

NewNumber FormulaOperand(std::span<const BandsOf> choice, std::int16_t value) {
  const FormulaBytes input = FormulaSplit(value); // kind and number
  const NewNumber number = InBands(BandsFor(choice, input.high), input.low);
  constexpr int HighestByte = 255;
  if (number.value > HighestByte) {
    return {Outcome::NotCarried, 0}; // it would run over into the kind, and name something else
  }
  return {number.outcome, FormulaCompose(input.high, number.value)};
}

const TagAction* ActionOf(TagActions actions, std::string_view tag) {
  for (const TagAction& row : actions) {
    if (std::ranges::find(row.tags, tag) != row.tags.end()) {
      return &row;
    }
  }
  return nullptr;
}

// `records` are those of the item; the one at `at` is converted.
NewNumber Converted(const TagAction* action, std::span<const ParamNumRecord> records, std::size_t at) {
  const std::int16_t value = records[at].Value;
  if (action == nullptr) {
    return {Outcome::Carried, value};
  }
  switch (action->action) {
  case Action::ByValue:
    return InBands(action->bands, value);
  case Action::ByTiming:
    return at == 0 ? NewNumber{Outcome::Carried, value}
                   : InBands(BandsFor(action->choice, records[at - 1].Value), value);
  case Action::ByInputKind:
    return FormulaOperand(action->choice, value);
  case Action::NotCarried:
    return {Outcome::NotCarried, value};
  case Action::ToTheSameItem:
    break;
  }
  return {Outcome::Carried, value};
}

bool FitsIn16Bits(int value) {
  return value >= std::numeric_limits<std::int16_t>::min() &&
         value <= std::numeric_limits<std::int16_t>::max();
}

// --- One parameter

ParameterValue ValueOf(const ParamNumRecord& record) {
  return record.Value;
}
ParameterValue ValueOf(const ParamTextRecord& record) {
  return std::u16string(TrimRight(record.Value));
}
bool IsChanged(const ParamNumRecord& record) {
  return record.Value != record.DefaultValue;
}
bool IsChanged(const ParamTextRecord& record) {
  return record.Value != record.DefaultValue;
}
ParamNumRecord* TargetOf(const ParamNumRecord& record, std::string_view section, int item) {
  return FindNumRecord(section, item, record.Tag);
}
ParamTextRecord* TargetOf(const ParamTextRecord& record, std::string_view section, int item) {
  return FindTextRecord(section, item, record.Tag);
}

const ParamItem* OldItem(int section, int item) {
  if (section < 0 || static_cast<std::size_t>(section) >= ParamStoreBackup.size() || item < 0) {
    return nullptr;
  }
  const std::vector<ParamItem>& items = ParamStoreBackup[static_cast<std::size_t>(section)].Items;
  return static_cast<std::size_t>(item) < items.size() ? &items[static_cast<std::size_t>(item)] : nullptr;
}

bool HasNewItem(std::string_view section, int item) {
  const StoreIndex index = gFFindSection(section);
  return index != NotFound && item >= 0 && static_cast<std::size_t>(item) < ParamStore[index].Items.size();
}

// Where a parameter of the old set-up comes from and goes to.
struct Passage {
  int section; // in ParamStoreBackup
  int item;
  std::string_view newSection;
  int newItem;
};

// What the old set-up's parameter meets in the new one can only take it further away.
Outcome OutcomeIn(bool hasItem, bool hasRecord, Outcome wanted) {
  if (wanted == Outcome::NotCarried || wanted == Outcome::Dropped) {
    return wanted;
  }
  return !hasItem ? Outcome::Dropped : hasRecord ? wanted : Outcome::NotCarried;
}

// The line of the report, once the store holds what it is to hold.
template <typename Record>
void Report(const Passage& way, const Record& old, Outcome outcome, ConversionReport& report) {
  const bool hasItem = HasNewItem(way.newSection, way.newItem);
  const Record* target = hasItem ? TargetOf(old, way.newSection, way.newItem) : nullptr;
  ConvertedParameter line;
  line.section = Trim(std::string_view(ParamStoreBackup[static_cast<std::size_t>(way.section)].Code));
  line.item = way.item;
  line.tag = Trim(std::string_view(old.Tag));
  line.oldValue = ValueOf(old);
  line.outcome = OutcomeIn(hasItem, target != nullptr, outcome);
  if (hasItem) {
    line.newItem = way.newItem;
  }
  if (target != nullptr) {
    line.newValue = ValueOf(*target);
  }
  report.push_back(std::move(line));
}

void CarryNumRecords(TagActions actions, int section, int item, int offset, char sectionLetter,
                     ConversionReport& report) {
  const ParamItem* old = OldItem(section, item);
  if (old == nullptr) {
    return;
  }
  const std::string_view newSection(&sectionLetter, 1);
  for (std::size_t at = 0; at < old->NumRecords.size(); ++at) {
    const ParamNumRecord& record = old->NumRecords[at];
    if (!IsChanged(record)) {
      continue; // the new model keeps its own default
    }
    const TagAction* action = ActionOf(actions, Trim(std::string_view(record.Tag)));
    const bool sameItem = action != nullptr && action->action == Action::ToTheSameItem;
    const Passage way{section, item, newSection, sameItem ? item : item + offset};
    NewNumber number = Converted(action, old->NumRecords, at);
    if (!FitsIn16Bits(number.value)) {
      number.outcome = Outcome::NotCarried;
    }
    ParamNumRecord* target = TargetOf(record, newSection, way.newItem);
    if (target != nullptr && number.outcome != Outcome::NotCarried) {
      SetNumber(*target, static_cast<std::int16_t>(number.value), SlotValue);
    }
    Report(way, record, number.outcome, report);
  }
}

// --- The items

template <typename Record>
void ReportChanged(const std::vector<Record>& records, const Passage& way, Outcome outcome,
                   ConversionReport& report) {
  for (const Record& record : records) {
    if (IsChanged(record)) {
      Report(way, record, outcome, report);
    }
  }
}

// A dropped item is no item of the new set-up, whatever lies there.
constexpr int NoItem = -1;

const WalkRow& WalkRowOf(std::span<const WalkRow> walk, char letter) {
  return *std::ranges::find_if(walk, [letter](const WalkRow& row) {
    return row.letters.empty() || row.letters.find(letter) != std::string_view::npos;
  });
}

int OffsetOf(std::span<const ItemBand> bands, int item) {
  return std::ranges::find_if(bands, [item](const ItemBand& band) { return item <= band.last; })->offset;
}

bool HasTextStep(Steps steps) {
  return steps == Steps::Texts || steps == Steps::TextsAndNumbers;
}
bool HasNumberStep(Steps steps) {
  return steps == Steps::Numbers || steps == Steps::TextsAndNumbers;
}

using CarryNumbers = void (*)(int section, int item, int offset, char sectionLetter,
                              ConversionReport& report);

void WalkItem(const WalkRow& row, CarryNumbers carryNumbers, int section, int item, char letter,
              ConversionReport& report) {
  const ParamItem& old = *OldItem(section, item);
  const int offset = OffsetOf(row.items, item);
  const std::string_view newSection(&letter, 1);
  const bool dropped = offset == DroppedOffset;
  const Passage passedOver{section, item, newSection, dropped ? NoItem : item + offset};
  const Outcome left = dropped ? Outcome::Dropped : Outcome::NotCarried;
  if (HasTextStep(row.steps) && !dropped) {
    CopyTextRecords(section, item, offset, letter, report);
  } else {
    ReportChanged(old.TextRecords, passedOver, left, report);
  }
  if (HasNumberStep(row.steps) && !dropped) {
    carryNumbers(section, item, offset, letter, report);
  } else {
    ReportChanged(old.NumRecords, passedOver, left, report);
  }
}

ConversionReport Walk(std::span<const WalkRow> walk, CarryNumbers carryNumbers) {
  ConversionReport report;
  for (std::size_t section = 0; section < ParamStoreBackup.size(); ++section) {
    const std::string& code = ParamStoreBackup[section].Code;
    const char letter = code.empty() ? ' ' : code.front();
    const WalkRow& row = WalkRowOf(walk, letter);
    for (std::size_t item = 0; item < ParamStoreBackup[section].Items.size(); ++item) {
      WalkItem(row, carryNumbers, static_cast<int>(section), static_cast<int>(item), letter, report);
    }
  }
  return report;
}

} // namespace

void CopyTextRecords(int section, int item, int offset, char sectionLetter, ConversionReport& report) {
  const ParamItem* old = OldItem(section, item);
  if (old == nullptr) {
    return;
  }
  const Passage way{section, item, std::string_view(&sectionLetter, 1), item + offset};
  for (const ParamTextRecord& record : old->TextRecords) {
    if (!IsChanged(record)) {
      continue;
    }
    if (ParamTextRecord* target = TargetOf(record, way.newSection, way.newItem)) {
      SetText(*target, record.Value, SlotValue);
    }
    Report(way, record, Outcome::Carried, report);
  }
}

void CarryNumRecordsUp(int section, int item, int offset, char sectionLetter, ConversionReport& report) {
  CarryNumRecords(ActionsUp, section, item, offset, sectionLetter, report);
}

void CarryNumRecordsDown(int section, int item, int offset, char sectionLetter, ConversionReport& report) {
  CarryNumRecords(ActionsDown, section, item, offset, sectionLetter, report);
}

ConversionReport ConvertToRug() {
  return Walk(WalkUp, CarryNumRecordsUp);
}

ConversionReport ConvertToKov() {
  return Walk(WalkDown, CarryNumRecordsDown);
}

} // namespace loader
