// Files that are replaced whole or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace loader {

// Whose files stand beside the one that is replaced.
enum class Neighbours {
  OfThisProgram, // a `<name>.new` there is what a write that was cut short has left: it is overwritten
  OfOthers,      // nothing that stands there is touched
};

// Puts a file of these bytes in the place of `file`, or makes it: written under a name of its own beside it
// first, so that a full disk cannot leave half a file. Permissions stay; a symbolic link stays one, and the
// file behind it is replaced. False leaves everything as it was: for a folder, a pipe or a device, for a file
// that was made read-only, and where the bytes cannot be written to the last one.
[[nodiscard]] bool ReplaceFile(const std::filesystem::path& file, std::string_view bytes,
                               Neighbours neighbours);

} // namespace loader
