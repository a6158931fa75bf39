// The printed sheet of a set-up, for a program that has to say why there is none.
#pragma once

#include <string>

#include "companion/Parameters.h"
#include "core/WholeSetUp.h"

namespace loader {

// The sheet of `setUp` by the template of its model. Passwords are blank unless asked for. Undone where the
// template cannot be read or printed by.
[[nodiscard]] std::string SheetOf(const WholeSetUp& setUp, const Speech& speech);

// Gives every secret of the set-up in force a value that the sheet prints as blanks.
void BlankSecrets();

} // namespace loader
