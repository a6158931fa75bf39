// The forms of the screens, made by Qt Designer.
#pragma once

#include <QWidget>
#include <memory>
#include <string_view>

namespace loader {

// The widget tree of the screen; null when there is no form of that name.
[[nodiscard]] std::unique_ptr<QWidget> MakeForm(std::string_view screenName);

} // namespace loader
