// What the program has of its system: words, folder, the order to stop.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace loader::simulator {

// What the program writes arrives as it is: lines end as it ends them, and a console takes it for UTF-8.
void PrepareOutput();

// The arguments of main in UTF-8, without the program's own name.
[[nodiscard]] std::vector<std::string> ProgramArguments(int count, char** arguments);

// The file of the program that runs.
[[nodiscard]] std::filesystem::path ProgramFile();

// The file that an argument names, whatever letters or bytes its name is made of.
[[nodiscard]] std::filesystem::path FileOf(const std::string& argument);

// The lines of --help about what ends the program.
[[nodiscard]] std::string_view StopHelp();

// Can be read once the program is told to stop. From the first call on such an order does not end the program
// at once; the descriptor lasts as long as the program.
[[nodiscard]] int StopDescriptor();

} // namespace loader::simulator
