#include "companion/ValueRules.h"

#include <algorithm>

#include "channel/Adjustable.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"

namespace loader {

bool IsOperationChannel(int item) {
  return item >= Profile.ChannelCount;
}

bool IsOfChannel(const ParameterRef& ref) {
  return ref.section == "C" || ref.section == "A";
}

const ChannelRow* ChannelRows::Of(const ParameterRef& ref) {
  if (!IsOfChannel(ref)) {
    return nullptr;
  }
  const auto found = rows_.find(ref.item);
  return found != rows_.end()
             ? &found->second
             : &rows_.emplace(ref.item, LookUpChannelRow(ref.item, IsOperationChannel(ref.item)))
                    .first->second;
}

bool IsList(Sense sense) {
  return sense == Sense::Choice || sense == Sense::ColourNumber;
}

bool HasRow(const MeaningRow& row, int item, int value) {
  const ChoiceList* list = ChoicesOf(row, View::Screen, item).list;
  const ChoiceList* other = row.meaning.otherChoices;
  const bool special = list != nullptr && value >= list->specials.first && value <= list->specials.last;
  return special || (list != nullptr && RowOfValue(*list, value)) ||
         (other != nullptr && RowOfValue(*other, value));
}

bool IsKind(int type) {
  const std::vector<int> kinds = OfferedInputTypes(PairIndependent, KindSkip);
  return std::ranges::find(kinds, type) != kinds.end();
}

bool MeasuresNothing(const ParameterRef& ref) {
  if (!IsOfChannel(ref) || IsOperationChannel(ref.item)) {
    return false;
  }
  const int kind = NumValue("C", ref.item, "TYPE");
  return kind == KindSkip || !IsKind(kind);
}

bool IsUnitOfOtherKind(const ParameterRef& ref, int value) {
  return ref.section == "C" && ref.tag == "UNIT" && !IsOperationChannel(ref.item) && !MeasuresNothing(ref) &&
         !OffersUnit(NumValue("C", ref.item, "TYPE"), value);
}

std::u16string KindName(int kind) {
  const std::u16string* name = CatalogueEntry(InputTypeNames, kind);
  return name == nullptr || name->empty() ? DecimalText(kind) : *name;
}

} // namespace loader
