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

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "platform/WholeFile.h"

namespace loader {

// Writes the store to `path`, replacing what was there. False when the file cannot be opened or its head
// cannot be written, and for a pipe, a device or a folder; from then on failures are ignored, deliberately: a
// disk that fills leaves a shortened file.
[[nodiscard]] bool gFSaveParamFile(const std::filesystem::path& path);

// The bytes that a save writes.
[[nodiscard]] std::string ParamFileBytes();

// A save for programs that have to know: the file is written beside `path`, read back, compared and only then
// put in its place, so that what stood there stays whole until the new file is. Tells why it failed; nothing
// is changed then.
[[nodiscard]] Replacement SaveParamFileProved(const std::filesystem::path& path);

// Lays the file's values over the store, which must have just been rebuilt: what the file does not name keeps
// its default. False when the file cannot be read (a pipe, a device or a folder is no file), at a line
// without a comma (an empty one included), a bad number or a parameter that the store does not have; what was
// laid over the store before that line remains. A file without any line names nothing and is read like one
// that holds the head only.
[[nodiscard]] bool gFLoadParamFile(const std::filesystem::path& path);

// What is wrong with a line of a parameter file.
enum class LineDefect {
  NoComma, // the file is no parameter file, and nothing of it is laid
  ItemIsNoNumber,
  UnknownSection,
  UnknownItem,
  UnknownTag,
  NotANumber,
  Beyond16Bits,
  TimeBeyond16Bits, // hours and minutes of an older file, in minutes
  // The line is laid and the file opens, but the text is not what the file says:
  TextWithComma,          // it is emptied
  TextBeyond64Characters, // it is cut
};
// Whether a file with such a line does not open.
[[nodiscard]] constexpr bool PreventsOpening(LineDefect reason) {
  return reason < LineDefect::TextWithComma;
}

// A line with a defect, and what it would have set. A line without a comma has a key alone.
struct FileDefect {
  LineDefect reason = LineDefect::NoComma;
  std::size_t line = 0; // from 1
  std::string key;      // bytes of the file, as they stand there, without trailing blanks
  std::u16string value; // the same for what stands behind the comma
  // The parameter that is meant, by today's names: an older file may call it otherwise.
  std::string section;
  std::int16_t item = 0;
  std::string tag;
  bool operator==(const FileDefect&) const = default;
};
// Hears of every defect, by ascending line number. Empty for the window, which says only that a file does not
// open.
using DefectSink = std::function<void(const FileDefect&)>;

// A line that was laid, for those who have to know which line a value comes from. All views last for the
// call. The key and the bytes of the value are those of the file, without trailing blanks; parameter and
// value are what became of them: an older file may call it otherwise.
struct LaidLine {
  std::size_t line; // from 1
  std::string_view key;
  std::string_view bytes;
  std::string_view section;
  std::int16_t item;
  std::string_view tag;
  std::u16string_view value;
};
using LineSink = std::function<void(const LaidLine&)>;

// The same for the bytes of a file. A sink hears of the bad lines behind the first one too; result and store
// are the same with it and without: nothing behind the first bad line stays in the store. `laid` hears of
// every line that is good, of those behind the first bad one only where there is a sink as well; the head is
// none of them.
[[nodiscard]] bool LoadParamBytes(std::string_view bytes, const DefectSink& sink = {},
                                  const LineSink& laid = {});
// Whether the line, without its end, is a head: the reader passes it over wherever it stands.
[[nodiscard]] bool IsHeadLine(std::string_view line);

// Open, from the file dialog to the screen: rebuilds the store and lays the chosen file over it. A file that
// does not load shows text 11003 and leaves every parameter at its default. `refresh` shows the store on the
// window; it runs after every open that the user did not cancel, the failed one included. When the store
// cannot be rebuilt, text 11005 is shown and the program ends without it.
void OpenParameterFile(const std::function<void()>& refresh);
// The same for a file that was chosen in another way.
void OpenParameterFile(const std::filesystem::path& path, const std::function<void()>& refresh);

// Save, from the file dialog on; text 11002 when the file cannot be written.
void SaveParameterFile();

} // namespace loader
