// The size of a window as it opens: no larger than the screen's free area, and wide enough for its own title.
#pragma once

#include <QString>

class QWidget;

namespace loader {

// Makes the window smaller, frame included, than the free area of its screen; nothing where it fits. The
// frame is known when the window stands and estimated before; of a standing window the place too is mended.
void FitToScreen(QWidget& window);

// Pixels that a window needs to show its title whole, between the buttons and the icon of its frame.
[[nodiscard]] int WidthForTitle(const QString& title);

} // namespace loader
