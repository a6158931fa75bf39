// The rules of the house, checked on the source tree and on this very process, which links every layer of the
// logic.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/System.h"

namespace fs = std::filesystem;

namespace {

const fs::path Root = LOADER_SOURCE_DIR;

// The floors of the house, from the ground up: the one list of them. A folder uses those below it and none
// above; folders of one floor do not use each other. A folder that does not stand yet has its place here.
const std::vector<std::vector<std::string>> Floors{
    {"data"},                        // texts and the shape of the store
    {"platform"},                    // what the logic needs of the world; the control records
    {"core"},                        // store, initial settings, catalogues, texts, LOADER.INI, code page
    {"channel", "operation"},        // value rules, input kinds; formulas
    {"meaning"},                     // what each parameter means
    {"fields"},                      // the fields of any screen
    {"comm", "files", "conversion"}, // the recorder, the files, the change of model
    {"dialogs", "companion"},        // the browsing frame and the side dialogs; reports on set-ups
    {"channelscreens"},              // the screens of channels and formulas
    {"mainwindow"},                  // the window over all of it
    {"devices"},         // sockets, serial ports, timers and the event loop in Qt, without widgets
    {"qt", "paramtool"}, // what of platform/ a window is, in Qt widgets; the companion program
    {"app", "tools", "bench", "tests"},
};
// Beside the house: a recorder to talk to. It uses these and is used by what is above Qt.
const std::string Simulator = "simulator";
const std::set<std::string> UsedBySimulator{"simulator", "core", "platform", "data"};
const std::set<std::string> TopFloor(Floors.back().begin(), Floors.back().end());

// The floor of a folder; -1: it is not in the list.
int FloorOf(const std::string& folder) {
  for (std::size_t floor = 0; floor < Floors.size(); ++floor) {
    if (std::ranges::find(Floors[floor], folder) != Floors[floor].end()) {
      return static_cast<int>(floor);
    }
  }
  return -1;
}

bool MayUse(const std::string& folder, const std::string& used) {
  if (folder == used || TopFloor.contains(folder)) {
    return true;
  }
  if (folder == Simulator || used == Simulator) {
    return folder == Simulator && UsedBySimulator.contains(used);
  }
  return FloorOf(used) < FloorOf(folder);
}

// Those that have no Qt: everything below the devices.
bool IsLogic(const std::string& folder) {
  return folder == Simulator || (FloorOf(folder) >= 0 && FloorOf(folder) < FloorOf("devices"));
}

struct Source {
  fs::path path; // relative to the root
  std::vector<std::string> lines;
  std::vector<std::string> ownIncludes;    // "core/Text.h"
  std::vector<std::string> systemIncludes; // <QWidget>
};

// The header that a line includes, however it is written: with blanks about the '#', by a path from its own
// folder, between angle marks (the root is searched for those as well).
struct Included {
  std::string header; // empty: the line includes none
  bool own = false;   // from the root: "core/Text.h", or of the file's own folder: "Boxes.h"
};
bool IsOurFolder(const std::string& folder) {
  return folder == Simulator || FloorOf(folder) >= 0;
}
std::string FolderOf(const fs::path& path) {
  return path.empty() ? std::string() : path.begin()->string();
}
Included IncludedBy(const fs::path& file, std::string_view line) {
  const auto skip = [&line](std::string_view characters) {
    line.remove_prefix(std::min(line.find_first_not_of(characters), line.size()));
  };
  const auto take = [&line](std::string_view word) {
    const bool there = line.starts_with(word);
    line.remove_prefix(there ? word.size() : 0);
    return there;
  };
  skip(" \t");
  if (!take("#")) {
    return {};
  }
  skip(" \t");
  if (!take("include")) {
    return {};
  }
  skip(" \t");
  const bool quoted = line.starts_with('"');
  if (!quoted && !line.starts_with('<')) {
    return {};
  }
  line.remove_prefix(1);
  fs::path header = line.substr(0, line.find_first_of("\">"));
  if (FolderOf(header) == ".." || FolderOf(header) == ".") {
    header = (file.parent_path() / header).lexically_normal();
  }
  return {header.generic_string(), quoted || (header.has_parent_path() && IsOurFolder(FolderOf(header)))};
}

std::vector<Source> AllSources() {
  std::vector<Source> sources;
  std::vector<std::string> folders{Simulator};
  for (const std::vector<std::string>& floor : Floors) {
    folders.insert(folders.end(), floor.begin(), floor.end());
  }
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
        if (const Included included = IncludedBy(source.path, line); !included.header.empty()) {
          (included.own ? source.ownIncludes : source.systemIncludes).push_back(included.header);
        }
        source.lines.push_back(std::move(line));
      }
      sources.push_back(std::move(source));
    }
  }
  return sources;
}

