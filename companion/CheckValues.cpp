// The values of a file, by the rules of the fields: limits, lists, lengths, pairs of channels.
#include <array>
#include <map>
#include <optional>

#include "channel/InputTypeRules.h"
#include "companion/CheckParts.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "meaning/Lists.h"
#include "meaning/ParameterText.h"

namespace loader::check {

namespace {

// What a list is a list of, where its rows stand for things that a model has so many of.
std::optional<Phrase> NoSuchReference(Extent extent) {
  switch (extent) {
  case Extent::OtherChannels:
  case Extent::Channels:
  case Extent::NoneAndChannels:
    return Phrase::CheckNoSuchChannel;
  case Extent::TriggerInputs:
    return Phrase::CheckNoSuchInput;
  case Extent::ExternalInputs:
  case Extent::NoneAndExternalInputs:
    return Phrase::CheckNoSuchExternalInput;
  case Extent::AlarmOutputs:
    return Phrase::CheckNoSuchOutput;
  case Extent::Whole:
  case Extent::Values:
  case Extent::PairedInputKinds:
    break;
  }
  return std::nullopt;
}

bool IsMeasuringChannel(int item) {
  return item >= 0 && item < Profile.ChannelCount;
}

// Kinds without a name are no kinds: no list offers them.
bool IsKind(int type) {
  const std::vector<int> kinds = OfferedInputTypes(PairIndependent, KindSkip);
  return std::ranges::find(kinds, type) != kinds.end();
}

// A number at a position, whatever its limits.
std::u16string AtPosition(int value, int position) {
  return StoredToText(value, position, value, value);
}

class ValueWalk {
public:
  ValueWalk(Findings& findings, const LaidLines& lines, const ParamStoreTable& initial)
      : findings_(findings), lines_(lines), initial_(initial) {}

  // A value that the initial settings have is never wrong in itself, whatever else a channel is set to.
  void Walk() {
    for (std::size_t section = 0; section < ParamStore.size(); ++section) {
      for (std::size_t item = 0; item < ParamStore[section].Items.size(); ++item) {
        WalkItem(ParamStore[section], static_cast<int>(item), initial_.at(section).Items.at(item));
      }
    }
    for (int channel = 0; channel + 1 < Profile.ChannelCount; ++channel) {
      CheckPair(channel);
    }
  }

private:
  void WalkItem(const ParamSection& section, int item, const ParamItem& initial) {
    const ParamItem& records = section.Items[static_cast<std::size_t>(item)];
    const auto refOf = [&](std::string_view tag) {
      return ParameterRef{std::string(Trim(std::string_view(section.Code))), item, std::string(Trim(tag))};
    };
    for (std::size_t i = 0; i < records.TextRecords.size(); ++i) {
      if (records.TextRecords[i].Value != initial.TextRecords.at(i).Value) {
        CheckText(refOf(records.TextRecords[i].Tag), records.TextRecords[i]);
      }
    }
    for (std::size_t i = 0; i < records.NumRecords.size(); ++i) {
      if (records.NumRecords[i].Value != initial.NumRecords.at(i).Value) {
        CheckNumber(refOf(records.NumRecords[i].Tag), records.NumRecords[i]);
      }
    }
  }

  void Tell(const ParameterRef& ref, std::u16string_view value, CheckReason reason, std::u16string message) {
    findings_.TellParameter(ref, lines_.Of(ref, value), reason, Severity::Doubtful, std::move(message));
  }
  void Tell(const ParameterRef& ref, const ParamNumRecord& record, CheckReason reason, Phrase phrase,
            std::initializer_list<Filling> fillings = {}) {
    Tell(ref, DecimalText(record.Value), reason, findings_.Words(phrase, fillings));
  }

  // --- Texts

  void CheckText(const ParameterRef& ref, const ParamTextRecord& record) {
    const std::u16string_view text = TrimRight(record.Value);
    const std::size_t bytes = CodePageLength(text);
    if (bytes > static_cast<std::size_t>(std::max<int>(record.ByteLength, 0))) {
      Tell(ref, text, CheckReason::TextTooLong,
           findings_.Words(Phrase::CheckTextTooLong,
                           {{u"BYTES", DecimalText(static_cast<std::int64_t>(bytes))},
                            {u"MOST", DecimalText(record.ByteLength)}}));
    }
    const MeaningRow* row = FindMeaning(ref.section, ref.tag);
    if (row != nullptr && row->meaning.text.commaRefused && text.find(u',') != std::u16string_view::npos) {
      Tell(ref, text, CheckReason::CommaInText, findings_.Words(Phrase::CheckCommaInText));
    }
  }

  // --- Numbers

