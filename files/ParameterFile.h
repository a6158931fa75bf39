// The parameter file: a whole store as text, one line a parameter.
//
//   LOADER ,V210    the head
//   C00TYPE,2       section letter, item number from 0 in two digits, tag in four columns, "," and the value
//   C00TAG ,CH 01
//
// Code page 932, CR LF, no quoting: a text is everything behind the first comma, without trailing blanks. A
// file names its parameters, so it survives changes in the shape of the store, and the reader carries the
// rules that let files of older versions load.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

namespace loader {

// Writes the store to `path`, replacing what was there. False when the file cannot be opened or its head
// cannot be written, and for a pipe, a device or a folder; from then on failures are ignored, deliberately: a
// disk that fills leaves a shortened file.
[[nodiscard]] bool gFSaveParamFile(const std::filesystem::path& path);

// Lays the file's values over the store, which must have just been rebuilt: what the file does not name keeps
// its default. False when the file cannot be read (a pipe, a device or a folder is no file), at a line
// without a comma (an empty one included), a bad number or a parameter that the store does not have; what was
// laid over the store before that line remains. A file without any line names nothing and is read like one
// that holds the head only.
[[nodiscard]] bool gFLoadParamFile(const std::filesystem::path& path);

// The same for the bytes of a file.
[[nodiscard]] bool LoadParamBytes(std::string_view bytes);

// Open, from the file dialog to the screen: rebuilds the store and lays the chosen file over it. A file that
// does not load shows text 11003 and leaves every parameter at its default. `refresh` shows the store on the
// window; it runs after every open that the user did not cancel, the failed one included. When the store
// cannot be rebuilt, text 11005 is shown and the program ends without it.
void OpenParameterFile(const std::function<void()>& refresh);

// Save, from the file dialog on; text 11002 when the file cannot be written.
void SaveParameterFile();

} // namespace loader
