#include "platform/FileName.h"

#include <string>
#include <system_error>
#include <windows.h>

namespace loader {

namespace {

std::u16string TextOf(const std::filesystem::path& path) {
  return {path.native().begin(), path.native().end()};
}

} // namespace

// As it is written and as the system completes it: the folder it starts from counts for the length, and the
// completed form has lost the dots and blanks at the end.
bool IsFileName(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(file, error);
  return !error && IsWindowsFileName(TextOf(file)) && IsWindowsFileName(TextOf(whole));
}

std::u16string FileKey(const std::filesystem::path& file) {
  std::wstring key = file.lexically_normal().make_preferred().native();
  CharUpperBuffW(key.data(), static_cast<DWORD>(key.size()));
  return TextOf(key);
}

} // namespace loader
