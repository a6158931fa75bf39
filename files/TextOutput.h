// The text output: the whole set-up as a printed sheet, in the words that the screens show.
//
// The page is not in the code: TextKOV.Ini or TextRUG.Ini in the program's folder holds it finished, with a
// placeholder between double quotes where a value goes. "G01GNEM" is parameter GNEM of section G, item 1
// (from 1 here, unlike in the parameter file); "OUTPUTDATETIMESTRING" is the present date and time. Columns
// are bytes of code page 932, in which both files are written.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace loader {

// Prints the set-up by the template of the model. The sheet is made beside `path` and takes its place when it
// is whole. False, with nothing changed, when the template is missing, a line of it cannot be printed, or the
// sheet cannot be written to the last line.
[[nodiscard]] bool gFTextOutput(const std::filesystem::path& path);

// The template of the model in force, in the program's folder.
[[nodiscard]] std::filesystem::path TemplateFile();

// The sheet that a template's bytes give. Throws RunTimeFailure for a line that does not fit its 2047 bytes,
// before or after the values are in, and for a placeholder of an item that does not exist. A quoted word that
// is no placeholder stays, and ends the work on its line.
[[nodiscard]] std::string PrintedSheet(std::string_view templateBytes);

// The text of a parameter: of sections C and A, of section X, of all others. What the meaning table says for
// the sheet; a value outside its list is its number; an unknown tag is an empty text. RunTimeFailure for an
// item that the section does not have.
[[nodiscard]] std::u16string gFTextValueChannel(std::string_view sectionCode, int itemNumber,
                                                std::string_view tag);
[[nodiscard]] std::u16string gFTextValueOther(std::string_view sectionCode, int itemNumber,
                                              std::string_view tag);
[[nodiscard]] std::u16string gFTextValueMail(std::string_view sectionCode, int itemNumber,
                                             std::string_view tag);
// The measuring range of a channel (MMIN, MMAX) at the position and within the limits of its input kind.
[[nodiscard]] std::u16string gFChannelRangeText(int itemNumber, std::string_view tag);

// Text output, from the file dialog on; text 11002 when the sheet cannot be written.
void WriteTextOutput();

} // namespace loader
