// What the tests of the change of model share: a set-up of one model that is taken to another, as the window
// does it.
#pragma once

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

#include "conversion/modModelChng.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modMain.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Store.h"

namespace loader {

inline void PrintTo(Outcome outcome, std::ostream* out) {
  constexpr const char* Names[]{"Carried", "Renumbered", "Cleared", "Dropped", "NotCarried"};
  *out << Names[static_cast<int>(outcome)];
}
inline std::string PrintedValue(const ParameterValue& value) {
  const auto* number = std::get_if<std::int16_t>(&value);
  return number != nullptr ? std::to_string(*number) : "\"" + ToUtf8(std::get<std::u16string>(value)) + "\"";
}
inline void PrintTo(const ConvertedParameter& line, std::ostream* out) {
  *out << line.section << line.item << " " << line.tag << " ";
  PrintTo(line.outcome, out);
  *out << " " << PrintedValue(line.oldValue) << " -> item "
       << (line.newItem ? std::to_string(*line.newItem) : "none") << " "
       << (line.newValue ? PrintedValue(*line.newValue) : "none");
}

} // namespace loader

namespace loader::test {

class Conversion : public ::testing::Test {
protected:
  // A fresh set-up of "KOV" or "RUG".
  void Start(std::string_view model) { StartWithModel(platform, model); }
  // The set-up that stands becomes the old one; the new one is that of `model`.
  void Prepare(std::string_view model) {
    ParamStoreBackup = ParamStore;
    StartWithModel(platform, model);
  }
  ConversionReport ChangeTo(std::string_view model) {
    Prepare(model);
    return model == "KOV" ? ConvertToKov() : ConvertToRug();
  }
  // The other one than that in force.
  ConversionReport ChangeModel() { return ChangeTo(ModelCode == "KOV" ? "RUG" : "KOV"); }

  ScriptedPlatform platform;
};

} // namespace loader::test
