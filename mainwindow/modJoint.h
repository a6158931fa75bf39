// Copy and paste of table entries: a measuring channel, an operation channel, a message, a unit name.
//
// It is a copy inside ParamStore, through no clipboard: Copy remembers a row, Paste takes the current row as
// the target and copies the parameters across. A paste copies Value alone: what was read and the defaults of
// the target stay its own, so that a change of model carries what was pasted.
#pragma once

#include "mainwindow/frmParamLoader.h"

namespace loader {

// Remembers the current row of the table that Copy and Paste act on; groups and constants have no copy.
void CopyEntry(ParamLoaderScreen& window);
// Asks, then copies what was remembered (row 0 without a copy) to the current row of the page's table; on the
// page of the displays, of the table that had the focus last. Nothing during an exchange with the recorder.
void PasteEntry(ParamLoaderScreen& window);

// The copies themselves, without any check; a tag that the model does not have is passed over. Items count
// from 0.
void CopyChannelRecords(int source, int target); // items of sections C and A
void CopyOperationFormulas(int source, int target);
void CopyMessageRecords(int source, int target);
void CopyUnitRecords(int source, int target);

} // namespace loader
