// What a simulated recorder held, by the file that it leaves: lines "40001 = 0x0001".
#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace loader::test {

// Register number to value; empty where there is no such file.
[[nodiscard]] inline std::map<int, int> ReadMemoryDump(const std::filesystem::path& file) {
  std::map<int, int> memory;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    int number = 0;
    unsigned value = 0;
    if (std::sscanf(line.c_str(), "%d = 0x%x", &number, &value) == 2) {
      memory[number] = static_cast<int>(value);
    }
  }
  return memory;
}

} // namespace loader::test
