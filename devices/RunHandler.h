// Runs a handler from the event loop, which no exception may go through.
#pragma once

#include "platform/Controls.h"

namespace loader {

// What the handler fails with is told in a plain box. An empty handler does nothing.
void RunHandler(const Handler& handler);

} // namespace loader
