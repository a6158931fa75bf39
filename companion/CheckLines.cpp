// A file and its lines: what a check tells before it looks at values.
#include <array>
#include <utility>

#include "companion/CheckParts.h"
#include "core/Text.h"
#include "core/modFile.h"

namespace loader::check {

namespace {

constexpr std::size_t KeyColumns = 7; // letter, two digits, tag
constexpr std::size_t TagColumn = 3;
constexpr std::size_t MostLooked = 1000; // bytes of a value that is shown: it is cut anyway

constexpr bool IsControl(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code < 0x20 || code == 0x7F;
}

std::u16string HexOf(char byte) {
  constexpr std::u16string_view Digits = u"0123456789ABCDEF";
  const auto code = static_cast<unsigned char>(byte);
  return {Digits[code >> 4], Digits[code & 0xF]};
}

// --- Encodings

bool IsUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

// More control characters than any text has, damaged or not.
bool IsBinary(std::string_view bytes) {
  constexpr std::size_t OneIn = 20;
  const auto controls = std::ranges::count_if(
      bytes, [](char byte) { return IsControl(byte) && byte != '\r' && byte != '\n' && byte != '\t'; });
  return static_cast<std::size_t>(controls) * OneIn > bytes.size();
}

// How many bytes follow the first one of a character in UTF-8; -1: it is no first byte.
int FollowersOf(unsigned char first) {
  if (first < 0x80) {
    return 0;
  }
  if (first >= 0xC2 && first < 0xE0) {
    return 1;
  }
  if (first >= 0xE0 && first < 0xF0) {
    return 2;
  }
  return first >= 0xF0 && first < 0xF5 ? 3 : -1;
}

// Whether the bytes are UTF-8 with Japanese in it, whose characters have three bytes there. A text of code
// page 932 of some length never is.
bool IsUtf8(std::string_view bytes) {
  bool japanese = bytes.starts_with("\xEF\xBB\xBF");
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const int followers = FollowersOf(static_cast<unsigned char>(bytes[at]));
    if (followers < 0 || bytes.size() - at <= static_cast<std::size_t>(followers)) {
      return false;
    }
    for (int i = 0; i < followers; ++i) {
      ++at;
      if ((static_cast<unsigned char>(bytes[at]) & 0xC0U) != 0x80U) {
        return false;
      }
    }
    japanese = japanese || followers >= 2;
  }
  return japanese;
}

// Whether some of the bytes are no character of code page 932: a byte pair that is none, or half of one.
bool HasNoCharacter(std::string_view bytes, std::u16string_view text) {
  constexpr char16_t StandsIn = 0x30FB; // what such bytes decode to; it has bytes of its own
  constexpr std::string_view ItsBytes = "\x81\x45";
  std::size_t at = 0;
  for (const char16_t character : text) {
    if (character == StandsIn && bytes.substr(at, ItsBytes.size()) != ItsBytes) {
      return true;
    }
    at += CodePageLength({&character, 1});
  }
  return false;
}

// --- Lines

class FormWalk {
public:
  FormWalk(Findings& findings, std::string_view bytes) : findings_(findings), bytes_(bytes) {}

  void Walk() {
    std::string_view rest = bytes_;
    while (!rest.empty()) {
      ++number_;
      const std::string_view line = TakeLine(rest);
      CheckControls(line);
      CheckHead(line);
      NoteEnd(static_cast<std::size_t>(line.data() - bytes_.data()) + line.size());
    }
    if (number_ > 0 && !head_) {
      findings_.TellLine(1, {}, CheckReason::NoHead, Severity::Doubtful,
                         findings_.Words(Phrase::CheckNoHead));
    }
    if (otherEnds_ > 0) {
      findings_.TellLine(firstOtherEnd_, {}, CheckReason::LineEnd, Severity::Doubtful,
                         findings_.Words(Phrase::CheckLineEnd,
                                         {{u"COUNT", DecimalText(static_cast<std::int64_t>(otherEnds_))}}));
    }
    if (open_) {
      findings_.TellLine(number_, {}, CheckReason::NoLastLineEnd, Severity::Doubtful,
                         findings_.Words(Phrase::CheckNoLastLineEnd));
    }
  }

private:
  void CheckControls(std::string_view line) {
    const auto control = std::ranges::find_if(line, IsControl);
    if (control == line.end()) {
      return;
    }
    const std::size_t comma = line.find(',');
    const std::string_view key = line.substr(0, comma);
    const std::u16string message =
        findings_.Words(Phrase::CheckControlCharacter, {{u"BYTE", HexOf(*control)}});
    const auto ref = RefOfKey(key);
    if (comma != std::string_view::npos && ref && ValueOf(*ref)) {
      const SetBy at{number_, ShownKey(key), FromCodePage(line.substr(comma + 1, MostLooked))};
      findings_.TellParameter(*ref, at, CheckReason::ControlCharacter, Severity::Doubtful, message);
    } else {
      findings_.TellLine(number_, ShownKey(key), CheckReason::ControlCharacter, Severity::Doubtful, message);
    }
  }

