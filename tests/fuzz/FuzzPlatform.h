// The platform of the fuzz targets: virtual time, boxes that are counted and answered with OK, wires that the
// input feeds. It is free of any test library, and what a flow may never do ends the process (Require).
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/BarePlatform.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::fuzz {

class FuzzTime final : public Timers, public EventLoop, public Clock {
public:
  void Changed(Timer& timer) override;
  // Jumps to the next event and runs it. A wait with nothing to come would never end: that is a defect.
  void DoEvents() override;
  float SecondsSinceMidnight() override;
  DateAndTime Now() override { return {2026, 11, 21, 12, 0, 0}; }

  // Runs `step` from the event loop, `milliseconds` from now.
  void After(int milliseconds, std::function<void()> step);
  // Runs the events of the next `milliseconds`.
  void Advance(int milliseconds);
  [[nodiscard]] bool AnyTimerArmed() const { return !timers_.empty(); }
  [[nodiscard]] bool AnyEventPending() const { return !events_.empty(); }

  std::int64_t millisecondsNow = 0;
  std::int64_t millisecondsSinceMidnight = 43200000; // at the start

private:
  struct Event {
    std::int64_t due;
    std::function<void()> step;
  };
  bool RunNext(std::optional<std::int64_t> limit);
  std::vector<Event> events_;
  std::map<Timer*, std::int64_t> timers_;
};

// Every file dialog is answered with one path, or cancelled where there is none.
class FuzzFileDialogs final : public FileDialogs {
public:
  long ShowOpen(CommonDialog& dialog) override { return Answer(dialog); }
  long ShowSave(CommonDialog& dialog) override { return Answer(dialog); }
  std::filesystem::path chosen;

private:
  long Answer(CommonDialog& dialog) const;
};

// The far end of a link. `onSend` sees each frame and lets bytes arrive.
struct FuzzWire {
  explicit FuzzWire(FuzzTime& fuzzTime) : time(fuzzTime) {}
  FuzzTime& time;
  Bytes waiting;
  std::function<void(const Bytes&)> onSend;
  bool lost = false; // every operation fails
  Bytes between;     // arrives after the bytes have been counted and before they are fetched, once
  int sent = 0;
  // The bytes arrive `milliseconds` from now, from the event loop.
  void Reply(Bytes bytes, int milliseconds);
  void Take(Bytes bytes);
  Bytes Fetch();
};

class FuzzSerial final : public SerialControl {
public:
  explicit FuzzSerial(FuzzTime& time) : wire(time) {}
  bool PortOpen() const override { return open; }
  void SetPortOpen(bool shallOpen) override;
  void Output(std::span<const std::uint8_t> bytes) override;
  int InBufferCount() const override;
  Bytes Input() override;

  FuzzWire wire;
  bool open = false;
};

class FuzzSocket final : public SocketControl {
public:
  explicit FuzzSocket(FuzzTime& time) : wire(time) {}
  int State() const override { return state; }
  void Close() override;
  void Connect() override;
  void SendData(std::span<const std::uint8_t> bytes) override;
  int BytesReceived() const override { return static_cast<int>(wire.waiting.size()); }
  Bytes GetData() override;

  FuzzWire wire;
  int state = 0; // 0 closed, 6 connecting, 7 connected
};

class FuzzUsb final : public UsbControl {
public:
  explicit FuzzUsb(FuzzTime& time) : wire(time) {}
  std::int32_t Open(std::int32_t windowProperty) override;
  void Close(std::int32_t handle) override;
  std::int32_t Read(std::int32_t& handle, std::span<std::int32_t> words, std::int32_t count,
                    std::int32_t timeoutMs) override;
  std::int32_t Write(std::int32_t& handle, std::span<const std::int32_t> words, std::int32_t count,
                     std::int32_t timeoutMs) override;

  FuzzWire wire;
  bool failOpen = false;
  bool failWrite = false;
  // Read returns this instead of a number of bytes that came: a device may return any number.
  std::optional<std::int32_t> claimedCount;
};

// In force from its making to its end. Its folder is made when it is first asked for, lies among the system's
// temporary files and goes with it.
class FuzzPlatform {
public:
  FuzzPlatform();
  ~FuzzPlatform() = default;
  FuzzPlatform(const FuzzPlatform&) = delete;
  FuzzPlatform& operator=(const FuzzPlatform&) = delete;

  // Gives the program a folder of its own, empty but for what the target writes.
  const std::filesystem::path& MakeFolder();
  // How many boxes have shown a text of the text table.
  [[nodiscard]] int BoxesOf(int textId) const;

  FuzzTime time;
  FuzzFileDialogs fileDialogs;
  FuzzSerial serial{time};
  FuzzSocket socket{time};
  FuzzUsb usb{time};

private:
  std::optional<test::TemporaryFolder> folder_;
  BarePlatform bare_;

public:
  BareBoxes& boxes = bare_.boxes; // every box is answered with OK, unless the target says otherwise
  NoScreens& screens = bare_.screens;
};

} // namespace loader::fuzz
