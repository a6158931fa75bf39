#include "tests/fuzz/FuzzPlatform.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "core/Text.h"
#include "core/TextTable.h"
#include "platform/RunTimeFailure.h"

namespace loader::fuzz {

void Require(bool holds, std::string_view promise) {
  if (!holds) {
    std::fprintf(stderr, "fuzz: this does not hold: %.*s\n", static_cast<int>(promise.size()),
                 promise.data());
    std::abort();
  }
}

void FuzzTime::Changed(Timer& timer) {
  timers_.erase(&timer);
  if (timer.Enabled) {
    timers_[&timer] = millisecondsNow + std::max(1, timer.Interval);
  }
}

bool FuzzTime::RunNext(std::optional<std::int64_t> limit) {
  const auto event = std::min_element(events_.begin(), events_.end(),
                                      [](const Event& a, const Event& b) { return a.due < b.due; });
  const auto timer = std::min_element(timers_.begin(), timers_.end(),
                                      [](const auto& a, const auto& b) { return a.second < b.second; });
  const bool eventFirst = event != events_.end() && (timer == timers_.end() || event->due <= timer->second);
  if (event == events_.end() && timer == timers_.end()) {
    return false;
  }
  const std::int64_t due = eventFirst ? event->due : timer->second;
  if (limit && due > *limit) {
    return false;
  }
  millisecondsNow = std::max(millisecondsNow, due);
  if (eventFirst) {
    const std::function<void()> step = std::move(event->step);
    events_.erase(event);
    step();
    return true;
  }
  Timer& fired = *timer->first;
  timer->second = due + std::max(1, fired.Interval); // a handler may change it
  if (fired.onTimer) {
    fired.onTimer();
  }
  return true;
}

void FuzzTime::DoEvents() {
  Require(RunNext(std::nullopt), "a wait has something to wait for");
}

float FuzzTime::SecondsSinceMidnight() {
  constexpr std::int64_t Day = 86400000;
  return static_cast<float>((millisecondsSinceMidnight + millisecondsNow) % Day) / 1000.0F;
}

void FuzzTime::After(int milliseconds, std::function<void()> step) {
  events_.push_back({millisecondsNow + milliseconds, std::move(step)});
}

void FuzzTime::Advance(int milliseconds) {
  const std::int64_t end = millisecondsNow + milliseconds;
  while (RunNext(end)) {
  }
  millisecondsNow = end;
}

long FuzzFileDialogs::Answer(CommonDialog& dialog) const {
  if (chosen.empty()) {
    return FileDialogCancelled;
  }
  dialog.FileName = FromUtf8(chosen.string());
  dialog.FileTitle = FromUtf8(chosen.filename().string());
  return 0;
}

void FuzzWire::Reply(Bytes bytes, int milliseconds) {
  time.After(milliseconds, [this, arriving = std::move(bytes)] {
    waiting.insert(waiting.end(), arriving.begin(), arriving.end());
  });
}

void FuzzWire::Take(Bytes bytes) {
  ++sent;
  if (onSend) {
    onSend(bytes);
  }
}

Bytes FuzzWire::Fetch() {
  waiting.insert(waiting.end(), between.begin(), between.end());
  between.clear();
  return std::exchange(waiting, {});
}

void FuzzSerial::SetPortOpen(bool shallOpen) {
  if (wire.lost) {
    throw RunTimeFailure("the port is lost");
  }
  open = shallOpen;
}

void FuzzSerial::Output(std::span<const std::uint8_t> bytes) {
  if (wire.lost || !open) {
    throw RunTimeFailure("the port is lost");
  }
  wire.Take({bytes.begin(), bytes.end()});
}

int FuzzSerial::InBufferCount() const {
  if (wire.lost || !open) {
    throw RunTimeFailure("the port is lost");
  }
  return static_cast<int>(wire.waiting.size());
}

Bytes FuzzSerial::Input() {
  if (wire.lost || !open) {
    throw RunTimeFailure("the port is lost");
  }
  return wire.Fetch();
}

void FuzzSocket::Close() {
  state = 0;
  wire.waiting.clear();
}

void FuzzSocket::Connect() {
  state = 6;
  if (wire.lost) {
    return; // refused: told by nothing
  }
  wire.time.After(1, [this] {
    if (state == 6) {
      state = 7;
      if (onConnect) {
        onConnect();
      }
    }
  });
}

void FuzzSocket::SendData(std::span<const std::uint8_t> bytes) {
  if (state != 7 || wire.lost) {
    throw RunTimeFailure("the socket is not connected");
  }
  wire.Take({bytes.begin(), bytes.end()});
}

Bytes FuzzSocket::GetData() {
  if (wire.lost) {
    throw RunTimeFailure("the connection was reset");
  }
  return wire.Fetch();
}

std::int32_t FuzzUsb::Open(std::int32_t) {
  if (wire.lost) {
    throw RunTimeFailure("the device is gone");
  }
  return failOpen ? -1 : 1;
}

void FuzzUsb::Close(std::int32_t) {}

std::int32_t FuzzUsb::Read(std::int32_t&, std::span<std::int32_t> words, std::int32_t count,
                           std::int32_t timeoutMs) {
  const std::int64_t end = wire.time.millisecondsNow + timeoutMs;
  while (std::cmp_less(wire.waiting.size(), count) && wire.time.millisecondsNow < end) {
    wire.time.Advance(10);
  }
  const auto taken =
      static_cast<std::size_t>(std::min<std::int64_t>({count, std::ssize(wire.waiting), std::ssize(words)}));
  std::copy_n(wire.waiting.begin(), taken, words.begin());
  wire.waiting.erase(wire.waiting.begin(), wire.waiting.begin() + static_cast<std::ptrdiff_t>(taken));
  return claimedCount.value_or(static_cast<std::int32_t>(taken));
}

std::int32_t FuzzUsb::Write(std::int32_t&, std::span<const std::int32_t> words, std::int32_t count,
                            std::int32_t) {
  if (failWrite) {
    return 0;
  }
  Bytes bytes;
  for (const std::int32_t word : words.first(static_cast<std::size_t>(count))) {
    bytes.push_back(static_cast<std::uint8_t>(word));
  }
  wire.Take(std::move(bytes));
  return 1;
}

FuzzPlatform::FuzzPlatform()
    : bare_({.fileDialogs = &fileDialogs,
             .timers = &time,
             .eventLoop = &time,
             .clock = &time,
             .MSComm1 = &serial,
             .winSock = &socket,
             .USBOCX1 = &usb}) {
  boxes.answer = BoxAnswer::Ok;
}

int FuzzPlatform::BoxesOf(int textId) const {
  return static_cast<int>(std::count(boxes.shown.begin(), boxes.shown.end(), LoadText(TextId::At(textId))));
}

const std::filesystem::path& FuzzPlatform::MakeFolder() {
  if (!folder_) {
    folder_.emplace("loader-fuzz-");
    bare_.platform.programFolder = folder_->Path();
  }
  return bare_.platform.programFolder;
}

} // namespace loader::fuzz
