// Keys and letters of the menus: what a caption shows is what works.
//
// A form says by two properties of an action what its key stands for: `presses` names the button that it
// presses, `keyOf` the action whose key does the same as a tool button.
#pragma once

#include <QString>
#include <string_view>

class QAbstractButton;
class QAction;

namespace loader {

// A caption of a menu with its letter marked: "開く(O)" as "開く(&O)". A caption that marks one itself, or
// ends otherwise, stays as it is.
[[nodiscard]] QString WithMnemonic(std::u16string_view caption);

// Ties the action of the button's form that presses it, if there is one: its key and its menu entry are a
// click, offered while the button is.
void TieActionOf(QAbstractButton& button);
// The button has another caption: the action has it too, and the tip tells the key.
void ShowCaptionOnAction(QAbstractButton& button, const QString& caption);

// The tip of a tool button with the key that does the same: "開く (Ctrl+O)".
[[nodiscard]] QString TipWithKey(const QAction& action, const QString& tip);

} // namespace loader
