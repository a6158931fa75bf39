// Every defect of a parameter file, with line, key and reason, and whether the window would open it.
//
// The window is more lenient than this: it says of a bad file only that it does not open, and of a file that
// opens nothing, whatever its values are. Each defect tells by its severity what the window makes of it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/Parameters.h"
#include "companion/SetUps.h"

namespace loader {

enum class Severity {
  PreventsOpening,
  Lost,     // the file opens, but what the line says is changed by opening or saving it
  Doubtful, // the file opens, but the value is wrong, or not as the window writes it
};

// The names of the reasons are those of the JSON report, in another spelling: ReasonWord.
enum class CheckReason {
  // Of the reader
  NoComma,
  ItemIsNoNumber,
  UnknownSection,
  UnknownItem,
  UnknownTag,
  NotANumber,
  Beyond16Bits,
  TimeBeyond16Bits,
  TextWithComma,
  TextBeyond64Characters,
  // Of the file and its lines
  Utf16,
  Utf8,
  Binary,
  EmptyFile,
  NoHead,
  HeadNotFirst,
  LineEnd,
  NoLastLineEnd,
  ControlCharacter,
  NoCharacter, // bytes that are none in code page 932
  UnusualKey,
  SameKeyAgain,
  OtherModel, // the file calls itself another model than it is by its content
  // Of the values
  ChangedOnOpening,
  NotKept, // by a save and another open
  TextTooLong,
  CommaInText,
  OutsideLimits, // of its record
  OutsideField,  // of what its field takes
  OutsideList,
  NoSuchReference, // a channel, an input or an output that the model does not have
  KindsCannotPair,
  FormulaWord,
  NoRule, // between two terms of a formula
  TwoAverages,
};
// "no-such-reference".
[[nodiscard]] std::string_view ReasonWord(CheckReason reason);
// "prevents-opening", "lost", "doubtful".
[[nodiscard]] std::string_view SeverityWord(Severity severity);

struct CheckDefect {
  std::size_t line = 0; // from 1; 0: the file as a whole, or a parameter that no line sets
  std::u16string key =
      {}; // as the file has it, cut behind the columns of a key; empty for what looks like none
  CheckReason reason = CheckReason::NoComma;
  Severity severity = Severity::PreventsOpening;
  std::u16string message = {};
  // The parameter that is meant, where there is one, by today's names; its name is that of reports.
  std::optional<ParameterRef> ref = {};
  std::u16string name = {};
  // What the line says, or the store holds where no line is told; a long one is cut. Nothing where there is
  // none, and for a secret that is hidden. So is what stands in a line whose parameter is not known: it may
  // be the line of a password whose key is damaged.
  std::optional<std::u16string> value = {};
};

// A key of an older file that the reader takes for another one: no defect.
struct OlderKey {
  std::size_t line = 0;
  std::u16string key;
  std::string readAs;      // the key of today
  bool superseded = false; // a line behind it sets the same parameter by its key of today
};

struct CheckedFile {
  std::u16string file; // as it was given
  ModelFinding finding;
  std::string model; // that it was checked as, also where the finding is unsettled
  bool opens = false;
  std::vector<CheckDefect> defects; // by ascending line
  std::size_t untold = 0;           // defects beyond the most that are told: a file that is none has millions
  std::vector<OlderKey> olderKeys;
  std::vector<ParameterRef> missing; // parameters that the file does not name: they stay at their default
};
[[nodiscard]] inline bool HasDefects(const CheckedFile& checked) {
  return !checked.defects.empty();
}

// The most defects that are told of one file, and of one that is no text of code page 932 at all.
constexpr std::size_t MostDefectsTold = 10000;
constexpr std::size_t MostDefectsOfNoText = 10;

// Checks the bytes of a file of that name. A model that was asked for settles it; a file that fits both
// models or neither is checked as the one of which it has fewer lines that prevent opening.
[[nodiscard]] CheckedFile CheckBytes(std::u16string_view file, std::string_view bytes,
                                     const std::string& askedModel, const Speech& speech);
// The same for a file or the initial settings. Undone for a recorder and a file that cannot be read.
[[nodiscard]] CheckedFile CheckSetUp(const SetUpAddress& address, const std::string& askedModel,
                                     const Speech& speech);

} // namespace loader
