// What is written for those who carry the house on, held against the house: CONTRIBUTING.md, the change log,
// the one version number.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path Root = LOADER_SOURCE_DIR;

std::string ContentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << file;
  return {std::istreambuf_iterator<char>(in), {}};
}

// Without the CR of a line that ends in CR LF.
std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (line.ends_with('\r')) {
      line.pop_back();
    }
    lines.push_back(line);
  }
  return lines;
}

std::set<std::string> Found(const std::string& text, const std::string& pattern) {
  const std::regex wanted(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator it(text.begin(), text.end(), wanted), end; it != end; ++it) {
    found.insert((*it)[1].str());
  }
  return found;
}

std::vector<fs::path> FilesBelow(const fs::path& folder, const std::set<std::string>& extensions) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && extensions.contains(entry.path().extension().string())) {
      files.push_back(entry.path());
    }
  }
  return files;
}

// --- The version

TEST(Version, HasThreeNumbersAndIsTheNewestOfTheChangeLog) {
  EXPECT_TRUE(std::regex_match(LOADER_VERSION, std::regex("[0-9]+\\.[0-9]+\\.[0-9]+"))) << LOADER_VERSION;
  const std::vector<std::string> lines = LinesOf(ContentOf(Root / "CHANGELOG.md"));
  const auto newest =
      std::ranges::find_if(lines, [](const std::string& line) { return line.starts_with("## "); });
  ASSERT_NE(lines.end(), newest);
  EXPECT_TRUE(*newest == "## " LOADER_VERSION || newest->starts_with("## " LOADER_VERSION " ")) << *newest;
}

// project() in CMakeLists.txt says it; the About screen, paramtool and the packages are told by the build.
TEST(Version, StandsInOnePlaceOfTheTree) {
  std::string number = LOADER_VERSION;
  number = std::regex_replace(number, std::regex("\\."), "\\.");
  const std::regex said("(^|[^0-9.])" + number + "($|[^0-9.])");
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(Root)) {
    const std::string name = entry.path().filename().string();
    if (!entry.is_directory() || name == "build" || name == "docs" || name.starts_with('.')) {
      continue;
    }
    for (const fs::path& file :
         FilesBelow(entry.path(), {".cpp", ".h", ".def", ".txt", ".cmake", ".sh", ".ui", ".1", ".desktop",
                                   ".xml", ".service", ".timer", ".rules"})) {
      for (const std::string& line : LinesOf(ContentOf(file))) {
        if (std::regex_search(line, said)) {
          files.push_back(fs::relative(file, Root).string() + ": " + line);
        }
      }
    }
  }
  EXPECT_EQ(std::vector<std::string>{}, files);
  EXPECT_TRUE(std::regex_search(ContentOf(Root / "CMakeLists.txt"), std::regex("VERSION " + number + " ")));
}

// --- CONTRIBUTING.md

// A folder, page, script or tool that neither page of those who carry it on names is one that nobody finds.
TEST(Contributing, WhatLiesInTheTreeIsNamedInContributingOrInTheArchitecture) {
  const std::string pages = ContentOf(Root / "CONTRIBUTING.md") + ContentOf(Root / "docs/architecture.md");
  std::vector<std::string> names{".ci/run", ".clang-format", ".clang-tidy", ".editorconfig"};
  for (const auto& entry : fs::directory_iterator(Root)) {
    const std::string name = entry.path().filename().string();
    if (name != "build" && name != "CONTRIBUTING.md" && !name.starts_with('.')) {
      names.push_back(entry.is_directory() ? name + "/" : name);
    }
  }
  for (const char* folder : {"docs", "scripts", "tools", "share", "cmake", "tests"}) {
    for (const auto& entry : fs::directory_iterator(Root / folder)) {
      const std::string name = entry.path().filename().string();
      const bool mirror = std::string_view(folder) == "tests" && fs::exists(Root / name);
      if (name != "CMakeLists.txt" && name != "architecture.md" && !mirror) {
        names.push_back(std::string(folder) + "/" + name);
      }
    }
  }
  EXPECT_GT(names.size(), 50U);
  for (const std::string& name : names) {
    EXPECT_NE(std::string::npos, pages.find(name)) << name;
  }
}

TEST(Contributing, HasARowForEachLabelAndForNoOther) {
  std::string lists;
  for (const char* folder : {"tests", "bench"}) {
    for (const fs::path& file : FilesBelow(Root / folder, {".txt"})) {
      lists += ContentOf(file) + "\n";
    }
  }
  std::set<std::string> labels = Found(lists, "LABELS \"?([a-z0-9]+)");
  labels.merge(Found(lists, "loader_links_test\\([a-z_]+ ([a-z]+)"));
  std::set<std::string> told;
  for (const std::string& line : LinesOf(ContentOf(Root / "CONTRIBUTING.md"))) {
    if (line.starts_with("| `")) {
      told.merge(Found(line.substr(0, line.find('|', 1)), "`([a-z0-9]+)`"));
    }
  }
  EXPECT_GT(labels.size(), 15U);
  EXPECT_EQ(labels, told);
}

// One place of a file that a walk changes: the lines as they stand before it, one behind the other.
struct Place {
  std::string file;
  std::vector<std::string> before;
  std::size_t added = 0;
};

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += line + "\n";
  }
  return text;
}

// The blocks marked "diff" of a page.
std::vector<Place> PlacesOf(const std::vector<std::string>& page) {
  std::vector<Place> places;
  std::string file;
  bool inside = false;
  for (const std::string& line : page) {
    if (line.starts_with("```")) {
      inside = line == "```diff";
    } else if (!inside || line.starts_with("--- ")) {
      continue;
    } else if (line.starts_with("+++ b/")) {
      file = line.substr(6);
    } else if (line.starts_with("@@")) {
      places.push_back({file, {}, 0});
    } else if (!places.empty() && line.starts_with('+')) {
      ++places.back().added;
    } else if (!places.empty()) {
      places.back().before.push_back(line.substr(line.empty() ? 0 : 1));
    }
  }
  return places;
}

// The first change that CONTRIBUTING.md walks through can still be made as it is written there: the lines
// that each of its places begins from stand in their file.
TEST(Contributing, TheWalkOfAFirstChangeFitsTheTree) {
  const std::vector<Place> places = PlacesOf(LinesOf(ContentOf(Root / "CONTRIBUTING.md")));
  EXPECT_GT(places.size(), 10U);
  for (const Place& place : places) {
    const fs::path path = Root / place.file;
    ASSERT_TRUE(fs::is_regular_file(path)) << place.file;
    EXPECT_GT(place.before.size(), 2U) << place.file;
    EXPECT_GT(place.added, 0U) << place.file;
    const std::vector<std::string> lines = LinesOf(ContentOf(path));
    EXPECT_FALSE(std::ranges::search(lines, place.before).empty()) << place.file << " has not these lines:\n"
                                                                   << Joined(place.before);
  }
}

} // namespace
