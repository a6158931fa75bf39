// A word of a command that a user is told to run.
#pragma once

#include <string>
#include <string_view>

namespace loader::paramtool {

// As the system's shells take it for one word: sh, or cmd.exe and PowerShell alike.
[[nodiscard]] std::u16string ShellWord(std::u16string_view word);

} // namespace loader::paramtool
