#include "platform/BarePlatform.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <stdexcept>
#include <utility>

#include "platform/RunTimeFailure.h"

namespace loader {

namespace {

std::u16string OneLine(std::u16string_view text) {
  constexpr std::u16string_view LineEnds = u"\r\n";
  std::u16string line;
  while (!text.empty()) {
    const std::u16string_view part = text.substr(0, text.find_first_of(LineEnds));
    if (!part.empty() && !line.empty()) {
      line += u' ';
    }
    line += part;
    text.remove_prefix(part.size());
    text.remove_prefix(std::min(text.find_first_not_of(LineEnds), text.size()));
  }
  return line;
}

struct TimeOfDay {
  std::tm local;
  int milliseconds;
};

TimeOfDay TimeNow() {
  using namespace std::chrono;
  const system_clock::time_point now = system_clock::now();
  const auto second = floor<seconds>(now);
  const std::time_t time = system_clock::to_time_t(second);
  const std::tm* local = std::localtime(&time); // there is one thread
  return {local == nullptr ? std::tm{} : *local,
          static_cast<int>(duration_cast<milliseconds>(now - second).count())};
}

[[noreturn]] void ThereIsNo(const char* device) {
  throw RunTimeFailure(std::string("there is no ") + device);
}

} // namespace

BoxAnswer BareBoxes::Show(std::u16string_view text, BoxButtons buttons, BoxIcon /*icon*/,
                          std::u16string_view /*title*/) {
  shown.emplace_back(text);
  if (sink) {
    sink(OneLine(text));
  }
  return buttons == BoxButtons::Ok ? BoxAnswer::Ok : answer;
}

double NoScreens::TextWidth(std::u16string_view text) {
  constexpr double TwipsOfACharacter = 100;
  return TwipsOfACharacter * static_cast<double>(text.size());
}

void NoEventLoop::DoEvents() {
  throw std::logic_error("a wait without an event loop would never end");
}

float SystemClock::SecondsSinceMidnight() {
  constexpr float MillisecondsPerSecond = 1000;
  const TimeOfDay now = TimeNow();
  const int seconds = (now.local.tm_hour * 60 + now.local.tm_min) * 60 + now.local.tm_sec;
  return static_cast<float>(seconds * 1000 + now.milliseconds) / MillisecondsPerSecond;
}

DateAndTime SystemClock::Now() {
  constexpr int FirstYear = 1900;
  const std::tm now = TimeNow().local;
  return {now.tm_year + FirstYear, now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec};
}

void NoSerial::SetPortOpen(bool open) {
  if (open) {
    ThereIsNo("serial port");
  }
}

void NoSerial::Output(std::span<const std::uint8_t> /*bytes*/) {
  ThereIsNo("serial port");
}

int NoSerial::InBufferCount() const {
  ThereIsNo("serial port");
}

Bytes NoSerial::Input() {
  ThereIsNo("serial port");
}

void NoSocket::Connect() {
  ThereIsNo("network");
}

void NoSocket::SendData(std::span<const std::uint8_t> /*bytes*/) {
  ThereIsNo("network");
}

BarePlatform::BarePlatform(const PlatformParts& parts)
    : platform(WithParts({.boxes = boxes,
                          .fileDialogs = fileDialogs,
                          .screens = screens,
                          .timers = timers,
                          .eventLoop = eventLoop,
                          .clock = clock,
                          .MSComm1 = serial,
                          .winSock = socket,
                          .USBOCX1 = usb,
                          .programFolder = {}},
                         parts)),
      before_(SetPlatform(&platform)) {}

BarePlatform::~BarePlatform() {
  SetPlatform(before_);
}

} // namespace loader
