#include "tests/comm/ExpectedStore.h"

#include <map>

namespace loader::test {

namespace {

constexpr std::string_view DefaultsOfOldChannel = "TAG2 STAG RECM OTCH SSCL SDIG SBAS SRES";
constexpr std::string_view DefaultsOfOldH = "SHOU BETU CFFL FTIT BAAL COMS COMB COMP PAS1 PAS2 RPAS";
constexpr std::string_view DefaultsOfOldestH =
    "TIMS YEAR MONT DAYS HOUR MINT SHOU BETU CFFL ASBY FSTN FZTI FPOI "
    "FTIR FTIT BAAL COMS COMB COMP PAS1 PAS2 RPAS";

Source FromByte(const std::map<std::string_view, int>& bytes, std::string_view tag) {
  const auto found = bytes.find(tag);
  return found == bytes.end() ? Source{} : Source{Source::Byte, found->second};
}

Source DefaultIf(bool isDefault) {
  return isDefault ? Source{Source::Default} : Source{};
}

Source SourceInG3(char section, std::string_view tag) {
  return DefaultIf(std::string_view("JKXLY").find(section) != std::string_view::npos ||
                   (section == 'H' && tag == "BETU"));
}

Source SourceInG2(char section, int item, std::string_view tag) {
  switch (section) {
  case 'A':
  case 'G':
  case 'T':
  case 'B':
  case 'M':
  case 'U':
    return {};
  case 'H':
    return DefaultIf(In(DefaultsOfOldH, tag));
  case 'D':
    return item < 5 ? Source{} : Source{Source::Kept};
  case 'C':
    return In(DefaultsOfOldChannel, tag) ? Source{Source::Default}
                                         : FromByte({{"FTIO", 84}, {"SEUN", 80}, {"SECU", 82}}, tag);
  case 'E':
    return In("TSBA TWDY TDAY TSTR TSTO TEXT TIMH TIMA TIMT", tag) ? Source{Source::Default}
                                                                   : FromByte({{"TCYC", 4}}, tag);
  default:
    return {Source::Default};
  }
}

Source SourceInG1(char section, int item, std::string_view tag) {
  switch (section) {
  case 'G':
  case 'T':
  case 'B':
  case 'M':
  case 'U':
    return {};
  case 'H':
    return DefaultIf(In(DefaultsOfOldH, tag));
  case 'D':
    return item < 5 ? Source{} : Source{Source::Kept};
  case 'A':
    return DefaultIf(item > 8);
  case 'C':
    return DefaultIf(item > 8 || In(DefaultsOfOldChannel, tag) || In("ROOT FTIO SEKI SEUN SECU STYP", tag));
  default:
    return {Source::Default};
  }
}

Source SourceInG0(char section, int item, std::string_view tag) {
  switch (section) {
  case 'M':
  case 'U':
    return {};
  case 'D':
    return item < 5 ? Source{} : Source{Source::Kept};
  case 'H':
    return In(DefaultsOfOldestH, tag) ? Source{Source::Default}
                                      : FromByte({{"MSMP", 4}, {"SSMP", 6}, {"ALMH", 36}, {"ALML", 38}}, tag);
  case 'B':
    return DefaultIf(item > 0 || tag == "BBRM");
  case 'T':
    return DefaultIf(item > 0 || In("TPVD TMEM", tag));
  case 'G':
    return DefaultIf(item > 0 || tag != "GNEM");
  case 'A':
    return DefaultIf(item > 8);
  case 'C':
    return DefaultIf(item > 8 || In(DefaultsOfOldChannel, tag) ||
                     In("ROOT SUBC FTIO SEKI SEUN SECU STYP", tag));
  default:
    return {Source::Default};
  }
}

} // namespace

Source SourceIn(const Generation& generation, char section, int item, std::string_view tag) {
  const std::vector<char> walked = Sections(generation.readOrder);
  if (std::find(walked.begin(), walked.end(), section) == walked.end()) {
    return {Source::Kept};
  }
  switch (generation.number) {
  case 0:
    return SourceInG0(section, item, tag);
  case 1:
    return SourceInG1(section, item, tag);
  case 2:
    return SourceInG2(section, item, tag);
  case 3:
    return SourceInG3(section, tag);
  default:
    return {};
  }
}

bool IsSpecial(const Generation& generation, char section, std::string_view tag) {
  return generation.number == 2 && ((section == 'C' && In("SEKI STYP", tag)) ||
                                    (section == 'E' && In("TSTR TSTO", tag)) || section == 'Z');
}

} // namespace loader::test
