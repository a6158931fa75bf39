// What the window needs of the desktop it runs on and Qt does not level: one file for each system.
#pragma once

#include <QImage>
#include <QSize>
#include <QStringList>
#include <filesystem>
#include <memory>
#include <string_view>

namespace loader {

// Families with Japanese letters that the pages are laid out for, the first choice first: one family for all
// scripts, so that half-width katakana, digits and kanji stand on one line.
[[nodiscard]] QStringList ProgramFamilies();

// The drawing NAME of the program's icons at this size in pixels of the screen, as sharp as it can be;
// premultiplied, transparent around the drawing.
[[nodiscard]] QImage DrawProgramIcon(std::string_view name, const QSize& size);

// Whether this user may make files in the folder.
[[nodiscard]] bool FolderCanBeWritten(const std::filesystem::path& folder);

// Where a file dialog begins.
[[nodiscard]] QString FolderForFiles();

// Qt's file dialog keeps its history among the user's settings. The program persists nothing but its two
// files: from the making of this to its end, what the dialog keeps is kept nowhere else.
class ForgottenHistory {
public:
  ForgottenHistory();
  ~ForgottenHistory();
  ForgottenHistory(const ForgottenHistory&) = delete;
  ForgottenHistory& operator=(const ForgottenHistory&) = delete;

private:
  struct State;
  std::unique_ptr<State> state_;
};

// Before the application object is made: what it takes from the environment.
void PrepareDesktop();

// The style that the program's own builds upon in the palette that the application has now; empty: the
// desktop's.
[[nodiscard]] QString BaseStyle();

} // namespace loader
