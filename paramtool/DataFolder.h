// Where the data files stand: InitSet.Ini and the templates of the text output.
#pragma once

#include <filesystem>

namespace loader::paramtool {

// The folder of the executable when InitSet.Ini stands in it, else the share folder of the place where the
// program is installed. Without the file in either it is the folder of the executable.
[[nodiscard]] std::filesystem::path DataFolder(const std::filesystem::path& ofProgram);

} // namespace loader::paramtool
