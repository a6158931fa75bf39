// docs/parameters.md: what each parameter means, for the engineer who wants to know what a number stands for.
#pragma once

#include <string>
#include <string_view>

namespace loader::parameters {

// The document for the text of an initial settings file (UTF-8, line feeds). RunTimeFailure when the file is
// not well formed or lacks one of the models. Fills the catalogues and changes model and store.
[[nodiscard]] std::string Document(std::u16string_view initialSettings);

} // namespace loader::parameters
