// Where the data files of a program are: InitSet.Ini and the sheets' templates.
#pragma once

#include <filesystem>
#include <string_view>

namespace loader {

inline constexpr std::string_view InitialSettingsName = "InitSet.Ini";
// Of an installation, under share/; of a user's own program folder, under the user's data.
inline constexpr std::string_view InstalledFolderName = "parameter-loader";

// The folder of the executable when they lie beside it (a portable folder, a build), else
// ../share/parameter-loader when they lie there, else the folder of the executable.
[[nodiscard]] std::filesystem::path DataFolder(const std::filesystem::path& executableFolder);

} // namespace loader
