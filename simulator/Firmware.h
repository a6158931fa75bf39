// Which recorder is simulated: its model, its firmware tag, and the register layout that this firmware
// speaks.
#pragma once

#include <string>
#include <string_view>

namespace loader::simulator {

enum class Model { Kov, Rug };

[[nodiscard]] std::string_view ModelName(Model model); // "KOV", "RUG"
[[nodiscard]] std::string_view BlockTag(Model model);  // the model's block of the shape file: "V00L", "V00W"
[[nodiscard]] std::string_view NewestTag(Model model); // the firmware when none is asked for
constexpr std::size_t LongestTag = 8;                  // characters of a firmware tag

// The layouts of KOV count 0 to 5 and those of RUG 20 and 21, as the loader counts them.
struct Firmware {
  Model model = Model::Kov;
  std::string tag;
  int generation = 5;
  // False for a tag that is not of the model's form ("V##A" of KOV, "V##W" of RUG): a recorder that reports
  // such a tag speaks the newest layout.
  bool regularTag = true;

  [[nodiscard]] bool IsKov() const { return model == Model::Kov; }
};

// A tag that a recorder can report: printing characters without blanks, at most LongestTag of them.
[[nodiscard]] bool IsTag(std::string_view tag);

[[nodiscard]] Firmware FirmwareOf(Model model, std::string_view tag);

} // namespace loader::simulator