  void CheckHead(std::string_view line) {
    if (!line.starts_with('L') || !IsHeadLine(line)) {
      return;
    }
    if (number_ > 1) {
      findings_.TellLine(number_, ShownKey(line.substr(0, line.find(','))), CheckReason::HeadNotFirst,
                         Severity::Doubtful, findings_.Words(Phrase::CheckHeadNotFirst));
    }
    head_ = true;
  }

  void NoteEnd(std::size_t end) {
    if (end == bytes_.size()) {
      open_ = true;
    } else if (!bytes_.substr(end).starts_with("\r\n")) {
      firstOtherEnd_ = otherEnds_ == 0 ? number_ : firstOtherEnd_;
      ++otherEnds_;
    }
  }

  Findings& findings_;
  std::string_view bytes_;
  std::size_t number_ = 0;
  std::size_t otherEnds_ = 0;
  std::size_t firstOtherEnd_ = 0;
  bool head_ = false;
  bool open_ = false; // the last line has no end
};

// As the writer writes it: a letter, two digits, the tag; behind that only blanks.
bool IsUsualKey(std::string_view key) {
  const auto ref = RefOfKey(key);
  return ref && key == KeyOf(*ref) && Trim(ref->tag) == ref->tag;
}

} // namespace

std::uint64_t PackedKey(std::string_view section, int item, std::string_view tag) {
  std::uint64_t packed = section.empty() ? 0 : static_cast<unsigned char>(section.front());
  packed = packed << 16U | static_cast<std::uint16_t>(item);
  const std::string_view name = Trim(tag);
  for (std::size_t at = 0; at < TagWidth; ++at) {
    packed = packed << 8U | static_cast<unsigned char>(at < name.size() ? name[at] : ' ');
  }
  return packed;
}

std::u16string ShownKey(std::string_view key) {
  const std::size_t last = key.find_last_not_of(' ');
  const std::string_view written = key.substr(0, last == std::string_view::npos ? 0 : last + 1);
  std::u16string shown = ShownValue(FromCodePage(written.substr(0, KeyColumns)));
  return written.size() > KeyColumns ? shown + u"…" : shown;
}

std::u16string ShownValue(std::u16string_view value) {
  constexpr std::size_t MostShown = 64;
  constexpr char16_t Unprintable = 0xFFFD;
  std::u16string shown(value.substr(0, MostShown));
  std::ranges::replace_if(
      shown, [](char16_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }, Unprintable);
  return value.size() > MostShown ? shown + u"…" : shown;
}

void CheckEncoding(Findings& findings, std::string_view bytes) {
  const auto tell = [&](CheckReason reason, Phrase phrase) {
    findings.TellLine(0, {}, reason, Severity::Doubtful, findings.Words(phrase));
  };
  if (bytes.empty()) {
    tell(CheckReason::EmptyFile, Phrase::CheckEmptyFile);
  } else if (IsUtf16(bytes)) {
    tell(CheckReason::Utf16, Phrase::CheckUtf16);
  } else if (IsBinary(bytes)) {
    tell(CheckReason::Binary, Phrase::CheckBinary);
  } else if (IsUtf8(bytes)) {
    tell(CheckReason::Utf8, Phrase::CheckUtf8);
  }
}

void CheckForm(Findings& findings, std::string_view bytes) {
  FormWalk(findings, bytes).Walk();
}

bool IsNoText(std::string_view bytes) {
  return IsUtf16(bytes) || IsBinary(bytes);
}

// --- Laid lines

