#include "meaning/Meaning.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "meaning/MeaningRows.h"

namespace loader {

namespace {

constexpr char AnyDigit = '#';

// Whether the tag is the pattern, or one of the family that it stands for.
constexpr bool IsOf(std::string_view tag, std::string_view pattern) {
  return tag.size() == pattern.size() &&
         std::equal(tag.begin(), tag.end(), pattern.begin(), [](char own, char wanted) {
           return own == wanted || (wanted == AnyDigit && IsDigit(static_cast<char16_t>(own)));
         });
}

// The digits that the family leaves open, in their order: "22" of S122 for "S1##".
std::string FamilyDigits(std::string_view tag, std::string_view pattern) {
  std::string digits;
  for (std::size_t at = 0; at < std::min(tag.size(), pattern.size()); ++at) {
    if (pattern[at] == AnyDigit) {
      digits += tag[at];
    }
  }
  return digits;
}

std::u16string WithDigits(std::u16string words, std::string_view digits) {
  std::size_t next = 0;
  for (char16_t& character : words) {
    if (character == AnyDigit && next < digits.size()) {
      character = static_cast<char16_t>(digits[next++]);
    }
  }
  return words;
}

MeaningRow WithItsForms(const Meaning& meaning) {
  MeaningRow row{meaning, {}};
  row.forms.fill({meaning.sense, meaning.choices, meaning.number});
  for (const Difference& difference : Differences()) {
    if (difference.section == meaning.section && difference.tag == meaning.tag) {
      row.forms[static_cast<std::size_t>(difference.view)] = {difference.sense, difference.choices,
                                                              difference.number};
    }
  }
  return row;
}

std::vector<MeaningRow> MakeTable() {
  std::vector<MeaningRow> table;
  table.reserve(MeaningRows().size());
  for (const Meaning& meaning : MeaningRows()) {
    table.push_back(WithItsForms(meaning));
  }
  return table;
}

// The rows of a section stand together.
std::span<const MeaningRow> RowsOfSection(std::string_view code) {
  using Extents = std::array<std::span<const MeaningRow>, 'Z' - 'A' + 1>;
  static const Extents extents = [] {
    Extents found;
    for (const MeaningRow& row : Meanings()) {
      auto& extent = found.at(static_cast<std::size_t>(row.meaning.section.front() - 'A'));
      extent = extent.empty() ? std::span(&row, 1) : std::span(extent.data(), extent.size() + 1);
    }
    return found;
  }();
  return code.size() == 1 && code.front() >= 'A' && code.front() <= 'Z'
             ? extents[static_cast<std::size_t>(code.front() - 'A')]
             : std::span<const MeaningRow>();
}

// --- Names

using enum OwnTextId;

constexpr SectionNames SectionTable[] = {
    {"C", ItemChannel, "a channel: measuring channels, then operation channels"},
    {"A", ItemChannel, "the alarms of a channel"},
    {"G", ItemGroup, "a display group"},
    {"T", ItemGroup, "the trend of a display group"},
    {"B", ItemGroup, "the bar graph or meter of a display group"},
    {"H", std::nullopt, "the general settings"},
    {"M", ItemMessage, "a message"},
    {"U", ItemUnit, "a user unit"},
    {"D", DigitalInput, "a digital input"},
    {"E", std::nullopt, "the timing of the totalizer"},
    {"N", ItemConstant, "a constant"},
    {"O", ItemChannel, "the formula of an operation channel"},
    {"J", std::nullopt, "the network settings"},
    {"K", ItemUser, "a user account"},
    {"X", ItemMailTrigger, "an e-mail trigger"},
    {"L", std::nullopt, "the serial master"},
    {"Y", ItemSlave, "a slave of the serial master"},
    {"P", std::nullopt, "the device identity"},
    {"I", DigitalInput, "the recording of a digital input"},
    {"Z", std::nullopt, "the switches of the totalizer"},
    {"R", std::nullopt, "nothing: a code that text templates may name"},
    {"F", std::nullopt, "the command that stores the settings"},
    {"S", std::nullopt, "the state of the recorder"},
};

std::u16string CaptionOr(int caption, std::optional<OwnTextId> own) {
  if (caption != 0) {
    return OneLine(LoadText(TextId::At(caption)));
  }
  return own ? std::u16string(OwnText(*own)) : std::u16string();
}

std::u16string JapaneseName(const ParameterNames& names) {
  const std::u16string group = CaptionOr(names.group, names.ownGroup);
  const std::u16string label = CaptionOr(names.label, names.ownLabel);
  return group.empty() ? label : group + u" " + label;
}

std::u16string EnglishName(const ParameterNames& names) {
  if (names.english.empty() && names.ownLabel) {
    return std::u16string(OwnTextEnglish(*names.ownLabel));
  }
  return FromUtf8(names.english);
}

} // namespace

std::span<const MeaningRow> Meanings() {
  static const std::vector<MeaningRow> table = MakeTable();
  return table;
}

const MeaningRow* FindMeaning(std::string_view section, std::string_view tag) {
  const std::string_view code = Trim(section);
  const std::string_view name = Trim(tag);
  for (const MeaningRow& row : RowsOfSection(code)) {
    if (IsOf(name, row.meaning.tag)) {
      return &row;
    }
  }
  return nullptr;
}

const MeaningRow& MeaningOf(std::string_view section, std::string_view tag) {
  const MeaningRow* row = FindMeaning(section, tag);
  if (row == nullptr) {
    throw std::logic_error("no meaning for " + std::string(section) + " " + std::string(tag));
  }
  return *row;
}

bool IsPrinted(const Meaning& meaning) {
  return meaning.printed == Printed::Always || (meaning.printed == Printed::OnKov && ModelCode == "KOV");
}

std::span<const SectionNames> Sections() {
  return SectionTable;
}

std::u16string ParameterName(const Meaning& meaning, std::string_view tag, Language language) {
  const std::u16string name =
      language == Language::Japanese ? JapaneseName(meaning.names) : EnglishName(meaning.names);
  if (name.empty()) {
    return Widen(Trim(tag));
  }
  const std::string digits = FamilyDigits(Trim(tag), meaning.tag);
  const bool told = digits.empty() || name.find(AnyDigit) != std::u16string::npos;
  return told ? WithDigits(name, digits) : name + u" " + Widen(digits);
}

std::u16string ItemName(std::string_view section, int item, Language language) {
  const auto names = std::ranges::find(SectionTable, section, &SectionNames::code);
  if (names == std::ranges::end(SectionTable) || !names->item) {
    return {};
  }
  // A formula is told by the number of its channel, as everything else of it is.
  const int number = section == "O" ? Profile.FirstOperationChannel + item : item + 1;
  return std::u16string(language == Language::Japanese ? OwnText(*names->item)
                                                       : OwnTextEnglish(*names->item)) +
         DecimalText(number);
}

std::u16string FullName(std::string_view section, int item, std::string_view tag, Language language) {
  const std::u16string name = ItemName(Trim(section), item, language);
  const MeaningRow* row = FindMeaning(section, tag);
  const std::u16string parameter = row == nullptr ? Widen(Trim(section)) + u" " + Widen(Trim(tag))
                                                  : ParameterName(row->meaning, tag, language);
  return name.empty() ? parameter : name + u" " + parameter;
}

} // namespace loader
