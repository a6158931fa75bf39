// docs/register-map.md: the initial settings as tables for the reader of a recorder's registers.
#pragma once

#include <string>
#include <string_view>

namespace loader::registermap {

// The document for the text of an initial settings file (UTF-8, line feeds). RunTimeFailure when the file is
// not well formed or lacks one of the models.
[[nodiscard]] std::string Document(std::u16string_view initialSettings);

} // namespace loader::registermap