  void CheckNumber(const ParameterRef& ref, const ParamNumRecord& record) {
    const MeaningRow* row = FindMeaning(ref.section, ref.tag);
    if (row != nullptr && CheckList(ref, record, *row)) {
      return;
    }
    if (record.Value < record.MinValue || record.Value > record.MaxValue) {
      Tell(ref, record, CheckReason::OutsideLimits, Phrase::CheckOutsideLimits,
           {{u"LOWEST", DecimalText(record.MinValue)}, {u"HIGHEST", DecimalText(record.MaxValue)}});
      return;
    }
    if (row != nullptr && FormIn(*row, View::Screen).sense == Sense::Number) {
      CheckField(ref, record, FormIn(*row, View::Screen).number);
    }
  }

  // Whether it was told.
  bool CheckList(const ParameterRef& ref, const ParamNumRecord& record, const MeaningRow& row) {
    const Sense sense = FormIn(row, View::Screen).sense;
    if (sense != Sense::Choice && sense != Sense::ColourNumber) {
      return false;
    }
    const ChoiceList* list = ChoicesOf(row, View::Screen, ref.item).list;
    if (list == nullptr || IsOffered(ref, record.Value, row, *list)) {
      return false;
    }
    if (const std::optional<Phrase> reference = NoSuchReference(list->extent)) {
      Tell(ref, record, CheckReason::NoSuchReference, *reference);
    } else {
      Tell(ref, record, CheckReason::OutsideList, Phrase::CheckOutsideList);
    }
    return true;
  }

  static bool IsOffered(const ParameterRef& ref, int value, const MeaningRow& row, const ChoiceList& list) {
    if (list.extent == Extent::PairedInputKinds) {
      return !IsMeasuringChannel(ref.item) || IsKind(value); // an operation channel has no kind
    }
    const ChoiceList* other = row.meaning.otherChoices;
    return row.meaning.alsoTyped || RowOfValue(list, value) ||
           (other != nullptr && RowOfValue(*other, value));
  }

  void CheckField(const ParameterRef& ref, const ParamNumRecord& record, const NumberRule& rule) {
    const ChannelRow* channel = ChannelOf(ref);
    if (channel != nullptr && !channel->operation &&
        (channel->storedType == KindSkip || !IsKind(channel->storedType))) {
      return; // a channel that measures nothing
    }
    const NumberInForce force = InForce(rule, record, ref.item, channel);
    if (record.Value >= force.limits.minimum && record.Value <= force.limits.maximum) {
      return;
    }
    Tell(ref, record, CheckReason::OutsideField, Phrase::CheckOutsideField,
         {{u"VALUE", AtPosition(record.Value, force.position)},
          {u"LOWEST", AtPosition(force.limits.minimum, force.position)},
          {u"HIGHEST", AtPosition(force.limits.maximum, force.position)}});
  }

  const ChannelRow* ChannelOf(const ParameterRef& ref) {
    if (ref.section != "C" && ref.section != "A") {
      return nullptr;
    }
    auto found = channels_.find(ref.item);
    if (found == channels_.end()) {
      found = channels_.emplace(ref.item, LookUpChannelRow(ref.item, !IsMeasuringChannel(ref.item))).first;
    }
    return &found->second;
  }

  // --- Pairs of channels

  // The rule by which the window takes the kind of a pair's first channel: the second one's list offers the
  // same kinds.
  void CheckPair(int leader) {
    const int dependent = leader + 1;
    if (ChannelPairKind(leader) != PairLeader) {
      return;
    }
    const int kind = NumValue("C", leader, "TYPE");
    const int next = NumValue("C", dependent, "TYPE");
    if (!FindLeaderConflict(kind, next)) {
      return;
    }
    ParameterRef ref{"C", dependent, "TYPE"};
    if (lines_.Of(ref, {}).line == 0) {
      ref.item = leader;
    }
    const auto name = [](int number) {
      const std::u16string* text = CatalogueEntry(InputTypeNames, number);
      return text == nullptr || text->empty() ? DecimalText(number) : *text;
    };
    Tell(ref, DecimalText(NumValue("C", ref.item, "TYPE")), CheckReason::KindsCannotPair,
         findings_.Words(Phrase::CheckKindsCannotPair, {{u"CHANNEL", DecimalText(leader + 1)},
                                                        {u"KIND", name(kind)},
                                                        {u"NEXT", DecimalText(dependent + 1)},
                                                        {u"OTHER", name(next)}}));
  }

  Findings& findings_;
  const LaidLines& lines_;
  const ParamStoreTable& initial_;
  std::map<int, ChannelRow> channels_; // by item
};

} // namespace

void CheckValues(Findings& findings, const LaidLines& lines, const ParamStoreTable& initial) {
  ValueWalk(findings, lines, initial).Walk();
}

} // namespace loader::check
