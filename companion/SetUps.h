// Set-ups as a user names them on a command line, and the opening of those that are files or defaults.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/Phrases.h"
#include "core/WholeSetUp.h"
#include "files/ParameterFile.h"

namespace loader {

enum class Place { File, Tcp, Serial, Usb, Default };

struct SetUpAddress {
  Place place = Place::File;
  std::u16string text;  // as it was given
  std::u16string where; // path, host, device, model
  int port = 502;
  int baud = 19200;
  int station = 1;
  bool operator==(const SetUpAddress&) const = default;
};
[[nodiscard]] constexpr bool IsRecorder(Place place) {
  return place == Place::Tcp || place == Place::Serial || place == Place::Usb;
}

// What cannot be done, in the words of the user's language, with what it is about and why. The program ends
// with 2.
struct Undone {
  std::u16string message;
};

// "tcp:HOST[:PORT][#STATION]", "serial:DEVICE[@BAUD][#STATION]", "usb:DEVICE", "default:KOV"; anything else
// is a file ("./tcp:x" for one whose name begins so). A host in brackets may hold colons: "tcp:[::1]:1502".
// Undone for a text that is none of them.
[[nodiscard]] SetUpAddress ParseAddress(std::u16string_view text, Language language);

// The initial settings of a model, loaded from the program folder once for the process. Undone where
// InitSet.Ini cannot be loaded.
[[nodiscard]] const WholeSetUp& InitialSetUp(std::string_view model, Language language);

// Which model a file is of.
enum class ModelBasis {
  Asked,      // --model
  Content,    // it names nearly all items of one and hardly another, or opens as one of the two alone
  ModelField, // both, or neither; PILC says
  FileName,   // both; its name ends in .KOV or .RUG
  Both,       // unsettled
  Neither,    // it does not open as either
};
struct ModelFinding {
  ModelBasis basis = ModelBasis::Neither;
  std::string model; // empty where it is unsettled
};
[[nodiscard]] ModelFinding FindModel(std::string_view bytes, const std::filesystem::path& file,
                                     const std::string& asked, Language language);

// The model of which a file names nearly all items and hardly another: that of a whole file, damaged or not,
// whatever it opens as. Empty for a file that is none.
[[nodiscard]] std::string ModelByItems(std::string_view bytes, Language language);
// Which model the ending of a file's name says; empty where it says none.
[[nodiscard]] std::string ModelOfName(const std::filesystem::path& file);
// The bytes of a file, or those that a save of the initial settings has. Undone for a recorder and for a file
// that cannot be read.
[[nodiscard]] std::string FileBytesOf(const SetUpAddress& address, Language language);

struct OpenedSetUp {
  SetUpAddress address;
  WholeSetUp setUp;
  ModelFinding finding;
  std::string bytes;               // of the file
  bool opens = true;               // whether the window would open it
  std::vector<FileDefect> defects; // also those that it opens with
};
// A file or the initial settings, whatever defects the file has, with the user units in their list. Undone
// for a recorder, a file that cannot be read, and a file whose model is unsettled.
[[nodiscard]] OpenedSetUp OpenStrictly(const SetUpAddress& address, const std::string& model,
                                       Language language);
// The same; a file that the window would not open is Undone, with its first line that prevents it.
[[nodiscard]] OpenedSetUp OpenSetUp(const SetUpAddress& address, const std::string& model, Language language);

// "no such tag", without file and line.
[[nodiscard]] std::u16string_view DefectText(LineDefect reason, Language language);

// Writes the set-up in force to a parameter file with proof (SaveParamFileProved), or bytes to any file.
// Undone where that fails; what stood there is whole then.
void SaveSetUp(const std::filesystem::path& file, Language language);
void SaveBytes(const std::filesystem::path& file, std::string_view bytes, Language language);

} // namespace loader
