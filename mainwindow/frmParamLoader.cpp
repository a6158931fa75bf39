#include "mainwindow/frmParamLoader.h"

#include <array>
#include <stdexcept>
#include <vector>

#include "channelscreens/frmChSetting.h"
#include "channelscreens/frmOperationChSet.h"
#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "comm/RecorderCommands.h"
#include "comm/frmIPSetting.h"
#include "comm/frmTimeChange.h"
#include "conversion/modModelChng.h"
#include "core/ModelProfile.h"
#include "core/OwnTexts.h"
#include "core/PathText.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modIniReadWrite.h"
#include "dialogs/frmConstSetting.h"
#include "dialogs/frmEMailTriggerSetting.h"
#include "dialogs/frmGroupSetting.h"
#include "dialogs/frmMsgSetting.h"
#include "dialogs/frmUnitSetting.h"
#include "files/ParameterFile.h"
#include "files/TextOutput.h"
#include "mainwindow/CellsKept.h"
#include "mainwindow/ParameterTables.h"
#include "mainwindow/SettingsPages.h"
#include "mainwindow/StatusLine.h"
#include "mainwindow/TableLayouts.h"
#include "mainwindow/UserGuide.h"
#include "mainwindow/WindowCaptions.h"
#include "mainwindow/frmAbout.h"
#include "mainwindow/modJoint.h"

