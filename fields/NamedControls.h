// The controls of a screen by name and kind. One that is missing, or of another kind, is a defect of the
// program (std::logic_error).
#pragma once

#include <string_view>

#include "platform/Controls.h"

namespace loader {

[[nodiscard]] ListBox& ListNamed(Screen& screen, std::string_view name);
[[nodiscard]] TextField& FieldNamed(Screen& screen, std::string_view name);
[[nodiscard]] Label& LabelNamed(Screen& screen, std::string_view name);
[[nodiscard]] Control& ControlNamed(Screen& screen, std::string_view name);

} // namespace loader
