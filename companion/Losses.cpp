#include "companion/Losses.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "comm/BulkRead.h"
#include "comm/ReadLayouts.h"
#include "core/Text.h"

namespace loader {

namespace {

struct NamedSection {
  std::string_view section;
  Phrase name;
};
constexpr std::array<NamedSection, 23> NamedSections{{
    {"C", Phrase::SectionC}, {"A", Phrase::SectionA}, {"G", Phrase::SectionG}, {"T", Phrase::SectionT},
    {"B", Phrase::SectionB}, {"H", Phrase::SectionH}, {"M", Phrase::SectionM}, {"U", Phrase::SectionU},
    {"D", Phrase::SectionD}, {"E", Phrase::SectionE}, {"N", Phrase::SectionN}, {"O", Phrase::SectionO},
    {"J", Phrase::SectionJ}, {"K", Phrase::SectionK}, {"X", Phrase::SectionX}, {"L", Phrase::SectionL},
    {"Y", Phrase::SectionY}, {"P", Phrase::SectionP}, {"I", Phrase::SectionI}, {"Z", Phrase::SectionZ},
    {"R", Phrase::SectionR}, {"F", Phrase::SectionF}, {"S", Phrase::SectionS},
}};

// An older totalizer's words stand in section E, whose read also fills these.
bool ReadWithTotalizer(const ReadPlan& plan, const ParameterRef& ref) {
  if (!LayoutOf(plan.layout, "E").oldTotalizer) {
    return false;
  }
  return (ref.section == "Z" && std::ranges::find(OldTotalizerWords, ref.tag, &OldTotalizerWord::tagOfZ) !=
                                    OldTotalizerWords.end()) ||
         (ref.section == "E" && std::ranges::find(OldTimes, ref.tag, &OldTime::tag) != OldTimes.end());
}

ReadFate FateInSection(const SectionRead& layout, const ParameterRef& ref) {
  if (layout.items == 0) {
    return ReadFate::NoSection;
  }
  if (ref.item >= layout.items) {
    return ReadFate::NoItem;
  }
  const bool isText = FindParameter(ref).text != nullptr;
  const ReadRule rule = RuleOf(layout, ref.tag, isText ? layout.texts : layout.numbers).rule;
  return rule == ReadRule::Default ? ReadFate::NoTag : ReadFate::Read;
}

// --- Ranges

using ItemTags = std::map<int, std::vector<std::string>>; // by item, in the order of the file

std::size_t TagsOfItem(std::string_view section, int item) {
  const ParamItem& records = ParamStore.at(gFFindSection(section)).Items.at(static_cast<std::size_t>(item));
  return records.TextRecords.size() + records.NumRecords.size();
}

bool Continues(const ParameterRange& range, int item, const std::string& tag) {
  return range.last + 1 == item && range.tag == tag;
}

// Whole items first, then tag by tag what is left of the others.
void AddSection(const std::string& section, const ItemTags& items, std::vector<ParameterRange>& ranges) {
  const std::size_t begin = ranges.size();
  const auto add = [&](int item, const std::string& tag, std::size_t count) {
    const auto same = std::find_if(ranges.begin() + static_cast<std::ptrdiff_t>(begin), ranges.end(),
                                   [&](const ParameterRange& range) { return Continues(range, item, tag); });
    if (same == ranges.end()) {
      ranges.push_back({section, item, item, tag, count});
    } else {
      same->last = item;
      same->count += count;
    }
  };
  for (const auto& [item, tags] : items) {
    if (tags.size() == TagsOfItem(section, item) && tags.size() > 1) {
      add(item, {}, tags.size());
      continue;
    }
    for (const std::string& tag : tags) {
      add(item, tag, 1);
    }
  }
}

} // namespace

std::u16string_view SectionName(std::string_view section, Language language) {
  const auto found = std::ranges::find(NamedSections, section, &NamedSection::section);
  return found == NamedSections.end() ? std::u16string_view{} : PhraseText(found->name, language);
}

ReadFate FateOfRead(int generation, const ParameterRef& ref) {
  const ReadPlan* plan = FindReadPlan(generation);
  if (plan == nullptr) {
    return ReadFate::NotMoved;
  }
  if (ref.section == "P" || ReadWithTotalizer(*plan, ref)) {
    return ReadFate::Read;
  }
  if (plan->sections.find(ref.section) == std::string_view::npos) {
    return ReadFate::NotMoved;
  }
  return FateInSection(LayoutOf(plan->layout, ref.section), ref);
}

std::vector<FilledParameter> FilledByRead(int generation) {
  std::vector<FilledParameter> filled;
  for (const ParameterRef& ref : AllParameters()) {
    const ReadFate fate = FateOfRead(generation, ref);
    if (fate != ReadFate::Read) {
      filled.push_back({ref, fate});
    }
  }
  return filled;
}

std::vector<ParameterRange> RangesOf(std::span<const ParameterRef> refs) {
  std::vector<std::string> order;
  std::map<std::string, ItemTags> sections;
  for (const ParameterRef& ref : refs) {
    if (!sections.contains(ref.section)) {
      order.push_back(ref.section);
    }
    sections[ref.section][ref.item].push_back(ref.tag);
  }
  std::vector<ParameterRange> ranges;
  for (const std::string& section : order) {
    AddSection(section, sections[section], ranges);
  }
  return ranges;
}

std::u16string RangeName(const ParameterRange& range, Language language) {
  const std::u16string first = ItemName(range.section, range.first, language);
  std::u16string items = first;
  if (range.last > range.first) {
    items = Say(Phrase::FromTo, language,
                {{u"FIRST", first}, {u"LAST", ItemName(range.section, range.last, language)}});
  }
  if (range.tag.empty()) {
    return Say(items.empty() ? Phrase::WholeSection : Phrase::WholeItems, language,
               {{u"SECTION", SectionName(range.section, language)},
                {u"ITEMS", items},
                {u"COUNT", DecimalText(static_cast<std::int64_t>(range.count))}});
  }
  const std::u16string name = NameOf({range.section, range.first, range.tag}, language);
  return items + name.substr(first.size());
}

} // namespace loader
