#include "companion/Edit.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "channel/InputTypeRules.h"
#include "channel/modUtil.h"
#include "companion/EditRules.h"
#include "companion/EditValue.h"
#include "companion/Selection.h"
#include "companion/SetUps.h"
#include "core/Text.h"
#include "core/UserUnits.h"
#include "files/ParameterFile.h"

namespace loader {

namespace {

bool IsTyped(const Edit& edit) {
  return std::holds_alternative<TypedText>(edit.value);
}

void Store(const ParameterRef& ref, const StoredValue& value) {
  const StoredParameter stored = FindParameter(ref);
  if (stored.text != nullptr) {
    SetText(*stored.text, std::get<std::u16string>(value), SlotValue);
  } else if (stored.number != nullptr) {
    SetNumber(*stored.number, std::get<std::int16_t>(value), SlotValue);
  }
}

// What the text of a parameter may depend on beside its own value.
bool MayReadOtherwise(const ParameterRef& ref) {
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  if (row == nullptr) {
    return false;
  }
  const Meaning& meaning = row->meaning;
  return !meaning.dependsOn.empty() || !meaning.byDecider.empty() ||
         (meaning.choices != nullptr && meaning.choices->catalogue == &UnitNames);
}

// What stood before, to compare with and to go back to.
struct Before {
  WholeSetUp setUp;
  std::map<ParameterRef, std::u16string> texts; // of what may read otherwise
  std::set<ParameterRef> bad;
};

Before Look(const Speech& speech) {
  Before before{CopyOfSetUp(), {}, {}};
  ChannelRows rows;
  for (const ParameterRef& ref : AllParameters()) {
    if (MayReadOtherwise(ref)) {
      before.texts.emplace(ref, ReadableValue(ref, speech));
    }
    if (Objection(ref, rows, speech.language)) {
      before.bad.insert(ref);
    }
  }
  return before;
}

class Work {
public:
  Work(const std::vector<Edit>& edits, const Speech& speech, const Judge& judge)
      : edits_(edits), speech_(speech), judge_(judge), before_(Look(speech)) {}

  EditReport Run() {
    RefuseWhatNobodySets();
    RefuseContradictions();
    AddPositionsOfConstants();
    NoteWhatStood();
    for (int stage = 0; stage < ReadingStages; ++stage) {
      Lay(static_cast<ReadingStage>(stage));
    }
    JudgeEdited();
    RefuseWhatAFileLoses();
    JudgeOthers();
    if (!report_.refusals.empty()) {
      ParamStore = before_.setUp.store;
      UnitNames = before_.setUp.unitNames;
      EditReport refused;
      refused.refusals = std::move(report_.refusals);
      return refused;
    }
    TellChanges();
    return std::move(report_);
  }

private:
  void Refuse(const ParameterRef& ref, std::u16string reason) {
    if (refused_.insert(ref).second) {
      report_.refusals.push_back({ref, std::move(reason)});
    }
  }

  void RefuseWhatNobodySets() {
    for (const Edit& edit : edits_) {
      if (auto reason = WhyNeverSet(edit.ref, speech_.language)) {
        Refuse(edit.ref, std::move(*reason));
      }
    }
  }

  // The same twice is no contradiction.
  void RefuseContradictions() {
    std::vector<Edit> once;
    for (Edit& edit : edits_) {
      const auto found = std::ranges::find(once, edit.ref, &Edit::ref);
      if (found == once.end()) {
        once.push_back(std::move(edit));
      } else if (!Same(found->value, edit.value)) {
        Refuse(edit.ref, std::u16string(PhraseText(Phrase::EditTwice, speech_.language)));
      }
    }
    edits_ = std::move(once);
  }
  static bool Same(const std::variant<TypedText, StoredValue>& one,
                   const std::variant<TypedText, StoredValue>& other) {
    const auto* text = std::get_if<TypedText>(&one);
    const auto* otherText = std::get_if<TypedText>(&other);
    if ((text == nullptr) != (otherText == nullptr)) {
      return false;
    }
    return text != nullptr ? text->text == otherText->text
                           : std::get<StoredValue>(one) == std::get<StoredValue>(other);
  }

