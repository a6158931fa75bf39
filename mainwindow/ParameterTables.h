// The tables of the main window: BuildTables lays them out for the model, RefreshAll fills everything from
// the store.
//
// All of this works on the window that is open (frmParamLoader). A fill shows no message: a value outside its
// list leaves the cell as it was, a number outside its limits leaves it blank.
#pragma once

namespace loader {

// Model-dependent visibility, table layout, all fixed lists. Writes no values.
void BuildTables();
// Fills every table and page from ParamStore.
void RefreshAll();

// One row of fgrCh; the channel number counts from 1.
void FillChannelRow(int channelNumber);
// One row of fgrOperationChSet; the channel number counts on behind the measuring channels.
void FillOperationRow(int channelNumber);
void FillConstantRow(int number);
void FillMessageRow(int number);
void FillUnitRow(int number);
void FillGroupTable();
// One row of flxEMailTriggerSetting; the number counts from 1.
void FillMailTriggerRow(int number);
void FillMailTriggerTable();

// All rows of a table, with its drawing off meanwhile.
void FillChannelTable();
void FillOperationTable();
void FillConstantTable();
void FillMessageTable();
void FillUnitTable();

} // namespace loader
