#include "files/TextOutput.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <system_error>

#include "channel/modUtil.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modMain.h"
#include "meaning/ParameterText.h"
#include "platform/Platform.h"
#include "platform/WholeFile.h"

namespace loader {

namespace {

// --- Values

void RequireItem(std::string_view sectionCode, int itemNumber) {
  const StoreIndex section = gFFindSection(sectionCode);
  const bool there = section != NotFound && itemNumber >= 0 &&
                     static_cast<std::size_t>(itemNumber) < ParamStore[section].Items.size();
  if (!there) {
    throw RunTimeFailure("a template names an item that does not exist");
  }
}

std::u16string SheetText(std::string_view sectionCode, int itemNumber, std::string_view tag) {
  RequireItem(sectionCode, itemNumber);
  const std::u16string text = ReportText(sectionCode, itemNumber, tag, View::Sheet);
  const bool ofText = FindTextRecord(sectionCode, itemNumber, tag) != nullptr;
  return ofText ? std::u16string(Trim(text)) : text;
}

// A recorder may hold a line break or a NUL in a text; each takes its column and no line.
std::string BytesOf(const std::u16string& text) {
  std::string bytes = ToCodePage(text);
  constexpr char Delete = 0x7F;
  std::ranges::replace_if(
      bytes, [](char c) { return (c >= 0 && c < ' ') || c == Delete; }, ' ');
  return bytes;
}

std::u16string DateTimeText() {
  const DateAndTime now = ThePlatform().clock.Now();
  return PaddedDecimal(now.year, 4) + u"/" + PaddedDecimal(now.month, 2) + u"/" + PaddedDecimal(now.day, 2) +
         u" " + PaddedDecimal(now.hour, 2) + u":" + PaddedDecimal(now.minute, 2) + u":" +
         PaddedDecimal(now.second, 2);
}

// --- One line; columns count from 0

constexpr char Quote = '"';
constexpr std::size_t LineBytes = 2048; // the last one is the NUL that ends the line
using LineBuffer = std::array<char, LineBytes>;

// A quoted word. The quote is no half of a full-width character, so bytes can be searched for it.
struct Field {
  std::size_t open;
  std::size_t close;
  std::string_view key; // trimmed
};

std::optional<Field> NextField(const LineBuffer& line, std::size_t from) {
  const std::string_view all(line.data(), line.size());
  const std::size_t open = all.find(Quote, from);
  if (open == std::string_view::npos) {
    return std::nullopt;
  }
  const std::size_t close = all.find(Quote, open + 1);
  if (close == std::string_view::npos) {
    return std::nullopt;
  }
  return Field{open, close, Trim(all.substr(open + 1, close - open - 1))};
}

struct FieldValue {
  std::string bytes;
  bool rightAligned = false;
};

// Nothing for a word that names no parameter.
std::optional<FieldValue> ValueOf(std::string_view key) {
  constexpr std::size_t NumberColumn = 1;
  constexpr std::size_t TagColumn = 3;
  if (key == "OUTPUTDATETIMESTRING") {
    return FieldValue{BytesOf(DateTimeText())};
  }
  const auto columns = [&](std::size_t first, std::size_t count) {
    return key.substr(std::min(first, key.size()), count);
  };
  const std::optional<std::int16_t> number =
      ParseInt16(Widen(columns(NumberColumn, TagColumn - NumberColumn)));
  if (!number) {
    return std::nullopt;
  }
  const std::string_view section = columns(0, 1);
  if (gFFindSection(section) == NotFound) {
    return std::nullopt;
  }
  const int item = *number - 1;
  const std::string_view tag = columns(TagColumn, TagWidth);
  const bool ofChannel = section == "C" || section == "A";
  const std::u16string text =
      ofChannel ? gFTextValueChannel(section, item, tag) : gFTextValueOther(section, item, tag);
  const bool ofNumber = FindTextRecord(section, item, tag) == nullptr;
  return FieldValue{BytesOf(text), ofNumber && NumericText(text).has_value()};
}

// Blanks the field and lays the value over the line; a value that is longer than its field overruns what
// stands there. Gives the column behind both: a quote that came with a value opens no field.
std::size_t LayValue(LineBuffer& line, const Field& field, const FieldValue& value) {
  constexpr std::size_t BlankBeforeQuote = 1;
  std::fill(line.begin() + static_cast<std::ptrdiff_t>(field.open),
            line.begin() + static_cast<std::ptrdiff_t>(field.close) + 1, ' ');
  std::size_t start = field.open;
  if (value.rightAligned) {
    const std::size_t end = field.close - BlankBeforeQuote;
    if (value.bytes.size() > end) {
      throw RunTimeFailure("a value begins before its line");
    }
    start = end - value.bytes.size();
  }
  const std::size_t end = start + value.bytes.size();
  if (end >= LineBytes) {
    throw RunTimeFailure("a value ends behind the longest line");
  }
  std::ranges::copy(value.bytes, line.begin() + static_cast<std::ptrdiff_t>(start));
  return std::max(end, field.close + 1);
}

std::string PrintedLine(std::string_view templateLine) {
  if (templateLine.size() >= LineBytes) {
    throw RunTimeFailure("a line of the template is too long");
  }
  LineBuffer line{}; // zeros: a value that goes beyond the line's end lengthens it
  std::ranges::copy(templateLine, line.begin());
  std::size_t from = 0;
  while (const std::optional<Field> field = NextField(line, from)) {
    const std::optional<FieldValue> value = ValueOf(field->key);
    if (!value) {
      break;
    }
    from = LayValue(line, *field, *value);
  }
  return std::string(line.data());
}

} // namespace

std::u16string gFChannelRangeText(int itemNumber, std::string_view tag) {
  return SheetText("C", itemNumber, tag);
}

std::u16string gFTextValueChannel(std::string_view sectionCode, int itemNumber, std::string_view tag) {
  return SheetText(sectionCode, itemNumber, tag);
}

std::u16string gFTextValueMail(std::string_view sectionCode, int itemNumber, std::string_view tag) {
  return SheetText(sectionCode, itemNumber, tag);
}

std::u16string gFTextValueOther(std::string_view sectionCode, int itemNumber, std::string_view tag) {
  return sectionCode == "X" ? gFTextValueMail(sectionCode, itemNumber, tag)
                            : SheetText(sectionCode, itemNumber, tag);
}

std::string PrintedSheet(std::string_view templateBytes) {
  std::string sheet;
  while (!templateBytes.empty()) {
    sheet += PrintedLine(TakeLine(templateBytes)) + "\r\n";
  }
  return sheet;
}

std::filesystem::path TemplateFile() {
  return ThePlatform().programFolder / ("Text" + ModelCode + ".Ini");
}

bool gFTextOutput(const std::filesystem::path& path) {
  const std::filesystem::path pattern = TemplateFile();
  std::error_code error;
  if (std::filesystem::equivalent(path, pattern, error)) {
    return false; // the sheet would take the place of its own template
  }
  try {
    return ReplaceFile(path, PrintedSheet(ReadRegularFile(pattern)), Neighbours::OfOthers);
  } catch (const RunTimeFailure&) {
    return false;
  } catch (const std::bad_alloc&) {
    return false; // a file larger than the memory is no template
  }
}

void WriteTextOutput() {
  CommonDialog dialog;
  dialog.Flags = AskBeforeOverwrite;
  dialog.CancelError = true;
  dialog.Filter = LoadText(10705);
  dialog.DialogTitle = LoadText(10017);
  if (ThePlatform().fileDialogs.ShowSave(dialog) != 0) {
    return; // cancelled
  }
  if (!gFTextOutput(PathOf(dialog.FileName))) {
    ShowMessage(LoadText(11002));
  }
}

} // namespace loader
