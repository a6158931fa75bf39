// The shipped initial settings as text: what an editor of another kind would break.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "core/Text.h"
#include "tests/support/ScriptedPlatform.h"

namespace loader::test {
namespace {

class InitSetBytes : public testing::Test {
protected:
  void SetUp() override {
    bytes_ = platform.ReadFile("InitSet.Ini");
    for (std::size_t start = 0; start < bytes_.size();) {
      const std::size_t end = bytes_.find("\r\n", start);
      ASSERT_NE(std::string::npos, end) << "a line without CR LF";
      lines_.push_back(bytes_.substr(start, end - start));
      start = end + 2;
    }
  }
  // Lines that are neither comments nor empty.
  [[nodiscard]] std::vector<std::string> Rows() const {
    std::vector<std::string> rows;
    std::ranges::copy_if(lines_, std::back_inserter(rows),
                         [](const std::string& line) { return !line.empty() && line.front() != ';'; });
    return rows;
  }
  static std::vector<std::string> Fields(const std::string& row) {
    std::vector<std::string> fields(1);
    for (const char c : row) {
      c == ',' ? fields.emplace_back() : fields.back() += c;
    }
    return fields;
  }

  ScriptedPlatform platform;
  std::string bytes_;
  std::vector<std::string> lines_;
};

TEST_F(InitSetBytes, HaveCRLFAndNoOtherLineEnd) {
  for (const std::string& line : lines_) {
    EXPECT_EQ(std::string::npos, line.find_first_of("\r\n\t\x1A")) << line;
  }
}

TEST_F(InitSetBytes, StartWithAComment) {
  EXPECT_EQ(';', lines_.front().front());
}

TEST_F(InitSetBytes, AreTextOfTheCodePage) {
  EXPECT_EQ(bytes_, ToCodePage(FromCodePage(bytes_)));
}

TEST_F(InitSetBytes, HaveTheHeadersWithTheDigitAloneInFourColumns) {
  std::vector<std::string> headers;
  std::ranges::copy_if(Rows(), std::back_inserter(headers),
                       [](const std::string& row) { return row[0] == '2'; });
  EXPECT_EQ((std::vector<std::string>{"2   ,V00L,0", "2   ,V00W,0"}), headers);
}

TEST_F(InitSetBytes, HaveRowsOfTheKnownKindsOnly) {
  std::map<std::string, int> kinds;
  for (const std::string& row : Rows()) {
    const std::vector<std::string> fields = Fields(row);
    ASSERT_GE(9U, fields.size()) << row;
    const std::string kind = fields[0] == "0" ? "0" + fields.at(3) : fields[0];
    const std::map<std::string, std::size_t> sizes = {{"2   ", 3}, {"1", 5}, {"00", 7}, {"01", 6}};
    ASSERT_TRUE(sizes.contains(kind)) << row;
    EXPECT_EQ(sizes.at(kind), fields.size()) << row;
    ++kinds[kind];
  }
  EXPECT_EQ(2, kinds["2   "]);
  EXPECT_EQ(2 * 23, kinds["1"]);
  EXPECT_EQ(2 * 236, kinds["00"] + kinds["01"]);
}

TEST_F(InitSetBytes, HaveNoQuotesAndNoBlanksInTheirRows) {
  for (const std::string& row : Rows()) {
    EXPECT_EQ(std::string::npos, row.find('"')) << row;
    EXPECT_TRUE(row[0] == '2' || row.find(' ') == std::string::npos) << row;
  }
}

TEST_F(InitSetBytes, TellWhatEachSectionIs) {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (lines_[i].starts_with("1,")) {
      ASSERT_LT(0U, i);
      EXPECT_TRUE(lines_[i - 1].starts_with(';')) << lines_[i];
    }
  }
}

} // namespace
} // namespace loader::test
