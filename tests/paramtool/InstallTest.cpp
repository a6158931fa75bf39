// paramtool as "cmake --install" puts it into a folder: it works from there, wherever that is.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>

#include "platform/DataFolder.h"
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using Installed = ToolTest;

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::filesystem::path InstalledInto(const std::filesystem::path& prefix) {
  const Ended install = RunProcess(
      CMAKE_PROGRAM, {"--install", BUILD_FOLDER, "--prefix", prefix.string(), "--component", "system"});
  EXPECT_EQ(install.status, 0) << install.errors;
  return prefix;
}

TEST_F(Installed, RunsFromAnyPlaceWithItsDataPagesAndCompletion) {
  const std::filesystem::path prefix = InstalledInto(File("工場 2"));
  const std::filesystem::path program = prefix / "bin/paramtool";
  const std::vector<std::string> arguments{"show", "default:RUG", "CH1"};
  const Ended shown = RunProcess(program, arguments);
  EXPECT_EQ(shown.status, ExitGood) << shown.errors;
  EXPECT_EQ(shown.errors, "");
  EXPECT_EQ(shown.output, Tool(arguments).output);
  EXPECT_FALSE(std::filesystem::exists(prefix / "bin/InitSet.Ini"));
  for (const char* file : {"man/man1/paramtool.1", "man/ja/man1/paramtool.1", "parameter-loader/TextKOV.Ini",
                           "parameter-loader/TextRUG.Ini", "bash-completion/completions/paramtool"}) {
    EXPECT_TRUE(std::filesystem::exists(prefix / "share" / file)) << file;
  }
  // And from another place.
  const std::filesystem::path moved = File("moved");
  std::filesystem::rename(prefix, moved);
  EXPECT_EQ(RunProcess(moved / "bin/paramtool", arguments).output, shown.output);
  // Called by a link that stands elsewhere.
  std::filesystem::create_symlink(moved / "bin/paramtool", File("link"));
  EXPECT_EQ(RunProcess(File("link"), arguments).output, shown.output);
}

// What the desktop needs: the entry, the kinds of files with their icon, each icon in each size, the rule for
// the recorder's device.
TEST_F(Installed, TheDesktopFindsTheProgramItsFilesAndItsDevice) {
  const std::filesystem::path prefix = InstalledInto(File("usr"));
  const std::string entry = ContentOf(prefix / "share/applications/parameter-loader.desktop");
  for (const char* line : {"\nName=Parameter Loader\n", "\nName[ja]=パラメータローダ\n",
                           "\nExec=parameter-loader\n", "\nIcon=parameter-loader\n"}) {
    EXPECT_NE(entry.find(line), std::string::npos) << line;
  }
  EXPECT_EQ(entry.find("MimeType="), std::string::npos) << "the window takes no file on its command line";
  const std::string kinds = ContentOf(prefix / "share/mime/packages/parameter-loader.xml");
  for (const char* part :
       {R"(<glob pattern="*.KOV"/>)", R"(<glob pattern="*.RUG"/>)", R"(<icon name="parameter-file"/>)"}) {
    EXPECT_NE(kinds.find(part), std::string::npos) << part;
  }
  const std::filesystem::path icons = prefix / "share/icons/hicolor";
  for (const char* size : {"16x16", "22x22", "24x24", "32x32", "48x48", "64x64", "128x128", "256x256"}) {
    EXPECT_EQ(ContentOf(icons / size / "apps/parameter-loader.png").substr(1, 3), "PNG") << size;
    EXPECT_EQ(ContentOf(icons / size / "mimetypes/parameter-file.png").substr(1, 3), "PNG") << size;
  }
  const std::string rule = ContentOf(prefix / "lib/udev/rules.d/60-parameter-loader.rules");
  EXPECT_NE(rule.find(R"(GROUP="plugdev")"), std::string::npos);
  EXPECT_NE(rule.find("SYMLINK+=\"recorder-usb%n\""), std::string::npos);
}

// Whoever reads the installed pages finds their pictures and the pages that they lead to.
TEST_F(Installed, ThePagesHaveTheirPicturesAndLeadToOneAnother) {
  const std::filesystem::path pages = InstalledInto(File("usr")) / "share/doc/parameter-loader";
  const std::regex link(R"(\]\(([^)#\s]+\.(md|png))[)#])");
  int found = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(pages)) {
    const std::filesystem::path& page = entry.path();
    const std::string text = page.extension() == ".md" ? ContentOf(page) : std::string();
    for (std::sregex_iterator it(text.begin(), text.end(), link), end; it != end; ++it) {
      const std::string to = (*it)[1].str();
      if (!to.starts_with("http")) {
        ++found;
        EXPECT_TRUE(std::filesystem::exists(page.parent_path() / to)) << page.filename() << ": " << to;
      }
    }
  }
  EXPECT_GT(found, 40);
  for (const char* page :
       {"docs/user-guide.md", "docs/user-guide.ja.md", "docs/ports.md", "docs/licences.md"}) {
    EXPECT_FALSE(ContentOf(pages / page).empty()) << page;
  }
}

// The one number of CMakeLists.txt: what the program says, and what the packages are called.
TEST_F(Installed, TheProgramAndThePackagesHaveTheVersionOfTheBuild) {
  const Ended said = Tool({"--version"});
  EXPECT_EQ(said.status, ExitGood);
  EXPECT_EQ(said.output, "paramtool " LOADER_VERSION "\n");
  const std::string packages = ContentOf(std::filesystem::path(BUILD_FOLDER) / "CPackConfig.cmake");
  EXPECT_NE(packages.find("set(CPACK_PACKAGE_VERSION \"" LOADER_VERSION "\")"), std::string::npos);
  EXPECT_NE(packages.find("set(CPACK_PACKAGE_FILE_NAME \"parameter-loader-" LOADER_VERSION "-"),
            std::string::npos);
}

TEST_F(Installed, DataFilesBesideTheProgramComeFirst) {
  const std::filesystem::path bin = File("bin");
  const std::filesystem::path share = File("share/parameter-loader");
  std::filesystem::create_directories(bin);
  std::filesystem::create_directories(share);
  EXPECT_EQ(DataFolder(bin), bin); // neither has them: the failure names the program's folder
  std::ofstream(share / "InitSet.Ini") << "x";
  EXPECT_EQ(DataFolder(bin), share);
  std::ofstream(bin / "InitSet.Ini") << "x";
  EXPECT_EQ(DataFolder(bin), bin);
}

} // namespace
} // namespace loader::test
