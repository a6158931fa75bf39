// The main window as a record: menus, toolbar, model list, six pages of tables and fields, communication
// strip.
//
// The window is a view of ParamStore. Fields of its pages write to the store at once; its tables are
// read-only and are rewritten from the store. It holds no document and no "modified" flag.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "comm/FlowCallbacks.h"
#include "fields/Fields.h"
#include "mainwindow/SettingsPages.h"
#include "platform/Controls.h"
#include "platform/Platform.h"

namespace loader {

// Pages of tbsParameter.
constexpr int ChannelPage = 0;
constexpr int OperationPage = 1;
constexpr int RecorderPage = 2;
constexpr int DisplayPage = 3;
constexpr int EthernetPage = 4;
constexpr int MailPage = 5;
constexpr int PageCount = 6;

// Which table Copy and Paste act on.
enum class CopyKinds : std::int16_t {
  Channels = 0,
  Messages = 1,
  Units = 2,
  OperationChannels = 3,
  Groups = 4,
  Constants = 5,
  None = 6,
};

// The flows, by the controls that each keeps disabled.
enum class Flow { ReadOrWrite, StoreSettings, SetClock };

// Shows the dialog of a table's row modally. `entry` counts from 0; for the mail triggers it is the row, 1
// for the first trigger. Empty as long as a table has no dialog: a double click on it does nothing then.
using RowDialog = std::function<void(int entry)>;
struct RowDialogs {
  RowDialog channel;   // a measuring channel
  RowDialog operation; // an operation channel, counted on behind the measuring channels
  RowDialog group;
  RowDialog message;
  RowDialog unit;
  RowDialog constant;
  RowDialog mailTrigger;
};

struct ParamLoaderScreen : Screen {
  ParamLoaderScreen();
  ~ParamLoaderScreen();

  // Menus.
  MenuEntry menuFile{*this, "menuFile"};
  MenuEntry smenuOpen{*this, "smenuOpen"};
  MenuEntry smenuOverWrite{*this, "smenuOverWrite"};
  MenuEntry smenuTextWrite{*this, "smenuTextWrite"};
  MenuEntry menuLine{*this, "menuLine"};
  MenuEntry smenuEnd{*this, "smenuEnd"};
  MenuEntry menuEdit{*this, "menuEdit"};
  MenuEntry smenuCopy{*this, "smenuCopy"};
  MenuEntry smenuPaste{*this, "smenuPaste"};
  MenuEntry menuRS{*this, "menuRS"};
  MenuEntry menuRScomunication{*this, "menuRScomunication"};
  ControlArray<MenuEntry> menuRScomunicationf{*this, "menuRScomunicationf", 3}; // USB, Ethernet, serial
  MenuEntry menuRSipaddr{*this, "menuRSipaddr"};
  MenuEntry smenuTermset{*this, "smenuTermset"};
  ControlArray<MenuEntry> smenuCOM{*this, "smenuCOM", 5}; // COM1 to COM5
  MenuEntry menuHelp{*this, "menuHelp"};
  MenuEntry menuGuide{*this, "menuGuide"};
  MenuEntry menuVersion{*this, "menuVersion"};
  ControlArray<ToolButton> V{*this, "V", 4, 1}; // open, copy, paste, help

  ListBox cmbType{*this, "cmbType"};
  TabPages tbsParameter{*this, "tbsParameter"};

  // Tables.
  Grid fgrCh{*this, "fgrCh"};
  Grid fgrOperationChSet{*this, "fgrOperationChSet"};
  Grid fgrConst{*this, "fgrConst"};
  Grid fgrDI{*this, "fgrDI"};
  Grid fgrGroup{*this, "fgrGroup"};
  Grid fgrMess{*this, "fgrMess"};
  Grid fgrUnit{*this, "fgrUnit"};
  Grid flxEMailTriggerSetting{*this, "flxEMailTriggerSetting"};

  // Communication.
  Label lblCommStatus{*this, "lblCommStatus"};
  ControlArray<Picture> picCommStatus{*this, "picCommStatus", 1}; // element 0: the status lamp
  Button btnRegRead{*this, "btnRegRead"};
  Button btnRegWrite{*this, "btnRegWrite"};
  Button cmdFIX{*this, "cmdFIX"};
  Button cmdTime{*this, "cmdTime"};
  Button cmdRec{*this, "cmdRec"}; // inert: recording is neither started nor stopped from here

  // The status line.
  Label statusRecorder{*this, "statusRecorder"}; // what a flow would talk to
  Label statusDone{*this, "statusDone"};         // what was done last

  // The labels, frames and fields of the settings pages, made from the tables of SettingsPages.
  std::deque<Label> labels;
  std::deque<Frame> frames;
  FieldSet settings{*this, SettingsFields(), StoreTime::AtOnce};
  std::deque<ListBox>& lists = settings.lists;
  std::deque<TextField>& fields = settings.texts;

  RowDialogs rowDialogs;

  // 0-based row chosen by Copy.
  std::int16_t CopySourceRow = 0;
  CopyKinds CopyKind = CopyKinds::Channels;
  Timer LampTimer;
  bool lampLit = false;
  // A flow is on its way, be it that its link is still being opened and no control is disabled yet.
  bool flowUnderWay = false;
  Flow lastFlow = Flow::ReadOrWrite; // the one under way, or the last one that was started from the window
};

// The one main window; null until it is opened and after it was closed.
extern std::unique_ptr<ParamLoaderScreen> frmParamLoader;

// Makes the window, fills it and shows it. The store has been built.
void OpenMainWindow();

// True while an exchange with the recorder is under way: btnRegRead or btnRegWrite is disabled, or a flow of
// the window is opening its link. The window's only notion of being busy.
[[nodiscard]] bool ExchangeUnderWay(const ParamLoaderScreen& window);
// What the window does around an exchange: which controls it disables, the lamp, the refresh.
[[nodiscard]] FlowCallbacks CallbacksOf(ParamLoaderScreen& window, Flow flow);

} // namespace loader
