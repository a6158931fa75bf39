// The forms of the screens, made by Qt Designer.
//
// A form may leave a page of its tabs (a scroll area) empty: the page is a form of its own, "screen.page" by
// the names of the two, and is made when it is first shown. A window with hundreds of fields opens that way
// as fast as one that has a single page.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string_view>

namespace loader {

// Makes the form of a screen or of a page by its name; null when there is none.
using FormMaker = std::function<std::unique_ptr<QWidget>(std::string_view name)>;

// The program's own forms.
[[nodiscard]] std::unique_ptr<QWidget> MakeForm(std::string_view name);

} // namespace loader
