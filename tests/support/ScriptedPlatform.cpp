#include "tests/support/ScriptedPlatform.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modFile.h"
#include "core/modIni.h"

namespace loader::test {

void ScriptedTime::Changed(Timer& timer) {
  if (timer.Enabled && timer.Interval > 0) {
    timers_[&timer] = millisecondsNow + timer.Interval;
  } else {
    timers_.erase(&timer);
  }
}

bool ScriptedTime::RunNext(std::optional<std::int64_t> limit) {
  const auto event = std::min_element(events_.begin(), events_.end(),
                                      [](const Event& a, const Event& b) { return a.due < b.due; });
  const auto timer = std::min_element(timers_.begin(), timers_.end(),
                                      [](const auto& a, const auto& b) { return a.second < b.second; });
  const bool haveEvent = event != events_.end();
  const bool haveTimer = timer != timers_.end();
  if (!haveEvent && !haveTimer) {
    return false;
  }
  // Bytes that arrive at the very moment of a time-out arrive first.
  const bool takeEvent = haveEvent && (!haveTimer || event->due <= timer->second);
  const std::int64_t due = takeEvent ? event->due : timer->second;
  if (limit && due > *limit) {
    return false;
  }
  millisecondsNow = std::max(millisecondsNow, due);
  ++eventsRun;
  if (takeEvent) {
    const std::function<void()> step = std::move(event->step);
    events_.erase(event);
    step();
    return true;
  }
  Timer& fired = *timer->first;
  timer->second = millisecondsNow + fired.Interval;
  if (fired.onTimer) {
    fired.onTimer();
  }
  return true;
}

void ScriptedTime::DoEvents() {
  if (!RunNext(std::nullopt)) {
    ADD_FAILURE() << "the program waits for an event and none is to come";
    throw std::logic_error("waiting for ever");
  }
}

float ScriptedTime::SecondsSinceMidnight() {
  constexpr std::int64_t Day = 86400000;
  const std::int64_t sinceMidnight = (millisecondsNow - millisecondsAtMidnight) % Day;
  return static_cast<float>(sinceMidnight) / 1000.0F;
}

void ScriptedTime::After(int milliseconds, std::function<void()> step) {
  events_.push_back({millisecondsNow + milliseconds, std::move(step)});
}

void ScriptedTime::Advance(int milliseconds) {
  const std::int64_t end = millisecondsNow + milliseconds;
  while (RunNext(end)) {
  }
  millisecondsNow = std::max(millisecondsNow, end);
}

BoxAnswer ScriptedBoxes::Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                              std::u16string_view title) {
  shown.push_back({std::u16string(text), buttons, icon, std::u16string(title)});
  if (expected_.empty()) {
    ADD_FAILURE() << "a message box that nobody expected: " << ToUtf8(text);
    return BoxAnswer::Cancel;
  }
  const Expected next = std::move(expected_.front());
  expected_.pop_front();
  EXPECT_EQ(ToUtf8(next.text), ToUtf8(text));
  if (next.whileShown) {
    next.whileShown();
  }
  return next.answer;
}

void ScriptedBoxes::Expect(std::u16string_view text, BoxAnswer answer, std::function<void()> whileShown) {
  expected_.push_back({std::u16string(text), answer, std::move(whileShown)});
}

void ScriptedBoxes::ExpectNoneLeft() {
  for (const Expected& missing : expected_) {
    ADD_FAILURE() << "a message box that did not come: " << ToUtf8(missing.text);
  }
  expected_.clear();
}

long ScriptedFileDialogs::Answer(CommonDialog& dialog, const std::string& kind) {
  shown.push_back({kind, dialog});
  if (answers.empty()) {
    ADD_FAILURE() << "a file dialog that nobody expected: " << kind;
    return FileDialogCancelled;
  }
  const std::filesystem::path path = answers.front();
  answers.pop_front();
  if (path.empty()) {
    return FileDialogCancelled;
  }
  dialog.FileName = path.u16string();
  dialog.FileTitle = path.filename().u16string();
  return 0;
}

void ScriptedWire::Reply(Bytes bytes, int milliseconds) {
  time.After(milliseconds, [this, arriving = std::move(bytes)] {
    waiting.insert(waiting.end(), arriving.begin(), arriving.end());
  });
}

void ScriptedWire::Take(std::span<const std::uint8_t> bytes) {
  sent.emplace_back(bytes.begin(), bytes.end());
  if (onSend) {
    onSend(Bytes(sent.back()));
  }
}

void ScriptedSerial::SetPortOpen(bool shallOpen) {
  if (shallOpen && (failOpen || lost)) {
    throw RunTimeFailure("no such port");
  }
  open = shallOpen;
  if (open) {
    opened.push_back("COM" + std::to_string(CommPort) + " " + Settings);
  }
}

