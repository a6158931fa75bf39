// Which names a file may have.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace loader {

// Whether the system takes this for the name of a file, and of no other file than the one that it says. Asked
// before anything is opened. Linux takes every name; that one is too long it tells when the file is opened.
[[nodiscard]] bool IsFileName(const std::filesystem::path& file);

// The rule of Windows, on every system. It would write to a device instead of a file ("NUL", "com1.KOV",
// "\\.\COM1"), to a file of another name ("set.KOV.", "set.KOV "), or into a stream behind the file
// ("set.KOV:x"); characters that no name may have and a whole path of more than 259 characters are refused
// with them.
[[nodiscard]] bool IsWindowsFileName(std::u16string_view path);

// Names of one file have one key, as far as the names tell: Windows makes no difference between capital and
// small letters.
[[nodiscard]] std::u16string FileKey(const std::filesystem::path& file);

} // namespace loader
