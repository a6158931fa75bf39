// The stores that the targets start from: those of the shipped initial settings file, built once.
#pragma once

#include <string_view>

#include "core/modMain.h"
#include "tests/fuzz/FuzzInput.h"

namespace loader::fuzz {

// Puts the model's profile and its fresh store in force. Also fills the catalogues at the first call.
void StartWithShippedStore(std::string_view model /* "KOV" or "RUG" */);

// A hostile store by the input: any number in every record, in any limits, one text in all of them; or the
// shipped one.
void FillStore(FuzzInput& input);
// Some numbers more.
void PatchStore(FuzzInput& input);
// Takes away what an initial settings file of another hand does not have.
void DropFromStore(FuzzInput& input);

// Ends the process where a store breaks what every reader of it relies on: a text is 64 characters, a section
// holds as many items as it says, all items of a section hold the same tags.
void RequireSoundStore(const ParamStoreTable& store);

// Runs `change` on every number, then on every text of the store, in its order.
template <typename OfNumber, typename OfText>
void ForEachRecord(ParamStoreTable& store, const OfNumber& ofNumber, const OfText& ofText) {
  for (ParamSection& section : store) {
    for (ParamItem& item : section.Items) {
      for (ParamNumRecord& record : item.NumRecords) {
        ofNumber(record);
      }
      for (ParamTextRecord& record : item.TextRecords) {
        ofText(record);
      }
    }
  }
}

} // namespace loader::fuzz