void LaidLines::Take(const LaidLine& line) {
  const ParameterRef ref{std::string(line.section), line.item, std::string(line.tag)};
  const std::string today = KeyOf(ref);
  const std::string_view section = line.key.substr(0, 1);
  const std::string_view tag =
      line.key.size() > TagColumn ? Trim(line.key.substr(TagColumn, TagWidth)) : std::string_view();
  const bool older = section != line.section || tag != line.tag;
  const SetBy at{line.line, ShownKey(line.key), FromCodePage(line.bytes)};
  CheckKey(line, at);
  CheckAgain(line, at, older);
  CheckValue(line, at, older);
  const std::uint64_t laid = PackedKey(line.section, line.item, line.tag);
  if (older) {
    renamed_.push_back({laid, findings_.result().olderKeys.size()});
    findings_.result().olderKeys.push_back({line.line, at.key, today, false});
    named_.push_back(PackedKey(section, line.item, tag));
  }
  places_[laid] = {line.line, std::string(line.key), std::string(line.bytes), older};
}

void LaidLines::TakeBad(const FileDefect& defect) {
  named_.push_back(PackedKey(defect.section, defect.item, defect.tag));
  if (const auto own = RefOfKey(defect.key)) { // an older one
    named_.push_back(PackedKey(own->section, own->item, own->tag));
  }
}

void LaidLines::CheckKey(const LaidLine& line, const SetBy& at) {
  if (!IsUsualKey(line.key)) {
    const ParameterRef ref{std::string(line.section), line.item, std::string(line.tag)};
    findings_.TellParameter(ref, at, CheckReason::UnusualKey, Severity::Doubtful,
                            findings_.Words(Phrase::CheckUnusualKey, {{u"KEY", Widen(KeyOf(ref))}}));
  }
}

void LaidLines::CheckAgain(const LaidLine& line, const SetBy& at, bool older) {
  const auto before = places_.find(PackedKey(line.section, line.item, line.tag));
  // An older key and that of today stand side by side in files of both times.
  if (before == places_.end() || before->second.older != older) {
    return;
  }
  findings_.TellParameter(
      {std::string(line.section), line.item, std::string(line.tag)}, at, CheckReason::SameKeyAgain,
      before->second.value == line.bytes ? Severity::Doubtful : Severity::Lost,
      findings_.Words(Phrase::CheckSameKeyAgain,
                      {{u"LINE", DecimalText(static_cast<std::int64_t>(before->second.line))}}));
}

void LaidLines::CheckValue(const LaidLine& line, const SetBy& at, bool older) {
  const ParameterRef ref{std::string(line.section), line.item, std::string(line.tag)};
  if (FindTextRecord(line.section, line.item, line.tag) != nullptr) {
    if (HasNoCharacter(line.bytes, at.value)) {
      findings_.TellParameter(ref, at, CheckReason::NoCharacter, Severity::Lost,
                              findings_.Words(Phrase::CheckNoCharacter));
    }
    return;
  }
  const auto said = ParseInt16(at.value);
  const std::int16_t becomes = NumValue(line.section, line.item, line.tag);
  if (!older && said && *said != becomes) {
    findings_.TellParameter(
        ref, at, CheckReason::ChangedOnOpening, Severity::Lost,
        findings_.Words(Phrase::CheckChangedOnOpening, {{u"VALUE", DecimalText(becomes)}}));
  }
}

void LaidLines::Finish() {
  std::vector<OlderKey>& notes = findings_.result().olderKeys;
  for (const Renamed& renamed : renamed_) {
    notes[renamed.note].superseded = !places_.at(renamed.laid).older; // the last line that sets it
  }
  std::ranges::sort(named_);
  ForEachParameter([&](const ParameterRef& ref, const StoredParameter&) {
    const std::uint64_t key = PackedKey(ref.section, ref.item, ref.tag);
    if (!places_.contains(key) && !std::ranges::binary_search(named_, key)) {
      findings_.result().missing.push_back(ref);
    }
  });
}

SetBy LaidLines::Of(const ParameterRef& ref, std::u16string_view value) const {
  const auto place = places_.find(PackedKey(ref.section, ref.item, ref.tag));
  if (place == places_.end()) {
    return {0, Widen(KeyOf(ref)), std::u16string(value)};
  }
  return {place->second.line, ShownKey(place->second.key), FromCodePage(place->second.value)};
}

} // namespace loader::check
