#include "companion/Check.h"

#include <array>
#include <utility>

#include "companion/CheckParts.h"
#include "core/Text.h"
#include "core/UserUnits.h"
#include "core/modFile.h"

namespace loader {

namespace {

using check::Findings;
using check::LaidLines;
using check::SetBy;

constexpr std::array<std::string_view, 2> Models{"KOV", "RUG"};

// --- What the reader says

struct ReaderReason {
  LineDefect defect;
  CheckReason reason;
};
constexpr auto ReaderReasons = std::to_array<ReaderReason>({
    {LineDefect::NoComma, CheckReason::NoComma},
    {LineDefect::ItemIsNoNumber, CheckReason::ItemIsNoNumber},
    {LineDefect::UnknownSection, CheckReason::UnknownSection},
    {LineDefect::UnknownItem, CheckReason::UnknownItem},
    {LineDefect::UnknownTag, CheckReason::UnknownTag},
    {LineDefect::NotANumber, CheckReason::NotANumber},
    {LineDefect::Beyond16Bits, CheckReason::Beyond16Bits},
    {LineDefect::TimeBeyond16Bits, CheckReason::TimeBeyond16Bits},
    {LineDefect::TextWithComma, CheckReason::TextWithComma},
    {LineDefect::TextBeyond64Characters, CheckReason::TextBeyond64Characters},
});

CheckReason ReasonOf(LineDefect defect) {
  const auto* found = std::ranges::find(ReaderReasons, defect, &ReaderReason::defect);
  return found == ReaderReasons.end() ? CheckReason::NoComma : found->reason;
}

// A line of no parameter that the model has may be that of a password whose key is damaged.
bool NamesNoParameter(LineDefect defect) {
  return defect < LineDefect::NotANumber;
}

void TellReaderDefect(Findings& findings, const FileDefect& defect) {
  if (findings.Full()) {
    findings.CountUntold();
    return;
  }
  const Severity severity = PreventsOpening(defect.reason) ? Severity::PreventsOpening : Severity::Lost;
  const std::u16string message(DefectText(defect.reason, findings.language()));
  if (NamesNoParameter(defect.reason)) {
    findings.TellLine(defect.line, check::ShownKey(defect.key), ReasonOf(defect.reason), severity, message);
    return;
  }
  const SetBy at{defect.line, check::ShownKey(defect.key), defect.value};
  findings.TellParameter({defect.section, defect.item, defect.tag}, at, ReasonOf(defect.reason), severity,
                         message);
}

// --- The bytes without their bad lines

class BadLines {
public:
  void Add(std::size_t line) {
    if (lines_.empty() || lines_.back() != line) {
      if (lines_.size() < Most) {
        lines_.push_back(line);
      } else {
        tooMany_ = true;
      }
    }
  }
  [[nodiscard]] bool TooMany() const { return tooMany_; }

