#include "platform/Platform.h"

#include <stdexcept>
#include <utility>

namespace loader {

std::function<void(std::u16string_view device, std::u16string_view reason)> WhenDeviceFails;

namespace {
Platform* platformInForce = nullptr;

template <typename Part> Part& Either(Part* given, Part& own) {
  return given == nullptr ? own : *given;
}
} // namespace

Platform WithParts(const Platform& platform, const PlatformParts& parts) {
  return {.boxes = Either(parts.boxes, platform.boxes),
          .fileDialogs = Either(parts.fileDialogs, platform.fileDialogs),
          .screens = Either(parts.screens, platform.screens),
          .timers = Either(parts.timers, platform.timers),
          .eventLoop = Either(parts.eventLoop, platform.eventLoop),
          .clock = Either(parts.clock, platform.clock),
          .MSComm1 = Either(parts.MSComm1, platform.MSComm1),
          .winSock = Either(parts.winSock, platform.winSock),
          .USBOCX1 = Either(parts.USBOCX1, platform.USBOCX1),
          .programFolder = parts.programFolder.empty() ? platform.programFolder : parts.programFolder};
}

Platform& ThePlatform() {
  if (platformInForce == nullptr) {
    throw std::logic_error("no platform has been set");
  }
  return *platformInForce;
}

Platform* SetPlatform(Platform* platform) {
  return std::exchange(platformInForce, platform);
}

void ShowMessage(std::u16string_view text, BoxIcon icon) {
  ThePlatform().boxes.Show(text, BoxButtons::Ok, icon, {});
}

bool AskOkCancel(std::u16string_view text, std::u16string_view title) {
  return ThePlatform().boxes.Show(text, BoxButtons::OkCancel, BoxIcon::None, title) == BoxAnswer::Ok;
}

double MeasureTextWidth(std::u16string_view text) {
  return ThePlatform().screens.TextWidth(text);
}

bool AskBeforeLoss(std::u16string_view text) {
  return ThePlatform().boxes.AskBeforeLoss(text) == BoxAnswer::Ok;
}

void DoEvents() {
  ThePlatform().eventLoop.DoEvents();
}

void StartTimer(Timer& timer, int milliseconds) {
  timer.Interval = milliseconds;
  timer.Enabled = true;
  ThePlatform().timers.Changed(timer);
}

void StopTimer(Timer& timer) {
  timer.Enabled = false;
  ThePlatform().timers.Changed(timer);
}

} // namespace loader
