// Where the program folder is: the folder with the data files that LOADER.INI and the COMn links are kept in.
#pragma once

#include <filesystem>
#include <string>

namespace loader {

struct ProgramFolder {
  std::filesystem::path path;
  std::u16string problem; // why none can be written, for a box; empty: all is well
};

// A portable folder, with the data files beside the executable, is its own program folder as long as it can
// be written. Installed for all users (data files in ../share/parameter-loader), and on a medium that cannot
// be written, each user has one: `userData`/parameter-loader. Its data files are links to the installed ones,
// or copies where there are no links, which are made anew when the installed file is newer (the old one stays
// as NAME.old); a file of the user's own in a link's place stays. Where that folder cannot be written either
// there is a problem, and `path` is the folder of the data files.
[[nodiscard]] ProgramFolder ChooseProgramFolder(const std::filesystem::path& executableFolder,
                                                const std::filesystem::path& userData);

// For this process: the folder of its executable, the system's folder for the user's data (XDG_DATA_HOME).
[[nodiscard]] ProgramFolder ChooseProgramFolder();

} // namespace loader