  // A constant stands where its point is typed, unless its position is edited too.
  void AddPositionsOfConstants() {
    std::vector<Edit> positions;
    for (const Edit& edit : edits_) {
      const auto* typed = std::get_if<TypedText>(&edit.value);
      const ParameterRef position{"N", edit.ref.item, "CONP"};
      if (typed == nullptr || edit.ref.section != "N" || edit.ref.tag != "CONS" ||
          !NumericText(typed->text) || typed->text == ReadableValue(edit.ref, speech_) ||
          std::ranges::find(edits_, position, &Edit::ref) != edits_.end()) {
        continue;
      }
      positions.push_back(
          {position, StoredValue(static_cast<std::int16_t>(TypedPosition(Trim(typed->text))))});
    }
    edits_.insert(edits_.end(), positions.begin(), positions.end());
  }

  void NoteWhatStood() {
    for (const Edit& edit : edits_) {
      stood_.emplace(edit.ref, *ValueOf(edit.ref));
      textsOfEdited_.emplace(edit.ref, ReadableValue(edit.ref, speech_));
    }
  }

  void Lay(ReadingStage stage) {
    ChannelRows rows;
    for (const Edit& edit : edits_) {
      if (StageOf(edit.ref) != stage || refused_.contains(edit.ref)) {
        continue;
      }
      if (const auto* stored = std::get_if<StoredValue>(&edit.value)) {
        Store(edit.ref, *stored);
        continue;
      }
      TypedReading reading =
          ReadTypedValue(edit.ref, std::get<TypedText>(edit.value).text, rows, speech_.language);
      if (reading.value) {
        Store(edit.ref, *reading.value);
      } else {
        Refuse(edit.ref, std::move(reading.reason));
      }
    }
    if (stage == ReadingStage::Text) {
      UpdateUserUnitNames(); // a unit may be chosen by the name that it gets here
    }
  }

  [[nodiscard]] bool IsChanged(const ParameterRef& ref) const {
    const auto found = stood_.find(ref);
    return found != stood_.end() && *ValueOf(ref) != found->second;
  }
  // Picking another kind or scaling rewrites fields that cannot be typed into; here the user writes them.
  [[nodiscard]] bool StateIsChanged(int item) const {
    return std::ranges::any_of(std::array<const char*, 3>{"TYPE", "SCAL", "TAIS"}, [&](const char* tag) {
      return IsChanged({"C", item, tag});
    });
  }

  [[nodiscard]] std::optional<std::u16string> ObjectionToEdit(const Edit& edit, ChannelRows& rows) const {
    const Language language = speech_.language;
    if (IsTyped(edit) && !StateIsChanged(edit.ref.item)) {
      if (auto reason = WhyNotAdjustable(edit.ref, language)) {
        return reason;
      }
    }
    if (auto reason = PairObjection(edit.ref, language)) {
      return reason;
    }
    if (auto reason = NamelessObjection(edit.ref, language); reason && IsTyped(edit)) {
      return reason;
    }
    const MeaningRow* row = FindMeaning(edit.ref.section, edit.ref.tag);
    // What no screen shows is what it is, in the set-up that it is taken from as in this one.
    const bool kept = !IsTyped(edit) && row != nullptr && row->meaning.use == Use::Unshown;
    return kept ? std::nullopt : Objection(edit.ref, rows, language);
  }

  void JudgeEdited() {
    ChannelRows rows;
    for (const Edit& edit : edits_) {
      if (IsChanged(edit.ref)) {
        if (auto reason = ObjectionToEdit(edit, rows)) {
          Refuse(edit.ref, std::move(*reason));
          continue;
        }
      }
      if (judge_) {
        if (auto reason = judge_(edit.ref, IsChanged(edit.ref))) {
          Refuse(edit.ref, std::move(*reason));
        }
      }
    }
  }

