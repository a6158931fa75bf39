// The standard input and output of the program, on a terminal, in a pipe and in a file: UTF-8, line ends as
// they are given.
#pragma once

#include <string_view>

namespace loader::paramtool {

// Before anything else is opened, read or written.
void PrepareStandardStreams();

[[nodiscard]] bool ErrorsGoToATerminal();

// Written through at once. False when not all of it was taken: a closed pipe, a full disk.
[[nodiscard]] bool WriteToOutput(std::string_view text);
void WriteToErrors(std::string_view text);

} // namespace loader::paramtool
