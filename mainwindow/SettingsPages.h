// The fields of the settings pages: one table of fields, four handler shapes.
//
// There is no OK: a list writes its record when it changes, an edit field when it loses the focus. The fills
// are the opposite direction.
#pragma once

#include <span>
#include <string_view>

#include "core/TextTable.h"
#include "core/modIni.h"

namespace loader {

struct ParamLoaderScreen;

// How a field stands for its record.
enum class FieldShape {
  List,      // the stored value is the row
  Time,      // an hour list and a minute list over minutes of the day
  Number,    // checked when left, position 0, limits of the record
  Octet,     // digits only, limits of the record
  MailText,  // trimmed while it is edited, checked by length when left
  PlainText, // checked by length when left
};

struct SettingsField {
  std::string_view control; // for Time: the hour list; `second` is the minute list
  FieldShape shape;
  std::string_view section;
  int item;
  std::string_view tag;
  std::string_view second = {};
};

// Every field of the pages, control arrays spelled out ("cmbDI(3)").
[[nodiscard]] std::span<const SettingsField> SettingsFields();

// What a list of the pages offers.
enum class ListExtent {
  All,           // every entry of the catalogue
  DOCount,       // the model's alarm outputs: the text at the head, then the relay numbers
  ExternalInput, // the model's DIs, then four alarms for each channel
  UserLevels,    // the first and the fourth entry
  Today,         // the present date in five patterns
};
struct SettingsList {
  std::string_view control;
  const Catalogue* list;
  ListExtent extent = ListExtent::All;
  int headText = 0; // DOCount: id of the text at the head
};
// In the order in which BuildTables refills them; those of the Ethernet page follow the group table.
[[nodiscard]] std::span<const SettingsList> RecorderLists();
[[nodiscard]] std::span<const SettingsList> EthernetLists();

// Makes the labels, frames, lists and fields of the pages in the window and ties their handlers.
void MakeSettingsControls(ParamLoaderScreen& window);
// The row of the model list for the model in force.
[[nodiscard]] int ModelRow();
// What is shown for the model in force; a model other than KOV and RUG leaves all as it is.
void ApplyModelVisibility(ParamLoaderScreen& window);
void FillRecorderLists(ParamLoaderScreen& window);
void FillEthernetLists(ParamLoaderScreen& window);

// Store to screen, on the window that is open.
void FillSettingsPages(); // sections H, E and, for KOV, Z
void FillDigitalInputs(); // section D
void FillEthernetPage();  // section J, addresses and functions
void FillUserAccounts();  // section K
void FillMailPage();      // section J, mail

struct CaptionOf {
  std::string_view control;
  TextId text;
};
// The labels and the frames of the pages with their captions; the lists of the whole window's captions are
// longer.
[[nodiscard]] std::span<const CaptionOf> PageLabels();
[[nodiscard]] std::span<const CaptionOf> PageFrames();

} // namespace loader
