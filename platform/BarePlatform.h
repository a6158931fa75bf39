// The platform of a program without a window: its boxes become lines, and what it has not been given it does
// not have. Nothing here asks anybody or waits for anything.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace loader {

// A question gets `answer`: Cancel, which throws nothing away, unless the program says otherwise.
struct BareBoxes final : MessageBoxes {
  BoxAnswer Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                 std::u16string_view title) override;
  [[nodiscard]] int Count() const { return static_cast<int>(shown.size()); }

  BoxAnswer answer = BoxAnswer::Cancel;
  // Gets each text as one line: a line end in it becomes a blank.
  std::function<void(const std::u16string& line)> sink;
  std::vector<std::u16string> shown; // the texts as they stand
};

// Every file dialog is cancelled: a program without a window names its files itself.
struct NoFileDialogs final : FileDialogs {
  long ShowOpen(CommonDialog&) override { return FileDialogCancelled; }
  long ShowSave(CommonDialog&) override { return FileDialogCancelled; }
};

// A modal screen has closed at once, unless somebody stands in for its user. The end of the program is the
// program's own business; a flow that asked for it goes back to its caller.
struct NoScreens final : Screens {
  void Show(Screen&) override {}
  void ShowModal(Screen& screen) override {
    if (onModal) {
      onModal(screen);
    }
  }
  void Close(Screen& screen) override { closed = &screen; }
  void EndProgram() override { programEnded = true; }
  // As if every character were as wide as every other.
  [[nodiscard]] double TextWidth(std::u16string_view text) override;

  bool programEnded = false;
  std::function<void(Screen&)> onModal;
  const Screen* closed = nullptr; // the last one that asked for it
};

// No timer ever runs.
struct NoTimers final : Timers {
  void Changed(Timer&) override {}
};

// A wait would never end, so it is a defect of the program (std::logic_error).
struct NoEventLoop final : EventLoop {
  void DoEvents() override;
};

// The system's time of day.
struct SystemClock final : Clock {
  [[nodiscard]] float SecondsSinceMidnight() override;
  [[nodiscard]] DateAndTime Now() override;
};

// A port that can't be opened, a recorder that nobody answers for, a device that isn't plugged in.
struct NoSerial final : SerialControl {
  [[nodiscard]] bool PortOpen() const override { return false; }
  void SetPortOpen(bool open) override;
  void Output(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] int InBufferCount() const override;
  [[nodiscard]] Bytes Input() override;
};

struct NoSocket final : SocketControl {
  [[nodiscard]] int State() const override { return 0; }
  void Close() override {}
  void Connect() override;
  void SendData(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] int BytesReceived() const override { return 0; }
  [[nodiscard]] Bytes GetData() override { return {}; }
};

struct NoUsb final : UsbControl {
  [[nodiscard]] std::int32_t Open(std::int32_t) override { return -1; }
  void Close(std::int32_t) override {}
  [[nodiscard]] std::int32_t Read(std::int32_t&, std::span<std::int32_t>, std::int32_t,
                                  std::int32_t) override {
    return 0;
  }
  [[nodiscard]] std::int32_t Write(std::int32_t&, std::span<const std::int32_t>, std::int32_t,
                                   std::int32_t) override {
    return 0;
  }
};

// In force from its making to its end, when the one before is in force again. A part that is given stands in
// for the bare one and has to outlive this.
class BarePlatform {
public:
  explicit BarePlatform(const PlatformParts& parts = {});
  ~BarePlatform();
  BarePlatform(const BarePlatform&) = delete;
  BarePlatform& operator=(const BarePlatform&) = delete;

  BareBoxes boxes;
  NoFileDialogs fileDialogs;
  NoScreens screens;
  NoTimers timers;
  NoEventLoop eventLoop;
  SystemClock clock;
  NoSerial serial;
  NoSocket socket;
  NoUsb usb;
  Platform platform;

private:
  Platform* before_;
};

} // namespace loader