void ScriptedSerial::Output(std::span<const std::uint8_t> bytes) {
  if (failOutput || lost) {
    throw RunTimeFailure("the port is lost");
  }
  wire.Take(bytes);
}

int ScriptedSerial::InBufferCount() const {
  if (lost) {
    throw RunTimeFailure("the port is lost");
  }
  return static_cast<int>(wire.waiting.size());
}

Bytes ScriptedSerial::Input() {
  if (lost) {
    throw RunTimeFailure("the port is lost");
  }
  return std::exchange(wire.waiting, {});
}

void ScriptedSocket::Close() {
  ++closeCount;
  state = 0;
  wire.waiting.clear();
}

void ScriptedSocket::Connect() {
  connected.push_back(ToUtf8(RemoteHost) + ":" + std::to_string(RemotePort));
  state = 6;
  if (connectDelay >= 0) {
    wire.time.After(connectDelay, [this] {
      if (state == 6) {
        state = 7;
        if (onConnect) {
          onConnect();
        }
      }
    });
  }
}

void ScriptedSocket::SendData(std::span<const std::uint8_t> bytes) {
  if (failSend || state != 7) {
    throw RunTimeFailure("the socket is not connected");
  }
  wire.Take(bytes);
}

Bytes ScriptedSocket::GetData() {
  return std::exchange(wire.waiting, {});
}

std::int32_t ScriptedUsb::Open(std::int32_t) {
  if (throwOnOpen) {
    throw RunTimeFailure("the USB control is not there");
  }
  if (failOpen) {
    return -1;
  }
  ++opens;
  return 1;
}

void ScriptedUsb::Close(std::int32_t) {
  ++closes;
}

std::int32_t ScriptedUsb::Read(std::int32_t&, std::span<std::int32_t> words, std::int32_t count,
                               std::int32_t timeoutMs) {
  // Blocks as the device does: until the bytes are there or the time is over.
  const std::int64_t end = wire.time.millisecondsNow + timeoutMs;
  while (static_cast<std::int32_t>(wire.waiting.size()) < count && wire.time.millisecondsNow < end) {
    wire.time.Advance(1);
  }
  const auto taken = static_cast<std::size_t>(
      std::min<std::int64_t>({count, static_cast<std::int64_t>(wire.waiting.size()), std::ssize(words)}));
  std::copy_n(wire.waiting.begin(), taken, words.begin());
  wire.waiting.erase(wire.waiting.begin(), wire.waiting.begin() + static_cast<std::ptrdiff_t>(taken));
  return static_cast<std::int32_t>(taken);
}

std::int32_t ScriptedUsb::Write(std::int32_t&, std::span<const std::int32_t> words, std::int32_t count,
                                std::int32_t) {
  if (failWrite) {
    return 0;
  }
  Bytes bytes;
  for (const std::int32_t word : words.first(static_cast<std::size_t>(count))) {
    bytes.push_back(static_cast<std::uint8_t>(word));
  }
  wire.Take(bytes);
  return 1;
}

ScriptedPlatform::ScriptedPlatform()
    : platform_{boxes, fileDialogs, screens, time, time, time, serial, socket, usb, folder} {
  std::filesystem::copy_file(std::filesystem::path(LOADER_DATA_DIR) / "InitSet.Ini", folder / "InitSet.Ini");
  SetPlatform(&platform_);
  ParamStore.clear();
  ParamStoreBackup.clear();
  Profile = ModelProfile{};
  ModelCode.clear();
  VersionTag.clear();
  ModeCheckOff = 0;
  Settings = CommSettings{};
}

ScriptedPlatform::~ScriptedPlatform() {
  boxes.ExpectNoneLeft();
  screens.ExpectNoneLeft();
  EXPECT_TRUE(fileDialogs.answers.empty()) << "a file dialog that did not come";
  SetPlatform(nullptr);
}

void ScriptedPlatform::ExpectBox(int textId, BoxAnswer answer, std::function<void()> whileShown) {
  boxes.Expect(LoadText(TextId::At(textId)), answer, std::move(whileShown));
}

void ScriptedPlatform::WriteFile(std::string_view name, std::string_view bytes) {
  std::ofstream(folder / PathOf(FromUtf8(name)), std::ios::binary) << bytes;
}

std::string ScriptedPlatform::ReadFile(std::string_view name) const {
  std::ifstream in(folder / PathOf(FromUtf8(name)), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void StartWithModel(ScriptedPlatform& platform, std::string_view model) {
  platform.WriteFile("LOADER.INI", std::string("[LOADER]\r\nTYPE=") + (model == "RUG" ? "1" : "0") +
                                       "\r\nCOMMUNICATION=1\r\nCOM=0\r\nSTNO=1\r\nIP=192.168.1.1\r\n");
  bool shown = false;
  ASSERT_TRUE(Main([&] { shown = true; }));
  ASSERT_TRUE(shown);
  ASSERT_EQ(std::string(model), ModelCode);
}

} // namespace loader::test