  // An opened file gives old words to the parameters of today: what it does not give back cannot be written
  // there.
  void RefuseWhatAFileLoses() {
    WholeSetUp opened = SavedAndOpened(speech_.language);
    for (const Edit& edit : edits_) {
      const std::optional<StoredValue> wanted = ValueOf(edit.ref);
      if (IsChanged(edit.ref) && WithSetUp(opened, [&] { return ValueOf(edit.ref); }) != wanted) {
        Refuse(edit.ref, std::u16string(PhraseText(Phrase::EditNotKept, speech_.language)));
      }
    }
  }

  // The kind of a next channel is told at its leader. What was bad before is none of this.
  void JudgeOthers() {
    ChannelRows rows;
    for (const ParameterRef& ref : AllParameters()) {
      if (stood_.contains(ref) || before_.bad.contains(ref) || (ref.section == "C" && ref.tag == "TYPE")) {
        continue;
      }
      if (const auto reason = Objection(ref, rows, speech_.language)) {
        Refuse(ref, Say(Phrase::EditSpoils, speech_.language,
                        {{u"VALUE", TextBefore(ref)}, {u"REASON", *reason}}));
      }
    }
  }

  [[nodiscard]] std::u16string TextBefore(const ParameterRef& ref) const {
    const auto text = before_.texts.find(ref);
    return text == before_.texts.end() ? ReadableValue(ref, speech_) : text->second;
  }

  void TellChanges() {
    for (const Edit& edit : edits_) {
      if (!IsChanged(edit.ref)) {
        report_.already.push_back(edit.ref);
        continue;
      }
      report_.changes.push_back({edit.ref, stood_.at(edit.ref), *ValueOf(edit.ref),
                                 textsOfEdited_.at(edit.ref), ReadableValue(edit.ref, speech_)});
    }
    for (const auto& [ref, text] : before_.texts) {
      std::u16string now = ReadableValue(ref, speech_);
      if (now != text && !IsChanged(ref)) {
        const StoredValue value = *ValueOf(ref);
        report_.reads.push_back({ref, value, value, text, std::move(now)});
      }
    }
  }

  std::vector<Edit> edits_;
  Speech speech_;
  const Judge& judge_;
  Before before_;
  std::map<ParameterRef, StoredValue> stood_;
  std::map<ParameterRef, std::u16string> textsOfEdited_;
  std::set<ParameterRef> refused_;
  EditReport report_;
};

std::string CapitalKey(std::u16string_view key) {
  std::string capital = Narrow(Trim(key));
  std::ranges::transform(capital, capital.begin(),
                         [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return capital;
}

} // namespace

std::vector<Edit> EditsOf(std::u16string_view argument, Language language) {
  const std::size_t at = argument.find(u'=');
  if (at == std::u16string_view::npos) {
    throw Undone{Say(Phrase::EditNoEquals, language, {{u"ARGUMENT", argument}})};
  }
  const std::u16string_view key = argument.substr(0, at);
  const TypedText text{std::u16string(argument.substr(at + 1))};
  std::vector<Edit> edits;
  if (key.find_first_of(u"*?") != std::u16string_view::npos) {
    for (const ParameterRef& ref : AllParameters()) {
      if (MatchesPattern(Widen(KeyOf(ref)), Trim(key))) {
        edits.push_back({ref, text});
      }
    }
  } else if (const auto ref = RefOfKey(CapitalKey(key)); ref && ValueOf(*ref)) {
    edits.push_back({*ref, text});
  }
  if (edits.empty()) {
    throw Undone{Say(Phrase::SelectsNothing, language, {{u"PATTERN", key}})};
  }
  return edits;
}

WholeSetUp SavedAndOpened(Language language) {
  const std::string bytes = ParamFileBytes();
  WholeSetUp opened = InitialSetUp(ModelCode, language);
  static_cast<void>(WithSetUp(opened, [&] { return LoadParamBytes(bytes); }));
  return opened;
}

EditReport ApplyEdits(const std::vector<Edit>& edits, const Speech& speech, const Judge& judge) {
  return Work(edits, speech, judge).Run();
}

} // namespace loader