  [[nodiscard]] std::string Without(std::string_view bytes) const {
    std::string good;
    auto next = lines_.begin();
    for (std::size_t number = 1; !bytes.empty(); ++number) {
      const std::string_view line = TakeLine(bytes);
      if (next != lines_.end() && *next == number) {
        ++next;
      } else {
        good.append(line).append("\r\n");
      }
    }
    return good;
  }

private:
  static constexpr std::size_t Most = 100000; // no parameter file has as many lines
  std::vector<std::size_t> lines_;
  bool tooMany_ = false;
};

// --- The model

std::size_t LinesThatPreventOpening(std::string_view model, std::string_view bytes, Language language) {
  std::size_t lines = 0;
  WholeSetUp setUp = InitialSetUp(model, language);
  const SetUpInForce inForce(setUp);
  static_cast<void>(LoadParamBytes(
      bytes, [&](const FileDefect& defect) { lines += PreventsOpening(defect.reason) ? 1 : 0; }));
  return lines;
}

std::string LikelierModel(std::string_view bytes, Language language) {
  std::string likelier = ModelByItems(bytes, language);
  if (!likelier.empty()) {
    return likelier;
  }
  std::size_t fewest = 0;
  for (const std::string_view model : Models) {
    const std::size_t lines = LinesThatPreventOpening(model, bytes, language);
    if (likelier.empty() || lines < fewest) {
      likelier = model;
      fewest = lines;
    }
  }
  return likelier;
}

// What a file says of its model otherwise: its field, its name.
void CheckModel(Findings& findings, const LaidLines& lines) {
  const CheckedFile& checked = findings.result();
  if (checked.finding.basis == ModelBasis::Asked) {
    return;
  }
  const std::u16string model = Widen(checked.model);
  const ParamTextRecord* field = FindTextRecord("P", 0, "PILC");
  const std::u16string own(field == nullptr ? u"" : TrimRight(field->Value));
  if (own != model && std::ranges::find(Models, Narrow(own)) != Models.end()) {
    findings.TellParameter({"P", 0, "PILC"}, lines.Of({"P", 0, "PILC"}, own), CheckReason::OtherModel,
                           Severity::Doubtful,
                           findings.Words(Phrase::CheckOtherModelField, {{u"MODEL", model}}));
  }
  const auto tell = [&](Phrase phrase, std::string_view other) {
    if (!other.empty() && other != checked.model) {
      findings.TellLine(0, {}, CheckReason::OtherModel, Severity::Doubtful,
                        findings.Words(phrase, {{u"OTHER", Widen(other)}, {u"MODEL", model}}));
    }
  };
  tell(Phrase::CheckOtherModelName, ModelOfName(PathOf(checked.file)));
}

// --- The order of the steps

void CheckInForce(Findings& findings, std::string_view bytes, const WholeSetUp& initial) {
  CheckedFile& checked = findings.result();
  if (check::IsNoText(bytes)) {
    findings.TellAtMost(MostDefectsOfNoText);
  }
  check::CheckEncoding(findings, bytes);
  BadLines bad;
  LaidLines lines(findings);
  const auto hear = [&](const FileDefect& defect) {
    TellReaderDefect(findings, defect);
    if (PreventsOpening(defect.reason)) {
      bad.Add(defect.line);
    }
    if (!NamesNoParameter(defect.reason) && !bad.TooMany()) {
      lines.TakeBad(defect);
    }
  };
  checked.opens = LoadParamBytes(bytes, hear, [&](const LaidLine& line) { lines.Take(line); });
  lines.Finish();
  check::CheckForm(findings, bytes);
  // The values of a file that does not open are those of its good lines.
  if (!checked.opens) {
    ParamStore = initial.store;
    if (bad.TooMany() || !LoadParamBytes(bad.Without(bytes))) {
      return;
    }
  }
  UpdateUserUnitNames();
  CheckModel(findings, lines);
  check::CheckValues(findings, lines, initial.store);
  check::CheckFormulas(findings, lines, initial.store);
  if (checked.opens) {
    check::CheckSaveAndOpen(findings, lines, initial);
  }
}

} // namespace

CheckedFile CheckBytes(std::u16string_view file, std::string_view bytes, const std::string& askedModel,
                       const Speech& speech) {
  CheckedFile checked;
  checked.file = file;
  checked.finding = FindModel(bytes, PathOf(file), askedModel, speech.language);
  checked.model =
      checked.finding.model.empty() ? LikelierModel(bytes, speech.language) : checked.finding.model;
  const WholeSetUp& initial = InitialSetUp(checked.model, speech.language);
  WholeSetUp setUp = initial;
  {
    const SetUpInForce inForce(setUp);
    Findings findings(checked, speech);
    CheckInForce(findings, bytes, initial);
  }
  std::ranges::stable_sort(checked.defects, {}, &CheckDefect::line);
  return checked;
}

CheckedFile CheckSetUp(const SetUpAddress& address, const std::string& askedModel, const Speech& speech) {
  const std::string bytes = FileBytesOf(address, speech.language);
  const bool initial = address.place == Place::Default;
  return CheckBytes(address.text, bytes, initial ? Narrow(address.where) : askedModel, speech);
}

std::string_view ReasonWord(CheckReason reason) {
  constexpr auto Words = std::to_array<std::string_view>({
      "no-comma",
      "item-no-number",
      "unknown-section",
      "unknown-item",
      "unknown-tag",
      "not-a-number",
      "beyond-16-bits",
      "time-beyond-16-bits",
      "text-with-comma",
      "text-beyond-64",
      "utf-16",
      "utf-8",
      "binary",
      "empty-file",
      "no-head",
      "head-not-first",
      "line-end",
      "no-last-line-end",
      "control-character",
      "no-character",
      "unusual-key",
      "same-key-again",
      "other-model",
      "changed-on-opening",
      "not-kept",
      "text-too-long",
      "comma-in-text",
      "outside-limits",
      "outside-field",
      "outside-list",
      "no-such-reference",
      "kinds-cannot-pair",
      "formula-word",
      "no-rule",
      "two-averages",
  });
  static_assert(Words.size() == static_cast<std::size_t>(CheckReason::TwoAverages) + 1);
  return Words.at(static_cast<std::size_t>(reason));
}

std::string_view SeverityWord(Severity severity) {
  constexpr std::array<std::string_view, 3> Words{"prevents-opening", "lost", "doubtful"};
  return Words.at(static_cast<std::size_t>(severity));
}

namespace check {

namespace {

// Lines that have run into one another: the key of a secret, and behind it the secret.
bool HoldsKeyOfSecret(std::u16string_view value) {
  constexpr std::size_t LongestKey = 7;
  for (std::size_t comma = value.find(u','); comma != std::u16string_view::npos;
       comma = value.find(u',', comma + 1)) {
    for (std::size_t length = LongestKey; length > 3; --length) {
      const std::size_t from = comma >= length ? comma - length : comma;
      const auto ref = RefOfKey(Narrow(value.substr(from, comma - from)));
      if (ref && IsSecret(*ref)) {
        return true;
      }
    }
  }
  return false;
}

// Whether a line whose parameter is not known begins as a line does. One that does not may be the rest of
// another one: of a password, behind a line end that got into it.
bool LooksLikeKey(std::u16string_view key) {
  constexpr std::size_t TagColumn = 3;
  if (key == u"LOADER") {
    return true;
  }
  const auto letter = [](char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); };
  const auto ofTag = [](char16_t c) { return (c >= u'A' && c <= u'Z') || IsDigit(c) || c > u'~'; };
  if (key.size() <= TagColumn || !letter(key[0])) {
    return false;
  }
  const int digits = (IsDigit(key[1]) ? 1 : 0) + (IsDigit(key[2]) ? 1 : 0);
  return digits == 2 || (digits == 1 && std::ranges::all_of(key.substr(TagColumn), ofTag));
}

} // namespace

bool Findings::Hides(const ParameterRef& ref, std::u16string_view value) const {
  return !speech_.secrets && (IsSecret(ref) || HoldsKeyOfSecret(value));
}

void Findings::TellLine(std::size_t line, std::u16string key, CheckReason reason, Severity severity,
                        std::u16string message) {
  Add({.line = line,
       .key = speech_.secrets || LooksLikeKey(key) ? std::move(key) : std::u16string(),
       .reason = reason,
       .severity = severity,
       .message = std::move(message)});
}

void Findings::TellParameter(const ParameterRef& ref, const SetBy& at, CheckReason reason, Severity severity,
                             std::u16string message) {
  Add({.line = at.line,
       .key = at.key,
       .reason = reason,
       .severity = severity,
       .message = std::move(message),
       .ref = ref,
       .name = NameOf(ref, speech_.language),
       .value = Hides(ref, at.value) ? std::nullopt : std::optional(ShownValue(at.value))});
}

void CheckSaveAndOpen(Findings& findings, const LaidLines& lines, const WholeSetUp& initial) {
  const std::string saved = ParamFileBytes();
  WholeSetUp again = initial;
  std::vector<FileDefect> prevent;
  const auto hear = [&](const FileDefect& defect) {
    if (PreventsOpening(defect.reason)) {
      prevent.push_back(defect);
    }
  };
  if (!WithSetUp(again, [&] { return LoadParamBytes(saved, hear); })) {
    const FileDefect& first = prevent.front();
    const std::u16string message = findings.Words(
        Phrase::CheckSavedNotOpen,
        {{u"KEY", ShownKey(first.key)}, {u"REASON", DefectText(first.reason, findings.language())}});
    findings.TellLine(0, {}, CheckReason::NotKept, Severity::Lost, message);
    return;
  }
  if (again.store == ParamStore) {
    return;
  }
  ForEachParameter([&](const ParameterRef& ref, const StoredParameter&) {
    const std::optional<StoredValue> before = ValueOf(ref);
    const std::optional<StoredValue> after = WithSetUp(again, [&] { return ValueOf(ref); });
    if (before != after) {
      findings.TellParameter(ref, lines.Of(ref, RawText(*before)), CheckReason::NotKept, Severity::Lost,
                             findings.Words(Phrase::CheckNotKept));
    }
  });
}

void Findings::Add(CheckDefect defect) {
  if (Full()) {
    CountUntold();
  } else {
    result_.defects.push_back(std::move(defect));
  }
}

} // namespace check

} // namespace loader
