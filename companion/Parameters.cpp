#include "companion/Parameters.h"

#include <algorithm>
#include <array>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "meaning/ParameterText.h"

namespace loader {

namespace {

constexpr std::size_t KeyTagColumn = 3; // behind the section's letter and two digits

template <typename Records, typename Use>
void UseRecords(const ParamSection& section, int item, Records& records, const Use& use) {
  for (auto& record : records) {
    use(ParameterRef{std::string(Trim(section.Code)), item, std::string(Trim(record.Tag))}, record);
  }
}

// A channel and its alarms stand on the page of its kind of channel.
Page PageOfChannel(int item) {
  return item < Profile.FirstOperationChannel - 1 ? Page::Channels : Page::Operations;
}

struct SectionPage {
  std::string_view section;
  Page page;
};
// Those of channels are not here. What no section says is the recorder's own.
constexpr std::array<SectionPage, 18> SectionPages{{
    {"G", Page::Display},
    {"T", Page::Display},
    {"B", Page::Display},
    {"H", Page::General},
    {"M", Page::Display},
    {"U", Page::Display},
    {"D", Page::General},
    {"E", Page::General},
    {"N", Page::Operations},
    {"J", Page::Network},
    {"K", Page::Network},
    {"X", Page::Mail},
    {"L", Page::Unshown},
    {"Y", Page::Unshown},
    {"O", Page::Operations},
    {"I", Page::Unshown},
    {"Z", Page::Unshown},
    {"R", Page::Unshown},
}};

// Section J serves two pages: these tags of it are mail.
bool IsMailTag(std::string_view tag) {
  return tag == "SDAD" || tag == "SDNM" || tag == "MAIL" || tag.starts_with("RAD") || tag.starts_with("SIP");
}

} // namespace

StoredParameter FindParameter(const ParameterRef& ref) {
  if (ParamTextRecord* text = FindTextRecord(ref.section, ref.item, ref.tag)) {
    return {nullptr, text};
  }
  return {FindNumRecord(ref.section, ref.item, ref.tag), nullptr};
}

void ForEachParameter(const std::function<void(const ParameterRef&, const StoredParameter&)>& use) {
  for (ParamSection& section : ParamStore) {
    for (int item = 0; item < static_cast<int>(section.Items.size()); ++item) {
      ParamItem& records = section.Items[static_cast<std::size_t>(item)];
      UseRecords(section, item, records.TextRecords, [&](const ParameterRef& ref, ParamTextRecord& record) {
        use(ref, {nullptr, &record});
      });
      UseRecords(section, item, records.NumRecords, [&](const ParameterRef& ref, ParamNumRecord& record) {
        use(ref, {&record, nullptr});
      });
    }
  }
}

std::vector<ParameterRef> AllParameters() {
  std::vector<ParameterRef> all;
  ForEachParameter([&](const ParameterRef& ref, const StoredParameter&) { all.push_back(ref); });
  return all;
}

std::string KeyOf(const ParameterRef& ref) {
  return ref.section + Narrow(PaddedDecimal(ref.item, 2)) + ref.tag;
}

std::optional<ParameterRef> RefOfKey(std::string_view key) {
  const std::string_view trimmed = Trim(key);
  if (trimmed.size() <= KeyTagColumn || trimmed.size() > KeyTagColumn + TagWidth || trimmed[0] < 'A' ||
      trimmed[0] > 'Z') {
    return std::nullopt;
  }
  const std::string_view digits = trimmed.substr(1, KeyTagColumn - 1);
  if (!std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; })) {
    return std::nullopt;
  }
  return ParameterRef{std::string(trimmed.substr(0, 1)), (digits[0] - '0') * 10 + (digits[1] - '0'),
                      std::string(trimmed.substr(KeyTagColumn))};
}

std::optional<StoredValue> ValueOf(const ParameterRef& ref) {
  const StoredParameter found = FindParameter(ref);
  if (found.text != nullptr) {
    return std::u16string(TrimRight(found.text->Value));
  }
  return found.number == nullptr ? std::nullopt : std::optional<StoredValue>(found.number->Value);
}

std::vector<StoredValue> AllValues() {
  std::vector<StoredValue> values;
  for (const ParamSection& section : ParamStore) {
    for (const ParamItem& item : section.Items) {
      for (const ParamTextRecord& record : item.TextRecords) {
        values.emplace_back(std::u16string(TrimRight(record.Value)));
      }
      for (const ParamNumRecord& record : item.NumRecords) {
        values.emplace_back(record.Value);
      }
    }
  }
  return values;
}

std::u16string RawText(const StoredValue& value) {
  const auto* text = std::get_if<std::u16string>(&value);
  return text != nullptr ? *text : DecimalText(std::get<std::int16_t>(value));
}

std::u16string VisibleText(std::u16string_view text) {
  constexpr char16_t Signs = 0x2400; // of the characters below the blank, in their order
  constexpr char16_t Delete = 0x7F;
  constexpr char16_t SignOfDelete = 0x2421;
  constexpr char16_t LastControl = 0x9F;
  constexpr char16_t NoCharacter = 0xFFFD;
  std::u16string visible(text);
  for (char16_t& c : visible) {
    if (c < u' ') {
      c = static_cast<char16_t>(Signs + c);
    } else if (c == Delete) {
      c = SignOfDelete;
    } else if (c > Delete && c <= LastControl) {
      c = NoCharacter;
    }
  }
  return visible;
}

bool IsSecret(const ParameterRef& ref) {
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  return row != nullptr && row->meaning.secret;
}

std::u16string NameOf(const ParameterRef& ref, Language language) {
  return FullName(ref.section, ref.item, ref.tag, language);
}

std::u16string ReadableValue(const ParameterRef& ref, const Speech& speech) {
  const std::optional<StoredValue> value = ValueOf(ref);
  if (!value) {
    return {};
  }
  if (!speech.secrets && IsSecret(ref)) {
    return std::u16string(HiddenSecret);
  }
  std::u16string text = ReportText(ref.section, ref.item, ref.tag);
  // A view leaves a number outside of its limits blank; a report never hides a number that is there.
  const bool number = std::holds_alternative<std::int16_t>(*value);
  return number && Trim(text).empty() ? RawText(*value) : VisibleText(text);
}

Page PageOf(const ParameterRef& ref) {
  if (ref.section == "C" || ref.section == "A") {
    return PageOfChannel(ref.item);
  }
  if (ref.section == "J") {
    return IsMailTag(ref.tag) ? Page::Mail : Page::Network;
  }
  const auto found = std::ranges::find(SectionPages, ref.section, &SectionPage::section);
  return found == SectionPages.end() ? Page::Recorder : found->page;
}

std::u16string_view PageName(Page page, Language language) {
  constexpr std::array<Phrase, Pages> Names{Phrase::PageChannels, Phrase::PageOperations, Phrase::PageGeneral,
                                            Phrase::PageDisplay,  Phrase::PageNetwork,    Phrase::PageMail,
                                            Phrase::PageUnshown,  Phrase::PageRecorder};
  return PhraseText(Names.at(static_cast<std::size_t>(page)), language);
}

} // namespace loader
