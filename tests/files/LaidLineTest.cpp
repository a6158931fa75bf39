// What the reader tells of the lines that it lays over the store, and which line is a head.
#include "tests/files/ParameterFileSupport.h"

#include <string>
#include <vector>

namespace loader::test {
namespace {

using LaidLines = ParameterFiles;

// "2 C00FILT 2 -> C0FILT=2"
std::vector<std::string> Laid(std::string_view bytes, const DefectSink& sink = {}) {
  std::vector<std::string> laid;
  static_cast<void>(LoadParamBytes(bytes, sink, [&](const LaidLine& line) {
    laid.push_back(std::to_string(line.line) + " " + std::string(line.key) + " " + std::string(line.bytes) +
                   " -> " + std::string(line.section) + std::to_string(line.item) + std::string(line.tag) +
                   "=" + ToUtf8(line.value));
  }));
  return laid;
}
using Lines = std::vector<std::string>;

TEST_F(LaidLines, AreToldWithWhatBecameOfThem) {
  EXPECT_EQ(Laid("LOADER ,V210\r\nC00FILT  ,2  \r\nC01TYPE,14\r\nT00TPVM,1\r\nC02TAG ,a,b\r\n"),
            (Lines{"2 C00FILT 2 -> C0FILT=2", "3 C01TYPE 14 -> C1TYPE=21", "4 T00TPVM 1 -> B0BPVM=1",
                   "5 C02TAG a,b -> C2TAG="}));
}

TEST_F(LaidLines, EndAtTheFirstBadOneUnlessSomebodyHearsOfAll) {
  constexpr std::string_view Bytes = "C00FILT,2\r\nC01FILT,x\r\nC02FILT,3\r\n";
  EXPECT_EQ(Laid(Bytes), Lines{"1 C00FILT 2 -> C0FILT=2"});
  EXPECT_EQ(Laid(Bytes, [](const FileDefect&) {}),
            (Lines{"1 C00FILT 2 -> C0FILT=2", "3 C02FILT 3 -> C2FILT=3"}));
  EXPECT_EQ(Laid("C00FILT,2\r\nC01FILT\r\n"), Lines{}) << "no parameter file";
}

TEST_F(LaidLines, AreNoHeads) {
  EXPECT_TRUE(IsHeadLine("LOADER ,V210"));
  EXPECT_TRUE(IsHeadLine("LOADER,"));
  EXPECT_FALSE(IsHeadLine("LOADER"));
  EXPECT_FALSE(IsHeadLine(" LOADER,V210"));
  EXPECT_FALSE(IsHeadLine("LOADERS,V210"));
  EXPECT_FALSE(IsHeadLine(""));
}

} // namespace
} // namespace loader::test
