// What a test asks of the system it runs on, beyond the standard library.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace loader::test {

// A pipe among the files; false on a system that has none there.
[[nodiscard]] bool MakePipe(const std::filesystem::path& file);

// A variable of this process's environment.
void SetEnvironment(const std::string& name, const std::string& value);
void RemoveEnvironment(const std::string& name);

// The variable that names the folder of temporary files.
[[nodiscard]] std::string TemporaryFolderVariable();

[[nodiscard]] long ProcessId();

// The files of the libraries that this process has loaded.
[[nodiscard]] std::vector<std::string> LoadedLibraries();

} // namespace loader::test
