// Texts at the edge to Qt: both sides hold UTF-16, so nothing is ever lost on the way.
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "platform/Devices.h"

namespace loader {

[[nodiscard]] inline QString ToQt(std::u16string_view text) {
  return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

[[nodiscard]] inline std::u16string FromQt(const QString& text) {
  return text.toStdU16String();
}

// To whoever hears of failing devices.
inline void TellDeviceFailure(const QString& device, const QString& reason) {
  if (WhenDeviceFails) {
    WhenDeviceFails(FromQt(device), FromQt(reason));
  }
}

} // namespace loader
