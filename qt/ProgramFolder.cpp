#include "qt/ProgramFolder.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <array>
#include <fstream>
#include <iterator>
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

// Stands beside a copy that this program has made: a file without it is the user's own. It holds what was
// copied.
fs::path CopyMark(const fs::path& own) {
  return fs::path(own) += ".copied";
}

std::string Content(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// A copy that can be written, though its original cannot.
void CopyFile(const fs::path& from, const fs::path& to) {
  fs::remove(to); // to overwrite it is refused where the library takes any two files for the same one
  fs::copy_file(from, to);
  fs::permissions(to, fs::perms::owner_write, fs::perm_options::add);
}

// Wherever it ends early, the next start begins it anew: the copy is missing until it is whole and marked.
void Copy(const fs::path& installed, const fs::path& own) {
  if (fs::exists(own)) {
    const bool adapted = Content(own) != Content(CopyMark(own));
    fs::rename(own, fs::path(own) += adapted ? ".old" : ".new");
  }
  CopyFile(installed, CopyMark(own));
  CopyFile(installed, fs::path(own) += ".new");
  fs::rename(fs::path(own) += ".new", own);
}

// Not by the times of the files: an installed one is as old as its package, and a package that is newer than
// the one before may well be older than the copy. The marks of the first versions hold an end of line only,
// with them there is nothing else to go by.
bool IsOutdated(const fs::path& own, const fs::path& installed) {
  const std::string copied = Content(CopyMark(own));
  return copied.size() > 2 ? copied != Content(installed)
                           : fs::last_write_time(installed) > fs::last_write_time(own);
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
    if (fs::exists(CopyMark(own)) && IsOutdated(own, installed)) {
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

// Where the folder docs of an installation is: for all users in share/doc, else beside the data.
fs::path GuidesOf(const fs::path& installed) {
  const fs::path guides = (installed / ".." / "doc" / InstalledFolderName).lexically_normal();
  std::error_code none;
  return fs::is_directory(guides / "docs", none) ? guides : installed;
}

// A folder that is only looked into. Where there are no links the user's folder does without.
void BringGuides(const fs::path& guides, const fs::path& own) {
  std::error_code none;
  if (fs::is_directory(guides, none) && !fs::exists(own, none)) {
    fs::remove(own, none); // a link that leads nowhere
    fs::create_directory_symlink(guides, own, none);
  }
}

void BringData(const fs::path& installed, const fs::path& own) {
  fs::create_directories(own);
  for (const std::string_view file : DataFiles) {
    Bring(installed / file, own / file);
  }
  BringGuides(GuidesOf(installed) / "docs", own / "docs");
}

std::u16string Problem(const fs::path& folder, const std::string& reason) {
  return Replace(Replace(OwnText(OwnTextId::NoProgramFolder), u"@FOLDER@", folder.u16string()), u"@REASON@",
                 FromUtf8(reason));
}

} // namespace

ProgramFolder ChooseProgramFolder(const fs::path& executableFolder, const fs::path& userData,
                                  const std::function<bool(const fs::path&)>& canBeWritten) {
  const fs::path installed = DataFolder(executableFolder);
  const fs::path guides = GuidesOf(installed);
  std::error_code error;
  if (!fs::exists(installed / InitialSettingsName, error)) {
    // Nothing is installed: the program says that it has no initial settings.
    return {executableFolder, guides, {}};
  }
  if (installed == executableFolder && canBeWritten(executableFolder)) {
    return {executableFolder, guides, {}};
  }
  const fs::path own = userData / InstalledFolderName;
  try {
    BringData(installed, own);
  } catch (const fs::filesystem_error& failure) {
    return {installed, guides, Problem(own, failure.code().message())};
  }
  if (canBeWritten(own)) {
    return {own, guides, {}};
  }
  return {installed, guides, Problem(own, std::make_error_code(std::errc::permission_denied).message())};
}

ProgramFolder ChooseProgramFolder(const fs::path& executableFolder, const fs::path& userData) {
  return ChooseProgramFolder(executableFolder, userData, FolderCanBeWritten);
}

ProgramFolder ChooseProgramFolder() {
  const auto path = [](const QString& text) { return fs::path(text.toStdU16String()).make_preferred(); };
  return ChooseProgramFolder(path(QCoreApplication::applicationDirPath()),
                             path(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
}

} // namespace loader
