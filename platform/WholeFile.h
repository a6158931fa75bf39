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

// What became of a replacement. Everything but Done leaves the file as it was.
enum class Replacement {
  Done,
  NoName,   // no file can have this name: it is too long, or a device has it
  NoFile,   // a folder, a pipe, a device, links in a circle
  ReadOnly, // the file was made read-only, or may not be written
  NoNameBeside,
  NotWritten,    // to the last byte: no such folder, no right to it, a full disk
  NotReadBack,   // what was written cannot be read, or is not what was to be written
  NotPutInPlace, // the new file was whole, but could not take the other's place
};

// Puts a file of these bytes in the place of `file`, or makes it: written under a name of its own beside it
// first, so that a full disk cannot leave half a file. Permissions stay; a symbolic link stays one, and the
// file behind it is replaced. False leaves everything as it was: for a folder, a pipe or a device, for a file
// that was made read-only, and where the bytes cannot be written to the last one.
[[nodiscard]] bool ReplaceFile(const std::filesystem::path& file, std::string_view bytes,
                               Neighbours neighbours);

// Whether nobody may write the file. Asked beside the opening of a file, which the bits do not keep the
// superuser from: they are meant all the same.
[[nodiscard]] bool IsMadeReadOnly(const std::filesystem::file_status& file);

// Whether the file is there, can be read and holds these bytes and no others.
[[nodiscard]] bool FileHolds(const std::filesystem::path& file, std::string_view bytes);

// The same as ReplaceFile, with the new file read and compared before it takes the other's place; tells why
// it failed.
[[nodiscard]] Replacement ReplaceFileProved(const std::filesystem::path& file, std::string_view bytes,
                                            Neighbours neighbours);

} // namespace loader
