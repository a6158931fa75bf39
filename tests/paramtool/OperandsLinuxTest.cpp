// What is left of wildcards when the shell has done its part is the name of a file.
#include "tests/paramtool/ToolTest.h"

namespace loader::test {
namespace {

using Operands = ToolTest;

TEST_F(Operands, AStarIsALetterOfAName) {
  Write("a*.RUG", PlantFile("RUG"));
  Write("ab.RUG", "no parameter file");
  EXPECT_EQ(Tool({"check", File("a*.RUG")}).status, ExitGood);
  const Ended missing = Tool({"check", File("*.RUG"), "--lang", "en"});
  EXPECT_EQ(missing.status, ExitFailed);
  EXPECT_NE(missing.errors.find(File("*.RUG") + ": cannot be read"), std::string::npos) << missing.errors;
}

} // namespace
} // namespace loader::test
