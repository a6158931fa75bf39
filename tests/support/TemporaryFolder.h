// A folder of its own among the system's temporary files, gone with what it was made for.
//
// The name is random and counts only when the folder was made by this very step: a name of our own making
// (process id and counter) meets, sooner or later, the folder that an aborted run of that id has left behind.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace loader::test {

class TemporaryFolder {
public:
  // `prefix`: what its name begins with, so that a leftover tells whose it is.
  explicit TemporaryFolder(std::string_view prefix) {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / prefix;
      path_ += std::to_string(random());
    } while (!std::filesystem::create_directory(path_)); // throws where it can make none
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

private:
  std::filesystem::path path_;
};

} // namespace loader::test
