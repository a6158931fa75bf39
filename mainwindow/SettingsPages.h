// The settings pages: their fields, captions and what the model shows of them.
//
// There is no OK: a list writes its record when it changes, an edit field when it loses the focus.
#pragma once

#include <span>

#include "fields/Captions.h"
#include "fields/Fields.h"

namespace loader {

struct ParamLoaderScreen;

// Every field of the pages.
[[nodiscard]] std::span<const FieldRow> SettingsFields();

// Makes the labels and frames of the pages in the window, and what their fields do beyond the rule.
void MakeSettingsControls(ParamLoaderScreen& window);
// The row of the model list for the model in force.
[[nodiscard]] int ModelRow();
// What is shown for the model in force; a model other than KOV and RUG leaves all as it is.
void ApplyModelVisibility(ParamLoaderScreen& window);
// Every list of the pages, refilled for the model in force.
void FillPageLists(ParamLoaderScreen& window);

// Store to screen, on the window that is open.
void FillSettingsPages(); // sections H, E and, for KOV, Z
void FillDigitalInputs(); // section D
void FillEthernetPage();  // section J, addresses and functions
void FillUserAccounts();  // section K
void FillMailPage();      // section J, mail

// The labels and the frames of the pages with their captions. Those of the rest of the window are set where
// the window is made.
[[nodiscard]] std::span<const CaptionOf> PageLabels();
[[nodiscard]] std::span<const CaptionOf> PageFrames();

} // namespace loader
