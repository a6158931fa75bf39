// The documents: every link leads somewhere, every picture that they show is there, and none lies about that
// no document shows.
#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path Root = LOADER_SOURCE_DIR;

struct Document {
  std::vector<std::string> links; // "file#anchor" as they stand
  std::set<std::string> anchors;
};

// Three bytes of UTF-8 that a heading's anchor leaves out: Japanese punctuation and full-width forms of ASCII
// punctuation.
bool IsWidePunctuation(std::string_view character) {
  constexpr std::array<std::string_view, 12> Signs{"、", "。", "「", "」", "（", "）",
                                                   "：", "・", "～", "！", "？", "…"};
  return std::ranges::find(Signs, character) != Signs.end();
}

// As the pages of a repository are made: small letters, blanks become hyphens, punctuation goes.
std::string AnchorOf(std::string_view heading) {
  std::string anchor;
  for (std::size_t at = 0; at < heading.size();) {
    const auto byte = static_cast<unsigned char>(heading[at]);
    if (byte < 0x80) {
      if (std::isalnum(byte) != 0 || byte == '-' || byte == '_') {
        anchor += static_cast<char>(std::tolower(byte));
      } else if (byte == ' ') {
        anchor += '-';
      }
      ++at;
      continue;
    }
    const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
    const std::string_view character = heading.substr(at, length);
    if (!IsWidePunctuation(character)) {
      anchor += character;
    }
    at += length;
  }
  return anchor;
}

void AddTargets(const std::string& line, std::string_view before, char behind,
                std::vector<std::string>& links) {
  for (std::size_t at = line.find(before); at != std::string::npos; at = line.find(before, at + 1)) {
    const std::size_t begin = at + before.size();
    const std::size_t end = line.find(behind, begin);
    if (end != std::string::npos) {
      links.push_back(line.substr(begin, end - begin));
    }
  }
}
// [text](target), and pictures that are given a width: <img src="target">.
void AddLinks(const std::string& line, std::vector<std::string>& links) {
  AddTargets(line, "](", ')', links);
  AddTargets(line, "<img src=\"", '"', links);
}

Document Read(const fs::path& file) {
  Document document;
  std::ifstream in(file);
  bool code = false;
  std::map<std::string, int> met;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("```")) {
      code = !code;
    }
    if (code || line.starts_with("    ")) {
      AddLinks(line.find("![") == std::string::npos ? std::string() : line, document.links);
      continue;
    }
    if (line.starts_with('#')) {
      const std::size_t text = line.find_first_not_of("# ");
      const std::string anchor = AnchorOf(std::string_view(line).substr(std::min(text, line.size())));
      const int before = met[anchor]++;
      document.anchors.insert(before == 0 ? anchor : anchor + "-" + std::to_string(before));
    }
    AddLinks(line, document.links);
  }
  return document;
}

std::map<fs::path, Document> AllDocuments() {
  std::map<fs::path, Document> documents;
  for (const fs::path& folder : {Root, Root / "docs"}) {
    for (const auto& entry : fs::directory_iterator(folder)) {
      if (entry.path().extension() == ".md") {
        documents.emplace(fs::canonical(entry.path()), Read(entry.path()));
      }
    }
  }
  return documents;
}

// What is wrong with a link; empty: nothing.
std::string ProblemOf(const fs::path& file, const std::string& link,
                      const std::map<fs::path, Document>& documents) {
  if (link.starts_with("http")) {
    return {};
  }
  const std::size_t hash = link.find('#');
  const std::string path = link.substr(0, hash);
  const fs::path target = path.empty() ? file : file.parent_path() / path;
  if (!fs::exists(target)) {
    return "no such file";
  }
  const auto document = documents.find(fs::canonical(target));
  if (hash == std::string::npos || document == documents.end()) {
    return {};
  }
  return document->second.anchors.contains(link.substr(hash + 1)) ? std::string() : "no such heading";
}

TEST(Documents, EveryLinkLeadsSomewhere) {
  const std::map<fs::path, Document> documents = AllDocuments();
  std::size_t links = 0;
  for (const auto& [file, document] : documents) {
    for (const std::string& link : document.links) {
      EXPECT_EQ("", ProblemOf(file, link, documents)) << file.filename() << ": " << link;
      ++links;
    }
  }
  EXPECT_GT(documents.size(), 10U);
  EXPECT_GT(links, 100U);
}

TEST(Documents, EveryPictureIsShown) {
  std::set<std::string> shown;
  for (const auto& [file, document] : AllDocuments()) {
    for (const std::string& link : document.links) {
      shown.insert(fs::path(link).filename().string());
    }
  }
  for (const auto& entry : fs::directory_iterator(Root / "docs/images")) {
    EXPECT_TRUE(shown.contains(entry.path().filename().string())) << entry.path();
  }
}

// Two languages, one guide: the same pictures in the same order.
TEST(Documents, BothGuidesShowTheSamePictures) {
  const auto pictures = [](const char* name) {
    std::vector<std::string> found;
    for (const std::string& link : Read(Root / "docs" / name).links) {
      if (link.starts_with("images/")) {
        found.push_back(link);
      }
    }
    return found;
  };
  EXPECT_FALSE(pictures("user-guide.ja.md").empty());
  EXPECT_EQ(pictures("user-guide.ja.md"), pictures("user-guide.md"));
}

TEST(Documents, AnAnchorIsMadeOfItsHeading) {
  EXPECT_EQ("6-つのページ", AnchorOf("6 つのページ"));
  EXPECT_EQ("linux-での機器名", AnchorOf("Linux での機器名"));
  EXPECT_EQ("チャネル設定-channels", AnchorOf("チャネル設定: channels"));
  EXPECT_EQ("失敗したあと設定", AnchorOf("失敗した（あと）・設定？"));
}

} // namespace
