// The icons of the forms, drawn from their SVG files without Qt's plugins for icons and pictures, all of
// which would be loaded before the first window stands.
#pragma once

#include <QIcon>
#include <string_view>

class QWidget;

namespace loader {

// The drawing ":/icons/NAME.svg": sharp at any size and scale; dimmed by the style where it is disabled.
[[nodiscard]] QIcon DrawnIcon(std::string_view name);

// Gives a form, its actions and its pictures what the table says; `name` is the form's.
void GiveFormIcons(QWidget& form, std::string_view name);

} // namespace loader