TEST(House, TheSourceTreeIsFound) {
  EXPECT_GT(AllSources().size(), 60U) << Root;
}

TEST(House, TheLogicIncludesNoQtHeader) {
  for (const Source& source : AllSources()) {
    if (!IsLogic(FolderOf(source.path))) {
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

TEST(House, AProgramOfAllLogicLayersLoadsNoQt) {
  const std::vector<std::string> loaded = loader::test::LoadedLibraries();
  EXPECT_FALSE(loaded.empty());
  for (const std::string& library : loaded) {
    EXPECT_EQ(std::string::npos, fs::path(library).filename().string().find("Qt")) << library;
  }
}

// --- The floors

using Uses = std::vector<std::pair<std::string, std::string>>; // who, whom: files or targets
std::vector<std::string> Upward(const Uses& uses) {
  std::vector<std::string> wrong;
  for (const auto& [user, used] : uses) {
    const std::string from = FolderOf(user);
    const std::string to = FolderOf(used);
    if (!MayUse(from, to)) {
      wrong.push_back(user + " uses " + used);
    }
  }
  return wrong;
}

Uses AllIncludes() {
  Uses uses;
  for (const Source& source : AllSources()) {
    for (const std::string& header : source.ownIncludes) {
      if (header.find('/') != std::string::npos && IsOurFolder(FolderOf(header))) {
        uses.emplace_back(source.path.string(), header);
      }
    }
  }
  return uses;
}

// What each folder's target links, as its CMakeLists.txt says: loader_layer(NAME SOURCES ... LINK ...). The
// simulator's target has a name of its own.
Uses AllLinks() {
  Uses uses;
  for (const std::vector<std::string>& floor : Floors) {
    for (const std::string& folder : floor) {
      std::ifstream in(Root / folder / "CMakeLists.txt");
      std::stringstream text;
      text << in.rdbuf();
      const std::string content = text.str();
      const std::size_t layer = content.find("loader_layer(" + folder);
      const std::size_t end = content.find(')', layer);
      const std::size_t link = content.find("LINK", layer);
      if (layer == std::string::npos || link == std::string::npos || link > end) {
        continue;
      }
      std::istringstream names(content.substr(link + 4, end - link - 4));
      for (std::string name; names >> name;) {
        uses.emplace_back(folder, name);
      }
    }
  }
  return uses;
}

TEST(House, NoFileIncludesAFileOfItsOwnFloorOrOfOneAbove) {
  const Uses includes = AllIncludes();
  EXPECT_GT(includes.size(), 500U);
  EXPECT_EQ(std::vector<std::string>{}, Upward(includes));
}

TEST(House, NoTargetLinksOneOfItsOwnFloorOrOfOneAbove) {
  const Uses links = AllLinks();
  EXPECT_GT(links.size(), 15U);
  EXPECT_EQ(std::vector<std::string>{}, Upward(links));
}

// What a folder includes its target links, be it through another one: static libraries would not tell.
TEST(House, EveryFolderLinksWhatItIncludes) {
  std::map<std::string, std::set<std::string>> linked;
  for (const auto& [user, used] : AllLinks()) {
    linked[user].insert(used);
  }
  const auto reaches = [&](const std::string& from, const std::string& to) {
    std::set<std::string> met{from};
    std::vector<std::string> open{from};
    while (!open.empty()) {
      const std::string user = open.back();
      open.pop_back();
      for (const std::string& next : linked[user]) {
        if (met.insert(next).second) {
          open.push_back(next);
        }
      }
    }
    return met.contains(to);
  };
  for (const auto& [user, used] : AllIncludes()) {
    const std::string from = FolderOf(user);
    const std::string to = FolderOf(used);
    if (from != to && to != "data" && IsLogic(from) && from != Simulator) {
      EXPECT_TRUE(reaches(from, to)) << user << " includes " << used << ", and " << from
                                     << " does not link it";
    }
  }
}

// The layers of the logic say what they link in one place; a line beside it would get past these tests.
TEST(House, EveryLayerOfTheLogicLinksByItsOneLine) {
  for (const std::vector<std::string>& floor : Floors) {
    for (const std::string& folder : floor) {
      std::ifstream in(Root / folder / "CMakeLists.txt");
      std::stringstream text;
      text << in.rdbuf();
      if (in.is_open() && IsLogic(folder) && folder != "data") {
        EXPECT_NE(std::string::npos, text.str().find("loader_layer(" + folder)) << folder;
        EXPECT_EQ(std::string::npos, text.str().find("target_link_libraries")) << folder;
      }
    }
  }
}

TEST(House, SeesAnIncludeHoweverItIsWritten) {
  const fs::path file = "channel/modUtil.cpp";
  for (const char* line :
       {"#include \"meaning/Meaning.h\"", "#include <meaning/Meaning.h>",
        " # include  \"../meaning/Meaning.h\"", "#include \"./../meaning/Meaning.h\" // why"}) {
    EXPECT_EQ("meaning/Meaning.h", IncludedBy(file, line).header) << line;
    EXPECT_TRUE(IncludedBy(file, line).own) << line;
  }
  EXPECT_FALSE(IncludedBy(file, "#include <algorithm>").own);
  EXPECT_FALSE(IncludedBy(file, "#include <sys/stat.h>").own);
  EXPECT_EQ("QWidget", IncludedBy(file, "#include <QWidget>").header);
  EXPECT_EQ("", IncludedBy(file, "// #include \"meaning/Meaning.h\"").header);
  EXPECT_EQ("", IncludedBy(file, "#includes").header);
}

// The check itself: what it has to refuse.
TEST(House, TheFloorsRefuseAnIncludeUpwardAndACircleOfTwoFolders) {
  EXPECT_EQ(
      (std::vector<std::string>{"channel/modUtil.cpp uses meaning/Meaning.h"}),
      Upward({{"channel/modUtil.cpp", "meaning/Meaning.h"}, {"meaning/Meaning.cpp", "channel/modUtil.h"}}));
  EXPECT_EQ((std::vector<std::string>{"comm/a.cpp uses files/b.h", "files/b.cpp uses comm/a.h"}),
            Upward({{"comm/a.cpp", "files/b.h"}, {"files/b.cpp", "comm/a.h"}}));
  EXPECT_EQ((std::vector<std::string>{"channel uses dialogs"}), Upward({{"channel", "dialogs"}}));
  EXPECT_EQ((std::vector<std::string>{"simulator/a.cpp uses comm/b.h", "comm/a.cpp uses simulator/b.h"}),
            Upward({{"simulator/a.cpp", "comm/b.h"}, {"comm/a.cpp", "simulator/b.h"}}));
  EXPECT_EQ(std::vector<std::string>{}, Upward({{"mainwindow/a.cpp", "dialogs/b.h"},
                                                {"simulator/a.cpp", "core/Text.h"},
                                                {"tests/core/a.cpp", "simulator/b.h"},
                                                {"core/a.cpp", "core/b.h"}}));
}

// A folder with code that is not in the list would stand on no floor.
TEST(House, EveryFolderWithCodeHasItsFloor) {
  for (const auto& entry : fs::directory_iterator(Root)) {
    const std::string folder = entry.path().filename().string();
    if (entry.is_directory() && fs::exists(entry.path() / "CMakeLists.txt")) {
      EXPECT_TRUE(IsOurFolder(folder)) << folder;
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