namespace loader {

std::unique_ptr<ParamLoaderScreen> frmParamLoader;

namespace {

constexpr int StartWidth = 800;
constexpr int StartHeight = 650;

// Checks the entry of the index and no other; an index outside the array checks none.
void CheckOnly(ControlArray<MenuEntry>& entries, int index) {
  for (int n = 0; n < entries.Count(); ++n) {
    entries(n).checked = n == index;
  }
}

void ShowRecorder(ParamLoaderScreen& window) {
  window.statusRecorder.caption = RecorderText(Settings, ModelCode);
}

void Do(ParamLoaderScreen& window, Deed deed, const DeedAction& action) {
  DoAndTell(deed, action, [&window](const DeedDone& done) { window.statusDone.caption = DoneText(done); });
}

void ShowCommSettings(ParamLoaderScreen& window) {
  CheckOnly(window.menuRScomunicationf, Settings.ConfiguredLink);
  CheckOnly(window.smenuCOM, Settings.ComPortIndex);
  ShowRecorder(window);
}

bool HasTablesToCopyIn(int page) {
  return page == ChannelPage || page == OperationPage || page == DisplayPage;
}

constexpr int OpenButton = 1;
constexpr int CopyButton = 2;
constexpr int PasteButton = 3;

// Paste changes the set-up: not offered while an exchange holds the controls. Copy only remembers a row.
void OfferPaste(ParamLoaderScreen& window, bool noExchange) {
  const bool offered = noExchange && HasTablesToCopyIn(window.tbsParameter.current);
  window.smenuPaste.enabled = offered;
  window.V(PasteButton).enabled = offered;
}

void ChangePage(ParamLoaderScreen& window) {
  const int page = window.tbsParameter.current;
  window.CopySourceRow = 0;
  window.CopyKind = page == ChannelPage     ? CopyKinds::Channels
                    : page == OperationPage ? CopyKinds::OperationChannels
                                            : CopyKinds::None;
  const bool tables = HasTablesToCopyIn(page);
  window.smenuCopy.enabled = tables;
  for (int button = 1; button <= window.V.Count(); ++button) {
    if (button == OpenButton && ExchangeUnderWay(window)) {
      continue; // as the exchange has it: it is not offered until that has ended
    }
    window.V(button).enabled = tables || button != CopyButton;
  }
  OfferPaste(window, window.btnRegRead.enabled && window.btnRegWrite.enabled);
  if (!tables) {
    // On all three pages alike, deliberately, although the field lies on the recorder's page.
    RequestFocus(ListNamed(window, "cmbMainSample"));
  }
  if (page == ChannelPage) {
    FillChannelTable();
  } else if (page == OperationPage) {
    FillOperationTable();
  }
}

void TakeCopyFocus(ParamLoaderScreen& window, CopyKinds kind) {
  if (window.CopyKind != kind) {
    window.CopyKind = kind;
    window.CopySourceRow = 0;
  }
}

// The file commands are not offered during an exchange: an open would pull the store from under it.
void DoWithFile(ParamLoaderScreen& window, Deed deed, void (*command)()) {
  if (!ExchangeUnderWay(window)) {
    Do(window, deed, [command] {
      command();
      return DeedResult{};
    });
  }
}

void OpenFile(ParamLoaderScreen& window) {
  DoWithFile(window, Deed::Open, [] { OpenParameterFile(RefreshAll); });
}

// A file that the user has dragged here may come by mistake: nothing is replaced without a click.
void OpenDropped(ParamLoaderScreen& window, const std::filesystem::path& file) {
  if (ExchangeUnderWay(window)) {
    return;
  }
  const std::u16string name = PathText(file.filename());
  if (AskBeforeLoss(Replace(OwnText(OwnTextId::OpenDroppedFile), u"@FILE@", name))) {
    Do(window, Deed::Open, [&] {
      OpenParameterFile(file, RefreshAll);
      return DeedResult{.file = name};
    });
  }
}

// The saved model where the list has it, else the model in force.
void PutModelBack(ParamLoaderScreen& window, std::optional<std::int16_t> saved) {
  const bool listed = saved && *saved >= 0 && *saved < static_cast<int>(window.cmbType.items.size());
  window.cmbType.index = listed ? *saved : ModelRow();
}

void ChangeModel(ParamLoaderScreen& window) {
  const int picked = window.cmbType.index;
  const std::optional<std::int16_t> saved = ParseInt16(GetIniValue(LoaderSection, "TYPE", LoaderIniPath()));
  if (saved && picked == *saved) {
    return;
  }
  // A new model would pull the store from under a flow.
  if (window.flowUnderWay) {
    // Only this flow keeps the list enabled to its end; it looks free in the others while their link is still
    // being opened.
    if (window.lastFlow == Flow::StoreSettings) {
      ShowMessage(LoadText(20102));
    }
    PutModelBack(window, saved);
    return;
  }
  if (!AskBeforeLoss(LoadText(11016))) {
    PutModelBack(window, saved);
    return;
  }
  SaveCommSettings();
  window.CopySourceRow = 0;
  const std::u16string type = DecimalText(picked);
  SetIniValue(LoaderSection, "TYPE", type, LoaderIniPath());
  // The rebuild takes the model from the file: where that cannot be written, it would throw the set-up away
  // and stay with the old model.
  if (GetIniValue(LoaderSection, "TYPE", LoaderIniPath()) != type) {
    ShowMessage(LoadText(11002));
    window.cmbType.index = ModelRow();
    return;
  }
  ParamStoreBackup = ParamStore;
  if (!RebuildStoreOrEnd()) {
    return;
  }
  const CellsKept kept(window);
  BuildTables();
  // The window shows nothing of the report.
  if (picked == 0) {
    ConvertToKov();
  } else {
    ConvertToRug();
  }
  RefreshAll();
  ShowRecorder(window);
}

// False keeps the window open.
bool MayClose(ParamLoaderScreen& window) {
  if (ExchangeUnderWay(window)) {
    ShowMessage(LoadText(20102));
    return false;
  }
  if (!AskOkCancel(LoadText(20100))) {
    return false;
  }
  SerialControl& port = ThePlatform().MSComm1;
  if (port.PortOpen()) {
    try {
      port.SetPortOpen(false);
    } catch (const RunTimeFailure&) {
      // A device that was unplugged is closed as far as the program is concerned.
    }
  }
  SaveCommSettings();
  return true;
}

void TieMenus(ParamLoaderScreen& window) {
  window.smenuOpen.onClick = window.V(1).onClick = [&window] { OpenFile(window); };
  window.smenuOverWrite.onClick = [&window] { DoWithFile(window, Deed::Save, SaveParameterFile); };
  window.smenuTextWrite.onClick = [&window] { DoWithFile(window, Deed::TextOutput, WriteTextOutput); };
  window.smenuEnd.onClick = [&window] { ThePlatform().screens.Close(window); };
  window.smenuCopy.onClick = window.V(2).onClick = [&window] { CopyEntry(window); };
  window.smenuPaste.onClick = window.V(3).onClick = [&window] { PasteEntry(window); };
  window.menuRSipaddr.onClick = [&window] {
    ShowIpSetting();
    ShowRecorder(window);
  };
  window.menuGuide.onClick = ShowUserGuide;
  window.menuVersion.onClick = window.V(4).onClick = [] { ShowAbout(); };
  for (int link = 0; link < window.menuRScomunicationf.Count(); ++link) {
    window.menuRScomunicationf(link).onClick = [&window, link] {
      Settings.ConfiguredLink = static_cast<std::int16_t>(link);
      ShowCommSettings(window);
    };
  }
  for (int port = 0; port < window.smenuCOM.Count(); ++port) {
    window.smenuCOM(port).onClick = [&window, port] {
      Settings.ComPortIndex = static_cast<std::int16_t>(port);
      ShowCommSettings(window);
    };
  }
}

void TieDialogs(ParamLoaderScreen& window) {
  window.rowDialogs.channel = [](int channel) { ShowChSetting(channel); };
  window.rowDialogs.operation = [](int channel) { ShowOperationChSet(channel); };
  window.rowDialogs.group = ShowGroupSetting;
  window.rowDialogs.message = ShowMsgSetting;
  window.rowDialogs.unit = ShowUnitSetting;
  window.rowDialogs.constant = ShowConstSetting;
  // The row of a trigger is its number, from 1; its table follows each "適用" while the dialog is open.
  window.rowDialogs.mailTrigger = [](int row) { ShowEMailTriggerSetting(row - 1, FillMailTriggerRow); };
}

int EntryOfRow(const Grid& table) {
  return table.Row - table.FixedRows;
}

// What a double click on a table opens, and which tables its dialog may have changed.
struct RowOpening {
  Grid ParamLoaderScreen::*table;
  RowDialog RowDialogs::*dialog;
  int (*entryOf)(const Grid& table);
  void (*rewrite)();
};
constexpr std::array<RowOpening, 7> RowOpenings{{
    {&ParamLoaderScreen::fgrCh, &RowDialogs::channel, EntryOfRow, RefreshAll},
    {&ParamLoaderScreen::fgrOperationChSet, &RowDialogs::operation,
     [](const Grid& table) { return EntryOfRow(table) + Profile.FirstOperationChannel - 1; }, RefreshAll},
    {&ParamLoaderScreen::fgrGroup, &RowDialogs::group, EntryOfRow,
     [] {
       FillGroupTable();
       FillChannelTable(); // a group may name channels
     }},
    {&ParamLoaderScreen::fgrMess, &RowDialogs::message, EntryOfRow, FillMessageTable},
    {&ParamLoaderScreen::fgrUnit, &RowDialogs::unit, EntryOfRow,
     [] {
       FillUnitTable();
       FillChannelTable(); // channels show unit texts
     }},
    {&ParamLoaderScreen::fgrConst, &RowDialogs::constant, EntryOfRow, FillConstantTable},
    // This dialog rewrites its table itself.
    {&ParamLoaderScreen::flxEMailTriggerSetting, &RowDialogs::mailTrigger,
     [](const Grid& table) { return table.RowSel; }, [] {}},
}};

void OpenRow(ParamLoaderScreen& window, const RowOpening& opening) {
  const Grid& table = window.*opening.table;
  const RowDialog& show = window.rowDialogs.*opening.dialog;
  // A dialog behind whose back a read replaces the store would write stale values over it.
  if (!show || table.Row < table.FixedRows || ExchangeUnderWay(window)) {
    return; // nothing to open, no row chosen yet, or not now
  }
  const CellsKept kept(window);
  show(opening.entryOf(table));
  opening.rewrite();
}

void TieTables(ParamLoaderScreen& window) {
  struct TableKind {
    Grid& grid;
    CopyKinds kind;
  };
  const TableKind tables[] = {
      {window.fgrCh, CopyKinds::Channels},   {window.fgrOperationChSet, CopyKinds::OperationChannels},
      {window.fgrMess, CopyKinds::Messages}, {window.fgrUnit, CopyKinds::Units},
      {window.fgrGroup, CopyKinds::Groups},  {window.fgrConst, CopyKinds::Constants},
  };
  for (const TableKind& table : tables) {
    table.grid.onGotFocus = [&window, kind = table.kind] { TakeCopyFocus(window, kind); };
  }
  for (const RowOpening& opening : RowOpenings) {
    (window.*opening.table).onDoubleClick = [&window, &opening] { OpenRow(window, opening); };
  }
  // Headings of two rows.
  window.fgrCh.FixedRows = 2;
  window.fgrOperationChSet.FixedRows = 2;
  // The tag tells a channel whose cells have been scrolled to the side.
  window.fgrCh.TipCol = TagColumn;
  window.fgrOperationChSet.TipCol = TagColumn;
}

// One flow at a time. A flow disables its controls when its link stands; while a recorder that does not
// answer is waited for, they look free.
void StartFlow(ParamLoaderScreen& window, Flow kind, Deed deed, void (*flow)(const FlowCallbacks&)) {
  RunAlone(window.flowUnderWay, [&] {
    window.lastFlow = kind;
    Do(window, deed, [&] {
      flow(CallbacksOf(window, kind));
      return DeedResult{};
    });
  });
}

void TieCommunication(ParamLoaderScreen& window) {
  window.btnRegRead.onClick = [&window] {
    StartFlow(window, Flow::ReadOrWrite, Deed::Read, ReadFromRecorder);
  };
  window.btnRegWrite.onClick = [&window] {
    StartFlow(window, Flow::ReadOrWrite, Deed::Write, WriteToRecorder);
  };
  window.cmdFIX.onClick = [&window] { StartFlow(window, Flow::StoreSettings, Deed::Store, FixSettings); };
  // The clock's screen starts its flow itself and covers the window meanwhile.
  window.cmdTime.onClick = [&window] {
    if (!window.flowUnderWay) {
      ShowTimeChange(CallbacksOf(window, Flow::SetClock), [&window](const ClockSetting& clock,
                                                                    const FlowCallbacks& callbacks) {
        Do(window, Deed::SetClock, [&] { return DeedResult{.done = SetRecorderClock(clock, callbacks)}; });
      });
    }
  };
  window.LampTimer.onTimer = [&window] {
    constexpr Colour LampOn = 0x800000; // dark red
    constexpr Colour LampOff = 0x000000;
    window.picCommStatus(0).colour = window.lampLit ? LampOn : LampOff;
    window.lampLit = !window.lampLit;
  };
}

} // namespace

ParamLoaderScreen::ParamLoaderScreen() : Screen("frmParamLoader") {
  MakeSettingsControls(*this);
  // Kept, and never shown: a button without caption and effect, a list without a parameter, a table that
  // nothing fills.
  cmdRec.visible = false;
  ListNamed(*this, "cmbTmove").visible = false;
  fgrDI.visible = false;
  TieMenus(*this);
  TieTables(*this);
  TieDialogs(*this);
  TieCommunication(*this);
  cmbType.onChange = [this] { ChangeModel(*this); };
  tbsParameter.onChange = [this] { ChangePage(*this); };
  onCloseQuery = [this] { return MayClose(*this); };
  mayTakeFile = [this] { return !ExchangeUnderWay(*this); };
  onFileDropped = [this](const std::filesystem::path& file) { OpenDropped(*this, file); };
}

ParamLoaderScreen::~ParamLoaderScreen() {
  if (LampTimer.Enabled) {
    StopTimer(LampTimer);
  }
}

void OpenMainWindow() {
  frmParamLoader = std::make_unique<ParamLoaderScreen>();
  ParamLoaderScreen& window = *frmParamLoader;
  // A value that cannot be read keeps its start value; the window opens all the same.
  LoadCommSettings();
  ShowCommSettings(window);
  window.widthPixels = StartWidth;
  window.heightPixels = StartHeight;
  SetCaptions(window);
  AddPages(window);
  BuildTables();
  RefreshAll();
  SelectPage(window.tbsParameter, ChannelPage);
  window.CopySourceRow = 0;
  window.CopyKind = CopyKinds::Channels;
  ThePlatform().screens.Show(window);
}

bool ExchangeUnderWay(const ParamLoaderScreen& window) {
  return window.flowUnderWay || !window.btnRegRead.enabled || !window.btnRegWrite.enabled;
}

FlowCallbacks CallbacksOf(ParamLoaderScreen& window, Flow flow) {
  std::vector<Control*> controls{&window.btnRegRead, &window.btnRegWrite, &window.cmdFIX};
  if (flow != Flow::SetClock) {
    controls.push_back(&window.cmdTime);
  }
  if (flow == Flow::ReadOrWrite) {
    controls.push_back(&window.cmbType);
  }
  constexpr int LampMilliseconds = 50;
  FlowCallbacks callbacks;
  const std::array<Control*, 4> fileCommands{&window.smenuOpen, &window.smenuOverWrite,
                                             &window.smenuTextWrite, &window.V(1)};
  callbacks.setControlsEnabled = [&window, controls, fileCommands](bool enabled) {
    for (Control* control : controls) {
      control->enabled = enabled;
    }
    // The file commands look as they are: not offered during an exchange.
    for (Control* command : fileCommands) {
      command->enabled = enabled;
    }
    OfferPaste(window, enabled);
  };
  // Stopping the lamp leaves its last colour standing.
  callbacks.setLamp = [&window](bool on) {
    if (on) {
      StartTimer(window.LampTimer, LampMilliseconds);
    } else {
      StopTimer(window.LampTimer);
    }
  };
  callbacks.refresh = RefreshAll;
  return callbacks;
}

} // namespace loader
