// The rules of the house, checked on the source tree and on this very process, which links every layer of the
// logic.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <link.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path Root = LOADER_SOURCE_DIR;
const std::set<std::string> LogicFolders{"core",    "files",      "comm",       "channel", "operation",
                                         "dialogs", "mainwindow", "conversion", "platform"};

struct Source {
  fs::path path; // relative to the root
  std::vector<std::string> lines;
  std::vector<std::string> ownIncludes;    // "core/Text.h"
  std::vector<std::string> systemIncludes; // <QWidget>
};

// The header's name, from `start` to the closing mark.
std::string BetweenMarks(const std::string& line, std::size_t start) {
  return line.substr(start, line.find_first_of("\">", start) - start);
}

std::vector<Source> AllSources() {
  std::vector<Source> sources;
  const std::array<std::string, 15> folders{"app",       "core",      "files",      "comm",    "channel",
                                            "operation", "qt",        "mainwindow", "dialogs", "conversion",
                                            "platform",  "simulator", "tests",      "bench",   "tools"};
  for (const std::string& folder : folders) {
    if (!fs::exists(Root / folder)) {
      continue;
    }
    for (const auto& entry : fs::recursive_directory_iterator(Root / folder)) {
      const std::string extension = entry.path().extension().string();
      if (extension != ".cpp" && extension != ".h") {
        continue;
      }
      Source source{fs::relative(entry.path(), Root), {}, {}, {}};
      std::ifstream in(entry.path());
      for (std::string line; std::getline(in, line);) {
        if (line.starts_with("#include \"")) {
          source.ownIncludes.push_back(BetweenMarks(line, 10));
        } else if (line.starts_with("#include <")) {
          source.systemIncludes.push_back(BetweenMarks(line, 10));
        }
        source.lines.push_back(std::move(line));
      }
      sources.push_back(std::move(source));
    }
  }
  return sources;
}

std::string FolderOf(const fs::path& path) {
  return path.begin()->string();
}

TEST(House, TheSourceTreeIsFound) {
  EXPECT_GT(AllSources().size(), 60U) << Root;
}

TEST(House, TheLogicIncludesNoQtHeader) {
  for (const Source& source : AllSources()) {
    if (!LogicFolders.contains(FolderOf(source.path))) {
      continue;
    }
    for (const std::string& header : source.systemIncludes) {
      EXPECT_FALSE(header.starts_with("Q") || header.starts_with("Qt")) << source.path << ": " << header;
    }
    for (const std::string& header : source.ownIncludes) {
      EXPECT_FALSE(header.starts_with("qt/")) << source.path << ": " << header;
    }
  }
}

int CountQtLibraries(dl_phdr_info* info, std::size_t, void* count) {
  if (std::string(info->dlpi_name).find("libQt") != std::string::npos) {
    ++*static_cast<int*>(count);
  }
  return 0;
}

TEST(House, AProgramOfAllLogicLayersLoadsNoQt) {
  int qtLibraries = 0;
  dl_iterate_phdr(CountQtLibraries, &qtLibraries);
  EXPECT_EQ(0, qtLibraries);
}

TEST(House, OnlyTheWindowSideKnowsTheMainWindow) {
  const std::set<std::string> allowed{"mainwindow", "qt", "app", "tests", "bench"};
  for (const Source& source : AllSources()) {
    for (const std::string& header : source.ownIncludes) {
      if (header.starts_with("mainwindow/")) {
        EXPECT_TRUE(allowed.contains(FolderOf(source.path))) << source.path << ": " << header;
      }
    }
  }
}

TEST(House, NoFileIncludesItselfThroughOthers) {
  std::map<std::string, std::vector<std::string>> includes;
  for (const Source& source : AllSources()) {
    includes[source.path.string()] = source.ownIncludes;
  }
  std::map<std::string, int> state; // 1: under way, 2: done
  const std::function<void(const std::string&)> visit = [&](const std::string& file) {
    state[file] = 1;
    for (const std::string& next : includes[file]) {
      EXPECT_NE(1, state[next]) << file << " includes " << next << " in a circle";
      if (state[next] == 0 && includes.contains(next)) {
        visit(next);
      }
    }
    state[file] = 2;
  };
  std::vector<std::string> files;
  for (const auto& [file, ignored] : includes) {
    files.push_back(file);
  }
  for (const std::string& file : files) {
    if (state[file] == 0) {
      visit(file);
    }
  }
}

TEST(House, NoSourceFileIsLongerThan500Lines) {
  for (const Source& source : AllSources()) {
    EXPECT_LE(source.lines.size(), 500U) << source.path;
  }
}

} // namespace
