// What a parameter file of a set-up would not give back when it is opened.
#pragma once

#include <filesystem>
#include <vector>

#include "companion/Parameters.h"
#include "companion/SetUps.h"

namespace loader {

struct NotKept {
  ParameterRef ref;
  StoredValue value;  // in the set-up
  StoredValue inFile; // as the file opens
};
// By the bytes that a save of the set-up would write. Undone where such a file does not open at all.
[[nodiscard]] std::vector<NotKept> NotKeptByFile(WholeSetUp& setUp, Language language);

// Saves it, opens the file again as another set-up and compares every parameter: what differs is what no file
// can keep. Undone where the file cannot be written, does not open, or holds anything else; what stood there
// is whole when nothing could be saved.
[[nodiscard]] std::vector<NotKept> SaveAndProve(WholeSetUp& setUp, const std::filesystem::path& file,
                                                Language language);

} // namespace loader
