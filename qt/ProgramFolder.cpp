#include "qt/ProgramFolder.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <array>
#include <fstream>
#include <string_view>
#include <system_error>

#include "core/OwnTexts.h"
#include "core/Text.h"
#include "platform/DataFolder.h"
#include "qt/System.h"

namespace fs = std::filesystem;

namespace loader {

namespace {

constexpr std::array<std::string_view, 3> DataFiles{InitialSettingsName, "TextKOV.Ini", "TextRUG.Ini"};

// Stands beside a copy that this program has made: a file without it is the user's own.
fs::path CopyMark(const fs::path& own) {
  return fs::path(own) += ".copied";
}

void Copy(const fs::path& installed, const fs::path& own) {
  if (fs::exists(own)) {
    fs::rename(own, fs::path(own) += ".old"); // the user may have adapted it
  }
  fs::copy_file(installed, own);
  std::ofstream(CopyMark(own)).put('\n');
}

// A link of an earlier installation may lead to a place that has gone.
void Bring(const fs::path& installed, const fs::path& own) {
  const fs::file_status there = fs::symlink_status(own);
  if (fs::is_symlink(there)) {
    if (fs::read_symlink(own) == installed) {
      return;
    }
    fs::remove(own);
  } else if (fs::exists(there)) {
    if (fs::exists(CopyMark(own)) && fs::last_write_time(installed) > fs::last_write_time(own)) {
      Copy(installed, own);
    }
    return;
  }
  std::error_code noLinks;
  fs::create_symlink(installed, own, noLinks);
  if (noLinks) {
    Copy(installed, own);
  }
}

// The user guide, where it is installed: a folder that is only looked into.
void BringGuides(const fs::path& installed, const fs::path& own) {
  const fs::path guides = (installed / ".." / "doc" / InstalledFolderName / "docs").lexically_normal();
  std::error_code none;
  if (fs::is_directory(guides, none) && !fs::exists(own / "docs", none)) {
    fs::remove(own / "docs", none); // a link that leads nowhere
    fs::create_directory_symlink(guides, own / "docs", none);
  }
}

void BringData(const fs::path& installed, const fs::path& own) {
  fs::create_directories(own);
  for (const std::string_view file : DataFiles) {
    Bring(installed / file, own / file);
  }
  BringGuides(installed, own);
}

std::u16string Problem(const fs::path& folder, const std::string& reason) {
  return Replace(Replace(OwnText(OwnTextId::NoProgramFolder), u"@FOLDER@", folder.u16string()), u"@REASON@",
                 FromUtf8(reason));
}

} // namespace

ProgramFolder ChooseProgramFolder(const fs::path& executableFolder, const fs::path& userData) {
  const fs::path installed = DataFolder(executableFolder);
  std::error_code error;
  if (!fs::exists(installed / InitialSettingsName, error)) {
    return {executableFolder, {}}; // nothing is installed: the program says that it has no initial settings
  }
  if (installed == executableFolder && FolderCanBeWritten(executableFolder)) {
    return {executableFolder, {}};
  }
  const fs::path own = userData / InstalledFolderName;
  try {
    BringData(installed, own);
  } catch (const fs::filesystem_error& failure) {
    return {installed, Problem(own, failure.code().message())};
  }
  return FolderCanBeWritten(own)
             ? ProgramFolder{own, {}}
             : ProgramFolder{installed,
                             Problem(own, std::make_error_code(std::errc::permission_denied).message())};
}

ProgramFolder ChooseProgramFolder() {
  const auto path = [](const QString& text) { return fs::path(text.toStdU16String()); };
  return ChooseProgramFolder(path(QCoreApplication::applicationDirPath()),
                             path(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
}

} // namespace loader
