// The platform of the logic tests: no display, no device, no real time.
//
// Time is virtual: DoEvents jumps to the next event (a timer, an arrival of bytes, a scheduled step of the
// test) and runs it. A message box that a test did not expect fails the test, and so does one that it
// expected and did not get; modal screens likewise. The program folder is a fresh temporary folder with the
// shipped InitSet.Ini in it.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "tests/support/ScriptedScreens.h"
#include "tests/support/ScriptedUser.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {

class ScriptedTime final : public Timers, public EventLoop, public Clock {
public:
  void Changed(Timer& timer) override;
  // Fails the test and throws std::logic_error when nothing is to come: the program would wait for ever.
  void DoEvents() override;
  float SecondsSinceMidnight() override;
  DateAndTime Now() override { return now; }

  // Runs `step` from the event loop, `milliseconds` from now.
  void After(int milliseconds, std::function<void()> step);
  // Runs events until `milliseconds` have passed or nothing is to come.
  void Advance(int milliseconds);

  std::int64_t millisecondsNow = 0;                // since the start of the test
  std::int64_t millisecondsAtMidnight = -43200000; // the test starts at noon
  DateAndTime now{2026, 11, 21, 12, 0, 0};
  int eventsRun = 0;

private:
  struct Event {
    std::int64_t due;
    std::function<void()> step;
  };
  // The earliest event due not after `limit`, taken out and run; false when there is none.
  bool RunNext(std::optional<std::int64_t> limit);
  std::vector<Event> events_;
  std::map<Timer*, std::int64_t> timers_; // armed timers with their due times
};

class ScriptedBoxes final : public MessageBoxes {
public:
  struct Shown {
    std::u16string text;
    BoxButtons buttons;
    BoxIcon icon;
    std::u16string title;
  };
  BoxAnswer Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                 std::u16string_view title) override;

  // The next box has to hold this text; it is answered with `answer`. `whileShown` runs while the box is up.
  void Expect(std::u16string_view text, BoxAnswer answer = BoxAnswer::Ok,
              std::function<void()> whileShown = {});
  // Fails the test for every box that was expected and did not come.
  void ExpectNoneLeft();

  std::vector<Shown> shown;

private:
  struct Expected {
    std::u16string text;
    BoxAnswer answer;
    std::function<void()> whileShown;
  };
  std::deque<Expected> expected_;
};

class ScriptedFileDialogs final : public FileDialogs {
public:
  long ShowOpen(CommonDialog& dialog) override { return Answer(dialog, "open"); }
  long ShowSave(CommonDialog& dialog) override { return Answer(dialog, "save"); }

  // What the next dialogs are answered with; an empty path is a cancel. A dialog without an answer fails the
  // test.
  std::deque<std::filesystem::path> answers;
  struct Shown {
    std::string kind; // "open" or "save"
    CommonDialog asked;
  };
  std::vector<Shown> shown;

private:
  long Answer(CommonDialog& dialog, const std::string& kind);
};

// The far end of a link: the test sees what is sent and lets bytes arrive.
struct ScriptedWire {
  explicit ScriptedWire(ScriptedTime& scriptedTime) : time(scriptedTime) {}
  ScriptedTime& time;
  std::vector<Bytes> sent;
  Bytes waiting;
  // Runs for each frame that is sent; typically calls Reply.
  std::function<void(const Bytes&)> onSend;
  // Lets the bytes arrive `milliseconds` from now, from the event loop.
  void Reply(Bytes bytes, int milliseconds = 1);
  void Take(std::span<const std::uint8_t> bytes);
};

class ScriptedSerial final : public SerialControl {
public:
  explicit ScriptedSerial(ScriptedTime& time) : wire(time) {}
  bool PortOpen() const override { return open; }
  void SetPortOpen(bool shallOpen) override;
  void Output(std::span<const std::uint8_t> bytes) override;
  int InBufferCount() const override;
  Bytes Input() override;

  ScriptedWire wire;
  bool open = false;
  bool failOpen = false;
  bool failOutput = false;
  bool lost = false;               // an unplugged device: every operation fails
  std::vector<std::string> opened; // "COM1 19200,O,8,1" for each opening
};

class ScriptedSocket final : public SocketControl {
public:
  explicit ScriptedSocket(ScriptedTime& time) : wire(time) {}
  int State() const override { return state; }
  void Close() override;
  void Connect() override;
  void SendData(std::span<const std::uint8_t> bytes) override;
  int BytesReceived() const override { return static_cast<int>(wire.waiting.size()); }
  Bytes GetData() override;

  ScriptedWire wire;
  int state = 0; // 0 closed, 6 connecting, 7 connected
  // Milliseconds until the connect event; negative: it never comes.
  int connectDelay = 1;
  int closeCount = 0;
  bool failSend = false;
  std::vector<std::string> connected; // "192.168.1.1:502" for each Connect
};

class ScriptedUsb final : public UsbControl {
public:
  explicit ScriptedUsb(ScriptedTime& time) : wire(time) {}
  std::int32_t Open(std::int32_t windowProperty) override;
  void Close(std::int32_t handle) override;
  std::int32_t Read(std::int32_t& handle, std::span<std::int32_t> words, std::int32_t count,
                    std::int32_t timeoutMs) override;
  std::int32_t Write(std::int32_t& handle, std::span<const std::int32_t> words, std::int32_t count,
                     std::int32_t timeoutMs) override;

  ScriptedWire wire;
  bool failOpen = false;
  bool failWrite = false;
  bool throwOnOpen = false; // the call itself fails
  int opens = 0;
  int closes = 0;
};

class ScriptedPlatform {
public:
  ScriptedPlatform();
  ~ScriptedPlatform();
  ScriptedPlatform(const ScriptedPlatform&) = delete;
  ScriptedPlatform& operator=(const ScriptedPlatform&) = delete;

  ScriptedTime time;
  ScriptedBoxes boxes;
  ScriptedFileDialogs fileDialogs;
  ScriptedScreens screens;
  ScriptedSerial serial{time};
  ScriptedSocket socket{time};
  ScriptedUsb usb{time};

private:
  TemporaryFolder temporary_{"loader-test-"};

public:
  const std::filesystem::path& folder = temporary_.Path(); // the program folder

  // Expects a box with a text of the text table.
  void ExpectBox(int textId, BoxAnswer answer = BoxAnswer::Ok, std::function<void()> whileShown = {});
  // A file of the program folder, bytes as they stand.
  void WriteFile(std::string_view name, std::string_view bytes);
  [[nodiscard]] std::string ReadFile(std::string_view name) const;

private:
  Platform platform_;
};

// The model in force, by way of LOADER.INI, and its fresh store; what the program does at start, without a
// window.
void StartWithModel(ScriptedPlatform& platform, std::string_view model /* "KOV" or "RUG" */);

} // namespace loader::test
