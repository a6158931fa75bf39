#include "mainwindow/UserGuide.h"

#include <array>
#include <string_view>
#include <system_error>

#include "core/OwnTexts.h"
#include "core/PathText.h"
#include "core/Text.h"
#include "platform/Platform.h"

namespace loader {

std::filesystem::path InstalledGuides;

namespace {

constexpr std::array<std::string_view, 4> Guides{"docs/user-guide.ja.html", "user-guide.ja.html",
                                                 "docs/user-guide.ja.md", "user-guide.ja.md"};

// With one kind of line between the folders, though the program's folder and the guide's name may have two.
void TellWhere(OwnTextId text, std::filesystem::path file) {
  ShowMessage(Replace(OwnText(text), u"@FILE@", PathText(file.make_preferred())), BoxIcon::Exclamation);
}

} // namespace

std::optional<std::filesystem::path> FindUserGuide(const std::filesystem::path& programFolder) {
  for (const std::string_view guide : Guides) {
    std::error_code none;
    if (std::filesystem::is_regular_file(programFolder / guide, none)) {
      return programFolder / guide;
    }
  }
  return std::nullopt;
}

void ShowUserGuide() {
  const std::filesystem::path& own = ThePlatform().programFolder;
  const std::filesystem::path& installed = InstalledGuides.empty() ? own : InstalledGuides;
  std::optional<std::filesystem::path> guide = FindUserGuide(own);
  if (!guide) {
    guide = FindUserGuide(installed);
  }
  if (!guide) {
    TellWhere(OwnTextId::NoUserGuide, installed / Guides.front());
  } else if (!ThePlatform().screens.ShowDocument(*guide)) {
    TellWhere(OwnTextId::NoViewer, *guide);
  }
}

} // namespace loader
