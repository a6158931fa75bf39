// A gate is an event of the system's, which the name of a file names.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

namespace loader::test {

inline std::wstring GateName(const std::filesystem::path& gate) {
  std::wstring name = gate.generic_wstring();
  std::ranges::replace(name, L'/', L'-');
  std::ranges::replace(name, L':', L'-');
  return L"Local\\" + name;
}

} // namespace loader::test
