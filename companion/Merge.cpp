#include "companion/Merge.h"

#include <map>
#include <string>
#include <utility>

#include "channel/InputTypeRules.h"
#include "companion/EditRules.h"
#include "companion/SetUps.h"
#include "core/ModelProfile.h"
#include "core/Text.h"

namespace loader {

namespace {

// What a chosen parameter is in the set-up that it comes from.
struct Taken {
  StoredValue value;
  std::u16string text;
  ChannelState state;
};
using TakenOver = std::map<ParameterRef, Taken>;

bool IsOfChannel(const ParameterRef& ref) {
  return ref.section == "C" || ref.section == "A";
}

// The texts are compared as they are; a report hides what is secret.
Taken TakenOf(const ParameterRef& ref) {
  return {*ValueOf(ref), ReadableValue(ref, {Language::Japanese, true}),
          IsOfChannel(ref) ? StoredChannelState(ref.item) : ChannelState{}};
}

bool SameState(const ChannelState& one, const ChannelState& other) {
  return one.kind == other.kind && one.scalingOn == other.scalingOn && one.logOn == other.logOn;
}

std::optional<std::u16string> WhyLeft(const ParameterRef& ref, WholeSetUp& opened, Language language) {
  if (auto reason = WhyNeverSet(ref, language)) {
    return reason;
  }
  const std::optional<StoredValue> value = ValueOf(ref);
  return WithSetUp(opened, [&] { return ValueOf(ref); }) == value
             ? std::nullopt
             : std::optional(std::u16string(PhraseText(Phrase::EditNotKept, language)));
}

std::optional<std::u16string> ReadsOtherwise(const ParameterRef& ref, const Taken& there,
                                             const Speech& speech) {
  const std::u16string here = ReadableValue(ref, {Language::Japanese, true});
  if (here == there.text) {
    return std::nullopt;
  }
  const bool hidden = IsSecret(ref) && !speech.secrets;
  return Say(Phrase::MergeReadsOtherwise, speech.language,
             {{u"THERE", hidden ? HiddenSecret : std::u16string_view(there.text)},
              {u"HERE", hidden ? HiddenSecret : std::u16string_view(here)}});
}

} // namespace

MergeReport MergeFrom(WholeSetUp& other, const std::vector<Selection>& only,
                      const std::vector<Selection>& ignore, const Speech& speech) {
  if (other.modelCode != ModelCode) {
    throw Undone{Say(Phrase::MergeOtherModel, speech.language,
                     {{u"HERE", Widen(ModelCode)}, {u"THERE", Widen(other.modelCode)}})};
  }
  MergeReport report;
  TakenOver taken;
  std::vector<Edit> edits;
  {
    const SetUpInForce inForce(other);
    WholeSetUp opened = SavedAndOpened(speech.language);
    for (const ParameterRef& ref : AllParameters()) {
      if (!AnyNames(only, ref) || AnyNames(ignore, ref)) {
        continue;
      }
      if (auto reason = WhyLeft(ref, opened, speech.language)) {
        report.left.push_back({ref, std::move(*reason)});
        continue;
      }
      edits.push_back({ref, taken.emplace(ref, TakenOf(ref)).first->second.value});
    }
  }
  report.edits =
      ApplyEdits(edits, speech, [&](const ParameterRef& ref, bool changed) -> std::optional<std::u16string> {
        const auto found = taken.find(ref);
        if (found == taken.end()) {
          return std::nullopt;
        }
        if (auto reason = ReadsOtherwise(ref, found->second, speech)) {
          return reason;
        }
        const bool good =
            !changed || !IsOfChannel(ref) || SameState(found->second.state, StoredChannelState(ref.item));
        return good ? std::nullopt : WhyNotAdjustable(ref, speech.language);
      });
  return report;
}

} // namespace loader
