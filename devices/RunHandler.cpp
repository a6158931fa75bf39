#include "devices/RunHandler.h"

#include <exception>

#include "core/OwnTexts.h"
#include "core/Text.h"
#include "platform/Platform.h"

namespace loader {

void RunHandler(const Handler& handler) {
  if (!handler) {
    return;
  }
  const Handler running = handler; // the handler may replace itself
  try {
    running();
  } catch (const std::exception& failure) {
    ShowMessage(FromUtf8(failure.what()), BoxIcon::Exclamation);
  } catch (...) {
    ShowMessage(OwnText(OwnTextId::UnknownFailure), BoxIcon::Exclamation);
  }
}

} // namespace loader
