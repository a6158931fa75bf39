// What each parameter means: one row of data for each, read by tables, pages, dialogs, text output, reports
// and documents.
//
// The initial settings file says where a parameter lies and which limits it has. What its number stands for
// (a row of which list, a value at which position, minutes of the day, a bit mask) stands in MeaningTable.cpp
// and nowhere else. So does each place where table, screen and text output show a parameter differently: see
// Differences there.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/OwnTexts.h"
#include "meaning/ChoiceLists.h"

namespace loader {

// What the stored number or text is.
enum class Sense {
  Number,       // a number at a position within limits: NumberRule
  Plain,        // the number as it stands, whatever its limits
  Choice,       // a row of `choices`
  ColourNumber, // a row of `choices`, shown as a colour where a table can
  TimeOfDay,    // minutes since midnight
  Octet,        // one of the four numbers of an address, which stand together
  AddressMask,  // bit n stands for mail address n + 1
  FormulaWord,  // a byte each for what a term of a formula is made of: operation/Formula
  Text,
};

// Where the decimal point of a number stands.
enum class Position {
  Whole,       // no digits behind the point
  Channel,     // POIN of the channel
  FValue,      // FPOI of section H under the F value function, else POIN
  Measuring,   // of the input kind, or of the channel that the channel refers to
  Terminals,   // the same on a screen, where a reference stands at the position of its kind: ReferencePoint
  Engineering, // POIN under scaling and for another channel's value, else that of the kind
  RecordRange, // FPOI under the F value function, else as Engineering
  Constant,    // CONP of the constant
};

enum class Within {
  Record,      // MinValue and MaxValue of the parameter itself
  Kind,        // what the input kind (or the channel referred to) can measure
  Terminals,   // what the terminals take: MeasuringLimits
  Engineering, // the kind's without scaling, else the record's; exponents under the logarithm
  RecordRange, // as Engineering; without the logarithm the record's under the F value function
  Alarm,       // the kind's without scaling, else the record's; as RecordRange under the F value function
};

// How a number reads while the channel's logarithm is on.
enum class UnderLogarithm {
  AsEver,
  Exponent, // a whole exponent, where the kind does not limit the value
  Power,    // the exponent as a power of ten: "1.00E3"
  Scaled,   // a number on the measuring range's scale and at its position, as its power: LogValueText
};

struct NumberRule {
  Position position = Position::Whole;
  Within within = Within::Record;
  UnderLogarithm logarithm = UnderLogarithm::AsEver;
};

// What a text field does with blanks and commas.
enum class TextForm {
  AsTyped,        // trailing blanks are lost in the record
  TrimmedAsTyped, // both ends, with each edit
  TrimmedOnLeave, // both ends, when the field is left
};

struct TextKind {
  TextForm form = TextForm::AsTyped;
  bool commaRefused = false; // the comma separates the fields of the parameter file
};

enum class Use {
  Setting,  // a screen edits it
  Unshown,  // kept in files and recorders; no screen shows it
  Clock,    // the recorder's clock, written by its command alone
  Command,  // a register that triggers something
  Identity, // what the recorder is or does, read only
};

// Whether the printed sheet has a text for it; where it has none, its field stays empty.
enum class Printed { Always, OnKov, Never };

// What a parameter is called: the caption of its frame and the one of its label, where the screens have one,
// or own words in place of either. '#' stands for the family's digits; a name without one is followed by
// them.
struct ParameterNames {
  int group = 0; // text ids; 0: none
  int label = 0;
  std::optional<OwnTextId> ownGroup = {};
  std::optional<OwnTextId> ownLabel = {};
  std::string_view english = {}; // empty: that of ownLabel
};

struct Meaning {
  std::string_view section;
  std::string_view tag; // '#' stands for one digit: "A#VL" is A1VL to A4VL
  ParameterNames names;
  Sense sense;
  const ChoiceList* choices = nullptr;      // Choice, Colour
  const ChoiceList* otherChoices = nullptr; // a second list for the same number, of another generation
  bool alsoTyped = false; // a screen has an edit field over it too: any number within the record's limits
  NumberRule number = {};
  TextKind text = {};
  // Choices that another parameter of the item decides: by its value; nullptr: it has no meaning there.
  std::string_view decidedBy = {};
  std::span<const ChoiceList* const> byDecider = {};
  std::string_view dependsOn = {}; // what else position, limits or rows depend on, for the reader
  Use use = Use::Setting;
  bool kovOnly = false; // no screen of RUG shows it
  bool secret = false;  // a password: reports hide it
  Printed printed = Printed::Always;
};

// The three ways in which a parameter is shown.
enum class View { Table, Screen, Sheet };
constexpr std::size_t Views = 3;

// Whether the printed sheet of the model in force has a text for the parameter.
[[nodiscard]] bool IsPrinted(const Meaning& meaning);

// Where a view shows a parameter differently from its row, and why.
struct Difference {
  std::string_view section;
  std::string_view tag;
  View view;
  Sense sense;
  const ChoiceList* choices;
  NumberRule number;
  std::string_view reason;
};

// How one view shows a parameter.
struct Form {
  Sense sense;
  const ChoiceList* choices;
  NumberRule number;
};

struct MeaningRow {
  Meaning meaning;
  std::array<Form, Views> forms; // by View
};

// Every parameter, in the order of the initial settings file.
[[nodiscard]] std::span<const MeaningRow> Meanings();
[[nodiscard]] std::span<const Difference> Differences();
// The row of a parameter; nullptr for one that the table does not know.
[[nodiscard]] const MeaningRow* FindMeaning(std::string_view section, std::string_view tag);
// The same for one that is named in the code: a missing row is a defect of the program (std::logic_error).
[[nodiscard]] const MeaningRow& MeaningOf(std::string_view section, std::string_view tag);

[[nodiscard]] inline const Form& FormIn(const MeaningRow& row, View view) {
  return row.forms[static_cast<std::size_t>(view)];
}

// --- Names for reports

enum class Language { Japanese, English };

// What the items of a section are: "CH 3", "Group 2".
struct SectionNames {
  std::string_view code;
  std::optional<OwnTextId> item; // before the item's number; none: the section has one item
  std::string_view description;  // of one item, for documents
};
[[nodiscard]] std::span<const SectionNames> Sections();

// "警報No.1 警報設定値", "Alarm 1 set value": without the item.
[[nodiscard]] std::u16string ParameterName(const Meaning& meaning, std::string_view tag, Language language);
// "CH 3", "Group 2"; empty where a section has one item or its items have no name.
[[nodiscard]] std::u16string ItemName(std::string_view section, int item, Language language);
// "CH 3 警報No.1 警報設定値". A parameter without a row is named by its section, item and tag.
[[nodiscard]] std::u16string FullName(std::string_view section, int item, std::string_view tag,
                                      Language language);

} // namespace loader
