// What the parts of a check share: for companion/Check*.cpp alone.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "companion/Check.h"
#include "core/modMain.h"
#include "files/ParameterFile.h"

namespace loader::check {

// Letter, item and tag in one number: a file has thousands of keys, each of which is sought several times.
// The tag may be padded.
[[nodiscard]] std::uint64_t PackedKey(std::string_view section, int item, std::string_view tag);

// Where a parameter stands in the file.
struct SetBy {
  std::size_t line = 0;
  std::u16string key;
  std::u16string value;
};

// What has been found so far. The set-up of the file is in force.
class Findings {
public:
  Findings(CheckedFile& result, const Speech& speech) : result_(result), speech_(speech) {}

  [[nodiscard]] CheckedFile& result() { return result_; }
  [[nodiscard]] Language language() const { return speech_.language; }
  void TellAtMost(std::size_t most) { most_ = most; }
  // Whether no more is told; what is told all the same is counted. Asked where there may be millions.
  [[nodiscard]] bool Full() const { return result_.defects.size() >= most_; }
  void CountUntold() { ++result_.untold; }

  // Of the file as a whole, or of a line of which no parameter is known.
  void TellLine(std::size_t line, std::u16string key, CheckReason reason, Severity severity,
                std::u16string message);
  // Of a line, whose parameter is known; or of a parameter that no line sets (line 0).
  void TellParameter(const ParameterRef& ref, const SetBy& at, CheckReason reason, Severity severity,
                     std::u16string message);
  [[nodiscard]] std::u16string Words(Phrase phrase, std::initializer_list<Filling> fillings = {}) const {
    return Say(phrase, speech_.language, fillings);
  }

private:
  void Add(CheckDefect defect);
  [[nodiscard]] bool Hides(const ParameterRef& ref, std::u16string_view value) const;

  CheckedFile& result_;
  const Speech& speech_;
  std::size_t most_ = MostDefectsTold;
};

// The key of a line as a report shows it: cut behind the columns of a key, since what stands in its place in
// a damaged line may be a value.
[[nodiscard]] std::u16string ShownKey(std::string_view key);
// A value as a report shows it: cut, and without characters that a terminal would obey.
[[nodiscard]] std::u16string ShownValue(std::u16string_view value);

// --- The file and its lines (CheckLines.cpp)

// What the bytes as a whole are, where they are no text of code page 932.
void CheckEncoding(Findings& findings, std::string_view bytes);
// What is told of lines whatever they say: their ends, control characters, the head.
void CheckForm(Findings& findings, std::string_view bytes);
// Whether the bytes are no text of code page 932 at all (UTF-16, binary).
[[nodiscard]] bool IsNoText(std::string_view bytes);

// The lines that were laid, in their order.
class LaidLines {
public:
  explicit LaidLines(Findings& findings) : findings_(findings) {}
  void Take(const LaidLine& line);
  // A line that names a parameter and could not be laid.
  void TakeBad(const FileDefect& defect);
  // Older keys and parameters that no line names, when all lines were taken.
  void Finish();
  // The line that sets a parameter, or line 0 with the parameter's own key.
  [[nodiscard]] SetBy Of(const ParameterRef& ref, std::u16string_view value) const;

private:
  struct Place {
    std::size_t line;
    std::string key;
    std::string value;
    bool older; // its key is not that of today
  };
  void CheckKey(const LaidLine& line, const SetBy& at);
  void CheckAgain(const LaidLine& line, const SetBy& at, bool older);
  void CheckValue(const LaidLine& line, const SetBy& at, bool older);

  Findings& findings_;
  std::unordered_map<std::uint64_t, Place> places_; // by the parameter that was laid
  struct Renamed {
    std::uint64_t laid;
    std::size_t note; // in olderKeys
  };
  std::vector<Renamed> renamed_;
  std::vector<std::uint64_t> named_; // by the keys of the file
};

// --- The values (CheckValues.cpp, CheckFormulas.cpp)

// What stands in the store in force other than in the initial settings `initial`.
void CheckValues(Findings& findings, const LaidLines& lines, const ParamStoreTable& initial);
void CheckFormulas(Findings& findings, const LaidLines& lines, const ParamStoreTable& initial);

// --- The set-up as a whole (Check.cpp)

// What the store in force would not keep through a save and an open.
void CheckSaveAndOpen(Findings& findings, const LaidLines& lines, const WholeSetUp& initial);

} // namespace loader::check
