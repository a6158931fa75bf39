// The name of a file as a text, for messages and titles; core/Text has the way back (PathOf).
#pragma once

#include <filesystem>
#include <string>

namespace loader {

// Never fails, whatever bytes or units the name is made of.
[[nodiscard]] std::u16string PathText(const std::filesystem::path& path);

} // namespace loader
