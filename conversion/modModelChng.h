// The change of model: what the user changed on the old model goes into the store of the new one.
//
// ParamStoreBackup holds the set-up of the old model, ParamStore the initial settings of the new one. The
// models differ in size, and references are plain numbers: channel 19 is the first operation channel of a KOV
// and a measuring channel of a RUG. So what was changed is carried, renumbered where it refers to something
// and dropped where the new model has no place for it; everything else is the new model's default.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/modMain.h"

namespace loader {

// What became of a parameter that the user had changed.
enum class Outcome {
  Carried,    // as it was
  Renumbered, // it names the same thing by the new model's number
  Cleared,    // what it named the new model does not have: 0, or the number 0 of the same kind in a formula
  Dropped,    // the new model does not have its item
  NotCarried, // by rule: its section, or the tag itself; also a tag that the new model does not have, and a
              // new number that its place cannot hold
};

// A number, or a text without the blanks at its end.
using ParameterValue = std::variant<std::int16_t, std::u16string>;

struct ConvertedParameter {
  std::string section; // without its blanks
  int item = 0;        // in the old set-up
  std::string tag;     // without its blanks
  Outcome outcome = Outcome::Carried;
  ParameterValue oldValue;
  std::optional<int> newItem; // in the new set-up; empty: the new model does not have the item
  // What the new set-up holds in its place, be it the default; empty: the new model does not have the
  // parameter.
  std::optional<ParameterValue> newValue;
  bool operator==(const ConvertedParameter&) const = default;
};

// Every changed parameter of the old set-up, in its order; of an item the texts stand first. What equals its
// default was not changed.
using ConversionReport = std::vector<ConvertedParameter>;

// From a KOV in ParamStoreBackup to a RUG in ParamStore, and the other way. Nobody is asked and nothing
// fails: the worst that becomes of a value is the new model's default. ParamStoreBackup stays as it is.
ConversionReport ConvertToRug();
ConversionReport ConvertToKov();

// The steps of one item of the old store: its changed texts, its changed numbers. `section` counts in
// ParamStoreBackup; the target is item + offset of the section of that letter. What does not exist in either
// store is passed over.
void CopyTextRecords(int section, int item, int offset, char sectionLetter, ConversionReport& report);
void CarryNumRecordsUp(int section, int item, int offset, char sectionLetter, ConversionReport& report);
void CarryNumRecordsDown(int section, int item, int offset, char sectionLetter, ConversionReport& report);

} // namespace loader
