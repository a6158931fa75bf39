// A line of a command as a user types it.
#pragma once

#include <filesystem>
#include <string>

#include "tests/support/Process.h"

namespace loader::test {

// By the system's shell, which finds programs in `programs` first.
[[nodiscard]] Ended RunInShell(const std::string& line, const std::filesystem::path& programs);

} // namespace loader::test
