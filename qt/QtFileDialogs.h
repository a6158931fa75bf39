// The dialogs for a file to open or to save: the desktop's own where it has one, else Qt's.
#pragma once

#include <QString>

#include "platform/Platform.h"

namespace loader {

class UserInterface;

class QtFileDialogs final : public FileDialogs {
public:
  explicit QtFileDialogs(UserInterface& userInterface) : userInterface_(userInterface) {}
  long ShowOpen(CommonDialog& dialog) override;
  // Appends the extension of the filter to a name that has none. With AskBeforeOverwrite it asks about the
  // name that will really be written, and goes back to the dialog when the answer is no.
  long ShowSave(CommonDialog& dialog) override;

private:
  UserInterface& userInterface_;
};

// "caption|*.EXT" as Qt's filter and the extension in it. Both cases of the extension are offered: file
// systems that tell them apart are where a file from elsewhere would otherwise stay unseen.
struct FileFilter {
  QString nameFilter;
  QString extension; // "EXT"; empty for "*.*"
};
[[nodiscard]] FileFilter FilterOf(std::u16string_view filter);

} // namespace loader
