// The user guide, which is installed beside the program.
#pragma once

#include <filesystem>
#include <optional>

namespace loader {

// Where the guide is looked for when the program folder has none; the program says it as it starts. Empty:
// nowhere else.
extern std::filesystem::path InstalledGuides;

// The guide in the program's folder, or in its folder docs: a page for a browser before a plain text. Empty
// when there is none.
[[nodiscard]] std::optional<std::filesystem::path> FindUserGuide(const std::filesystem::path& programFolder);

// Shows it in the viewer that the system has for it; a box says so where there is no guide or no viewer.
void ShowUserGuide();

} // namespace loader
