// What the logic needs of the world, as small interfaces with one implementation in Qt and one scripted for
// tests.
//
// One Platform record, set once by the program or by a test before anything else runs. Everything here is
// called on the one user interface thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "platform/Controls.h"
#include "platform/Devices.h"

namespace loader {

enum class BoxButtons { Ok, OkCancel };
enum class BoxIcon { None, Exclamation };
enum class BoxAnswer { Ok, Cancel };

struct MessageBoxes {
  virtual ~MessageBoxes() = default;
  // Modal; the event loop runs while it is shown. An empty title is the application's default title.
  virtual BoxAnswer Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                         std::u16string_view title) = 0;
  // A question with OK and Cancel whose OK throws something away: Enter answers Cancel.
  virtual BoxAnswer AskBeforeLoss(std::u16string_view text) {
    return Show(text, BoxButtons::OkCancel, BoxIcon::None, {});
  }
};

// The state of a file dialog. ShowOpen and ShowSave return 0 with FileName (the whole path) and FileTitle
// (its last part) set, or FileDialogCancelled with nothing changed.
constexpr long FileDialogCancelled = 32755;
constexpr int AskBeforeOverwrite = 2; // a value of Flags

struct CommonDialog {
  int Flags = 0;
  bool CancelError = false;
  std::u16string FileName;
  std::u16string FileTitle;
  std::u16string Filter; // "caption|*.EXT"
  std::u16string DialogTitle;
};

struct FileDialogs {
  virtual ~FileDialogs() = default;
  virtual long ShowOpen(CommonDialog& dialog) = 0;
  virtual long ShowSave(CommonDialog& dialog) = 0;
};

struct Screens {
  virtual ~Screens() = default;
  // Returns at once; the program lives as long as the screen.
  virtual void Show(Screen& screen) = 0;
  // Returns when the screen has closed.
  virtual void ShowModal(Screen& screen) = 0;
  // Closes the screen through its close query.
  virtual void Close(Screen& screen) = 0;
  // Ends the program at once, with no question.
  virtual void EndProgram() = 0;
  // Shows a document in the viewer that the system has for it; false when there is none.
  virtual bool ShowDocument(const std::filesystem::path& /*file*/) { return false; }
  // Width of a text in the font of the tables, in twips (1/1440 inch).
  [[nodiscard]] virtual double TextWidth(std::u16string_view text) = 0;
};

// A timer: while Enabled, onTimer runs each Interval milliseconds from the event loop.
struct Timer {
  int Interval = 0;
  bool Enabled = false;
  Handler onTimer;
};

struct Timers {
  virtual ~Timers() = default;
  // The timer's Interval or Enabled has changed; the interval starts anew. Also called before a timer goes
  // away.
  virtual void Changed(Timer& timer) = 0;
};

struct EventLoop {
  virtual ~EventLoop() = default;
  // Waits for the next event, handles what is there and returns. Never spins.
  virtual void DoEvents() = 0;
};

struct DateAndTime {
  int year = 2000; // four digits
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

struct Clock {
  virtual ~Clock() = default;
  // Starts at 0 at midnight.
  [[nodiscard]] virtual float SecondsSinceMidnight() = 0;
  [[nodiscard]] virtual DateAndTime Now() = 0;
};

struct Platform {
  MessageBoxes& boxes;
  FileDialogs& fileDialogs;
  Screens& screens;
  Timers& timers;
  EventLoop& eventLoop;
  Clock& clock;
  SerialControl& MSComm1;
  SocketControl& winSock;
  UsbControl& USBOCX1;
  // The folder of the program: InitSet.Ini, LOADER.INI and the text templates lie there.
  std::filesystem::path programFolder;
};

// Parts that stand in for those of another platform; what is null or empty stays that one's.
struct PlatformParts {
  MessageBoxes* boxes = nullptr;
  FileDialogs* fileDialogs = nullptr;
  Screens* screens = nullptr;
  Timers* timers = nullptr;
  EventLoop* eventLoop = nullptr;
  Clock* clock = nullptr;
  SerialControl* MSComm1 = nullptr;
  SocketControl* winSock = nullptr;
  UsbControl* USBOCX1 = nullptr;
  std::filesystem::path programFolder = {};
};
[[nodiscard]] Platform WithParts(const Platform& platform, const PlatformParts& parts);

// The record in force. Calling it before SetPlatform is a defect of the program (std::logic_error).
[[nodiscard]] Platform& ThePlatform();
// The record that was in force before; null for none.
Platform* SetPlatform(Platform* platform);

// A box with an OK button.
void ShowMessage(std::u16string_view text, BoxIcon icon = BoxIcon::None);
// A box with OK and Cancel; true for OK.
[[nodiscard]] bool AskOkCancel(std::u16string_view text, std::u16string_view title = {});
// The same for what cannot be taken back, where the user has to choose OK: a key too many is no answer.
[[nodiscard]] bool AskBeforeLoss(std::u16string_view text);
// The width of a text in the font of the tables, in twips.
[[nodiscard]] double MeasureTextWidth(std::u16string_view text);
void DoEvents();
void StartTimer(Timer& timer, int milliseconds);
void StopTimer(Timer& timer);

} // namespace loader
