// What stands around the tour: the recorders that it visits, the program's folder, and the comparison at its
// end.
#pragma once

#include <filesystem>
#include <functional>

#include "qt/QtPlatform.h"
#include "tests/e2e/Guest.h"
#include "tests/e2e/RecorderProcess.h"

namespace loader::tour {

// What the recorders of the simulator measure: the first and the last channel that the window has to show.
struct Plant {
  const char* model;
  int channels;
  const char16_t* firstTag;
  const char16_t* firstKind;
};
inline constexpr Plant Plants[] = {{"KOV", 18, u"1号炉 上段", u"K熱電対"},
                                   {"RUG", 36, u"取水流量 1系", u"1-5V"}};

// The recorder's memory at the end against that of one which nobody has talked to: only what the tour has
// changed may differ, and has to.
void CompareMemories(const Memory& untouched, const Memory& written, const Memory& changed,
                     const Plant& plant);
// Runs the program, and in its event loop, where everything that a user does comes from, the guest's visit,
// which ends the program. Empty when all went as told, else what did not.
[[nodiscard]] QString FailureOf(QtPlatform& platform, const std::function<void()>& visit);
// The one folder that the program is told, made and by its whole name; empty where it is told none or cannot
// make it.
[[nodiscard]] QString MakeFolder(const QStringList& arguments);
// The program's folder for one model: the data files and a LOADER.INI that reaches the recorder.
[[nodiscard]] std::filesystem::path MakeProgramFolder(const std::filesystem::path& folder,
                                                      const Plant& plant);

} // namespace loader::tour
