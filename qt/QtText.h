// Texts of the logic in widgets.
#pragma once

#include <QString>

#include "devices/QtText.h"

namespace loader {

// A tool tip that shows a text letter by letter, on one line; Qt would guess by the text whether it is rich
// text.
[[nodiscard]] inline QString PlainTip(const QString& text) {
  return text.isEmpty() ? QString()
                        : QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped());
}

} // namespace loader
