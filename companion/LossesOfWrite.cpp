#include "companion/LossesOfWrite.h"

#include <algorithm>
#include <set>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "comm/ParameterTelegram.h"
#include "comm/ReadLayouts.h"
#include "comm/WriteLayouts.h"
#include "comm/modComunication.h"
#include "core/Text.h"

namespace loader {

namespace {

bool Has(std::string_view sections, std::string_view section) {
  return sections.find(section) != std::string_view::npos;
}

TagWrite RuleOfRecord(const SectionWrite& layout, std::string_view tag, bool isText) {
  return RuleOf(layout, tag, isText ? TagWrite{{}, layout.texts} : layout.numbers);
}

// The kind of an older total says two of today's parameters at once.
bool GoesWithTotalKind(const SectionWrite& layout, const ParameterRef& ref) {
  return ref.tag == "STYP" &&
         std::ranges::find(layout.tags, WriteRule::TotalKind, &TagWrite::rule) != layout.tags.end();
}

bool IsOldTotalizer(const WritePlan& plan, const ParameterRef& ref) {
  return ref.section == "Z" && ref.item == 0 && Has(plan.sections, "E") &&
         LayoutOf(plan.layout, "E").oldTotalizer &&
         std::ranges::find(OldTotalizerWords, ref.tag, &OldTotalizerWord::tagOfZ) != OldTotalizerWords.end();
}

WriteFate WhenItGoes(int generation, const ParameterRef& ref) {
  return FateOfRead(generation, ref) == ReadFate::Read ? WriteFate::Goes : WriteFate::NotReadBack;
}

WriteFate FateByRule(int generation, const TagWrite& rule, const ParameterRef& ref) {
  switch (rule.rule) {
  case WriteRule::Untouched:
    return WriteFate::NotWritten;
  case WriteRule::Zero:
    return WriteFate::Zero;
  case WriteRule::Default:
    return WriteFate::Default;
  case WriteRule::ZeroFrom:
    return NumValue(ref.section, ref.item, ref.tag) >= rule.argument ? WriteFate::Limited
                                                                     : WhenItGoes(generation, ref);
  case WriteRule::TriggerChannel:
    return WriteFate::Limited;
  case WriteRule::InputKind:
  case WriteRule::InputKind0:
  case WriteRule::TotalKind:
    return WriteFate::Mapped;
  case WriteRule::Value:
  case WriteRule::AtByte:
  case WriteRule::HoursThenMinutes:
    break;
  }
  return WhenItGoes(generation, ref);
}

// The tag whose value a rule puts at that byte of an item.
std::string TagAtFixedByte(const SectionWrite& layout, int byte) {
  for (const TagWrite& rule : layout.tags) {
    const bool fixed = rule.rule == WriteRule::AtByte || rule.rule == WriteRule::TotalKind;
    const bool two = rule.rule == WriteRule::HoursThenMinutes;
    if ((fixed && rule.argument == byte) || (two && (rule.argument == byte || rule.argument + 2 == byte))) {
      return std::string(rule.tag);
    }
  }
  return {};
}

// Whether another parameter is written where this one stands in today's layout.
bool IsOverlaid(const SectionWrite& layout, const StoredParameter& found) {
  if (found.number == nullptr && found.text == nullptr) {
    return false; // no parameter of this model: it stands nowhere
  }
  const int byte = 2 * (found.number != nullptr ? found.number->WordOffset : found.text->WordOffset);
  return !TagAtFixedByte(layout, byte).empty() ||
         (layout.oldTotalizer &&
          std::ranges::find(OldTotalizerWords, byte, &OldTotalizerWord::byte) != OldTotalizerWords.end());
}

// --- Blocks

const SectionBlock* FindBlock(std::span<const SectionBlock> blocks, std::string_view section) {
  const auto found = std::ranges::find(blocks, section, &SectionBlock::section);
  return found == blocks.end() ? nullptr : &*found;
}

void PutIntoBuffer(const SectionBlock& block) {
  CommLink.BlockBuf.fill(0);
  std::ranges::copy(block.bytes, CommLink.BlockBuf.begin());
}

// The block with the section of the set-up in force laid over it.
SectionBlock Laid(const GenerationWrite& layout, SectionBlock block) {
  PutIntoBuffer(block);
  LaySectionOver(layout, block.section);
  std::copy_n(CommLink.BlockBuf.begin(), block.bytes.size(), block.bytes.begin());
  return block;
}

// The set-up in force as a read of the recorder would leave it, with the blocks that were written in place of
// those it had.
void ReadAgain(const ReadPlan& plan, std::span<const SectionBlock> present,
               std::span<const SectionBlock> written) {
  for (const char letter : plan.sections) {
    const std::string section(1, letter);
    const SectionBlock* block = FindBlock(written, section);
    if (block == nullptr) {
      block = FindBlock(present, section);
    }
    if (block == nullptr) {
      continue; // the read has not brought it: what is in force stays
    }
    PutIntoBuffer(*block);
    StoreSection(plan.layout, section);
  }
}

// --- Owners of registers

bool StandsAtItsPlace(const TagWrite& rule) {
  return rule.rule != WriteRule::Untouched && rule.rule != WriteRule::AtByte &&
         rule.rule != WriteRule::TotalKind && rule.rule != WriteRule::HoursThenMinutes;
}

template <typename Record>
bool Owns(const SectionWrite& layout, const Record& record, int words, int word, bool isText) {
  return word >= record.WordOffset && word < record.WordOffset + words &&
         StandsAtItsPlace(RuleOfRecord(layout, record.Tag, isText));
}

ParameterRef OwnerOf(const SectionWrite& layout, const ParamSection& section, int item, int word) {
  const std::string code(Trim(section.Code));
  if (item >= layout.items) {
    return {code, item, {}};
  }
  if (layout.oldTotalizer) {
    const auto old = std::ranges::find(OldTotalizerWords, 2 * word, &OldTotalizerWord::byte);
    if (old != OldTotalizerWords.end()) {
      return {"Z", item, std::string(old->tagOfZ)};
    }
  }
  if (std::string tag = TagAtFixedByte(layout, 2 * word); !tag.empty()) {
    return {code, item, std::move(tag)};
  }
  const ParamItem& records = section.Items.at(static_cast<std::size_t>(item));
  for (const ParamTextRecord& record : records.TextRecords) {
    if (Owns(layout, record, record.ByteLength / 2, word, true)) {
      return {code, item, std::string(Trim(record.Tag))};
    }
  }
  for (const ParamNumRecord& record : records.NumRecords) {
    if (Owns(layout, record, 1, word, false)) {
      return {code, item, std::string(Trim(record.Tag))};
    }
  }
  return {code, item, {}};
}

bool MayBeSecret(const ParamSection& section, const ParameterRef& owner, int word) {
  if (!owner.tag.empty()) {
    return IsSecret(owner);
  }
  const std::string code(Trim(section.Code));
  const auto covers = [&](const auto& record, int words) {
    return word >= record.WordOffset && word < record.WordOffset + words &&
           IsSecret({code, owner.item, std::string(Trim(record.Tag))});
  };
  const ParamItem& records = section.Items.at(static_cast<std::size_t>(owner.item));
  return std::ranges::any_of(records.TextRecords,
                             [&](const auto& record) { return covers(record, record.ByteLength / 2); }) ||
         std::ranges::any_of(records.NumRecords, [&](const auto& record) { return covers(record, 1); });
}

std::int16_t WordAt(const SectionBlock& block, std::size_t index) {
  return static_cast<std::int16_t>(block.bytes.at(2 * index) | block.bytes.at(2 * index + 1) << 8);
}

// --- The forecast

std::vector<RegisterDifference> UnseenIn(int generation, const WriteForecast& forecast,
                                         const RecorderRead& present) {
  std::set<ParameterRef> told;
  for (const ChangedParameter& change : forecast.changes) {
    told.insert(change.ref);
  }
  std::vector<RegisterDifference> unseen;
  for (const SectionBlock& block : forecast.blocks) {
    for (RegisterDifference& different :
         DifferentRegisters(generation, block, *FindBlock(present.blocks, block.section))) {
      if (!told.contains({different.section, different.item, different.tag})) {
        unseen.push_back(std::move(different));
      }
    }
  }
  return unseen;
}

} // namespace

WriteFate FateOfWrite(int generation, const ParameterRef& ref) {
  const WritePlan* plan = FindWritePlan(generation);
  if (plan == nullptr) {
    return WriteFate::NotMoved;
  }
  if (IsOldTotalizer(*plan, ref)) {
    return WhenItGoes(generation, ref);
  }
  if (!Has(plan->sections, ref.section)) {
    const bool moved = ref.section != "P" && FateOfRead(generation, ref) != ReadFate::NotMoved;
    return moved ? WriteFate::NoSection : WriteFate::NotMoved;
  }
  const SectionWrite& layout = LayoutOf(plan->layout, ref.section);
  if (ref.item >= layout.items) {
    return WriteFate::NoItem;
  }
  if (GoesWithTotalKind(layout, ref)) {
    return WriteFate::Mapped;
  }
  const StoredParameter found = FindParameter(ref);
  const TagWrite rule = RuleOfRecord(layout, ref.tag, found.text != nullptr);
  if (rule.rule == WriteRule::Untouched && IsOverlaid(layout, found)) {
    return WriteFate::Overlaid;
  }
  return FateByRule(generation, rule, ref);
}

WriteForecast ForecastWrite(WholeSetUp& setUp, RecorderRead& present) {
  const int generation = present.recorder.generation;
  const WritePlan* writePlan = FindWritePlan(generation);
  const ReadPlan* readPlan = FindReadPlan(generation);
  WriteForecast forecast{.after = present.setUp, .blocks = {}, .changes = {}, .losses = {}, .unseen = {}};
  WithSetUp(setUp, [&] {
    for (const char letter : writePlan->sections) {
      forecast.blocks.push_back(
          Laid(writePlan->layout, *FindBlock(present.blocks, std::string_view(&letter, 1))));
    }
  });
  WithSetUp(forecast.after, [&] { ReadAgain(*readPlan, present.blocks, forecast.blocks); });

  const std::vector<StoredValue> wanted = WithSetUp(setUp, AllValues);
  const std::vector<StoredValue> before = WithSetUp(present.setUp, AllValues);
  const std::vector<StoredValue> after = WithSetUp(forecast.after, AllValues);
  const std::vector<ParameterRef> refs = WithSetUp(setUp, AllParameters);
  for (std::size_t i = 0; i < refs.size(); ++i) {
    const ParameterRef& ref = refs[i];
    if (before.at(i) != after.at(i)) {
      forecast.changes.push_back({ref, before[i], after[i]});
    }
    if (wanted.at(i) != after[i]) {
      const WriteFate fate = WithSetUp(setUp, [&] { return FateOfWrite(generation, ref); });
      forecast.losses.push_back({ref, fate, wanted[i], after[i]});
    }
  }
  forecast.unseen = WithSetUp(setUp, [&] { return UnseenIn(generation, forecast, present); });
  return forecast;
}

std::vector<RegisterDifference> DifferentRegisters(int generation, const SectionBlock& expected,
                                                   const SectionBlock& found) {
  const SectionWrite& layout = LayoutOf(FindWritePlan(generation)->layout, expected.section);
  const ParamSection& section = ParamStore.at(gFFindSection(expected.section));
  std::vector<RegisterDifference> different;
  const std::size_t words = std::min(expected.bytes.size(), found.bytes.size()) / 2;
  for (std::size_t i = 0; i < words; ++i) {
    if (WordAt(expected, i) == WordAt(found, i)) {
      continue;
    }
    const auto index = static_cast<int>(i);
    const int word = index % section.ItemWords;
    const ParameterRef owner = OwnerOf(layout, section, index / section.ItemWords, word);
    different.push_back({owner.section, owner.item, owner.tag, expected.firstRegister + index,
                         WordAt(expected, i), WordAt(found, i), MayBeSecret(section, owner, word)});
  }
  return different;
}

} // namespace loader
