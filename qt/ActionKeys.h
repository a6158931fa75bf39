// Keys and letters of the menus: what a caption shows is what works.
//
// A form says by two properties of an action what its key stands for: `presses` names the button that it
// presses, `keyOf` the action whose key does the same as a tool button.
#pragma once

#include <QString>

class QAbstractButton;
class QAction;
class QMenu;

namespace loader {

// The letter that a caption of a menu shows at its end, "O" of "開く(O)"; null for any other caption, and for
// one that marks its letter for Qt.
[[nodiscard]] QChar LetterOf(QStringView text);
// In the open menu the letter of an entry chooses it.
void LetLettersWork(QMenu& menu);

// Ties the action of the button's form that presses it, if there is one: its key and its menu entry are a
// click, offered while the button is.
void TieActionOf(QAbstractButton& button);
// The button has another caption: the action has it too, and the tip tells the key.
void ShowCaptionOnAction(QAbstractButton& button, const QString& caption);

// The tip of a tool button with the key that does the same: "開く (Ctrl+O)".
[[nodiscard]] QString TipWithKey(const QAction& action, const QString& tip);

} // namespace loader
