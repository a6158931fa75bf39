// The fields of a screen: one table of rows, one engine for all screens.
//
// A row names a control and the parameter that it stands for. What the parameter means (meaning/) decides the
// rest: which shape the field has, which rows its list offers, how a value is shown, what may be typed, which
// message refuses it. A screen adds what is truly its own.
//
// Two ways to store. The pages of the main window store at once: a list when it changes, an edit field when
// it is left. The dialogs hold copies in their fields and store on "適用": CheckFields, then StoreFields; or
// StoreField one by one where a screen keeps what it has stored before the first refusal.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/modMain.h"
#include "fields/NamedControls.h"
#include "meaning/ParameterText.h"
#include "platform/Controls.h"

namespace loader {

struct FieldRow {
  std::string_view control; // for a time of day the hour list; for an array its name
  std::string_view section;
  std::string_view tag; // of an array: '#' stands for the element's number, from 1
  int item = 0;         // counted from the entry that the screen shows
  // An array: element n stands for tag n + 1 where the tag has a '#', else for item n.
  int elements = 0;
  std::string_view minutes = {}; // the minute list of a time of day
  bool otherList = false;        // offers the parameter's second list, that of another generation
  bool asNumber = false;         // an edit field over a parameter that has a list as well: alsoTyped
  bool noneIsZero = false;       // a dialog's list that selects nothing stores 0
  int tooLong = 20117;           // message of a text with too many bytes, with @LEN@
  int forbidden = 0;             // message of a text with a comma, with @MID@; 0: the screen takes it
};

enum class FieldShape { List, TimeOfDay, Number, Octet, Text };

// A field that stands: a row, or an element of one, tied to its control.
struct Field {
  const FieldRow* row;
  const MeaningRow* meaning;
  FieldShape shape;
  std::string tag;
  int item;                // counted from the entry
  ListBox* list = nullptr; // List; TimeOfDay: the hours
  ListBox* minutes = nullptr;
  TextField* text = nullptr;
  // What the last fill has shown: a dialog leaves the record of a field that nobody has changed since as it
  // is, also where that is not the record's own form (a list without the stored value, a text with leading
  // blanks). A list in which another row was picked has changed, also when it is back at the first one.
  int shownRow = NoFill;
  std::u16string shownText = {};
  static constexpr int NoFill = -2;
};

enum class StoreTime { AtOnce, OnApply };

struct FieldSet {
  // Ties the rows to the screen's controls of those names, making those that the screen has not declared
  // itself, and their handlers. Defects of the program (std::logic_error): a parameter without a meaning, or
  // one that is no single field (an address mask, a word of a formula); a control of another kind; a text
  // whose row has no message for the comma that its meaning refuses, or one too many; a list that stands
  // before the one that decides it.
  FieldSet(Screen& owner, std::span<const FieldRow> rows, StoreTime storeTime);
  FieldSet(const FieldSet&) = delete;
  FieldSet& operator=(const FieldSet&) = delete;

  Screen& screen;
  const StoreTime storeTime;
  int entry = 0; // the item that the screen shows
  std::deque<Field> fields;
  // Those that the engine has made; neither list nor field moves once it stands.
  std::deque<ListBox> lists;
  std::deque<TextField> texts;

  // What a screen adds.
  std::function<const ChannelRow*()> channel;      // the channel whose values the fields show
  std::function<void(TextField&)> onRefusedNumber; // before the guard starts
  // A dialog: the user, or SelectRow, has picked another row than the one that stood. What the list decides
  // has been refilled and shows its first row by then.
  std::function<void(Field&)> onPicked;
  bool selectRefusedText = true; // a refused text has what is wrong with it selected
};

// The rows that each list offers on the model in force; nothing is selected. A dialog's list that another
// parameter decides goes by what that one's field shows.
void FillLists(FieldSet& set);
void FillList(FieldSet& set, Field& field);

// Store to screen. A value that its list does not have leaves an at-once list as it was and selects nothing
// in a dialog; a parameter that the model does not have leaves its field alone. A dialog's list whose rows
// differ from entry to entry (decided by another parameter, or by the channel before) is refilled first.
void FillField(FieldSet& set, Field& field);
void FillFields(FieldSet& set);
template <typename Wanted> void FillFieldsWhere(FieldSet& set, const Wanted& wanted) {
  for (Field& field : set.fields) {
    if (wanted(field)) {
      FillField(set, field);
    }
  }
}

// The check of a field as it stands, with its message and focus; a list is always good.
[[nodiscard]] bool CheckField(FieldSet& set, const Field& field);
// All of them, up to the first that is refused.
[[nodiscard]] bool CheckFields(FieldSet& set);
// A dialog: whether the user has changed the field since it was filled; a list in which a row was picked
// counts as changed whatever that row.
[[nodiscard]] bool IsChanged(const FieldSet& set, const Field& field);
[[nodiscard]] bool AnyChanged(const FieldSet& set);
// Screen to store, behind the check. In a dialog a field that nobody has changed leaves its record as it is.
// So does a list that selects nothing, with two exceptions that store 0: a row of `noneIsZero`, and a list
// that offers no rows because of what decides it.
[[nodiscard]] bool StoreField(FieldSet& set, const Field& field);
// Behind CheckFields: false is a defect of the fields (a text that passed its check and cannot be stored). A
// dialog in which nothing was changed does not call it: the exceptions above would write.
[[nodiscard]] bool StoreFields(FieldSet& set);

// The field of a control; one that the set does not have is a defect of the program (std::logic_error).
[[nodiscard]] Field& FieldOf(FieldSet& set, std::string_view control);

} // namespace loader
