#include "files/ParameterFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <limits>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/UserUnits.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "platform/FileName.h"
#include "platform/Platform.h"

namespace loader {

namespace {

constexpr std::string_view HeadKey = "LOADER";
constexpr std::string_view HeadLine = "LOADER ,V210\r\n";

// --- The writer

std::string LineOf(const ParamSection& section, int item, std::string_view tag, std::u16string_view value) {
  return std::string(Trim(std::string_view(section.Code))) + Narrow(PaddedDecimal(item, 2)) +
         std::string(tag) + "," + ToCodePage(value) + "\r\n";
}

// A line break that a recorder holds in a text would split its row, and the file would not open again.
std::u16string OneLine(std::u16string_view value) {
  std::u16string text(value);
  std::replace_if(
      text.begin(), text.end(), [](char16_t c) { return c == u'\r' || c == u'\n'; }, u' ');
  return text;
}

void WriteItem(std::ostream& out, const ParamSection& section, int number) {
  const ParamItem& item = section.Items[static_cast<std::size_t>(number)];
  for (const ParamTextRecord& record : item.TextRecords) {
    out << LineOf(section, number, record.Tag, TrimRight(OneLine(record.Value)));
  }
  for (const ParamNumRecord& record : item.NumRecords) {
    out << LineOf(section, number, record.Tag, DecimalText(record.Value));
  }
}

void WriteStore(std::ostream& out) {
  for (const ParamSection& section : ParamStore) {
    for (int item = 0; item < static_cast<int>(section.Items.size()); ++item) {
      WriteItem(out, section, item);
    }
  }
}

// --- The reader

std::string_view WithoutTrailingBlanks(std::string_view text) {
  const std::size_t last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

struct KeyAndValue {
  std::string_view key;
  std::string_view value;
};

// Split as bytes: neither the comma nor the blank can be half of a full-width character.
std::optional<KeyAndValue> SplitLine(std::string_view line) {
  const std::size_t comma = line.find(',');
  if (comma == std::string_view::npos) {
    return std::nullopt;
  }
  return KeyAndValue{WithoutTrailingBlanks(line.substr(0, comma)),
                     WithoutTrailingBlanks(line.substr(comma + 1))};
}

// What a line that cannot be laid breaks off with.
struct BadLine : RunTimeFailure {
  explicit BadLine(LineDefect defect) : RunTimeFailure("a bad line of a parameter file"), reason(defect) {}
  LineDefect reason;
};

struct ParameterLine {
  std::string_view section;
  std::int16_t item = 0;
  std::string_view tag; // trimmed
  std::u16string value;
  bool emptied = false; // by EmptyIfComma
};

// Why a text that is no number of 16 bits is none.
LineDefect NumberDefect(std::u16string_view text) {
  std::u16string_view digits = Trim(text);
  if (!digits.empty() && (digits.front() == u'+' || digits.front() == u'-')) {
    digits.remove_prefix(1);
  }
  return !digits.empty() && std::ranges::all_of(digits, IsDigit) ? LineDefect::Beyond16Bits
                                                                 : LineDefect::NotANumber;
}

std::int16_t NumberOf(std::u16string_view text) {
  const std::optional<std::int16_t> number = ParseInt16(text);
  if (!number) {
    throw BadLine(NumberDefect(text));
  }
  return *number;
}

// Everything but the item number: it may be none.
ParameterLine CutLine(const KeyAndValue& line, std::string_view& item) {
  constexpr std::size_t ItemColumn = 1; // from 0
  constexpr std::size_t TagColumn = 3;
  const auto columns = [&](std::size_t first, std::size_t count) {
    return line.key.substr(std::min(first, line.key.size()), count);
  };
  item = columns(ItemColumn, TagColumn - ItemColumn);
  return {columns(0, ItemColumn), 0, Trim(columns(TagColumn, TagWidth)), FromCodePage(line.value)};
}

// Older files keep a time of day as hours and minutes, each in a line of its own; the hours come first.
struct HourMemory {
  std::int16_t start = 0;
  std::int16_t stop = 0;
};

std::int16_t Checked16(std::int32_t number) {
  if (number < std::numeric_limits<std::int16_t>::min() ||
      number > std::numeric_limits<std::int16_t>::max()) {
    throw BadLine(LineDefect::TimeBeyond16Bits);
  }
  return static_cast<std::int16_t>(number);
}

std::u16string Minutes(std::int16_t hours, std::u16string_view minutes) {
  constexpr std::int32_t MinutesPerHour = 60;
  const std::int16_t ofHours = Checked16(hours * MinutesPerHour);
  return DecimalText(Checked16(ofHours + NumberOf(minutes)));
}

// A comma empties the text, deliberately, although the writer writes it as it is.
void EmptyIfComma(ParameterLine& line, HourMemory&) {
  if (line.value.find(u',') != std::u16string::npos) {
    line.value.clear();
    line.emptied = true;
  }
}

// Input kinds of older files.
void RenumberKind(ParameterLine& line, HourMemory&) {
  struct Renumbering {
    std::u16string_view old;
    std::u16string_view present;
  };
  constexpr std::array<Renumbering, 6> renumberings{
      {{u"13", u"20"}, {u"14", u"21"}, {u"15", u"30"}, {u"16", u"31"}, {u"17", u"32"}, {u"18", u"33"}}};
  const auto found = std::ranges::find(renumberings, line.value, &Renumbering::old);
  if (found != renumberings.end()) {
    line.value = found->present;
  }
}

void RememberStart(ParameterLine& line, HourMemory& hours) {
  hours.start = NumberOf(line.value);
}
void RememberStop(ParameterLine& line, HourMemory& hours) {
  hours.stop = NumberOf(line.value);
}
void StartInMinutes(ParameterLine& line, HourMemory& hours) {
  line.value = Minutes(hours.start, line.value);
}
void StopInMinutes(ParameterLine& line, HourMemory& hours) {
  line.value = Minutes(hours.stop, line.value);
}

// Older files switch the report cycle with the totalizer kind. The rule holds for present files too,
// deliberately: the kind is 1 after every open, and the cycle that a present file holds stands behind this
// line.
void TotalKindToCycle(ParameterLine& line, HourMemory&) {
  constexpr std::u16string_view NoReport = u"15";
  constexpr std::u16string_view Daily = u"0";
  // A store without report cycles has nothing to set.
  static_cast<void>(
      gFParamValue(line.section, line.item, "STYP", NumberOf(line.value) == 0 ? NoReport : Daily, SlotValue));
  line.value = u"1";
}

// What becomes of a line whose tag is `tag`: first its new tag and section, where it has one, then its value.
struct KeyRule {
  std::string_view tag;
  std::string_view newTag;
  std::string_view newSection;
  void (*onValue)(ParameterLine&, HourMemory&) = nullptr;
};
constexpr KeyRule KeyRules[] = {
    {"TPVM", "BPVM", "B"},
    {"BMEM", "TMEM", "T"},
    {"TAG", {}, {}, EmptyIfComma},
    {"TAG2", {}, {}, EmptyIfComma},
    {"GNEM", {}, {}, EmptyIfComma},
    {"MESS", {}, {}, EmptyIfComma},
    {"UNIT", {}, {}, EmptyIfComma},
    {"TYPE", {}, {}, RenumberKind},
    {"TTSH", {}, {}, RememberStart},
    {"TTSM", "TSTR", {}, StartInMinutes},
    {"TTEH", {}, {}, RememberStop},
    {"TTEM", "TSTO", {}, StopInMinutes},
    {"TOTA", {}, "Z"},
    {"TSTM", {}, "Z"},
    {"TSIG", {}, "Z"},
    {"SEKI", {}, {}, TotalKindToCycle},
};

// One look-up is enough for a line: no rule leads to the tag of another.
static_assert(std::ranges::none_of(KeyRules, [](const KeyRule& rule) {
  return std::ranges::find(KeyRules, rule.newTag, &KeyRule::tag) != std::ranges::end(KeyRules);
}));

void ApplyRule(ParameterLine& line, HourMemory& hours) {
  const auto rule = std::ranges::find(KeyRules, line.tag, &KeyRule::tag);
  if (rule == std::ranges::end(KeyRules)) {
    return;
  }
  line.tag = rule->newTag.empty() ? line.tag : rule->newTag;
  line.section = rule->newSection.empty() ? line.section : rule->newSection;
  if (rule->onValue != nullptr) {
    rule->onValue(line, hours);
  }
}

// Why the store does not have the parameter of a line.
LineDefect MissingParameter(const ParameterLine& line) {
  const StoreIndex section = gFFindSection(line.section);
  if (section == NotFound) {
    return LineDefect::UnknownSection;
  }
  const bool item = line.item >= 0 && static_cast<std::size_t>(line.item) < ParamStore[section].Items.size();
  return item ? LineDefect::UnknownTag : LineDefect::UnknownItem;
}

// Takes the line over into the store. What it is, so far as it is known, stays in `line` also when it is bad.
void LayLine(const KeyAndValue& parts, ParameterLine& line, HourMemory& hours) {
  std::string_view item;
  line = CutLine(parts, item);
  const std::optional<std::int16_t> number = ParseInt16(Widen(item));
  if (!number) {
    throw BadLine(LineDefect::ItemIsNoNumber);
  }
  line.item = *number;
  ApplyRule(line, hours);
  bool laid = false;
  try {
    laid = gFParamValue(line.section, line.item, line.tag, line.value, SlotValue);
  } catch (const RunTimeFailure&) { // the one failure of the setter: a number that is none
    throw BadLine(NumberDefect(line.value));
  }
  if (!laid) {
    throw BadLine(MissingParameter(line));
  }
}

// What the text of a line has lost on its way into the store, though it was laid.
std::optional<LineDefect> LossOf(const ParameterLine& line) {
  if (line.emptied) {
    return LineDefect::TextWithComma;
  }
  const bool cut =
      line.value.size() > TextWidth && FindTextRecord(line.section, line.item, line.tag) != nullptr;
  return cut ? std::optional(LineDefect::TextBeyond64Characters) : std::nullopt;
}

FileDefect DefectOf(LineDefect reason, std::size_t number, const KeyAndValue& parts,
                    const ParameterLine& line) {
  return {reason,
          number,
          std::string(parts.key),
          FromCodePage(parts.value),
          std::string(line.section),
          line.item,
          std::string(line.tag)};
}

// One pass over the lines of a file, which ends at its first bad line unless somebody wants to hear of all.
class FileReader {
public:
  FileReader(const DefectSink& sink, const LineSink& laid) : sink_(sink), laid_(laid) {}

  bool Read(std::string_view bytes) {
    // Every line is split before the first one is laid: a file that is no parameter file changes nothing.
    if (!EveryLineSplits(bytes)) {
      if (!sink_) {
        return false;
      }
      Break();
    }
    HourMemory hours;
    for (std::size_t number = 1; !bytes.empty() && (!broken_ || sink_); ++number) {
      ReadLine(number, TakeLine(bytes), hours);
    }
    // Behind its first bad line a file is looked at, no more.
    if (broken_ && sink_) {
      ParamStore = std::move(storeAtBreak_);
    }
    return !broken_;
  }

private:
  static bool EveryLineSplits(std::string_view bytes) {
    while (!bytes.empty()) {
      if (!SplitLine(TakeLine(bytes))) {
        return false;
      }
    }
    return true;
  }

  void Break() {
    if (!broken_ && sink_) {
      storeAtBreak_ = ParamStore;
    }
    broken_ = true;
  }

  void ReadLine(std::size_t number, std::string_view text, HourMemory& hours) {
    const std::optional<KeyAndValue> parts = SplitLine(text);
    if (!parts) {
      sink_(DefectOf(LineDefect::NoComma, number, {WithoutTrailingBlanks(text), {}}, {}));
      return;
    }
    // The head is skipped wherever it stands and whatever version it names: there is no version gate.
    if (parts->key == HeadKey) {
      return;
    }
    ParameterLine line;
    try {
      LayLine(*parts, line, hours);
      const std::optional<LineDefect> loss = sink_ ? LossOf(line) : std::nullopt;
      if (loss) {
        sink_(DefectOf(*loss, number, *parts, line));
      }
      if (laid_) {
        laid_({number, parts->key, parts->value, line.section, line.item, line.tag, line.value});
      }
    } catch (const BadLine& bad) {
      Break();
      if (sink_) {
        sink_(DefectOf(bad.reason, number, *parts, line));
      }
    }
  }

  const DefectSink& sink_;
  const LineSink& laid_;
  bool broken_ = false;
  ParamStoreTable storeAtBreak_;
};

// --- The flows

CommonDialog FileDialogOfModel(TextId title) {
  CommonDialog dialog;
  dialog.Flags = AskBeforeOverwrite;
  dialog.CancelError = true;
  if (ModelCode == "KOV") {
    dialog.Filter = LoadText(10703);
  } else if (ModelCode == "RUG") {
    dialog.Filter = LoadText(10704);
  }
  dialog.DialogTitle = LoadText(title);
  return dialog;
}

// A new file, or a regular one. A pipe whose other end nobody reads would hold up the opening for ever.
bool MayBeSavedTo(const std::filesystem::path& path) {
  if (!IsFileName(path)) {
    return false;
  }
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (status.type() != std::filesystem::file_type::regular) {
    return status.type() == std::filesystem::file_type::not_found;
  }
  return !IsMadeReadOnly(status);
}

} // namespace

bool gFSaveParamFile(const std::filesystem::path& path) {
  if (!MayBeSavedTo(path)) {
    return false;
  }
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << HeadLine << std::flush; // flushed, so that its failure is seen
  if (!out) {
    return false;
  }
  WriteStore(out);
  return true;
}

std::string ParamFileBytes() {
  std::ostringstream out;
  out << HeadLine;
  WriteStore(out);
  return std::move(out).str();
}

Replacement SaveParamFileProved(const std::filesystem::path& path) {
  if (path.empty()) {
    return Replacement::NoFile;
  }
  return ReplaceFileProved(path, ParamFileBytes(), Neighbours::OfOthers);
}

bool LoadParamBytes(std::string_view bytes, const DefectSink& sink, const LineSink& laid) {
  return FileReader(sink, laid).Read(bytes);
}

bool IsHeadLine(std::string_view line) {
  const std::optional<KeyAndValue> parts = SplitLine(line);
  return parts && parts->key == HeadKey;
}

bool gFLoadParamFile(const std::filesystem::path& path) {
  try {
    return LoadParamBytes(ReadRegularFile(path));
  } catch (const RunTimeFailure&) {
    return false;
  } catch (const std::bad_alloc&) {
    return false; // a file larger than the memory is no parameter file
  }
}

void OpenParameterFile(const std::function<void()>& refresh) {
  CommonDialog dialog = FileDialogOfModel(10015);
  if (ThePlatform().fileDialogs.ShowOpen(dialog) != 0) {
    return; // cancelled
  }
  OpenParameterFile(PathOf(dialog.FileName), refresh);
}

void OpenParameterFile(const std::filesystem::path& path, const std::function<void()>& refresh) {
  if (!RebuildStoreOrEnd()) {
    return;
  }
  if (gFLoadParamFile(path)) {
    UpdateUserUnitNames();
  } else {
    ShowMessage(LoadText(11003));
    if (!RebuildStoreOrEnd()) {
      return;
    }
  }
  refresh();
}

void SaveParameterFile() {
  CommonDialog dialog = FileDialogOfModel(10016);
  if (ThePlatform().fileDialogs.ShowSave(dialog) != 0) {
    return; // cancelled
  }
  if (!gFSaveParamFile(PathOf(dialog.FileName))) {
    ShowMessage(LoadText(11002));
  }
}

} // namespace loader
