// Model selection and the initial settings file, which shapes the parameter store.
#pragma once

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/modMain.h"

namespace loader {

// The models as LOADER.INI's TYPE counts them: 0 KOV, anything else RUG.
void TakeKovProfile();
void TakeRugProfile();
// The model of that name, "KOV" or "RUG". False, with nothing changed, for any other.
[[nodiscard]] bool TakeProfileOf(std::string_view model);

// Takes the model from LOADER.INI, creating the file or its TYPE where they are missing. A TYPE that is no
// signed 16-bit number is a RunTimeFailure.
void SelectModel();

// Rebuilds ParamStore from the block of the model in force in <program folder>/InitSet.Ini, with every value
// at its default. A file that cannot be opened or is not well formed is a RunTimeFailure that says why; the
// store is then as it was before the call.
void LoadModelBlock();

// The model of that name with its block, for a program without LOADER.INI: that file is neither read nor
// made. A RunTimeFailure, for an unknown name or a bad file, leaves model and store as they were. It is asked
// behind TakeStartValues.
void LoadModel(std::string_view model);

// The window's load: selects the model by LOADER.INI and rebuilds ParamStore from <program
// folder>/InitSet.Ini, with every value at its default. False when the file cannot be opened or is not well
// formed; the store is then as it was before the call.
[[nodiscard]] bool gFLoadInitSetteiData();

// The same for a caller that ends the program on failure: text 11005, then the end. False after a failure.
[[nodiscard]] bool RebuildStoreOrEnd();

// One line of the initial settings file: the row's fields 0 to 8.
using InitRow = std::vector<std::u16string>;
// The rows of the block of `versionTag`. Header row: {"2", tag, ModeCheckOff}. Throws RunTimeFailure on a row
// of more than nine fields before the end of the block.
[[nodiscard]] std::vector<InitRow> ReadInitBlock(std::u16string_view fileText,
                                                 std::u16string_view versionTag);
// The store that the rows describe, item 0 copied to all items; the defaults that depend on the item are not
// in it yet. `modeCheckOff` is set by a header row and left alone without one. Throws RunTimeFailure on a bad
// number, a field row before the first section row, a section without items, and where sections, items and
// records come to 65535 or more.
[[nodiscard]] ParamStoreTable BuildStore(const std::vector<InitRow>& rows, std::int32_t& modeCheckOff);
// The defaults that depend on the item number (colours, tags, group names), in ParamStore, for the profile in
// force.
void ApplyItemDefaults();

// The whole file as bytes; RunTimeFailure when it cannot be read.
[[nodiscard]] std::string ReadWholeFile(const std::filesystem::path& file);
// The same for a file that a user names: a pipe or a device, which may have no end, is a RunTimeFailure at
// once. A symbolic link to a regular file is one.
[[nodiscard]] std::string ReadRegularFile(const std::filesystem::path& file);
// Cuts the first line off `rest`, without its line end: CR LF, CR or LF. A line end at the end of the text
// opens no line.
template <typename Character>
[[nodiscard]] std::basic_string_view<Character> TakeLine(std::basic_string_view<Character>& rest) {
  constexpr Character LineEnds[] = {'\r', '\n'};
  const std::basic_string_view<Character> ends(LineEnds, std::size(LineEnds));
  // Character by character: find_first_of calls a function for each of them.
  const auto at = std::find_if(rest.begin(), rest.end(), [](Character c) { return c == '\r' || c == '\n'; });
  if (at == rest.end()) {
    return std::exchange(rest, {});
  }
  const auto end = static_cast<std::size_t>(at - rest.begin());
  const std::basic_string_view<Character> line = rest.substr(0, end);
  rest.remove_prefix(end + (rest.substr(end, ends.size()) == ends ? ends.size() : 1));
  return line;
}
// All lines of a text.
[[nodiscard]] std::vector<std::u16string_view> SplitLines(std::u16string_view text);

} // namespace loader
