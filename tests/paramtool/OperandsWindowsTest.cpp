// Wildcards that cmd.exe and PowerShell hand on as they are typed.
#include <sstream>

#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

class Operands : public ToolTest {
protected:
  // The files that "check" tells of, with the test's folder as "FOLDER".
  [[nodiscard]] std::vector<std::string> Checked(const std::vector<std::string>& words) const {
    std::vector<std::string> arguments{"check", "--lang", "en"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    std::vector<std::string> files;
    std::istringstream output(WithoutFolder(Tool(arguments).output));
    constexpr std::string_view Found = ": RUG (by its content)";
    for (std::string line; std::getline(output, line);) {
      if (const std::size_t at = line.find(Found); at != std::string::npos) {
        files.push_back(line.substr(0, at));
      }
    }
    return files;
  }
};
using Words = std::vector<std::string>;

TEST_F(Operands, AreTheFilesOfTheirWildcardsWhateverTheirNamesAreMadeOf) {
  for (const char* name : {"炉 2.RUG", "b.rug", "a c.RUG", "炉 1 (写し).RUG", "c.RUG2", "A.KOV"}) {
    Write(name, PlantFile("RUG"));
  }
  EXPECT_EQ(Checked({File("*.RUG")}),
            (Words{"FOLDER/a c.RUG", "FOLDER/b.rug", "FOLDER/炉 1 (写し).RUG", "FOLDER/炉 2.RUG"}));
  EXPECT_EQ(Checked({File("炉 ?.RUG"), File("c.RUG2")}), (Words{"FOLDER/炉 2.RUG", "FOLDER/c.RUG2"}));
  // The other separator.
  EXPECT_EQ(Tool({"check", NativeFile("b*.RUG")}).status, ExitGood);
}

TEST_F(Operands, OneThatMeansNoFileSaysSo) {
  const Ended missing = Tool({"check", File("*.RUG"), "--lang", "en"});
  EXPECT_EQ(missing.status, ExitFailed);
  EXPECT_NE(missing.errors.find(File("*.RUG") + ": cannot be read"), std::string::npos) << missing.errors;
}

TEST_F(Operands, ThatAreNoFilesAndValuesOfOptionsKeepTheirStars) {
  Write("C01.RUG", PlantFile("RUG"));
  Write("C02.RUG", PlantFile("RUG"));
  const std::string file = File("C01.RUG");
  // In that folder, where the words would mean files.
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(std::filesystem::path(File("")));
  EXPECT_EQ(Tool({"show", "C01.RUG", "C0*", "--lang", "en"}).output,
            Tool({"show", file, "C0*", "--lang", "en"}).output);
  EXPECT_EQ(Tool({"compare", "C*.RUG", "--only", "C*"}).status, ExitGood); // two files, one pattern
  EXPECT_EQ(Tool({"set", "C01.RUG", "C*COLR=3", "-o", "D.RUG"}).status, ExitGood);
  EXPECT_TRUE(Exists("D.RUG"));
  EXPECT_EQ(Tool({"print", "C01.RUG", "-o", "C*.RUG"}).status, ExitFailed); // no file has that name
  EXPECT_EQ(Tool({"print", "*.RUG", "-o", "sheet"}).status, ExitUsage);     // three are not one
  std::filesystem::current_path(before);
}

} // namespace
} // namespace loader::test
