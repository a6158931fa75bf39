#include "paramtool/DataFolder.h"

namespace loader::paramtool {

namespace {

bool HasData(const std::filesystem::path& folder) {
  std::error_code unreadable; // the load of the file tells of it
  return std::filesystem::exists(folder / "InitSet.Ini", unreadable);
}

} // namespace

std::filesystem::path DataFolder(const std::filesystem::path& ofProgram) {
  const std::filesystem::path shared = (ofProgram / LOADER_DATA_FROM_PROGRAM).lexically_normal();
  return !HasData(ofProgram) && HasData(shared) ? shared : ofProgram;
}

} // namespace loader::paramtool
