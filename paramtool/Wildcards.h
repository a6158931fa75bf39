// Operands that stand for several files. A shell of Linux puts the files in their place; cmd.exe and
// PowerShell hand "*.RUG" on as it is typed, and so the program does it there.
#pragma once

#include <QString>
#include <QStringList>
#include <string_view>

#include "paramtool/Command.h"

namespace loader::paramtool {

// Whether a pattern means a name, by the rules of Windows: `*` is any characters, `?` one that is no dot, or
// none in front of a dot and at the end; "*.*" means every name and "*." those without a dot. An ending is
// the whole ending: "*.RUG" does not mean "a.RUG2". Letters are compared as they are (FileKey makes them
// alike).
[[nodiscard]] bool MatchesWildcards(std::u16string_view pattern, std::u16string_view name);

// The files, no folders, that a word means by wildcards in its last part, in the order of their keys
// (FileKey) and each with the folder as the word has it. The word itself where it has none there, or means no
// file: who opens it then says which file is missing.
[[nodiscard]] QStringList FilesByWildcards(const QString& word);

// What of that the system's shells leave to the program: FilesByWildcards on Windows, on Linux the word.
[[nodiscard]] QStringList FilesMeantBy(const QString& word);

// The operands of a command with its files in the place of words for several: of those operands that are a
// file or a set-up by the table of commands, and of no other one ("C*TAG" of show is a pattern of
// parameters). Whether a word was in quotes a program is not told; a file of Windows has no such character in
// its name.
[[nodiscard]] QStringList WithFiles(const Command& command, const QStringList& operands);

} // namespace loader::paramtool
