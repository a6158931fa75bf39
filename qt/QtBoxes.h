// Message boxes: plain text, modal to the window in front, as wide as title and words need it.
#pragma once

#include "platform/Platform.h"

namespace loader {

class UserInterface;

class QtBoxes final : public MessageBoxes {
public:
  explicit QtBoxes(UserInterface& userInterface) : userInterface_(userInterface) {}
  BoxAnswer Show(std::u16string_view text, BoxButtons buttons, BoxIcon icon,
                 std::u16string_view title) override;
  BoxAnswer AskBeforeLoss(std::u16string_view text) override;

private:
  UserInterface& userInterface_;
};

} // namespace loader
