// The user guide: where it is looked for, and what is told where it is not.
#include "mainwindow/UserGuide.h"

#include <fstream>

#include "core/PathText.h"
#include "tests/mainwindow/Fixture.h"
#include "tests/support/TemporaryFolder.h"

namespace loader::test {
namespace {

// As a box names it.
std::u16string Told(std::filesystem::path file) {
  return PathText(file.make_preferred());
}

TEST_F(KovWindow, TheHelpMenuHasTheGuide) {
  EXPECT_EQ(u"使い方(G)", Window().menuGuide.caption);
}

TEST_F(KovWindow, TheGuideIsShownFromTheProgramsFolder) {
  platform.WriteFile("user-guide.ja.md", "# guide");
  user.Click(Window().menuGuide);
  EXPECT_EQ(std::vector{platform.folder / "user-guide.ja.md"}, platform.screens.documents);
}

TEST_F(KovWindow, APageForABrowserComesBeforeAPlainText) {
  std::filesystem::create_directory(platform.folder / "docs");
  platform.WriteFile("docs/user-guide.ja.md", "# guide");
  EXPECT_EQ(platform.folder / "docs/user-guide.ja.md", FindUserGuide(platform.folder));
  platform.WriteFile("docs/user-guide.ja.html", "<h1>guide</h1>");
  EXPECT_EQ(platform.folder / "docs/user-guide.ja.html", FindUserGuide(platform.folder));
}

// As of a user whose program folder holds copies of the data and nothing else.
TEST_F(KovWindow, AGuideThatTheProgramFolderLacksIsThatOfTheInstallation) {
  const TemporaryFolder installed{"installed-guides-"};
  std::filesystem::create_directory(installed / "docs");
  InstalledGuides = installed.Path();
  platform.boxes.Expect(u"説明書が見つかりません。\n" + Told(installed / "docs/user-guide.ja.html"));
  user.Click(Window().menuGuide);
  std::ofstream(installed / "docs/user-guide.ja.html") << "<h1>guide</h1>";
  user.Click(Window().menuGuide);
  platform.WriteFile("user-guide.ja.md", "# guide");
  user.Click(Window().menuGuide);
  InstalledGuides.clear();
  EXPECT_EQ((std::vector{installed / "docs/user-guide.ja.html", platform.folder / "user-guide.ja.md"}),
            platform.screens.documents);
}

TEST_F(KovWindow, AGuideThatIsNotThereIsTold) {
  const std::u16string place = Told(platform.folder / "docs/user-guide.ja.html");
  platform.boxes.Expect(u"説明書が見つかりません。\n" + place);
  user.Click(Window().menuGuide);
  EXPECT_TRUE(platform.screens.documents.empty());
  platform.WriteFile("user-guide.ja.md", "# guide");
  platform.screens.hasViewer = false;
  platform.boxes.Expect(u"説明書を表示するプログラムがありません。\n" +
                        Told(platform.folder / "user-guide.ja.md"));
  user.Click(Window().menuGuide);
}

} // namespace
} // namespace loader::test
