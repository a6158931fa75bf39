#include "platform/FileName.h"

namespace loader {

bool IsFileName(const std::filesystem::path& /*file*/) {
  return true;
}

std::u16string FileKey(const std::filesystem::path& file) {
  return file.lexically_normal().u16string();
}

} // namespace loader
