// Where the program folder is: the folder with the data files that LOADER.INI and the COMn links are kept in.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace loader {

struct ProgramFolder {
  std::filesystem::path path;
  std::filesystem::path guides; // of the installation: where the guides are that `path` itself may not have
  std::u16string problem;       // why none can be written, for a box; empty: all is well
};

// A portable folder, with the data files beside the executable, is its own program folder as long as it can
// be written. Installed for all users (data files in ../share/parameter-loader), and on a medium that cannot
// be written, each user has one: `userData`/parameter-loader. Its data files are links to the installed ones,
// or copies where there are no links, which are made anew when another file has been installed than the one
// that was copied (what the user made of his copy stays as NAME.old); a file of the user's own in a link's
// place stays. Where that folder cannot be written either there is a problem, and `path` is the folder of the
// data files. `canBeWritten` says of a folder that is there whether this user may make files in it.
[[nodiscard]] ProgramFolder
ChooseProgramFolder(const std::filesystem::path& executableFolder, const std::filesystem::path& userData,
                    const std::function<bool(const std::filesystem::path&)>& canBeWritten);
// As the system says it.
[[nodiscard]] ProgramFolder ChooseProgramFolder(const std::filesystem::path& executableFolder,
                                                const std::filesystem::path& userData);

// For this process: the folder of its executable, the system's folder for the user's data (XDG_DATA_HOME).
[[nodiscard]] ProgramFolder ChooseProgramFolder();

} // namespace loader
