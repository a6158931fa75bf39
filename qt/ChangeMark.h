// The tint of a widget whose contents the program has just rewritten, so that the user sees at once what his
// choice has changed.
#pragma once

#include <QColor>

class QWidget;

namespace loader {

// A background on which the text stays as readable as it was, and which is told from the plain one: mixed
// from it and the colour of the selection.
[[nodiscard]] QColor ChangeTint(const QColor& background, const QColor& selection);

// Gives the widget the tint, in the colours of its palette, or takes it away. A label without a text has
// none: there is nothing to look at.
void ShowChangeMark(QWidget& widget, bool marked);

} // namespace loader
