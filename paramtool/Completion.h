// The completion of paramtool in bash, made from the table of commands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace loader::paramtool {

// The words of a usage that stand for arguments, without options and brackets: "SETUP", "WHERE...". A group
// of choices ("read|compare|write") is one word.
[[nodiscard]] std::vector<std::string> ArgumentsOf(std::string_view usage);

// What a word of a usage, or the value of an option, is completed to.
enum class Completed {
  Unknown, // nobody has said: a defect of the table, which a test finds
  Nothing,
  File,
  Folder,
  SetUp,    // a file, or how an address begins
  Recorder, // how an address begins
  Choices,  // "ja|en": one of these
};
[[nodiscard]] Completed CompletionOf(std::string_view word);

// The script, to be sourced by bash.
[[nodiscard]] std::string BashCompletion();

} // namespace loader::paramtool
