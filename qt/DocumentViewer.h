// Documents in the viewer that the desktop has for them.
#pragma once

#include <QObject>
#include <QUrl>
#include <functional>

namespace loader {

// False when no viewer can be started. Where the desktop looks for one in a program of its own, that it has
// found none comes later: `noViewer` runs then, from the event loop, as long as there is an `owner`.
[[nodiscard]] bool OpenInViewer(const QUrl& document, QObject& owner, std::function<void()> noViewer);

} // namespace loader
