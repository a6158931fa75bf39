// What an action of the window says and asks while it runs, heard on its way to the user.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace loader {

struct Overheard {
  std::vector<std::u16string> messages; // of its boxes that only tell, in their order
  bool declined = false;                // the user has answered its question, or its file dialog, with Cancel
  std::u16string fileTitle;             // of the file that was chosen
  std::filesystem::path file;
};

// Runs the action. What the user does meanwhile, from the event loop or behind a box, is none of it: a
// refused attempt to close the window during an exchange is no message of the exchange. What the action fails
// with passes through, and `heard` holds what came before.
void Overhear(Overheard& heard, const std::function<void()>& action);

} // namespace loader
