#include "platform/Platform.h"

#include <stdexcept>

namespace loader {

namespace {
Platform* platformInForce = nullptr;
}

Platform& ThePlatform() {
  if (platformInForce == nullptr) {
    throw std::logic_error("no platform has been set");
  }
  return *platformInForce;
}

void SetPlatform(Platform* platform) {
  platformInForce = platform;
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
