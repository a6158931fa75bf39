// Any set-up that a command takes: a file, the initial settings, a recorder.
#pragma once

#include <string>
#include <vector>

#include "core/WholeSetUp.h"
#include "paramtool/Command.h"

namespace loader::paramtool {

// Opens a file or the initial settings, or reads a whole recorder. Tells on the standard error output where
// the model was only guessed by the file's name. Undone where it cannot be had.
[[nodiscard]] WholeSetUp OpenAny(const Call& call, std::u16string_view text);

// The same for a file or the initial settings, with the bytes of the file.
[[nodiscard]] OpenedSetUp OpenFile(const Call& call, const SetUpAddress& address);

// Before a file is written: Undone when it is the file of a set-up that was given, which a report would
// destroy.
void RequireOtherFile(const std::filesystem::path& file, const SetUpAddress& address, Language language);

// Undone when one of them names nothing of the set-up in force.
void RequireEachNames(const std::vector<Selection>& selections, Language language);

} // namespace loader::paramtool
