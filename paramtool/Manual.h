// The manual page of paramtool, made from the table of commands: what a command says of itself is said once.
#pragma once

#include <string>

#include "companion/Phrases.h"

namespace loader::paramtool {

// The page in the form of man(7), in UTF-8.
[[nodiscard]] std::string ManualPage(Language language);

} // namespace loader::paramtool
