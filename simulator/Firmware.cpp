#include "simulator/Firmware.h"

#include <algorithm>

namespace loader::simulator {

namespace {

struct Release {
  Model model;
  int firstNumber, lastNumber; // the two digits of the tag
  int generation;
};
constexpr Release Releases[] = {
    {Model::Kov, 0, 5, 0},   {Model::Kov, 6, 13, 1},  {Model::Kov, 14, 17, 2}, {Model::Kov, 18, 26, 3},
    {Model::Kov, 27, 39, 4}, {Model::Kov, 40, 99, 5}, {Model::Rug, 0, 9, 20},  {Model::Rug, 10, 99, 21},
};

constexpr char TagLetter(Model model) {
  return model == Model::Kov ? 'A' : 'W';
}

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

} // namespace

std::string_view ModelName(Model model) {
  return model == Model::Kov ? "KOV" : "RUG";
}

std::string_view BlockTag(Model model) {
  return model == Model::Kov ? "V00L" : "V00W";
}

std::string_view NewestTag(Model model) {
  return model == Model::Kov ? "V40A" : "V12W";
}

bool IsTag(std::string_view tag) {
  return !tag.empty() && tag.size() <= LongestTag && std::all_of(tag.begin(), tag.end(), [](char character) {
    return character > ' ' && character <= '~';
  });
}

Firmware FirmwareOf(Model model, std::string_view tag) {
  Firmware firmware{model, std::string(tag), model == Model::Kov ? 5 : 21, false};
  if (tag.size() != 4 || tag[0] != 'V' || !IsDigit(tag[1]) || !IsDigit(tag[2]) ||
      tag[3] != TagLetter(model)) {
    return firmware;
  }
  const int number = (tag[1] - '0') * 10 + (tag[2] - '0');
  for (const Release& release : Releases) {
    if (release.model == model && number >= release.firstNumber && number <= release.lastNumber) {
      firmware.generation = release.generation;
      firmware.regularTag = true;
    }
  }
  return firmware;
}

} // namespace loader::simulator
