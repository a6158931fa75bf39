// A folder of its own among the system's temporary files, gone with what it was made for.
//
// The system chooses the name and makes the folder in one step: a name of our own making (process id and
// counter) meets, sooner or later, the folder that an aborted run of that id has left behind.
#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace loader::test {

class TemporaryFolder {
public:
  // `prefix`: what its name begins with, so that a leftover tells whose it is.
  explicit TemporaryFolder(std::string_view prefix) {
    std::string name = (std::filesystem::temp_directory_path() / prefix).string() + "XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) {
      throw std::system_error(errno, std::generic_category(), "no temporary folder " + name);
    }
    path_ = name;
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
