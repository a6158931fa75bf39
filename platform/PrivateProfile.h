// Private-profile files: "[section]" lines and "key=value" lines.
//
// Sections and keys are found without regard to the case of ASCII letters; values are trimmed of blanks and
// tabs, and one pair of quotes around a value (double or single) is removed. A write keeps every other line
// and comment of the file as it was and ends the lines that it writes with CR LF. Bytes in, bytes out: the
// code page is the caller's.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace loader {

// The value of the first such key of the first such section, or `defaultText` when the file, the section or
// the key is absent; at most `bufferSize` - 1 bytes, up to the first NUL.
[[nodiscard]] std::string GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                                   std::string_view defaultText, std::size_t bufferSize,
                                                   const std::filesystem::path& file);

// Sets the key, adding the file, the section or the key where they are absent. The file is replaced whole or
// not at all; a symbolic link stays one, and the file behind it is replaced. False when it could not be
// written, as a file that was made read-only cannot be.
[[nodiscard]] bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                              std::string_view value, const std::filesystem::path& file);

} // namespace loader
